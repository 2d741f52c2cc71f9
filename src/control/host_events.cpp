#include "nxfv/control/host_events.h"

namespace nxfv {

void AnnounceNewView(ViewerCore& core, const std::string& location) {
  // Every announced view is a step of the history (the same place again is
  // not), so the host's back and forward buttons follow what it is told.
  core.history.Visit(core.showingDrives ? HistoryEntry{"", true} : HistoryEntry{location, false});
  if (!core.events) {
    core.lastAnnouncedFolder = location;
    return;
  }
  std::string path = location;
  bool canPrevious = core.history.CanGoPrevious(), canNext = core.history.CanGoNext();
  bool inside = core.insideArchive;
  core.events->AfterNewView(path, canPrevious, canNext, inside);
  if (location != core.lastAnnouncedFolder) {
    // Remembered before the host hears it: a handler that throws does not
    // hear the same change again at the next listing.
    core.lastAnnouncedFolder = location;
    std::string folder = location;
    core.events->OnCurrentFolderChanged(folder);
  }
}

void AskUserData(ViewerCore& core, const std::shared_ptr<NxFileListItem>& item, std::string& a, std::string& b) {
  if (!core.events) return;
  auto handed = item;  // the host may point its reference elsewhere
  core.itemEvents.Subscribe(item);
  core.events->SetUserdata(handed, a, b);
}

}  // namespace nxfv
