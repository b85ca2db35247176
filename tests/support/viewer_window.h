#pragma once

#include "nurvex7/platform/brevolt7/window_control.h"
#include "nurvex7/viewer/graph_viewer.h"
#include "tests/support/fake_window.h"
#include "tests/support/placed_graph.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace tests {

/// A layout that leaves everything where the test has put it, and counts its runs.
class StillLayout : public nurvex7::ILayout {
public:
    void Make(nurvex7::Node) override { ++makes; }
    void Update(nurvex7::Node) override { ++updates; }
    void Resize(nurvex7::Node) override {}

    int makes = 0;
    int updates = 0;
};

/// What a handler was called with, as words like `down a 12,30`; the root is called `root`.
class NotingNodeHandler : public nurvex7::INodeHandler {
public:
    std::vector<std::string> notes;
    int down_result = 0;
    int up_result = 0;
    int click_result = 0;
    int other_result = 0;                        ///< of menus, double clicks, hovering and tooltips
    std::function<void(nurvex7::Node)> in_event; ///< runs inside each event

    std::vector<std::string> take() { return std::exchange(notes, {}); }

    void Draw(nurvex7::Node node, tamsel7::IPainter* painter) override {
        painter->DrawString({}, name(node), 0, -1);
    }
    tamsel7::size<double> GetSize(nurvex7::Node) override { return {10, 10}; }
    nurvex7::SizeAndOrigin GetSize(nurvex7::Node, tamsel7::size<double> inner) override {
        return {inner, {}};
    }
    void SetZoomFactor(double factor) override { zoom = factor; }
    int HandleButtonDown(nurvex7::Node node, double x, double y, int,
                         tamsel7::MouseButton) override {
        return run("down", node, x, y, down_result);
    }
    int HandleButtonUp(nurvex7::Node node, double x, double y, int, tamsel7::MouseButton) override {
        return run("up", node, x, y, up_result);
    }
    int HandleClick(nurvex7::Node node, double x, double y, int, tamsel7::MouseButton) override {
        return run("click", node, x, y, click_result);
    }
    int HandleDoubleClick(nurvex7::Node node, double x, double y, int,
                          tamsel7::MouseButton) override {
        return run("double", node, x, y, other_result);
    }
    int HandleContextMenu(nurvex7::Node node, double x, double y) override {
        return run("menu", node, x, y, other_result);
    }
    int HandleMouseHover(nurvex7::Node node) override {
        note("hover", node);
        return other_result;
    }
    int HandleMouseLeave(nurvex7::Node node) override {
        note("leave", node);
        return other_result;
    }
    int HandleOnTooltip(nurvex7::Node node, nurvex7::CGraphTooltipEvent* event) override {
        event->text = node.GetCaption();
        return run("tooltip", node, event->pos.x, event->pos.y, other_result);
    }
    int HandleOnTooltipTrack(nurvex7::Node node, nurvex7::CGraphTooltipEvent* event) override {
        return run("track", node, event->pos.x, event->pos.y, other_result);
    }
    int HandleOnSelectRect(nurvex7::Node node, tamsel7::rectangle<double> r) override {
        note("select", node);
        notes.back() += " " + text_of(r.left) + "," + text_of(r.top) + "," + text_of(r.right) +
                        "," + text_of(r.bottom);
        return 0;
    }

    double zoom = 0; ///< as told last

private:
    static std::string name(const nurvex7::Node& node) {
        return node.GetID() == 0 ? "root" : node.GetCaption();
    }
    void note(const std::string& event, const nurvex7::Node& node) {
        notes.push_back(event + " " + name(node));
    }
    int run(const std::string& event, const nurvex7::Node& node, double x, double y, int result) {
        note(event, node);
        notes.back() += " " + text_of(x) + "," + text_of(y);
        if (in_event) {
            in_event(node);
        }
        return result;
    }
};

/// The same for edges.
class NotingEdgeHandler : public nurvex7::IEdgeHandler {
public:
    explicit NotingEdgeHandler(std::vector<std::string>& into) : notes(into) {}

    std::vector<std::string>& notes;
    int result = 0;

    void Draw(nurvex7::Edge edge, tamsel7::IPainter* painter) override {
        painter->DrawString({}, edge.GetCaption(), 0, -1);
    }
    double GetWidth(nurvex7::Edge) const override { return 1; }
    int HandleMouseHover(nurvex7::Edge edge) override {
        notes.push_back("hover " + edge.GetCaption());
        return result;
    }
    int HandleMouseLeave(nurvex7::Edge edge) override {
        notes.push_back("leave " + edge.GetCaption());
        return result;
    }
    int HandleOnTooltip(nurvex7::Edge edge, nurvex7::CGraphTooltipEvent* event) override {
        event->text = edge.GetCaption();
        notes.push_back("tooltip " + edge.GetCaption());
        return result;
    }
    int HandleOnTooltipTrack(nurvex7::Edge edge, nurvex7::CGraphTooltipEvent*) override {
        notes.push_back("track " + edge.GetCaption());
        return result;
    }
};

