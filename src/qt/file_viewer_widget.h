// FileViewerWidget: the file-and-folder browser control as a Qt 6 widget.
//
// The widget owns a FileViewer (the control) on a platform: by default a
// QtLinuxPlatform (the real Linux platform with the system clipboard and a
// wait cursor), driven by the Qt event loop so that timers and auto-refresh
// work; or a platform the host passes (the simulated one in tests). It
// renders the control's list view through one ListViewModel shown by a
// report view (QTreeView used as a flat list) and an items view (QListView)
// for the icon, small-icon and list styles, switched with ViewStyle. Both
// views share the model and one selection model, so switching keeps the
// selection and the current row.
//
// The views never write rows: every user action goes to the control's
// input entry points (clicks, keys, mouse, selection, check marks, header
// clicks, label edits) and the control's changes come back through the list
// view's observer notices.
//
// Clipboard and drag and drop: with the default platform copied and cut
// files go to the system clipboard (QtFileClipboard). Selected rows drag out
// as file URLs; local files dropped on a view are copied or moved (by the
// drop action; a link drop copies) into the folder row under the pointer,
// else into the current folder, through the control's file commands.
//
// Saved settings. Each of the control's 32 saved settings is a Q_PROPERTY
// named by its bag key ("ShowFiles", "pattern", "AllowMulticolumnsort", ...),
// so a Designer .ui file is the host's property bag. Properties set before
// the settings are applied are collected and applied together the way the
// control reads a saved form (FileViewer::ReadProperties: every value, then
// the columns, then the listing). The settings are applied when the widget
// is first shown, or earlier by applySettings(); from then on each property
// set acts at once. A widget in design mode (setDesignMode(true), which the
// Designer plugin does) never applies them and lists nothing.
//
// Events. The widget is the control's event listener and re-emits every
// event as a Qt signal, synchronously, from inside the control's call (use
// direct connections; a queued connection sees the pointers dangle).
// Veto-able events carry `bool* cancel`; answers the handler may give are
// pointers (`QString* newName`, `int* keyCode`). Items are the control's
// NxFileListItem objects (ItemPtr); they stay valid while the handler holds
// them. A handler may throw: the control reports it through its error box
// and stays usable. Hosts that need the raw listener interface can replace
// the widget's with viewer().SetEventListener(...) (the signals then stop).
//
// Threading: the GUI thread only, like the control.
// Ownership: the widget owns the control and its views; the platform is
// shared with the caller.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QWidget>
#include <cstdint>
#include <memory>

#include "nxfv/control/file_viewer.h"

class QItemSelectionModel;
class QListView;
class QMenu;
class QTreeView;

namespace nxfv::qt {

class ListViewModel;
class FileViewerWidgetPrivate;

class FileViewerWidget : public QWidget {
  Q_OBJECT
  // The saved settings, in the control's reading order (CurrentFolder is
  // applied last, with the listing).
  Q_PROPERTY(uint BackColor READ BackColor WRITE setBackColor)
  Q_PROPERTY(uint ForeColor READ ForeColor WRITE setForeColor)
  Q_PROPERTY(QString CurrentFolder READ CurrentFolder WRITE setCurrentFolder)
  Q_PROPERTY(int ViewOptions READ ViewOptions WRITE setViewOptions)
  Q_PROPERTY(bool ShowFolders READ ShowFolders WRITE setShowFolders)
  Q_PROPERTY(bool ShowFiles READ ShowFiles WRITE setShowFiles)
  Q_PROPERTY(bool ShowHiddenItems READ ShowHiddenItems WRITE setShowHiddenItems)
  Q_PROPERTY(bool ShowSysItems READ ShowSysItems WRITE setShowSysItems)
  Q_PROPERTY(bool ShowGOUPFolder READ ShowGOUPFolder WRITE setShowGOUPFolder)
  Q_PROPERTY(QString GoUpTopFolder READ GoUpTopFolder WRITE setGoUpTopFolder)
  Q_PROPERTY(QString pattern READ pattern WRITE setPattern)
  Q_PROPERTY(ViewStyle ViewStyle READ viewStyle WRITE setViewStyle)
  Q_PROPERTY(bool VirtualFileList READ VirtualFileList WRITE setVirtualFileList)
  Q_PROPERTY(QString StartingFolder READ StartingFolder WRITE setStartingFolder)
  Q_PROPERTY(bool AllowDiveIntoFolders READ AllowDiveIntoFolders WRITE setAllowDiveIntoFolders)
  Q_PROPERTY(bool AllowDiveIntoArchives READ AllowDiveIntoArchives WRITE setAllowDiveIntoArchives)
  Q_PROPERTY(bool AllowitemRenaming READ AllowitemRenaming WRITE setAllowitemRenaming)
  Q_PROPERTY(bool AllowMulticolumnsort READ AllowMulticolumnsort WRITE setAllowMulticolumnsort)
  Q_PROPERTY(bool AllowFileExecution READ AllowFileExecution WRITE setAllowFileExecution)
  Q_PROPERTY(bool AllowMultipleSelection READ AllowMultipleSelection WRITE setAllowMultipleSelection)
  Q_PROPERTY(bool AutoUpdate READ AutoUpdate WRITE setAutoUpdate)
  Q_PROPERTY(bool DefaultKeyHandling READ DefaultKeyHandling WRITE setDefaultKeyHandling)
  Q_PROPERTY(BorderStyle BorderStyle READ borderStyle WRITE setBorderStyle)
  Q_PROPERTY(Appearance Appearance READ appearance WRITE setAppearance)
  Q_PROPERTY(bool Enabled READ controlEnabled WRITE setControlEnabled)
  Q_PROPERTY(bool HideColumnHeaders READ HideColumnHeaders WRITE setHideColumnHeaders)
  Q_PROPERTY(bool HideSelection READ HideSelection WRITE setHideSelection)
  Q_PROPERTY(bool TrackSelection READ TrackSelection WRITE setTrackSelection)
  Q_PROPERTY(bool AllowMoveColumns READ AllowMoveColumns WRITE setAllowMoveColumns)
  Q_PROPERTY(bool FullRowSelection READ FullRowSelection WRITE setFullRowSelection)
  Q_PROPERTY(bool ShowGridLines READ ShowGridLines WRITE setShowGridLines)
  Q_PROPERTY(bool ShowCheckBoxes READ ShowCheckBoxes WRITE setShowCheckBoxes)
  // Not a saved setting: set by whoever makes the widget (the Designer
  // plugin), never stored in a form.
  Q_PROPERTY(bool designMode READ isDesignMode WRITE setDesignMode DESIGNABLE false STORED false)

