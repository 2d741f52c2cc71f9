// The browser's unattended runs: --screenshot (the window drawn offscreen
// into a PNG) and --bench (listing and scrolling a big folder, timed up to
// the frames a user would see).
#pragma once

#include "command_line.h"

namespace nxfv::browser {

class BrowserWindow;

// Processes events until the window has nothing left to do (the listing,
// the layout and the paints it caused).
void Settle(BrowserWindow& window);

// Shows options.path in a window of options.size, writes the PNG and
// returns the exit status (1 when the path could not be shown or the file
// not written; the window is still drawn, error and all).
int TakeScreenshot(const BrowserOptions& options);

// Prints one line of figures for options.benchFolder and returns the exit
// status.
int RunBench(const BrowserOptions& options);

}  // namespace nxfv::browser
