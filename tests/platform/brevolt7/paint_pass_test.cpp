// Repaint passes: whatever is changed, the screen ends up as if all of it were painted at once.
#include "nurvex7/platform/brevolt7/central_part.h"
#include "nurvex7/platform/brevolt7/element_ref.h"
#include "nurvex7/platform/brevolt7/invalid_region.h"
#include "nurvex7/platform/brevolt7/paint_pass.h"
#include "tests/support/fake_window.h"
#include "tests/support/grid_painter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace brevolt7 {
namespace {

using tests::GridPainter;

/// An endless carpet of letters that scrolls; paints what is invalid only.
class Carpet : public CCentralPart {
public:
    char first;
    int start_x = 0;
    int start_y = 0;
    bool transparent = false;
    int paints = 0;
    int pieces = 0;
    std::function<void()> before_painting;

    Carpet(CVisualElement* parent_element, char letter, const pixel_rect& where)
        : CCentralPart(parent_element, {0, 0}, Alignment::ALIGN_NONE), first(letter) {
        SetPos(where, false);
    }
    bool IsTransparent() const override { return transparent; }

    void DrawContent(tamsel7::IPainter* painter) override {
        ++paints;
        const CElementRef self(this);
        if (const std::function<void()> act = before_painting) {
            act();
        }
        if (!self) {
            return;
        }
        const CInvalidRegion region(GetDrawRect(painter), GetDrawValidRect(painter));
        pieces = region.count;
        for (int i = 0; i < region.count; ++i) {
            const tamsel7::rectangle<double> r = region[i];
            for (int y = static_cast<int>(r.top); y < static_cast<int>(r.bottom); ++y) {
                for (int x = static_cast<int>(r.left); x < static_cast<int>(r.right); ++x) {
                    paint_cell(painter, x, y);
                }
            }
        }
    }

private:
    /// A transparent carpet has holes.
    void paint_cell(tamsel7::IPainter* painter, int x, int y) {
        const int cell = (x + start_x) * 3 + (y + start_y) * 5;
        if (!transparent || cell % 2 == 0) {
            painter->SetBrush({GridPainter::ink(static_cast<char>(first + (cell % 7 + 7) % 7)), 1});
            painter->FillRect(x, y, x + 1, y + 1);
        }
    }
};

/// A window whose pixels stay, and can be moved.
class Screen : public tests::FakeWindow {
public:
    GridPainter grid{24, 16};
    bool ScrollPixels(const tamsel7::rectangle<int>& area, int dx, int dy) override {
        grid.Scroll(area, dx, dy);
        return true;
    }
};

std::vector<std::string> painted_at_once(CWindowControl& control) {
    GridPainter fresh(24, 16);
    control.InvalidateRect(0, 0, 24, 16, false);
    control.ProcessPaint(&fresh);
    return fresh.GetRows();
}

bool contains_changes(const pixel_rect& area, const std::vector<std::string>& before,
                      const std::vector<std::string>& after) {
    for (int y = 0; y < static_cast<int>(after.size()); ++y) {
        const auto row = static_cast<std::size_t>(y);
        for (int x = 0; x < static_cast<int>(after[row].size()); ++x) {
            const auto column = static_cast<std::size_t>(x);
            if (before[row][column] != after[row][column] &&
                !contains(area, {x, y, x + 1, y + 1})) {
                return false;
            }
        }
    }
    return true;
}

/// One of the things that happen between passes.
void change_something(std::mt19937& random, std::vector<Carpet*>& carpets) {
    const auto pick = [&](int from, int to) {
        return std::uniform_int_distribution<int>(from, to)(random);
    };
    Carpet& carpet =
        *carpets[static_cast<std::size_t>(pick(0, static_cast<int>(carpets.size()) - 1))];
    switch (pick(0, 5)) {
    case 0:
        carpet.first = static_cast<char>(carpet.first == 'A' ? 'M' : 'A');
        carpet.Invalidate();
        break;
    case 1: {
        const int x = pick(0, 16);
        const int y = pick(0, 10);
        carpet.SetPos({x, y, x + pick(0, 10), y + pick(0, 8)}, pick(0, 1) != 0);
        break;
    }
    case 2:
        carpet.SetVisible(!carpet.IsVisible());
        break;
    case 3: {
        const int dx = pick(-3, 3);
        const int dy = pick(-3, 3);
        carpet.start_x -= dx;
        carpet.start_y -= dy;
        if (!carpet.ScrollContent(dx, dy)) {
            carpet.Invalidate();
        }
        break;
    }
    case 4:
        carpet.OnChange(&carpet, UpdateType::UPDATE_REPAINT);
        break;
    default:
        carpet.GetControl()->InvalidateRect(pick(-2, 20), pick(-2, 12), pick(0, 26), pick(0, 18),
                                            false);
    }
}

TEST(PaintPass, PassesOverRandomChangesGiveTheScreenOfOnePass) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        Screen window;
        CWindowControl control(window);
        control.ProcessResize({24, 16});
        control.GetRoot()->SetBkColor(GridPainter::ink('_'));
        std::vector<Carpet*> carpets;
        carpets.push_back(new Carpet(control.GetRoot(), 'A', {1, 1, 20, 14}));
        carpets.push_back(new Carpet(carpets[0], 'a', {2, 3, 9, 9}));
        carpets.push_back(new Carpet(control.GetRoot(), 'H', {12, 5, 23, 15}));
        carpets.push_back(new Carpet(carpets[2], 'h', {-2, 2, 6, 7}));
        carpets[3]->transparent = seed % 2 == 0;
        for (int step = 0; step < 40; ++step) {
            const std::vector<std::string> before = window.grid.GetRows();
            for (int i = 0; i < 1 + step % 3; ++i) {
                change_something(random, carpets);
            }
            const pixel_rect touched = control.ProcessPaint(&window.grid);
            ASSERT_EQ(window.grid.GetRows(), painted_at_once(control)) << "step " << step;
            ASSERT_TRUE(contains_changes(touched, before, window.grid.GetRows()))
                << "step " << step;
        }
    }
}

