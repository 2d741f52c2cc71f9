// The user's input, fed by a front end through FileViewer's User* members
// (mouse, clicks, keys, selection changes; header clicks go through
// ClickColumnHeader). Each raises the matching events to the host, then
// acts.
//
// Event order for one action (what a front end feeds, in the order it
// happens):
//   press:         MouseDown; a selection change on the row (OnSelectionChange)
//   release:       MouseUp
//   click:         OnItemClick (on a row), then Click
//   double-click:  OnItemDblClick (on a row; Cancel stops the activation),
//                  then DblClick, then the activation (activation.h)
//   right-click:   OnItemRightClick (on a row; nothing on empty space)
//   keys:          KeyDown, then the default handling; KeyPress; KeyUp
// Items handed to the host become the item the control listens to.
//
// Choices where nothing else decides:
//  - A disabled control (Enabled False) ignores every input: no event, no
//    action. ViewStyle changes only how the rows are drawn, so it changes
//    nothing here; the front end maps the pointer to a row in every style.
//  - A KeyDown handler that sets KeyCode to 0 swallows the key; the default
//    handling (DefaultKeyHandling) sees the code and shift the host leaves.
//  - Enter raises OnItemDblClick too (no DblClick: no mouse was involved).
//  - A selection change to the state the row already has raises nothing.
//    With multiple selection off, selecting a row deselects the others
//    (without events for them: the front end reports the user's row only).
//  - Failures (a handler that throws) are reported under the event's label
//    (".MouseDown", ".DblClick", ...), and the action does not happen.
#pragma once

#include <memory>
#include <string>

#include "nxfv/model/file_list_item.h"

namespace nxfv {

struct ViewerCore;

// Whether the control takes input now.
bool AcceptsInput(const ViewerCore& core);
// The item of the row keyed rowKey; null for empty space or a row without
// one.
std::shared_ptr<NxFileListItem> RowItem(ViewerCore& core, const std::string& rowKey);

}  // namespace nxfv
