#include "hosts/qt/svg_canvas.h"

#include <QBuffer>
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

namespace nurvex7::qt {
namespace {

QByteArray plain_number(double value) {
    QByteArray text = QByteArray::number(value, 'f', 2);
    while (text.endsWith('0')) {
        text.chop(1);
    }
    if (text.endsWith('.')) {
        text.chop(1);
    }
    return text == "-0" ? QByteArray("0") : text;
}

TEST(SvgCanvas, NumbersAreRoundedToTwoDecimalsAtMost) {
    std::vector<double> values{0,    -0.0,   -0.004, 0.005,  0.015,  0.125, -0.375,   1e11,
                               1e13, -1e300, 99.995, 99.999, -0.999, 100,   1234567.1};
    std::mt19937 random(3);
    for (int i = 0; i < 20'000; ++i) {
        const double any = std::ldexp(static_cast<double>(random()) - (1U << 31U), -(i % 40));
        values.insert(values.end(), {any, std::round(any * 8) / 8, std::round(any * 200) / 200,
                                     std::nextafter(std::round(any * 200) / 200, 0)});
    }
    SvgCanvas canvas({10, 10}, 1);
    QByteArray expected;
    for (const double value : values) {
        canvas.DrawPolyline({{value, 0}, {value, 1}}, QPen(Qt::black));
        expected +=
            "<path fill=\"none\" stroke=\"#000\" d=\"M" + plain_number(value) + " 0V1\"/>\n";
    }
    QBuffer out;
    out.open(QIODevice::WriteOnly);
    canvas.Write(out, QString());
    EXPECT_EQ(out.data().mid(out.data().indexOf("<path"), expected.size()), expected);
}

} // namespace
} // namespace nurvex7::qt
