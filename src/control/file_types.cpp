#include "nxfv/control/file_types.h"

#include <algorithm>

#include "nxfv/shell/path_text.h"

namespace nxfv {

std::string FileTypes::GetExt(const std::string& name) const {
  const auto dot = name.rfind('.');
  if (dot == std::string::npos || dot + 1 >= name.size()) return {};
  return platform_.Locale().CharLower(name.substr(dot + 1));
}

const TypeCacheEntry* FileTypes::Entry(const std::string& ext, const std::string& fullPath, bool probeByAttributes) {
  if (ext.empty()) return nullptr;
  if (const TypeCacheEntry* hit = cache_.Find(ext)) return hit;
  std::string progId, typeName;
  if (platform_.Registry().ClassesRootDefault("." + ext, progId)) {
    progId = StripNull(progId.substr(0, std::min<size_t>(progId.size(), 259)));
    if (!progId.empty() && platform_.Registry().ClassesRootDefault(progId, typeName))
      typeName = StripNull(typeName.substr(0, std::min<size_t>(typeName.size(), 79)));
    else
      typeName.clear();
  }
  TypeCacheEntry entry;
  entry.extension = ext;
  IconService& icons = platform_.Icons();
  if (!typeName.empty()) {
    entry.typeName = typeName;
    entry.iconIndex = probeByAttributes
                          ? icons.SysIconIndex(fullPath, kAttrNormal, kSmallSysIcon | kShgfiUseFileAttributes)
                          : icons.SysIconIndex(fullPath, 0, kSmallSysIcon);
  } else {
    entry.typeName = "File";
    entry.iconIndex = icons.SysIconIndex("generic.bin", kAttrNormal, kShgfiSysIconIndex | kShgfiUseFileAttributes);
  }
  return &cache_.Insert(std::move(entry));
}

std::string FileTypes::GetFileType(const std::string& ext, const std::string& fullPath, int32_t& iconIndex,
                                   bool probeByAttributes) {
  const TypeCacheEntry* entry = Entry(ext, fullPath, probeByAttributes);
  if (!entry) return {};
  iconIndex = entry->iconIndex;
  return entry->typeName;
}

}  // namespace nxfv
