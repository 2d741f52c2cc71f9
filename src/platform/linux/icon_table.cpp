#include "nxfv/platform/linux/icon_table.h"

namespace nxfv {

IconTable::IconTable() {
  // The generic icons of the freedesktop icon naming rules, in a fixed order.
  for (std::string_view name :
       {kIconFolder, kIconGenericFile, std::string_view("text-x-generic"), kIconExecutable,
        std::string_view("image-x-generic"), std::string_view("audio-x-generic"), std::string_view("video-x-generic"),
        std::string_view("font-x-generic"), std::string_view("package-x-generic"), std::string_view("text-html"),
        std::string_view("text-x-script"), std::string_view("text-x-generic-template"),
        std::string_view("x-office-document"), std::string_view("x-office-spreadsheet"),
        std::string_view("x-office-presentation"), std::string_view("x-office-drawing"),
        std::string_view("x-office-calendar"), std::string_view("x-office-address-book")})
    IndexOf(name);
}

IconTable& IconTable::Shared() {
  static IconTable* shared = new IconTable();  // never destroyed, see MimeDatabase::Shared
  return *shared;
}

int32_t IconTable::IndexOf(std::string_view name) {
  if (name.empty()) return 0;
  std::lock_guard<std::mutex> lock(mutex_);
  std::string key(name);
  if (auto it = indexes_.find(key); it != indexes_.end()) return it->second;
  names_.push_back(key);
  const auto index = static_cast<int32_t>(names_.size());
  indexes_.emplace(std::move(key), index);
  return index;
}

std::string IconTable::NameOf(int32_t index) {
  std::lock_guard<std::mutex> lock(mutex_);
  if (index < 1 || static_cast<size_t>(index) > names_.size()) return {};
  return names_[static_cast<size_t>(index) - 1];
}

size_t IconTable::size() {
  std::lock_guard<std::mutex> lock(mutex_);
  return names_.size();
}

}  // namespace nxfv