/// A viewer of 200 by 100 pixels in a window, without bars, and a graph that the test places by
/// hand. The root is 400 by 300 at 0,0, and the view begins at 0,0.
class ViewerWindow : public testing::Test, public corvane2::_internal::subscriber_base_t {
public:
    ViewerWindow() {
        place_root({0, 0, 400, 300});
        viewer = new nurvex7::CGraphViewer(control.GetRoot(), nurvex7::graph_ptr2<nurvex7::Graph>(),
                                           /*need_coord_system=*/true);
        viewer->ScrollbarsEnable(false);
        viewer->OnChangeView.connect(this, &ViewerWindow::HandleChangeView);
        control.ProcessResize({200, 100});
        equip(*placed.graph);
        viewer->SetGraph(placed.graph);
        look_at(0, 0);
        paint();
    }

    /// Gives a graph the layout and the handlers of the test.
    void equip(nurvex7::Graph& graph) {
        graph.SetDefaultLayout(nurvex7::graph_ptr2<nurvex7::ILayout>(&layout, /*owns=*/false));
        graph.SetDefaultNodeHandler(
            nurvex7::graph_ptr2<nurvex7::INodeHandler>(&handler, /*owns=*/false));
        graph.SetDefaultEdgeHandler(
            nurvex7::graph_ptr2<nurvex7::IEdgeHandler>(&edge_handler, /*owns=*/false));
    }
    void place_root(const tamsel7::rectangle<double>& r) const {
        placed.root().SetPosition(r.left, r.top);
        placed.root().SetSize({r.right - r.left, r.bottom - r.top});
    }
    void look_at(double x, double y) {
        viewer->SetStartX(x);
        viewer->SetStartY(y);
    }
    nurvex7::CContent& content() const { return *viewer->GetContent(); }

    /// Two nodes of 40 x 20 with an edge from the right side of the one to the left of the other.
    void add_a_and_b() {
        a = placed.add("a", {20, 20, 60, 40});
        b = placed.add("b", {120, 20, 160, 40});
        edge().SetCaption("ab");
    }
    nurvex7::Edge edge() {
        if (edges.empty()) {
            edges.push_back(placed.link(a, b, {{60, 30}, {120, 30}}));
        }
        return edges.front();
    }

    /// Runs a repaint pass and tells what it painted, like `[0,0,200,100] root a b ab`: the filled
    /// pieces, and the names of nodes and edges in the order in which they were drawn.
    std::string paint() {
        painter.take();
        control.ProcessPaint(&painter);
        std::string text;
        for (const std::string& line : painter.take()) {
            if (line.rfind("FillRect ", 0) == 0) {
                text += "[" + line.substr(9) + "] ";
            } else if (line.rfind("DrawString ", 0) == 0) {
                const std::size_t from = line.find('\'') + 1;
                text += line.substr(from, line.find('\'', from) - from) + " ";
            }
        }
        return text.empty() ? text : text.substr(0, text.size() - 1);
    }
    /// What a pass would paint, in a word: everything, a part, or nothing.
    std::string extent_of_paint() {
        const std::string text = paint();
        return text.empty() ? "nothing" : text.rfind("[0,0,200,100]", 0) == 0 ? "all" : text;
    }

    bool press(int x, int y, tamsel7::MouseButton button = tamsel7::MouseButton::LEFT) {
        return control.ProcessButtonDown(x, y, 0, button);
    }
    bool move(int x, int y) {
        return control.ProcessMouseMove(x, y, 0, tamsel7::MouseButton::LEFT);
    }
    bool release(int x, int y) {
        return control.ProcessButtonUp(x, y, 0, tamsel7::MouseButton::LEFT);
    }
    void click(int x, int y) {
        press(x, y);
        release(x, y);
    }
    void drag(const std::vector<tamsel7::point<int>>& places) {
        press(places.front().x, places.front().y);
        for (std::size_t i = 1; i < places.size(); ++i) {
            move(places[i].x, places[i].y);
            paint();
        }
        release(places.back().x, places.back().y);
    }
    std::string start() const {
        return text_of(viewer->GetStartX()) + "," + text_of(viewer->GetStartY());
    }
    /// What was noted since the last time, joined by bars.
    std::string notes() {
        std::string text;
        for (const std::string& note : handler.take()) {
            text += (text.empty() ? "" : " | ") + note;
        }
        return text;
    }

    /// How often the window was asked for something since the last time.
    int asked_for(const std::string& what) {
        int count = 0;
        for (const std::string& line : window.take()) {
            count += line.rfind(what, 0) == 0 ? 1 : 0;
        }
        return count;
    }

    void HandleChangeView(tamsel7::point<double> from, tamsel7::point<double> to) {
        views.push_back(text_of(from.x) + "," + text_of(from.y) + "," + text_of(to.x) + "," +
                        text_of(to.y));
    }

    PlacedGraph placed;
    StillLayout layout;
    NotingNodeHandler handler;
    NotingEdgeHandler edge_handler{handler.notes};
    RecordingPainter painter;
    FakeWindow window;
    brevolt7::CWindowControl control{window};
    nurvex7::CGraphViewer* viewer = nullptr;
    nurvex7::Node a = placed.root();
    nurvex7::Node b = placed.root();
    std::vector<nurvex7::Edge> edges;
    std::vector<std::string> views; ///< what OnChangeView told
};

} // namespace tests
