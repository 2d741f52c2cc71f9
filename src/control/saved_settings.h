// The control's saved settings: 32 values under fixed bag keys.
//
// The keys, their order and their stored types are the saved format. Three
// keys differ from their property's name and stay so: TextColor is saved
// as "ForeColor", FilePattern as "pattern", AllowMultiColumnSort as
// "AllowMulticolumnsort". Not saved: the header options, the history, the
// selection and the check marks.
//
// Reading, in order:
//  1. all 32 values in key order. Colours, border style, appearance, hidden
//     headers and hide-selection go straight to the list view and Enabled
//     to the control; after "DefaultKeyHandling" the list view takes the
//     multiple selection from its stored field; everything else is stored
//     and takes effect below or when next used. A value the bag cannot give
//     as its type keeps its default; one error box (".ReadProperties",
//     error 13) tells of the first such value after all are read.
//  2. ShowCheckBoxes, ShowGridLines and FullRowSelection through their
//     lets, AllowMoveColumns published to the instance record, and
//     TrackSelection through its let only when it is True (a stored False
//     leaves hover selection as it was).
//  3. Currentfolder published to the instance record.
//  4. The columns: captions loaded, header options at their defaults, the
//     widths applied for the stored ViewOptions.
//  5. Unless VirtualFileList, the stored current folder (or, without one,
//     the starting folder) is listed.
// Writing: the same keys in the same order, except that "Appearance" comes
// before "BorderStyle".
#pragma once

#include <string>
#include <vector>

#include "nxfv/control/property_bag.h"

namespace nxfv {

class FileViewer;
struct ViewerCore;

namespace saved_settings {

// The 32 bag keys in reading order.
const std::vector<std::string>& Keys();
// The default stored for key when the bag has no value (Empty when the key
// is unknown). StartingFolder's default is the platform's.
Variant DefaultFor(const ViewerCore& core, const std::string& key);
// Failures raise to the caller.
void Read(FileViewer& viewer, PropertyBag& bag);
void Write(FileViewer& viewer, PropertyBag& bag);

}  // namespace saved_settings
}  // namespace nxfv
