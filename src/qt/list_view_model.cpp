#include "nxfv/qt/list_view_model.h"

#include <QMimeData>
#include <QUrl>
#include <algorithm>
#include <climits>

#include "nxfv/control/file_viewer.h"
#include "nxfv/platform/file_uri_list.h"
#include "nxfv/platform/linux/file_name_escape.h"
#include "nxfv/qt/icon_source.h"

namespace nxfv::qt {
namespace {

// Qt counts rows in int; a view of more rows than that shows the first
// INT_MAX of them rather than wrapping around.
int ClampToInt(size_t n) { return static_cast<int>(std::min<size_t>(n, INT_MAX)); }

QString Utf8(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

}  // namespace

ListViewModel::ListViewModel(FileViewer& viewer, IconSource& icons, QObject* parent)
    : QAbstractTableModel(parent), viewer_(viewer), icons_(icons) {
  columns_ = viewer_.ListView1().ColumnCount();
  checkBoxes_ = viewer_.ListView1().Look().checkBoxes;
  viewer_.ListView1().AddObserver(this);
}

ListViewModel::~ListViewModel() { viewer_.ListView1().RemoveObserver(this); }

int ListViewModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : ClampToInt(viewer_.ListView1().RowCount());
}

int ListViewModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : columns_; }

QVariant ListViewModel::Cell(int row, int column, int role) const {
  const ListView& view = viewer_.ListView1();
  if (row < 0 || static_cast<size_t>(row) >= view.RowCount() || column < 0 || column >= view.ColumnCount()) return {};
  const ListRow& r = view.Row(static_cast<size_t>(row));
  switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
    case Qt::ToolTipRole:
      return Utf8(column == 0 ? r.Text() : r.SubItem(column));
    case Qt::DecorationRole:
      if (column != 0) return {};
      return icons_.Icon(r.Image());
    case Qt::CheckStateRole:
      // Rows without a state image have no box, as in the model.
      if (column != 0 || !view.Look().checkBoxes || r.StateImage() == 0) return {};
      return r.Checked() ? Qt::Checked : Qt::Unchecked;
    default:
      return {};
  }
}

QVariant ListViewModel::data(const QModelIndex& index, int role) const {
  return index.isValid() ? Cell(index.row(), index.column(), role) : QVariant();
}

void ListViewModel::multiData(const QModelIndex& index, QModelRoleDataSpan roleDataSpan) const {
  // One bounds check and row lookup per cell, however many roles a
  // delegate asks for while it paints.
  for (QModelRoleData& roleData : roleDataSpan)
    roleData.setData(index.isValid() ? Cell(index.row(), index.column(), roleData.role()) : QVariant());
}

bool ListViewModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (!index.isValid() || index.column() != 0) return false;
  if (role == Qt::EditRole) {
    const QByteArray text = value.toString().toUtf8();
    return viewer_.EndLabelEdit(index.row(), std::string(text.constData(), static_cast<size_t>(text.size())));
  }
  if (role == Qt::CheckStateRole) {
    if (!viewer_.Enabled()) return false;
    // The item's Checked is the control's own way to check a row; the row's
    // mark (and the dataChanged) follow from it.
    auto item = viewer_.ListItem(index.row());
    if (!item) return false;
    item->setChecked(value.toInt() == Qt::Checked);
    return true;
  }
  return false;
}

QVariant ListViewModel::headerData(int section, Qt::Orientation orientation, int role) const {
  const ListView& view = viewer_.ListView1();
  if (orientation != Qt::Horizontal || section < 0 || section >= view.ColumnCount()) return {};
  if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
  const ListColumn& column = view.Column(section);
  QString caption = Utf8(column.caption);
  if (column.sortIndicator == 0) return caption;
  int sorting = 0;
  for (int32_t i = 0; i < view.ColumnCount(); ++i)
    if (view.Column(i).sortIndicator != 0) ++sorting;
  const QString arrow = column.sortIndicator == 2 ? QStringLiteral("\u25BC") : QStringLiteral("\u25B2");
  if (sorting > 1) return caption + QStringLiteral(" %1 ").arg(column.sortPriority) + arrow;
  return caption + QLatin1Char(' ') + arrow;
}

Qt::ItemFlags ListViewModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return Qt::ItemIsDropEnabled;
  Qt::ItemFlags f = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren | Qt::ItemIsDragEnabled;
  if (index.column() == 0) {
    // Editing opens only when the control asks for it (labelEditRequested):
    // the views have no edit triggers of their own.
    f |= Qt::ItemIsEditable;
    if (viewer_.ListView1().Look().checkBoxes) f |= Qt::ItemIsUserCheckable;
  }
  return f;
}

QStringList ListViewModel::mimeTypes() const { return {QStringLiteral("text/uri-list")}; }

