// The drives and special-folder view: the volumes a user browses and the
// user's own folders, one row each, shown when the user goes up from a root.
//
// Rows, in this order before sorting: one per volume of Platform::Drives()
// (an item of type Drive whose Path is the mount point or root, "/" for the
// root file system, drive tag 0), then one per special folder that exists
// (home, desktop, documents, music, pictures, videos; an item of type
// Folder whose Path and FileName together name the folder, as a folder
// listing's items do). A special folder that is also a volume shows once.
//
// Columns: the usual set, with three captions changed for this view only:
// "ext" shows the free space ("Free Space"), "siz" the total size ("Total
// Size") and "typ" the file-system name ("File System"). The next listing
// builds the columns anew, captions included. A drive without a medium
// shows no figures, one whose volume tells no size shows no space.
//
// The name of a volume is its label, or its root when it has none; the name
// of a special folder is its own name, "Home" for the home folder. Row keys
// are the volume roots and folder paths (never numeric: they hold a
// separator). The view has no current folder (""), is announced as such,
// and is not watched for changes. The host's SetUserdata is raised per row
// as in a folder listing.
#pragma once

#include "nxfv/control/viewer_core.h"

namespace nxfv {

// Shows the drives view. Ignored while another listing runs; failures raise
// to the caller.
void LoadDrives(ViewerCore& core);

}  // namespace nxfv
