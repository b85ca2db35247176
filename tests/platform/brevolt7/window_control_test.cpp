// Focus and keys, tooltips, drag and drop, timers.
#include "nurvex7/platform/brevolt7/repeat_timer.h"
#include "tests/support/stage.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace brevolt7 {
namespace {

using tests::Actor;
using tests::Log;
using tests::Stage;

TEST(WindowControl, APressMovesTheFocusToTheNearestElementThatTakesIt) {
    Stage stage;
    Actor* const box = stage.Add("box", {0, 0, 50, 50});
    Actor* const pane = stage.Add("pane", {0, 0, 20, 20}, box);
    Actor* const label = stage.Add("label", {0, 0, 10, 10}, pane);
    Actor* const other = stage.Add("other", {50, 0, 99, 50});
    for (Actor* const actor : {box, pane, other}) {
        actor->SetTakesFocus(true);
    }
    box->focus_target = pane;
    const auto pressed = [&](int x, int y) {
        stage.Press(x, y);
        stage.Release(x, y);
        Log changes;
        for (const std::string& line : stage.Take()) {
            if (line.find("focus") != std::string::npos) {
                changes.push_back(line);
            }
        }
        return changes;
    };
    EXPECT_EQ(pressed(5, 5), Log{"pane focus"});
    EXPECT_EQ(pressed(60, 5), (Log{"pane unfocus", "other focus"}));
    EXPECT_EQ(pressed(40, 40), (Log{"other unfocus", "box focus", "pane focus"}));
    EXPECT_EQ(pressed(90, 90), Log{}); // the root takes no focus
    EXPECT_EQ(stage.control->GetFocus(), pane);

    label->handles["key"] = true;
    stage.control->ProcessKeyDown(0, KEY_LEFT);
    EXPECT_EQ(stage.Take(), (Log{"pane key 37,0", "box key 37,0"}));
    stage.control->ProcessKeyDown(FLAG_CONTROL, KEY_C);
    EXPECT_EQ(stage.window.take().back(), "clipboard 'pane' 0,0,20,20");

    delete box; // and the focus with it
    EXPECT_EQ(stage.control->GetFocus(), nullptr);
    stage.Take();
    EXPECT_FALSE(stage.control->ProcessKeyDown(0, KEY_LEFT));
    EXPECT_EQ(stage.Take(), Log{});
}

TEST(WindowControl, AReceiverOfTheFocusMayMoveItOnOrDie) {
    Stage stage;
    Actor* const a = stage.Add("a", {0, 0, 10, 10});
    Actor* const b = stage.Add("b", {10, 0, 20, 10});
    Actor* const c = stage.Add("c", {20, 0, 30, 10});
    for (Actor* const actor : {a, b, c}) {
        actor->SetTakesFocus(true);
    }
    stage.control->SetFocus(a);
    a->acts["unfocus"] = [&] { stage.control->SetFocus(c); };
    stage.control->SetFocus(b);
    EXPECT_EQ(stage.control->GetFocus(), c);
    EXPECT_EQ(stage.Take(), (Log{"a focus", "a unfocus", "c focus"}))
        << "who never got the focus is not told of it";
    a->acts.clear();
    c->acts["unfocus"] = [&] { delete b; };
    stage.control->SetFocus(b);
    EXPECT_EQ(stage.control->GetFocus(), nullptr);
    stage.control->SetFocus(a);
    a->acts["unfocus"] = [&] { stage.control.reset(); };
    stage.control->SetFocus(c);
    EXPECT_EQ(stage.control, nullptr);
}

TEST(WindowControl, TheTabKeyGoesRoundInTheOrderOfTheTree) {
    Stage stage;
    Actor* const a = stage.Add("a", {0, 0, 10, 10});
    Actor* const box = stage.Add("box", {10, 0, 50, 50});
    Actor* const b = stage.Add("b", {0, 0, 10, 10}, box);
    Actor* const hidden = stage.Add("hidden", {10, 0, 20, 10}, box);
    Actor* const tracker = stage.Add("tracker", {20, 0, 21, 1}, box);
    Actor* const c = stage.Add("c", {50, 0, 60, 10});
    for (Actor* const actor : {a, b, hidden, tracker, c, box}) {
        actor->SetTakesFocus(true);
    }
    box->focus_target = b;
    hidden->SetVisible(false);
    std::vector<CVisualElement*> order;
    for (int i = 0; i < 4; ++i) {
        stage.control->ProcessKeyDown(0, KEY_TAB);
        order.push_back(stage.control->GetFocus());
    }
    for (int i = 0; i < 2; ++i) {
        stage.control->ProcessKeyDown(FLAG_SHIFT, KEY_TAB);
        order.push_back(stage.control->GetFocus());
    }
    EXPECT_EQ(order, (std::vector<CVisualElement*>{a, b, c, a, c, b}));
    a->handles["key"] = true;
    stage.control->SetFocus(a);
    stage.control->ProcessKeyDown(0, KEY_TAB);
    EXPECT_EQ(stage.control->GetFocus(), a);
}

TEST(WindowControl, ATooltipComesWhenThePointerRestsAndStaysInItsHotArea) {
    Stage stage;
    stage.control->tooltip_delay = 300;
    Actor* const view = stage.Add("view", {10, 10, 60, 60});
    Actor* const inner = stage.Add("inner", {0, 0, 20, 20}, view);
    view->tip = "a node";
    view->hot = {0, 0, 15, 15};
    const auto rest = [&] { stage.control->ProcessTimer(CWindowControl::TIMER_TOOLTIP); };

    stage.Move(15, 15);
    EXPECT_EQ(stage.window.take(), Log{"timer 1 every 300"});
    rest(); // the inner one has no answer, so the view is asked
    EXPECT_EQ(stage.window.take(), (Log{"timer 1 stops", "tooltip 'a node' at 15,15"}));
    stage.Move(20, 15);
    EXPECT_EQ(stage.window.take(), Log{}) << "a tooltip that has not changed was shown again";
    view->tip = "the same node";
    stage.Move(21, 15);
    EXPECT_EQ(stage.window.take(), Log{"tooltip 'the same node' at 21,15"});
    stage.Move(26, 15);
    EXPECT_EQ(stage.window.take(), (Log{"no tooltip", "timer 1 every 300"}));
    rest();
    stage.window.take();
    stage.Press(26, 15);
    EXPECT_EQ(stage.window.take(), Log{"no tooltip"});
    rest(); // a timer that comes late
    EXPECT_EQ(stage.window.take(), Log{}) << "a tooltip came up in the middle of a press";
    stage.Release(26, 15);

    stage.Move(15, 15);
    rest();
    stage.window.take();
    delete view;
    EXPECT_EQ(stage.window.take(), Log{"no tooltip"});
    static_cast<void>(inner);
}

TEST(WindowControl, AnElementMayTakeItsTooltipDown) {
    Stage stage;
    stage.control->tooltip_delay = 300;
    Actor* const view = stage.Add("view", {0, 0, 60, 60});
    view->tip = "a node";
    view->hot = {0, 0, 60, 60};
    view->keeps_tip = false;
    const auto rest = [&] { stage.control->ProcessTimer(CWindowControl::TIMER_TOOLTIP); };
    stage.Move(15, 15);
    rest();
    stage.window.take();
    stage.Move(16, 15);
    EXPECT_EQ(stage.window.take().front(), "no tooltip");
    stage.Move(17, 15);
    rest();
    EXPECT_EQ(stage.window.take().back(), "tooltip 'a node' at 17,15") << "there is no next one";
}

TEST(WindowControl, AnElementMayDieOfTheQuestionForItsTooltip) {
    Stage stage;
    stage.control->tooltip_delay = 300;
    Actor* const view = stage.Add("view", {0, 0, 60, 60});
    view->tip = "never seen";
    view->acts["tooltip"] = [&] { delete view; };
    stage.Move(15, 15);
    stage.control->ProcessTimer(CWindowControl::TIMER_TOOLTIP);
    EXPECT_EQ(stage.window.take(), (Log{"timer 1 every 300", "timer 1 stops"}));
}

TEST(WindowControl, ThingsAreDraggedFromOneElementToAnother) {
    Stage stage;
    Actor* const from = stage.Add("from", {0, 0, 20, 20});
    Actor* const to = stage.Add("to", {50, 0, 90, 50});
    from->handles["drag?"] = true;
    to->handles["over with from"] = true;
    const auto drag = [&](int x, int y) {
        stage.Press(5, 5);
        stage.Move(8, 8);
        stage.Move(12, 5);
        stage.Move(x, y);
        stage.Take();
    };
    stage.Press(5, 5);
    stage.Move(8, 8); // not far enough
    EXPECT_EQ(stage.Take(), (Log{"from down 5,5", "from move 8,8"}));
    stage.Move(12, 5);
    EXPECT_EQ(stage.Take(), (Log{"from drag? 5,5", "from over with from 12,5"}));
    stage.Move(60, 10);
    stage.Release(61, 10);
    EXPECT_EQ(stage.Take(), (Log{"to over with from 10,10", "to over with from 11,10",
                                 "to drop 11,10", "from taken"}));

    drag(30, 30);
    stage.Release(30, 30);
    EXPECT_EQ(stage.Take(), Log{"from not taken"});

    drag(60, 10);
    EXPECT_TRUE(stage.control->ProcessKeyDown(0, KEY_ESCAPE));
    EXPECT_EQ(stage.Take(), Log{"from not taken"});
    stage.Release(60, 10);
    stage.Take();

    drag(60, 10);
    delete from; // the thing is gone, and the drag with it
    stage.Take();
    stage.Move(61, 10);
    stage.Release(61, 10);
    const Log seen = stage.Take();
    EXPECT_EQ(std::count(seen.begin(), seen.end(), "to drop 11,10"), 0);
}

/// Counts its ticks, and stops after three.
class Ticker : public CRepeatableOperation {
public:
    int ticks = 0;
    void ProcessRepeatOperation() override {
        if (++ticks == 3) {
            StopRepeat();
        }
    }
};

TEST(WindowControl, TheRepeatTimerRunsWhileSomethingRepeats) {
    Stage stage;
    Ticker ticker;
    ticker.StartRepeat(stage.control.get());
    EXPECT_EQ(stage.window.take(), Log{"timer 2 every 50"});
    for (int i = 0; i < 5; ++i) {
        stage.control->ProcessTimer(CWindowControl::TIMER_REPEAT);
    }
    EXPECT_EQ(ticker.ticks, 3);
    EXPECT_EQ(stage.window.take(), Log{"timer 2 stops"});
    ticker.StartRepeat(stage.control.get());
    stage.control.reset();
    ticker.StopRepeat(); // its timer died with the window
    EXPECT_EQ(stage.window.take(), (Log{"timer 2 every 50", "timer 2 stops"}));
}

} // namespace
} // namespace brevolt7