 public:
  using ItemPtr = std::shared_ptr<NxFileListItem>;

  // The control's enumerations, for Designer's property editor.
  enum ViewStyle { FvIcon = 0, FvSmallIcon = 1, FvList = 2, FvReport = 3 };
  Q_ENUM(ViewStyle)
  enum BorderStyle { BorderNone = 0, BorderFixedSingle = 1 };
  Q_ENUM(BorderStyle)
  enum Appearance { Flat = 0, ThreeD = 1 };
  Q_ENUM(Appearance)
  // The file commands of the context menu, through the control's
  // FileCommand(); the keys Delete, Ctrl+C, Ctrl+X and Ctrl+V reach the same
  // commands through the control's own key handling.
  enum class FileAction { Copy, Cut, Paste, Delete, Rename, PasteShortcut };
  Q_ENUM(FileAction)

  // A control on a new QtLinuxPlatform (needs the QApplication first).
  explicit FileViewerWidget(QWidget* parent = nullptr);
  // A control on platform (not null). A LinuxPlatform gets its timers and
  // change notifier pumped by this widget's event loop.
  explicit FileViewerWidget(PlatformRef platform, QWidget* parent = nullptr);
  ~FileViewerWidget() override;

  FileViewer& viewer();
  std::shared_ptr<FileViewer> viewerRef() const;
  Platform& platform();
  ListViewModel* model() const;
  QTreeView* reportView() const;
  // The icon, small-icon and list styles' view.
  QListView* itemsView() const;
  QItemSelectionModel* selectionModel() const;
  // The view the current ViewStyle shows.
  QWidget* activeView() const;

  // Design mode: the control's UserMode False; the widget lists nothing and
  // only collects property values. Set before the widget is shown.
  void setDesignMode(bool design);
  bool isDesignMode() const;
  // Applies the collected saved settings (see above); once, and never in
  // design mode. Returns whether the settings are (now) applied. Reading
  // settings rebuilds the columns from the default header options, so a
  // host that sets its own header options does so after this.
  Q_INVOKABLE bool applySettings();
  bool settingsApplied() const;
  // The 32 property names (= bag keys) in reading order.
  static QStringList settingNames();
  // Reads / writes the saved settings through a host's bag (a QSettings one:
  // SettingsPropertyBag). Reading applies them at once (even before the
  // first show); not in design mode, where the values are only collected.
  void readSettings(PropertyBag& bag);
  void writeSettings(PropertyBag& bag);

  // The report view's layout by column key: widths, display order and sort
  // columns, versioned. restoreState rejects data of another version or
  // damaged data (false, nothing changed); columns it does not know are
  // skipped and columns it does not mention keep their layout.
  QByteArray saveState() const;
  bool restoreState(const QByteArray& state);

  // With the default platform (QtLinuxPlatform): the control's message
  // boxes and the file operations' questions and progress become modal
  // dialogs over this widget's window (see QtLinuxPlatform::UseDialogs).
  // False with another platform. Interactive hosts call it once.
  bool useDialogs();

  // Runs a file command on the selection (Paste into the current folder).
  // False when it did nothing or is not available (see the file-operation
  // hook in the implementation).
  bool runFileAction(FileAction action);
  bool fileActionAvailable(FileAction action) const;
  // The context menu the views show (Open, Cut, Copy, Paste, Paste Link,
  // Delete, Rename, Refresh), enabled for the current selection; the caller
  // owns it. contextMenuAboutToShow lets a host add its own entries.
  QMenu* createContextMenu(QWidget* parent);

