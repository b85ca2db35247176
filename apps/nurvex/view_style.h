#pragma once

#include "apps/nurvex/fold_handler.h"
#include "nurvex7/foundation/graph_ptr2.h"
#include "nurvex7/model/graph.h"
#include "nurvex7/platform/tamsel7/color.h"
#include "nurvex7/presentation/dummy_edge_handler.h"

#include <functional>
#include <vector>

namespace nurvex {

/// A node in the window: a caption between two fold ports.
class ViewNodeHandler : public FoldHandler {
public:
    using Folded = std::function<void(const nurvex7::Node&, const std::vector<VisibilityChange>&)>;

    Folded on_folded; ///< told of folds by a click; may be empty

    void Draw(nurvex7::Node node, tamsel7::IPainter* painter) override;
    /// The caption keeps its room beside the ports.
    tamsel7::size<double> GetSize(nurvex7::Node node) override;
    nurvex7::SizeAndOrigin GetSize(nurvex7::Node node, tamsel7::size<double> inner) override;

protected:
    void HandleFolded(const nurvex7::Node& node,
                      const std::vector<VisibilityChange>& changes) override;
};

/// An edge in the window: its tooltip tells its ends, and under the pointer it stands out.
class ViewEdgeHandler : public nurvex7::DummyEdgeHandler {
public:
    tamsel7::_color hover_color;

    void Draw(nurvex7::Edge edge, tamsel7::IPainter* painter) override;
    int HandleOnTooltip(nurvex7::Edge edge, nurvex7::CGraphTooltipEvent* event) override;
};

/// The looks of a graph in the window: handlers, and their colours, which follow the desktop.
class ViewStyle {
public:
    enum class Theme { LIGHT, DARK };

    explicit ViewStyle(Theme theme);

    /// Colours all that is dressed with this style anew; a repaint shows it.
    void SetTheme(Theme theme);
    tamsel7::_color GetBackground() const { return background; }

    /// Gives the nodes and edges of a graph the handlers of this style. They measure with the
    /// painter, which has to outlive the graph's use.
    void Dress(const nurvex7::graph_ptr2<nurvex7::Graph>& graph,
               tamsel7::IPainter* measuring_painter) const;

    /// Takes the handlers off again: they remember nodes, and a graph that goes must not keep them.
    void Undress(const nurvex7::graph_ptr2<nurvex7::Graph>& graph) const;

    void SetFolded(const ViewNodeHandler::Folded& told);

private:
    using NodeHandler = nurvex7::graph_ptr2<ViewNodeHandler>;

    const NodeHandler& cluster_handler(std::size_t depth) const;

    tamsel7::_color background;
    NodeHandler leaf;
    std::vector<NodeHandler> clusters; ///< by depth, from the outermost
    nurvex7::graph_ptr2<ViewEdgeHandler> edge;
};

} // namespace nurvex
