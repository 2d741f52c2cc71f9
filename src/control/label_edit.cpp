#include "nxfv/control/label_edit.h"

#include "nxfv/control/file_commands.h"
#include "nxfv/control/selection.h"
#include "nxfv/control/viewer_core.h"
#include "nxfv/platform/error_state.h"
#include "nxfv/platform/numeric_text.h"

namespace nxfv::label_edit {
namespace {

// Raises OnItemRename; false when the host cancels or leaves no name.
bool AskHost(ViewerCore& core, std::shared_ptr<NxFileListItem> item, std::string& newname) {
  bool cancel = false;
  if (core.events) core.events->OnItemRename(item, newname, cancel);
  return !cancel && !newname.empty();
}

void CheckName(const std::string& name) {
  if (name.empty() || name == "." || name == ".." || name.find_first_of(std::string("\\/\0", 3)) != std::string::npos)
    RaiseError(kErrBadFileName);
}

// The row key the folder listing would give the name: a name of digits
// alone would read as a position, so it gets a mark.
std::string KeyFor(ViewerCore& core, const NxFileListItem& item, const std::string& name) {
  const LocaleFormats& formats = core.platform.Locale().Formats();
  if (!IsNumericText(name, {formats.thousandsSeparator, formats.decimalSeparator})) return name;
  return (item.ListItemTyp() == typeoffitem::Folder ? "~" : "##$$") + name;
}

}  // namespace

void Rename(ViewerCore& core, NxFileListItem& item, ListRow& row, const std::string& newName) {
  if (newName == item.FileName()) return;
  CheckName(newName);
  const typeoffitem type = item.ListItemTyp();
  if (core.insideArchive || (type != typeoffitem::file && type != typeoffitem::Folder))
    RaiseError(kErrPermissionDenied);
  const std::string oldKey(row.Key());
  const std::string newKey = KeyFor(core, item, newName);
  // A name another row has is refused before anything changes on disk.
  if (const ListRow* other = core.listView.FindRow(newKey); other && other != &row) RaiseError(kErrKeyNotUnique);
  // A host-filled list renames its rows only: the host owns what they stand for.
  if (!core.settings.virtualFileList) {
    const std::string source = NxFileoperation::SourcePath(item);
    if (source.empty() || !core.fileCommands->Operation()->RenamePath(source, newName)) return;
  }
  core.listView.SetRowKey(row.Index(), newKey);
  if (oldKey != newKey && !NxFileCollection::Internal(*core.items).ChangeKey(oldKey, newKey)) {
    core.listView.SetRowKey(row.Index(), oldKey);
    return;
  }
  row.SetText(newName);
  item.setFileName(newName);
  NxFileListItem::Internal::SetKey(item, newKey);
  item.setDisplayname(newName);
  if (type == typeoffitem::file) {
    const std::string ext = core.fileTypes.GetExt(newName);
    item.setExtension(ext);
    const int32_t column = core.listView.FindColumn("ext");
    if (column > 0) row.SetSubItem(column, ext);
  }
}

bool EndLabelEdit(ViewerCore& core, size_t rowIndex, const std::string& newText) {
  core.listView.EndLabelEditRequest();
  if (rowIndex >= core.listView.RowCount()) return false;
  ListRow& row = core.listView.Row(rowIndex);
  if (selection::IsGoUpRow(row)) return false;
  auto item = selection::ItemOfRow(core, row);
  if (!item) return false;
  core.itemEvents.Subscribe(item);
  std::string newname = newText;
  if (!AskHost(core, item, newname)) return false;
  // The host's handler may have changed the view: find the row again.
  ListRow* now = selection::RowOfItem(core, *item);
  if (!now) return false;
  Rename(core, *item, *now, newname);
  return item->FileName() == newname;
}

bool RenameCommand(ViewerCore& core, const std::shared_ptr<NxFileListItem>& item, const Variant& Parameter) {
  std::string newname;
  if (Parameter.IsString()) {
    newname = Parameter.AsString();
    if (newname.empty()) return false;
  } else if (!AskHost(core, item, newname)) {
    return false;
  }
  ListRow* row = selection::RowOfItem(core, *item);
  if (!row) return false;
  Rename(core, *item, *row, newname);
  return item->FileName() == newname;
}

}  // namespace nxfv::label_edit
