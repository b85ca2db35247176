#pragma once

#include "nurvex7/export.h"
#include "nurvex7/foundation/graph_ptr2.h"
#include "nurvex7/foundation/signal.h"
#include "nurvex7/model/fwd.h"
#include "nurvex7/platform/tamsel7/geometry.h"
#include "nurvex7/presentation/inode_handler.h"

namespace nurvex7 {

/// What shows a graph, as the overview and the application speak to it.
///
/// Space   graph
class NURVEX7_API IViewer {
public:
    /// The visible rectangle by its top left and bottom right corner: emitted at every renewal of
    /// the view, at every new place of the element, and at every repaint that changed the layout.
    corvane2::_internal::signal_t<tamsel7::point<double>, tamsel7::point<double>> OnChangeView;

    /// Moves the view so that it begins at a coordinate.
    virtual void SetStartX(double x) = 0;
    virtual void SetStartY(double y) = 0;
    /// Pixels for one unit of the graph; the view's top left corner stays. A value that is not
    /// above 0, or not finite, is ignored, here and in the next two.
    virtual void SetScale(double pixels) = 0;
    /// Sets the scale so that so many units fit into the width, or the height.
    virtual void SetViewWidth(double width) = 0;
    virtual void SetViewHeight(double height) = 0;
    /// Shows another graph, laid out anew and centred; an empty handle stands for an empty graph.
    virtual void SetGraph(graph_ptr2<Graph> graph) = 0;
    virtual void SetDefaultNodeHandler(graph_ptr2<INodeHandler> handler) = 0;
    virtual double GetScale() const = 0;
    virtual graph_ptr2<Graph> GetGraph() const = 0;
    virtual double GetStartX() const = 0;
    virtual double GetStartY() const = 0;
    /// Says that something changed: tells OnChangeView and repaints soon, everything where
    /// `invalidate` is true. Without it, only what is known to have changed.
    virtual void RenewView(bool invalidate) = 0;
    /// Runs the layout work that is queued. True where there was some.
    virtual bool RecalculateLayout() = 0;
    virtual ~IViewer();
};

} // namespace nurvex7
