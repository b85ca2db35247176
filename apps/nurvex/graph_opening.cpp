#include "apps/nurvex/graph_opening.h"

#include "apps/nurvex/failure.h"
#include "apps/nurvex/graph_file.h"
#include "apps/nurvex/waiting.h"
#include "nurvex7/model/folding.h"
#include "nurvex7/model/queries.h"
#include "nurvex7/platform/tamsel7/painter.h"

#include <QFileInfo>
#include <QFontMetrics>
#include <QWidget>

#include <algorithm>
#include <cstddef>

namespace nurvex {

using namespace nurvex7;

namespace {

constexpr int NAME_WIDTH = 260; ///< of the file in the dialogue, pixel
constexpr std::size_t FAULTS_SHOWN = 8;

int count_owners(const Graph& graph) {
    int owners = 1;
    ForEachNodeIn(
        graph.GetRoot(),
        [&owners](const Node& node) { owners += node.GetOwned().GetCount() > 0 ? 1 : 0; },
        /*post_order=*/false, /*include_self=*/false);
    return owners;
}

void refuse_faulty(const GraphFile& file, Waiting& waiting) {
    const std::vector<Fault> faults =
        file.FindFaults([&waiting](double part) { waiting.Pause(part); });
    if (faults.empty()) {
        return;
    }
    std::string text = file.GetName() + " is no sound text graph.\n";
    for (std::size_t i = 0; i < faults.size() && i < FAULTS_SHOWN; ++i) {
        text += "\nLine " + std::to_string(faults[i].line) + ": " + faults[i].message;
    }
    if (faults.size() > FAULTS_SHOWN) {
        text += "\n\u2026 and more; \"nurvex check\" lists them all.";
    }
    throw Failure(EXIT_INPUT, text + "\n\nMend these lines and open the file again.");
}

graph_ptr2<ViewLayout> lay_out(const graph_ptr2<Graph>& graph, const Spacing& spacing,
                               tamsel7::IPainter* painter, Waiting& waiting) {
    const graph_ptr2<ViewLayout> layout(new ViewLayout(spacing), /*owns=*/true);
    const double steps = static_cast<double>(count_owners(*graph)) * layout->CountSteps();
    layout->SetPause([&waiting, steps](int done) { waiting.Pause(done / steps); });
    graph->SetDefaultLayout(layout);
    graph->GetRoot().MakeLayout();
    try {
        graph->RecalculateLayout(painter);
    } catch (...) {
        if (painter->paint_started) {
            painter->EndPaint();
        }
        layout->SetPause({});
        throw;
    }
    layout->SetPause({});
    return layout;
}

/// The first repaint of a large graph takes seconds for what later ones find done. Here the
/// dialogue still tells why nothing is to be seen.
void prepare_first_paint(const graph_ptr2<Graph>& graph, Waiting& waiting) {
    MarkDrawnIn(graph);
    waiting.Pause(0.3);
    const auto corner = graph->GetRoot().GetPosition();
    graph->HitNodeTest(corner.x, corner.y, corner.x, corner.y);
    waiting.Pause(0.5);
    graph->HitEdgeTest(corner.x, corner.y, corner.x, corner.y);
    waiting.Pause(1);
}

} // namespace

graph_ptr2<ViewLayout> LayOut(const graph_ptr2<Graph>& graph, const Spacing& spacing,
                              tamsel7::IPainter* painter, QWidget* window) {
    Waiting waiting(window, Waiting::Offer::CANCEL);
    waiting.Begin(QStringLiteral("Laying out\u2026"), 1);
    return lay_out(graph, spacing, painter, waiting);
}

OpenedGraph OpenGraphFile(const QString& path, const ViewStyle& style, const Spacing& spacing,
                          tamsel7::IPainter* painter, QWidget* window) {
    Waiting waiting(window, Waiting::Offer::CANCEL);
    const QString name =
        window->fontMetrics().elidedText(QFileInfo(path).fileName(), Qt::ElideMiddle, NAME_WIDTH);
    waiting.Begin(QStringLiteral("Checking %1\u2026").arg(name), 0.1);
    const GraphFile file(path.toStdString());
    refuse_faulty(file, waiting);
    OpenedGraph opened;
    waiting.Begin(QStringLiteral("Reading %1\u2026").arg(name), 0.3);
    opened.graph = file.Load([&waiting](double part) { waiting.Pause(part); });
    waiting.Begin(QStringLiteral("Laying out %1\u2026").arg(name), 0.9);
    style.Dress(opened.graph, painter);
    opened.layout = lay_out(opened.graph, spacing, painter, waiting);
    opened.milliseconds = opened.layout->TakeMilliseconds();
    waiting.Begin(QStringLiteral("Preparing the view of %1\u2026").arg(name), 1);
    prepare_first_paint(opened.graph, waiting);
    return opened;
}

} // namespace nurvex
