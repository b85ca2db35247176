#include "hosts/qt/qt_painter.h"
#include "hosts/qt/svg_canvas.h"

#include <QApplication>
#include <QBuffer>
#include <QImage>
#include <QPdfWriter>
#include <QSvgRenderer>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <string>

namespace nurvex7::qt {
namespace {

using tamsel7::IPainter;
using Draw = std::function<void(QtPainter&)>;

constexpr tamsel7::_color BLACK{0, 0, 0};

QImage blank(int width, int height, double ratio = 1) {
    QImage image(static_cast<int>(width * ratio), static_cast<int>(height * ratio),
                 QImage::Format_RGB32);
    image.setDevicePixelRatio(std::max(1.0, ratio));
    image.fill(Qt::white);
    return image;
}

/// Draws with `ratio` pixels to a unit; Qt has no device pixel ratio below 1, there the QPainter
/// shrinks.
QImage drawn(int width, int height, double ratio, const Draw& draw) {
    QImage image = blank(width, height, ratio);
    QPainter inner(&image);
    inner.scale(std::min(1.0, ratio), std::min(1.0, ratio));
    QtPainter painter(inner);
    draw(painter);
    painter.Flush();
    return image;
}

QByteArray drawn_svg(int width, int height, const Draw& draw) {
    SvgCanvas canvas(QSizeF(width, height), 1);
    QtPainter painter(canvas);
    draw(painter);
    painter.Flush();
    QBuffer out;
    out.open(QIODevice::WriteOnly);
    canvas.Write(out, "test");
    return out.data();
}

QImage rendered(const QByteArray& svg, int width, int height, double ratio) {
    QImage image = blank(width, height, ratio);
    QPainter painter(&image);
    QSvgRenderer renderer(svg);
    EXPECT_TRUE(renderer.isValid());
    renderer.render(&painter, QRectF(0, 0, width, height));
    return image;
}

int darkness(const QImage& image, int x, int y) {
    return 255 - qGray(image.pixel(x, y));
}

/// The pixels that hold a noticeable amount of ink.
QRect ink(const QImage& image) {
    QRect box;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (darkness(image, x, y) > 24) {
                box |= QRect(x, y, 1, 1);
            }
        }
    }
    return box;
}

void zoom(QtPainter& painter, double scale) {
    IPainter::CoordInfo info{0, 0, 0, 1000 / scale, 1000 / scale, 0, 0, 1000, 1000};
    painter.SetCoordSystem(IPainter::MapMode::MAP_LOGICAL, &info);
}

void set_font(QtPainter& painter, const char* name, int size) {
    painter.SetFont({name, 4, size, 0, 0, 1.0});
}

tamsel7::size<double> measure(QtPainter& painter, const std::string& text) {
    return painter.GetTextSize(text, nullptr, -1, true, true);
}

// Texts

TEST(QtPainterText, StartsWithTheSansSerifOfEightPoints) {
    QImage image = blank(10, 10);
    QtPainter painter(image);
    const auto at_start = measure(painter, "Caption");
    set_font(painter, "", 8);
    EXPECT_EQ(at_start, measure(painter, "Caption"));
    EXPECT_GT(at_start.height, 10);
    set_font(painter, "Arial", 20);
    painter.BeginPaint(IPainter::StdSettings::STANDARD);
    EXPECT_EQ(at_start, measure(painter, "Caption"));
}

TEST(QtPainterText, ArialHasTheMetricsOfItsFreeTwin) {
    QImage image = blank(10, 10);
    QtPainter painter(image);
    set_font(painter, "Arial", 10);
    const auto arial = measure(painter, "Wide Caption");
    set_font(painter, "Liberation Sans", 10);
    EXPECT_EQ(arial, measure(painter, "Wide Caption"));
    // The widths of the letters are 556, 556 and 500 of 1000, whoever made the face.
    EXPECT_NEAR(measure(painter, "dax").width, 1.612 * 10 * 96 / 72, 0.02);
}

