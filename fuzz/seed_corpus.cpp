// Writes seed corpora for the archive fuzz targets:
//   archive_seed_corpus ZIP_DIR CAB_DIR
// Small archives that reach every branch of the readers: several entries,
// comments, extra fields, UTF-8 and code-page names, an end record at
// offset 1, optional cabinet header parts, a name area without terminator.
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

namespace {

void U16(std::string& o, uint32_t v) {
  o += static_cast<char>(v & 0xFF);
  o += static_cast<char>((v >> 8) & 0xFF);
}
void U32(std::string& o, uint32_t v) {
  U16(o, v & 0xFFFF);
  U16(o, v >> 16);
}

struct ZipEntry {
  std::string name, extra, comment;
  uint16_t flags = 0;
};

std::string CentralEntry(const ZipEntry& e) {
  std::string o = "PK\x01\x02";
  U16(o, 20);
  U16(o, 20);
  U16(o, e.flags);
  U16(o, 8);
  U16(o, (10 << 11) | (30 << 5) | 21);
  U16(o, (44 << 9) | (3 << 5) | 15);
  U32(o, 0xCAFEBABE);
  U32(o, 100);
  U32(o, 250);
  U16(o, static_cast<uint32_t>(e.name.size()));
  U16(o, static_cast<uint32_t>(e.extra.size()));
  U16(o, static_cast<uint32_t>(e.comment.size()));
  U16(o, 0);
  U16(o, 0);
  U32(o, 0x20);
  U32(o, 0);
  return o + e.name + e.extra + e.comment;
}

std::string EndRecord(uint32_t entries, uint32_t size, uint32_t offset, const std::string& comment) {
  std::string o = "PK\x05\x06";
  U16(o, 0);
  U16(o, 0);
  U16(o, entries);
  U16(o, entries);
  U32(o, size);
  U32(o, offset);
  U16(o, static_cast<uint32_t>(comment.size()));
  return o + comment;
}

std::string Zip(const std::vector<ZipEntry>& entries, const std::string& comment) {
  const std::string prefix = "PK\x03\x04local";
  std::string cd;
  for (const auto& e : entries) cd += CentralEntry(e);
  return prefix + cd +
         EndRecord(static_cast<uint32_t>(entries.size()), static_cast<uint32_t>(cd.size()),
                   static_cast<uint32_t>(prefix.size()), comment);
}

std::string Cab(const std::vector<std::string>& names, uint16_t flags, uint16_t folders) {
  std::string optional;
  if (flags & 4) {
    U16(optional, 4);
    optional += '\0';
    optional += '\0';
    optional += "RSRV";
  }
  if (flags & 1) optional += std::string("a.cab\0d1\0", 9);
  if (flags & 2) optional += std::string("c.cab\0d3\0", 9);
  std::string folder;
  for (uint16_t i = 0; i < folders; ++i) {
    U32(folder, 0);
    U16(folder, 1);
    U16(folder, 0x1503);
  }
  std::string files;
  for (const auto& n : names) {
    U32(files, 1234);
    U32(files, 0);
    U16(files, 0);
    U16(files, (43 << 9) | (12 << 5) | 31);
    U16(files, (23 << 11) | (59 << 5) | 29);
    U16(files, 0xA0);
    files += n;
    files += '\0';
  }
  const uint32_t coff = static_cast<uint32_t>(36 + optional.size() + folder.size());
  std::string o = "MSCF";
  U32(o, 0);
  U32(o, static_cast<uint32_t>(coff + files.size()));
  U32(o, 0);
  U32(o, coff);
  U32(o, 0);
  o += '\x03';
  o += '\x01';
  U16(o, folders);
  U16(o, static_cast<uint32_t>(names.size()));
  U16(o, flags);
  U16(o, 7);
  U16(o, 0);
  return o + optional + folder + files;
}

bool Write(const std::string& dir, const std::string& name, const std::string& bytes) {
  std::ofstream out(dir + "/" + name, std::ios::binary);
  out << bytes;
  return static_cast<bool>(out);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: archive_seed_corpus ZIP_DIR CAB_DIR\n");
    return 2;
  }
  const std::string zipDir = argv[1], cabDir = argv[2];
  bool ok = true;
  ok &= Write(zipDir, "three.zip",
              Zip({{"docs/readme.txt", "", "first comment", 0}, {"docs/", "", "", 0},
                   {"b\xC3\xA4r.txt", std::string("\x55\x54\x05\x00\x01\x00\x00\x00\x00", 9), "", 0x0800},
                   {"\x81" "ber\\x.txt", "", "\x9C", 0}},
                  "archive comment"));
  ok &= Write(zipDir, "empty.zip", EndRecord(0, 0, 0, ""));
  const std::string entry = CentralEntry({"late.txt", "", "", 0});
  ok &= Write(zipDir, "end-at-one.zip", "X" + EndRecord(1, static_cast<uint32_t>(entry.size()), 23, "") + entry);
  ok &= Write(zipDir, "stray.zip", Zip({{"a", "", "", 0}}, std::string("x PK\x05\x06 y", 8)));
  std::string negative = Zip({{"a", "", "", 0}}, "");
  negative[negative.size() - 14] = '\x00';
  negative[negative.size() - 13] = '\x80';
  ok &= Write(zipDir, "negative-count.zip", negative);

  ok &= Write(cabDir, "plain.cab", Cab({"a.txt", "sub\\b.txt", "caf\xE9"}, 0, 1));
  ok &= Write(cabDir, "reserve.cab", Cab({"a", "b"}, 4, 1));
  ok &= Write(cabDir, "neighbours.cab", Cab({"a", "b"}, 3, 2));
  ok &= Write(cabDir, "no-folder.cab", Cab({"x"}, 0, 0));
  std::string unterminated = Cab({std::string(260, 'n')}, 0, 1);
  unterminated.pop_back();
  ok &= Write(cabDir, "unterminated.cab", unterminated);
  return ok ? 0 : 1;
}
