// The events a FileViewer raises to its host, and the sort state it shares
// with the host.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "nxfv/export.h"
#include "nxfv/model/file_list_item.h"
#include "nxfv/platform/list_view.h"

namespace nxfv {

// The control's events, in dispatch order. Arguments are by reference so
// that handlers can answer. Every handler defaults to doing nothing.
//
// A handler may throw anything: the procedure that raised the event reports
// the failure through the common error box under its own label and ends;
// the control stays usable (its busy flag, window lock and mouse pointer are
// restored). A handler that starts a listing while one runs is ignored.
class NXFV_EXPORT FileViewerEvents {
 public:
  using ItemRef = std::shared_ptr<NxFileListItem>;
  virtual ~FileViewerEvents() = default;
  virtual void AfterNewView(std::string& /*Path*/, bool& /*CanGoPrevious*/, bool& /*CanGoNext*/, bool& /*InsideArchive*/) {}
  virtual void OnItemClick(ItemRef& /*Item*/) {}
  virtual void Click() {}
  virtual void DblClick() {}
  virtual void OnCurrentFolderChanged(std::string& /*Currentfolder*/) {}
  virtual void OnItemRename(ItemRef& /*Item*/, std::string& /*newname*/, bool& /*Cancel*/) {}
  virtual void OnItemRightClick(ItemRef& /*Item*/) {}
  virtual void OnItemDblClick(ItemRef& /*Item*/, bool& /*Cancel*/) {}
  virtual void SetUserdata(ItemRef& /*Item*/, std::string& /*UserDataA*/, std::string& /*UserDataB*/) {}
  virtual void OnSelectionChange(ItemRef& /*Item*/, bool& /*Selecting*/, bool& /*Cancel*/) {}
  // The header is read-only: the control owns its columns.
  virtual void ColumnClick(const ListColumn& /*ColumnHeader*/) {}
  virtual void KeyDown(int16_t& /*KeyCode*/, int16_t& /*Shift*/) {}
  virtual void KeyUp(int16_t& /*KeyCode*/, int16_t& /*Shift*/) {}
  virtual void KeyPress(int16_t& /*KeyAscii*/) {}
  virtual void MouseMove(int16_t& /*Button*/, int16_t& /*Shift*/, float& /*x*/, float& /*y*/) {}
  virtual void MouseDown(int16_t& /*Button*/, int16_t& /*Shift*/, float& /*x*/, float& /*y*/) {}
  virtual void MouseUp(int16_t& /*Button*/, int16_t& /*Shift*/, float& /*x*/, float& /*y*/) {}
};

// One sort column of the sort state: a column key and its direction.
struct SortState {
  std::string key;
  bool descending = false;
  bool operator==(const SortState&) const = default;
};

}  // namespace nxfv
