// FileViewer: the embeddable file-and-folder browser control.
//
// It shows one location at a time in its list view (ListView1()): a folder
// of the platform, or the entries of a ZIP or CAB archive. Every shown
// entry is an NxFileListItem kept in the control's NxFileCollection under
// the same key as its row. The host listens through one FileViewerEvents
// listener and drives the control through its properties and methods.
//
// Error policy: nothing is thrown to the host, whatever its handlers throw.
// Procedures with an error report (".Currentfolder", ".LoadFiles",
// ".SortView", ...) show the common error box and change nothing further;
// members whose failures the host runtime would raise to its caller (the
// header options, ViewOptions) leave them in the thread's error state
// (CurrentError()).
//
// Threading: one host thread; listings asked for while one runs (from an
// event handler) are ignored.
//
// The façade holds its state in a ViewerCore and delegates the work to one
// part per job (folder listing, archive view, sort run, column set, item
// events); the component's own code reaches internal operations through
// FileViewer::Internal (control/file_viewer_internal.h).
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "nxfv/control/file_viewer_events.h"
#include "nxfv/control/viewer_settings.h"
#include "nxfv/export.h"
#include "nxfv/model/file_collection.h"
#include "nxfv/model/header_data.h"
#include "nxfv/model/k_collection.h"
#include "nxfv/platform/list_view.h"
#include "nxfv/platform/platform.h"

namespace nxfv {

struct ViewerCore;

class NXFV_EXPORT FileViewer : public Object, public std::enable_shared_from_this<FileViewer> {
  struct Passkey {};

 public:
  // Creates and initialises a control on platform: instance slot taken,
  // captions loaded, the twenty default columns built. Nothing is listed
  // until a location is set. A control needs a platform: null gives null.
  static std::shared_ptr<FileViewer> Create(PlatformRef platform);
  FileViewer(Passkey, PlatformRef platform);
  ~FileViewer() override;
  FileViewer(const FileViewer&) = delete;
  FileViewer& operator=(const FileViewer&) = delete;

  // The one listener (not owned; null for none).
  void SetEventListener(FileViewerEvents* listener);

  Platform& platform();
  ListView& ListView1();
  const ListView& ListView1() const;
  // The items of the current view, one per row, under the row keys.
  std::shared_ptr<NxFileCollection> Items() const;
  int32_t ItemCount() const;
  int16_t InstanceSlot() const;

  // Run mode (true) or design mode: some lets act only at run time.
  void SetUserMode(bool runMode);
  bool UserMode() const;

  // Location. Setting it strips one trailing separator, checks that the
  // location exists, and lists a ".zip"/".cab" file as an archive (when
  // AllowDiveIntoArchives) or a folder. A location that does not exist
  // shows the error box ".Currentfolder" (error 76) and changes nothing;
  // so does a change asked for while a listing runs (it is ignored).
  const std::string& Currentfolder() const;
  void setCurrentfolder(const std::string& folder);
  // ReLoadFiles: true lists the location anew; false refreshes in place
  // (kept rows stay untouched, new entries are added, vanished ones go).
  Variant RefreshView(bool ReLoadFiles);
  bool InsideArchive() const;

  // Filters. The Show lets do not reload (the host calls RefreshView);
  // FilePattern reloads at once, even to the same value.
  bool ShowFolders() const;
  void setShowFolders(bool v);
  bool ShowFiles() const;
  void setShowFiles(bool v);
  bool ShowHiddenItems() const;
  void setShowHiddenItems(bool v);
  bool ShowSysItems() const;
  void setShowSysItems(bool v);
  bool ShowGOUPFolder() const;
  void setShowGOUPFolder(bool v);
  const std::string& FilePattern() const;
  void setFilePattern(const std::string& pattern);
  const std::string& GoUpTopFolder() const;
  void setGoUpTopFolder(const std::string& v);

  // Plain settings.
  const std::string& StartingFolder() const;
  void setStartingFolder(const std::string& v);
  bool AllowDiveIntoArchives() const;
  void setAllowDiveIntoArchives(bool v);
  bool AllowMultiColumnSort() const;
  void setAllowMultiColumnSort(bool v);
  ViewStyles ViewStyle() const;
  void setViewStyle(ViewStyles v);
  // Property-bag keys of the lets since the control was created, in order.
  const std::vector<std::string>& ChangedProperties() const;

  // Columns and header options. A host's own set: HeaderOptionsNew, one
  // HeaderOptionsAdd per column (at most twenty: the column record table
  // has twenty places; a twenty-first is error 9 and adds nothing), then
  // HeaderOptionsActivate.
  Variant HeaderOptionsNew();
  Variant HeaderOptionsAdd(headerdatas& HeaderOption);
  Variant HeaderOptionsActivate();
  Variant HeaderModifying(headerdatas& HeaderOption);
  int32_t ViewOptions() const;
  // Only at run time: stores the mask and resizes the columns at once.
  void setViewOptions(int32_t mask);
  kCollection& HeaderOptions();
  // The locked-column list last published in the instance slot.
  const std::string& LockedColumns() const;

  // Sorting. Clicking a header makes its column the only sort column, or
  // reverses it when it already is; with Ctrl (and AllowMultiColumnSort) it
  // is appended as the next sort column (at most ten) or reversed if
  // present. Raises ColumnClick first.
  void ClickColumnHeader(int32_t columnIndex, bool ctrlHeld);
  // Replaces the sort state (keys unknown to the view sort as empty text)
  // and re-sorts.
  void SetSortColumns(const std::vector<SortState>& columns);
  std::vector<SortState> SortColumns() const;

  // Shortens a path to fit ControlWidth pixels (ellipsis in the middle).
  std::string FitFilenameToSize(const std::string& FileName, int32_t ControlWidth, int32_t ContainerHDC);

  class Internal;

 private:
  void Initialize();
  void ListLocation(const std::string& path);
  bool IsArchivePath(const std::string& path) const;

  std::unique_ptr<ViewerCore> core_;
};

}  // namespace nxfv
