#include "nurvex7/presentation/node_draw_info.h"
#include "nurvex7/presentation/rect_node_drawer.h"
#include "tests/support/placed_graph.h"
#include "tests/support/recording_painter.h"

#include <gtest/gtest.h>

#include <utility>

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

TEST(NodeDrawInfo, TheSizeCountsCharactersOfTheCaption) {
    struct {
        const char* shows;
        int length; ///< of the caption
        int max_caption_chars;
        bool fixed_width;
        int measured; ///< characters
    } const cases[] = {{"an empty caption counts as five blanks and two", 0, 24, false, 7},
                       {"a short caption gets two blanks", 4, 24, false, 6},
                       // Deliberate: the widest node is the one whose caption just reaches the cut.
                       {"just before the cut the width overshoots", 26, 24, false, 28},
                       {"a longer caption is cut first and not padded", 27, 24, false, 26},
                       {"the blanks of an empty caption can be cut as well", 0, 2, false, 4},
                       {"a fixed width looks at no caption", 3, 24, true, 26},
                       {"a fixed width below zero is none", 3, -9, true, 0},
                       {"a limit below zero cuts everything", 3, -9, false, 0}};
    for (const auto& c : cases) {
        const PlacedGraph g;
        RecordingPainter painter;
        CNodeDrawInfo info;
        info.painter = &painter;
        info.max_caption_chars = c.max_caption_chars;
        info.fixed_width = c.fixed_width;
        EXPECT_EQ(info.GetSizeByCaption(g.add(letters(c.length))),
                  (tamsel7::size<double>{6.0 * c.measured, 15}))
            << c.shows;
    }
}

TEST(NodeDrawInfo, ALongCaptionIsCut) {
    struct {
        int length;
        int max_caption_chars;
        std::string result;
    } const cases[] = {{0, 24, ""},
                       {26, 24, letters(26)},
                       {27, 24, letters(22) + "..."},
                       {500, 24, letters(22) + "..."},
                       {10, 3, "a..."},
                       {10, 2, "..."},
                       {10, 1, ".."},
                       {10, 0, "."},
                       {10, -1, ""},
                       {10, -2, ""}};
    for (const auto& c : cases) {
        const PlacedGraph g;
        RecordingPainter painter;
        CNodeDrawInfo info;
        info.painter = &painter;
        info.max_caption_chars = c.max_caption_chars;
        EXPECT_EQ(info.GetTruncatedCaption(g.add(letters(c.length))), c.result)
            << c.length << " in " << c.max_caption_chars;
    }
}

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

TEST(NodeDrawInfo, AFontIsInstalledAwayFromZoomOneAndMeasuredIn) {
    const PlacedGraph g;
    for (const auto& [zoom, installed] : {std::pair{1.0, ""},
                                          {0.9, ""},
                                          {1.1, ""},
                                          {1.2, "9"},
                                          {0.89, "7"},
                                          {0.1, "0"},
                                          {3.0, "24"}}) {
        RecordingPainter painter;
        CNodeDrawInfo info;
        info.painter = &painter;
        info.zoom = zoom;
        info.SetScaledFont();
        const std::vector<std::string> lines = painter.take();
        EXPECT_EQ(lines.empty() ? "" : lines[0].substr(24), installed);
        EXPECT_EQ(info.node_font.size, 8);
    }
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
