// The control's plain settings: filters and behaviour switches a host sets
// and the saved settings carry. Defaults are a new control's.
#pragma once

#include <cstdint>
#include <string>

#include "nxfv/model/header_data.h"

namespace nxfv {

struct ViewerSettings {
  bool showFolders = true;
  bool showFiles = true;
  bool showHidden = true;
  bool showSystem = true;
  bool showGoUp = true;
  std::string filePattern = "*.*";
  std::string goUpTopFolder;
  std::string startingFolder;
  bool allowDiveIntoArchives = true;
  bool allowMultiColumnSort = true;
  int32_t viewOptions = SetNormalView;
};

}  // namespace nxfv