TEST(QtPainterText, MeasuresAlikeOnScreenPaperAndSvg) {
    QImage image = blank(10, 10, 2);
    QBuffer out;
    out.open(QIODevice::WriteOnly);
    QPdfWriter page(&out);
    SvgCanvas canvas(QSizeF(10, 10), 1);
    QtPainter on_screen(image);
    QtPainter on_paper(page);
    QtPainter in_svg(canvas);
    for (const char* text : {"Caption", "A longer one, with AV kerning ", "  ", ""}) {
        EXPECT_EQ(measure(on_screen, text), measure(on_paper, text));
        EXPECT_EQ(measure(on_screen, text), measure(in_svg, text));
    }
}

TEST(QtPainterText, WidthFollowsSizeWithoutRounding) {
    QImage image = blank(10, 10);
    QtPainter painter(image);
    set_font(painter, "Arial", 4);
    const auto small = measure(painter, "il1 mixed");
    set_font(painter, "Arial", 12);
    const auto large = measure(painter, "il1 mixed");
    EXPECT_NEAR(large.width, 3 * small.width, 1e-9);
    EXPECT_NEAR(large.height, 3 * small.height, 1e-9);
    set_font(painter, "Arial", 0);
    EXPECT_EQ(measure(painter, "il1 mixed"), (tamsel7::size<double>{0, 0}));
}

TEST(QtPainterText, BlanksAtTheEndCount) {
    QImage image = blank(10, 10);
    QtPainter painter(image);
    const double blank_width = measure(painter, " ").width;
    EXPECT_GT(blank_width, 2);
    EXPECT_NEAR(measure(painter, "x  ").width, measure(painter, "x").width + 2 * blank_width, 1e-6);
}

TEST(QtPainterText, PlainLettersAreSetAsTheShaperSetsThem) {
    QImage image = blank(10, 10);
    QtPainter painter(image);
    for (const char* family : {"", "Arial"}) {
        set_font(painter, family, 60);
        const std::string plain = "AVATAR To. 11 office -> fjord";
        // A letter that is not plain takes the whole text through the shaper.
        const double beside = measure(painter, " \u00C6").width;
        EXPECT_NEAR(measure(painter, plain + " \u00C6").width - beside,
                    measure(painter, plain).width, 0.01);
    }
    const auto width = [&](const char* text) { return measure(painter, text).width; };
    EXPECT_LT(width("AV"), width("A") + width("V")) << "not every family has kerning, Arial has";
}

struct TextOutput {
    const char* name;
    bool svg;
    double ratio;
    double scale;
};

void PrintTo(const TextOutput& output, std::ostream* out) {
    *out << output.name;
}

class QtPainterInk : public testing::TestWithParam<TextOutput> {};

TEST_P(QtPainterInk, FillsTheMeasuredWidthCentredInItsRectangle) {
    const double ratio = GetParam().ratio;
    const double scale = GetParam().scale;
    const tamsel7::rectangle<double> area{10 / scale, 10 / scale, 190 / scale, 50 / scale};
    double width = 0;
    const Draw draw = [&](QtPainter& painter) {
        zoom(painter, scale);
        set_font(painter, "Arial", 12);
        width = measure(painter, "HHHHHHHH").width * scale;
        painter.DrawString(area, "HHHHHHHH", IPainter::FORMAT_CENTRED, -1);
    };
    const QImage image = GetParam().svg ? rendered(drawn_svg(200, 60, draw), 200, 60, ratio)
                                        : drawn(200, 60, ratio, draw);
    const QRect box = ink(image);
    // An H has a side bearing of about 0.08 em.
    const double ink_width = width - 2 * 0.08 * 16;
    EXPECT_NEAR(box.width() / ratio, ink_width, 1.5);
    EXPECT_NEAR(box.x() / ratio + box.width() / ratio / 2, 100, 1);
    EXPECT_NEAR(box.y() / ratio + box.height() / ratio / 2, 30, 1.5);
    EXPECT_NEAR(box.height() / ratio, 0.69 * 16, 1.2);
}

