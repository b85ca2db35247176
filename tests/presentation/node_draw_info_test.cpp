#include "nurvex7/presentation/node_draw_info.h"
#include "nurvex7/presentation/rect_node_drawer.h"
#include "tests/support/placed_graph.h"
#include "tests/support/recording_painter.h"

#include <gtest/gtest.h>

#include <ostream>

namespace {

using nurvex7::CNodeDrawInfo;
using tests::PlacedGraph;
using tests::RecordingPainter;

/// Letters in the order of the alphabet, over and over, so that a cut shows where it was made.
std::string letters(int count) {
    std::string result;
    for (int i = 0; i < count; ++i) {
        result += static_cast<char>('a' + i % 26);
    }
    return result;
}

struct Measuring {
    std::string name;
    int length; ///< of the caption
    int max_caption_chars;
    bool fixed_width;
    int measured; ///< characters
};

void PrintTo(const Measuring& s, std::ostream* out) {
    *out << s.name;
}

class SizeByCaption : public testing::TestWithParam<Measuring> {};

TEST_P(SizeByCaption, CountsCharacters) {
    const PlacedGraph g;
    RecordingPainter painter;
    CNodeDrawInfo info;
    info.painter = &painter;
    info.max_caption_chars = GetParam().max_caption_chars;
    info.fixed_width = GetParam().fixed_width;
    const tamsel7::size<double> size = info.GetSizeByCaption(g.add(letters(GetParam().length)));
    EXPECT_EQ(size.width, 6.0 * GetParam().measured);
    EXPECT_EQ(size.height, 15.0);
}

INSTANTIATE_TEST_SUITE_P(
    NodeDrawInfo, SizeByCaption,
    testing::Values(Measuring{"an empty caption counts as five blanks and two", 0, 24, false, 7},
                    Measuring{"a short caption gets two blanks", 4, 24, false, 6},
                    Measuring{"a caption at the limit", 24, 24, false, 26},
                    // Deliberate: the widest node is the one whose caption just reaches the cut.
                    Measuring{"just before the cut the width overshoots", 26, 24, false, 28},
                    Measuring{"a longer caption is cut first and not padded", 27, 24, false, 26},
                    Measuring{"a far longer one too", 500, 24, false, 26},
                    Measuring{"the blanks of an empty caption can be cut as well", 0, 2, false, 4},
                    Measuring{"a fixed width looks at no caption", 3, 24, true, 26},
                    Measuring{"a fixed width below zero is none", 3, -9, true, 0},
                    Measuring{"a limit below zero cuts everything", 3, -9, false, 0}));

struct Cutting {
    std::string name;
    int length;
    int max_caption_chars;
    std::string result;
};

void PrintTo(const Cutting& s, std::ostream* out) {
    *out << s.name;
}

class TruncatedCaption : public testing::TestWithParam<Cutting> {};

TEST_P(TruncatedCaption, FitsTheNode) {
    const PlacedGraph g;
    RecordingPainter painter;
    CNodeDrawInfo info;
    info.painter = &painter;
    info.max_caption_chars = GetParam().max_caption_chars;
    EXPECT_EQ(info.GetTruncatedCaption(g.add(letters(GetParam().length))), GetParam().result);
}

INSTANTIATE_TEST_SUITE_P(
    NodeDrawInfo, TruncatedCaption,
    testing::Values(Cutting{"no caption", 0, 24, ""}, Cutting{"a short one stays", 5, 24, "abcde"},
                    Cutting{"the longest that stays", 26, 24, letters(26)},
                    Cutting{"one more is cut", 27, 24, letters(22) + "..."},
                    Cutting{"a long one is cut to the same", 500, 24, letters(22) + "..."},
                    Cutting{"a single letter is left", 10, 3, "a..."},
                    Cutting{"three full stops and no letter", 10, 2, "..."},
                    Cutting{"two full stops", 10, 1, ".."}, Cutting{"one full stop", 10, 0, "."},
                    Cutting{"not even a full stop", 10, -1, ""},
                    Cutting{"no room at all", 10, -2, ""}));

TEST(NodeDrawInfo, LettersWiderThanBlanksAreCutInANodeOfFixedWidth) {
    const PlacedGraph g;
    RecordingPainter painter;
    painter.blank_width = 3;
    CNodeDrawInfo info;
    info.painter = &painter;
    info.fixed_width = true; // 26 blanks: room for 13 letters
    EXPECT_EQ(info.GetTruncatedCaption(g.add(letters(13))), letters(13));
    EXPECT_EQ(info.GetTruncatedCaption(g.add(letters(20))), letters(9) + "...");
}

TEST(NodeDrawInfo, WithoutAPainterNothingHasASize) {
    const PlacedGraph g;
    CNodeDrawInfo info;
    info.zoom = 2;
    info.SetScaledFont();
    EXPECT_EQ(info.GetSizeByCaption(g.add("server")), (tamsel7::size<double>{0, 0}));
    EXPECT_EQ(info.GetTruncatedCaption(g.add("server")), "");
}

struct Zooming {
    double zoom;
    int installed; ///< font size; -1 where no font is installed
};

void PrintTo(const Zooming& s, std::ostream* out) {
    *out << "zoom " << s.zoom;
}

class ScaledFont : public testing::TestWithParam<Zooming> {};

TEST_P(ScaledFont, IsInstalledAwayFromZoomOne) {
    RecordingPainter painter;
    CNodeDrawInfo info;
    info.painter = &painter;
    info.zoom = GetParam().zoom;
    info.SetScaledFont();
    const std::vector<std::string> installed =
        GetParam().installed < 0 ? std::vector<std::string>{}
                                 : std::vector<std::string>{"SetFont '' style 4 size " +
                                                            std::to_string(GetParam().installed)};
    EXPECT_EQ(painter.take(), installed);
    EXPECT_EQ(info.node_font.size, 8);
}

INSTANTIATE_TEST_SUITE_P(NodeDrawInfo, ScaledFont,
                         testing::Values(Zooming{1.0, -1}, Zooming{1.05, -1}, Zooming{0.9, -1},
                                         Zooming{1.1, -1}, Zooming{1.2, 9}, Zooming{0.89, 7},
                                         Zooming{0.1, 0}, Zooming{3.0, 24}));

TEST(NodeDrawInfo, MeasuresInTheFontOfTheZoom) {
    const PlacedGraph g;
    RecordingPainter painter;
    painter.base_font_size = 8;
    CNodeDrawInfo info;
    info.painter = &painter;
    info.zoom = 2;
    EXPECT_EQ(info.GetSizeByCaption(g.add("ab")), (tamsel7::size<double>{48, 30}));
}

TEST(NodeDrawInfo, AClusterKeepsABandForItsCaptionAndTheRootDoesNot) {
    const PlacedGraph g;
    RecordingPainter painter;
    nurvex7::CRectNodeDrawer drawer;
    drawer.info.painter = &painter;
    const nurvex7::Node cluster = g.add("cluster", {100, 50, 0, 0}); // wants 54 x 15

    const nurvex7::SizeAndOrigin wide = drawer.GetSize(cluster, {200, 80});
    EXPECT_EQ(wide.size, (tamsel7::size<double>{200, 95}));
    EXPECT_EQ(wide.origin, (tamsel7::point<double>{100, 65}));
    EXPECT_EQ(drawer.GetSize(cluster, {10, 80}).size, (tamsel7::size<double>{54, 95}));

    g.root().SetCaption("all of it");
    const nurvex7::SizeAndOrigin all = drawer.GetSize(g.root(), {200, 80});
    EXPECT_EQ(all.size, (tamsel7::size<double>{200, 80}));
    EXPECT_EQ(all.origin, (tamsel7::point<double>{0, 0}));
}

} // namespace