  // Property accessors (the Q_PROPERTYs above).
  uint BackColor() const;
  void setBackColor(uint oleColour);
  uint ForeColor() const;
  void setForeColor(uint oleColour);
  QString CurrentFolder() const;
  void setCurrentFolder(const QString& folder);
  int ViewOptions() const;
  void setViewOptions(int mask);
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
  QString GoUpTopFolder() const;
  void setGoUpTopFolder(const QString& v);
  QString pattern() const;
  void setPattern(const QString& v);
  ViewStyle viewStyle() const;
  void setViewStyle(ViewStyle v);
  bool VirtualFileList() const;
  void setVirtualFileList(bool v);
  QString StartingFolder() const;
  void setStartingFolder(const QString& v);
  bool AllowDiveIntoFolders() const;
  void setAllowDiveIntoFolders(bool v);
  bool AllowDiveIntoArchives() const;
  void setAllowDiveIntoArchives(bool v);
  bool AllowitemRenaming() const;
  void setAllowitemRenaming(bool v);
  bool AllowMulticolumnsort() const;
  void setAllowMulticolumnsort(bool v);
  bool AllowFileExecution() const;
  void setAllowFileExecution(bool v);
  bool AllowMultipleSelection() const;
  void setAllowMultipleSelection(bool v);
  bool AutoUpdate() const;
  void setAutoUpdate(bool v);
  bool DefaultKeyHandling() const;
  void setDefaultKeyHandling(bool v);
  BorderStyle borderStyle() const;
  void setBorderStyle(BorderStyle v);
  Appearance appearance() const;
  void setAppearance(Appearance v);
  bool controlEnabled() const;
  void setControlEnabled(bool v);
  bool HideColumnHeaders() const;
  void setHideColumnHeaders(bool v);
  bool HideSelection() const;
  void setHideSelection(bool v);
  bool TrackSelection() const;
  void setTrackSelection(bool v);
  bool AllowMoveColumns() const;
  void setAllowMoveColumns(bool v);
  bool FullRowSelection() const;
  void setFullRowSelection(bool v);
  bool ShowGridLines() const;
  void setShowGridLines(bool v);
  bool ShowCheckBoxes() const;
  void setShowCheckBoxes(bool v);

  // One saved setting by its bag key (Invalid for an unknown key).
  QVariant setting(const char* key) const;
  void setSetting(const char* key, const QVariant& value);

 signals:
  // The control's 17 events, in its dispatch order. Mouse coordinates are
  // in twips of the view's viewport (1440 per inch), as the control's
  // events count them; Shift bits 1 Shift, 2 Ctrl, 4 Alt; buttons 1 left,
  // 2 right, 4 middle.
  //
  // A new location is on view (folder, archive, drives or virtual list).
  void afterNewView(const QString& path, bool canGoPrevious, bool canGoNext, bool insideArchive);
  void itemClicked(nxfv::qt::FileViewerWidget::ItemPtr item);
  void clicked();
  void doubleClicked();
  void currentFolderChanged(const QString& folder);
  // The user renamed a label: *newName may be changed, *cancel refuses it.
  void itemRenaming(nxfv::qt::FileViewerWidget::ItemPtr item, QString* newName, bool* cancel);
  void itemRightClicked(nxfv::qt::FileViewerWidget::ItemPtr item);
  // Before an item is opened (double-click, Enter): *cancel stops it.
  void itemDoubleClicked(nxfv::qt::FileViewerWidget::ItemPtr item, bool* cancel);
  // Fills the two user-data columns of a new row.
  void userDataRequested(nxfv::qt::FileViewerWidget::ItemPtr item, QString* userDataA, QString* userDataB);
  // The user (de)selects a row: *cancel keeps it as it was.
  void selectionChanging(nxfv::qt::FileViewerWidget::ItemPtr item, bool* selecting, bool* cancel);
  void columnClicked(const QString& key, const QString& caption);
  // Setting *keyCode to 0 swallows the key before the control's own handling.
  void keyDown(int* keyCode, int* shift);
  void keyUp(int* keyCode, int* shift);
  void keyPress(int* keyAscii);
  void mouseMoved(int button, int shift, float x, float y);
  void mousePressed(int button, int shift, float x, float y);
  void mouseReleased(int button, int shift, float x, float y);
  // Not one of the control's events: a property let changed the saved
  // setting key (the form is dirty).
  void settingChanged(const QString& key);
  // A context menu is about to show: the host may add or remove actions.
  void contextMenuAboutToShow(QMenu* menu);

 protected:
  void showEvent(QShowEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  friend class FileViewerWidgetPrivate;
  std::unique_ptr<FileViewerWidgetPrivate> d_;
};

}  // namespace nxfv::qt

Q_DECLARE_METATYPE(nxfv::qt::FileViewerWidget::ItemPtr)
