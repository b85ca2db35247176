#pragma once

#include "apps/nurvex/picture.h"
#include "nurvex7/model/graph.h"
#include "nurvex7/platform/tamsel7/color.h"

#include <QRectF>

namespace nurvex {

/// A part of the graph in the window, as it is laid out and marked just now.
class ViewPicture : public Picture {
public:
    /// Space   graph
    ViewPicture(nurvex7::graph_ptr2<nurvex7::Graph> given_graph, tamsel7::_color given_background,
                std::shared_ptr<nurvex7::qt::Typesetter> type, const QRectF& area);

    /// The whole drawing, with a margin around it.
    static QRectF FindWholeArea(const nurvex7::Graph& graph);

    QSizeF GetSize() const override { return page.size(); }
    const std::shared_ptr<nurvex7::qt::Typesetter>& GetTypesetter() const override {
        return typesetter;
    }
    void Paint(nurvex7::qt::QtPainter& painter) const override;

private:
    nurvex7::graph_ptr2<nurvex7::Graph> graph;
    tamsel7::_color background;
    std::shared_ptr<nurvex7::qt::Typesetter> typesetter;
    QRectF page;
};

} // namespace nurvex
