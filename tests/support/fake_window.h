#pragma once

#include "nurvex7/platform/brevolt7/window.h"
#include "nurvex7/platform/brevolt7/window_control.h"
#include "tests/support/recording_painter.h"

#include <string>
#include <utility>
#include <vector>

namespace tests {

/// A window without a screen: notes what it is asked, one line for each call.
class FakeWindow : public brevolt7::IWindow {
public:
    RecordingPainter measuring;
    bool can_scroll = false;
    bool repaint_wanted = false;

    std::vector<std::string> take() { return std::exchange(lines, {}); }

    tamsel7::IPainter* GetPainter() override { return &measuring; }
    void ScheduleRepaint() override { repaint_wanted = true; }
    bool ScrollPixels(const tamsel7::rectangle<int>& area, int dx, int dy) override {
        if (can_scroll) {
            note("ScrollPixels " + text_of(area) + " by " + std::to_string(dx) + "," +
                 std::to_string(dy));
        }
        return can_scroll;
    }
    void GrabPointer(bool on) override { note(on ? "grab" : "let go"); }
    void SetCursor(brevolt7::CursorShape shape) override {
        note("cursor " + std::to_string(static_cast<int>(shape)));
    }
    void TakeFocus() override { note("TakeFocus"); }
    void ShowTooltip(const tamsel7::CTooltipEvent& event) override {
        note("tooltip '" + event.text + "' at " + std::to_string(event.pos.x) + "," +
             std::to_string(event.pos.y));
    }
    void HideTooltip() override { note("no tooltip"); }
    void StartTimer(int id, int milliseconds) override {
        note("timer " + std::to_string(id) + " every " + std::to_string(milliseconds));
    }
    void StopTimer(int id) override { note("timer " + std::to_string(id) + " stops"); }
    void SetClipboard(const std::string& text, const tamsel7::rectangle<int>& area) override {
        note("clipboard '" + text + "' " + text_of(area));
    }

    static std::string text_of(const tamsel7::rectangle<int>& r) {
        return std::to_string(r.left) + "," + std::to_string(r.top) + "," +
               std::to_string(r.right) + "," + std::to_string(r.bottom);
    }

private:
    void note(std::string line) { lines.push_back(std::move(line)); }

    std::vector<std::string> lines;
};

} // namespace tests
