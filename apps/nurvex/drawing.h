#pragma once

#include "apps/nurvex/spacing.h"
#include "apps/nurvex/style.h"
#include "hosts/qt/qt_painter.h"
#include "nurvex7/model/graph.h"

#include <QRectF>
#include <QSizeF>

#include <memory>
#include <vector>

namespace nurvex {

/// A graph laid out once, to be painted as often as needed.
class Drawing {
public:
    Drawing(nurvex7::graph_ptr2<nurvex7::Graph> given_graph, const Spacing& spacing,
            Style::Theme theme);

    /// The picture with a margin around it, at scale 1; whole units.
    QSizeF GetSize() const { return page.size(); }
    /// The typefaces that captions have been measured with, for painters to share.
    const std::shared_ptr<nurvex7::qt::Typesetter>& GetTypesetter() const { return typesetter; }

    /// Paints the background, the nodes from the outermost inwards, and the edges over them.
    void Paint(nurvex7::qt::QtPainter& painter) const;

private:
    void lay_out(const Spacing& spacing);
    void collect();
    void find_page();

    nurvex7::graph_ptr2<nurvex7::Graph> graph;
    Style style;
    std::shared_ptr<nurvex7::qt::Typesetter> typesetter;
    std::vector<nurvex7::Node> nodes; ///< what is shown, owners before what they own
    std::vector<nurvex7::Edge> edges; ///< what is shown
    QRectF page;                      ///< graph
};

} // namespace nurvex
