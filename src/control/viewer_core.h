// The state of one FileViewer, shared by the parts that do its work (folder
// listing, archive view, sort run, column set, item events). Hosts never see
// it: FileViewer is the façade that holds one and delegates to the parts.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "nxfv/columns/column_set.h"
#include "nxfv/control/file_types.h"
#include "nxfv/control/file_viewer_events.h"
#include "nxfv/control/instance_table.h"
#include "nxfv/control/item_events.h"
#include "nxfv/control/sort_run.h"
#include "nxfv/control/viewer_settings.h"
#include "nxfv/model/file_collection.h"
#include "nxfv/model/k_collection.h"
#include "nxfv/platform/list_view.h"
#include "nxfv/platform/platform.h"

namespace nxfv {

struct ViewerCore {
  explicit ViewerCore(PlatformRef platformRef);

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
  std::vector<std::string> changedProperties;  // property-bag keys of the lets, in order

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
  void PropertyChanged(const char* key) { changedProperties.push_back(key); }
  // Forgets the items of the view (rows are the column set's business).
  void ClearItems();
};

}  // namespace nxfv
