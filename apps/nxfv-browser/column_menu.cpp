#include "column_menu.h"

#include <QAction>
#include <QSignalBlocker>

#include "nxfv/columns/column_set.h"
#include "nxfv/qt/file_viewer_widget.h"

namespace nxfv::browser {

ColumnMenu::ColumnMenu(qt::FileViewerWidget& viewer, QWidget* parent) : QMenu(tr("&Columns"), parent), viewer_(viewer) {
  setObjectName(QStringLiteral("columns"));
  for (const BuiltInColumn& column : BuiltInColumns()) {
    QAction* action = addAction(QString::fromLatin1(column.key));
    action->setCheckable(true);
    action->setData(column.bit);
    action->setEnabled(column.bit != show_Name);
    connect(action, &QAction::toggled, this, [this, bit = column.bit](bool on) {
      const int mask = viewer_.ViewOptions();
      const int next = on ? (mask | bit) : (mask & ~bit);
      if (next != mask) viewer_.setViewOptions(next);
    });
  }
  connect(this, &QMenu::aboutToShow, this, &ColumnMenu::refresh);
  refresh();
}

void ColumnMenu::refresh() {
  const ListView& view = viewer_.viewer().ListView1();
  const int mask = viewer_.ViewOptions();
  const auto& columns = BuiltInColumns();
  const QList<QAction*> items = actions();
  for (size_t i = 0; i < columns.size() && i < static_cast<size_t>(items.size()); ++i) {
    QAction* action = items[static_cast<qsizetype>(i)];
    const int32_t at = view.FindColumn(columns[i].key);
    QString caption = at >= 0 ? QString::fromStdString(view.Column(at).caption) : QString::fromLatin1(columns[i].key);
    if (columns[i].onlyArchive) caption = tr("%1 (archives)").arg(caption);
    action->setText(caption);
    const QSignalBlocker quiet(action);
    action->setChecked(columns[i].bit == show_Name || (mask & columns[i].bit) != 0);
  }
}

}  // namespace nxfv::browser