INSTANTIATE_TEST_SUITE_P(Outputs, QtPainterInk,
                         testing::Values(TextOutput{"image", false, 1, 1},
                                         TextOutput{"image_zoomed", false, 1, 1.7},
                                         TextOutput{"dense_image", false, 2, 1},
                                         TextOutput{"dense_image_zoomed", false, 2, 0.6},
                                         TextOutput{"svg", true, 1, 1},
                                         TextOutput{"svg_zoomed", true, 2, 2.3}),
                         [](const auto& output) { return std::string(output.param.name); });

TEST(QtPainterText, TopLeftFormatKeepsToTheBandOfACluster) {
    for (const double ratio : {1.0, 2.0}) {
        for (const double top : {10.0, 10.3, 10.6, 10.9}) {
            const QImage image = drawn(200, 80, ratio, [&](QtPainter& painter) {
                set_font(painter, "Arial", 8);
                painter.DrawString({10, top, 190, 70}, "Ägypten", IPainter::FORMAT_TOP_LEFT, -1);
            });
            const QRect box = ink(image);
            EXPECT_GE(box.top(), std::floor(top * ratio));
            EXPECT_LE(box.bottom() + 1, std::ceil((top + 12) * ratio));
            EXPECT_NEAR(box.left() / ratio, 14, 1.5);
        }
    }
}

TEST(QtPainterText, NeverLeavesItsRectangle) {
    const std::string text = "a caption that is much too long for its rectangle gjpq";
    for (const int format : {IPainter::FORMAT_CENTRED, IPainter::FORMAT_TOP_LEFT}) {
        for (const tamsel7::rectangle<double> area :
             {tamsel7::rectangle<double>{20, 20, 80, 40}, {20, 20, 180, 25}, {20, 20, 24, 24}}) {
            const QImage image = drawn(200, 60, 1, [&](QtPainter& painter) {
                painter.DrawString(area, text, format, -1);
            });
            const QRect room(QPoint(20, 20), QPoint(static_cast<int>(area.right) - 1,
                                                    static_cast<int>(area.bottom) - 1));
            EXPECT_TRUE(room.contains(ink(image)) || ink(image).isEmpty());
        }
    }
}

TEST(QtPainterText, CutCharactersAndControlsLeaveNoBoxes) {
    EXPECT_EQ(DecodeCaption("Größe"), QString("Größe"));
    EXPECT_EQ(DecodeCaption("Gr\xC3"), QString("Gr"));
    EXPECT_EQ(DecodeCaption("Gr\xC3..."), QString("Gr..."));
    EXPECT_EQ(DecodeCaption("\xE6\xBC"), QString());
    EXPECT_EQ(DecodeCaption("tab\there\r"), QString("tab here "));
    EXPECT_EQ(DecodeCaption("L\xF6wen"), QString("L\uFFFDwen"));
}

// Coordinates and clip

TEST(QtPainterCoordinates, MapTheLogicalOntoTheDeviceRectangle) {
    const QImage image = drawn(100, 100, 1, [](QtPainter& painter) {
        IPainter::CoordInfo info{7, -10, 20, 50, 25, 10, 20, 100, 50};
        painter.SetCoordSystem(IPainter::MapMode::MAP_LOGICAL, &info);
        painter.SetBrush({BLACK, 1});
        painter.FillRect(0, 25, 10, 35);
        IPainter::MapMode mode{};
        IPainter::CoordInfo back{};
        painter.GetCoordSystem(mode, &back);
        EXPECT_EQ(mode, IPainter::MapMode::MAP_LOGICAL);
        EXPECT_EQ(back.leading, 7);
        EXPECT_EQ(back.logical_height, 25);
        EXPECT_EQ(back.device_y, 20);
    });
    EXPECT_EQ(ink(image), QRect(30, 30, 20, 20));
}

