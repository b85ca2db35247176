#include "nurvex7/platform/tamsel7/color.h"
#include "tests/support/recording_painter.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

using tamsel7::_color;

TEST(Color, HlsFollowsTheByteRule) {
    struct {
        _color color;
        double lightness, saturation, hue;
    } const cases[] = {{{0, 0, 0}, 0, 0, 0},
                       {{255, 255, 255}, 1, 0, 0},
                       {{127, 127, 127}, 127 / 255.0, 0, 0},
                       {{0, 255, 0}, 0.5, 1, 120},
                       {{0, 0, 255}, 0.5, 1, 240},
                       // Two bytes share the top: red goes before green, and blue comes last.
                       {{255, 255, 0}, 0.5, 1, 60},
                       {{0, 255, 255}, 0.5, 1, 180},
                       {{255, 0, 255}, 0.5, 1, 300},
                       // A hue just below the full circle, and saturation on both sides of L = 0.5.
                       {{255, 0, 1}, 0.5, 1, 360 - 60 / 255.0},
                       {{100, 50, 0}, 100 / 510.0, 1, 30},
                       {{250, 200, 220}, 450 / 510.0, 50 / 60.0, 336}};
    for (const auto& c : cases) {
        SCOPED_TRACE(tests::text_of(c.color));
        double lightness = -1;
        double saturation = -1;
        double hue = -1;
        c.color.GetHLS(lightness, saturation, hue);
        EXPECT_DOUBLE_EQ(lightness, c.lightness);
        EXPECT_DOUBLE_EQ(saturation, c.saturation);
        EXPECT_DOUBLE_EQ(hue, c.hue);
    }
}

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

// Deliberate: the result is marked as a default colour, whatever the source was. The full byte of a
// pure colour comes out one below: its component is a hair under 1, and bytes are truncated.
TEST(Color, LightenAndDarkenKeepHueAndAlphaAndMarkTheResultAsADefault) {
    using tamsel7::darken;
    using tamsel7::lighten;
    for (const auto& [color, text] : {std::pair{lighten({0, 0, 0}), "#4c4c4c?"},
                                      {lighten({127, 127, 127}), "#a5a5a5?"},
                                      {lighten({255, 255, 255}), "#ffffff?"},
                                      {lighten({255, 0, 0}), "#fe4c4c?"},
                                      {lighten({0, 0, 255, 9}), "#4c4cfe/9?"},
                                      {lighten({}), "#4c4c4c/0?"},
                                      {darken({255, 0, 0}, 10), "#e50000?"},
                                      {darken({0, 255, 0, 50}, 30), "#00b200/50?"},
                                      {darken({200, 200, 200}, 100), "#000000?"}}) {
        EXPECT_EQ(tests::text_of(color), text);
    }
}

} // namespace
