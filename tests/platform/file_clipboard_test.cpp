#include "nxfv/platform/file_uri_list.h"

#include <gtest/gtest.h>

namespace nxfv {
namespace {

TEST(FileUriListTest, PathsEncodeToFileUrisAndBack) {
  struct Case {
    std::string path;
    std::string uri;
  } cases[] = {
      {"/tmp/a b.txt", "file:///tmp/a%20b.txt"},
      {"/100%/x#y?z", "file:///100%25/x%23y%3Fz"},
      {"/q/it's \"q\" $HOME", "file:///q/it%27s%20%22q%22%20%24HOME"},
      {"/d/caf\xC3\xA9", "file:///d/caf%C3%A9"},       // UTF-8
      {"/d/caf\xE9\xFF\x01", "file:///d/caf%E9%FF%01"},  // not UTF-8
      {"/-._~Az09/", "file:///-._~Az09/"},
      {"/", "file:///"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(PathToFileUri(c.path), c.uri) << c.path;
    std::string back;
    EXPECT_TRUE(FileUriToPath(c.uri, back)) << c.uri;
    EXPECT_EQ(back, c.path) << c.uri;
  }
  EXPECT_EQ(PathToFileUri("relative/x"), "");
  EXPECT_EQ(PathToFileUri("C:\\x"), "");
}

TEST(FileUriListTest, DecodingAcceptsLocalFileUrisOnly) {
  struct Case {
    const char* uri;
    const char* path;  // nullptr: rejected
  } cases[] = {
      {"FILE://localhost/a%2fb", "/a/b"}, {"file:///a%e9", "/a\xE9"}, {"file:///a%", nullptr},
      {"file:///a%4", nullptr},           {"file:///a%zz", nullptr},  {"file:///a%00b", nullptr},
      {"file://host/a", nullptr},         {"http:///a", nullptr},     {"file:", nullptr},
  };
  for (const Case& c : cases) {
    std::string path = "stale";
    EXPECT_EQ(FileUriToPath(c.uri, path), c.path != nullptr) << c.uri;
    EXPECT_EQ(path, c.path ? c.path : "") << c.uri;
  }
}

TEST(FileUriListTest, UriListAndGnomeCopiedFilesRoundTrip) {
  const std::vector<std::string> paths{"/a b", "/c\xE9%", "not/absolute"};
  const std::vector<std::string> absolute{"/a b", "/c\xE9%"};
  EXPECT_EQ(EncodeUriList(paths), "file:///a%20b\r\nfile:///c%E9%25\r\n");
  EXPECT_EQ(DecodeUriList(EncodeUriList(paths)), absolute);
  EXPECT_EQ(DecodeUriList("# comment\nfile:///x\n\nhttp://h/y\r\nfile:///z"), (std::vector<std::string>{"/x", "/z"}));

  EXPECT_EQ(EncodeGnomeCopiedFiles(paths, false), "copy\nfile:///a%20b\nfile:///c%E9%25");
  std::vector<std::string> decoded;
  bool cut = false;
  EXPECT_TRUE(DecodeGnomeCopiedFiles(EncodeGnomeCopiedFiles(paths, true), decoded, cut));
  EXPECT_EQ(decoded, absolute);
  EXPECT_TRUE(cut);
  EXPECT_TRUE(DecodeGnomeCopiedFiles("copy\r\nfile:///x\r\n", decoded, cut));
  EXPECT_EQ(decoded, (std::vector<std::string>{"/x"}));
  EXPECT_FALSE(cut);
  for (const char* bad : {"move\nfile:///x", "cut\n", "", "file:///x"}) {
    EXPECT_FALSE(DecodeGnomeCopiedFiles(bad, decoded, cut)) << bad;
    EXPECT_TRUE(decoded.empty());
  }
}

}  // namespace
}  // namespace nxfv
