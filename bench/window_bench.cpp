// A click that folds or unfolds twenty nodes in the window of the application: from the release of
// the button until the view is painted, and until the overview is, too. Beside it stands what one
// full layout of the same graph takes on plain arrays, which tells how fast the machine is.
//
//     nurvex7_window_bench [NODES ...]

#include "apps/nurvex/view_window.h"
#include "bench/families.h"
#include "bench/limit/flat_layout.h"
#include "bench/measured_runs.h"
#include "nurvex7/model/folding.h"

#include <QApplication>
#include <QMouseEvent>
#include <QSettings>
#include <QTemporaryDir>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace nurvex7;
using measured_runs::median_of;
using measured_runs::milliseconds_of;

constexpr int CLICKS = 12;

/// A graph as a text, and the node in it that is to be clicked.
struct Written {
    std::string file;
    std::string fan; ///< the caption
};

Written write_graph(const std::string& folder, const families::Bench& bench) {
    const int fan = families::add_fan(*bench.graph).GetID();
    Written written{folder + "/graph.txt", "n" + std::to_string(fan)};
    std::ofstream out(written.file);
    out << "graph\n[nodes]\n";
    NodeSet nodes = bench.graph->GetRoot().GetOwned();
    for (int i = 0; i < nodes.GetCount(); ++i) {
        const int id = nodes.GetItem(i).GetID();
        out << id << " \"n" << id << "\" 0 0\n";
    }
    out << "[edges]\n";
    for (int i = 0; i < nodes.GetCount(); ++i) {
        EdgeSet edges = nodes.GetItem(i).GetEdgesOut();
        for (int j = 0; j < edges.GetCount(); ++j) {
            out << edges.GetItem(j).From().GetID() << ' ' << edges.GetItem(j).To().GetID()
                << " \"\"\n";
        }
    }
    return written;
}

Node find_node(const Node& root, const std::string& caption) {
    NodeSet nodes = root.GetOwned();
    for (int i = 0; i < nodes.GetCount(); ++i) {
        if (nodes.GetItem(i).GetCaption() == caption) {
            return nodes.GetItem(i);
        }
    }
    throw std::runtime_error("there is no node " + caption);
}

/// With the sizes that the nodes have in the window.
limit::FlatGraph flat_copy_of(const Node& root) {
    limit::FlatGraph flat;
    IdMap<limit::index_t> places;
    NodeSet nodes = root.GetOwned();
    for (int i = 0; i < nodes.GetCount(); ++i) {
        const Node node = nodes.GetItem(i);
        places[node.GetID()] = flat.GetCount();
        flat.ids.push_back(node.GetID());
        flat.widths.push_back(node.GetSize().width);
        flat.heights.push_back(node.GetSize().height);
    }
    for (int i = 0; i < nodes.GetCount(); ++i) {
        EdgeSet edges = nodes.GetItem(i).GetEdgesOut();
        for (int j = 0; j < edges.GetCount(); ++j) {
            flat.edges.push_back(
                {places[edges.GetItem(j).From().GetID()], places[edges.GetItem(j).To().GetID()]});
        }
    }
    return flat;
}

double bare_work_of(const limit::FlatGraph& graph) {
    std::vector<double> times;
    for (int i = 0; i < 5; ++i) {
        limit::FlatLayout layout(graph);
        times.push_back(milliseconds_of([&] { layout.Run(); }));
    }
    return median_of(times);
}

class Clicks {
public:
    Clicks(nurvex::GraphView& of, const Node& clicked) : view(of), node(clicked) {}

    struct Times {
        std::vector<double> view;
        std::vector<double> all;
    };
    Times folds;
    Times unfolds;

    void Click() {
        const QPoint at = port();
        send(QEvent::MouseButtonPress, at, Qt::LeftButton);
        settle();
        const bool folds_now = !is_folded();
        double until_view = 0;
        const double until_all = milliseconds_of([&] {
            until_view = milliseconds_of([&] {
                send(QEvent::MouseButtonRelease, at, Qt::NoButton);
                QApplication::sendPostedEvents();
                view.grab();
            });
            settle();
        });
        if (folds_now != is_folded()) {
            std::fprintf(stderr, "the click has folded nothing\n");
            std::exit(1);
        }
        Times& times = folds_now ? folds : unfolds;
        times.view.push_back(until_view);
        times.all.push_back(until_all);
    }

    static void settle() {
        for (int i = 0; i < 5; ++i) {
            QApplication::sendPostedEvents();
            QApplication::processEvents();
        }
    }

private:
    bool is_folded() const {
        NodeSet children = Node(node).GetChildren();
        return IsFlagSet(children.GetItem(children.GetCount() - 1), NODE_HIDDEN);
    }
    /// The middle of the right port.
    QPoint port() const {
        const auto corner = node.GetPosition();
        const auto size = node.GetSize();
        const double scale = view.GetScale();
        const double x = corner.x + size.width - size.height / 2 - view.GetViewer().GetStartX();
        const double y = corner.y + size.height / 2 - view.GetViewer().GetStartY();
        return (QPointF(x, y) * scale).toPoint();
    }
    void send(QEvent::Type type, QPoint at, Qt::MouseButtons held) {
        QMouseEvent event(type, at, view.mapToGlobal(at), Qt::LeftButton, held, {});
        QApplication::sendEvent(&view, &event);
    }

    nurvex::GraphView& view;
    Node node;
};

void measure(const char* name, const families::Bench& bench, std::size_t count) {
    const QTemporaryDir folder;
    const Written graph = write_graph(folder.path().toStdString(), bench);
    nurvex::ViewWindow window;
    window.resize(900, 600);
    window.show();
    if (!window.Open(QString::fromStdString(graph.file))) {
        std::exit(1);
    }
    const graph_ptr2<Graph> shown = window.GetView().GetGraph();
    const Node fan = find_node(shown->GetRoot(), graph.fan);
    window.GetView().ShowActualSize();
    window.GetView().CentreOn(fan);
    Clicks::settle();
    Clicks clicks(window.GetView(), fan);
    for (int i = 0; i < CLICKS; ++i) {
        clicks.Click();
    }
    std::printf("| %s | %zu | %.1f | %.1f | %.1f | %.1f | %.1f |\n", name, count,
                bare_work_of(flat_copy_of(shown->GetRoot())), median_of(clicks.folds.view),
                median_of(clicks.folds.all), median_of(clicks.unfolds.view),
                median_of(clicks.unfolds.all));
}

} // namespace

int main(int count, char** words) {
    if (std::getenv("DISPLAY") == nullptr && std::getenv("WAYLAND_DISPLAY") == nullptr) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QApplication app(count, words);
    const QTemporaryDir settings; // those of the user are left alone
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());
    std::vector<std::size_t> sizes;
    for (int i = 1; i < count; ++i) {
        sizes.push_back(static_cast<std::size_t>(std::max(100, std::atoi(words[i]))));
    }
    if (sizes.empty()) {
        sizes = {1000, 10000, 100000};
    }
    std::printf("| graph | nodes | bare work, ms | fold, view | and overview | unfold, view | and "
                "overview |\n| --- | ---: | ---: | ---: | ---: | ---: | ---: |\n");
    for (const std::size_t size : sizes) {
        measure("mesh", families::mesh(size), size);
        measure("sparse", families::sparse(size), size);
        measure("tree", families::tree(size), size);
    }
}