TEST(QtPainterCoordinates, AMappingWithoutExtentIsIgnored) {
    QImage image = blank(10, 10);
    QtPainter painter(image);
    zoom(painter, 2);
    IPainter::CoordInfo flat{0, 0, 0, 0, 10, 0, 0, 10, 10};
    painter.SetCoordSystem(IPainter::MapMode::MAP_LOGICAL, &flat);
    painter.SetCoordSystem(IPainter::MapMode::MAP_LOGICAL, nullptr);
    IPainter::MapMode mode{};
    IPainter::CoordInfo back{};
    painter.GetCoordSystem(mode, &back);
    EXPECT_EQ(back.logical_width, 500);
}

TEST(QtPainterCoordinates, TextsKeepTheirDeviceSizeAtEveryScale) {
    QImage image = blank(10, 10);
    QtPainter painter(image);
    const auto plain = measure(painter, "Caption");
    zoom(painter, 4);
    EXPECT_NEAR(measure(painter, "Caption").width, plain.width / 4, 1e-9);
    EXPECT_NEAR(measure(painter, "Caption").height, plain.height / 4, 1e-9);
}

TEST(QtPainterCoordinates, AQPainterThatIsMovedStaysMoved) {
    QImage image = blank(100, 100);
    QPainter moved(&image);
    moved.translate(30, 40);
    QtPainter painter(moved);
    painter.SetBrush({BLACK, 1});
    painter.FillRect(0, 0, 10, 10);
    EXPECT_EQ(ink(image), QRect(30, 40, 10, 10));
}

TEST(QtPainterClip, RestrictsUntilItIsCancelled) {
    const Draw fill = [](QtPainter& painter) {
        painter.SetBrush({BLACK, 1});
        painter.FillRect(0, 0, 100, 100);
    };
    const auto image = [&](const Draw& clip) {
        return ink(drawn(100, 100, 1, [&](QtPainter& painter) {
            clip(painter);
            fill(painter);
        }));
    };
    const Draw one = [](QtPainter& p) { p.SetClipRect(10, 10, 50, 50, false); };
    EXPECT_EQ(image(one), QRect(10, 10, 40, 40));
    EXPECT_EQ(image([&](QtPainter& p) {
                  one(p);
                  p.SetClipRect(30, 0, 90, 90, true);
              }),
              QRect(30, 10, 20, 40));
    EXPECT_EQ(image([&](QtPainter& p) {
                  one(p);
                  p.SetClipRect(30, 0, 90, 90, false);
              }),
              QRect(30, 0, 60, 90));
    EXPECT_EQ(image([&](QtPainter& p) {
                  one(p);
                  p.DrawString({0, 0, 100, 5}, "clipped", IPainter::FORMAT_CENTRED, -1);
              }),
              QRect(10, 10, 40, 40));
    EXPECT_EQ(image([&](QtPainter& p) {
                  one(p);
                  p.CancelClip();
              }),
              QRect(0, 0, 100, 100));
}

// Lines

struct LineCase {
    const char* name;
    double ratio;
    double scale;
    int pen;
};

void PrintTo(const LineCase& line, std::ostream* out) {
    *out << line.name;
}

class QtPainterLines : public testing::TestWithParam<LineCase> {};

/// The darkness of the pixels across a line: full inside it, none outside.
void expect_sharp(const QImage& image, bool horizontal, int pixels) {
    int full = 0;
    for (int i = 0; i < image.width(); ++i) {
        const int middle = image.width() / 2;
        const int dark = horizontal ? darkness(image, middle, i) : darkness(image, i, middle);
        EXPECT_TRUE(dark == 0 || dark == 255) << "pixel " << i << " is " << dark;
        full += dark == 255 ? 1 : 0;
    }
    EXPECT_EQ(full, pixels);
}

