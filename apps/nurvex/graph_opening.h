#pragma once

#include "apps/nurvex/spacing.h"
#include "apps/nurvex/view_layout.h"
#include "apps/nurvex/view_style.h"

#include <QString>
#include <QWidget>

namespace nurvex {

/// A graph that is ready to be shown.
struct OpenedGraph {
    nurvex7::graph_ptr2<nurvex7::Graph> graph;
    nurvex7::graph_ptr2<ViewLayout> layout; ///< the graph's own
    double milliseconds = 0;                ///< of the layout
};

/// Reads, checks, dresses and lays out a text graph, all in a fresh graph. A dialogue tells the
/// progress where that takes long, and offers to cancel.
///
/// Errors  a Failure that names the file and its first faulty lines; Cancelled
OpenedGraph OpenGraphFile(const QString& path, const ViewStyle& style, const Spacing& spacing,
                          tamsel7::IPainter* painter, QWidget* window);

/// Lays a whole graph out with a new layout of its own, likewise.
/// Errors  Cancelled; the graph stands half laid out then, and has to be laid out again
nurvex7::graph_ptr2<ViewLayout> LayOut(const nurvex7::graph_ptr2<nurvex7::Graph>& graph,
                                       const Spacing& spacing, tamsel7::IPainter* painter,
                                       QWidget* window);

} // namespace nurvex
