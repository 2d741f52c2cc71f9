#include "nxfv/platform/sim/sim_services.h"

#include "nxfv/platform/date.h"
#include "nxfv/platform/sim/sim_file_system.h"
#include "nxfv/platform/utf8.h"

namespace nxfv {

bool SimTime::FileTimeToLocalFileTime(uint64_t utc, uint64_t& local) {
  // Unsigned arithmetic with explicit range checks: file times use the whole
  // 64-bit range, and a shift past either end fails like the real call.
  local = 0;
  const int64_t shift = static_cast<int64_t>(offsetMinutes_) * 600000000LL;
  const uint64_t magnitude = shift < 0 ? static_cast<uint64_t>(-shift) : static_cast<uint64_t>(shift);
  if (shift < 0 && utc < magnitude) return false;
  if (shift > 0 && UINT64_MAX - utc < magnitude) return false;
  local = shift < 0 ? utc - magnitude : utc + magnitude;
  return true;
}

bool SimTime::DosDateTimeToFileTime(uint16_t dosDate, uint16_t dosTime, uint64_t& fileTime) {
  return DosWordsToFileTime(dosDate, dosTime, fileTime);
}

namespace {
// Windows-1252 has case pairs only for Latin-1 letters and five more.
bool In1252(char32_t c) {
  return c < 0x100 || c == 0x152 || c == 0x153 || c == 0x160 || c == 0x161 || c == 0x178 || c == 0x17D ||
         c == 0x17E;
}
std::string Map1252(const std::string& text, bool upper) {
  std::string out;
  out.reserve(text.size());
  for (size_t i = 0; i < text.size();) {
    const auto b = static_cast<unsigned char>(text[i]);
    size_t start = i;
    char32_t cp = DecodeUtf8(text, i);
    if (b >= 0x80 && i == start + 1) {
      out += static_cast<char>(b);
      continue;
    }
    char32_t m = upper ? ToUpperCp(cp) : ToLowerCp(cp);
    AppendUtf8(out, In1252(cp) && In1252(m) ? m : cp);
  }
  return out;
}
}  // namespace

std::string SimLocale::CharUpper(const std::string& text) { return Map1252(text, true); }
std::string SimLocale::CharLower(const std::string& text) { return Map1252(text, false); }
int32_t SimLocale::MeasureText(const std::string& text, int32_t) {
  return static_cast<int32_t>(CodePointCount(text)) * kCharWidth;
}

SimResources::SimResources() {
  SetString("Shell32.Dll", 8976, "Name");
  SetString("Shell32.Dll", 8978, "Size");
  SetString("Shell32.Dll", 8979, "Type");
  SetString("Shell32.Dll", 8980, "Modified");
  SetString("Shell32.Dll", 8987, "Attributes");
  SetString("Shell32.Dll", 8996, "Created");
  SetString("Shell32.Dll", 8997, "Accessed");
  SetString("Intl.Cpl", 25, "Time");
  folders_[0x00] = "C:\\Users\\User\\Desktop";
  folders_[0x05] = "C:\\Users\\User\\Documents";
  folders_[0x0D] = "C:\\Users\\User\\Music";
  folders_[0x0E] = "C:\\Users\\User\\Videos";
  folders_[0x10] = "C:\\Users\\User\\Desktop";
  folders_[0x15] = "C:\\Users\\User\\Templates";
  folders_[0x1A] = "C:\\Users\\User\\AppData\\Roaming";
  folders_[0x1C] = "C:\\Users\\User\\AppData\\Local";
  folders_[0x24] = "C:\\WINDOWS";
  folders_[0x25] = "C:\\WINDOWS\\system32";
  folders_[0x26] = "C:\\Program Files";
  folders_[0x27] = "C:\\Users\\User\\Pictures";
  folders_[0x28] = "C:\\Users\\User";
}

void SimResources::SetString(const std::string& library, int32_t id, std::string text) {
  tables_[Utf8Upper(library)][id] = std::move(text);
}

std::optional<std::string> SimResources::LoadString(const std::string& library, int32_t id) {
  auto t = tables_.find(Utf8Upper(library));
  if (t == tables_.end()) return std::nullopt;
  auto s = t->second.find(id);
  return s == t->second.end() ? std::string() : s->second;
}

bool SimResources::SpecialFolderPath(int32_t csidl, std::string& path) {
  auto it = folders_.find(csidl);
  if (it == folders_.end()) return false;
  path = it->second;
  return true;
}

SimRegistry::SimRegistry() {
  RegisterType("txt", "txtfile", "Text Document");
  RegisterType("doc", "Word.Document.8", "Microsoft Word Document");
  RegisterType("exe", "exefile", "Application");
  RegisterType("zip", "CompressedFolder", "Compressed (zipped) Folder");
  RegisterType("cab", "CABFolder", "Cabinet File");
  RegisterType("dll", "dllfile", "Application Extension");
  RegisterType("sys", "sysfile", "System file");
  RegisterType("bmp", "Paint.Picture", "Bitmap Image");
  RegisterType("ico", "icofile", "Icon");
  RegisterType("lnk", "lnkfile", "Shortcut");
}

void SimRegistry::Set(const std::string& key, std::string value) { values_[Utf8Upper(key)] = std::move(value); }
void SimRegistry::Remove(const std::string& key) { values_.erase(Utf8Upper(key)); }

void SimRegistry::RegisterType(const std::string& ext, const std::string& progId, const std::string& typeName) {
  Set("." + ext, progId);
  Set(progId, typeName);
}

bool SimRegistry::ClassesRootDefault(const std::string& key, std::string& value) {
  ++queries_;
  auto it = values_.find(Utf8Upper(key));
  if (it == values_.end()) return false;
  value = it->second;
  return true;
}

int32_t SimIcons::SysIconIndex(const std::string& path, uint32_t attributes, uint32_t flags) {
  lookups_.push_back({path, attributes, flags});
  if (!(flags & kShgfiUseFileAttributes)) {
    uint32_t real = 0;
    if (!files_ || !files_->GetAttributes(path, real)) return 0;
    attributes = real;
  }
  if (attributes & kAttrDirectory) return kFolderIcon;
  const auto slash = path.find_last_of("\\/");
  const std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
  const auto dot = name.find_last_of('.');
  if (dot == std::string::npos || dot + 1 == name.size()) return kGenericIcon;
  const std::string ext = Utf8Lower(name.substr(dot + 1));
  if (ext == "bin") return kGenericIcon;
  if (ext == "exe" || ext == "ico" || ext == "lnk" || ext == "pif" || ext == "cur") {
    auto [it, added] = pathIcons_.emplace(Utf8Upper(path), 1000 + static_cast<int32_t>(pathIcons_.size()));
    return it->second;
  }
  auto [it, added] = extensionIcons_.emplace(ext, 100 + static_cast<int32_t>(extensionIcons_.size()));
  return it->second;
}

}  // namespace nxfv
