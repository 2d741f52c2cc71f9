// The user's input on the two views, fed to the control's entry points, and
// the file commands: context menu, keys the control leaves to the views,
// drag and drop.
//
// Mouse order, as the control expects it (control/input.h): press ->
// MouseDown and the view's own selection change; release -> MouseUp, then
// Click (with OnItemClick on a row); a double-click -> OnItemDblClick,
// DblClick and the activation; its second release is a MouseUp without a
// Click, since the view under the pointer may already show another folder.
#include <QApplication>
#include <QContextMenuEvent>
#include <QDrag>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QStackedWidget>
#include <QUrl>

#include "nxfv/platform/file_uri_list.h"
#include "nxfv/platform/linux/file_name_escape.h"
#include "nxfv/qt/file_viewer_widget_p.h"
#include "nxfv/qt/key_codes.h"

namespace nxfv::qt {
namespace {

int16_t ButtonBits(Qt::MouseButtons buttons) {
  int16_t bits = 0;
  if (buttons & Qt::LeftButton) bits |= 1;
  if (buttons & Qt::RightButton) bits |= 2;
  if (buttons & Qt::MiddleButton) bits |= 4;
  return bits;
}

// The keys the control answers itself while DefaultKeyHandling is on
// (control/activation.h, control/file_commands.h): the views must not act
// on them a second time.
const ListRow* FirstSelectedRow(const ListView& view) {
  for (size_t i = 0; i < view.RowCount(); ++i)
    if (view.Row(i).Selected()) return &view.Row(i);
  return nullptr;
}

bool ControlHandlesKey(int16_t code, int16_t shift) {
  const int16_t mods = shift & 7;
  switch (code) {
    case 13:   // Return
    case 113:  // F2
    case 116:  // F5
    case 46:   // Delete (Shift+Delete skips the trash)
      return true;
    case 8: return mods == 0;                 // Backspace
    case 37:                                  // Alt+Left
    case 39: return mods == 4;                // Alt+Right
    case 65:                                  // Ctrl+A
    case 67:                                  // Ctrl+C
    case 86:                                  // Ctrl+V
    case 88: return mods == 2;                // Ctrl+X
    default: return false;
  }
}

}  // namespace

// --- the views ---

void SortHeader::mousePressEvent(QMouseEvent* e) {
  clickModifiers = e->modifiers();
  QHeaderView::mousePressEvent(e);
}
void SortHeader::mouseReleaseEvent(QMouseEvent* e) {
  clickModifiers = e->modifiers();
  QHeaderView::mouseReleaseEvent(e);
}

ReportView::ReportView(FileViewerWidgetPrivate& d, QWidget* parent) : QTreeView(parent), d_(d) {}
QStyleOptionViewItem ReportView::ItemOption() const {
  QStyleOptionViewItem option;
  initViewItemOption(&option);
  return option;
}
void ReportView::mousePressEvent(QMouseEvent* e) {
  if (!d_.MousePress(*this, e, ItemOption())) QTreeView::mousePressEvent(e);
}
void ReportView::mouseReleaseEvent(QMouseEvent* e) {
  QTreeView::mouseReleaseEvent(e);
  d_.MouseRelease(*this, e);
}
void ReportView::mouseMoveEvent(QMouseEvent* e) {
  d_.MouseMove(*this, e);
  QTreeView::mouseMoveEvent(e);
}
void ReportView::mouseDoubleClickEvent(QMouseEvent* e) { d_.MouseDoubleClick(*this, e, ItemOption()); }
void ReportView::keyPressEvent(QKeyEvent* e) {
  if (state() == EditingState || !d_.KeyPress(e)) QTreeView::keyPressEvent(e);
}
void ReportView::keyReleaseEvent(QKeyEvent* e) {
  d_.KeyRelease(e);
  QTreeView::keyReleaseEvent(e);
}
void ReportView::contextMenuEvent(QContextMenuEvent* e) { d_.ContextMenu(*this, e); }
void ReportView::dragEnterEvent(QDragEnterEvent* e) {
  if (d_.AcceptDrag(e)) e->acceptProposedAction(); else e->ignore();
}
void ReportView::dragMoveEvent(QDragMoveEvent* e) {
  if (d_.AcceptDrag(e)) e->acceptProposedAction(); else e->ignore();
}
void ReportView::dropEvent(QDropEvent* e) { d_.Drop(e); }
void ReportView::startDrag(Qt::DropActions actions) { d_.StartDrag(*this, actions); }

ItemsView::ItemsView(FileViewerWidgetPrivate& d, QWidget* parent) : QListView(parent), d_(d) {}
QStyleOptionViewItem ItemsView::ItemOption() const {
  QStyleOptionViewItem option;
  initViewItemOption(&option);
  return option;
}
void ItemsView::mousePressEvent(QMouseEvent* e) {
  if (!d_.MousePress(*this, e, ItemOption())) QListView::mousePressEvent(e);
}
void ItemsView::mouseReleaseEvent(QMouseEvent* e) {
  QListView::mouseReleaseEvent(e);
  d_.MouseRelease(*this, e);
}
void ItemsView::mouseMoveEvent(QMouseEvent* e) {
  d_.MouseMove(*this, e);
  QListView::mouseMoveEvent(e);
}
void ItemsView::mouseDoubleClickEvent(QMouseEvent* e) { d_.MouseDoubleClick(*this, e, ItemOption()); }
void ItemsView::keyPressEvent(QKeyEvent* e) {
  if (state() == EditingState || !d_.KeyPress(e)) QListView::keyPressEvent(e);
}
void ItemsView::keyReleaseEvent(QKeyEvent* e) {
  d_.KeyRelease(e);
  QListView::keyReleaseEvent(e);
}
void ItemsView::contextMenuEvent(QContextMenuEvent* e) { d_.ContextMenu(*this, e); }
void ItemsView::dragEnterEvent(QDragEnterEvent* e) {
  if (d_.AcceptDrag(e)) e->acceptProposedAction(); else e->ignore();
}
void ItemsView::dragMoveEvent(QDragMoveEvent* e) {
  if (d_.AcceptDrag(e)) e->acceptProposedAction(); else e->ignore();
}
void ItemsView::dropEvent(QDropEvent* e) { d_.Drop(e); }
void ItemsView::startDrag(Qt::DropActions actions) { d_.StartDrag(*this, actions); }

// --- mouse ---

bool FileViewerWidgetPrivate::MousePress(QAbstractItemView& view, QMouseEvent* e, const QStyleOptionViewItem& option) {
  const QPoint pos = e->position().toPoint();
  viewer->UserMouseDown(ButtonBits(e->button()), ShiftBits(e->modifiers()), static_cast<float>(PixelsToTwips(pos.x())),
                        static_cast<float>(PixelsToTwips(pos.y())));
  afterDoubleClick = false;
  pressOnCheck = e->button() == Qt::LeftButton && ToggleCheckAt(view, pos, option);
  return pressOnCheck;
}

bool FileViewerWidgetPrivate::ToggleCheckAt(QAbstractItemView& view, const QPoint& pos,
                                            const QStyleOptionViewItem& option) {
  const QModelIndex index = view.indexAt(pos);
  if (!index.isValid() || !viewer->ListView1().Look().checkBoxes) return false;
  // A click on the box checks the row and leaves the selection alone.
  const QModelIndex first = index.sibling(index.row(), 0);
  QStyleOptionViewItem opt(option);
  opt.rect = view.visualRect(first);
  if (!delegate->CheckRect(opt, first).contains(pos)) return false;
  const bool checked = model->data(first, Qt::CheckStateRole).toInt() == Qt::Checked;
  model->setData(first, checked ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
  return true;
}

void FileViewerWidgetPrivate::MouseRelease(QAbstractItemView& view, QMouseEvent* e) {
  const QPoint pos = e->position().toPoint();
  viewer->UserMouseUp(ButtonBits(e->button()), ShiftBits(e->modifiers()), static_cast<float>(PixelsToTwips(pos.x())),
                      static_cast<float>(PixelsToTwips(pos.y())));
  if (e->button() != Qt::LeftButton || pressOnCheck || afterDoubleClick) return;
  viewer->UserClick(model->RowKey(view.indexAt(pos).row()));
}

void FileViewerWidgetPrivate::MouseMove(QAbstractItemView& view, QMouseEvent* e) {
  const QPoint pos = e->position().toPoint();
  viewer->UserMouseMove(ButtonBits(e->buttons()), ShiftBits(e->modifiers()),
                        static_cast<float>(PixelsToTwips(pos.x())), static_cast<float>(PixelsToTwips(pos.y())));
  // Hover selection: resting on a row selects it (as the only one).
  if (!viewer->ListView1().Look().hoverSelection || e->buttons() != Qt::NoButton) return;
  const QModelIndex index = view.indexAt(pos);
  if (index.isValid() && !selection->isRowSelected(index.row()))
    selection->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void FileViewerWidgetPrivate::MouseDoubleClick(QAbstractItemView& view, QMouseEvent* e,
                                               const QStyleOptionViewItem& option) {
  if (e->button() != Qt::LeftButton) return;
  // A double-click on a check box is no activation. Where the platform
  // sends no second press, the double-click is the second toggle.
  if (pressOnCheck) return;
  if (ToggleCheckAt(view, e->position().toPoint(), option)) {
    pressOnCheck = true;
    return;
  }
  afterDoubleClick = true;
  viewer->UserDoubleClick(model->RowKey(view.indexAt(e->position().toPoint()).row()));
}

// --- keys ---

bool FileViewerWidgetPrivate::KeyPress(QKeyEvent* e) {
  const int16_t code = VirtualKeyCode(e->key());
  const int16_t shift = ShiftBits(e->modifiers());
  keyDownAnswer = code;
  if (code != 0) viewer->UserKeyDown(code, shift);
  if (const int16_t ascii = KeyAscii(*e)) viewer->UserKeyPress(ascii);
  // The control acted on its own keys; the rest (arrows, paging, Space)
  // move the views' current row and selection.
  return code != 0 && (keyDownAnswer == 0 || (viewer->DefaultKeyHandling() && ControlHandlesKey(code, shift)));
}

void FileViewerWidgetPrivate::KeyRelease(QKeyEvent* e) {
  const int16_t code = VirtualKeyCode(e->key());
  if (code != 0) viewer->UserKeyUp(code, ShiftBits(e->modifiers()));
}

// --- context menu and file commands ---

void FileViewerWidgetPrivate::ContextMenu(QAbstractItemView& view, QContextMenuEvent* e) {
  QModelIndex index = e->reason() == QContextMenuEvent::Mouse ? view.indexAt(e->pos()) : selection->currentIndex();
  viewer->UserRightClick(model->RowKey(index.row()));
  QMenu* menu = q.createContextMenu(&q);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  const QPoint at = e->reason() == QContextMenuEvent::Mouse ? e->globalPos()
                                                            : view.viewport()->mapToGlobal(view.visualRect(index).center());
  menu->popup(at);
}

std::vector<std::string> FileViewerWidgetPrivate::SelectedPaths() const {
  std::vector<std::string> paths;
  const ListView& view = viewer->ListView1();
  const int rows = model->rowCount();
  for (int row = 0; row < rows; ++row) {
    if (!view.Row(static_cast<size_t>(row)).Selected()) continue;
    std::string path = model->FilePathOfRow(row);
    if (!path.empty()) paths.push_back(std::move(path));
  }
  return paths;
}

QMenu* FileViewerWidget::createContextMenu(QWidget* parent) {
  auto* menu = new QMenu(parent);
  const bool onRows = !d_->SelectedPaths().empty();
  auto add = [&](const QString& text, const QKeySequence& keys, bool enabled, auto&& run) {
    QAction* action = menu->addAction(text, this, run);
    action->setShortcut(keys);
    action->setShortcutVisibleInContextMenu(true);
    action->setEnabled(enabled && d_->viewer->Enabled());
    return action;
  };
  const ListRow* first = FirstSelectedRow(d_->viewer->ListView1());
  const std::string firstKey = first ? std::string(first->Key()) : std::string();
  add(tr("&Open"), QKeySequence(Qt::Key_Return), first != nullptr,
      [this, firstKey] { d_->viewer->UserDoubleClick(firstKey); });
  menu->addSeparator();
  add(tr("Cu&t"), QKeySequence::Cut, onRows, [this] { runFileAction(FileAction::Cut); });
  add(tr("&Copy"), QKeySequence::Copy, onRows, [this] { runFileAction(FileAction::Copy); });
  add(tr("&Paste"), QKeySequence::Paste, fileActionAvailable(FileAction::Paste),
      [this] { runFileAction(FileAction::Paste); });
  add(tr("Paste &Link"), QKeySequence(), fileActionAvailable(FileAction::PasteShortcut),
      [this] { runFileAction(FileAction::PasteShortcut); });
  menu->addSeparator();
  add(tr("&Delete"), QKeySequence::Delete, onRows, [this] { runFileAction(FileAction::Delete); });
  add(tr("&Rename"), QKeySequence(Qt::Key_F2), onRows && d_->viewer->AllowitemRenaming(),
      [this] { runFileAction(FileAction::Rename); });
  menu->addSeparator();
  add(tr("Re&fresh"), QKeySequence(Qt::Key_F5), !d_->viewer->Currentfolder().empty(),
      [this] { d_->viewer->RefreshView(true); });
  emit contextMenuAboutToShow(menu);
  return menu;
}

bool FileViewerWidget::fileActionAvailable(FileAction action) const {
  FileViewer& v = *d_->viewer;
  // Archive entries, drives and virtual lists have no folder to paste into.
  const bool inFolder = !v.Currentfolder().empty() && !v.InsideArchive() && !v.VirtualFileList();
  switch (action) {
    case FileAction::Paste:
    case FileAction::PasteShortcut: return inFolder && v.platform().Clipboard().HasFiles();
    case FileAction::Rename: return v.AllowitemRenaming() && !d_->SelectedPaths().empty();
    default: return !d_->SelectedPaths().empty();
  }
}

bool FileViewerWidget::runFileAction(FileAction action) {
  FileViewer& v = *d_->viewer;
  if (!v.Enabled() || !fileActionAvailable(action)) return false;
  auto op = v.FileCommand();
  switch (action) {
    case FileAction::Copy: return op->CopySelectedFiles() != 0;
    case FileAction::Cut: return op->CutSelectedFiles() != 0;
    case FileAction::Paste: return op->PasteFiles(v.Currentfolder()) != 0;
    case FileAction::PasteShortcut: return op->PasteAsShortcut(v.Currentfolder()) != 0;
    case FileAction::Delete: return op->DeleteSelectedFiles() != 0;
    case FileAction::Rename:
      // In place, through the label editor (the control renames the file
      // when the edit ends).
      v.StartLabelEdit();
      return true;
  }
  return false;
}

// --- drag and drop ---

namespace {

// The local files a drag carries, in the platform's path text.
std::vector<std::string> DroppedPaths(const QMimeData* mime) {
  std::vector<std::string> paths;
  if (!mime) return paths;
  for (const QUrl& url : mime->urls()) {
    std::string raw;
    if (FileUriToPath(url.toEncoded().toStdString(), raw)) paths.push_back(EscapeFileName(raw));
  }
  return paths;
}

}  // namespace

std::string FileViewerWidgetPrivate::DropTarget(const QDropEvent* e) const {
  auto* view = static_cast<QAbstractItemView*>(stack->currentWidget());
  // Drops reach the view from its viewport, in the viewport's coordinates.
  const QPoint pos = e->position().toPoint();
  const int row = view->indexAt(pos).row();
  if (auto item = model->ItemOfRow(row); item && item->ListItemTyp() == typeoffitem::Folder) {
    std::string folder = model->FilePathOfRow(row);
    if (!folder.empty()) return folder;
  }
  if (viewer->InsideArchive() || viewer->VirtualFileList()) return {};
  return viewer->Currentfolder();
}

bool FileViewerWidgetPrivate::AcceptDrag(QDropEvent* e) const {
  if (!viewer->Enabled() || DroppedPaths(e->mimeData()).empty()) return false;
  const std::string target = DropTarget(e);
  if (target.empty()) return false;
  // Our own files dropped on the folder they are in would copy them onto
  // themselves.
  const bool fromHere = e->source() == report || e->source() == items;
  return !(fromHere && target == viewer->Currentfolder());
}

void FileViewerWidgetPrivate::Drop(QDropEvent* e) {
  if (!AcceptDrag(e)) {
    e->ignore();
    return;
  }
  const std::vector<std::string> sources = DroppedPaths(e->mimeData());
  const std::string target = DropTarget(e);
  Qt::DropAction action = e->proposedAction();
  if (action != Qt::MoveAction && action != Qt::LinkAction) action = Qt::CopyAction;
  auto op = viewer->FileCommand();
  const bool done = action == Qt::LinkAction ? op->LinkFiles(sources, target) != 0
                                             : op->Run(action == Qt::MoveAction ? FO_MOVE : FO_COPY, sources, target);
  if (done && target == viewer->Currentfolder()) viewer->RefreshView(false);
  e->setDropAction(action);
  e->setAccepted(done);
}

void FileViewerWidgetPrivate::StartDrag(QAbstractItemView& view, Qt::DropActions actions) {
  QModelIndexList rows;
  const int count = model->rowCount();
  for (int row = 0; row < count; ++row)
    if (selection->isRowSelected(row)) rows.append(model->index(row, 0));
  QMimeData* mime = model->mimeData(rows);
  if (!mime) return;
  auto* drag = new QDrag(&view);
  drag->setMimeData(mime);
  if (!rows.isEmpty()) drag->setPixmap(model->data(rows.first(), Qt::DecorationRole).value<QIcon>().pixmap(32));
  const Qt::DropAction done = drag->exec(actions, Qt::CopyAction);
  // Files moved elsewhere leave this folder.
  if (done == Qt::MoveAction && !viewer->Currentfolder().empty()) viewer->RefreshView(false);
}

}  // namespace nxfv::qt
