// The widget's insides (not installed for hosts): the views, the bridge from
// the control's events to the widget's signals, and the state that keeps the
// views and the control in step.
#pragma once

#include <QListView>
#include <QPointer>
#include <QStyledItemDelegate>
#include <QTreeView>
#include <QHash>
#include <QHeaderView>
#include <QStringList>
#include <QVariantMap>
#include <string>

#include "nxfv/qt/file_viewer_widget.h"
#include "nxfv/qt/icon_source.h"
#include "nxfv/qt/list_view_model.h"

class QItemSelection;
class QStackedWidget;

namespace nxfv::qt {

class LinuxEventPump;
class FileViewerWidgetPrivate;

// Paints grid lines, and the selection in the first column only when
// full-row selection is off; tells where a row's check box is.
class RowDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QRect CheckRect(const QStyleOptionViewItem& option, const QModelIndex& index) const;
  // Mouse clicks on check boxes are the widget's (they must not select the
  // row); the keyboard's Space still toggles through here.
  bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;
  // The items view lays out every row at one size (uniform item sizes keep
  // huge folders fast) and would take it from the first row, mostly "..",
  // eliding every longer name: it gets this fixed cell size instead.
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  bool gridLines = false;
  bool fullRow = true;
  const QWidget* itemsView = nullptr;
  QSize itemsCell;
};

// The report's header remembers the modifiers of the click, so that a
// Ctrl+click adds a sort column whatever the application thinks is held.
class SortHeader : public QHeaderView {
 public:
  explicit SortHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {}
  Qt::KeyboardModifiers clickModifiers;

 protected:
  void mousePressEvent(QMouseEvent* e) override;
  void mouseReleaseEvent(QMouseEvent* e) override;
};

// The two views forward the user's input to the widget (widget_input.cpp).
class ReportView : public QTreeView {
 public:
  ReportView(FileViewerWidgetPrivate& d, QWidget* parent);
  QStyleOptionViewItem ItemOption() const;

 protected:
  void mousePressEvent(QMouseEvent* e) override;
  void mouseReleaseEvent(QMouseEvent* e) override;
  void mouseMoveEvent(QMouseEvent* e) override;
  void mouseDoubleClickEvent(QMouseEvent* e) override;
  void keyPressEvent(QKeyEvent* e) override;
  void keyReleaseEvent(QKeyEvent* e) override;
  void contextMenuEvent(QContextMenuEvent* e) override;
  void dragEnterEvent(QDragEnterEvent* e) override;
  void dragMoveEvent(QDragMoveEvent* e) override;
  void dropEvent(QDropEvent* e) override;
  void startDrag(Qt::DropActions actions) override;

 private:
  FileViewerWidgetPrivate& d_;
};

class ItemsView : public QListView {
 public:
  ItemsView(FileViewerWidgetPrivate& d, QWidget* parent);
  QStyleOptionViewItem ItemOption() const;

 protected:
  void mousePressEvent(QMouseEvent* e) override;
  void mouseReleaseEvent(QMouseEvent* e) override;
  void mouseMoveEvent(QMouseEvent* e) override;
  void mouseDoubleClickEvent(QMouseEvent* e) override;
  void keyPressEvent(QKeyEvent* e) override;
  void keyReleaseEvent(QKeyEvent* e) override;
  void contextMenuEvent(QContextMenuEvent* e) override;
  void dragEnterEvent(QDragEnterEvent* e) override;
  void dragMoveEvent(QDragMoveEvent* e) override;
  void dropEvent(QDropEvent* e) override;
  void startDrag(Qt::DropActions actions) override;

 private:
  FileViewerWidgetPrivate& d_;
};

class FileViewerWidgetPrivate : public FileViewerEvents, public PropertyChangeListener {
 public:
  FileViewerWidgetPrivate(FileViewerWidget& q, PlatformRef platform);
  ~FileViewerWidgetPrivate() override;
  void Build();

