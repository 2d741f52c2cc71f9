// What a control holds for its whole life beyond its listings: the private
// image list with the control's own two icons, set up at creation and
// destroyed at termination.
//
// Choices where nothing else decides:
//  - The image list is a description for front ends (they own the pixels):
//    16 x 16, 8-bit colour with a mask, room for two icons, not growing.
//  - Its two icons, by index: 0 marks the go-up row (".."), 1 marks a
//    virtual folder a host adds to a virtual list. Front ends draw them
//    from their own theme under these names.
//  - Termination stops the listener subscription and forgets the items;
//    the instance slot is never given back (a later control still takes the
//    next counter value).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace nxfv {

struct ViewerCore;

struct PrivateImageList {
  static constexpr int32_t kSize = 16;
  static constexpr int32_t kFlags = 9;  // 8-bit colour | mask
  static constexpr int32_t kInitial = 2;
  static constexpr int32_t kGrow = 0;
  static constexpr int32_t kGoUpIcon = 0;
  static constexpr int32_t kVirtualFolderIcon = 1;

  bool created = false;
  std::vector<std::string> icons;  // icon names, by index
};

// Initialisation, in order: internal flags cleared and the list view's
// look set up, the private image list created and filled. (The instance
// slot is taken when the state is made.)
void InitializeControl(ViewerCore& core);
// Termination: the image list destroyed, then the internal shutdown.
void TerminateControl(ViewerCore& core);

}  // namespace nxfv
