#pragma once

#include "nurvex7/export.h"
#include "nurvex7/foundation/signal.h"
#include "nurvex7/model/node.h"

namespace tamsel7 {
class IPainter;
}

namespace nurvex7 {

/// A directed compound graph: a tree of ownership with edges between any two nodes of it, and the
/// visual store of its drawing. Graphs travel in graph_ptr2<Graph>.
///
/// Duty    one thread at a time for all graphs that are built or laid out: ids are process-wide
class NURVEX7_API Graph : public corvane2::_internal::subscriber_base_t {
public:
    /// An empty graph with its root queued for a full layout. A null storage stands for a
    /// DefaultStorage.
    explicit Graph(graph_ptr<IGraphStorage> given_storage = graph_ptr<IGraphStorage>());
    /// Deletes all nodes and lets go of the default layout and the default node handler, so that
    /// the counted cycles between owners and owned, and between what remembers nodes and the store
    /// of these nodes, are broken.
    ~Graph() override;
    Graph(const Graph&) = delete;
    Graph& operator=(const Graph&) = delete;

    Node GetRoot() const;
    /// Puts another storage in place. Keeps: records and queues stay as they are.
    void SetStorage(graph_ptr<IGraphStorage> given_storage);

    /// Serves all nodes without a layout of their own, until the graph goes. Give each graph a
    /// layout of its own where two graphs are laid out in turn.
    void SetDefaultLayout(graph_ptr2<ILayout> layout);
    void SetDefaultNodeHandler(graph_ptr2<INodeHandler> handler);
    void SetDefaultEdgeHandler(graph_ptr2<IEdgeHandler> handler);
    graph_ptr2<INodeHandler> GetDefaultNodeHandler();

    /// The nodes that a rectangle cuts or covers, and the innermost clusters that surround it.
    ///
    /// Space   graph; touching a border counts as a hit
    /// Order   nodes cut or covered by ascending id, then the surrounding clusters likewise
    /// Duty    left <= right and top <= bottom
    NodeSet HitNodeTest(double left, double top, double right, double bottom);
    /// The edges whose route meets a rectangle.
    ///
    /// Space   graph; no tolerance is added
    /// Order   ascending id
    EdgeSet HitEdgeTest(double left, double top, double right, double bottom);

    /// Runs the queued layout work, inside a paint bracket of the painter, and empties the queues:
    /// first every Make, then every Update, then every Resize.
    ///
    /// False where nothing was queued; the painter is not touched then.
    bool RecalculateLayout(tamsel7::IPainter* painter);

private:
    graph_ptr<IGraphStorage> storage;
    graph_ptr<IGraphVis> vis;
};

} // namespace nurvex7
