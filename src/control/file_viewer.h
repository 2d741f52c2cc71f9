// FileViewer: the embeddable file-and-folder browser control.
//
// It shows one location at a time in its list view (ListView1()): a folder
// of the platform, or the entries of a ZIP or CAB archive. Every shown
// entry is an NxFileListItem kept in the control's NxFileCollection under
// the same key as its row. The host listens through one FileViewerEvents
// listener and drives the control through its properties and methods.
//
// Error policy: nothing is thrown to the host. Procedures with an error
// report (the listing: ".LoadFiles") show the common error box; members
// whose failures the host runtime would raise to its caller (the header
// options) leave them in the thread's error state (CurrentError()).
//
// Threading: one host thread; re-entrant listings from event handlers are
// ignored through a busy flag.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "archive/archive_reader.h"
#include "columns/column_set.h"
#include "control/type_cache.h"
#include "model/file_collection.h"
#include "model/file_list_item.h"
#include "model/header_data.h"
#include "model/k_collection.h"
#include "platform/list_view.h"
#include "platform/platform.h"

namespace nxfv {

// The control's events, in dispatch order. Arguments are by reference so
// that handlers can answer. Every handler defaults to doing nothing.
class FileViewerEvents {
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
  virtual void ColumnClick(ListColumn& /*ColumnHeader*/) {}
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
};

class RowTexts;

class FileViewer : public Object, public std::enable_shared_from_this<FileViewer> {
  struct Passkey {};

 public:
  // Creates and initialises a control with the default settings: instance
  // slot taken, captions loaded, the twenty default columns built. Nothing
  // is listed until a location is set.
  static std::shared_ptr<FileViewer> Create(PlatformRef platform = nullptr);
  FileViewer(Passkey, PlatformRef platform);
  ~FileViewer() override;
  FileViewer(const FileViewer&) = delete;
  FileViewer& operator=(const FileViewer&) = delete;

  // The one listener (not owned; null for none).
  void SetEventListener(FileViewerEvents* listener) { events_ = listener; }

  Platform& platform() { return *platform_; }
  ListView& ListView1() { return listView_; }
  const ListView& ListView1() const { return listView_; }
  // The items of the current view, one per row, under the row keys.
  std::shared_ptr<NxFileCollection> Items() const { return items_; }
  int32_t ItemCount() const { return items_->Count(); }
  int16_t InstanceSlot() const { return instanceSlot_; }

  // Run mode (true) or design mode: some lets act only at run time.
  void SetUserMode(bool runMode) { userMode_ = runMode; }
  bool UserMode() const { return userMode_; }

  // Location. Setting it strips one trailing separator, checks that the
  // location exists, and lists a ".zip"/".cab" file as an archive (when
  // AllowDiveIntoArchives) or a folder. A location that does not exist
  // shows the error box ".Currentfolder" (error 76) and changes nothing.
  const std::string& Currentfolder() const { return currentFolder_; }
  void setCurrentfolder(const std::string& folder);
  // ReLoadFiles: true lists the location anew; false refreshes in place
  // (kept rows stay untouched, new entries are added, vanished ones go).
  Variant RefreshView(bool ReLoadFiles);
  bool InsideArchive() const { return insideArchive_; }

  // Filters. The Show lets do not reload (the host calls RefreshView);
  // FilePattern reloads at once, even to the same value.
  bool ShowFolders() const { return showFolders_; }
  void setShowFolders(bool v) { showFolders_ = v; PropertyChanged("ShowFolders"); }
  bool ShowFiles() const { return showFiles_; }
  void setShowFiles(bool v) { showFiles_ = v; PropertyChanged("ShowFiles"); }
  bool ShowHiddenItems() const { return showHidden_; }
  void setShowHiddenItems(bool v) { showHidden_ = v; PropertyChanged("ShowHiddenItems"); }
  bool ShowSysItems() const { return showSystem_; }
  void setShowSysItems(bool v) { showSystem_ = v; PropertyChanged("ShowSysItems"); }
  bool ShowGOUPFolder() const { return showGoUp_; }
  void setShowGOUPFolder(bool v) { showGoUp_ = v; PropertyChanged("ShowGOUPFolder"); }
  const std::string& FilePattern() const { return filePattern_; }
  void setFilePattern(const std::string& pattern);
  const std::string& GoUpTopFolder() const { return goUpTopFolder_; }
  void setGoUpTopFolder(const std::string& v) { goUpTopFolder_ = v; PropertyChanged("GoUpTopFolder"); }

  // Plain settings.
  const std::string& StartingFolder() const { return startingFolder_; }
  void setStartingFolder(const std::string& v) { startingFolder_ = v; PropertyChanged("StartingFolder"); }
  bool AllowDiveIntoArchives() const { return allowDiveIntoArchives_; }
  void setAllowDiveIntoArchives(bool v) { allowDiveIntoArchives_ = v; PropertyChanged("AllowDiveIntoArchives"); }
  bool AllowMultiColumnSort() const { return allowMultiColumnSort_; }
  void setAllowMultiColumnSort(bool v) { allowMultiColumnSort_ = v; PropertyChanged("AllowMulticolumnsort"); }
  ViewStyles ViewStyle() const { return listView_.ViewStyle(); }
  void setViewStyle(ViewStyles v) { listView_.SetViewStyle(v); PropertyChanged("ViewStyle"); }
  // Property-bag keys of the lets since the control was created, in order.
  const std::vector<std::string>& ChangedProperties() const { return changedProperties_; }

