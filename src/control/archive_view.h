// Showing an archive's entries as one flat list of rows.
#pragma once

#include <string>

#include "nxfv/control/viewer_core.h"

namespace nxfv {

// Lists the ZIP or CAB file at archivePath: it becomes the current
// location, the columns are built for an archive, the reader's entries
// become rows, then the view is announced and sorted. Ignored while another
// listing runs; failures raise to the caller (reported as ".LoadArchive").
void LoadArchive(ViewerCore& core, const std::string& archivePath);

}  // namespace nxfv
