#include "nxfv/qt/key_codes.h"

#include <QKeyEvent>

namespace nxfv::qt {

int16_t VirtualKeyCode(int qtKey) {
  // Letters and digits share their codes with the ASCII upper-case
  // characters, in Qt as in the control's numbering.
  if ((qtKey >= Qt::Key_A && qtKey <= Qt::Key_Z) || (qtKey >= Qt::Key_0 && qtKey <= Qt::Key_9))
    return static_cast<int16_t>(qtKey);
  if (qtKey >= Qt::Key_F1 && qtKey <= Qt::Key_F24) return static_cast<int16_t>(112 + (qtKey - Qt::Key_F1));
  switch (qtKey) {
    case Qt::Key_Backspace: return 8;
    case Qt::Key_Tab:
    case Qt::Key_Backtab: return 9;
    case Qt::Key_Return:
    case Qt::Key_Enter: return 13;
    case Qt::Key_Shift: return 16;
    case Qt::Key_Control: return 17;
    case Qt::Key_Alt: return 18;
    case Qt::Key_Pause: return 19;
    case Qt::Key_CapsLock: return 20;
    case Qt::Key_Escape: return 27;
    case Qt::Key_Space: return 32;
    case Qt::Key_PageUp: return 33;
    case Qt::Key_PageDown: return 34;
    case Qt::Key_End: return 35;
    case Qt::Key_Home: return 36;
    case Qt::Key_Left: return 37;
    case Qt::Key_Up: return 38;
    case Qt::Key_Right: return 39;
    case Qt::Key_Down: return 40;
    case Qt::Key_Insert: return 45;
    case Qt::Key_Delete: return 46;
    case Qt::Key_Menu: return 93;
    default: return 0;
  }
}

int16_t ShiftBits(Qt::KeyboardModifiers modifiers) {
  int16_t bits = 0;
  if (modifiers & Qt::ShiftModifier) bits |= 1;
  if (modifiers & Qt::ControlModifier) bits |= 2;
  if (modifiers & Qt::AltModifier) bits |= 4;
  return bits;
}

int16_t KeyAscii(const QKeyEvent& event) {
  const QString text = event.text();
  if (!text.isEmpty()) {
    const char32_t c = text.toUcs4().value(0);
    return c > 0 && c < 0x8000 ? static_cast<int16_t>(c) : 0;
  }
  // Some platforms send these without text; they still type a control code.
  switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter: return 13;
    case Qt::Key_Backspace: return 8;
    case Qt::Key_Escape: return 27;
    case Qt::Key_Tab: return 9;
    default: return 0;
  }
}

}  // namespace nxfv::qt
