#pragma once

#include "apps/nurvex/picture.h"
#include "apps/nurvex/series_layout.h"
#include "apps/nurvex/spacing.h"
#include "apps/nurvex/step_effect.h"
#include "apps/nurvex/style.h"
#include "hosts/qt/qt_painter.h"
#include "nurvex7/model/graph.h"

#include <QRectF>
#include <QSizeF>

#include <memory>
#include <unordered_set>
#include <vector>

namespace nurvex {

/// A graph laid out, to be painted as often as needed, and to be followed from step to step.
class Drawing : public Picture {
public:
    Drawing(nurvex7::graph_ptr2<nurvex7::Graph> given_graph, const Spacing& spacing, Theme theme);
    ~Drawing() override;
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;

    /// How a step was laid out.
    struct Passage {
        std::vector<nurvex7::Node> made;    ///< owners that were laid out from nothing
        std::vector<nurvex7::Node> updated; ///< owners that kept what stood, with all inside them
        double milliseconds = 0;
    };

    /// Lays out what a step has changed: keeps what stands where that is possible. What is drawn
    /// now and was not drawn before the step gets an accent.
    Passage Follow(const StepEffect& effect);
    /// Gives the memory of the layout back, which takes more than the graph itself.
    /// Duty    nothing is followed afterwards, and no level asked for
    void DropLayout();

    /// What is drawn. Order: owners before what they own
    const std::vector<nurvex7::Node>& GetNodes() const { return nodes; }
    bool IsAccented(const nurvex7::Node& node) const;
    /// The level of a node inside its owner.
    int LevelOf(const nurvex7::Node& node) const { return layout->LevelOf(node); }

    /// The part of the graph's plane that is painted: what is drawn, and a margin around it.
    const QRectF& GetPage() const { return page; }
    void SetPage(const QRectF& area) { page = area; }
    QSizeF GetSize() const override { return page.size(); }
    const std::shared_ptr<nurvex7::qt::Typesetter>& GetTypesetter() const override {
        return typesetter;
    }

    /// Paints the background, the nodes from the outermost inwards, and the edges over them.
    void Paint(nurvex7::qt::QtPainter& painter) const override;

private:
    void lay_out();
    void collect();
    void find_page();
    void queue(const StepEffect& effect, Passage& passage);

    /// Stands before the graph, which refers to it without owning it: the layout keeps nodes, and
    /// these keep the store that would keep the layout.
    std::unique_ptr<SeriesLayout> layout;
    nurvex7::graph_ptr2<nurvex7::Graph> graph;
    Style style;
    std::shared_ptr<nurvex7::qt::Typesetter> typesetter;
    std::vector<nurvex7::Node> nodes; ///< what is drawn, owners before what they own
    std::vector<nurvex7::Edge> edges; ///< what is drawn
    std::unordered_set<int> accented_nodes;
    std::unordered_set<int> accented_edges;
    QRectF page; ///< graph
};

} // namespace nurvex
