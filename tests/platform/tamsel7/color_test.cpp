#include "nurvex7/platform/tamsel7/color.h"
#include "tests/support/recording_painter.h"

#include <gtest/gtest.h>

#include <ostream>

namespace {

using tamsel7::_color;

struct Hls {
    _color color;
    double lightness;
    double saturation;
    double hue;
};

void PrintTo(const Hls& s, std::ostream* out) {
    *out << tests::text_of(s.color);
}

class HlsOfAColor : public testing::TestWithParam<Hls> {};

TEST_P(HlsOfAColor, FollowsTheByteRule) {
    double lightness = -1;
    double saturation = -1;
    double hue = -1;
    GetParam().color.GetHLS(lightness, saturation, hue);
    EXPECT_DOUBLE_EQ(lightness, GetParam().lightness);
    EXPECT_DOUBLE_EQ(saturation, GetParam().saturation);
    EXPECT_DOUBLE_EQ(hue, GetParam().hue);
}

INSTANTIATE_TEST_SUITE_P(
    Color, HlsOfAColor,
    testing::Values(Hls{{0, 0, 0}, 0, 0, 0}, Hls{{255, 255, 255}, 1, 0, 0},
                    Hls{{127, 127, 127}, 127 / 255.0, 0, 0}, Hls{{255, 0, 0}, 0.5, 1, 0},
                    Hls{{0, 255, 0}, 0.5, 1, 120}, Hls{{0, 0, 255}, 0.5, 1, 240},
                    // Two bytes share the top: red goes before green, and blue comes last.
                    Hls{{255, 255, 0}, 0.5, 1, 60}, Hls{{0, 255, 255}, 0.5, 1, 180},
                    Hls{{255, 0, 255}, 0.5, 1, 300},
                    // A hue just below the full circle, and saturation on both sides of L = 0.5.
                    Hls{{255, 0, 1}, 0.5, 1, 360 - 60 / 255.0},
                    Hls{{100, 50, 0}, 100 / 510.0, 1, 30},
                    Hls{{250, 200, 220}, 450 / 510.0, 50 / 60.0, 336}));

TEST(Color, TheWayToHlsAndBackLosesAtMostOneStepOfAByte) {
    for (int code = 0; code < 18 * 18 * 18; ++code) {
        const auto byte = [](int i) { return static_cast<std::uint8_t>(i % 18 * 15); };
        const _color source(byte(code), byte(code / 18), byte(code / 18 / 18));
        double lightness;
        double saturation;
        double hue;
        source.GetHLS(lightness, saturation, hue);
        _color back;
        back.SetHLS(lightness, saturation, hue);
        SCOPED_TRACE(tests::text_of(source) + " " + tests::text_of(back));
        // Truncation only ever loses.
        for (const int lost :
             {source.red - back.red, source.green - back.green, source.blue - back.blue}) {
            ASSERT_TRUE(lost == 0 || lost == 1);
        }
    }
}

TEST(Color, HuesAreTakenAroundTheCircle) {
    _color plain(0, 0, 0);
    plain.SetHLS(0.4, 0.7, 40);
    for (const double hue : {400.0, -320.0, 40.0 - 720.0}) {
        _color turned(0, 0, 0);
        turned.SetHLS(0.4, 0.7, hue);
        EXPECT_EQ(tests::text_of(turned), tests::text_of(plain)) << hue;
    }
}

TEST(Color, SetHlsLeavesAlphaAndTheMarkOfADefaultColorAlone) {
    _color fresh;
    fresh.SetHLS(0.5, 1, 0);
    EXPECT_EQ(tests::text_of(fresh), "#ff0000/0?");
    _color chosen(1, 2, 3, 77);
    chosen.SetHLS(0.5, 0, 0);
    EXPECT_EQ(tests::text_of(chosen), "#7f7f7f/77");
}

struct Lightening {
    _color source;
    const char* result;
};

void PrintTo(const Lightening& s, std::ostream* out) {
    *out << tests::text_of(s.source);
}

class LightenedColor : public testing::TestWithParam<Lightening> {};

// Deliberate: the result is marked as a default colour, whatever the source was. The full byte of a
// pure colour comes out one below: its component is a hair under 1, and bytes are truncated.
TEST_P(LightenedColor, KeepsHueSaturationAndAlphaAndIsMarkedDefault) {
    EXPECT_EQ(tests::text_of(tamsel7::lighten(GetParam().source)), GetParam().result);
}

INSTANTIATE_TEST_SUITE_P(
    Color, LightenedColor,
    testing::Values(Lightening{{0, 0, 0}, "#4c4c4c?"}, Lightening{{127, 127, 127}, "#a5a5a5?"},
                    Lightening{{255, 255, 255}, "#ffffff?"}, Lightening{{255, 0, 0}, "#fe4c4c?"},
                    Lightening{{0, 0, 255, 9}, "#4c4cfe/9?"}, Lightening{{}, "#4c4c4c/0?"}));

// Deliberate: marked as a default colour, as lightened ones are.
TEST(Color, DarkenTakesAShareOfTheLightness) {
    EXPECT_EQ(tests::text_of(tamsel7::darken({255, 0, 0}, 10)), "#e50000?");
    EXPECT_EQ(tests::text_of(tamsel7::darken({0, 255, 0, 50}, 30)), "#00b200/50?");
    EXPECT_EQ(tests::text_of(tamsel7::darken({200, 200, 200}, 100)), "#000000?");
}

} // namespace
