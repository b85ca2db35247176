#pragma once

#include "nurvex7/model/folding.h"
#include "nurvex7/model/moving.h"
#include "nurvex7/platform/brevolt7/window.h"
#include "nurvex7/platform/brevolt7/window_control.h"
#include "nurvex7/platform/tamsel7/painter.h"
#include "nurvex7/presentation/handler_result.h"
#include "nurvex7/viewer/graph_viewer.h"

#include <string>
#include <utility>

#include "families.h"

/// A viewer without a screen: what the library does of a frame, and nothing of what a host does.
namespace stage {

/// Counts what it is asked to draw.
class CountingPainter : public tamsel7::IPainter {
public:
    long drawn = 0; ///< outlines, lines, arrow heads and texts
    long fills = 0;
    double filled = 0; ///< the area of the fills

    void BeginPaint(StdSettings) override { paint_started = true; }
    void EndPaint() override { paint_started = false; }
    void SetCoordSystem(MapMode given_mode, CoordInfo* given) override {
        mode = given_mode;
        info = *given;
    }
    void GetCoordSystem(MapMode& asked_mode, CoordInfo* asked) override {
        asked_mode = mode;
        *asked = info;
    }
    void SetClipRect(double, double, double, double, bool) override {}
    void CancelClip() override {}
    tamsel7::rectangle<int> GetDrawArea() override { return {}; }
    void SetPen(const tamsel7::pen&) override {}
    void SetBrush(const tamsel7::brush&) override {}
    void SetFont(const tamsel7::font&) override {}
    void SetTextColor(const tamsel7::_color&) override {}
    void MoveTo(double, double) override {}
    void LineTo(double, double) override { ++drawn; }
    void BeginPlot(PlotType) override {}
    void Vertex(double, double) override {}
    void EndPlot() override { ++drawn; }
    void SetArrowSize(tamsel7::size<int>) override {}
    void Rectangle(double, double, double, double) override { ++drawn; }
    void RoundRect(double, double, double, double, double, double) override { ++drawn; }
    void FillRect(double left, double top, double right, double bottom) override {
        ++fills;
        filled += (right - left) * (bottom - top);
    }
    void GradientFill(double, double, double, double, const tamsel7::_color&,
                      const tamsel7::_color&, unsigned long, GradientDirection) override {}
    void DrawFocusFrame(double, double, double, double) override {}
    void DrawString(const tamsel7::rectangle<double>&, const std::string&, int, int) override {
        ++drawn;
    }
    tamsel7::size<double> GetTextSize(const std::string& text, const tamsel7::font*, int, bool,
                                      bool) override {
        return {6.0 * static_cast<double>(text.size()), 10};
    }

private:
    MapMode mode = MapMode::MAP_DEVICE;
    CoordInfo info;
};

/// Keeps its pixels by counting them as moved.
class QuietWindow : public brevolt7::IWindow {
public:
    tamsel7::IPainter* GetPainter() override { return &measuring; }
    void ScheduleRepaint() override {}
    bool ScrollPixels(const tamsel7::rectangle<int>&, int, int) override { return true; }
    void GrabPointer(bool) override {}
    void SetCursor(brevolt7::CursorShape) override {}
    void TakeFocus() override {}
    void ShowTooltip(const tamsel7::CTooltipEvent&) override {}
    void HideTooltip() override {}
    void StartTimer(int, int) override {}
    void StopTimer(int) override {}
    void SetClipboard(const std::string&, const tamsel7::rectangle<int>&) override {}

private:
    CountingPainter measuring;
};

/// A box with its id; a click folds and unfolds what the node leads to.
class FoldingHandler : public families::FixedSizeHandler {
public:
    long nodes = 0; ///< drawn

    void Draw(nurvex7::Node node, tamsel7::IPainter* painter) override {
        if (!nurvex7::IsFlagSet(node, nurvex7::NODE_DRAWN)) {
            return;
        }
        ++nodes;
        const tamsel7::rectangle<double> r = nurvex7::MakeDRect(node.GetPosition(), node.GetSize());
        painter->Rectangle(r.left, r.top, r.right, r.bottom);
        painter->DrawString(r, node.GetCaption(), tamsel7::IPainter::FORMAT_CENTRED, -1);
    }
    int HandleClick(nurvex7::Node node, double, double, int, tamsel7::MouseButton) override {
        if (folded) {
            nurvex7::Unfold(node, nurvex7::FOLD_CHILDREN);
        } else {
            nurvex7::Fold(node, nurvex7::FOLD_CHILDREN);
        }
        folded = !folded;
        return nurvex7::HANDLED_REPAINT_ALL;
    }

private:
    bool folded = false;
};

/// A window of 800 x 600 pixels that looks at a graph from near, at a node with a fan of 20 others.
class Viewer {
public:
    static constexpr int WIDTH = 800;
    static constexpr int HEIGHT = 600;

    explicit Viewer(families::Bench given)
        : bench(std::move(given)), control(window), fan(families::add_fan(*bench.graph)) {
        bench.graph->SetDefaultNodeHandler(
            nurvex7::graph_ptr2<nurvex7::INodeHandler>(&handler, /*owns=*/false));
        control.tooltip_delay = 0;
        viewer = new nurvex7::CGraphViewer(control.GetRoot(), nurvex7::graph_ptr2<nurvex7::Graph>(),
                                           /*need_coord_system=*/true);
        viewer->ScrollbarsEnable(false);
        control.ProcessResize({WIDTH, HEIGHT});
        viewer->SetGraph(bench.graph);
        const tamsel7::point<double> at = fan.GetPosition();
        viewer->SetStartX(at.x - WIDTH / 2.0);
        viewer->SetStartY(at.y - HEIGHT / 2.0);
        Paint();
    }

    void Paint() { control.ProcessPaint(&painter); }
    /// A frame in which everything that shows is painted.
    void PaintAll() {
        viewer->RenewView(true);
        Paint();
    }
    /// The press and the release on the node with the fan, and the frame that shows what came of
    /// it.
    void ClickFan() {
        const auto at = viewer->GetContent()->ConvertL2P(fan.GetPosition());
        control.ProcessButtonDown(at.x + 5, at.y + 5, 0, tamsel7::MouseButton::LEFT);
        control.ProcessButtonUp(at.x + 5, at.y + 5, 0, tamsel7::MouseButton::LEFT);
        Paint();
    }

    families::Bench bench;
    FoldingHandler handler;
    CountingPainter painter;
    QuietWindow window;
    brevolt7::CWindowControl control;
    nurvex7::Node fan;
    nurvex7::CGraphViewer* viewer = nullptr; ///< the control's
};

} // namespace stage
