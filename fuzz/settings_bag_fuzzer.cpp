// Fuzz target: any bytes as a settings file, read into a viewer and written
// back. The file's own lines must survive the round trip.
#include <cstdlib>
#include <memory>
#include <string>

#include "nxfv/control/file_viewer.h"
#include "nxfv/control/text_property_bag.h"
#include "nxfv/platform/sim/simulated_platform.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size > 64 * 1024) return 0;
  const std::string text(reinterpret_cast<const char*>(data), size);
  auto bag = nxfv::TextPropertyBag::FromText(text);
  const std::string once = bag.ToText();
  if (nxfv::TextPropertyBag::FromText(once).ToText() != once) std::abort();
  auto viewer = nxfv::FileViewer::Create(std::make_shared<nxfv::SimulatedPlatform>());
  viewer->ReadProperties(bag);
  viewer->WriteProperties(bag);
  return 0;
}
