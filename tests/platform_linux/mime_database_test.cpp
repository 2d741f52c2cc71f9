// The MIME database on a small made-up database (exact rules) and on the
// system's shared-mime-info (the lookups the listing relies on).
#include "nxfv/platform/linux/mime_database.h"

#include <gtest/gtest.h>

#include "nxfv/platform/linux/linux_shell_services.h"
#include "temp_dir.h"

namespace nxfv {
namespace {

using nxfv::testing::TempDir;

// Two data folders: "high" overrides "low".
class MadeUpMimeDatabase : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(dir.ok());
    for (const char* d : {"high", "high/mime", "high/mime/text", "low", "low/mime", "low/mime/text", "low/mime/packages"}) {
      ASSERT_TRUE(dir.MakeDir(d));
    }
    ASSERT_TRUE(dir.WriteFile("high/mime/globs2",
                              "# comment line\n"
                              "50:text/x-high:*.tie\n"
                              "50:text/x-cs-upper:*.C:cs\n"
                              "50:text/x-any-c:*.c\n"
                              "60:text/x-heavy:*.w\n"
                              "50:text/x-dropped:__NOGLOBS__\n"
                              "50:text/x-pattern:*.[ab]\n"
                              "50:text/x-name:Makefile\n"
                              "garbage line\n"
                              "x:text/x-bad-weight:*.bad\n"));
    ASSERT_TRUE(dir.WriteFile("low/mime/globs2",
                              "50:text/x-low:*.tie\n"
                              "90:text/x-heavier:*.W\n"
                              "50:text/x-dropped:*.drop\n"
                              "40:text/x-only-low:*.low\n"
                              "50:text/x-gz:*.tar.gz\n"));
    ASSERT_TRUE(dir.WriteFile("low/mime/aliases", "text/x-old text/x-only-low\n"));
    ASSERT_TRUE(dir.WriteFile("high/mime/generic-icons", "text/x-high:x-office-document\n"));
    ASSERT_TRUE(dir.WriteFile("low/mime/generic-icons", "text/x-high:ignored\n"));
    ASSERT_TRUE(dir.WriteFile("high/mime/text/x-high.xml",
                              "<mime-type type=\"text/x-high\">\n"
                              "  <comment xml:lang=\"de\">Hoch</comment>\n"
                              "  <comment>high &amp; &lt;mighty&gt; &#233;&#x263A;</comment>\n"
                              "</mime-type>\n"));
    ASSERT_TRUE(dir.WriteFile("low/mime/text/x-only-low.xml", "<mime-type><comment>only low</comment></mime-type>"));
    ASSERT_TRUE(dir.WriteFile("low/mime/packages/p.xml",
                              "<mime-info>\n"
                              "<mime-type type=\"text/x-uncompiled\"><comment xml:lang=\"fr\">non</comment>"
                              "<comment>from the package</comment></mime-type>\n"
                              "<mime-type type=\"text/x-empty\"></mime-type>\n"
                              "</mime-info>\n"));
  }
  TempDir dir;
};

TEST_F(MadeUpMimeDatabase, ExtensionsFollowWeightCaseAndFolderPriority) {
  MimeDatabase db({dir / "high", dir / "low/"});
  struct Case { const char* extension; const char* type; } cases[] = {
      {"TIE", "text/x-high"},     // equal weight: the higher-priority folder; no cs flag: any case
      {"C", "text/x-cs-upper"},   // cs match beats the case-blind one
      {"c", "text/x-any-c"},      {"w", "text/x-heavier"},  // weight beats folder priority
      {"drop", ""},               // __NOGLOBS__ above hides the lower glob
      {"tar.gz", "text/x-gz"},    {"a", ""},  // only simple "*.ext" globs count
      {"bad", ""},                {"", ""},
  };
  for (const Case& c : cases) EXPECT_EQ(db.TypeForExtension(c.extension), c.type) << c.extension;
}

TEST_F(MadeUpMimeDatabase, CommentsAndIcons) {
  MimeDatabase db({dir / "high", dir / "low"});
  struct Case { const char* type; const char* comment; const char* icon; } cases[] = {
      {"text/x-high", "high & <mighty> \xC3\xA9\xE2\x98\xBA", "x-office-document"},
      {"text/x-old", "only low", "text-x-generic"},  // an alias
      {"text/x-uncompiled", "from the package", "text-x-generic"},
      {"text/x-empty", "", "text-x-generic"},
      {"image/x-none", "", "image-x-generic"},
      {"../../etc/passwd", "", "application-x-generic"},
      {"text/../x-high", "", "application-x-generic"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(db.Comment(c.type), c.comment) << c.type;
    EXPECT_EQ(db.Comment(c.type), c.comment) << c.type << " (cached)";
    EXPECT_EQ(db.GenericIcon(c.type), c.icon) << c.type;
  }
}

// The installed shared-mime-info database, through the registry service.
TEST(LinuxMimeTypes, AnswersTypeNamesFromTheSystemDatabase) {
  LinuxMimeTypes types;
  struct Case { const char* key; bool found; const char* value; } cases[] = {
      {".TXT", true, "text/plain"},           {"text/plain", true, "plain text document"},
      {".no-such-extension", false, ""},      {".", false, ""},
      {"txt", false, ""},                     {"text/x-no-such-type", false, ""},
  };
  for (const Case& c : cases) {
    std::string value = "unchanged";
    EXPECT_EQ(types.ClassesRootDefault(c.key, value), c.found) << c.key;
    EXPECT_EQ(value, c.found ? c.value : "unchanged") << c.key;
  }
}

}  // namespace
}  // namespace nxfv
