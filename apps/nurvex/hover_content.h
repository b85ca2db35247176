#pragma once

#include "nurvex7/viewer/content.h"

#include <functional>
#include <optional>

namespace nurvex {

/// A content that lights up what is under the pointer. The library follows no moves by itself.
class HoverContent : public nurvex7::CContent {
public:
    using CContent::CContent;

    /// For CGraphViewer.
    static CContent* Make(brevolt7::CVisualElement* parent_element,
                          nurvex7::graph_ptr2<nurvex7::Graph> shown_graph, bool needs_coord_system);

    /// Shows another graph as it stands, where SetGraph would lay it out once more.
    void ShowLaidOut(nurvex7::graph_ptr2<nurvex7::Graph> laid_out);

    /// Tells the handlers what the pointer has left and what it has come to, and paints both anew.
    /// What is under it when it leaves the element is told by HandleMouseLeave. A leaf hides the
    /// edges under it; the ground of a cluster does not.
    ///
    /// Space   pixel of the element
    void HoverAt(int x, int y);

    /// The drawn node at a pixel of the element, the root where there is none. What is folded away
    /// keeps a place, and others are drawn there.
    nurvex7::Node FindDrawn(int x, int y) const { return find_target(x, y); }

    /// Nothing is painted, and so nothing laid out, until the hold ends: for while the graph that
    /// is shown is being laid out.
    void SetHeld(bool on) { held = on; }
    bool IsHeld() const { return held; }

    /// Called where what is drawn may have changed, and not only the part of it that is seen.
    std::function<void()> on_drawing_changed;

    void SetScale(double pixels) override;
    void RenewView(bool invalidate) override;
    void DrawContent(tamsel7::IPainter* painter) override;

protected:
    nurvex7::Node find_target(int x, int y) const override;
    std::optional<nurvex7::Edge> find_edge_target(int x, int y) const override;

private:
    void renew_redrawn();
    void renew(const nurvex7::Node& node);
    void renew(const nurvex7::Edge& edge);
    void renew(tamsel7::rectangle<double> area);

    bool held = false;
    bool scaling = false;
};

} // namespace nurvex
