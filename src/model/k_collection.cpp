#include "nxfv/model/k_collection.h"

#include "nxfv/platform/error_state.h"

namespace nxfv {

kCollection::kCollection(PlatformRef platform)
    : platform_(platform ? std::move(platform) : ActivePlatformRef()),
      colnewb_(std::make_shared<RuntimeCollection>()) {}

void kCollection::setColnewb(std::shared_ptr<RuntimeCollection> c) {
  colnewb_ = c ? std::move(c) : std::make_shared<RuntimeCollection>();
}

Variant kCollection::Shifted(const Variant& index) const {
  if (index.IsNumber()) return Variant(index.AsDouble() + 1);
  return index;
}

bool kCollection::Add(const Variant& Item, const Variant& Key, const Variant&, const Variant&) {
  try {
    colnewb_->Add(Item, Key);
    return true;
  } catch (const std::exception& e) {
    RecordException(e);
    return false;
  }
}

void kCollection::Remove(const Variant& Index) {
  try {
    colnewb_->Remove(Shifted(Index));
  } catch (const VbError&) {
    throw;
  } catch (const std::exception& e) {
    // Only run-time errors leave the library.
    RecordException(e);
    throw VbError(CurrentError().number, CurrentError().description);
  }
}

Variant kCollection::Item(const Variant& Index) const {
  try {
    return colnewb_->Item(Shifted(Index));
  } catch (const std::exception& e) {
    RecordException(e);
    return Variant();
  }
}

void kCollection::RemoveAll() { colnewb_ = std::make_shared<RuntimeCollection>(); }

bool kCollection::WriteToFile(const std::string& FileName) {
  try {
    std::string text;
    const int32_t n = colnewb_->Count();
    for (int32_t i = 1; i <= n; ++i) {
      const Variant v = colnewb_->Item(Variant(i));
      if (v.IsString() && v.TextView() == kSkipMarker) continue;
      if (v.IsString()) text += v.TextView();
      else text += v.AsString();
      text += "\r\n";
    }
    return platform_->Files().WriteWholeFile(FileName, text);
  } catch (const std::exception& e) {
    RecordException(e);
    return false;
  }
}

bool kCollection::ReadFromFile(const std::string& FileName) {
  try {
    RemoveAll();
    const std::optional<std::string> bytes = platform_->Files().ReadWholeFile(FileName);
    if (!bytes) return false;
    const std::string& s = *bytes;
    size_t pos = 0;
    while (pos < s.size()) {
      const size_t cr = s.find('\r', pos);
      const size_t end = cr == std::string::npos ? s.size() : cr;
      std::string line = s.substr(pos, end - pos);
      pos = end;
      if (pos < s.size()) ++pos;                         // the CR
      if (pos < s.size() && s[pos] == '\n' && cr != std::string::npos) ++pos;  // its LF
      Add(Variant(std::move(line)));
    }
    return true;
  } catch (const std::exception& e) {
    RecordException(e);
    return false;
  }
}

void kCollection::Internal::SetColumnRecord(kCollection& c, int32_t i, const headerdatas& record) {
  if (i < 1 || i > kColumnRecords) RaiseError(kErrSubscript);
  c.columnRecords_[static_cast<size_t>(i - 1)] = record;
}

headerdatas kCollection::Internal::ColumnRecord(const kCollection& c, int32_t i) {
  if (i < 1 || i > kColumnRecords) RaiseError(kErrSubscript);
  return c.columnRecords_[static_cast<size_t>(i - 1)];
}

}  // namespace nxfv
