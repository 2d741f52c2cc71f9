// Archives the directory readers are well-formed but cannot show: a ZIP with
// ZIP64 records, 32,768 entries or more (in either format), or a ZIP whose
// central directory does not end where its end record begins (data put
// before the archive or between the two). Found from the archive's own
// records, apart from the readers, whose events stay as they are.
#pragma once

#include <string>

namespace nxfv {

class Platform;

// The text that tells the user why the archive at path (a platform path;
// ext as the reader takes it: "zip", ".zip", "cab", ".cab") is not listed or
// listed wrongly; "" when the records show none of these limits, when the
// file cannot be read, or when it is not recognised at all.
std::string ArchiveLimitNotice(Platform& platform, const std::string& path, const std::string& ext);

}  // namespace nxfv
