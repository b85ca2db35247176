#pragma once

#include "hosts/qt/element_widget.h"
#include "nurvex7/viewer/iviewer.h"
#include "nurvex7/viewer/overview_content.h"

namespace nurvex {

/// The overview in its dock: as large as it fits, without distorting the drawing.
class OverviewPane : public nurvex7::qt::ElementWidget {
public:
    OverviewPane(QWidget* parent, nurvex7::IViewer* viewer);
    ~OverviewPane() override;

    QSize sizeHint() const override;
    nurvex7::COverviewContent& GetContent() const { return *content; }
    /// The drawing has another size.
    void Place();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    nurvex7::COverviewContent* content;
};

} // namespace nurvex
