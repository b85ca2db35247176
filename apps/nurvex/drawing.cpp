#include "apps/nurvex/drawing.h"

#include "nurvex7/model/folding.h"
#include "nurvex7/model/queries.h"

#include <QImage>

#include <algorithm>
#include <chrono>
#include <cmath>

namespace nurvex {

using namespace nurvex7;
using nurvex7::qt::QtPainter;
using tamsel7::IPainter;

namespace {

constexpr double MARGIN = 16;

/// The smallest rectangle around everything that it is told of.
class Bounds {
public:
    void Add(double left, double top, double right, double bottom) {
        if (empty) {
            area = {left, top, right, bottom};
            empty = false;
            return;
        }
        area = {std::min(area.left, left), std::min(area.top, top), std::max(area.right, right),
                std::max(area.bottom, bottom)};
    }
    tamsel7::rectangle<double> Get() const { return area; }

private:
    tamsel7::rectangle<double> area;
    bool empty = true;
};

template <typename Item>
std::unordered_set<int> ids_of(const std::vector<Item>& items) {
    std::unordered_set<int> ids;
    for (const Item& item : items) {
        ids.insert(item.GetID());
    }
    return ids;
}

template <typename Item>
std::unordered_set<int> ids_without(const std::vector<Item>& items,
                                    const std::unordered_set<int>& left_out) {
    std::unordered_set<int> ids = ids_of(items);
    for (const int id : left_out) {
        ids.erase(id);
    }
    return ids;
}

bool holds(const std::vector<Node>& owners, const Node& node) {
    return std::find(owners.begin(), owners.end(), node) != owners.end();
}

bool lies_in_one_of(const Node& node, const std::vector<Node>& owners) {
    for (Node at = node; !IsRoot(at);) {
        at = at.GetOwner();
        if (holds(owners, at)) {
            return true;
        }
    }
    return false;
}

} // namespace

Drawing::Drawing(graph_ptr2<Graph> given_graph, const Spacing& spacing, Theme theme)
    : layout(std::make_unique<SeriesLayout>(spacing.level_gap, spacing.node_gap, spacing.edge_gap,
                                            spacing.edge_margin)),
      graph(given_graph), style(theme), typesetter(std::make_shared<nurvex7::qt::Typesetter>()) {
    // A layout of its own: the shared one has spacing of its own.
    graph->SetDefaultLayout(graph_ptr2<ILayout>(layout.get(), /*owns=*/false));
    lay_out();
    collect();
    find_page();
}

Drawing::~Drawing() {
    graph->SetDefaultLayout(GetDefaultLayout());
}

void Drawing::lay_out() {
    // Sizes do not depend on the surface, so any will do to measure with.
    QImage surface(1, 1, QImage::Format_RGB32);
    QtPainter painter(surface, typesetter);
    painter.BeginPaint(IPainter::StdSettings::STANDARD);
    painter.SetFont(CaptionFont());
    style.Dress(graph, &painter);
    graph->RecalculateLayout(&painter);
    painter.EndPaint();
    style.Dress(graph, nullptr);
    MarkDrawnIn(graph);
}

Drawing::Passage Drawing::Follow(const StepEffect& effect) {
    for (const auto& [node, size] : effect.sizes) {
        style.SetSize(node, size);
    }
    Passage passage;
    queue(effect, passage);
    const std::unordered_set<int> nodes_before = ids_of(nodes);
    const std::unordered_set<int> edges_before = ids_of(edges);
    const auto started = std::chrono::steady_clock::now();
    lay_out();
    const std::chrono::duration<double, std::milli> time =
        std::chrono::steady_clock::now() - started;
    passage.milliseconds = time.count();
    collect();
    accented_nodes = ids_without(nodes, nodes_before);
    accented_edges = ids_without(edges, edges_before);
    find_page();
    return passage;
}

// Where what is new cannot be fitted in, that owner is laid out from nothing, which serves all that
// it owns too. The others are updated, each together with what it owns, so that only the outermost
// are queued. Every Make runs before the first Update, and both before the sizes of the owners
// around them follow.
void Drawing::queue(const StepEffect& effect, Passage& passage) {
    std::vector<Node> unfit;
    for (const Node& owner : effect.owners) {
        const UpdateOutlook outlook = layout->LookAheadAlone(owner);
        if (outlook == UpdateOutlook::NEVER_LAID_OUT || outlook == UpdateOutlook::DOES_NOT_FIT) {
            unfit.push_back(owner);
        }
    }
    for (Node owner : effect.owners) {
        if (lies_in_one_of(owner, unfit)) {
            continue;
        }
        if (holds(unfit, owner)) {
            owner.MakeLayout();
            passage.made.push_back(owner);
        } else if (!lies_in_one_of(owner, effect.owners)) {
            owner.UpdateLayout();
            passage.updated.push_back(owner);
        }
    }
    for (auto [node, size] : effect.sizes) {
        node.ResizeSelf();
    }
}

void Drawing::DropLayout() {
    graph->SetDefaultLayout(GetDefaultLayout());
    layout.reset();
}

void Drawing::collect() {
    nodes.clear();
    edges.clear();
    ForEachNodeIn(
        graph->GetRoot(),
        [this](const Node& node) {
            if (!IsFlagSet(node, NODE_DRAWN)) {
                return;
            }
            nodes.push_back(node);
            EdgeSet out = node.GetEdgesOut();
            for (int i = 0; i < out.GetCount(); ++i) {
                const Edge edge = out.GetItem(i);
                if (IsFlagSet(edge, EDGE_DRAWN)) {
                    edges.push_back(edge);
                }
            }
        },
        /*post_order=*/false, /*include_self=*/false);
}

bool Drawing::IsAccented(const Node& node) const {
    return accented_nodes.count(node.GetID()) != 0;
}

void Drawing::find_page() {
    Bounds bounds;
    for (const Node& node : nodes) {
        const auto rect = MakeDRect(node.GetPosition(), node.GetSize());
        bounds.Add(rect.left, rect.top, rect.right, rect.bottom);
    }
    for (const Edge& edge : edges) {
        NodeSet route = edge.GetBreakNodes();
        for (int i = 0; i < route.GetCount(); ++i) {
            const auto at = route.GetItem(i).GetPosition();
            bounds.Add(at.x, at.y, at.x, at.y);
        }
    }
    const auto area = bounds.Get();
    const double left = std::floor(area.left - MARGIN);
    const double top = std::floor(area.top - MARGIN);
    page = QRectF(left, top, std::ceil(area.right + MARGIN - left),
                  std::ceil(area.bottom + MARGIN - top));
}

void Drawing::Paint(QtPainter& painter) const {
    BeginPage(painter, page, style.GetBackground());
    painter.SetFont(CaptionFont());
    for (const Node& node : nodes) {
        style.Draw(node, &painter, IsAccented(node));
    }
    for (const Edge& edge : edges) {
        style.Draw(edge, &painter, accented_edges.count(edge.GetID()) != 0);
    }
    painter.EndPaint();
}

} // namespace nurvex
