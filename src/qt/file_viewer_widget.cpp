#include "nxfv/qt/file_viewer_widget.h"

#include <QApplication>
#include <QDataStream>
#include <QHeaderView>
#include <QIODevice>
#include <QItemSelectionModel>
#include <QPainter>
#include <QShowEvent>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "nxfv/qt/file_viewer_widget_p.h"
#include "nxfv/qt/qt_linux_platform.h"

namespace nxfv::qt {
namespace {

QString Utf8(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }
std::string ToUtf8(const QString& text) { return text.toUtf8().toStdString(); }

// An OLE colour: 0x80000000 | n is the system colour n, anything else
// 0x00BBGGRR. System colours map to the palette role that plays the same
// part; an unknown one leaves the palette's own colour.
bool ColourOf(uint32_t ole, const QPalette& palette, QColor& out) {
  if ((ole & 0x80000000u) == 0) {
    out = QColor(ole & 0xFF, (ole >> 8) & 0xFF, (ole >> 16) & 0xFF);
    return true;
  }
  QPalette::ColorRole role;
  switch (ole & 0xFFFF) {
    case 5: role = QPalette::Base; break;             // window background
    case 8: role = QPalette::Text; break;             // window text
    case 4: role = QPalette::Window; break;           // menu
    case 7: role = QPalette::WindowText; break;       // menu text
    case 13: role = QPalette::Highlight; break;       // highlight
    case 14: role = QPalette::HighlightedText; break; // highlighted text
    case 15: role = QPalette::Button; break;          // button face
    case 16: role = QPalette::Dark; break;            // button shadow
    case 18: role = QPalette::ButtonText; break;      // button text
    case 20: role = QPalette::Light; break;           // 3-D highlight
    default: return false;
  }
  out = palette.color(QPalette::Active, role);
  return true;
}

// The saved layout: magic, version, then the columns and the sort.
constexpr quint32 kStateMagic = 0x4E584656;  // "NXFV"
constexpr quint16 kStateVersion = 1;
// More columns or sort keys than this cannot come from a control (twenty
// columns, ten sort keys): the data is damaged.
constexpr quint32 kStateMaxEntries = 256;

}  // namespace

// --- RowDelegate ---

void RowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  QStyleOptionViewItem opt(option);
  // Without full-row selection only the label shows the selection.
  if (!fullRow && index.column() > 0) opt.state &= ~QStyle::State_Selected;
  QStyledItemDelegate::paint(painter, opt, index);
  // Grid lines belong to the report; the other styles have no cells.
  if (gridLines && qobject_cast<const QTreeView*>(option.widget)) {
    painter->save();
    painter->setPen(option.palette.color(QPalette::Midlight));
    painter->drawLine(option.rect.topRight(), option.rect.bottomRight());
    painter->drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
    painter->restore();
  }
}

QSize RowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  if (option.widget && option.widget == itemsView && itemsCell.isValid()) return itemsCell;
  return QStyledItemDelegate::sizeHint(option, index);
}

QRect RowDelegate::CheckRect(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  QStyleOptionViewItem opt(option);
  initStyleOption(&opt, index);
  if (!(opt.features & QStyleOptionViewItem::HasCheckIndicator)) return {};
  const QWidget* widget = option.widget;
  QStyle* style = widget ? widget->style() : QApplication::style();
  return style->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &opt, widget);
}

bool RowDelegate::editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                              const QModelIndex& index) {
  switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick: return false;
    default: return QStyledItemDelegate::editorEvent(event, model, option, index);
  }
}

// --- FileViewerWidgetPrivate: set-up ---

FileViewerWidgetPrivate::FileViewerWidgetPrivate(FileViewerWidget& widget, PlatformRef p)
    : q(widget), platform(std::move(p)) {
  viewer = FileViewer::Create(platform);
}

FileViewerWidgetPrivate::~FileViewerWidgetPrivate() {
  // The control may outlive the widget (viewerRef); it must not call back.
  viewer->SetEventListener(nullptr);
  viewer->SetPropertyChangeListener(nullptr);
}

