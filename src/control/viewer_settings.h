// The control's plain settings: filters and behaviour switches a host sets
// and the saved settings carry. Defaults are a new control's. The list
// view's look (colours, border, grid lines, check boxes, ...) is list view
// state, not kept here.
#pragma once

#include <cstdint>
#include <string>

#include "nxfv/model/header_data.h"

namespace nxfv {

struct ViewerSettings {
  // What a folder listing shows.
  bool showFolders = true;
  bool showFiles = true;
  bool showHidden = true;
  bool showSystem = true;
  bool showGoUp = true;
  std::string filePattern = "*.*";
  std::string goUpTopFolder;  // going up stops here
  std::string startingFolder;
  int32_t viewOptions = SetNormalView;

  // What the user may do.
  bool allowDiveIntoFolders = true;
  bool allowDiveIntoArchives = true;
  bool allowItemRenaming = true;
  bool allowMultiColumnSort = true;
  bool allowFileExecution = true;
  bool allowMultipleSelection = true;
  bool defaultKeyHandling = true;
  bool enabled = true;

  // How the view is filled and kept current.
  bool virtualFileList = false;  // the host fills the view; nothing is listed
  bool autoUpdate = true;        // refresh when the current folder changes on disk
};

}  // namespace nxfv