TEST_P(QtPainterLines, AlongTheAxesCoverWholePixels) {
    const double ratio = GetParam().ratio;
    const double scale = GetParam().scale;
    const int width = GetParam().pen;
    const int pixels = std::max(1, static_cast<int>(std::lround(width * ratio)));
    for (double at = 20; at < 21; at += 0.13) {
        const Draw set = [&, scale = scale, width = width](QtPainter& painter) {
            zoom(painter, scale);
            painter.SetPen({BLACK, width});
        };
        expect_sharp(drawn(60, 60, ratio,
                           [&, scale = scale](QtPainter& painter) {
                               set(painter);
                               painter.MoveTo(5 / scale, at / scale);
                               painter.LineTo(55 / scale, at / scale);
                           }),
                     true, pixels);
        expect_sharp(drawn(60, 60, ratio,
                           [&, scale = scale](QtPainter& painter) {
                               set(painter);
                               painter.MoveTo(at / scale, 5 / scale);
                               painter.LineTo(at / scale, 55 / scale);
                           }),
                     false, pixels);
        expect_sharp(drawn(60, 60, ratio,
                           [&, scale = scale](QtPainter& painter) {
                               set(painter);
                               painter.Rectangle(at / scale, 5 / scale, (at + 15.3) / scale,
                                                 55 / scale);
                           }),
                     false, 2 * pixels);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Zooms, QtPainterLines,
    testing::Values(LineCase{"plain", 1, 1, 1}, LineCase{"zoomed_out", 1, 0.37, 1},
                    LineCase{"zoomed_in", 1, 2.71, 1}, LineCase{"dense", 2, 1, 1},
                    LineCase{"dense_zoomed", 2, 1.37, 1}, LineCase{"odd_ratio", 1.5, 1.1, 1},
                    LineCase{"coarse", 0.5, 1, 1}, LineCase{"broad", 1, 1, 3}),
    [](const auto& line) { return std::string(line.param.name); });

TEST(QtPainterLines, APolylineIsOneFigureWithFullCorners) {
    const QImage image = drawn(40, 40, 1, [](QtPainter& painter) {
        painter.SetPen({tamsel7::_color(0, 0, 0, 128), 1});
        painter.MoveTo(5, 5);
        painter.LineTo(20, 5);
        painter.LineTo(30, 5);
        painter.LineTo(30, 30);
    });
    // Two lines of half opacity would leave a darker corner, or a notch in it.
    for (int at = 6; at < 30; ++at) {
        EXPECT_EQ(darkness(image, at, 5), darkness(image, 30, 5));
        EXPECT_EQ(darkness(image, 30, at), darkness(image, 30, 5));
    }
}

TEST(QtPainterLines, FillAndOutlineOfANodeLeaveNoSeam) {
    for (double at = 10; at < 11; at += 0.17) {
        const QImage image = drawn(60, 60, 1, [&](QtPainter& painter) {
            painter.GradientFill(at, at, at + 30.4, at + 20.6, {200, 0, 0}, {200, 0, 0}, 100,
                                 IPainter::GradientDirection::GRADIENT_FORWARD);
            painter.Rectangle(at, at, at + 30.4, at + 20.6);
        });
        const QRect box = ink(image);
        for (int x = 0; x < 60; ++x) {
            const QRgb pixel = image.pixel(x, 20);
            const bool border = x == box.left() || x == box.right();
            const bool inside = x > box.left() && x < box.right();
            EXPECT_EQ(pixel, border   ? qRgb(0, 0, 0)
                             : inside ? qRgb(200, 0, 0)
                                      : qRgb(255, 255, 255))
                << x << " at " << at;
        }
    }
}

// Arrow heads

Draw arrow(QPointF from, QPointF to, bool with_line, int pen = 1) {
    return [=](QtPainter& painter) {
        painter.SetPen({BLACK, pen});
        if (with_line) {
            painter.MoveTo(from.x(), from.y());
            painter.LineTo(to.x(), to.y());
        }
        painter.SetArrowSize({7, 5});
        painter.BeginPlot(IPainter::PlotType::PLOT_ARROW);
        painter.Vertex(from.x(), from.y());
        painter.Vertex(to.x(), to.y());
        painter.EndPlot();
    };
}

TEST(QtPainterArrow, LiesOnTheSegmentWithItsTipAtTheSecondVertex) {
    const double ratio = 4;
    const QRect right = ink(drawn(60, 60, ratio, arrow({10, 30}, {50, 30}, false)));
    EXPECT_NEAR(right.left() / ratio, 43, 0.5);
    EXPECT_NEAR((right.right() + 1) / ratio, 50, 0.5);
    EXPECT_NEAR(right.height() / ratio, 5, 0.5);
    EXPECT_NEAR(right.center().y() / ratio, 30, 0.5);
    const QRect up = ink(drawn(60, 60, ratio, arrow({30, 50}, {30, 10}, false)));
    EXPECT_NEAR(up.top() / ratio, 10, 0.5);
    EXPECT_NEAR(up.height() / ratio, 7, 0.5);
    EXPECT_NEAR(up.width() / ratio, 5, 0.5);
}

TEST(QtPainterArrow, KeepsItsSizeAtEveryZoom) {
    const auto head = [](double scale) {
        return ink(drawn(60, 60, 4, [&](QtPainter& painter) {
            zoom(painter, scale);
            arrow(QPointF(10, 30) / scale, QPointF(50, 30) / scale, false)(painter);
        }));
    };
    EXPECT_EQ(head(0.25).size(), head(1).size());
    EXPECT_EQ(head(3).size(), head(1).size());
}

TEST(QtPainterArrow, TheLineDoesNotStickOutOfTheTip) {
    const QImage image = drawn(60, 60, 4, arrow({10, 30.5}, {50, 30.5}, true, 3));
    const QImage head = drawn(60, 60, 4, arrow({10, 30.5}, {50, 30.5}, false, 3));
    for (int x = 45 * 4; x < 240; ++x) {
        for (int y = 0; y < 240; ++y) {
            ASSERT_EQ(image.pixel(x, y), head.pixel(x, y)) << x << ' ' << y;
        }
    }
    EXPECT_EQ(darkness(image, 20 * 4, 122), 255);
}

TEST(QtPainterArrow, ASegmentWithoutLengthHasNoHead) {
    EXPECT_TRUE(ink(drawn(60, 60, 1, arrow({30, 30}, {30, 30}, true))).isEmpty());
}

// Fills

TEST(QtPainterFill, TheGradientRunsFromTheTopToTheBottom) {
    const QImage image = drawn(20, 110, 1, [](QtPainter& painter) {
        painter.GradientFill(0, 5, 20, 105, {255, 0, 0}, {0, 0, 255}, 100,
                             IPainter::GradientDirection::GRADIENT_FORWARD);
    });
    EXPECT_GT(qRed(image.pixel(10, 6)), 245);
    EXPECT_GT(qBlue(image.pixel(10, 103)), 245);
    EXPECT_NEAR(qRed(image.pixel(10, 55)), 127, 5);
    EXPECT_EQ(image.pixel(3, 55), image.pixel(17, 55));
    EXPECT_EQ(image.pixel(10, 4), qRgb(255, 255, 255));
}

TEST(QtPainterFill, TheBrushStartsHollow) {
    const QImage image =
        drawn(40, 40, 1, [](QtPainter& painter) { painter.Rectangle(5, 5, 30, 30); });
    EXPECT_EQ(darkness(image, 15, 15), 0);
    EXPECT_EQ(darkness(image, 5, 15), 255);
    EXPECT_EQ(darkness(image, 5, 5), 255);
}

// SVG

void draw_scene(QtPainter& painter) {
    set_font(painter, "Arial", 8);
    painter.SetPen({tamsel7::_color(40, 60, 80)});
    painter.GradientFill(10.2, 10.7, 90.1, 30.3, {250, 250, 255}, {180, 190, 220}, 100,
                         IPainter::GradientDirection::GRADIENT_FORWARD);
    painter.Rectangle(10.2, 10.7, 90.1, 30.3);
    painter.DrawString({10.2, 10.7, 90.1, 30.3}, "first & <last>", IPainter::FORMAT_CENTRED, -1);
    painter.SetBrush({tamsel7::_color(255, 204, 51), 1});
    painter.RoundRect(10, 40, 60, 70, 5, 5);
    painter.DrawString({10, 40, 60, 70}, "second", IPainter::FORMAT_TOP_LEFT, -1);
    painter.MoveTo(90.1, 20.5);
    painter.LineTo(100, 20.5);
    painter.LineTo(120, 55.2);
    painter.LineTo(140, 55.2);
    painter.SetArrowSize({7, 5});
    painter.BeginPlot(IPainter::PlotType::PLOT_ARROW);
    painter.Vertex(120, 55.2);
    painter.Vertex(140, 55.2);
    painter.EndPlot();
}

TEST(SvgCanvas, ShowsWhatAnImageShows) {
    const QImage image = drawn(150, 80, 1, draw_scene);
    const QImage svg = rendered(drawn_svg(150, 80, draw_scene), 150, 80, 1);
    int different = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            different += std::abs(darkness(image, x, y) - darkness(svg, x, y)) > 64 ? 1 : 0;
        }
    }
    EXPECT_LT(different, 40);
}