void FileViewerWidgetPrivate::Build() {
  viewer->SetEventListener(this);
  if (auto* linuxPlatform = dynamic_cast<LinuxPlatform*>(platform.get()))
    pump = new LinuxEventPump(*linuxPlatform, &q);
  if (auto* qtPlatform = dynamic_cast<QtLinuxPlatform*>(platform.get()))
    qtPlatform->QtUi().SetLockHandler([this](bool lock) {
      report->setUpdatesEnabled(!lock);
      items->setUpdatesEnabled(!lock);
    });

  model = new ListViewModel(*viewer, icons, &q);
  selection = new QItemSelectionModel(model, &q);
  delegate = new RowDelegate(&q);

  report = new ReportView(*this, &q);
  items = new ItemsView(*this, &q);
  delegate->itemsView = items;
  for (QAbstractItemView* view : {static_cast<QAbstractItemView*>(report), static_cast<QAbstractItemView*>(items)}) {
    view->setModel(model);
    view->setSelectionModel(selection);
    view->setItemDelegate(delegate);
    view->setSelectionBehavior(QAbstractItemView::SelectRows);
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view->setDragEnabled(true);
    view->setAcceptDrops(true);
    view->setDropIndicatorShown(true);
    view->setDragDropMode(QAbstractItemView::DragDrop);
    view->setDefaultDropAction(Qt::CopyAction);
  }
  header = new SortHeader(report);
  report->setHeader(header);
  report->setRootIsDecorated(false);
  report->setItemsExpandable(false);
  report->setUniformRowHeights(true);
  report->setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
  report->setSortingEnabled(false);  // the control sorts; the view never does
  report->setAllColumnsShowFocus(true);
  header->setSectionsClickable(true);
  header->setSortIndicatorShown(false);  // the captions carry the sort marks
  header->setStretchLastSection(false);
  header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  items->setUniformItemSizes(true);
  items->setResizeMode(QListView::Adjust);
  items->setMovement(QListView::Static);

  stack = new QStackedWidget(&q);
  stack->addWidget(report);
  stack->addWidget(items);
  auto* layout = new QVBoxLayout(&q);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(stack);
  q.setFocusProxy(report);

  QObject::connect(header, &QHeaderView::sectionClicked, &q, [this](int section) { HeaderClicked(section); });
  QObject::connect(selection, &QItemSelectionModel::selectionChanged, &q,
                   [this](const QItemSelection& s, const QItemSelection& ds) { OnUserSelection(s, ds); });
  QObject::connect(model, &ListViewModel::rowSelectionChanged, &q, [this](int row) { SyncRowSelection(row); });
  QObject::connect(model, &QAbstractItemModel::modelAboutToBeReset, &q, [this] { RememberCurrent(); });
  QObject::connect(model, &QAbstractItemModel::modelReset, &q, [this] {
    ApplyColumns();
    RestoreCurrent();
    SyncSelectionFromControl();
  });
  QObject::connect(model, &QAbstractItemModel::rowsInserted, &q, [this](const QModelIndex&, int first, int last) {
    for (int row = first; row <= last; ++row) SyncRowSelection(row);
  });
  QObject::connect(model, &ListViewModel::columnsChanged, &q, [this] { ApplyColumns(); });
  QObject::connect(model, &ListViewModel::lookChanged, &q, [this] { ApplyLook(); });
  QObject::connect(model, &ListViewModel::labelEditRequested, &q, [this](int row) { StartLabelEdit(row); });
  QObject::connect(delegate, &QAbstractItemDelegate::commitData, &q, [this] { editCommitted = true; });
  QObject::connect(delegate, &QAbstractItemDelegate::closeEditor, &q, [this] {
    if (editRow >= 0 && !editCommitted) viewer->CancelLabelEdit();
    editRow = -1;
    editCommitted = false;
  });
  // The user's column layout is kept by column key across listings.
  QObject::connect(header, &QHeaderView::sectionResized, &q, [this](int logical, int, int size) {
    if (applyingColumns || size <= 0 || logical >= viewer->ListView1().ColumnCount()) return;
    userWidths.insert(Utf8(viewer->ListView1().Column(logical).key), size);
  });
  QObject::connect(header, &QHeaderView::sectionMoved, &q, [this] {
    if (applyingColumns) return;
    userOrder.clear();
    QHeaderView* h = report->header();
    const ListView& view = viewer->ListView1();
    for (int visual = 0; visual < h->count(); ++visual) {
      const int logical = h->logicalIndex(visual);
      if (logical >= 0 && logical < view.ColumnCount()) userOrder.append(Utf8(view.Column(logical).key));
    }
  });

  ApplyColumns();
  ApplyLook();
  ApplyViewStyle();
}

