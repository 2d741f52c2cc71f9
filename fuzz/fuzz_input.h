// Shared by the fuzz targets: lists one input as an archive of the
// simulated platform, whose message boxes only record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace nxfv::fuzz {

// Inputs longer than this are cut: the readers look at the tail (ZIP) or
// the head (CAB) and at the table an offset points to, so larger inputs
// add nothing but time.
inline constexpr size_t kMaxInput = 1 << 20;

// Lists data as "C:\fuzz.<ext>" and checks the reader's promises: at most
// FileCount events, every event's Index and Total in range, every name and
// comment valid UTF-8. Aborts on a broken promise.
void ListInput(const uint8_t* data, size_t size, const std::string& ext);

}  // namespace nxfv::fuzz
