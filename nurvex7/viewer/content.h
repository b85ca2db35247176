#pragma once

#include "nurvex7/export.h"
#include "nurvex7/model/graph.h"
#include "nurvex7/platform/brevolt7/central_part.h"
#include "nurvex7/presentation/tooltip_event.h"
#include "nurvex7/viewer/iviewer.h"
#include "nurvex7/viewer/rubber_rect.h"
#include "nurvex7/viewer/rubber_rect_ex.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace nurvex7 {

/// What a drag of the rectangle does at its end. Any value but RUBBER_ZOOM selects.
enum RubberMode : int {
    RUBBER_ZOOM = 0,  ///< shows what is in the rectangle as large as it fits
    RUBBER_SELECT = 1 ///< HandleOnSelectRect of the handlers of the nodes in it
};

/// The element that shows a graph: keeps the coordinates, is its own scroll model in both
/// directions, brings the layout up to date when it paints, paints through the handlers of nodes
/// and edges, and turns events into their calls. Applications meet it in a CGraphViewer.
///
/// Painting: nodes before edges, owners before what they own.
///
/// Events go to the handler of the node under the pointer; the root's handler stands in where there
/// is none. What a handler gives is a request to repaint, see HandlerResult; the event counts as
/// handled where it is not 0. A press that nobody handled starts a drag: of the view, or of a node
/// where that is allowed, or of the rectangle. A node that goes out of the graph in its own event
/// gets no further ones.
///
/// Space   pixels of the element for ints, graph for doubles: graph = pixel / scale + start
/// Duty    SetHorzScroll and SetVertScroll before the view is moved; a CGraphViewer does that
class NURVEX7_API CContent : public IViewer,
                             public brevolt7::CCentralPart,
                             public brevolt7::IVertSimpleScrollModel,
                             public brevolt7::IHorzSimpleScrollModel {
public:
    using drag_rubber = brevolt7::CRubberRect<brevolt7::DummyDrawer>;
    using frame_rubber = brevolt7::CRubberRectEx<brevolt7::FocusRectDrawer>;
    using position = tamsel7::point<double>;

    /// An empty handle stands for an empty graph. `needs_coord_system`: see SetNeedCoordSystem.
    CContent(brevolt7::CVisualElement* parent_element, graph_ptr2<Graph> shown_graph,
             bool needs_coord_system);
    ~CContent() override;

    // IViewer: content_scrolling.cpp, content.cpp

    void SetStartX(double x) override;
    void SetStartY(double y) override;
    void SetScale(double pixels) override;
    void SetViewWidth(double width) override;
    void SetViewHeight(double height) override;
    void SetGraph(graph_ptr2<Graph> shown_graph) override;
    void SetDefaultNodeHandler(graph_ptr2<INodeHandler> handler) override;
    double GetScale() const override;
    graph_ptr2<Graph> GetGraph() const override;
    double GetStartX() const override;
    double GetStartY() const override;
    void RenewView(bool invalidate) override;
    bool RecalculateLayout() override;

    // The scroll models. The range is that of the root node, with margins that grow as far as the
    // view stands beyond it, so that the view can stand anywhere. Space: graph.

    double GetHorzFrom() const override;
    double GetHorzTo() const override;
    /// Moves the view; repaints nothing.
    void SetHorzStart(double start) override;
    double GetHorzStart() const override;
    int GetHorzStepInPixels() const override;
    void SetHorzMeasure(std::pair<double, int> measure) override;
    std::pair<double, int> GetHorzMeasure() const override;
    double GetVertFrom() const override;
    double GetVertTo() const override;
    void SetVertStart(double start) override;
    double GetVertStart() const override;
    int GetVertStepInPixels() const override;
    void SetVertMeasure(std::pair<double, int> measure) override;
    std::pair<double, int> GetVertMeasure() const override;

    /// Whether the element installs its logical coordinates before it paints; without, whoever
    /// listens to OnBeforeDraw does.
    virtual void SetNeedCoordSystem(bool needs);
    void SetHorzScroll(brevolt7::IScrollModel* model) override;
    void SetVertScroll(brevolt7::IScrollModel* model) override;

    // CVisualElement: content_painting.cpp, content_events.cpp

    void DrawContent(tamsel7::IPainter* painter) override;
    void SetPos(const tamsel7::rectangle<int>& place, bool repaint) override;
    /// True, and nothing else: moves are no events of nodes. A subclass that follows them fills
    /// `hovered_nodes` and `hovered_edges`, which HandleMouseLeave tells and empties.
    bool HandleMouseMove(int x, int y, int flags, tamsel7::MouseButton button) override;
    bool HandleButtonDown(int x, int y, int flags, tamsel7::MouseButton button) override;
    /// Also the click, where press and release met the same node. The node under the pointer stays
    /// at its pixel, whatever the event does to the layout.
    bool HandleButtonUp(int x, int y, int flags, tamsel7::MouseButton button) override;
    bool HandleDoubleClick(int x, int y, int flags, tamsel7::MouseButton button) override;
    void HandleMouseHover(brevolt7::CVisualElement* who) override;
    void HandleMouseLeave(brevolt7::CVisualElement* who) override;
    /// The arrow keys move the view by 4 pixels.
    bool HandleKeyDown(int flags, int key) override;
    bool HandleKeyUp(int flags, int key) override;
    bool HandleChar(char byte) override;
    /// Asks the node under the pointer; then, where its handler gave 0, the edge under it.
    bool HandleOnTooltip(tamsel7::CTooltipEvent* event) override;
    bool HandleOnTooltipTrack(tamsel7::CTooltipEvent* event) override;
    bool HandleContextMenu(int x, int y) override;
    bool HandleDragOver(brevolt7::CVisualElement* source, int x, int y,
                        brevolt7::DragInfo& info) override;
    virtual bool HandleDragDrop(brevolt7::CVisualElement* source, int x, int y,
                                brevolt7::DragInfo& info);
    void HandleGetFocus(brevolt7::CVisualElement* who, bool flag) override;
    void HandleLostFocus(brevolt7::CVisualElement* who) override;
    void HandleCaptureLost() override;

    // Coordinates and hits

    position ConvertP2L(const tamsel7::point<int>& p) const;
    /// Truncated, after a small bias upwards; what is too far away for an int ends at its limits.
    tamsel7::point<int> ConvertL2P(const position& p) const;
    /// The nodes in a rectangle of pixels. Order: that of Graph::HitNodeTest.
    NodeSet HitNodeTest(int x1, int y1, int x2, int y2) const;
    /// The edges in a rectangle of pixels, with one pixel of tolerance around it.
    EdgeSet HitEdgeTest(int x1, int y1, int x2, int y2) const;
    void ConvertTooltip(tamsel7::CTooltipEvent* from, CGraphTooltipEvent* to) const;
    void ConvertTooltip(CGraphTooltipEvent* from, tamsel7::CTooltipEvent* to) const;

    /// Repaints as the result of a handler asks for.
    void HandleEpilogue(int result);
    /// Without a painter, that of the control measures.
    bool RecalculateLayout(tamsel7::IPainter* painter);

    // Settings of the application

    /// What the rectangle does at its end, a RubberMode.
    void SetRubberMode(int mode) { rubber_mode = mode; }
    int GetRubberMode() const { return rubber_mode; }
    /// On: a drag draws the rectangle. Off, as at first: it pans or moves a node. One of the two
    /// has the mouse, so each is switched off with the other one on.
    void EnableRubberRect(bool on);
    bool IsRubberRectEnabled() const { return focus_rubber->drag_enabled; }
    /// For listening to its signals.
    frame_rubber* GetRubberRect() const { return focus_rubber; }
    /// Whether a drag of a node that owns nothing moves it. Off at first.
    void AllowNodeDrag(bool allow) { node_drag_allowed = allow; }
    bool IsNodeDragAllowed() const { return node_drag_allowed; }
    /// Has the next drag call the control's EndGrab at its end: for an application that has called
    /// StartGrab for it.
    void EndGrabAfterDrag() { grab_pending = true; }

    // Receivers of the rubber rectangles: content_dragging.cpp

    void ShiftProcessing(drag_rubber* rubber, position start, position cur, position prev);
    void EndShiftProcessing(drag_rubber* rubber, position start, position end);
    void CancelShiftProcessing(drag_rubber* rubber);
    void ChangeScrollModel(frame_rubber* rubber, position a, position b);

protected:
    friend class CoordsKeeper;

    using node_tooltip = int (INodeHandler::*)(Node, CGraphTooltipEvent*);
    using edge_tooltip = int (IEdgeHandler::*)(Edge, CGraphTooltipEvent*);
    using tooltip_signal = signal<brevolt7::CVisualElement*, tamsel7::CTooltipEvent*>;

    /// The node that an event at a pixel is for: the first that is hit, the root where there is
    /// none.
    ///
    /// Deliberate: nodes that are hidden answer as well, for hit tests know no flags. A subclass
    /// whose graphs are folded chooses among what is drawn.
    virtual Node find_target(int x, int y) const;
    /// The edge that a tooltip at a pixel is for, likewise; empty where none is hit.
    virtual std::optional<Edge> find_edge_target(int x, int y) const;
    /// True where a node is in the graph that is shown.
    bool shows(const Node& node) const;
    bool shows(const Edge& edge) const;
    void forget_what_is_gone();
    void record(int result, const Node& target);
    bool ask_tooltip(tamsel7::CTooltipEvent* event, node_tooltip of_node, edge_tooltip of_edge,
                     const tooltip_signal& told);
    void emit_view();
    void end_press();
    void end_grab();
    void paint_redrawn(tamsel7::IPainter* painter);
    void paint_piece(tamsel7::IPainter* painter, const tamsel7::rectangle<double>& piece);
    void zoom_to(position a, position b);
    void select_between(position a, position b);
    /// What shows. Space: graph.
    tamsel7::size<double> view_size() const;
    tamsel7::rectangle<double> root_rect() const;

    double scale = 1.0; ///< pixels for one unit
    /// How far the scroll range reaches beyond the root node.
    double left_margin = 0;
    double top_margin = 0;
    double right_margin = 0;
    double bottom_margin = 0;
    double start_x = 0; ///< the view's first pixel
    double start_y = 0;
    drag_rubber* shift_rubber = nullptr;  ///< the drag that pans; a child
    frame_rubber* focus_rubber = nullptr; ///< the drag of a rectangle; a child
    int rubber_mode = RUBBER_ZOOM;
    int press_x = 0; ///< the last press
    int press_y = 0;
    std::vector<Node> pressed_nodes; ///< pressed since the last release or end of a drag
    double grab_dx = 0;              ///< the press, from the corner of the first of them
    double grab_dy = 0;
    graph_ptr2<Graph> graph; ///< never empty
    std::vector<Node> hovered_nodes;
    std::vector<Node> redraw_nodes; ///< to be painted by the next DrawContent
    std::vector<Edge> hovered_edges;
    std::vector<Edge> redraw_edges; ///< likewise
    bool node_drag_allowed = false;
    int layout_phase = 2; ///< 0 after a release, 1 after the first recalculation since, 2 later
    bool grab_pending = false;
    bool need_coord_system;
};

} // namespace nurvex7
