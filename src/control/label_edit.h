// Renaming an item from its label: the front end's in-place edit ends in
// FileViewer::EndLabelEdit, an item's ExecuteShellCommand(IcRename) comes
// through the item events. Either way the host hears OnItemRename first
// and may change the name or cancel.
//
// The file is renamed first, through the control's NxFileoperation (one
// rename of the file-operation service); only when that succeeded do the
// row's text and key, the collection key and the item's FileName, Key,
// Displayname and Extension follow the new name, so that the row keeps its
// selection and place. A host-filled list (VirtualFileList) renames its
// rows only. A cancelled, empty, refused or failed rename leaves everything
// as it was.
// Refused (error box under the caller's label): a name with a separator or
// NUL, "." or "..", a name another row already has (35602), and items that
// are not plain files or folders of a folder view (archive entries, drives,
// virtual folders: 70).
#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "nxfv/model/file_list_item.h"

namespace nxfv {

struct ViewerCore;
class ListRow;

namespace label_edit {

// The front end's edited text for the row at rowIndex. Raises
// OnItemRename(Item, newname, Cancel) with newname = newText; renames
// unless the host cancels or leaves the name empty. True when renamed.
// Failures raise to the caller.
bool EndLabelEdit(ViewerCore& core, size_t rowIndex, const std::string& newText);

// IcRename: Parameter, when it is a string, is the new name; otherwise the
// host is asked through OnItemRename (starting from ""). True when renamed.
bool RenameCommand(ViewerCore& core, const std::shared_ptr<NxFileListItem>& item, const Variant& Parameter);

// The rename itself, no event. Raises when refused, having changed nothing.
void Rename(ViewerCore& core, NxFileListItem& item, ListRow& row, const std::string& newName);

}  // namespace label_edit
}  // namespace nxfv
