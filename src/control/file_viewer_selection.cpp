// FileViewer's selection, check-mark, label-editing and saved-settings
// members: thin entries that guard the parts (selection.h, label_edit.h,
// saved_settings.h) so that nothing reaches the host.
#include "nxfv/control/file_viewer.h"
#include "nxfv/control/host_boundary.h"
#include "nxfv/control/label_edit.h"
#include "nxfv/control/saved_settings.h"
#include "nxfv/control/selection.h"
#include "nxfv/control/viewer_core.h"

namespace nxfv {
namespace {

// The lookups raise nothing: a failure (a host listener, memory) gives null.
template <class Body>
FileViewer::ItemRef Lookup(Body&& body) {
  FileViewer::ItemRef out;
  RunRecorded([&] { out = body(); });
  return out;
}

}  // namespace

int32_t FileViewer::SelectedCount() const { return selection::SelectedCount(*core_); }
int32_t FileViewer::CheckedCount() const { return selection::CheckedCount(*core_); }
FileViewer::ItemRef FileViewer::FirstSelectedItem() {
  return Lookup([&] { return selection::FirstSelected(*core_); });
}
FileViewer::ItemRef FileViewer::NextSelectedItem() {
  return Lookup([&] { return selection::NextSelected(*core_); });
}
FileViewer::ItemRef FileViewer::FirstCheckedItem() {
  return Lookup([&] { return selection::FirstChecked(*core_); });
}
FileViewer::ItemRef FileViewer::NextCheckedItem() {
  return Lookup([&] { return selection::NextChecked(*core_); });
}
FileViewer::ItemRef FileViewer::ListItem(int32_t Index) {
  return Lookup([&] { return selection::ListItem(*core_, Index); });
}
FileViewer::ItemRef FileViewer::GetItemFromName(const std::string& Myname) {
  return Lookup([&] { return selection::ItemFromName(*core_, Myname); });
}

void FileViewer::SelectAll() {
  RunRecorded([&] { selection::SelectAll(*core_); });
}
void FileViewer::UnSelectAll() {
  RunRecorded([&] { selection::UnSelectAll(*core_); });
}
void FileViewer::CheckAll() {
  RunRecorded([&] { selection::CheckAll(*core_); });
}
void FileViewer::UnCheckAll() {
  RunRecorded([&] { selection::UnCheckAll(*core_); });
}
void FileViewer::StartLabelEdit() {
  RunReported(core_->platform, ".StartLabelEdit", [&] { selection::StartLabelEdit(*core_); });
}

bool FileViewer::EndLabelEdit(int32_t rowIndex, const std::string& newText) {
  bool renamed = false;
  RunReported(core_->platform, ".EndLabelEdit", [&] {
    if (rowIndex < 0) {
      core_->listView.EndLabelEditRequest();
      return;
    }
    renamed = label_edit::EndLabelEdit(*core_, static_cast<size_t>(rowIndex), newText);
  });
  return renamed;
}

void FileViewer::CancelLabelEdit() { core_->listView.EndLabelEditRequest(); }

void FileViewer::ReadProperties(PropertyBag& bag) {
  RunReported(core_->platform, ".ReadProperties", [&] {
    if (core_->busy)
      return;  // a handler's reload during a listing is ignored, as the listing
               // would be
    saved_settings::Read(*this, bag);
  });
}

void FileViewer::WriteProperties(PropertyBag& bag) {
  RunReported(core_->platform, ".WriteProperties", [&] { saved_settings::Write(*this, bag); });
}

}  // namespace nxfv
