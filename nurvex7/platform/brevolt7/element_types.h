#pragma once

namespace brevolt7 {

/// How an element is placed inside its parent. Aligned children take strips of what is left, in the
/// order in which they were made; ALIGN_FILL takes all that is left.
enum class Alignment : int {
    ALIGN_NONE = 0, ///< stays where SetPos puts it
    ALIGN_TOP = 1,
    ALIGN_BOTTOM = 2,
    ALIGN_LEFT = 3,
    ALIGN_RIGHT = 4,
    ALIGN_FILL = 5
};

/// What OnChange asks for.
enum class UpdateType : int {
    UPDATE_NONE = 0,
    UPDATE_PLACES = 1, ///< the children are placed anew
    UPDATE_REPAINT = 2 ///< the element paints itself soon
};

/// The shape of the pointer over an element.
enum class CursorShape : int { ARROW, HAND, CROSS, MOVE, SIZE_HORZ, SIZE_VERT, TEXT, WAIT };

/// The bits of the flags of pointer events, and of the first argument of key events: what was held
/// down with it.
enum EventFlags : int {
    FLAG_LEFT_BUTTON = 1,
    FLAG_RIGHT_BUTTON = 2,
    FLAG_SHIFT = 4,
    FLAG_CONTROL = 8,
    FLAG_MIDDLE_BUTTON = 16,
    FLAG_ALT = 32
};

/// The codes of keys that are not characters. Letters and digits have the code of their capital in
/// ASCII.
enum Key : int {
    KEY_TAB = 0x09,
    KEY_ENTER = 0x0D,
    KEY_ESCAPE = 0x1B,
    KEY_SPACE = 0x20,
    KEY_PAGE_UP = 0x21,
    KEY_PAGE_DOWN = 0x22,
    KEY_END = 0x23,
    KEY_HOME = 0x24,
    KEY_LEFT = 0x25,
    KEY_UP = 0x26,
    KEY_RIGHT = 0x27,
    KEY_DOWN = 0x28,
    KEY_INSERT = 0x2D,
    KEY_DELETE = 0x2E,
    KEY_C = 0x43,
    KEY_MENU = 0x5D
};

/// The distance of one notch in HandleWheel; fine wheels send parts of it. Positive: away from the
/// user, towards the beginning.
constexpr int WHEEL_NOTCH = 120;

} // namespace brevolt7
