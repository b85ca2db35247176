#pragma once

namespace tamsel7 {

/// A place in the plane: int for pixels, double for logical (graph) coordinates.
template <typename T>
struct point {
    T x{};
    T y{};
};

/// An extent: int for pixels, double for logical (graph) coordinates.
template <typename T>
struct size {
    T width{};
    T height{};
};

/// An axis-parallel rectangle by its four sides; x grows to the right, y downwards.
template <typename T>
struct rectangle {
    T left{};
    T top{};
    T right{};
    T bottom{};
};

template <typename T>
constexpr bool operator==(const point<T>& a, const point<T>& b) {
    return a.x == b.x && a.y == b.y;
}

template <typename T>
constexpr bool operator==(const size<T>& a, const size<T>& b) {
    return a.width == b.width && a.height == b.height;
}

template <typename T>
constexpr bool operator==(const rectangle<T>& a, const rectangle<T>& b) {
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

/// The pointer button of an event. Only the value 1 is looked at: it starts a rubber rectangle.
enum class MouseButton : int { NONE = 0, LEFT = 1, MIDDLE = 2, RIGHT = 3 };

} // namespace tamsel7
