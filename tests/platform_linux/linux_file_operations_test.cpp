// The Linux file operations on real folders. The data-safety cases compare
// a fingerprint of every byte, mode, owner, time and link target of a tree
// before and after, and look for temporaries left anywhere.
#include "nxfv/platform/linux/linux_file_operations.h"

#include <gtest/gtest.h>

#include <cerrno>

#include "file_ops_fixture.h"
#include "nxfv/platform/free_name.h"
#include "nxfv/platform/linux/trash.h"

namespace nxfv::testing {
namespace {

struct RecordingBox : MessageBoxService {
  std::vector<std::string> shown;
  int32_t Show(const std::string& text, int32_t, const std::string&) override {
    shown.push_back(text);
    return 1;
  }
};

class FileOpsTest : public ::testing::Test {
 protected:
  FileOperationResult Do(uint32_t op, std::vector<std::string> src, std::vector<std::string> dst, uint16_t flags,
                         bool withHost = true) {
    ops.SetHost(withHost ? &host : nullptr);
    for (auto& s : src) s = EscapeFileName(s);
    for (auto& d : dst) d = EscapeFileName(d);
    return ops.Perform({0, op, src, dst, flags, ""});
  }
  TempDir dir;
  RecordingBox box;
  RecordingHost host;
  LinuxFileOperations ops{box};
};

TEST(FreeNameTest, NumbersBeforeTheExtension) {
  struct Case {
    const char* name;
    bool folder;
    const char* second;
  } cases[] = {
      {"report.txt", false, "report (2).txt"}, {"a.tar.gz", false, "a (2).tar.gz"},
      {"b.json.XZ", false, "b (2).json.XZ"},   {"c.verylong.gz", false, "c.verylong (2).gz"},
      {"Photos", true, "Photos (2)"},          {"Photos.2024", true, "Photos.2024 (2)"},
      {"Makefile", false, "Makefile (2)"},     {".bashrc", false, ".bashrc (2)"},
      {".config.old", false, ".config (2).old"}, {"v1.2", false, "v1 (2).2"},
      {"x.", false, "x (2)."},                 {"..gz", false, ". (2).gz"},
  };
  for (const Case& c : cases) EXPECT_EQ(NumberedName(c.name, c.folder, 2), c.second) << c.name;
  EXPECT_EQ(NumberedName("report.txt", false, 12), "report (12).txt");
}

TEST_F(FileOpsTest, CopyKeepsEveryByteModeTimeAndLink) {
  ASSERT_TRUE(dir.ok());
  MakeRichTree(dir);
  dir.MakeDir("dest");
  const auto before = Fingerprint(dir / "tree");
  const FileOperationResult r = Do(FO_COPY, {dir / "tree"}, {dir / "dest"}, FOF_NOCONFIRMATION);
  EXPECT_TRUE(r.Succeeded()) << r.returnCode << " " << (host.failed.empty() ? "" : host.failed[0]);
  EXPECT_EQ(Fingerprint(dir / "dest/tree"), before);
  EXPECT_EQ(Fingerprint(dir / "tree"), before);
  EXPECT_TRUE(Temporaries(dir.path()).empty());
  EXPECT_EQ(host.last.bytesDone, host.last.bytesTotal);
  EXPECT_EQ(host.last.filesDone, host.last.filesTotal);
  EXPECT_GE(host.progressCalls, 3);  // the large file reports per chunk
}

TEST_F(FileOpsTest, ManySmallFilesDoNotFloodTheHost) {
  ASSERT_TRUE(dir.ok());
  dir.MakeDir("many");
  for (int i = 0; i < 2000; ++i) dir.WriteFile("many/" + std::to_string(i), "x");
  ASSERT_TRUE(Do(FO_COPY, {dir / "many"}, {dir / "copy"}, FOF_NOCONFIRMATION).Succeeded());
  EXPECT_LT(host.progressCalls, 500);
  EXPECT_EQ(host.last.filesDone, 2001u);
}

TEST_F(FileOpsTest, MoveAcrossFileSystemsIsCompleteBeforeTheSourceGoes) {
  ASSERT_TRUE(dir.ok());
  TmpfsMount other(dir, "other", "size=64m");
  if (!other.ok()) GTEST_SKIP() << "needs root and a tmpfs mount for a second file system";
  MakeRichTree(dir);
  const auto before = Fingerprint(dir / "tree");
  const auto outside = Fingerprint(dir / "outside");

  // Cancelled half-way: the source is whole, the target has nothing of it.
  host.cancelAtBytes = 10 << 20;
  FileOperationResult r = Do(FO_MOVE, {dir / "tree"}, {other.path()}, FOF_NOCONFIRMATION);
  EXPECT_TRUE(r.anyOperationsAborted);
  EXPECT_EQ(Fingerprint(dir / "tree"), before);
  EXPECT_FALSE(Exists(other.path() + "/tree"));
  EXPECT_TRUE(Temporaries(other.path()).empty());

  host.cancelAtBytes = UINT64_MAX;
  r = Do(FO_MOVE, {dir / "tree"}, {other.path()}, FOF_NOCONFIRMATION);
  EXPECT_TRUE(r.Succeeded()) << (host.failed.empty() ? "" : host.failed[0]);
  EXPECT_EQ(Fingerprint(other.path() + "/tree"), before);
  EXPECT_FALSE(Exists(dir / "tree"));
  EXPECT_EQ(Fingerprint(dir / "outside"), outside);  // the link out of the tree was not followed
  EXPECT_EQ(host.last.filesDone, host.last.filesTotal);
}

TEST_F(FileOpsTest, CancelledCopyLeavesNoPartialFile) {
  ASSERT_TRUE(dir.ok());
  dir.WriteFile("big", Bytes(24 << 20, 3));
  const auto before = Fingerprint(dir / "big");
  host.cancelAtBytes = 8 << 20;
  const FileOperationResult r = Do(FO_COPY, {dir / "big"}, {dir / "copy"}, FOF_NOCONFIRMATION);
  EXPECT_TRUE(r.anyOperationsAborted);
  EXPECT_FALSE(Exists(dir / "copy"));
  EXPECT_TRUE(Temporaries(dir.path()).empty());
  EXPECT_EQ(Fingerprint(dir / "big"), before);
  EXPECT_LE(host.last.bytesDone, uint64_t{16} << 20);  // seen within a chunk
}

// A target that cannot be written: nothing there, no temporary, the source whole, the reason told.
TEST_F(FileOpsTest, FailuresLeaveNothingBehind) {
  ASSERT_TRUE(dir.ok());
  TmpfsMount full(dir, "full", "size=1m");
  TmpfsMount readOnly(dir, "ro", "size=1m");
  if (!full.ok() || !readOnly.ok() || !readOnly.ReadOnly()) GTEST_SKIP() << "needs root to mount small and read-only tmpfs";
  MakeRichTree(dir, 3 << 20);
  const auto before = Fingerprint(dir / "tree");
  struct Case {
    std::string target;
    uint32_t op;
    int code;
    const char* reason;
  } cases[] = {
      {full.path(), FO_COPY, ENOSPC, "No space left on device"},
      {full.path(), FO_MOVE, ENOSPC, "No space left on device"},
      {readOnly.path(), FO_COPY, EROFS, "Read-only file system"},
      {readOnly.path(), FO_MOVE, EROFS, "Read-only file system"},
  };
  for (const Case& c : cases) {
    host.failed.clear();
    const FileOperationResult r = Do(c.op, {dir / "tree"}, {c.target}, FOF_NOCONFIRMATION);
    EXPECT_EQ(r.returnCode, c.code) << c.target;
    ASSERT_FALSE(host.failed.empty());
    EXPECT_NE(host.failed[0].find(c.reason), std::string::npos) << host.failed[0];
    EXPECT_EQ(Fingerprint(dir / "tree"), before);
    EXPECT_FALSE(Exists(c.target + "/tree")) << c.target;
    EXPECT_TRUE(Temporaries(c.target).empty());
  }
}

TEST_F(FileOpsTest, CollisionsNeverReplaceWithoutPermission) {
  ASSERT_TRUE(dir.ok());
  struct Case {
    const char* what;
    uint16_t flags;
    bool host, answer;
    const char* targetAfter;  // content of dest/report.txt afterwards
    const char* numbered;     // content of dest/report (2).txt, "" = absent
    bool succeeded;
  } cases[] = {
      {"rename on collision", FOF_RENAMEONCOLLISION, true, false, "old", "new", true},
      {"asked, yes", 0, true, true, "new", "", true},
      {"asked, no", 0, true, false, "old", "", false},
      {"no confirmation means yes", FOF_NOCONFIRMATION, true, false, "new", "", true},
      {"no host means no", 0, false, true, "old", "", false},
  };
  for (const Case& c : cases) {
    for (uint32_t op : {FO_COPY, FO_MOVE}) {
      TempDir t;
      t.WriteFile("report.txt", "new");
      t.MakeDir("dest");
      t.WriteFile("dest/report.txt", "old");
      host.answer = c.answer;
      ops.SetHost(c.host ? &host : nullptr);
      const FileOperationResult r = ops.Perform({0, op, {t / "report.txt"}, {t / "dest"}, c.flags, ""});
      EXPECT_EQ(r.Succeeded(), c.succeeded) << c.what;
      EXPECT_EQ(ReadAll(t / "dest/report.txt"), c.targetAfter) << c.what;
      EXPECT_EQ(Exists(t / "dest/report (2).txt") ? ReadAll(t / "dest/report (2).txt") : "", c.numbered) << c.what;
      // A move that did not happen keeps its source.
      EXPECT_EQ(Exists(t / "report.txt"), op == FO_COPY || !c.succeeded) << c.what;
      EXPECT_TRUE(Temporaries(t.path()).empty());
    }
  }
  EXPECT_EQ(box.shown.size(), 2u);  // the two "no host" cases say why
}

// A copy onto itself and a folder into itself are refused untouched; with
// renaming on collision the copy takes a numbered name.
TEST_F(FileOpsTest, CopyOntoItselfAndFolderIntoItself) {
  ASSERT_TRUE(dir.ok() && dir.WriteFile("x.txt", "x") && dir.MakeDir("a") && dir.MakeDir("a/b"));
  dir.WriteFile("a/f", "f");
  EXPECT_EQ(Do(FO_COPY, {dir / "x.txt"}, {dir.path()}, FOF_NOCONFIRMATION).returnCode, EINVAL);
  EXPECT_EQ(ReadAll(dir / "x.txt"), "x");
  for (uint32_t op : {FO_COPY, FO_MOVE}) {
    host.failed.clear();
    EXPECT_EQ(Do(op, {dir / "a"}, {dir / "a/b"}, FOF_NOCONFIRMATION).returnCode, EINVAL);
    ASSERT_EQ(host.failed.size(), 1u);
    EXPECT_NE(host.failed[0].find("The destination folder is inside the source folder"), std::string::npos);
  }
  EXPECT_FALSE(Exists(dir / "a/b/a"));
  EXPECT_TRUE(Do(FO_COPY, {dir / "x.txt", dir / "a"}, {dir.path()}, FOF_RENAMEONCOLLISION | FOF_MULTIDESTFILES)
                  .Succeeded());
  EXPECT_EQ(ReadAll(dir / "x (2).txt"), "x");
  EXPECT_EQ(ReadAll(dir / "a (2)/f"), "f");
}

TEST_F(FileOpsTest, FoldersMergeOnceAgreed) {
  ASSERT_TRUE(dir.ok());
  for (uint32_t op : {FO_COPY, FO_MOVE}) {
    TempDir t;
    for (const char* d : {"src", "src/sub", "dest", "dest/src"}) t.MakeDir(d);
    t.WriteFile("src/same.txt", "new");
    t.WriteFile("src/sub/only-new", "n");
    t.WriteFile("dest/src/same.txt", "old");
    t.WriteFile("dest/src/only-old", "o");
    host.asked.clear();
    host.answer = true;
    ops.SetHost(&host);
    EXPECT_TRUE(ops.Perform({0, op, {t / "src"}, {t / "dest"}, 0, ""}).Succeeded());
    EXPECT_EQ(host.asked, std::vector<FileOperationQuestion>{FileOperationQuestion::ConfirmReplace});
    EXPECT_EQ(ReadAll(t / "dest/src/same.txt"), "new");
    EXPECT_EQ(ReadAll(t / "dest/src/only-old"), "o");
    EXPECT_EQ(ReadAll(t / "dest/src/sub/only-new"), "n");
    EXPECT_EQ(Exists(t / "src"), op == FO_COPY);
  }
}

TEST_F(FileOpsTest, RenameAndMissingFolders) {
  ASSERT_TRUE(dir.ok());
  dir.WriteFile("\xe9t\xe9.txt", "raw");  // not UTF-8: the request carries it escaped
  dir.WriteFile("taken", "t");
  EXPECT_FALSE(Do(FO_RENAME, {dir / "\xe9t\xe9.txt"}, {dir / "taken"}, 0, false).Succeeded());
  EXPECT_EQ(ReadAll(dir / "taken"), "t");
  EXPECT_TRUE(Do(FO_RENAME, {dir / "\xe9t\xe9.txt"}, {dir / "taken"}, FOF_RENAMEONCOLLISION).Succeeded());
  EXPECT_EQ(ReadAll(dir / "taken (2)"), "raw");

  // A missing destination folder: asked for, made on yes, left alone on no.
  host.asked.clear();
  host.answer = false;
  EXPECT_TRUE(Do(FO_COPY, {dir / "taken", dir / "taken (2)"}, {dir / "new/folder"}, FOF_MULTIDESTFILES)
                  .anyOperationsAborted);
  EXPECT_FALSE(Exists(dir / "new"));
  host.answer = true;
  EXPECT_TRUE(Do(FO_COPY, {dir / "taken", dir / "taken (2)"}, {dir / "new/folder"}, FOF_MULTIDESTFILES).Succeeded());
  EXPECT_EQ(ReadAll(dir / "new/folder/taken (2)"), "raw");
  EXPECT_EQ(host.asked.size(), 2u);
}

TEST_F(FileOpsTest, DeleteNeverFollowsLinks) {
  ASSERT_TRUE(dir.ok());
  MakeRichTree(dir, 1000);
  const auto outside = Fingerprint(dir / "outside");
  host.answer = false;
  EXPECT_TRUE(Do(FO_DELETE, {dir / "tree"}, {}, 0).anyOperationsAborted);  // "no": nothing done
  EXPECT_TRUE(Exists(dir / "tree/small.txt"));
  host.answer = true;
  EXPECT_TRUE(Do(FO_DELETE, {dir / "tree"}, {}, 0).Succeeded());
  EXPECT_EQ(host.asked.size(), 2u);
  EXPECT_FALSE(Exists(dir / "tree"));
  EXPECT_EQ(Fingerprint(dir / "outside"), outside);
  // A link given itself is removed as a link.
  symlink((dir / "outside").c_str(), (dir / "link").c_str());
  EXPECT_TRUE(Do(FO_DELETE, {dir / "link"}, {}, FOF_NOCONFIRMATION).Succeeded());
  EXPECT_FALSE(Exists(dir / "link"));
  EXPECT_EQ(Fingerprint(dir / "outside"), outside);
}

class TrashTest : public FileOpsTest {
 protected:
  void SetUp() override { ASSERT_TRUE(dir.ok() && dir.MakeDir("data")); }
  ScopedEnv dataHome{"XDG_DATA_HOME", (dir / "data").c_str()};
};

TEST_F(TrashTest, RoundTrip) {
  MakeRichTree(dir, 1000);
  dir.WriteFile("a b%.txt", "one");
  const auto tree = Fingerprint(dir / "tree");
  ASSERT_TRUE(Do(FO_DELETE, {dir / "tree", dir / "a b%.txt"}, {}, FOF_ALLOWUNDO | FOF_NOCONFIRMATION).Succeeded());
  EXPECT_FALSE(Exists(dir / "tree"));
  const std::string trash = dir / "data/Trash";
  const std::string info = ReadAll(trash + "/info/a b%.txt.trashinfo");
  const std::string expected = "[Trash Info]\nPath=" + EncodeTrashPath(dir / "a b%.txt") + "\nDeletionDate=";
  EXPECT_EQ(info.substr(0, expected.size()), expected);
  EXPECT_NE(info.find("a%20b%25.txt"), std::string::npos);
  EXPECT_EQ(info.size(), expected.size() + 20);  // YYYY-MM-DDThh:mm:ss and a line break
  EXPECT_EQ(Fingerprint(trash + "/files/tree"), tree);

  // A second item of the same name takes a numbered name in the trash.
  dir.WriteFile("a b%.txt", "two");
  ASSERT_TRUE(Do(FO_DELETE, {dir / "a b%.txt"}, {}, FOF_ALLOWUNDO | FOF_NOCONFIRMATION).Succeeded());
  EXPECT_EQ(ReadAll(trash + "/files/a b% (2).txt"), "two");

  EXPECT_EQ(RestoreFromTrash(trash, "tree"), 0);
  EXPECT_EQ(RestoreFromTrash(trash, "a b%.txt"), 0);
  EXPECT_EQ(Fingerprint(dir / "tree"), tree);
  EXPECT_EQ(ReadAll(dir / "a b%.txt"), "one");
  EXPECT_EQ(RestoreFromTrash(trash, "a b% (2).txt"), EEXIST);  // never over an existing file
  EXPECT_FALSE(Exists(trash + "/info/tree.trashinfo"));
  EXPECT_EQ(DecodeTrashPath(EncodeTrashPath("/a/\xff\n%b")), "/a/\xff\n%b");
}

TEST_F(TrashTest, OtherFileSystemUsesItsTopdirTrash) {
  TmpfsMount other(dir, "other", "size=4m");
  if (!other.ok()) GTEST_SKIP() << "needs root and a tmpfs mount for a second file system";
  mkdir((other.path() + "/sub").c_str(), 0755);
  dir.WriteFile("other/sub/f.txt", "f");
  ASSERT_TRUE(Do(FO_DELETE, {other.path() + "/sub/f.txt"}, {}, FOF_ALLOWUNDO | FOF_NOCONFIRMATION).Succeeded());
  const std::string trash = other.path() + "/.Trash-" + std::to_string(geteuid());
  struct stat st {};
  ASSERT_EQ(lstat(trash.c_str(), &st), 0);
  EXPECT_EQ(st.st_mode & 0777, 0700u);
  EXPECT_NE(ReadAll(trash + "/info/f.txt.trashinfo").find("\nPath=sub/f.txt\n"), std::string::npos);
  EXPECT_EQ(RestoreFromTrash(trash, "f.txt"), 0);
  EXPECT_EQ(ReadAll(other.path() + "/sub/f.txt"), "f");
}

}  // namespace
}  // namespace nxfv::testing