int FileViewerWidgetPrivate::TwipsToPixels(int32_t twips) const {
  const int64_t px = static_cast<int64_t>(twips) * q.logicalDpiX() / 1440;
  return static_cast<int>(std::clamp<int64_t>(px, 0, 1 << 20));
}

int32_t FileViewerWidgetPrivate::PixelsToTwips(int pixels) const {
  const int dpi = std::max(1, q.logicalDpiX());
  return static_cast<int32_t>(std::clamp<int64_t>(static_cast<int64_t>(pixels) * 1440 / dpi, 0, INT32_MAX));
}

// --- keeping the views in step with the control ---

void FileViewerWidgetPrivate::ApplyColumns() {
  const ListView& view = viewer->ListView1();
  QHeaderView* header = report->header();
  if (header->count() != view.ColumnCount()) return;  // the model resets first
  applyingColumns = true;
  // Visual order: the user's order for the keys it names, then the rest by
  // the control's order.
  std::vector<int> order(static_cast<size_t>(view.ColumnCount()));
  for (int i = 0; i < view.ColumnCount(); ++i) order[static_cast<size_t>(i)] = i;
  std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
    const qsizetype ua = userOrder.indexOf(Utf8(view.Column(a).key));
    const qsizetype ub = userOrder.indexOf(Utf8(view.Column(b).key));
    if ((ua >= 0) != (ub >= 0)) return ua >= 0;
    if (ua >= 0) return ua < ub;
    return view.Column(a).order < view.Column(b).order;
  });
  for (int visual = 0; visual < static_cast<int>(order.size()); ++visual) {
    const int from = header->visualIndex(order[static_cast<size_t>(visual)]);
    if (from != visual) header->moveSection(from, visual);
  }
  for (int i = 0; i < view.ColumnCount(); ++i) {
    const ListColumn& column = view.Column(i);
    // Width 0 is the control's way to hide a column.
    const bool hidden = column.width <= 0;
    header->setSectionHidden(i, hidden);
    if (!hidden) header->resizeSection(i, userWidths.value(Utf8(column.key), TwipsToPixels(column.width)));
  }
  applyingColumns = false;
}

void FileViewerWidgetPrivate::ApplyLook() {
  const ListViewLook& look = viewer->ListView1().Look();
  delegate->gridLines = look.gridLines;
  delegate->fullRow = look.fullRowSelection;
  report->setHeaderHidden(look.hideColumnHeaders);
  report->header()->setSectionsMovable(look.movableColumns);
  report->setAllColumnsShowFocus(look.fullRowSelection);
  const auto mode = look.multiSelect ? QAbstractItemView::ExtendedSelection : QAbstractItemView::SingleSelection;
  for (QAbstractItemView* view : {static_cast<QAbstractItemView*>(report), static_cast<QAbstractItemView*>(items)}) {
    view->setSelectionMode(mode);
    // The control hears every move (its MouseMove event), not only drags.
    view->viewport()->setMouseTracking(true);
    view->setEnabled(look.enabled);
    auto* frame = static_cast<QFrame*>(view);
    if (look.borderStyle == 0)
      frame->setFrameStyle(QFrame::NoFrame);
    else if (look.appearance == 0)
      frame->setFrameStyle(QFrame::Box | QFrame::Plain);
    else
      frame->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    QPalette palette = QApplication::palette(view);
    QColor colour;
    if (ColourOf(look.backColor, palette, colour)) palette.setColor(QPalette::Base, colour);
    if (ColourOf(look.foreColor, palette, colour)) palette.setColor(QPalette::Text, colour);
    if (look.hideSelection) {
      // Without the focus the selection is not drawn at all.
      for (QPalette::ColorGroup group : {QPalette::Inactive, QPalette::Disabled}) {
        palette.setColor(group, QPalette::Highlight, palette.color(QPalette::Active, QPalette::Base));
        palette.setColor(group, QPalette::HighlightedText, palette.color(QPalette::Active, QPalette::Text));
      }
    }
    view->setPalette(palette);
    view->viewport()->update();
  }
}

