// Raising the listing's events to the host. A handler's failure travels on
// to the procedure that raised the event, which reports it.
#pragma once

#include <memory>
#include <string>

#include "nxfv/control/viewer_core.h"

namespace nxfv {

// AfterNewView for location and, when it differs from the location last
// announced, OnCurrentFolderChanged.
void AnnounceNewView(ViewerCore& core, const std::string& location);

// Asks the host for item's two user-data texts (both "" without a
// listener). The item becomes the one whose events the control handles.
void AskUserData(ViewerCore& core, const std::shared_ptr<NxFileListItem>& item, std::string& a, std::string& b);

}  // namespace nxfv
