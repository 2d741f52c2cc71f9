// FileViewer's internal operations, for the component's own code and its
// tests. Hosts use the public members of FileViewer.
#pragma once

#include <cstdint>
#include <string>

#include "nxfv/control/file_viewer.h"
#include "nxfv/control/type_cache.h"
#include "nxfv/control/viewer_core.h"

namespace nxfv {

class FileViewer::Internal {
 public:
  static ViewerCore& Core(FileViewer& v) { return *v.core_; }
  static const ViewerCore& Core(const FileViewer& v) { return *v.core_; }
  // The sub-item index of the column keyed key; error 35601 when unknown.
  static int16_t SubItemIndexOf(const FileViewer& v, const std::string& key);
  static void BuildColumns(FileViewer& v, bool widthsOnly);
  static void CompleteHeaderOptions(FileViewer& v);
  // The listing itself, unguarded: failures raise to the caller.
  static void LoadFiles(FileViewer& v, const std::string& path, bool keepItems, bool resetSort, bool selectFirst);
  static void SortView(FileViewer& v, bool resetSort);
  static bool ListingBusy(const FileViewer& v) { return v.core_->busy; }
  static const TypeCache& FileTypes(const FileViewer& v);
};

}  // namespace nxfv
