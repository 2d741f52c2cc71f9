// Opening what the user activates (double-click or Enter on a row), and
// the keys a file browser answers by itself (DefaultKeyHandling).
//
// Activation by the row's item:
//  - the go-up row goes up (GoUP);
//  - a drive lists its Path;
//  - a folder (or a host's virtual folder) is listed when
//    AllowDiveIntoFolders is True;
//  - a ".zip" or ".cab" file opens as the archive view when
//    AllowDiveIntoArchives is True;
//  - any other file is opened with the system's handler (the platform's
//    Launcher, verb "open") when AllowFileExecution is True; a handler that
//    cannot be started is reported as ".ItemActivate", error 75.
// Entries inside an archive are not opened: they exist only in the archive
// and nothing here extracts them. Activation does nothing while a listing
// runs.
//
// Keys (KeyCode as the host runtime numbers them; Shift bits 1 Shift,
// 2 Ctrl, 4 Alt):
//   Enter        activates the first selected row
//   Backspace    GoUP
//   Alt+Left     HistoryPrevious        Alt+Right   HistoryNext
//   F5           RefreshView(True): a full reload, so that changed sizes
//                and dates of rows already on view show too
//   F2           label editing of the first selected row
//   Ctrl+A       selects every row (not when multiple selection is off)
// Delete, Ctrl+C, Ctrl+X and Ctrl+V are left to file operations, which the
// control does not offer through keys.
#pragma once

#include <cstdint>
#include <string>

namespace nxfv {

class FileViewer;

inline constexpr int16_t kKeyBack = 8;
inline constexpr int16_t kKeyReturn = 13;
inline constexpr int16_t kKeyLeft = 37;
inline constexpr int16_t kKeyRight = 39;
inline constexpr int16_t kKeyA = 65;
inline constexpr int16_t kKeyF2 = 113;
inline constexpr int16_t kKeyF5 = 116;
inline constexpr int16_t kShiftMask = 1;
inline constexpr int16_t kCtrlMask = 2;
inline constexpr int16_t kAltMask = 4;

// Raises OnItemDblClick for the item of the row keyed rowKey (none for a
// row without an item); false when the host cancels.
bool HostLetsActivate(FileViewer& viewer, const std::string& rowKey);

// Acts on a key the host let through; true when it was one of the keys
// above.
bool HandleDefaultKey(FileViewer& viewer, int16_t keyCode, int16_t shift);

}  // namespace nxfv
