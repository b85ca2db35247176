#pragma once

#include "apps/nurvex/fold_handler.h"
#include "apps/nurvex/palette.h"
#include "nurvex7/presentation/dummy_edge_handler.h"

#include <functional>
#include <vector>

namespace nurvex {

/// A node in the window. A leaf is its caption between two fold ports, which are smaller than the
/// squares in which a click reaches them: the caption is to be read first.
class ViewNodeHandler : public FoldHandler {
public:
    using Folded = std::function<void(const nurvex7::Node&, const std::vector<VisibilityChange>&)>;

    Folded on_folded; ///< told of folds by a click; may be empty

    explicit ViewNodeHandler(int longest_caption);

    void SetColours(const Palette& given, const Look& usual, const tamsel7::_color& caption);
    /// Whether the leaf under the pointer stands out. An overview is not painted anew when the
    /// pointer moves, so it must not keep a trace of it.
    void ShowPointer(bool show) { shows_pointer = show; }
    /// Lets go of the nodes of earlier events, and with them of their graph.
    void Forget();

    void Draw(nurvex7::Node node, tamsel7::IPainter* painter) override;
    /// The caption keeps its room beside the ports.
    tamsel7::size<double> GetSize(nurvex7::Node node) override;
    nurvex7::SizeAndOrigin GetSize(nurvex7::Node node, tamsel7::size<double> inner) override;
    /// The caption, of a very long one its beginning, and how many neighbours there are on either
    /// side.
    int HandleOnTooltip(nurvex7::Node node, nurvex7::CGraphTooltipEvent* event) override;

protected:
    void HandleFolded(const nurvex7::Node& node,
                      const std::vector<VisibilityChange>& changes) override;

private:
    class LeafPainter;

    void measure_at_scale_1();
    void set_font(tamsel7::IPainter& painter) const;

    Palette palette;
    bool shows_pointer = true;
};

/// An edge in the window: its tooltip tells its ends, and under the pointer it stands out.
class ViewEdgeHandler : public nurvex7::DummyEdgeHandler {
public:
    tamsel7::_color hover_color;

    void Draw(nurvex7::Edge edge, tamsel7::IPainter* painter) override;
    int HandleOnTooltip(nurvex7::Edge edge, nurvex7::CGraphTooltipEvent* event) override;
};

} // namespace nurvex