void FileViewerWidgetPrivate::ApplyViewStyle() {
  const ViewStyles style = viewer->ViewStyle();
  QWidget* focused = QApplication::focusWidget();
  const bool hadFocus = focused == report || focused == items;
  if (style == FvReport) {
    stack->setCurrentWidget(report);
    q.setFocusProxy(report);
  } else {
    items->setViewMode(style == FvIcon ? QListView::IconMode : QListView::ListMode);
    items->setFlow(style == FvList ? QListView::TopToBottom : QListView::LeftToRight);
    items->setWrapping(true);
    items->setWordWrap(style == FvIcon);
    const int small = q.style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, items);
    const int large = q.style()->pixelMetric(QStyle::PM_LargeIconSize, nullptr, items);
    items->setIconSize(QSize(style == FvIcon ? large : small, style == FvIcon ? large : small));
    // Icons get two lines of wrapped text; a list cell holds about 28
    // characters, as desktop file managers show them.
    const QFontMetrics metrics(items->font());
    const QSize grid = style == FvIcon ? QSize(large * 3, large + 8 + metrics.height() * 2)
                                       : QSize(metrics.averageCharWidth() * 28 + small + 8, std::max(metrics.height(), small) + 6);
    items->setGridSize(grid);
    delegate->itemsCell = grid - QSize(4, 2);
    items->setSpacing(0);
    items->setMovement(QListView::Static);
    stack->setCurrentWidget(items);
    q.setFocusProxy(items);
  }
  if (hadFocus) stack->currentWidget()->setFocus();
  const QModelIndex current = selection->currentIndex();
  if (current.isValid()) static_cast<QAbstractItemView*>(stack->currentWidget())->scrollTo(current);
}

void FileViewerWidgetPrivate::SyncRowSelection(int row) {
  const ListView& view = viewer->ListView1();
  if (row < 0 || static_cast<size_t>(row) >= view.RowCount() || row >= model->rowCount()) return;
  const bool selected = view.Row(static_cast<size_t>(row)).Selected();
  const QModelIndex index = model->index(row, 0);
  if (selection->isRowSelected(row) == selected) return;
  syncingSelection = true;
  selection->select(index, (selected ? QItemSelectionModel::Select : QItemSelectionModel::Deselect) |
                               QItemSelectionModel::Rows);
  syncingSelection = false;
}

