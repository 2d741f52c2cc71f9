// Applying the header options to the list view's columns.
#pragma once

#include <cstdint>
#include <string>

#include "nxfv/control/viewer_core.h"

namespace nxfv {

// The sub-item index of the column keyed key (column 0 is the row's own
// text); an unknown key raises error 35601.
int16_t SubItemIndexOf(const ViewerCore& core, const std::string& key);
// Builds the columns from the header options (or, with widthsOnly, only
// re-applies their widths) and publishes the locked-column list in the
// control's instance slot. Errors of the column collection are raised.
void ApplyColumns(ViewerCore& core, bool widthsOnly);

}  // namespace nxfv
