// ListViewModel: the list view model (nxfv::ListView) as a Qt item model.
//
// A thin adapter: it copies no rows. rowCount/columnCount/data read the
// ListView directly and convert only the cells a view asks for (UTF-8 to
// QString on demand). It listens to the ListView as an observer and turns
// each notice into the matching Qt model signal:
//   OnReset, OnSortChanged (rows reordered), a column count change
//                                      -> modelAboutToBeReset / modelReset
//   OnRowsInserted / OnRowsRemoved     -> rowsInserted / rowsRemoved
//   OnRowChanged, OnRowImageChanged, OnCheckChanged -> dataChanged
//   captions, widths, order            -> headerDataChanged + columnsChanged
//   OnSelectionChanged                 -> rowSelectionChanged (for the views'
//                                         selection model; not a data role)
//   OnAppearanceChanged                -> lookChanged
//   OnLabelEditRequested               -> labelEditRequested
// The ListView notifies after the fact, so begin/end pairs are emitted back
// to back; nothing between them reads the model.
//
// Writes go through the control, never to the rows: EditRole on column 0
// is FileViewer::EndLabelEdit, CheckStateRole the row item's Checked (the
// control then sets the row's check mark and the observer reports it).
//
// Header captions carry the sort marks: "Name ▲" for the one sort column,
// "Name 1 ▲", "Size 2 ▼" when several columns sort.
//
// Threading: the GUI thread only, like the control.
#pragma once

#include <QAbstractTableModel>
#include <QStringList>
#include <cstdint>
#include <memory>
#include <string>

#include "nxfv/platform/list_view_observer.h"

namespace nxfv {
class FileViewer;
class NxFileListItem;
}  // namespace nxfv

namespace nxfv::qt {

class IconSource;

class ListViewModel : public QAbstractTableModel, private ListViewObserver {
  Q_OBJECT

 public:
  // viewer and icons must outlive the model.
  ListViewModel(FileViewer& viewer, IconSource& icons, QObject* parent = nullptr);
  ~ListViewModel() override;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  void multiData(const QModelIndex& index, QModelRoleDataSpan roleDataSpan) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  QStringList mimeTypes() const override;
  QMimeData* mimeData(const QModelIndexList& indexes) const override;
  Qt::DropActions supportedDragActions() const override;

  // The key of row (UTF-8); "" out of range.
  std::string RowKey(int row) const;
  // The row keyed key, or -1.
  int RowOf(const std::string& key) const;
  // The item shown by row, or null (the go-up row, no such row).
  std::shared_ptr<NxFileListItem> ItemOfRow(int row) const;
  // The full path of the file or folder a row shows, in the platform's path
  // text; "" for rows that are no file (go-up row, drives, archive entries,
  // virtual entries).
  std::string FilePathOfRow(int row) const;

 signals:
  void rowSelectionChanged(int row);
  void columnsChanged();
  void lookChanged();
  void labelEditRequested(int row);

 private:
  void OnReset() override;
  void OnRowsInserted(size_t first, size_t count) override;
  void OnRowsRemoved(size_t first, size_t count) override;
  void OnRowChanged(size_t row, int32_t column) override;
  void OnRowImageChanged(size_t row) override;
  void OnSelectionChanged(size_t row) override;
  void OnCheckChanged(size_t row) override;
  void OnColumnsChanged() override;
  void OnSortChanged() override;
  void OnAppearanceChanged() override;
  void OnLabelEditRequested(size_t row) override;

  QVariant Cell(int row, int column, int role) const;
  void Reset();

  FileViewer& viewer_;
  IconSource& icons_;
  int columns_ = 0;          // the column count the views know
  bool checkBoxes_ = false;  // the look the views know
};

}  // namespace nxfv::qt
