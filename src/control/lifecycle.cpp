#include "nxfv/control/lifecycle.h"

#include "nxfv/control/viewer_core.h"

namespace nxfv {
namespace {

void CreateImageList(PrivateImageList& images) {
  images.icons.clear();
  images.icons.reserve(PrivateImageList::kInitial);
  images.icons.push_back("go-up");
  images.icons.push_back("folder-virtual");
  images.created = true;
}

// The internal shutdown: nothing may call back into the host any more.
void Shutdown(ViewerCore& core, bool final) {
  core.itemEvents.Unsubscribe();
  if (final) core.events = nullptr;
  core.busy = false;
}

}  // namespace

void InitializeControl(ViewerCore& core) {
  core.busy = false;
  core.insideArchive = false;
  core.showingDrives = false;
  ListViewLook look = core.listView.Look();
  look.fullRowSelection = true;
  look.multiSelect = core.settings.allowMultipleSelection;
  look.enabled = core.settings.enabled;
  core.listView.SetLook(look);
  CreateImageList(core.images);
  core.history.SetIgnoreCase(core.platform.PathsIgnoreCase());
}

void TerminateControl(ViewerCore& core) {
  if (core.images.created) {
    core.images.icons.clear();
    core.images.created = false;
  }
  Shutdown(core, true);
}

}  // namespace nxfv
