// The file-operation service on Linux: copy, move, delete (plain or into
// the trash) and rename, filled in like a Windows shell file-operation call.
//
// Destinations. Without FOF_MULTIDESTFILES the one destination is the
// folder every source goes into under its own name; with it each source has
// its own full target path, except that one destination for several
// sources is still their folder (the control sends it so). Either way a
// copy or move whose target is an existing folder (and not the source
// itself) goes inside it. A rename's destination is always the new full
// path. A missing target folder is made (asking ConfirmMakeDir once per
// folder unless FOF_NOCONFIRMMKDIR or FOF_NOCONFIRMATION).
//
// Collisions. With FOF_RENAMEONCOLLISION the item takes a free name
// ("report (2).txt", see free_name.h), also when copying a file onto
// itself. Otherwise ConfirmReplace is asked (FOF_NOCONFIRMATION answers
// yes); no skips the item. A folder onto an existing folder merges into
// it, and the one yes for the folder covers the files inside it it
// replaces. A file never replaces a folder nor the other way round; a file
// copied onto itself without FOF_RENAMEONCOLLISION fails; a folder copied
// or moved into itself or below itself fails ("The destination folder is
// inside the source folder").
//
// Deleting asks ConfirmOperation once for the whole request unless
// FOF_NOCONFIRMATION; with FOF_ALLOWUNDO items go to the trash (trash.h),
// otherwise they are deleted for good without following links
// (tree_delete.h).
//
// Safety. Copies land under temporary names and are renamed into place
// complete (file_copy.h). A move is a rename on one file system; across
// file systems it copies the whole item, checks every file (same size, the
// source unchanged), syncs the target file system, and only then deletes
// the source, and only the entries it copied. An item whose copy fails or
// is cancelled is removed again from the target when the copy made it (so
// an item arrives whole or not at all; only a merge into an existing folder
// keeps the files it completed), and its source is untouched.
//
// FOF_FILESONLY and FOF_SIMPLEPROGRESS change nothing here: paths are never
// wildcards ('*' is an ordinary name character on Linux), and how progress
// looks is the host's business.
//
// Outcome. Without a host, questions are answered as file_op_context.h says
// (do it, make the folder, but never replace) and failures show one error
// box each. The result's returnCode is the errno of the first failure (0
// when none); anyOperationsAborted is set when the user said no or
// cancelled. Progress: see file_op_context.h.
#pragma once

#include "nxfv/platform/file_operation_service.h"
#include "nxfv/platform/services.h"

namespace nxfv {

class LinuxFileOperations : public FileOperationService {
 public:
  explicit LinuxFileOperations(MessageBoxService& errorBox) : errorBox_(errorBox) {}

  FileOperationResult Perform(const FileOperationRequest& request) override;

 private:
  MessageBoxService& errorBox_;
};

}  // namespace nxfv