  // Columns and header options.
  Variant HeaderOptionsNew();
  Variant HeaderOptionsAdd(headerdatas& HeaderOption);
  Variant HeaderOptionsActivate();
  Variant HeaderModifying(headerdatas& HeaderOption);
  int32_t ViewOptions() const { return viewOptions_; }
  // Only at run time: stores the mask and resizes the columns at once.
  void setViewOptions(int32_t mask);
  kCollection& HeaderOptions() { return *headerOptions_; }
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

  // Internal operations (for the component's own code and its tests).
  int16_t SubItemIndexOf(const std::string& Key) const;
  void CompleteHeaderOptions();
  void BuildColumns(bool WidthsOnly);
  void LoadFiles(const std::string& Path, bool KeepItems, bool ResetSort, bool SelectFirst);
  void LoadArchive(const std::string& archivePath);
  void SortView(bool ResetSort);
  std::string GetExt(const std::string& Name) const;
  std::string GetFileType(const std::string& Ext, const std::string& FullPath, int32_t& IconIndex,
                          bool probeByAttributes = false);
  // The cache entry GetFileType answers from (null for an empty Ext).
  const TypeCacheEntry* FileTypeEntry(const std::string& Ext, const std::string& FullPath, bool probeByAttributes);
  bool ListingBusy() const { return busy_; }
  const TypeCache& FileTypes() const { return typeCache_; }

 private:
  class ItemListener;
  class ArchiveListener;
  friend class ArchiveListener;

  void PropertyChanged(const char* key) { changedProperties_.push_back(key); }
  // Points the one item subscription at item (the item about to be handed
  // to the host); the previous item's events go unhandled from then on.
  void Subscribe(const std::shared_ptr<NxFileListItem>& item);
  void Initialize();
  void ClearView();
  bool IsArchivePath(const std::string& path) const;
  void HandleItemEvent(eventbefs mybef, Variant& itemvalue, std::shared_ptr<NxFileListItem>& xitem,
                       Variant& Parameter, bool& operationok);
  void AnnounceNewView(const std::string& location);
  void UpdateSortIndicators();
  void ApplySortColumns(const std::vector<SortState>& columns);
  void ApplyColumnClick(int32_t columnIndex, bool ctrlHeld);
  // Bytes a row's sort key will take (with its 4-byte record header).
  size_t SortKeyBytes() const;
  void AddArchiveEntry(int32_t Index, int32_t Total, const std::string& FileName, const std::string& ArchiveExt,
                       double Modified, int32_t Size, int32_t CompSize, int32_t Method, int32_t Attr,
                       const std::string& Path, int32_t flags, int32_t CRC, const std::string& Comments);

  PlatformRef platform_;
  FileViewerEvents* events_ = nullptr;
  ListView listView_;
  std::shared_ptr<NxFileCollection> items_;
  std::shared_ptr<kCollection> headerOptions_;
  std::shared_ptr<ItemListener> itemListener_;
  std::shared_ptr<NxFileListItem> oListitem_;  // the one item whose events the control handles
  ColumnCaptions captions_;
  TypeCache typeCache_;
  std::vector<std::string> changedProperties_;

  int16_t instanceSlot_ = 0;
  bool userMode_ = true;
  bool busy_ = false;
  bool insideArchive_ = false;
  bool lastAccessDateOnly_ = true;
  std::string currentFolder_;
  std::string listingPath_;
  std::string lastAnnouncedFolder_;
  std::string currentArchiveExt_;
  std::string capturedPattern_;
  int32_t archiveIconIndex_ = 0;  // the shared row record's image: kept between entries
  // Sub-item index of each column the archive rows fill, looked up once per
  // archive (a host may reorder the columns, so never assumed).
  std::vector<int32_t> archiveSlots_;
  std::unique_ptr<RowTexts> archiveTexts_;  // reused for every entry

  bool showFolders_ = true;
  bool showFiles_ = true;
  bool showHidden_ = true;
  bool showSystem_ = true;
  bool showGoUp_ = true;
  std::string filePattern_ = "*.*";
  std::string goUpTopFolder_;
  std::string startingFolder_;
  bool allowDiveIntoArchives_ = true;
  bool allowMultiColumnSort_ = true;
  int32_t viewOptions_ = SetNormalView;

  // Sort state: the column keys from index 1 (index 0 unused), count and
  // directions.
  std::array<std::string, 11> sortColumns_{};
  std::array<bool, 11> sortDescending_{};
  int16_t sortColumnCount_ = 0;
};

}  // namespace nxfv
