#include "nxfv/platform/linux/event_wait.h"

#include <poll.h>

#include <cerrno>

#include "nxfv/platform/linux/linux_platform.h"

namespace nxfv {

int WaitAndDispatch(LinuxPlatform& platform, int timeoutMs) {
  pollfd fds[2] = {{platform.PollableNotifier().PollFd(), POLLIN, 0}, {platform.PollableTimers().PollFd(), POLLIN, 0}};
  const int ready = poll(fds, 2, timeoutMs);
  if (ready < 0) return errno == EINTR ? 0 : -1;
  int dispatched = 0;
  if (fds[0].revents != 0) {
    platform.PollableNotifier().Dispatch();
    ++dispatched;
  }
  if (fds[1].revents != 0) {
    platform.PollableTimers().Dispatch();
    ++dispatched;
  }
  return dispatched;
}

}  // namespace nxfv
