// The tree of elements: places, parents, coordinates.
#include "nurvex7/platform/brevolt7/central_part.h"
#include "nurvex7/platform/brevolt7/element_ref.h"
#include "nurvex7/platform/brevolt7/visual_element.h"
#include "tests/support/stage.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace brevolt7 {
namespace {

using tests::Actor;
using tests::Log;
using tests::Stage;

TEST(VisualElement, AlignedChildrenTakeStripsInTheirOrder) {
    struct Case {
        const char* what;
        std::vector<std::pair<Alignment, tamsel7::size<int>>> children;
        std::vector<pixel_rect> places;
    };
    using A = Alignment;
    const Case cases[] = {
        {"a border all round",
         {{A::ALIGN_TOP, {5, 10}},
          {A::ALIGN_LEFT, {20, 5}},
          {A::ALIGN_BOTTOM, {5, 10}},
          {A::ALIGN_RIGHT, {20, 5}},
          {A::ALIGN_FILL, {1, 1}}},
         {{0, 0, 100, 10},
          {0, 10, 20, 60},
          {20, 50, 100, 60},
          {80, 10, 100, 50},
          {20, 10, 80, 50}}},
        {"more than there is room for",
         {{A::ALIGN_TOP, {5, 50}}, {A::ALIGN_BOTTOM, {5, 50}}, {A::ALIGN_FILL, {9, 9}}},
         {{0, 0, 100, 50}, {0, 50, 100, 60}, {0, 50, 100, 50}}},
        {"two that take it all",
         {{A::ALIGN_FILL, {1, 1}}, {A::ALIGN_NONE, {7, 7}}, {A::ALIGN_FILL, {1, 1}}},
         {{0, 0, 100, 60}, {0, 0, 7, 7}, {0, 0, 100, 60}}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        CVisualElement parent(nullptr, {10, 10}, A::ALIGN_NONE);
        for (const auto& child : c.children) {
            new CVisualElement(&parent, child.second, child.first);
        }
        parent.SetPos({200, 200, 300, 260}, false);
        for (std::size_t i = 0; i < c.places.size(); ++i) {
            EXPECT_EQ(parent.GetChildren()[i]->GetPos(), c.places[i]) << "child " << i;
        }
        EXPECT_EQ(parent.GetBounds(), (pixel_rect{0, 0, 100, 60}));
    }
    CVisualElement inside_out(nullptr, {10, 10}, A::ALIGN_NONE);
    inside_out.SetPos({20, 20, 10, 30}, false);
    EXPECT_EQ(inside_out.GetBounds(), (pixel_rect{0, 0, 0, 10}));
}

TEST(VisualElement, AStripThatGrowsOrHidesMovesTheOthers) {
    CVisualElement parent(nullptr, {100, 100}, Alignment::ALIGN_NONE);
    auto* const bar = new CVisualElement(&parent, {0, 10}, Alignment::ALIGN_TOP);
    auto* const pane = new CVisualElement(&parent, {0, 0}, Alignment::ALIGN_FILL);
    bar->SetSize({0, 30}, false);
    EXPECT_EQ(pane->GetPos(), (pixel_rect{0, 30, 100, 100}));
    bar->SetVisible(false);
    EXPECT_EQ(pane->GetPos(), (pixel_rect{0, 0, 100, 100}));
    bar->SetVisible(true);
    bar->SetSize({20, 30}, false);
    bar->SetAlignment(Alignment::ALIGN_LEFT);
    EXPECT_EQ(pane->GetPos(), (pixel_rect{20, 0, 100, 100}));
    delete bar;
    EXPECT_EQ(pane->GetPos(), (pixel_rect{0, 0, 100, 100}));
}

/// Notes the windows and the parents that it comes to.
class Traveller : public CVisualElement {
public:
    Traveller(CVisualElement* parent_element, Log& given_log)
        : CVisualElement(parent_element, {10, 10}, Alignment::ALIGN_NONE), log(given_log) {}
    void ProcessSetControl(IControl* control) override {
        log.push_back(control != nullptr ? "window" : "no window");
    }
    void AfterSetControl() override { log.push_back("after"); }
    void ChangeParent(CVisualElement* old) override {
        log.push_back(std::string(old != nullptr ? "from one" : "from none") +
                      (parent != nullptr ? " to one" : " to none"));
    }

private:
    Log& log;
};

TEST(VisualElement, AnElementMovesBetweenParentsAndWindows) {
    Log log;
    Stage stage;
    Actor* const first = stage.Add("first", {0, 0, 50, 50});
    Actor* const second = stage.Add("second", {50, 50, 90, 90});
    auto* const outer = new Traveller(first, log);
    auto* const inner = new Traveller(outer, log);
    outer->SetParent(second);
    EXPECT_EQ(log, Log{"from one to one"});
    EXPECT_EQ(inner->ToWindow({1, 2}), (tamsel7::point<int>{51, 52}));
    EXPECT_TRUE(inner->IsInside(second));
    log.clear();
    outer->SetParent(nullptr);
    EXPECT_EQ(log, (Log{"no window", "no window", "after", "after", "from one to none"}));
    EXPECT_EQ(inner->GetControl(), nullptr);
    inner->CaptureMouse(); // nobody to ask
    log.clear();
    outer->SetParent(first);
    EXPECT_EQ(log, (Log{"window", "window", "after", "after", "from none to one"}));
    EXPECT_EQ(inner->GetControl(), stage.control.get());
    first->focus_target = outer;
    delete outer;
    EXPECT_EQ(first->focus_target, nullptr);
}

/// Deletes an element as soon as it has come, or another one as soon as it is about to.
struct Trap : CVisualElement {
    Trap(CVisualElement* parent_element, bool kills)
        : CVisualElement(parent_element, {5, 5}, Alignment::ALIGN_TOP), kills_children(kills) {}
    void AddNewChild(CVisualElement* child) override {
        if (kills_children) {
            delete child;
        }
    }
    void ProcessSetControl(IControl* new_control) override {
        if (new_control != nullptr) {
            delete goal.Get();
        }
    }
    bool kills_children;
    CElementRef goal;
};

TEST(VisualElement, AnElementOrItsNewParentMayDieInTheMove) {
    Stage stage;
    auto* const deadly = new Trap(stage.control->GetRoot(), true);
    auto* const victim = new Trap(nullptr, false);
    const CElementRef gone(victim);
    victim->SetParent(deadly);
    EXPECT_FALSE(gone);
    EXPECT_TRUE(deadly->GetChildren().empty());

    auto* const homeless = new Trap(nullptr, false);
    homeless->goal = CElementRef(new Trap(stage.control->GetRoot(), false));
    homeless->SetParent(homeless->goal.Get());
    EXPECT_EQ(homeless->parent, nullptr);
    EXPECT_EQ(homeless->GetControl(), nullptr);
    delete homeless;
}

/// A model of plain fields.
struct PlainModel : ISimpleScrollModel {
    double start = 0;
    std::pair<double, int> measure{1.0, 1};
    double GetFrom() const override { return -100; }
    double GetTo() const override { return 500; }
    void SetStart(double s) override { start = s; }
    double GetStart() const override { return start; }
    int GetMinScrollDistance() const override { return 4; }
    void SetMeasure(std::pair<double, int> m) override { measure = m; }
    std::pair<double, int> GetMeasure() const override { return measure; }
};

/// Logical and device points, and the rectangle to paint, go by the models of both directions.
TEST(VisualElement, CoordinatesFollowTheScrollModels) {
    PlainModel horz;
    PlainModel vert;
    horz.start = 10;
    horz.measure = {1.0, 2}; // two pixels a unit
    vert.start = -5;
    vert.measure = {4.0, 1};
    struct Case {
        const char* what;
        tamsel7::size<int> size;
        IScrollModel* horz;
        IScrollModel* vert;
        tamsel7::point<double> pixel;
        tamsel7::point<double> logical;
    };
    const Case cases[] = {
        {"no models", {40, 30}, nullptr, nullptr, {20, 8}, {20, 8}},
        {"along x only", {40, 30}, &horz, nullptr, {20, 8}, {20, 8}},
        {"both", {40, 30}, &horz, &vert, {20, 8}, {20, 27}},
        {"an element of one pixel", {1, 1}, &horz, &vert, {20, 8}, {20, 27}},
        {"an element without pixels", {0, 0}, &horz, &vert, {20, 8}, {20, 27}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        CCentralPart part(nullptr, c.size, Alignment::ALIGN_NONE);
        part.SetHorzScroll(c.horz);
        part.SetVertScroll(c.vert);
        tamsel7::point<double> p = c.pixel;
        part.DP2LP(&p);
        EXPECT_EQ(p, c.logical);
        part.LP2DP(&p);
        EXPECT_EQ(p, c.pixel);
    }
    CCentralPart part(nullptr, {40, 30}, Alignment::ALIGN_NONE);
    part.SetHorzScroll(&horz);
    part.SetVertScroll(&vert);
    tests::RecordingPainter painter;
    EXPECT_EQ(part.GetDrawRect(nullptr), (tamsel7::rectangle<double>{0, 0, 40, 30}));
    EXPECT_EQ(part.GetDrawRect(&painter), (tamsel7::rectangle<double>{0, 0, 40, 30}));
    part.SetCoordSystem(&painter);
    EXPECT_EQ(part.GetDrawRect(&painter), (tamsel7::rectangle<double>{10, -5, 30, 115}));
}

/// While the pointer stands outside, each tick scrolls by the model's least distance.
TEST(VisualElement, ARepeatedScrollGoesTowardsThePointerAndStopsAtTheEnd) {
    Stage stage;
    PlainModel horz;
    PlainModel vert;
    auto* const part = new CCentralPart(stage.control->GetRoot(), {20, 20}, Alignment::ALIGN_NONE);
    part->SetHorzScroll(&horz);
    part->SetVertScroll(&vert);
    part->SetPos({40, 40, 60, 60}, false);
    part->StartRepeat(stage.control.get());
    stage.Move(70, 50);
    const auto tick = [&] { stage.control->ProcessTimer(CWindowControl::TIMER_REPEAT); };
    tick();
    EXPECT_EQ(horz.start, 4);
    EXPECT_EQ(vert.start, 0);
    vert.start = -99;
    stage.Move(50, 10);
    tick();
    EXPECT_EQ(horz.start, 4);
    EXPECT_EQ(vert.start, -100);
    horz.start = 479;
    stage.Move(99, 50);
    tick();
    EXPECT_EQ(horz.start, 480); // the last unit stays in view
    part->SetParent(nullptr);   // outside of its window nothing repeats
    tick();
    delete part;
}

} // namespace
} // namespace brevolt7
