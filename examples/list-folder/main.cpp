// Lists the folder named on the command line with the Linux platform and a
// user-data column the host fills, then prints every row.
#include <clocale>
#include <cstdio>
#include <memory>
#include <string>

#include <nxfv/control/file_viewer.h>
#include <nxfv/platform/linux/linux_platform.h>

struct Host : nxfv::FileViewerEvents {
  void AfterNewView(std::string& path, bool&, bool&, bool&) override { std::printf("== %s\n", path.c_str()); }
  void SetUserdata(ItemRef& item, std::string& a, std::string&) override {
    a = item->FileName().size() > 12 ? "long name" : "short name";
  }
};

int main(int argc, char** argv) {
  if (argc != 2) return std::fprintf(stderr, "usage: list-folder FOLDER\n"), 2;
  std::setlocale(LC_ALL, "");  // dates and numbers in the user's locale
  auto platform = std::make_shared<nxfv::LinuxPlatform>();
  platform->MessageBoxHandler().SetPrefix("list-folder");  // "list-folder: [TITLE] TEXT"
  auto viewer = nxfv::FileViewer::Create(platform);
  Host host;
  viewer->SetEventListener(&host);
  viewer->setViewOptions(nxfv::SetNormalView | nxfv::show_UserdataA);
  viewer->setCurrentfolder(argv[1]);
  if (viewer->Currentfolder().empty()) return 1;  // the error box said why
  const nxfv::ListView& list = viewer->ListView1();
  for (size_t r = 0; r < list.RowCount(); ++r) {
    const nxfv::ListRow& row = list.Row(r);
    std::string line(row.Text());  // column 0, the name
    for (int32_t c = 1; c < list.ColumnCount(); ++c)
      if (list.Column(c).width > 0) line.append(" | ").append(row.SubItem(c));  // hidden columns have width 0
    std::puts(line.c_str());
  }
}