/// What a pass paints, by the pieces that the element was given.
TEST(PaintPass, OnlyWhatIsInvalidIsPainted) {
    Screen window;
    CWindowControl control(window);
    control.ProcessResize({24, 16});
    Carpet* const carpet = new Carpet(control.GetRoot(), 'A', {2, 2, 22, 14});
    control.ProcessPaint(&window.grid);
    struct Case {
        const char* what;
        std::function<void()> change;
        int paints;
        int pieces;
        pixel_rect touched;
    };
    const Case cases[] = {
        {"nothing", [] {}, 0, 0, {}},
        {"a change without invalid pixels",
         [&] { carpet->OnChange(carpet, UpdateType::UPDATE_REPAINT); },
         1,
         0,
         {2, 2, 22, 14}},
        {"a part",
         [&] {
             carpet->InvalidateRect({3, 3, 6, 5});
         },
         1,
         1,
         {2, 2, 22, 14}},
        {"two parts with a clean one between",
         [&] {
             carpet->InvalidateRect({0, 0, 20, 2});
             carpet->InvalidateRect({0, 8, 20, 12});
         },
         1,
         2,
         {2, 2, 22, 14}},
        {"scrolled along both axes",
         [&] {
             carpet->ScrollContent(3, 0);
             carpet->ScrollContent(0, -2);
         },
         1,
         2,
         {2, 2, 22, 14}},
        {"outside",
         [&] {
             carpet->InvalidateRect({20, 0, 30, 12});
         },
         0,
         0,
         {}},
        {"asked for while it paints",
         [&] {
             carpet->OnChange(carpet, UpdateType::UPDATE_REPAINT);
             carpet->before_painting = [&] { carpet->Invalidate(); };
         },
         1,
         1,
         {2, 2, 22, 14}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        carpet->paints = carpet->pieces = 0;
        c.change();
        EXPECT_EQ(control.ProcessPaint(&window.grid), c.touched);
        EXPECT_EQ(carpet->paints, c.paints);
        EXPECT_EQ(carpet->pieces, c.pieces);
    }
    carpet->before_painting = nullptr;
    carpet->paints = 0;
    control.ProcessPaint(&window.grid);
    EXPECT_EQ(carpet->paints, 0) << "what was painted already was painted again";
}

TEST(PaintPass, APassIsAskedForOnceAndAgainForWhatComesMeanwhile) {
    Screen window;
    CWindowControl control(window);
    control.ProcessResize({24, 16});
    Carpet* const first = new Carpet(control.GetRoot(), 'A', {0, 0, 5, 5});
    Carpet* const second = new Carpet(control.GetRoot(), 'H', {10, 0, 15, 5});
    control.ProcessPaint(&window.grid);
    window.repaint_wanted = false;

    second->before_painting = [&] { first->Invalidate(); };
    second->Invalidate();
    EXPECT_TRUE(window.repaint_wanted);
    window.repaint_wanted = false;
    control.ProcessPaint(&window.grid);
    EXPECT_TRUE(window.repaint_wanted);

    // A pass out of a pass, and a scroll in it, leave the running one alone.
    second->before_painting = [&] {
        EXPECT_EQ(control.ProcessPaint(&window.grid), pixel_rect{});
        EXPECT_FALSE(first->ScrollContent(1, 0));
    };
    second->Invalidate();
    first->paints = 0;
    control.ProcessPaint(&window.grid);
    EXPECT_EQ(first->paints, 1);
}

TEST(PaintPass, ElementsMayGoWhileTheyArePainted) {
    Screen window;
    auto control = std::make_unique<CWindowControl>(window);
    control->ProcessResize({24, 16});
    Carpet* const outer = new Carpet(control->GetRoot(), 'A', {0, 0, 20, 15});
    Carpet* const inner = new Carpet(outer, 'H', {1, 1, 8, 8});
    Carpet* const later = new Carpet(control->GetRoot(), 'a', {5, 5, 15, 15});
    inner->before_painting = [&] { delete outer; };
    window.repaint_wanted = false;
    control->ProcessPaint(&window.grid);
    EXPECT_TRUE(window.repaint_wanted);
    control->ProcessPaint(&window.grid); // what lay around the one that went
    EXPECT_EQ(later->paints, 1);
    later->Invalidate();
    later->before_painting = [&] { control.reset(); };
    control->ProcessPaint(&window.grid);
    EXPECT_EQ(control, nullptr);
}

/// A mark of one pixel that frames its parent.
class Frame : public CVisualElement {
public:
    explicit Frame(CVisualElement* around)
        : CVisualElement(around, {1, 1}, Alignment::ALIGN_NONE) {}
    void DrawContent(tamsel7::IPainter* painter) override {
        const pixel_rect r = parent->GetContentRect();
        painter->DrawFocusFrame(-5, -5, 3, 3); // stays inside the single pixel
        painter->DrawFocusFrame(-5, -5, 3, 3);
        painter->SetClipRect(r.left, r.top, r.right, r.bottom, false);
        painter->DrawFocusFrame(1, 1, 5, 4);
        painter->DrawFocusFrame(4, 2, 60, 4);
        painter->CancelClip();
        painter->SetBrush({GridPainter::ink('!'), 1});
        painter->FillRect(-10, -10, 30, 30);
    }
};

TEST(PaintPass, AnElementPaintsOutsideItselfOnlyInAClipAndInsideItsParent) {
    Screen window;
    CWindowControl control(window);
    control.ProcessResize({10, 7});
    control.GetRoot()->SetBkColor(GridPainter::ink('_'));
    class Plain : public CVisualElement {
    public:
        using CVisualElement::CVisualElement;
        void DrawContent(tamsel7::IPainter* painter) override {
            painter->SetBrush({GridPainter::ink('a'), 1});
            painter->FillRect(-3, -3, 30, 30);
        }
    };
    auto* const plain = new Plain(control.GetRoot(), {7, 5}, Alignment::ALIGN_NONE);
    plain->SetPos({1, 1, 8, 6}, false);
    Frame* const frame = new Frame(plain);
    control.ProcessPaint(&window.grid);
    const auto shown = [&] {
        std::vector<std::string> result;
        for (int y = 0; y < 7; ++y) {
            result.push_back(window.grid.GetRows()[static_cast<std::size_t>(y)].substr(0, 10));
        }
        return result;
    };
    EXPECT_EQ(shown(),
              (std::vector<std::string>{"__________", "_!aaaaaa__", "_aAAAAaa__", "_aAaaaAA__",
                                        "_aAAAaAA__", "_aaaaaaa__", "__________"}));
    frame->OnChange(frame, UpdateType::UPDATE_REPAINT);
    EXPECT_EQ(control.ProcessPaint(&window.grid), (pixel_rect{1, 1, 8, 6}));
}

} // namespace
} // namespace brevolt7
