// The state of one FileViewer, shared by the parts that do its work (folder
// listing, archive view, sort run, column set, item events). Hosts never see
// it: FileViewer is the façade that holds one and delegates to the parts.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "nxfv/columns/column_set.h"
#include "nxfv/control/auto_refresh.h"
#include "nxfv/control/file_types.h"
#include "nxfv/control/file_viewer_events.h"
#include "nxfv/control/history.h"
#include "nxfv/control/instance_table.h"
#include "nxfv/control/item_events.h"
#include "nxfv/control/lifecycle.h"
#include "nxfv/control/property_bag.h"
#include "nxfv/control/selection.h"
#include "nxfv/control/sort_run.h"
#include "nxfv/control/viewer_settings.h"
#include "nxfv/model/file_collection.h"
#include "nxfv/model/k_collection.h"
#include "nxfv/platform/list_view.h"
#include "nxfv/platform/platform.h"

namespace nxfv {

class FileCommands;

struct ViewerCore {
  explicit ViewerCore(PlatformRef platformRef);
  ~ViewerCore();

  PlatformRef platformRef;
  Platform& platform;
  FileViewerEvents* events = nullptr;  // the one host listener, not owned
  ListView listView;
  std::shared_ptr<NxFileCollection> items;
  std::shared_ptr<kCollection> headerOptions;
  ColumnCaptions captions;
  FileTypes fileTypes;
  ItemEvents itemEvents;
  SortRun sort;
  ViewerSettings settings;
  // Selection and saved settings: the cursors of the selection walks, and
  // who hears of property changes (not owned; null for nobody).
  SelectionCursors selection;
  PropertyChangeListener* propertyListener = nullptr;

  int16_t instanceSlot = 0;
  bool userMode = true;
  bool busy = false;  // a listing runs: listings asked for meanwhile are ignored

  // The location on view.
  std::string currentFolder;
  bool insideArchive = false;
  std::string lastAnnouncedFolder;
  std::string currentArchiveExt;
  // The archive rows' shared row record keeps its image between entries and
  // archives: an entry without a type shows the icon last set.
  int32_t archiveIconIndex = 0;

  InstanceSlot& Slot() { return InstanceTable::ForThisThread().Row(instanceSlot); }
  // Tells the host that the property saved under key changed.
  void PropertyChanged(const char* key);
  // Forgets the items of the view (rows are the column set's business).
  void ClearItems();

  // Navigation: the back/forward history and the private image list.
  History history;
  PrivateImageList images;

  // The file commands (FileCommand) and the control's answers to them.
  std::unique_ptr<FileCommands> fileCommands;

  // Auto-refresh and the drives view. Last member: it stops its timers
  // before the rest of the state goes.
  bool showingDrives = false;  // the drives and special-folder list is on view
  AutoRefresh autoRefresh{*this};
};

}  // namespace nxfv
