// Virtual lists: the host fills the view with entries of its own (search
// results, a catalogue, anything not in one folder).
//
//   BeginVirtualList   clears the view and builds the columns; the view has
//                      no current folder from now on, so it is neither
//                      watched nor refreshed from disk.
//   AddVirtualFile     one entry: its row texts are formatted as a folder
//                      listing formats them, its key follows the listing's
//                      rule (an all-digit name gets "~" for a folder,
//                      "##$$" for a file); a key already shown raises 35602.
//   EndVirtualList     sorts and announces the new view (AfterNewView with
//                      the path "").
//
// A folder entry (FILE_ATTRIBUTE_DIRECTORY) becomes an item of type
// VirtualFolder: it has no place in the file system, so shell commands
// refuse it (RefusesShellCommands). A file entry is an ordinary file item
// and takes the shell commands of its Path and FileName. The host's user
// data is taken as given; SetUserdata is not raised (the host has just
// said what it wants). Empty type text takes the type of the extension.
// All three are ignored while a listing runs.
#pragma once

#include "nxfv/control/viewer_core.h"
#include "nxfv/control/virtual_file.h"

namespace nxfv {

void BeginVirtualList(ViewerCore& core);
void AddVirtualFile(ViewerCore& core, const VirtualFile& file);
void EndVirtualList(ViewerCore& core);

// True for items that stand for nothing in the file system.
bool RefusesShellCommands(const NxFileListItem& item);

}  // namespace nxfv
