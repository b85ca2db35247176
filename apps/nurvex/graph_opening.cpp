#include "apps/nurvex/graph_opening.h"

#include "apps/nurvex/failure.h"
#include "apps/nurvex/graph_file.h"
#include "nurvex7/model/folding.h"
#include "nurvex7/model/queries.h"
#include "nurvex7/platform/tamsel7/painter.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QFontMetrics>
#include <QLabel>
#include <QProgressDialog>

#include <algorithm>
#include <cstddef>

namespace nurvex {

using namespace nurvex7;

namespace {

constexpr int DIALOGUE_AFTER = 500; ///< milliseconds
constexpr int DIALOGUE_WIDTH = 360; ///< pixel
constexpr int NAME_WIDTH = 260;     ///< of the file in it, pixel
constexpr int PAUSE_EVERY = 40;     ///< milliseconds
constexpr std::size_t FAULTS_SHOWN = 8;

/// Lets the dialogue live while something takes long.
class Waiting {
public:
    explicit Waiting(QWidget* window)
        : dialogue(QString(), QStringLiteral("Cancel"), 0, WHOLE, window) {
        dialogue.setWindowTitle(QStringLiteral("nurvex"));
        auto* const told = new QLabel(&dialogue);
        told->setTextFormat(Qt::PlainText); // a file may be called what looks like markup
        dialogue.setLabel(told);
        dialogue.setWindowModality(Qt::ApplicationModal);
        dialogue.setMinimumDuration(DIALOGUE_AFTER);
        dialogue.setMinimumWidth(DIALOGUE_WIDTH);
        dialogue.setAutoReset(false);
        dialogue.setValue(0);
        clock.start();
    }

    /// What is done from now on, and up to where it fills the bar.
    void Begin(const QString& what, double until) {
        dialogue.setLabelText(what);
        begin = end;
        end = until;
        show(0);
    }

    /// `part` of the stage is done. Not more often shown than the eye can follow.
    void Pause(double part) {
        if (clock.elapsed() >= PAUSE_EVERY) {
            show(part);
        }
    }

private:
    static constexpr int WHOLE = 1000;

    void show(double part) {
        clock.restart();
        const double all = begin + std::min(1.0, part) * (end - begin);
        dialogue.setValue(std::min(WHOLE - 1, static_cast<int>(all * WHOLE)));
        // Until the dialogue is up, nothing keeps input from the window.
        QApplication::processEvents(dialogue.isVisible() ? QEventLoop::AllEvents
                                                         : QEventLoop::ExcludeUserInputEvents);
        if (dialogue.wasCanceled()) {
            throw OpeningCancelled();
        }
    }

    QProgressDialog dialogue;
    QElapsedTimer clock;
    double begin = 0;
    double end = 0;
};

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
void prepare_first_paint(const graph_ptr2<Graph>& graph) {
    MarkDrawnIn(graph);
    const auto corner = graph->GetRoot().GetPosition();
    graph->HitNodeTest(corner.x, corner.y, corner.x, corner.y);
    graph->HitEdgeTest(corner.x, corner.y, corner.x, corner.y);
}

} // namespace

graph_ptr2<ViewLayout> LayOut(const graph_ptr2<Graph>& graph, const Spacing& spacing,
                              tamsel7::IPainter* painter, QWidget* window) {
    Waiting waiting(window);
    waiting.Begin(QStringLiteral("Laying out\u2026"), 1);
    return lay_out(graph, spacing, painter, waiting);
}

OpenedGraph OpenGraphFile(const QString& path, const ViewStyle& style, const Spacing& spacing,
                          tamsel7::IPainter* painter, QWidget* window) {
    Waiting waiting(window);
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
    prepare_first_paint(opened.graph);
    return opened;
}

} // namespace nurvex
