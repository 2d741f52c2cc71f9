// A FileViewer on a fresh simulated platform, with a listener that records
// the events it sees.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "nxfv/control/file_viewer.h"
#include "nxfv/control/file_viewer_internal.h"
#include "nxfv/platform/sim/simulated_platform.h"

namespace nxfv::testing {

class RecordingListener : public FileViewerEvents {
 public:
  std::vector<std::string> log;
  std::function<void(ItemRef&, std::string&, std::string&)> onSetUserdata;
  std::function<void()> onAfterNewView;
  std::function<void()> onColumnClick;
  void AfterNewView(std::string& Path, bool&, bool&, bool& InsideArchive) override {
    log.push_back("AfterNewView " + Path + (InsideArchive ? " archive" : ""));
    if (onAfterNewView) onAfterNewView();
  }
  void OnCurrentFolderChanged(std::string& folder) override { log.push_back("OnCurrentFolderChanged " + folder); }
  void SetUserdata(ItemRef& item, std::string& a, std::string& b) override {
    log.push_back("SetUserdata " + std::string(item->Key()));
    if (onSetUserdata) onSetUserdata(item, a, b);
  }
  void ColumnClick(const ListColumn& header) override {
    log.push_back("ColumnClick " + header.key);
    if (onColumnClick) onColumnClick();
  }
};

class ViewerTest : public ::testing::Test {
 protected:
  void SetUp() override {
    platform = std::make_shared<SimulatedPlatform>();
    viewer = FileViewer::Create(platform);
    viewer->SetEventListener(&listener);
  }
  SimFileSystem& files() { return platform->SimFiles(); }
  // Row texts in view order.
  std::vector<std::string> Texts() const {
    std::vector<std::string> out;
    const ListView& lv = viewer->ListView1();
    for (size_t i = 0; i < lv.RowCount(); ++i) out.emplace_back(lv.Row(i).Text());
    return out;
  }
  std::vector<std::string> Keys() const {
    std::vector<std::string> out;
    const ListView& lv = viewer->ListView1();
    for (size_t i = 0; i < lv.RowCount(); ++i) out.emplace_back(lv.Row(i).Key());
    return out;
  }
  std::string Cell(const std::string& rowKey, const char* column) const {
    const ListView& lv = viewer->ListView1();
    const ListRow* row = lv.FindRow(rowKey);
    if (!row) return "<no row>";
    return std::string(row->SubItem(lv.ColumnIndex(column)));
  }
  int32_t Width(const char* column) const {
    const ListView& lv = viewer->ListView1();
    return lv.Column(lv.ColumnIndex(column)).width;
  }

  std::shared_ptr<SimulatedPlatform> platform;
  std::shared_ptr<FileViewer> viewer;
  RecordingListener listener;
};

}  // namespace nxfv::testing
