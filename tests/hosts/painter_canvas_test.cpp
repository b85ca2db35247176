#include "hosts/qt/painter_canvas.h"
#include "hosts/qt/qt_painter.h"

#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

namespace nurvex7::qt {
namespace {

QImage picture(double ratio) {
    QImage image(static_cast<int>(40 * ratio), static_cast<int>(30 * ratio), QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            image.setPixel(x, y, qRgb(5 * x, 200 - 3 * y, 128));
        }
    }
    return image;
}

void draw_frame(QImage& image, const tamsel7::rectangle<double>& r) {
    QtPainter painter(image);
    painter.DrawFocusFrame(r.left, r.top, r.right, r.bottom);
}

int changed_pixels(const QImage& a, const QImage& b) {
    int count = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            count += a.pixel(x, y) != b.pixel(x, y) ? 1 : 0;
        }
    }
    return count;
}

TEST(PainterCanvas, AFocusFrameTakesOnePixelAndIsGoneWhenDrawnAgain) {
    struct Case {
        const char* what;
        double ratio;
        tamsel7::rectangle<double> frame;
        int pixels; ///< of a ring of one device unit
    };
    const Case cases[] = {
        {"on whole pixels", 1, {5, 5, 15, 12}, 2 * 10 + 2 * 5},
        {"between pixels", 1, {5.3, 5.2, 15.1, 12.4}, 2 * 10 + 2 * 5},
        {"on a dense screen", 2, {5, 5, 15, 12}, 2 * 20 * 2 + 2 * 10 * 2},
        {"no higher than its own lines", 1, {5, 5, 15, 6}, 10},
        {"half outside", 1, {30, 20, 50, 40}, 10 + 9},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const QImage before = picture(c.ratio);
        QImage image = before;
        draw_frame(image, c.frame);
        EXPECT_EQ(changed_pixels(image, before), c.pixels);
        draw_frame(image, c.frame);
        EXPECT_EQ(changed_pixels(image, before), 0);
    }
}

} // namespace
} // namespace nurvex7::qt