void FileViewerWidgetPrivate::SyncSelectionFromControl() {
  const ListView& view = viewer->ListView1();
  const int rows = std::min(model->rowCount(), static_cast<int>(std::min<size_t>(view.RowCount(), INT_MAX)));
  QItemSelection wanted;
  int runStart = -1;
  for (int row = 0; row <= rows; ++row) {
    const bool selected = row < rows && view.Row(static_cast<size_t>(row)).Selected();
    if (selected && runStart < 0) runStart = row;
    if (!selected && runStart >= 0) {
      wanted.select(model->index(runStart, 0), model->index(row - 1, std::max(0, model->columnCount() - 1)));
      runStart = -1;
    }
  }
  syncingSelection = true;
  selection->select(wanted, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  syncingSelection = false;
}

void FileViewerWidgetPrivate::OnUserSelection(const QItemSelection& selected, const QItemSelection& deselected) {
  if (syncingSelection) return;
  auto rowsOf = [](const QItemSelection& s) {
    std::vector<int> rows;
    for (const QItemSelectionRange& range : s)
      for (int row = range.top(); row <= range.bottom(); ++row) rows.push_back(row);
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
  };
  // Keys first: a handler may change the view while we go.
  std::vector<std::pair<std::string, bool>> changes;
  for (int row : rowsOf(deselected)) changes.emplace_back(model->RowKey(row), false);
  for (int row : rowsOf(selected)) changes.emplace_back(model->RowKey(row), true);
  for (const auto& [key, selecting] : changes) {
    if (key.empty()) continue;
    viewer->UserSelectionChange(key, selecting);
    // Refused changes (the host cancelled, a disabled control) go back to
    // what the control holds.
    SyncRowSelection(model->RowOf(key));
  }
}

void FileViewerWidgetPrivate::RememberCurrent() {
  currentKey = model->RowKey(selection->currentIndex().row());
}

void FileViewerWidgetPrivate::RestoreCurrent() {
  const int row = model->RowOf(currentKey);
  if (row < 0) return;
  syncingSelection = true;
  selection->setCurrentIndex(model->index(row, 0), QItemSelectionModel::NoUpdate);
  syncingSelection = false;
}

void FileViewerWidgetPrivate::StartLabelEdit(int row) {
  if (row < 0 || row >= model->rowCount()) return;
  auto* view = static_cast<QAbstractItemView*>(stack->currentWidget());
  const QModelIndex index = model->index(row, 0);
  syncingSelection = true;
  selection->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
  syncingSelection = false;
  view->scrollTo(index);
  view->setFocus();
  editRow = row;
  editCommitted = false;
  view->edit(index);
}

void FileViewerWidgetPrivate::HeaderClicked(int section) {
  const bool ctrl = header->clickModifiers & Qt::ControlModifier;
  viewer->ClickColumnHeader(section, ctrl);
}

// --- the control's events ---

void FileViewerWidgetPrivate::AfterNewView(std::string& Path, bool& CanGoPrevious, bool& CanGoNext,
                                           bool& InsideArchive) {
  emit q.afterNewView(Utf8(Path), CanGoPrevious, CanGoNext, InsideArchive);
}
void FileViewerWidgetPrivate::OnItemClick(ItemRef& Item) { emit q.itemClicked(Item); }
void FileViewerWidgetPrivate::Click() { emit q.clicked(); }
void FileViewerWidgetPrivate::DblClick() { emit q.doubleClicked(); }
void FileViewerWidgetPrivate::OnCurrentFolderChanged(std::string& Currentfolder) {
  emit q.currentFolderChanged(Utf8(Currentfolder));
}
void FileViewerWidgetPrivate::OnItemRename(ItemRef& Item, std::string& newname, bool& Cancel) {
  QString name = Utf8(newname);
  emit q.itemRenaming(Item, &name, &Cancel);
  newname = ToUtf8(name);
}
void FileViewerWidgetPrivate::OnItemRightClick(ItemRef& Item) { emit q.itemRightClicked(Item); }
void FileViewerWidgetPrivate::OnItemDblClick(ItemRef& Item, bool& Cancel) { emit q.itemDoubleClicked(Item, &Cancel); }
void FileViewerWidgetPrivate::SetUserdata(ItemRef& Item, std::string& UserDataA, std::string& UserDataB) {
  QString a = Utf8(UserDataA), b = Utf8(UserDataB);
  emit q.userDataRequested(Item, &a, &b);
  UserDataA = ToUtf8(a);
  UserDataB = ToUtf8(b);
}
void FileViewerWidgetPrivate::OnSelectionChange(ItemRef& Item, bool& Selecting, bool& Cancel) {
  emit q.selectionChanging(Item, &Selecting, &Cancel);
}
void FileViewerWidgetPrivate::ColumnClick(const ListColumn& ColumnHeader) {
  emit q.columnClicked(Utf8(ColumnHeader.key), Utf8(ColumnHeader.caption));
}
void FileViewerWidgetPrivate::KeyDown(int16_t& KeyCode, int16_t& Shift) {
  int code = KeyCode, shift = Shift;
  emit q.keyDown(&code, &shift);
  KeyCode = static_cast<int16_t>(code);
  keyDownAnswer = KeyCode;
  Shift = static_cast<int16_t>(shift);
}
void FileViewerWidgetPrivate::KeyUp(int16_t& KeyCode, int16_t& Shift) {
  int code = KeyCode, shift = Shift;
  emit q.keyUp(&code, &shift);
  KeyCode = static_cast<int16_t>(code);
  Shift = static_cast<int16_t>(shift);
}
void FileViewerWidgetPrivate::KeyPress(int16_t& KeyAscii) {
  int ascii = KeyAscii;
  emit q.keyPress(&ascii);
  KeyAscii = static_cast<int16_t>(ascii);
}
void FileViewerWidgetPrivate::MouseMove(int16_t& Button, int16_t& Shift, float& x, float& y) {
  emit q.mouseMoved(Button, Shift, x, y);
}
void FileViewerWidgetPrivate::MouseDown(int16_t& Button, int16_t& Shift, float& x, float& y) {
  emit q.mousePressed(Button, Shift, x, y);
}
void FileViewerWidgetPrivate::MouseUp(int16_t& Button, int16_t& Shift, float& x, float& y) {
  emit q.mouseReleased(Button, Shift, x, y);
}

// --- FileViewerWidget ---

namespace {
PlatformRef DefaultPlatform() { return std::make_shared<QtLinuxPlatform>(); }
}  // namespace

FileViewerWidget::FileViewerWidget(QWidget* parent) : FileViewerWidget(DefaultPlatform(), parent) {}

FileViewerWidget::FileViewerWidget(PlatformRef platform, QWidget* parent)
    : QWidget(parent), d_(std::make_unique<FileViewerWidgetPrivate>(*this, std::move(platform))) {
  qRegisterMetaType<ItemPtr>();
  d_->Build();
  d_->viewer->SetPropertyChangeListener(d_.get());
}

FileViewerWidget::~FileViewerWidget() {
  // The views and the model read the control and the icons that the
  // private part owns: they go first.
  delete d_->stack;
  delete d_->selection;
  delete d_->model;
  delete d_->pump;
}

FileViewer& FileViewerWidget::viewer() { return *d_->viewer; }
std::shared_ptr<FileViewer> FileViewerWidget::viewerRef() const { return d_->viewer; }
Platform& FileViewerWidget::platform() { return *d_->platform; }
ListViewModel* FileViewerWidget::model() const { return d_->model; }
QTreeView* FileViewerWidget::reportView() const { return d_->report; }
QListView* FileViewerWidget::itemsView() const { return d_->items; }
QItemSelectionModel* FileViewerWidget::selectionModel() const { return d_->selection; }
QWidget* FileViewerWidget::activeView() const { return d_->stack->currentWidget(); }

void FileViewerWidget::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (!event->spontaneous()) applySettings();
}

