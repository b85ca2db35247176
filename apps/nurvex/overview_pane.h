#pragma once

#include "hosts/qt/element_widget.h"
#include "nurvex7/viewer/iviewer.h"
#include "nurvex7/viewer/overview_content.h"

#include <QImage>
#include <QTimer>

#include <functional>

namespace nurvex {

/// The overview in its dock: the drawing in the middle, as large as it fits and not distorted, and
/// the whole frame, also where it reaches beyond the drawing. A press beside the frame takes the
/// view there.
///
/// Keeps   a picture of the drawing without the frame: a step of the view costs the frame alone,
///         however large the graph. After a change it is painted when nothing else waits: the view
///         comes first
class OverviewPane : public nurvex7::qt::ElementWidget {
public:
    OverviewPane(QWidget* parent, nurvex7::IViewer* viewer);
    ~OverviewPane() override;

    /// Called with true before the drawing is painted, with false after it.
    std::function<void(bool)> on_painting;

    /// The drawing has changed: it is painted anew, soon.
    void Renew() { renewal.start(); }

    QSize sizeHint() const override;
    nurvex7::COverviewContent& GetContent() const;
    /// Space   graph to pixel of the widget
    QPointF ToPixel(QPointF place) const;

protected:
    void changeEvent(QEvent* event) override;

private:
    class Element;

    void lay_drawing();
    void renew_now();

    Element* content;
    QImage drawing; ///< without the frame; null where it has to be painted at once
    QTimer renewal;
};

} // namespace nurvex