QMimeData* ListViewModel::mimeData(const QModelIndexList& indexes) const {
  QList<QUrl> urls;
  QList<int> rows;
  for (const QModelIndex& index : indexes)
    if (index.isValid() && !rows.contains(index.row())) rows.append(index.row());
  for (int row : rows) {
    const std::string uri = PathToFileUri(UnescapeFileName(FilePathOfRow(row)));
    if (!uri.empty()) urls.append(QUrl::fromEncoded(QByteArray::fromStdString(uri)));
  }
  if (urls.isEmpty()) return nullptr;
  auto* mime = new QMimeData;
  mime->setUrls(urls);
  return mime;
}

Qt::DropActions ListViewModel::supportedDragActions() const {
  return Qt::CopyAction | Qt::MoveAction | Qt::LinkAction;
}

std::string ListViewModel::RowKey(int row) const {
  const ListView& view = viewer_.ListView1();
  if (row < 0 || static_cast<size_t>(row) >= view.RowCount()) return {};
  return std::string(view.Row(static_cast<size_t>(row)).Key());
}

int ListViewModel::RowOf(const std::string& key) const {
  if (key.empty()) return -1;
  const ListRow* row = viewer_.ListView1().FindRow(key);
  return row && row->Index() <= static_cast<size_t>(INT_MAX) ? static_cast<int>(row->Index()) : -1;
}

std::shared_ptr<NxFileListItem> ListViewModel::ItemOfRow(int row) const {
  const std::string key = RowKey(row);
  auto items = viewer_.Items();
  if (key.empty() || !items) return nullptr;
  // The go-up row has an item in the collection, but it stands for no file:
  // dragging or copying it would take the parent folder.
  if (viewer_.ListView1().Row(static_cast<size_t>(row)).Text() == "..") return nullptr;
  try {
    // The collection raises for a key it does not hold.
    return items->Item(Variant(key));
  } catch (...) {
    return nullptr;
  }
}

std::string ListViewModel::FilePathOfRow(int row) const {
  auto item = ItemOfRow(row);
  if (!item || item->ArchivInfo().IsInArchive) return {};
  if (item->ListItemTyp() != typeoffitem::file && item->ListItemTyp() != typeoffitem::Folder) return {};
  std::string path(item->Path());
  if (path.empty()) return {};
  const char sep = viewer_.platform().Separator();
  if (path.back() != sep) path += sep;
  path += item->FileName();
  return path;
}

void ListViewModel::Reset() {
  beginResetModel();
  columns_ = viewer_.ListView1().ColumnCount();
  checkBoxes_ = viewer_.ListView1().Look().checkBoxes;
  endResetModel();
}

void ListViewModel::OnReset() {
  Reset();  // the widget lays out the columns again on modelReset
  emit lookChanged();
}

void ListViewModel::OnRowsInserted(size_t first, size_t count) {
  if (count == 0 || first > static_cast<size_t>(INT_MAX)) return;
  beginInsertRows({}, ClampToInt(first), ClampToInt(first + count - 1));
  endInsertRows();
}

void ListViewModel::OnRowsRemoved(size_t first, size_t count) {
  if (count == 0 || first > static_cast<size_t>(INT_MAX)) return;
  beginRemoveRows({}, ClampToInt(first), ClampToInt(first + count - 1));
  endRemoveRows();
}

void ListViewModel::OnRowChanged(size_t row, int32_t column) {
  if (column < 0 || column >= columns_) return;
  const QModelIndex at = index(ClampToInt(row), column);
  emit dataChanged(at, at, {Qt::DisplayRole, Qt::EditRole, Qt::ToolTipRole});
}

void ListViewModel::OnRowImageChanged(size_t row) {
  const QModelIndex at = index(ClampToInt(row), 0);
  emit dataChanged(at, at, {Qt::DecorationRole});
}

void ListViewModel::OnSelectionChanged(size_t row) { emit rowSelectionChanged(ClampToInt(row)); }

void ListViewModel::OnCheckChanged(size_t row) {
  const QModelIndex at = index(ClampToInt(row), 0);
  emit dataChanged(at, at, {Qt::CheckStateRole});
}

void ListViewModel::OnColumnsChanged() {
  if (viewer_.ListView1().ColumnCount() != columns_) {
    Reset();
  } else if (columns_ > 0) {
    emit headerDataChanged(Qt::Horizontal, 0, columns_ - 1);
  }
  emit columnsChanged();
}

void ListViewModel::OnSortChanged() {
  // Rows were reordered (or only the marks changed): the views' current row
  // and selection are put back by key after the reset.
  Reset();
}

void ListViewModel::OnAppearanceChanged() {
  const bool boxes = viewer_.ListView1().Look().checkBoxes;
  if (boxes != checkBoxes_) {
    checkBoxes_ = boxes;
    const int rows = rowCount();
    if (rows > 0) emit dataChanged(index(0, 0), index(rows - 1, 0), {Qt::CheckStateRole});
  }
  emit lookChanged();
}

void ListViewModel::OnLabelEditRequested(size_t row) { emit labelEditRequested(ClampToInt(row)); }

}  // namespace nxfv::qt
