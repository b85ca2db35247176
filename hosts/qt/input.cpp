#include "hosts/qt/input.h"

#include <array>
#include <utility>

namespace nurvex7::qt {

using tamsel7::MouseButton;

namespace {

constexpr std::array<std::pair<int, int>, 21> NAMED_KEYS{{
    {Qt::Key_Backspace, 0x08},
    {Qt::Key_Tab, brevolt7::KEY_TAB},
    {Qt::Key_Backtab, brevolt7::KEY_TAB},
    {Qt::Key_Return, brevolt7::KEY_ENTER},
    {Qt::Key_Enter, brevolt7::KEY_ENTER},
    {Qt::Key_Escape, brevolt7::KEY_ESCAPE},
    {Qt::Key_Space, brevolt7::KEY_SPACE},
    {Qt::Key_PageUp, brevolt7::KEY_PAGE_UP},
    {Qt::Key_PageDown, brevolt7::KEY_PAGE_DOWN},
    {Qt::Key_End, brevolt7::KEY_END},
    {Qt::Key_Home, brevolt7::KEY_HOME},
    {Qt::Key_Left, brevolt7::KEY_LEFT},
    {Qt::Key_Up, brevolt7::KEY_UP},
    {Qt::Key_Right, brevolt7::KEY_RIGHT},
    {Qt::Key_Down, brevolt7::KEY_DOWN},
    {Qt::Key_Insert, brevolt7::KEY_INSERT},
    {Qt::Key_Delete, brevolt7::KEY_DELETE},
    {Qt::Key_Menu, brevolt7::KEY_MENU},
    {Qt::Key_Shift, 0x10},
    {Qt::Key_Control, 0x11},
    {Qt::Key_Alt, 0x12},
}};

constexpr int FIRST_FUNCTION_KEY = 0x70;

} // namespace

int FlagsOf(Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers) {
    int flags = 0;
    flags |= buttons.testFlag(Qt::LeftButton) ? brevolt7::FLAG_LEFT_BUTTON : 0;
    flags |= buttons.testFlag(Qt::RightButton) ? brevolt7::FLAG_RIGHT_BUTTON : 0;
    flags |= buttons.testFlag(Qt::MiddleButton) ? brevolt7::FLAG_MIDDLE_BUTTON : 0;
    flags |= modifiers.testFlag(Qt::ShiftModifier) ? brevolt7::FLAG_SHIFT : 0;
    flags |= modifiers.testFlag(Qt::ControlModifier) ? brevolt7::FLAG_CONTROL : 0;
    flags |= modifiers.testFlag(Qt::AltModifier) ? brevolt7::FLAG_ALT : 0;
    return flags;
}

MouseButton ButtonOf(Qt::MouseButton button) {
    switch (button) {
    case Qt::LeftButton:
        return MouseButton::LEFT;
    case Qt::RightButton:
        return MouseButton::RIGHT;
    case Qt::MiddleButton:
        return MouseButton::MIDDLE;
    default:
        return MouseButton::NONE;
    }
}

std::optional<int> KeyOf(const QKeyEvent& event) {
    const int key = event.key();
    for (const auto& [toolkit, code] : NAMED_KEYS) {
        if (toolkit == key) {
            return code;
        }
    }
    const bool letter_or_digit =
        (key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9);
    if (letter_or_digit) {
        return key;
    }
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24) {
        return FIRST_FUNCTION_KEY + (key - Qt::Key_F1);
    }
    return std::nullopt;
}

Qt::CursorShape ShapeOf(brevolt7::CursorShape shape) {
    using brevolt7::CursorShape;
    switch (shape) {
    case CursorShape::HAND:
        return Qt::PointingHandCursor;
    case CursorShape::CROSS:
        return Qt::CrossCursor;
    case CursorShape::MOVE:
        return Qt::SizeAllCursor;
    case CursorShape::SIZE_HORZ:
        return Qt::SizeHorCursor;
    case CursorShape::SIZE_VERT:
        return Qt::SizeVerCursor;
    case CursorShape::TEXT:
        return Qt::IBeamCursor;
    case CursorShape::WAIT:
        return Qt::WaitCursor;
    case CursorShape::ARROW:
        break;
    }
    return Qt::ArrowCursor;
}

} // namespace nurvex7::qt
