// FileViewer's virtual-list members: the façade's share of virtual_list.
#include "nxfv/control/file_viewer.h"
#include "nxfv/control/file_viewer_internal.h"
#include "nxfv/control/host_boundary.h"
#include "nxfv/control/virtual_list.h"

namespace nxfv {

Variant FileViewer::AddVirtualFilesBegin() {
  RunReported(core_->platform, ".AddVirtualFilesBegin", [&] { BeginVirtualList(*core_); });
  return {};
}

Variant FileViewer::VirtualAddItem(const VirtualFile& file) {
  RunReported(core_->platform, ".VirtualAddItem", [&] { AddVirtualFile(*core_, file); });
  return {};
}

Variant FileViewer::AddVirtualFilesEnd() {
  RunReported(core_->platform, ".AddVirtualFilesEnd", [&] { EndVirtualList(*core_); });
  return {};
}

}  // namespace nxfv
