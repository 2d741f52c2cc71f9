// Navigation: moving the view from place to place, and the history of the
// places shown. The FileViewer members (GoUP, HistoryPrevious, ...) live in
// navigation.cpp; these are the path rules they share with the input code.
//
// Choices where nothing else decides:
//  - GoUP stops at GoUpTopFolder itself (compared with the platform's letter
//    case rule, one trailing separator ignored); from a folder outside that
//    tree it goes up as usual. In the drives view there is nothing above.
//  - A history entry whose location has vanished is reported, dropped (so
//    the next step back passes it), and the view stays where it is.
//  - SetToSpecialFolder(CSIDL_DRIVES) shows the drives view; every other
//    number without a path answers False and changes nothing.
//  - ResetToDesktop falls back to the desktop directory and then to the
//    platform's starting folder (a home folder) when there is no desktop.
//    ResetToStartingFolder takes the platform's starting folder when
//    StartingFolder is empty.
//  - SelectCurrentFolder opens the picker at the current folder.
//  - CreateNewFolder: the default name is "New Folder", then "New Folder (2)",
//    "New Folder (3)", ...; a name that exists is error 58 "File already
//    exists", a name with a separator (or "." / "..") error 52, a missing
//    parent error 76, a refused creation error 75 (all reported as
//    ".CreateNewFolder"). A folder made in the current folder is shown at
//    once by a refresh in place, and becomes the only selected row.
#pragma once

#include <string>

namespace nxfv {

class Platform;
struct ViewerCore;

// Whether a and b name the same place (letter case by the platform).
bool SamePlace(const Platform& platform, const std::string& a, const std::string& b);
// path without one trailing separator, except a root ("C:\", "/").
std::string WithoutTrailingSeparator(Platform& platform, const std::string& path);
// The folder holding path; "" when path is a root (or has no separator).
// "C:\w\x" => "C:\w", "C:\w" => "C:\", "/home" => "/", "C:\" => "".
std::string ParentLocation(Platform& platform, const std::string& path);
// folder + separator (unless it ends with one) + name.
std::string JoinLocation(Platform& platform, const std::string& folder, const std::string& name);
// Shows the drives and special-folder list.
void ShowDrives(ViewerCore& core);

}  // namespace nxfv
