// Listing a folder of the platform into items and rows.
#pragma once

#include <string>

#include "nxfv/control/viewer_core.h"

namespace nxfv {

// Lists the current folder: builds the columns, enumerates, filters, makes
// one item and row per shown entry, announces the new view and sorts.
// keepItems refreshes in place: kept rows stay untouched, new entries are
// added and vanished ones go. Ignored while another listing runs; failures
// raise to the caller (the façade reports them as ".LoadFiles").
void LoadFiles(ViewerCore& core, const std::string& path, bool keepItems, bool resetSort, bool selectFirst);

}  // namespace nxfv
