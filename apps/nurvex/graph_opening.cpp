#include "apps/nurvex/graph_opening.h"

#include "apps/nurvex/failure.h"
#include "apps/nurvex/graph_file.h"
#include "nurvex7/model/queries.h"
#include "nurvex7/platform/tamsel7/painter.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QProgressDialog>

#include <algorithm>
#include <cstddef>

namespace nurvex {

using namespace nurvex7;

namespace {

constexpr int DIALOGUE_AFTER = 500; ///< milliseconds
constexpr int PAUSE_EVERY = 40;     ///< milliseconds
constexpr std::size_t FAULTS_SHOWN = 8;

/// Lets the dialogue live while something takes long.
class Waiting {
public:
    Waiting(const QString& what, int parts, QWidget* window)
        : dialogue(what, QStringLiteral("Cancel"), 0, parts, window) {
        dialogue.setWindowModality(Qt::ApplicationModal);
        dialogue.setMinimumDuration(DIALOGUE_AFTER);
        dialogue.setValue(0);
        clock.start();
    }

    void Pause(int parts_done) {
        if (clock.elapsed() < PAUSE_EVERY) {
            return;
        }
        clock.restart();
        dialogue.setValue(std::min(parts_done, dialogue.maximum() - 1));
        // Until the dialogue is up, nothing keeps input from the window.
        QApplication::processEvents(dialogue.isVisible() ? QEventLoop::AllEvents
                                                         : QEventLoop::ExcludeUserInputEvents);
        if (dialogue.wasCanceled()) {
            throw OpeningCancelled();
        }
    }

private:
    QProgressDialog dialogue;
    QElapsedTimer clock;
};

int count_owners(const Graph& graph) {
    int owners = 1;
    ForEachNodeIn(
        graph.GetRoot(),
        [&owners](const Node& node) { owners += node.GetOwned().GetCount() > 0 ? 1 : 0; },
        /*post_order=*/false, /*include_self=*/false);
    return owners;
}

void refuse_faulty(const GraphFile& file) {
    const std::vector<Fault> faults = file.FindFaults();
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

} // namespace

graph_ptr2<ViewLayout> LayOut(const graph_ptr2<Graph>& graph, const Spacing& spacing,
                              tamsel7::IPainter* painter, QWidget* window) {
    const graph_ptr2<ViewLayout> layout(new ViewLayout(spacing), /*owns=*/true);
    Waiting waiting(QStringLiteral("Laying out\u2026"), count_owners(*graph), window);
    layout->SetPause([&waiting](int owners_done) { waiting.Pause(owners_done); });
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

OpenedGraph OpenGraphFile(const QString& path, const ViewStyle& style, const Spacing& spacing,
                          tamsel7::IPainter* painter, QWidget* window) {
    const GraphFile file(path.toStdString());
    refuse_faulty(file);
    OpenedGraph opened;
    opened.graph = file.Load();
    style.Dress(opened.graph, painter);
    opened.layout = LayOut(opened.graph, spacing, painter, window);
    opened.milliseconds = opened.layout->TakeMilliseconds();
    return opened;
}

} // namespace nurvex
