// One turn of a host loop on the Linux platform: waits until the platform's
// timers or its change notifier have something, then dispatches it (the
// notifier first, so that a timer due at the same moment sees the change).
// A loop that has nothing else to wait for calls this repeatedly.
#pragma once

namespace nxfv {

class LinuxPlatform;

// Waits at most timeoutMs (-1: without limit) and dispatches what became
// ready. Returns how many of the two sources were dispatched (0 on a
// timeout or an interrupting signal), -1 when waiting failed.
int WaitAndDispatch(LinuxPlatform& platform, int timeoutMs);

}  // namespace nxfv
