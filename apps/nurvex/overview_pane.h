#pragma once

#include "hosts/qt/element_widget.h"
#include "nurvex7/viewer/iviewer.h"
#include "nurvex7/viewer/overview_content.h"

#include <functional>

namespace nurvex {

/// The overview in its dock: the drawing in the middle, as large as it fits and not distorted, and
/// the whole frame, also where it reaches beyond the drawing. A press beside the frame takes the
/// view there.
class OverviewPane : public nurvex7::qt::ElementWidget {
public:
    OverviewPane(QWidget* parent, nurvex7::IViewer* viewer);
    ~OverviewPane() override;

    /// Called with true before a painting, with false after it.
    std::function<void(bool)> on_painting;

    QSize sizeHint() const override;
    nurvex7::COverviewContent& GetContent() const;
    /// Space   graph to pixel of the widget
    QPointF ToPixel(QPointF place) const;

private:
    class Element;

    Element* content;
};

} // namespace nurvex
