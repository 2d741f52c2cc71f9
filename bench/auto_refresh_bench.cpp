// Auto-refresh on a real folder of the Linux platform (inotify, timerfd),
// driven the way a host loop drives it: poll the two descriptors, dispatch.
//
// In a folder of N files (default 100,000; argument 1 changes it) it
// measures:
//   full listing        setCurrentfolder on the folder (median of 3, ms)
//   refresh in place    RefreshView(false) with nothing changed (median of 3,
//                       ms) and its ratio to the full listing (target <= 0.3)
//   one new file        from creating a file to its row being on view, with
//                       the host loop idle before (median and worst of 9, ms;
//                       target <= 100 from the change notification)
//   burst               another thread creates 10,000 files as fast as it
//                       can; refreshes made until the view holds them all
//                       (target <= 5), and the burst's own duration
// The folder is made under $TMPDIR (or /tmp) and removed at the end.
#include <fcntl.h>
#include <ftw.h>
#include <stdlib.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "nxfv/control/file_viewer.h"
#include "nxfv/platform/linux/event_wait.h"
#include "nxfv/platform/linux/linux_platform.h"

namespace {

using Clock = std::chrono::steady_clock;

struct Counter : nxfv::FileViewerEvents {
  int views = 0;
  void AfterNewView(std::string&, bool&, bool&, bool&) override { ++views; }
};

double Ms(Clock::duration d) { return std::chrono::duration<double, std::milli>(d).count(); }

bool Touch(const std::string& path) {
  const int fd = open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
  return fd >= 0 && close(fd) == 0;
}

int RemoveEntry(const char* path, const struct stat*, int, struct FTW*) { return remove(path); }

template <class F>
double Median3(F f) {
  std::vector<double> t;
  for (int i = 0; i < 3; ++i) {
    const auto s = Clock::now();
    f();
    t.push_back(Ms(Clock::now() - s));
  }
  std::sort(t.begin(), t.end());
  return t[1];
}

}  // namespace

int main(int argc, char** argv) {
  const int files = argc > 1 ? std::atoi(argv[1]) : 100000;
  const char* tmp = std::getenv("TMPDIR");
  std::string dir = std::string(tmp && *tmp ? tmp : "/tmp") + "/nxfv-refresh-bench-XXXXXX";
  if (mkdtemp(dir.data()) == nullptr) return 1;
  for (int i = 0; i < files; ++i)
    if (!Touch(dir + "/file" + std::to_string(i) + ".txt")) return 1;

  auto platform = std::make_shared<nxfv::LinuxPlatform>();
  auto viewer = nxfv::FileViewer::Create(platform);
  Counter counter;
  viewer->SetEventListener(&counter);
  const double full = Median3([&] { viewer->setCurrentfolder(dir); });
  const double inPlace = Median3([&] { viewer->RefreshView(false); });
  std::printf("folder of %d files\n", files);
  std::printf("full listing        %9.1f ms\n", full);
  std::printf("refresh in place    %9.1f ms  (%.2f x the full listing; target <= 0.3)\n", inPlace, inPlace / full);

  std::vector<double> latencies;
  for (int i = 0; i < 9; ++i) {
    // Let the loop go idle, so the change meets the timers wherever they are.
    const auto idle = Clock::now() + std::chrono::milliseconds(37 * (i + 1) % 90);
    while (Clock::now() < idle) nxfv::WaitAndDispatch(*platform, 5);
    const std::string name = "new" + std::to_string(i) + ".txt";
    const auto start = Clock::now();
    Touch(dir + "/" + name);
    while (!viewer->ListView1().FindRow(name)) nxfv::WaitAndDispatch(*platform, 100);
    latencies.push_back(Ms(Clock::now() - start));
  }
  std::sort(latencies.begin(), latencies.end());
  std::printf("one new file shown  %9.1f ms median, %.1f ms worst (target <= 100)\n", latencies[4], latencies.back());

  const int before = counter.views;
  const size_t expected = viewer->ListView1().RowCount() + 10000;
  Clock::duration burstTime{};
  std::thread burst([&] {
    const auto s = Clock::now();
    for (int i = 0; i < 10000; ++i) Touch(dir + "/burst" + std::to_string(i));
    burstTime = Clock::now() - s;
  });
  while (viewer->ListView1().RowCount() < expected) nxfv::WaitAndDispatch(*platform, 100);
  burst.join();
  const auto settle = Clock::now() + std::chrono::milliseconds(300);
  while (Clock::now() < settle) nxfv::WaitAndDispatch(*platform, 20);
  std::printf("burst of 10,000     %9d refreshes (target <= 5), the burst took %.1f ms\n", counter.views - before,
              Ms(burstTime));

  viewer->SetEventListener(nullptr);
  viewer.reset();
  nftw(dir.c_str(), RemoveEntry, 16, FTW_DEPTH | FTW_PHYS);
  return 0;
}
