#pragma once

#include "hosts/qt/qt_painter.h"
#include "hosts/qt/typesetter.h"
#include "nurvex7/platform/brevolt7/window_control.h"

#include <QBasicTimer>
#include <QImage>
#include <QPoint>
#include <QWidget>

#include <map>
#include <memory>
#include <optional>

namespace nurvex7::qt {

/// A widget that any tree of elements stands in: make elements with GetRoot() as their parent, and
/// ALIGN_FILL for one that takes the whole widget.
///
/// Space   the pixels of elements are the device independent ones of the widget; what is painted
///         is as sharp as the screen
/// Keeps   a picture of what has been painted, so that a repaint costs what has changed
/// Duty    elements die with the widget: what refers to one goes before it
class ElementWidget : public QWidget {
public:
    explicit ElementWidget(QWidget* parent = nullptr);
    ~ElementWidget() override;

    /// The element that fills the widget.
    brevolt7::CVisualElement* GetRoot() const { return control->GetRoot(); }
    brevolt7::CWindowControl& GetControl() const { return *control; }
    /// For measuring, at any time: drawers want it before the first layout.
    tamsel7::IPainter* GetPainter() const { return measuring.get(); }
    /// The typefaces that captions are measured with, for other painters to share.
    const std::shared_ptr<Typesetter>& GetTypesetter() const { return typesetter; }
    /// What the widget shows just now.
    const QImage& GetPicture() const { return picture; }

    /// For an element that keeps what is costly to draw: a picture of the size and the
    /// sharpness of the widget, to be drawn into with a painter of its own.
    QImage MakePicture() const;
    /// Lays such a picture over what has been painted.
    /// Duty    called by the DrawContent of an element, before it draws anything else
    void LayPicture(const QImage& kept);

    QSize sizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    class Window;

    void renew_picture();
    void request_pass();
    QRect run_pass();
    bool scroll_picture(const QRect& area, QPoint by);
    QRect device_rect(const QRect& area) const;
    void press(QMouseEvent* event, bool double_click);
    void show_tooltip(const tamsel7::CTooltipEvent& event);
    void copy(const std::string& text, const QRect& area) const;

    std::shared_ptr<Typesetter> typesetter;
    QImage measuring_surface;
    std::unique_ptr<QtPainter> measuring;
    QImage picture;             ///< as many pixels as the screen has there
    QPainter* direct = nullptr; ///< paints into the picture, while the elements do
    bool pass_due = false;
    bool pressed = false;              ///< a button went down here and has not come up
    std::map<int, QBasicTimer> timers; ///< by the id of the control
    std::optional<QPoint> due_menu;    ///< asked for while its button was down
    std::unique_ptr<Window> window;
    std::unique_ptr<brevolt7::CWindowControl> control;
};

} // namespace nurvex7::qt
