#include "hosts/qt/painter_canvas.h"
#include "hosts/qt/qt_painter.h"

#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <random>

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

/// Chains of short segments with sharp corners, joined by long ones.
QPolygonF random_route(std::mt19937& random, bool slanting) {
    const auto within = [&random](double reach) {
        return std::uniform_real_distribution<double>(-reach, reach)(random);
    };
    QPolygonF route{{within(300), within(300)}};
    for (int i = 0; i < 6; ++i) {
        const QPointF last = route.last();
        const QPointF far(within(300), within(300));
        const auto kind = random() % 2;
        route.append(slanting    ? far
                     : kind == 0 ? QPointF(far.x(), last.y())
                                 : QPointF(last.x(), far.y()));
        for (int k = 0; k < 6; ++k) {
            route.append(route.last() + QPointF(within(12), within(12)));
        }
    }
    return route;
}

/// What a surface shows of many lines, drawn once for each piece of it.
QImage picture_of_lines(const QRectF& area, double ratio, bool slanting, int pieces) {
    QImage image((area.size() * ratio).toSize(), QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::white);
    QPainter inner(&image);
    inner.translate(-area.topLeft());
    PainterCanvas canvas(inner);
    const QSizeF size = area.size() / pieces;
    for (int piece = 0; piece < pieces * pieces; ++piece) {
        const QPointF corner(size.width() * (piece % pieces), size.height() * (piece / pieces));
        canvas.SetClip(QRectF(area.topLeft() + corner, size));
        std::mt19937 random(7);
        for (int i = 0; i < 20; ++i) {
            const QColor color = QColor::fromHsv(18 * i, 255, 160, i % 3 == 0 ? 120 : 255);
            const QPen pen(color, 1.0 + i % 4, Qt::SolidLine,
                           i % 5 == 0 ? Qt::SquareCap : Qt::FlatCap,
                           i % 7 == 0 ? Qt::RoundJoin : Qt::MiterJoin);
            canvas.DrawPolyline(random_route(random, slanting), pen);
        }
        canvas.CancelClip();
    }
    return image;
}

int farthest_colour(const QImage& a, const QImage& b) {
    int most = 0;
    for (int i = 0; i < a.width() * a.height(); ++i) {
        const QColor one = a.pixelColor(i % a.width(), i / a.width());
        const QColor other = b.pixelColor(i % a.width(), i / a.width());
        most =
            std::max({most, std::abs(one.red() - other.red()),
                      std::abs(one.green() - other.green()), std::abs(one.blue() - other.blue())});
    }
    return most;
}

/// What is out of sight is left out, and what is seen looks as it does among all the rest.
TEST(PainterCanvas, LinesLookTheSameHoweverMuchOfThemIsSeen) {
    for (const double ratio : {1.0, 1.5, 2.0}) {
        for (const bool slanting : {false, true}) {
            SCOPED_TRACE(testing::Message() << ratio << (slanting ? ", slanting" : ""));
            const QImage whole = picture_of_lines({-320, -320, 640, 640}, ratio, slanting, 1);
            const QImage pieces = picture_of_lines({-320, -320, 640, 640}, ratio, slanting, 4);
            const QRectF window(-70, -140, 200, 120);
            const QRect place((window.topLeft() + QPointF(320, 320)).toPoint() * ratio,
                              (window.size() * ratio).toSize());
            // Qt cuts a long slanting line off at the clip, and rounds where it does.
            const int rounded = slanting ? 8 : 1;
            EXPECT_LE(farthest_colour(pieces, whole), rounded);
            EXPECT_LE(
                farthest_colour(picture_of_lines(window, ratio, slanting, 1), whole.copy(place)),
                rounded);
        }
    }
}

} // namespace
} // namespace nurvex7::qt
