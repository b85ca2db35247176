#include "nurvex7/platform/tamsel7/palette.h"

namespace tamsel7 {

SysPalette::SysPalette() {
    colors[VIEW_BACKGROUND] = _color(255, 255, 255);
}

_color SysPalette::GetColor(int index) const {
    return index >= 0 && index < COUNT ? colors[index] : _color();
}

void SysPalette::SetColor(int index, const _color& color) {
    if (index >= 0 && index < COUNT) {
        colors[index] = color;
    }
}

SysPalette& GetSysPalette() {
    static SysPalette palette;
    return palette;
}

} // namespace tamsel7