void FileViewerWidget::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  // Palette, style and screen changes: colours and widths follow.
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) d_->ApplyLook();
}

bool FileViewerWidget::useDialogs() {
  auto* qtPlatform = dynamic_cast<QtLinuxPlatform*>(d_->platform.get());
  if (!qtPlatform) return false;
  qtPlatform->UseDialogs(window());
  return true;
}

QByteArray FileViewerWidget::saveState() const {
  QByteArray bytes;
  QDataStream out(&bytes, QIODevice::WriteOnly);
  out.setVersion(QDataStream::Qt_6_0);
  const ListView& view = d_->viewer->ListView1();
  const QHeaderView* header = d_->report->header();
  out << kStateMagic << kStateVersion << quint32(view.ColumnCount());
  for (int i = 0; i < view.ColumnCount(); ++i) {
    const ListColumn& column = view.Column(i);
    const bool shown = i < header->count() && !header->isSectionHidden(i);
    const qint32 twips = shown ? d_->PixelsToTwips(header->sectionSize(i)) : column.width;
    const qint32 visual = i < header->count() ? header->visualIndex(i) : column.order;
    out << Utf8(column.key) << twips << visual;
  }
  const std::vector<SortState> sort = d_->viewer->SortColumns();
  out << quint32(sort.size());
  for (const SortState& s : sort) out << Utf8(s.key) << s.descending;
  return bytes;
}

bool FileViewerWidget::restoreState(const QByteArray& state) {
  QDataStream in(state);
  in.setVersion(QDataStream::Qt_6_0);
  quint32 magic = 0, count = 0;
  quint16 version = 0;
  in >> magic >> version;
  if (in.status() != QDataStream::Ok || magic != kStateMagic || version != kStateVersion) return false;
  in >> count;
  if (in.status() != QDataStream::Ok || count > kStateMaxEntries) return false;
  struct Column {
    QString key;
    qint32 twips = 0, visual = 0;
  };
  std::vector<Column> columns(count);
  for (Column& c : columns) in >> c.key >> c.twips >> c.visual;
  in >> count;
  if (in.status() != QDataStream::Ok || count > kStateMaxEntries) return false;
  std::vector<SortState> sort(count);
  for (SortState& s : sort) {
    QString key;
    in >> key >> s.descending;
    s.key = ToUtf8(key);
  }
  if (in.status() != QDataStream::Ok || !in.atEnd()) return false;
  for (const Column& c : columns)
    if (c.key.isEmpty() || c.twips < 0 || c.visual < 0) return false;

  std::stable_sort(columns.begin(), columns.end(), [](const Column& a, const Column& b) { return a.visual < b.visual; });
  d_->userOrder.clear();
  for (const Column& c : columns) {
    d_->userOrder.append(c.key);
    if (c.twips > 0) d_->userWidths.insert(c.key, d_->TwipsToPixels(c.twips));
  }
  d_->ApplyColumns();
  d_->viewer->SetSortColumns(sort);
  return true;
}

}  // namespace nxfv::qt
