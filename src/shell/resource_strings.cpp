#include "nxfv/shell/resource_strings.h"

#include "nxfv/platform/platform.h"
#include "nxfv/platform/utf8.h"

namespace nxfv {

std::string LoadResString(Platform& platform, const std::string& library, int32_t number) {
  std::optional<std::string> text = platform.Resources().LoadString(library, number);
  if (!text || text->empty()) return {};
  // The loader fills a fixed buffer and keeps room for its terminator.
  constexpr size_t kKeep = kResStringRoom - 1;
  if (text->size() > kKeep && CodePointCount(*text) > kKeep) {
    size_t i = 0;
    for (size_t n = 0; n < kKeep; ++n) DecodeUtf8(*text, i);
    text->resize(i);
  }
  return std::move(*text);
}

std::string LoadResString(const std::string& library, int32_t number) {
  return LoadResString(ActivePlatform(), library, number);
}

}  // namespace nxfv
