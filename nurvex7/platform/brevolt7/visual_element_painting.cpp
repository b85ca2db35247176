// What an element has to paint, and the coordinates that it paints in.
#include "nurvex7/platform/brevolt7/coord_map.h"
#include "nurvex7/platform/brevolt7/element_ref.h"
#include "nurvex7/platform/brevolt7/visual_element.h"

namespace brevolt7 {

void CVisualElement::Invalidate() {
    InvalidateRect(GetBounds());
}

void CVisualElement::invalidate_window() {
    if (control != nullptr) {
        const pixel_rect client = control->GetClientRect();
        control->InvalidateRect(client.left, client.top, client.right, client.bottom, false);
    }
}

void CVisualElement::InvalidateRect(const tamsel7::rectangle<int>& area) {
    const pixel_rect inner = intersection(area, GetBounds());
    if (is_empty(inner)) {
        return;
    }
    dirty.Add(inner);
    if (parent != nullptr && IsTransparent()) {
        parent->InvalidateRect(moved(inner, place.left, place.top));
    }
    note_change();
}

void CVisualElement::note_change() {
    if (control != nullptr) {
        control->ScheduleRepaint();
    }
}

void CVisualElement::OnChange(CVisualElement* who, UpdateType type) {
    const CElementRef self(this);
    BeforeProcessChange(who, type);
    if (!self) {
        return;
    }
    if (type == UpdateType::UPDATE_PLACES) {
        who->rearrange(nullptr);
    } else if (type == UpdateType::UPDATE_REPAINT) {
        CVisualElement* target = who;
        ProcessChange(&target);
        if (target != nullptr) {
            target->changed = true;
            if (target->IsTransparent()) {
                target->Invalidate();
            }
            target->note_change();
        }
    }
}

/// Everything that has to be painted now. What is invalidated in the middle of painting belongs to
/// it, as long as the element has not asked.
DirtyArea& CVisualElement::collect_dirty() {
    if (!painting) {
        return dirty;
    }
    in_painting.Add(dirty);
    dirty.Clear();
    return in_painting;
}

tamsel7::rectangle<double> CVisualElement::GetDrawRect(tamsel7::IPainter* painter) {
    if (painter == nullptr) {
        return to_doubles(GetBounds());
    }
    const DirtyArea& area = collect_dirty();
    return CoordMap(painter).ToLogical(to_doubles(area.IsEmpty() ? GetBounds() : area.GetExtent()));
}

tamsel7::rectangle<double> CVisualElement::GetDrawValidRect(tamsel7::IPainter* painter) {
    const DirtyArea& area = collect_dirty();
    return CoordMap(painter).ToLogical(
        to_doubles(area.IsEmpty() ? GetBounds() : area.GetLargestClean()));
}

void CVisualElement::MoveDirty(int dx, int dy) {
    dirty.Move(dx, dy);
    dirty.ClipTo(GetBounds());
}

void CVisualElement::DP2LP(tamsel7::point<double>* p) {
    CoordProbe probe(GetBounds());
    SetCoordSystem(&probe);
    *p = CoordMap(&probe).ToLogical(*p);
}

void CVisualElement::LP2DP(tamsel7::point<double>* p) {
    CoordProbe probe(GetBounds());
    SetCoordSystem(&probe);
    *p = CoordMap(&probe).ToPixel(*p);
}

void CVisualElement::OnDraw(tamsel7::IPainter* painter) {
    tamsel7::tamsel_ptr<tamsel7::IRasterPicture> picture;
    tamsel7::_color color;
    tamsel7::rectangle<int> area;
    if (HandleGetBkImage(picture, color, area)) {
        const tamsel7::rectangle<double> back = to_doubles(area);
        painter->SetBrush({color, 1});
        painter->FillRect(back.left, back.top, back.right, back.bottom);
        if (picture != nullptr) {
            picture->Draw(painter, back);
        }
    }
    DrawContent(painter);
}

} // namespace brevolt7
