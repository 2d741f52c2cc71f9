// BrowserWindow: the demo browser's main window around one
// FileViewerWidget. It only assembles parts that each do one job:
//   NavigationBar    back, forward, up and the address bar
//   PlacesPanel      drives, the user's folders and volumes at the side
//   FileActions      copy, cut, paste, delete, rename, new folder, refresh
//   ColumnMenu       the report view's columns
//   StatusSummary    items, selected, checked, inside an archive
//   MessagePresenter the control's message boxes
// plus the view-style switcher, the pattern box and the hidden-items toggle,
// which are one setting each. Everything the window does goes through the
// widget and its control, like any other host's code.
#pragma once

#include <QMainWindow>
#include <QSet>
#include <QString>
#include <memory>
#include <optional>

#include "nxfv/qt/file_viewer_widget.h"

class QActionGroup;
class QLineEdit;
class QSettings;

namespace nxfv::qt {
class QtLinuxPlatform;
}

namespace nxfv::browser {

class ColumnMenu;
class FileActions;
class MessagePresenter;
class NavigationBar;
class PlacesPanel;
class StatusSummary;

class BrowserWindow : public QMainWindow {
  Q_OBJECT

 public:
  // settings: where the window's state is kept between runs (it must
  // outlive the window), or null for a window that neither reads nor saves
  // any (screenshots, benchmarks, tests). interactive: the control's
  // message boxes are dialogs; otherwise they only reach the status bar.
  BrowserWindow(QSettings* settings, bool interactive, QWidget* parent = nullptr);
  ~BrowserWindow() override;

  // Lists path (empty: the saved folder, else home) in view. Call once,
  // before or after show().
  void start(const QString& path, std::optional<qt::FileViewerWidget::ViewStyle> view = std::nullopt);
  // Writes the window's state to its settings (also done on close).
  void saveSettings();

  qt::FileViewerWidget& viewer() const { return *viewer_; }
  NavigationBar& navigation() const { return *navigation_; }
  PlacesPanel& places() const { return *places_; }
  FileActions& fileActions() const { return *fileActions_; }
  ColumnMenu& columnMenu() const { return *columnMenu_; }
  StatusSummary& summary() const { return *summary_; }
  MessagePresenter& messages() const { return *messages_; }
  QLineEdit* patternBox() const { return pattern_; }
  QAction* showHiddenAction() const { return showHidden_; }
  // The view-style actions; each one's data is its ViewStyle.
  QActionGroup* viewStyles() const { return viewStyles_; }

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void BuildMenus();
  void BuildToolBar();
  void SyncControls();
  void ApplyPattern();
  void FitNewColumns();

  std::shared_ptr<qt::QtLinuxPlatform> platform_;
  QSettings* settings_;
  qt::FileViewerWidget* viewer_;
  NavigationBar* navigation_;
  PlacesPanel* places_;
  FileActions* fileActions_;
  ColumnMenu* columnMenu_;
  StatusSummary* summary_;
  MessagePresenter* messages_;
  QLineEdit* pattern_ = nullptr;
  QAction* showHidden_ = nullptr;
  QActionGroup* viewStyles_ = nullptr;
  QSet<QString> fitted_;  // column keys FitNewColumns has seen
};

}  // namespace nxfv::browser
