#include "nxfv/control/activation.h"

#include <algorithm>
#include <cctype>

#include "nxfv/control/file_commands.h"
#include "nxfv/control/file_viewer.h"
#include "nxfv/control/file_viewer_internal.h"
#include "nxfv/control/host_boundary.h"
#include "nxfv/control/selection.h"
#include "nxfv/platform/error_state.h"

namespace nxfv {
namespace {

constexpr const char* kGoUpKey = "sysgoup";

bool IsArchiveName(std::string_view name) {
  if (name.size() < 4) return false;
  std::string tail(name.substr(name.size() - 4));
  std::transform(tail.begin(), tail.end(), tail.begin(), [](unsigned char ch) { return std::tolower(ch); });
  return tail == ".zip" || tail == ".cab";
}

const ListRow* FirstSelectedRow(const ListView& view) {
  for (size_t i = 0; i < view.RowCount(); ++i)
    if (view.Row(i).Selected()) return &view.Row(i);
  return nullptr;
}

}  // namespace

bool FileViewer::ActivateRow(const std::string& rowKey) {
  ViewerCore& c = *core_;
  if (c.busy) return false;
  const ListRow* row = c.listView.FindRow(rowKey);
  if (!row) return false;
  if (row->Key() == kGoUpKey) return GoUP();
  auto item = selection::ItemOfRow(c, *row);
  if (!item) return false;
  bool done = false;
  RunReported(c.platform, ".ItemActivate", [&] {
    const std::string path(item->Path());
    const std::string full = path + std::string(item->FileName());
    switch (item->ListItemTyp()) {
      case typeoffitem::Drive:
        ListLocation(path);
        done = true;
        break;
      case typeoffitem::Folder:
      case typeoffitem::VirtualFolder:
        if (c.insideArchive || !c.settings.allowDiveIntoFolders) return;
        ListLocation(full);
        done = true;
        break;
      case typeoffitem::file:
        if (c.insideArchive) return;
        if (IsArchiveName(item->FileName()) && c.settings.allowDiveIntoArchives) {
          ListLocation(full);
          done = true;
        } else if (c.settings.allowFileExecution) {
          if (!c.platform.Launcher().Launch(full, "open")) RaiseError(kErrPathFileAccess);
          done = true;
        }
        break;
      case typeoffitem::None:
        break;
    }
  });
  return done;
}

bool HostLetsActivate(FileViewer& viewer, const std::string& rowKey) {
  ViewerCore& c = FileViewer::Internal::Core(viewer);
  const ListRow* row = c.listView.FindRow(rowKey);
  if (!row || !c.events) return true;
  auto item = selection::ItemOfRow(c, *row);
  if (!item) return true;
  c.itemEvents.Subscribe(item);
  bool cancel = false;
  c.events->OnItemDblClick(item, cancel);
  return !cancel;
}

bool HandleDefaultKey(FileViewer& viewer, int16_t keyCode, int16_t shift) {
  ViewerCore& c = FileViewer::Internal::Core(viewer);
  const int16_t mods = shift & (kShiftMask | kCtrlMask | kAltMask);
  switch (keyCode) {
    case kKeyReturn:
      if (const ListRow* row = FirstSelectedRow(c.listView)) {
        const std::string key(row->Key());
        if (HostLetsActivate(viewer, key)) viewer.ActivateRow(key);
      }
      return true;
    case kKeyBack:
      if (mods != 0) return false;
      viewer.GoUP();
      return true;
    case kKeyLeft:
    case kKeyRight:
      if (mods != kAltMask) return false;
      if (keyCode == kKeyLeft) viewer.HistoryPrevious(); else viewer.HistoryNext();
      return true;
    case kKeyF5:
      viewer.RefreshView(true);
      return true;
    case kKeyF2:
      viewer.StartLabelEdit();
      return true;
    case kKeyA:
      if (mods != kCtrlMask) return false;
      viewer.SelectAll();
      return true;
    default:
      return c.fileCommands->Key(keyCode, mods);
  }
}

}  // namespace nxfv
