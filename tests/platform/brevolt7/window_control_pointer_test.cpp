// Who gets which event, and what happens when elements vanish in the middle of one.
#include "tests/support/stage.h"

#include <gtest/gtest.h>

namespace brevolt7 {
namespace {

using tests::Actor;
using tests::Log;
using tests::Stage;

/// Listens to the signals of an element.
class Listener : public corvane2::_internal::subscriber_base_t {
public:
    explicit Listener(Log& given_log) : log(given_log) {}
    void Down(CVisualElement*, int x, int y, int, tamsel7::MouseButton) {
        log.push_back("signal down " + std::to_string(x) + "," + std::to_string(y));
    }
    void Up(CVisualElement*, int x, int y, int, tamsel7::MouseButton) {
        log.push_back("signal up " + std::to_string(x) + "," + std::to_string(y));
    }
    void Menu(CVisualElement*, int, int) { log.push_back("signal menu"); }

private:
    Log& log;
};

TEST(WindowControlPointer, AnEventClimbsUntilSomebodySettlesIt) {
    Stage stage;
    Actor* const outer = stage.Add("outer", {10, 10, 90, 90});
    Actor* const inner = stage.Add("inner", {20, 30, 60, 60}, outer);
    Listener listener(stage.log);
    inner->OnButtonDown.connect(&listener, &Listener::Down);

    EXPECT_FALSE(stage.Press(35, 45));
    EXPECT_EQ(stage.Take(), (Log{"inner down 5,5", "signal down 5,5", "outer down 25,35"}));
    EXPECT_FALSE(stage.Release(35, 45));
    stage.Take();

    inner->handles["down"] = true;
    EXPECT_TRUE(stage.Press(35, 45));
    EXPECT_EQ(stage.Take(), Log{"inner down 5,5"});
    stage.Release(35, 45);

    inner->SetEnabled(false);
    stage.Take();
    stage.Press(35, 45);
    EXPECT_EQ(stage.Take(), Log{"outer down 25,35"});
}

TEST(WindowControlPointer, TheTopmostVisibleElementLargerThanAPixelIsHit) {
    Stage stage;
    Actor* const below = stage.Add("below", {0, 0, 50, 50});
    Actor* const above = stage.Add("above", {10, 10, 50, 50});
    stage.Add("pixel", {20, 20, 21, 21}, above);
    stage.control->ProcessWheel(30, 30, 0, tamsel7::MouseButton::NONE, WHEEL_NOTCH);
    EXPECT_EQ(stage.Take(), Log{"above wheel 20,20"}); // the pixel did not take it, nor does below
    above->SetVisible(false);
    stage.control->ProcessWheel(30, 30, 0, tamsel7::MouseButton::NONE, WHEEL_NOTCH);
    EXPECT_EQ(stage.Take(), Log{"below wheel 30,30"});
    below->SetPos({40, 40, 50, 50}, false);
    stage.control->ProcessWheel(30, 30, 0, tamsel7::MouseButton::NONE, WHEEL_NOTCH);
    EXPECT_EQ(stage.Take(), Log{});
}

/// A pressed element keeps the pointer; a tracker that captures it gets everything first, and what
/// it does not settle goes on to its parent: a click is a click although it started a drag.
TEST(WindowControlPointer, PressMoveAndReleaseWithAndWithoutACapture) {
    Stage stage;
    Actor* const view = stage.Add("view", {10, 10, 50, 50});
    Actor* const tracker = stage.Add("tracker", {0, 0, 1, 1}, view);
    tracker->acts["up"] = [&] { tracker->ReleaseMouse(); };

    stage.Press(20, 20);
    stage.Move(95, 95);
    stage.Release(95, 95);
    EXPECT_EQ(stage.Take(), (Log{"view down 10,10", "view drag? 10,10", "view move 85,85",
                                 "view up 85,85"})); // and no click

    view->acts["down"] = [&] { tracker->CaptureMouse(); };
    stage.Press(20, 20);
    EXPECT_EQ(stage.Take(), (Log{"view down 10,10"}));
    EXPECT_EQ(stage.window.take(), Log{"grab"});
    stage.Release(20, 20);
    EXPECT_EQ(stage.Take(),
              (Log{"tracker up 10,10", "view up 10,10", "view click 10,10", "view hover"}));
    EXPECT_EQ(stage.window.take(), Log{"let go"});

    view->handles["move"] = true;
    stage.Press(20, 20);
    stage.Move(99, 0);
    stage.Release(20, 20);
    EXPECT_EQ(stage.Take(), (Log{"view down 10,10", "tracker move 89,-10", "view move 89,-10",
                                 "tracker up 10,10", "view up 10,10"})); // a drag is no click
}

TEST(WindowControlPointer, AReleaseOfTheMouseWithoutTheCaptureDoesNothing) {
    Stage stage;
    Actor* const a = stage.Add("a", {0, 0, 10, 10});
    Actor* const b = stage.Add("b", {10, 0, 20, 10});
    a->CaptureMouse();
    b->ReleaseMouse();
    EXPECT_EQ(stage.control->GetCapture(), a);
    b->CaptureMouse();
    EXPECT_EQ(stage.Take(), Log{"a capture lost"});
    a->ReleaseMouse();
    EXPECT_EQ(stage.control->GetCapture(), b);
}

TEST(WindowControlPointer, AnElementThatGoesInItsEventEndsTheEvent) {
    struct Case {
        const char* what;
        std::function<void(Stage&, Actor*, Actor*)> act;
        Log seen;
        bool control_lives = true;
    };
    const Case cases[] = {
        {"deletes itself",
         [](Stage&, Actor*, Actor* inner) { delete inner; },
         {"inner down 5,5", "inner dies"}},
        {"deletes its parent",
         [](Stage&, Actor* outer, Actor*) { delete outer; },
         {"inner down 5,5", "outer dies", "inner dies"}},
        {"hides its parent",
         [](Stage&, Actor* outer, Actor*) { outer->SetVisible(false); },
         {"inner down 5,5", "inner capture lost", "outer down 5,5"}},
        {"closes the window",
         [](Stage& stage, Actor*, Actor*) { stage.control.reset(); },
         {"inner down 5,5", "outer window goes", "inner window goes", "outer dies", "inner dies"},
         false},
        {"leaves the window",
         [](Stage&, Actor*, Actor* inner) {
             inner->SetParent(nullptr);
             delete inner;
         },
         {"inner down 5,5", "inner capture lost", "inner dies"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        Stage stage;
        Actor* const outer = stage.Add("outer", {0, 0, 50, 50});
        Actor* const inner = stage.Add("inner", {0, 0, 20, 20}, outer);
        inner->acts["down"] = [&] { c.act(stage, outer, inner); };
        stage.Press(5, 5);
        EXPECT_EQ(stage.Take(), c.seen);
        if (c.control_lives) {
            stage.Release(5, 5);
            stage.Move(6, 6);
            EXPECT_EQ(stage.control->GetCapture(), nullptr);
        }
    }
}

TEST(WindowControlPointer, WhoHoldsTheCaptureIsToldThatItIsLost) {
    struct Case {
        const char* what;
        std::function<void(Stage&, Actor*)> act;
        Log seen;
    };
    const Case cases[] = {
        {"the desktop takes it",
         [](Stage& s, Actor*) { s.control->ProcessCaptureLost(); },
         {"tracker capture lost", "view capture lost"}},
        {"the parent is hidden",
         [](Stage&, Actor* view) { view->SetVisible(false); },
         {"tracker capture lost", "view capture lost"}},
        {"the parent is disabled",
         [](Stage&, Actor* view) { view->SetEnabled(false); },
         {"tracker capture lost", "view capture lost"}},
        {"the parent dies",
         [](Stage&, Actor* view) { delete view; },
         {"view dies", "tracker dies"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        Stage stage;
        Actor* const view = stage.Add("view", {0, 0, 50, 50});
        Actor* const tracker = stage.Add("tracker", {0, 0, 1, 1}, view);
        view->acts["down"] = [&] { tracker->CaptureMouse(); };
        stage.Press(5, 5);
        stage.log.clear();
        c.act(stage, view);
        EXPECT_EQ(stage.Take(), c.seen);
        EXPECT_EQ(stage.control->GetCapture(), nullptr);
        EXPECT_EQ(stage.window.take(), (Log{"grab", "let go"}));
        stage.log.clear();
        stage.Release(90, 90);
        EXPECT_EQ(stage.Take(), Log{}) << "the release of a drag that is over went to somebody";
    }
}

TEST(WindowControlPointer, NoContextMenuWhileSomethingIsDragged) {
    Stage stage;
    Actor* const view = stage.Add("view", {0, 0, 50, 50});
    Listener listener(stage.log);
    view->OnContextMenu.connect(&listener, &Listener::Menu);
    stage.control->ProcessButtonDown(5, 5, 2, tamsel7::MouseButton::RIGHT);
    stage.Take();
    stage.control->ProcessContextMenu(5, 5);
    EXPECT_EQ(stage.Take(), (Log{"view menu 5,5", "signal menu"}));
    stage.control->ProcessButtonUp(5, 5, 0, tamsel7::MouseButton::RIGHT);

    stage.Press(5, 5);
    stage.Take();
    EXPECT_FALSE(stage.control->ProcessContextMenu(5, 5));
    EXPECT_EQ(stage.Take(), Log{});
    stage.Release(5, 5);
    view->CaptureMouse();
    stage.Take();
    EXPECT_FALSE(stage.control->ProcessContextMenu(5, 5));
    EXPECT_EQ(stage.Take(), Log{});
}

TEST(WindowControlPointer, HoverFollowsThePointerExceptDuringADrag) {
    Stage stage;
    Actor* const a = stage.Add("a", {0, 0, 10, 10});
    Actor* const b = stage.Add("b", {10, 0, 20, 10});
    a->SetCursor(CursorShape::HAND);
    for (Actor* const actor : {a, b}) {
        actor->handles = {{"move", true}, {"down", true}, {"up", true}, {"click", true}};
    }
    stage.Move(5, 5);
    EXPECT_EQ(stage.Take(), (Log{"a hover", "a move 5,5"}));
    EXPECT_EQ(stage.window.take(), Log{"cursor 1"});
    stage.Move(15, 5);
    EXPECT_EQ(stage.Take(), (Log{"a leave", "b hover", "b move 5,5"}));
    EXPECT_EQ(stage.window.take(), Log{"cursor 0"});
    stage.Press(15, 5);
    stage.Move(5, 5);
    EXPECT_EQ(stage.Take(), (Log{"b down 5,5", "b drag? 5,5", "b move -5,5"}));
    stage.Release(5, 5);
    EXPECT_EQ(stage.Take(), (Log{"b up -5,5", "b leave", "a hover"}));
    stage.control->ProcessMouseLeave();
    EXPECT_EQ(stage.Take(), Log{"a leave"});

    // Who is left may delete who is entered.
    stage.Move(5, 5);
    a->acts["leave"] = [&] { delete b; };
    stage.Take();
    stage.Move(15, 5);
    EXPECT_EQ(stage.Take(), (Log{"a leave", "b dies"}));
}

TEST(WindowControlPointer, AWindowWithoutPixelsTakesEvents) {
    Stage stage;
    Actor* const view = stage.Add("view", {0, 0, 50, 50});
    view->SetAlignment(Alignment::ALIGN_FILL);
    stage.control->ProcessResize({0, 0});
    EXPECT_EQ(view->GetBounds(), (tamsel7::rectangle<int>{0, 0, 0, 0}));
    stage.Take();
    stage.Press(0, 0);
    stage.Move(5, 5);
    stage.Release(0, 0);
    EXPECT_EQ(stage.Take(), Log{});
    stage.control->ProcessResize({-5, 30});
    EXPECT_EQ(stage.control->GetClientRect(), (tamsel7::rectangle<int>{0, 0, 0, 30}));
}

} // namespace
} // namespace brevolt7
