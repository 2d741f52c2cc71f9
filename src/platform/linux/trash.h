// The freedesktop.org trash: "delete with undo" moves an item into the
// trash of its file system, where file managers list it and can put it
// back.
//
// Which trash: the home trash ($XDG_DATA_HOME/Trash, by default
// ~/.local/share/Trash, made with mode 0700 when missing) for items on the
// home trash's file system. For an item on another file system, the trash
// at the top of that file system ("topdir", its mount point):
// $topdir/.Trash/$UID when the administrator made $topdir/.Trash (a real
// folder with the sticky bit, not a link), else $topdir/.Trash-$UID, made
// with mode 0700 (refused when it is a link or someone else's). An item is
// never copied into a trash on another file system: it is renamed, so
// putting it in the trash cannot run out of space or half-happen.
//
// Each item gets info/NAME.trashinfo first (created exclusively, which is
// what reserves NAME), then is renamed to files/NAME. Its
//   [Trash Info]
//   Path=/home/u/a%20b.txt          (percent-encoded; relative to topdir in a topdir trash)
//   DeletionDate=2026-11-24T14:05:09 (local time)
// A taken NAME is numbered like a copy: "a (2).txt". The optional
// directorysizes cache is not written (file managers rebuild it).
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace nxfv {

// "$XDG_DATA_HOME/Trash" or "$HOME/.local/share/Trash" (raw path).
std::string HomeTrashPath();

// Percent-encoding of a path for the Path= key: bytes other than letters,
// digits, "-._~" and "/" become "%HH". Decode reverses it (bad escapes stay).
std::string EncodeTrashPath(const std::string& raw);
std::string DecodeTrashPath(const std::string& text);

class Trash {
 public:
  Trash() = default;
  ~Trash();
  Trash(const Trash&) = delete;
  Trash& operator=(const Trash&) = delete;

  // Moves the item at the absolute raw path into its trash. Returns 0, or an
  // errno with reason set to the text to show (the system's, or ours when
  // the item's file system has no usable trash).
  int Put(const std::string& rawPath, std::string& reason);

 private:
  struct Can {
    dev_t dev = 0;
    std::string topdir;  // "" for the home trash (absolute Path= lines)
    int files = -1;
    int info = -1;
  };
  const Can* CanFor(dev_t dev, const std::string& rawPath, int& err, std::string& reason);

  std::vector<Can> cans_;
};

// Puts the trashed item `name` of the trash folder trashDir back where its
// .trashinfo says it came from, never over an existing file; removes the
// info file. Returns 0 or an errno. (For a topdir trash the relative Path is
// taken from the topdir above trashDir.)
int RestoreFromTrash(const std::string& trashDir, const std::string& name);

}  // namespace nxfv