TEST(SvgCanvas, DefinesEachGlyphAndGradientOnceAndEscapesTexts) {
    const QByteArray svg = drawn_svg(150, 80, [](QtPainter& painter) {
        draw_scene(painter);
        draw_scene(painter);
        painter.DrawString({0, 0, 150, 40}, "aaaa", IPainter::FORMAT_CENTRED, -1);
    });
    const QByteArray once = drawn_svg(150, 80, [](QtPainter& painter) {
        draw_scene(painter);
        painter.DrawString({0, 0, 150, 40}, "a", IPainter::FORMAT_CENTRED, -1);
    });
    EXPECT_EQ(svg.count("<path id="), once.count("<path id="));
    EXPECT_EQ(svg.count("<linearGradient"), 1);
    EXPECT_TRUE(svg.contains("aria-label=\"first &amp; &lt;last&gt;\""));
    EXPECT_TRUE(svg.contains("<title>test</title>"));
}

TEST(SvgCanvas, FillAndOutlineOfANodeAreOneElement) {
    const QByteArray svg = drawn_svg(60, 60, [](QtPainter& painter) {
        painter.GradientFill(10.2, 10.7, 50.1, 30.3, {250, 250, 255}, {250, 250, 255}, 100,
                             IPainter::GradientDirection::GRADIENT_FORWARD);
        painter.Rectangle(10.2, 10.7, 50.1, 30.3);
    });
    EXPECT_EQ(svg.count("<rect"), 1);
}

TEST(SvgCanvas, ClipsAreDefinedOnceAndClosed) {
    const QByteArray svg = drawn_svg(60, 60, [](QtPainter& painter) {
        for (int i = 0; i < 2; ++i) {
            painter.SetClipRect(0, 0, 20, 20, false);
            painter.Rectangle(10, 10, 50, 50);
        }
    });
    EXPECT_EQ(svg.count("<clipPath"), 1);
    EXPECT_EQ(svg.count("<g "), svg.count("</g>"));
}

} // namespace
} // namespace nurvex7::qt

int main(int count, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(count, arguments);
    testing::InitGoogleTest(&count, arguments);
    return RUN_ALL_TESTS();
}
