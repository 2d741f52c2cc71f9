#include "nxfv/control/input.h"

#include "nxfv/control/activation.h"
#include "nxfv/control/file_viewer.h"
#include "nxfv/control/host_boundary.h"
#include "nxfv/control/selection.h"
#include "nxfv/control/viewer_core.h"

namespace nxfv {

bool AcceptsInput(const ViewerCore& core) { return core.settings.enabled; }

std::shared_ptr<NxFileListItem> RowItem(ViewerCore& core, const std::string& rowKey) {
  if (rowKey.empty()) return nullptr;
  const ListRow* row = core.listView.FindRow(rowKey);
  return row ? selection::ItemOfRow(core, *row) : nullptr;
}

namespace {

using MouseEvent = void (FileViewerEvents::*)(int16_t&, int16_t&, float&, float&);

void RaiseMouse(ViewerCore& c, const char* label, MouseEvent event, int16_t button, int16_t shift, float x, float y) {
  if (!AcceptsInput(c) || !c.events) return;
  RunReported(c.platform, label, [&] { (c.events->*event)(button, shift, x, y); });
}

// Hands item to the host: it becomes the item whose events are handled.
FileViewerEvents::ItemRef HandOut(ViewerCore& c, const std::shared_ptr<NxFileListItem>& item) {
  c.itemEvents.Subscribe(item);
  return item;
}

}  // namespace

void FileViewer::UserMouseDown(int16_t Button, int16_t Shift, float x, float y) {
  RaiseMouse(*core_, ".MouseDown", &FileViewerEvents::MouseDown, Button, Shift, x, y);
}
void FileViewer::UserMouseUp(int16_t Button, int16_t Shift, float x, float y) {
  RaiseMouse(*core_, ".MouseUp", &FileViewerEvents::MouseUp, Button, Shift, x, y);
}
void FileViewer::UserMouseMove(int16_t Button, int16_t Shift, float x, float y) {
  RaiseMouse(*core_, ".MouseMove", &FileViewerEvents::MouseMove, Button, Shift, x, y);
}

void FileViewer::UserClick(const std::string& rowKey) {
  ViewerCore& c = *core_;
  if (!AcceptsInput(c) || !c.events) return;
  RunReported(c.platform, ".Click", [&] {
    if (auto item = RowItem(c, rowKey)) {
      auto handed = HandOut(c, item);
      c.events->OnItemClick(handed);
    }
    c.events->Click();
  });
}

void FileViewer::UserDoubleClick(const std::string& rowKey) {
  ViewerCore& c = *core_;
  if (!AcceptsInput(c)) return;
  RunReported(c.platform, ".DblClick", [&] {
    const bool onRow = !rowKey.empty() && c.listView.FindRow(rowKey) != nullptr;
    const bool go = onRow && HostLetsActivate(*this, rowKey);
    if (c.events) c.events->DblClick();
    if (go) ActivateRow(rowKey);
  });
}

void FileViewer::UserRightClick(const std::string& rowKey) {
  ViewerCore& c = *core_;
  if (!AcceptsInput(c) || !c.events) return;
  RunReported(c.platform, ".OnItemRightClick", [&] {
    if (auto item = RowItem(c, rowKey)) {
      auto handed = HandOut(c, item);
      c.events->OnItemRightClick(handed);
    }
  });
}

void FileViewer::UserKeyDown(int16_t KeyCode, int16_t Shift) {
  ViewerCore& c = *core_;
  if (!AcceptsInput(c)) return;
  RunReported(c.platform, ".KeyDown", [&] {
    if (c.events) c.events->KeyDown(KeyCode, Shift);
    if (KeyCode == 0 || !c.settings.defaultKeyHandling) return;
    HandleDefaultKey(*this, KeyCode, Shift);
  });
}

void FileViewer::UserKeyUp(int16_t KeyCode, int16_t Shift) {
  ViewerCore& c = *core_;
  if (!AcceptsInput(c) || !c.events) return;
  RunReported(c.platform, ".KeyUp", [&] { c.events->KeyUp(KeyCode, Shift); });
}

void FileViewer::UserKeyPress(int16_t KeyAscii) {
  ViewerCore& c = *core_;
  if (!AcceptsInput(c) || !c.events) return;
  RunReported(c.platform, ".KeyPress", [&] { c.events->KeyPress(KeyAscii); });
}

bool FileViewer::UserSelectionChange(const std::string& rowKey, bool selecting) {
  ViewerCore& c = *core_;
  if (!AcceptsInput(c)) return false;
  bool changed = false;
  RunReported(c.platform, ".OnSelectionChange", [&] {
    ListRow* row = c.listView.FindRow(rowKey);
    if (!row || row->Selected() == selecting) return;
    bool answer = selecting, cancel = false;
    if (auto item = RowItem(c, rowKey); item && c.events) {
      auto handed = HandOut(c, item);
      c.events->OnSelectionChange(handed, answer, cancel);
    }
    if (cancel) return;
    // A handler may have changed the view; the row is looked up again.
    row = c.listView.FindRow(rowKey);
    if (!row) return;
    if (selecting && !c.settings.allowMultipleSelection)
      for (size_t i = 0; i < c.listView.RowCount(); ++i)
        if (&c.listView.Row(i) != row) c.listView.Row(i).SetSelected(false);
    row->SetSelected(selecting);
    changed = true;
  });
  return changed;
}

}  // namespace nxfv
