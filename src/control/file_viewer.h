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

#include "nxfv/control/file_operation.h"
#include "nxfv/control/file_viewer_events.h"
#include "nxfv/control/property_bag.h"
#include "nxfv/control/viewer_settings.h"
#include "nxfv/control/virtual_file.h"
#include "nxfv/export.h"
#include "nxfv/model/file_collection.h"
#include "nxfv/model/header_data.h"
#include "nxfv/model/k_collection.h"
#include "nxfv/platform/list_view.h"
#include "nxfv/platform/platform.h"
#include "nxfv/shell/shell_folders.h"

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
  // The file commands on this control's selection (copy, cut, paste,
  // delete, rename, links, verbs). The control owns it and answers its
  // questions; a host that keeps it after the control is gone gets an
  // object that sees no selection.
  std::shared_ptr<NxFileoperation> FileCommand();
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
  // --- Selection, check marks, label editing, saved settings (selection.h,
  // label_edit.h, saved_settings.h) ---
  //
  // The list view is the authority on selection and check marks: these
  // members read the rows, copy their state into the items silently and hand
  // the items out; each item handed out becomes the one whose Selected /
  // Checked / EnsureVisible / ExecuteShellCommand the control acts on (an
  // item handed out earlier then changes only itself). The go-up row ".."
  // is skipped by the item lookups. A row is checked when its state image
  // is 2; rows without a state image are neither checked nor unchecked.
  using ItemRef = std::shared_ptr<NxFileListItem>;
  int32_t SelectedCount() const;  // selected rows, the go-up row included
  int32_t CheckedCount() const;
  // Synchronises, then starts the walk at the first selected row. Next
  // continues after the last row returned; a new control's cursor is at
  // row 0, so Next without First never returns row 0. Null at the end.
  ItemRef FirstSelectedItem();
  ItemRef NextSelectedItem();
  ItemRef FirstCheckedItem();
  ItemRef NextCheckedItem();
  // The item of the row at list-view index Index (0-based), its Selected
  // and Checked read from the row; null out of range and for "..".
  ItemRef ListItem(int32_t Index);
  // The first item in collection order whose Displayname equals Myname
  // (letter case counts); null when none.
  ItemRef GetItemFromName(const std::string& Myname);
  // SelectAll does nothing while AllowMultipleSelection is False.
  // UnSelectAll / UnCheckAll also clear every item's field at once.
  void SelectAll();
  void UnSelectAll();
  void CheckAll();
  void UnCheckAll();
  // Unless AllowitemRenaming is False or a listing runs: the first selected
  // item becomes the only selected one, the list view gets the focus and is
  // asked to edit that row's label (ListViewObserver::OnLabelEditRequested).
  void StartLabelEdit();
  // The front end hands back the edited label of row rowIndex (0-based).
  // The control raises OnItemRename(Item, newname, Cancel); unless the host
  // cancels or empties the name, the file is renamed and then the row text,
  // row key, collection key and the item follow the new name. Returns
  // whether it renamed; a refused name shows ".EndLabelEdit". A front end
  // whose edit was abandoned calls CancelLabelEdit instead.
  bool EndLabelEdit(int32_t rowIndex, const std::string& newText);
  void CancelLabelEdit();

  // Saved settings: the 32 values under their bag keys. Reading applies
  // them, builds the columns and, unless VirtualFileList, lists the current
  // or starting folder; a value the bag cannot give as its type falls back
  // to its default and is reported once (".ReadProperties", error 13).
  void ReadProperties(PropertyBag& bag);
  void WriteProperties(PropertyBag& bag);
  // Who hears the bag key of every property let (not owned; null for none).
  void SetPropertyChangeListener(PropertyChangeListener* listener);

  // The look of the list view and the behaviour switches.
  uint32_t BackColor() const;
  void setBackColor(uint32_t v);
  uint32_t TextColor() const;
  void setTextColor(uint32_t v);
  bool VirtualFileList() const;
  void setVirtualFileList(bool v);
  bool AllowDiveIntoFolders() const;
  void setAllowDiveIntoFolders(bool v);
  bool AllowitemRenaming() const;
  void setAllowitemRenaming(bool v);
  bool AllowFileExecution() const;
  void setAllowFileExecution(bool v);
  bool AllowMultipleSelection() const;
  void setAllowMultipleSelection(bool v);
  bool AutoUpdate() const;
  void setAutoUpdate(bool v);
  bool DefaultKeyHandling() const;
  void setDefaultKeyHandling(bool v);
  int16_t Borderstyle() const;  // 0 none, 1 fixed single
  void setBorderstyle(int16_t v);
  int16_t Appearance() const;  // 0 flat, 1 3-D
  void setAppearance(int16_t v);
  bool Enabled() const;
  void setEnabled(bool v);
  bool HideColumnHeaders() const;
  void setHideColumnHeaders(bool v);
  bool HideSelection() const;
  void setHideSelection(bool v);
  bool TrackSelection() const;  // hover selection
  void setTrackSelection(bool v);
  bool AllowMoveColumns() const;
  void setAllowMoveColumns(bool v);
  bool FullRowSelection() const;
  void setFullRowSelection(bool v);
  bool ShowGridLines() const;
  void setShowGridLines(bool v);
  bool ShowCheckBoxes() const;
  void setShowCheckBoxes(bool v);
  // --- end selection and saved settings ---

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

  // Navigation and history (control/navigation.cpp). Each answers whether
  // the view moved; failures show the error box under the member's label.
  // GoUP: to the parent folder, never above GoUpTopFolder; from a root to
  // the drives view; from inside an archive to the folder holding it.
  bool GoUP();
  // Back and forward with browser rules; a location that has vanished is
  // reported (".HistoryPrevious"/".HistoryNext", error 76), dropped from
  // the history, and the view stays.
  Variant HistoryPrevious();
  Variant HistoryNext();
  bool CanGoPrevious() const;
  bool CanGoNext() const;
  // Special folders: "" and False for a number without a path here.
  bool SetToSpecialFolder(SHFolders NewFolder);
  std::string GetSpecialFolder(SHFolders NewFolder);
  Variant ResetToStartingFolder();
  Variant ResetToDesktop();
  // Asks the user for a folder (the platform's picker), starting at the
  // current one; False when cancelled.
  bool SelectCurrentFolder(const std::string& Titel = "");
  // Creates a folder in NewPath (default: the current folder) named
  // NewFolderName, or the first free of "New Folder", "New Folder (2)", ...
  bool CreateNewFolder(const std::string& NewFolderName = "", const std::string& NewPath = "");

  // Input entry points (control/input.cpp): a front end feeds the user's
  // actions here. A disabled control (Enabled False) ignores them all.
  // rowKey names the row under the pointer; "" is empty space.
  void UserMouseDown(int16_t Button, int16_t Shift, float x, float y);
  void UserMouseUp(int16_t Button, int16_t Shift, float x, float y);
  void UserMouseMove(int16_t Button, int16_t Shift, float x, float y);
  void UserClick(const std::string& rowKey);
  void UserDoubleClick(const std::string& rowKey);
  void UserRightClick(const std::string& rowKey);
  void UserKeyDown(int16_t KeyCode, int16_t Shift);
  void UserKeyUp(int16_t KeyCode, int16_t Shift);
  void UserKeyPress(int16_t KeyAscii);
  // The user selects or deselects a row; true when the change was made
  // (the host's OnSelectionChange may cancel it).
  bool UserSelectionChange(const std::string& rowKey, bool selecting);
  // Opens the row as a double-click or Enter does (after OnItemDblClick).
  bool ActivateRow(const std::string& rowKey);

  // --- Virtual lists (virtual_list.h): the host fills the view itself ---
  // AddVirtualFilesBegin clears the view and builds the columns (the view
  // then has no current folder); VirtualAddItem adds one entry (a key
  // already shown is error 35602, reported as ".VirtualAddItem"); a folder
  // entry becomes a VirtualFolder item, which refuses shell commands.
  // AddVirtualFilesEnd sorts and raises AfterNewView.
  Variant AddVirtualFilesBegin();
  Variant VirtualAddItem(const VirtualFile& file);
  Variant AddVirtualFilesEnd();

  class Internal;

 private:
  void Initialize();
  void ListLocation(const std::string& path);
  bool IsArchivePath(const std::string& path) const;

  std::unique_ptr<ViewerCore> core_;
};

}  // namespace nxfv
