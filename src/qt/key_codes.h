// Qt's key events in the control's terms: the virtual key codes and shift
// bits its key handling (and the host's KeyDown/KeyUp handlers) expect, and
// the character code of KeyPress.
//
//   Qt::Key_Backspace           -> 8      Qt::Key_F5             -> 116
//   Qt::Key_Return, Key_Enter   -> 13     Qt::Key_A .. Key_Z     -> 65 .. 90
//   Qt::Key_Left / Key_Right    -> 37/39  Qt::Key_Delete         -> 46
//   Shift, Ctrl, Alt            -> shift bits 1, 2, 4 (Meta is not passed on)
// A key the control has no code for gives 0, which its handlers ignore.
#pragma once

#include <cstdint>

#include <Qt>

class QKeyEvent;

namespace nxfv::qt {

int16_t VirtualKeyCode(int qtKey);
int16_t ShiftBits(Qt::KeyboardModifiers modifiers);
// The character a key press types, or 0 when it types none (arrows, F keys)
// or one beyond the 16-bit range KeyPress carries.
int16_t KeyAscii(const QKeyEvent& event);

}  // namespace nxfv::qt
