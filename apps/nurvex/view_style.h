#pragma once

#include "apps/nurvex/palette.h"
#include "apps/nurvex/view_handlers.h"
#include "nurvex7/foundation/graph_ptr2.h"
#include "nurvex7/model/graph.h"
#include "nurvex7/platform/tamsel7/color.h"

#include <vector>

namespace nurvex {

/// The looks of a graph in the window: handlers, and their colours, which follow the desktop.
class ViewStyle {
public:
    explicit ViewStyle(Theme theme);

    /// Colours all that is dressed with this style anew; a repaint shows it.
    void SetTheme(Theme theme);
    tamsel7::_color GetBackground() const { return background; }

    /// Gives the nodes and edges of a graph the handlers of this style. They measure with the
    /// painter, which has to outlive the graph's use.
    void Dress(const nurvex7::graph_ptr2<nurvex7::Graph>& graph,
               tamsel7::IPainter* measuring_painter) const;

    /// Takes the handlers off again, and has them forget the nodes of the graph: neither keeps the
    /// other.
    void Undress(const nurvex7::graph_ptr2<nurvex7::Graph>& graph) const;

    /// See ViewNodeHandler::ShowPointer.
    void ShowPointer(bool show) const;

    void SetFolded(const ViewNodeHandler::Folded& told);

private:
    using NodeHandler = nurvex7::graph_ptr2<ViewNodeHandler>;

    tamsel7::_color background;
    NodeHandler leaf;
    std::vector<NodeHandler> clusters; ///< by depth, from the outermost
    nurvex7::graph_ptr2<ViewEdgeHandler> edge;
};

} // namespace nurvex
