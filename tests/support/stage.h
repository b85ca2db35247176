#pragma once

#include "nurvex7/platform/brevolt7/window_control.h"
#include "tests/support/fake_window.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tests {

using Log = std::vector<std::string>;

/// An element that notes its events as "name event x,y" and does what a test tells it to do in
/// them.
class Actor : public brevolt7::CVisualElement {
public:
    using Button = tamsel7::MouseButton;

    Actor(brevolt7::CVisualElement* parent, std::string given_name, Log& given_log,
          const tamsel7::rectangle<int>& where)
        : CVisualElement(parent, {0, 0}, brevolt7::Alignment::ALIGN_NONE),
          name(std::move(given_name)), log(given_log) {
        SetPos(where, false);
    }
    ~Actor() override { log.push_back(name + " dies"); }

    /// Events that it handles, and what it does in an event, by the event's name.
    std::map<std::string, bool> handles;
    std::map<std::string, std::function<void()>> acts;
    std::string tip;
    bool keeps_tip = true; ///< its tooltip may stay while the pointer moves on it

    bool HandleMouseMove(int x, int y, int, Button) override { return play("move", x, y); }
    bool HandleButtonDown(int x, int y, int, Button) override { return play("down", x, y); }
    bool HandleButtonUp(int x, int y, int, Button) override { return play("up", x, y); }
    bool HandleClick(int x, int y, int, Button) override { return play("click", x, y); }
    bool HandleDoubleClick(int x, int y, int, Button) override { return play("double", x, y); }
    bool HandleWheel(int x, int y, int, Button, int) override { return play("wheel", x, y); }
    bool HandleContextMenu(int x, int y) override { return play("menu", x, y); }
    bool HandleKeyDown(int, int key) override { return play("key", key, 0); }
    bool HandleOnTooltip(tamsel7::CTooltipEvent* event) override {
        event->text = tip;
        event->hot_rect = hot;
        return play("tooltip", event->pos.x, event->pos.y);
    }
    bool HandleOnTooltipTrack(tamsel7::CTooltipEvent* event) override {
        event->text = tip;
        event->visible = keeps_tip;
        return play("track", event->pos.x, event->pos.y);
    }
    void HandleMouseHover(CVisualElement*) override { play("hover"); }
    void HandleMouseLeave(CVisualElement*) override { play("leave"); }
    void HandleGetFocus(CVisualElement* who, bool flag) override {
        play(flag ? "tabbed" : "focus");
        CVisualElement::HandleGetFocus(who, flag);
    }
    void HandleLostFocus(CVisualElement*) override { play("unfocus"); }
    void HandleCaptureLost() override { play("capture lost"); }
    void HandleControlDestroy() override { play("window goes"); }
    bool HandleStartDragging(int x, int y, brevolt7::DragInfo& info) override {
        info.text = name;
        return play("drag?", x, y);
    }
    bool HandleDragOver(CVisualElement*, int x, int y, brevolt7::DragInfo& info) override {
        return play("over with " + info.text, x, y);
    }
    void HandleDropDone(CVisualElement*, int x, int y, brevolt7::DragInfo&) override {
        play("drop", x, y);
    }
    void HandleDragFinished(CVisualElement* target, brevolt7::DragInfo&) override {
        play(target != nullptr ? "taken" : "not taken");
    }
    bool IsCopyToClipboardEnabled() const override { return true; }
    std::string HandleAsString() const override { return name; }

    tamsel7::rectangle<int> hot;

private:
    void play(const std::string& event) {
        log.push_back(name + " " + event);
        act(event);
    }
    bool play(const std::string& event, int x, int y) {
        log.push_back(name + " " + event + " " + std::to_string(x) + "," + std::to_string(y));
        const bool handled = handles.count(event) != 0;
        act(event); // may be the end of this element
        return handled;
    }
    void act(const std::string& event) {
        const auto found = acts.find(event);
        if (found != acts.end()) {
            const std::function<void()> todo = found->second;
            todo();
        }
    }

    std::string name;
    Log& log;
};

/// A window of 100 by 100 pixels with actors in it.
class Stage {
public:
    static constexpr auto LEFT = tamsel7::MouseButton::LEFT;

    Stage() : control(std::make_unique<brevolt7::CWindowControl>(window)) {
        control->tooltip_delay = 0;
        control->ProcessResize({100, 100});
    }

    Actor* Add(const std::string& name, const tamsel7::rectangle<int>& where,
               brevolt7::CVisualElement* parent = nullptr) {
        return new Actor(parent != nullptr ? parent : control->GetRoot(), name, log, where);
    }
    bool Press(int x, int y) { return control->ProcessButtonDown(x, y, 1, LEFT); }
    bool Move(int x, int y) {
        return control->ProcessMouseMove(x, y, 0, tamsel7::MouseButton::NONE);
    }
    bool Release(int x, int y) { return control->ProcessButtonUp(x, y, 0, LEFT); }
    Log Take() { return std::exchange(log, {}); }

    Log log;
    FakeWindow window;
    std::unique_ptr<brevolt7::CWindowControl> control;
};

} // namespace tests