  // --- the control's events (re-emitted as the widget's signals) ---
  void AfterNewView(std::string& Path, bool& CanGoPrevious, bool& CanGoNext, bool& InsideArchive) override;
  void OnItemClick(ItemRef& Item) override;
  void Click() override;
  void DblClick() override;
  void OnCurrentFolderChanged(std::string& Currentfolder) override;
  void OnItemRename(ItemRef& Item, std::string& newname, bool& Cancel) override;
  void OnItemRightClick(ItemRef& Item) override;
  void OnItemDblClick(ItemRef& Item, bool& Cancel) override;
  void SetUserdata(ItemRef& Item, std::string& UserDataA, std::string& UserDataB) override;
  void OnSelectionChange(ItemRef& Item, bool& Selecting, bool& Cancel) override;
  void ColumnClick(const ListColumn& ColumnHeader) override;
  void KeyDown(int16_t& KeyCode, int16_t& Shift) override;
  void KeyUp(int16_t& KeyCode, int16_t& Shift) override;
  void KeyPress(int16_t& KeyAscii) override;
  void MouseMove(int16_t& Button, int16_t& Shift, float& x, float& y) override;
  void MouseDown(int16_t& Button, int16_t& Shift, float& x, float& y) override;
  void MouseUp(int16_t& Button, int16_t& Shift, float& x, float& y) override;

  // The bag key of every property let (the control's view style has no
  // list view notice, so the widget follows it from here).
  void PropertyChanged(const std::string& key) override;

  // --- keeping views and control in step (file_viewer_widget.cpp) ---
  void ApplyLook();
  void ApplyColumns();
  void ApplyViewStyle();
  void SyncSelectionFromControl();
  void SyncRowSelection(int row);
  void OnUserSelection(const QItemSelection& selected, const QItemSelection& deselected);
  void RememberCurrent();
  void RestoreCurrent();
  void StartLabelEdit(int row);
  int TwipsToPixels(int32_t twips) const;
  int32_t PixelsToTwips(int pixels) const;

  // --- input (widget_input.cpp) ---
  // Each returns true when it took the event.
  bool MousePress(QAbstractItemView& view, QMouseEvent* e, const QStyleOptionViewItem& option);
  void MouseRelease(QAbstractItemView& view, QMouseEvent* e);
  void MouseMove(QAbstractItemView& view, QMouseEvent* e);
  void MouseDoubleClick(QAbstractItemView& view, QMouseEvent* e, const QStyleOptionViewItem& option);
  // Toggles the check mark when pos is on a row's check box.
  bool ToggleCheckAt(QAbstractItemView& view, const QPoint& pos, const QStyleOptionViewItem& option);
  bool KeyPress(QKeyEvent* e);
  void KeyRelease(QKeyEvent* e);
  void ContextMenu(QAbstractItemView& view, QContextMenuEvent* e);
  bool AcceptDrag(QDropEvent* e) const;
  // The folder a drop goes to: the folder row under the pointer, else the
  // current folder; "" where nothing can be dropped (archives, virtual).
  std::string DropTarget(const QDropEvent* e) const;
  void Drop(QDropEvent* e);
  void StartDrag(QAbstractItemView& view, Qt::DropActions actions);
  std::vector<std::string> SelectedPaths() const;
  void HeaderClicked(int section);

  FileViewerWidget& q;
  PlatformRef platform;
  std::shared_ptr<FileViewer> viewer;
  IconSource icons;
  ListViewModel* model = nullptr;
  QItemSelectionModel* selection = nullptr;
  QStackedWidget* stack = nullptr;
  ReportView* report = nullptr;
  SortHeader* header = nullptr;
  ItemsView* items = nullptr;
  RowDelegate* delegate = nullptr;
  LinuxEventPump* pump = nullptr;

  // The user's column layout by column key (pixels; visual order), kept
  // across listings and restored by restoreState.
  QHash<QString, int> userWidths;
  QStringList userOrder;
  bool applyingColumns = false;

  bool designMode = false;
  bool applied = false;
  QVariantMap pending;  // settings collected before they are applied
  // Set while the widget writes the selection model itself, so that its
  // own writes are not taken for the user's.
  bool syncingSelection = false;
  std::string currentKey;  // the current row across model resets
  int editRow = -1;        // the row whose label editor is open
  bool editCommitted = false;
  bool pressOnCheck = false;      // the press toggled a check box
  bool afterDoubleClick = false;  // the next release ends a double-click
  int16_t keyDownAnswer = 0;      // KeyCode as the host's KeyDown left it
};

}  // namespace nxfv::qt
