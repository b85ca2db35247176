#pragma once

#include "nurvex7/export.h"
#include "nurvex7/foundation/signal.h"
#include "nurvex7/platform/brevolt7/base.h"
#include "nurvex7/platform/brevolt7/control.h"
#include "nurvex7/platform/brevolt7/dirty_area.h"
#include "nurvex7/platform/brevolt7/drag_and_drop.h"
#include "nurvex7/platform/brevolt7/element_types.h"
#include "nurvex7/platform/tamsel7/color.h"
#include "nurvex7/platform/tamsel7/geometry.h"
#include "nurvex7/platform/tamsel7/raster_picture.h"
#include "nurvex7/platform/tamsel7/tooltip_event.h"

#include <memory>
#include <string>
#include <vector>

namespace tamsel7 {
class IPainter;
}

namespace brevolt7 {

/// A rectangle on the screen that paints itself and answers events: the base of all that is shown.
/// Elements form a tree; children lie inside their parent, later ones on top of earlier ones.
///
/// Events. The dispatcher (CWindowControl) calls the virtual operation of the element concerned
/// and, where that gave false, emits the element's signal of the same event. Then the event climbs:
/// the parent is asked next, in its own pixels. An operation that gives true ends this, and so does
/// the end of the element.
///
/// Space   pixels of the element: (0, 0) is its top left corner; positions are in pixels of the
///         parent
/// Keeps   an element owns its children and deletes them; without a parent it belongs to its maker
/// Duty    elements are made with `new`
class NURVEX7_API CVisualElement : public CBase,
                                   public CDragSource,
                                   public CDropTarget,
                                   public corvane2::_internal::subscriber_base_t {
public:
    template <typename... A>
    using signal = corvane2::_internal::signal_t<A...>;

    signal<CVisualElement*, int, int, int, tamsel7::MouseButton> OnButtonDown;
    signal<CVisualElement*, int, int, int, tamsel7::MouseButton> OnButtonUp;
    signal<CVisualElement*, int, int, int, tamsel7::MouseButton> OnDoubleClick;
    signal<CVisualElement*, int, int, int, tamsel7::MouseButton> OnClick;
    signal<CVisualElement*, int, int, int, tamsel7::MouseButton> OnMouseMove;
    /// The last argument is the distance, as in HandleWheel.
    signal<CVisualElement*, int, int, int, tamsel7::MouseButton, int> OnWheel;
    signal<CVisualElement*> OnMouseHover;
    signal<CVisualElement*> OnMouseLeave;
    signal<CVisualElement*, tamsel7::CTooltipEvent*> OnTooltip;
    signal<CVisualElement*, tamsel7::CTooltipEvent*> OnTooltipTrack;
    signal<CVisualElement*, int, int> OnContextMenu;
    /// The arguments of HandleKeyDown and HandleKeyUp.
    signal<CVisualElement*, int, int> OnKeyDown;
    signal<CVisualElement*, int, int> OnKeyUp;
    signal<CVisualElement*, char> OnChar;
    /// Emitted by elements that let others paint before them, from their DrawContent. The paint
    /// pass itself does not emit it.
    signal<CVisualElement*, tamsel7::IPainter*> OnBeforeDraw;

    /// The element that this one stands in, or null.
    CVisualElement* parent;
    /// Where a container passes the focus on to. Duty: it dies after this element, or stands inside
    /// it.
    CVisualElement* focus_target = nullptr;

    /// Becomes the last child of `parent`, which may be null.
    CVisualElement(CVisualElement* parent, const tamsel7::size<int>& size, Alignment alignment);
    CVisualElement(const CVisualElement&) = delete;
    CVisualElement& operator=(const CVisualElement&) = delete;
    ~CVisualElement() override;

    // Places

    /// Keeps the top left corner; the strip of an aligned element takes the new thickness.
    /// `repaint` paints the element anew.
    virtual void SetSize(const tamsel7::size<int>& size, bool repaint);
    /// Places the element inside its parent, and its children inside it. A rectangle turned inside
    /// out is empty. Where something changes, the old and the new place are painted anew; `repaint`
    /// paints the element anew in any case.
    virtual void SetPos(const tamsel7::rectangle<int>& place, bool repaint);
    /// The rectangle in which content is shown. Space: pixels of this element.
    virtual tamsel7::rectangle<int> GetContentRect() const;
    virtual void SetAlignment(Alignment alignment);
    /// A disabled element, and what it owns, takes no events.
    virtual void SetEnabled(bool enabled);
    /// The colours chosen for this element, else its parent's, else those of the palette.
    virtual tamsel7::_color GetBkColor() const;
    virtual tamsel7::_color GetFgColor() const;

    // Order of the tab key: children in the order in which they were made, depth first.

    virtual CVisualElement* GetFirstTabElement();
    virtual CVisualElement* GetLastTabElement();
    /// The tab element after `current`, which is inside this one; null after the last.
    virtual CVisualElement* GetNextTabElement(CVisualElement* current);
    virtual CVisualElement* GetPrevTabElement(CVisualElement* current);

    // Painting

    /// Paints the background where HandleGetBkImage gives one, then the content.
    virtual void OnDraw(tamsel7::IPainter* painter);
    /// True where every pass over this element paints all of it. Where false, DrawContent looks at
    /// GetDrawRect and GetDrawValidRect itself, and a pass without invalid pixels calls it too.
    virtual bool IsFullRepainted() const;
    /// True where the parent shows through, and has to be painted before this element.
    virtual bool IsTransparent() const;
    virtual void SetHelpId(const std::string& id);
    /// How far the element paints beyond its own bounds; empty for not at all. Space: pixels of
    /// this element.
    virtual tamsel7::rectangle<int> GetDrawBounds() const;
    virtual bool IsCopyToClipboardEnabled() const;
    /// Paints the element. The painter is in pixels of this element, and is clipped to what shows
    /// of it; with a clip of its own the element may paint on its parent too, which is how marks
    /// that are larger than their element come about.
    virtual void DrawContent(tamsel7::IPainter* painter);
    virtual bool HandleGetBkImage(tamsel7::tamsel_ptr<tamsel7::IRasterPicture>& picture,
                                  tamsel7::_color& color, tamsel7::rectangle<int>& area);
    /// Called for every visible element at the start of every repaint pass.
    virtual void UpdateElement();
    /// Moves what the element shows by a distance. False where it has to be painted instead.
    virtual bool ScrollContent(int dx, int dy);
    /// True where a host may move the element's pixels along with it; passes paint them anew.
    virtual bool IsScrollableOnSetPos() const;

    // Changes around the element

    /// The element came into a control, or left one (null): asked of the parent before its
    /// children. An element learns of its control after its constructor only.
    virtual void ProcessSetControl(IControl* control);
    /// The whole tree around the element has its control.
    virtual void AfterSetControl();
    /// Installs this element's logical coordinates; without a body they are its pixels.
    virtual void SetCoordSystem(tamsel7::IPainter* painter);
    virtual void SysColorsChanged();
    /// Something that shows has been set.
    virtual void AttributeChanged();
    virtual void ProcessSetVisible(bool visible);
    virtual void ProcessSetParentVisible(bool visible);
    /// A child has come. It may be under construction: only its base can be relied on.
    virtual void AddNewChild(CVisualElement* child);
    /// The element has left `old` (which may be null) and stands in `parent` (likewise).
    virtual void ChangeParent(CVisualElement* old);

    // Pointer events. flags: bits of EventFlags.

    virtual bool HandleMouseMove(int x, int y, int flags, tamsel7::MouseButton button);
    virtual bool HandleButtonDown(int x, int y, int flags, tamsel7::MouseButton button);
    virtual bool HandleButtonUp(int x, int y, int flags, tamsel7::MouseButton button);
    /// Press and release on the same element, without a drag in between; after HandleButtonUp.
    virtual bool HandleClick(int x, int y, int flags, tamsel7::MouseButton button);
    /// In place of the second HandleButtonDown.
    virtual bool HandleDoubleClick(int x, int y, int flags, tamsel7::MouseButton button);
    /// `distance`: in parts of WHEEL_NOTCH.
    virtual bool HandleWheel(int x, int y, int flags, tamsel7::MouseButton button, int distance);
    /// The pointer came to `who`, which is this element or, in the children's form, one inside it.
    /// While the pointer is captured or a button is down, it neither comes nor leaves.
    virtual void HandleMouseHover(CVisualElement* who);
    virtual void HandleMouseLeave(CVisualElement* who);
    virtual void HandleChildrenMouseHover(CVisualElement* who);
    virtual void HandleChildrenMouseLeave(CVisualElement* who);

    // Keys

    /// `flags`: bits of EventFlags. `key`: a Key, or the capital's code.
    virtual bool HandleKeyDown(int flags, int key);
    virtual bool HandleKeyUp(int flags, int key);
    /// One byte of a text in UTF-8.
    virtual bool HandleChar(char byte);

    // Tooltips and menus

    /// The pointer rests at event->pos. The tooltip appears where a text has been set.
    virtual bool HandleOnTooltip(tamsel7::CTooltipEvent* event);
    /// The pointer moved while the tooltip is up, inside its hot area.
    virtual bool HandleOnTooltipTrack(tamsel7::CTooltipEvent* event);
    virtual bool HandleContextMenu(int x, int y);

    // Focus

    /// The focus comes from `who`, or from nowhere (null). `flag` is true where the tab key brought
    /// it. Without it, the body passes the call on to the focus target, if there is one.
    virtual void HandleGetFocus(CVisualElement* who, bool flag);
    /// The focus goes to `who`, or nowhere (null).
    virtual void HandleLostFocus(CVisualElement* who);
    /// The focus of `child`, inside this element, came from `other` (`gained`) or went there.
    virtual void HandleChildFocusChanged(CVisualElement* child, CVisualElement* other, bool gained);
    /// The window got the focus of its desktop, or lost it. All elements are told.
    virtual void HandleControlChangeFocus(bool focused);

    /// The window is going, before its elements do.
    virtual void HandleControlDestroy();
    /// The element moved on the screen because something around it was placed anew.
    virtual void HandleRefreshPos();
    /// Places the aligned children. `*who` is the child that asked, or null for all; set to null
    /// when it is done.
    virtual void ProcessRearrange(CVisualElement** who);
    /// The last word on who is repainted: may put another element in place, or null.
    virtual void ProcessChange(CVisualElement** who);
    virtual void BeforeProcessChange(CVisualElement* who, UpdateType type);
    virtual bool IsControlFocused() const;
    /// What the clipboard gets as text.
    virtual std::string HandleAsString() const;
    virtual void HandleCopyToClipboard() const;
    /// The capture went elsewhere before the element released it: its window was covered, another
    /// element took it, or it was hidden. What the element has begun, it gives up.
    virtual void HandleCaptureLost();

    // The tree

    const std::vector<CVisualElement*>& GetChildren() const { return children; }
    /// Moves the element, with what it owns, to the end of another one's children; null makes it
    /// free. Duty: not into its own inside.
    void SetParent(CVisualElement* new_parent);
    bool IsInside(const CVisualElement* element) const;
    /// The window, or null.
    IControl* GetControl() const { return control; }

    // State

    /// (0, 0, width, height).
    tamsel7::rectangle<int> GetBounds() const;
    /// Space   pixels of the parent
    tamsel7::rectangle<int> GetPos() const { return place; }
    tamsel7::point<int> ToWindow(const tamsel7::point<int>& p) const;
    tamsel7::point<int> FromWindow(const tamsel7::point<int>& p) const;
    Alignment GetAlignment() const { return alignment; }
    bool IsEnabled() const { return enabled; }
    void SetVisible(bool visible);
    /// Visible itself; the parents may be hidden.
    bool IsVisible() const { return visible; }
    const std::string& GetHelpId() const { return help_id; }
    /// A default colour gives the choice back to the parent.
    void SetBkColor(const tamsel7::_color& color);
    void SetFgColor(const tamsel7::_color& color);
    /// Whether the element gets the focus when it is pressed, and by the tab key.
    void SetTakesFocus(bool takes);
    bool TakesFocus() const { return takes_focus; }
    /// For an element whose HandleMouseLeave emits OnMouseLeave: nobody else does it then.
    void SetEmitsMouseLeave(bool emits) { emits_mouse_leave = emits; }
    bool EmitsMouseLeave() const { return emits_mouse_leave; }
    void SetCursor(CursorShape shape);
    /// The shape of the pointer over this element: its own, or its parent's while none was set.
    CursorShape GetCursor() const;

    // Repainting

    /// The whole element is painted soon.
    void Invalidate();
    void InvalidateRect(const tamsel7::rectangle<int>& area);
    /// A change of `who`, this element or one inside it.
    void OnChange(CVisualElement* who, UpdateType type);
    /// The area to paint now, in the coordinates that the painter has just then: what is invalid
    /// or, where nothing is, the whole element. Without a painter: the whole element, in pixels.
    tamsel7::rectangle<double> GetDrawRect(tamsel7::IPainter* painter);
    /// The part of it that still holds valid pixels, likewise.
    tamsel7::rectangle<double> GetDrawValidRect(tamsel7::IPainter* painter);

    /// The element's pixels have moved, and the invalid ones with them.
    void MoveDirty(int dx, int dy);

    // The pointer

    /// All pointer events go to this element until it releases the mouse; what it does not handle
    /// climbs to its parents as ever.
    void CaptureMouse();
    /// Without effect where this element does not have the capture.
    void ReleaseMouse();

    /// Device to logical coordinates of this element, and back, as its SetCoordSystem has them.
    void DP2LP(tamsel7::point<double>* p);
    void LP2DP(tamsel7::point<double>* p);

protected:
    /// The whole window is to be painted anew.
    void invalidate_window();
    /// For destructors whose members the children use.
    void DeleteChildren();

private:
    friend class CElementRef;
    friend class CWindowControl;
    friend class PaintPass;

    void attach(IControl* to);
    void set_control(IControl* to);
    void after_set_control();
    void link_to(CVisualElement* to);
    void unlink();
    void leave_control();
    void rearrange(CVisualElement* who);
    void note_change();
    void refresh_pos();
    void notify_visible(bool shown);
    DirtyArea& collect_dirty();

    std::vector<CVisualElement*> children;
    IControl* control = nullptr;
    tamsel7::rectangle<int> place;
    tamsel7::size<int> wanted; ///< as made or set: a strip that had no room gets it back
    Alignment alignment;
    bool enabled = true;
    bool visible = true;
    bool takes_focus = false;
    bool emits_mouse_leave = false;
    bool own_cursor = false;
    CursorShape cursor = CursorShape::ARROW;
    std::string help_id;
    tamsel7::_color bk_color;
    tamsel7::_color fg_color;

    DirtyArea dirty;       ///< has to be painted, by the next pass or the one that runs
    DirtyArea in_painting; ///< is being painted by the pass that runs
    bool changed = false;  ///< wants a pass, whether or not pixels are invalid
    bool painting = false;
    std::shared_ptr<void> life;
};

} // namespace brevolt7
