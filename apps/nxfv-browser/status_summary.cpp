#include "status_summary.h"

#include <QItemSelectionModel>
#include <QLocale>

#include "nxfv/qt/file_viewer_widget.h"
#include "nxfv/qt/list_view_model.h"

namespace nxfv::browser {
namespace {
// The control's row key for the go-up row.
constexpr const char* kGoUpKey = "sysgoup";
}  // namespace

StatusSummary::StatusSummary(qt::FileViewerWidget& viewer, QWidget* parent) : QLabel(parent), viewer_(viewer) {
  setObjectName(QStringLiteral("summary"));
  pending_.setSingleShot(true);
  pending_.setInterval(0);
  connect(&pending_, &QTimer::timeout, this, &StatusSummary::update);
  connect(&viewer_, &qt::FileViewerWidget::afterNewView, this, [this](const QString&, bool, bool, bool inside) {
    insideArchive_ = inside;
    Schedule();
  });
  connect(viewer_.selectionModel(), &QItemSelectionModel::selectionChanged, this, &StatusSummary::Schedule);
  QAbstractItemModel* model = viewer_.model();
  connect(model, &QAbstractItemModel::modelReset, this, &StatusSummary::Schedule);
  connect(model, &QAbstractItemModel::rowsInserted, this, &StatusSummary::Schedule);
  connect(model, &QAbstractItemModel::rowsRemoved, this, &StatusSummary::Schedule);
  // Check marks arrive as data changes.
  connect(model, &QAbstractItemModel::dataChanged, this, &StatusSummary::Schedule);
}

void StatusSummary::Schedule() {
  if (!pending_.isActive()) pending_.start();
}

void StatusSummary::update() {
  pending_.stop();
  FileViewer& v = viewer_.viewer();
  // The control counts the go-up row ".." among its rows and selection; a
  // user counts what is in the folder.
  const ListRow* goUp = v.ListView1().FindRow(kGoUpKey);
  const int items = v.ItemCount() - (goUp ? 1 : 0);
  const int selected = v.SelectedCount() - (goUp && goUp->Selected() ? 1 : 0);
  setText(describe(items, selected, v.CheckedCount(), insideArchive_));
  emit updated();
}

QString StatusSummary::describe(int items, int selected, int checked, bool insideArchive) {
  const QLocale locale;
  QString s = items == 1 ? tr("1 item") : tr("%1 items").arg(locale.toString(items));
  if (selected > 0) s += tr(", %1 selected").arg(locale.toString(selected));
  if (checked > 0) s += tr(", %1 checked").arg(locale.toString(checked));
  if (insideArchive) s += tr(", inside an archive");
  return s;
}

}  // namespace nxfv::browser
