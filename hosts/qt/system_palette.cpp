#include "hosts/qt/system_palette.h"

#include "nurvex7/platform/tamsel7/palette.h"

#include <QColor>

namespace nurvex7::qt {

void FollowPalette(const QPalette& palette) {
    const QColor base = palette.color(QPalette::Base);
    tamsel7::GetSysPalette().SetColor(tamsel7::SysPalette::VIEW_BACKGROUND,
                                      tamsel7::_color(static_cast<unsigned char>(base.red()),
                                                      static_cast<unsigned char>(base.green()),
                                                      static_cast<unsigned char>(base.blue())));
}

} // namespace nurvex7::qt
