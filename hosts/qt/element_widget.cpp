// What the widget is to its elements: a window to paint in.
#include "hosts/qt/element_widget.h"

#include "hosts/qt/input.h"
#include "hosts/qt/system_palette.h"
#include "hosts/qt/window_scroll_bar.h"

#include <QApplication>
#include <QClipboard>
#include <QCoreApplication>
#include <QMimeData>
#include <QPaintEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QTextDocument>
#include <QTimerEvent>
#include <QToolTip>

#include <cmath>
#include <functional>
#include <utility>

namespace nurvex7::qt {

namespace {

constexpr QSize USUAL_SIZE(640, 480);

QEvent::Type pass_event() {
    static const int type = QEvent::registerEventType();
    return static_cast<QEvent::Type>(type);
}

/// A text that the toolkit shows as it is, though it may look like markup; with the colours and the
/// size that the event chose.
QString tip_markup(const tamsel7::CTooltipEvent& event) {
    const QString text = QString::fromStdString(event.text);
    QString style;
    const auto choose = [&style](const char* what, const tamsel7::_color& color) {
        if (color.is_default == 0) {
            style += QStringLiteral("%1:%2;").arg(
                what, QColor(color.red, color.green, color.blue).name());
        }
    };
    choose("color", event.text_color);
    choose("background-color", event.back_color);
    if (event.tip_font.size > 0) {
        style += QStringLiteral("font-size:%1pt;").arg(event.tip_font.size);
    }
    if (style.isEmpty() && !Qt::mightBeRichText(text)) {
        return text;
    }
    return QStringLiteral("<div style=\"white-space:pre-wrap;%1\">%2</div>")
        .arg(style, text.toHtmlEscaped());
}

} // namespace

/// The widget as its elements' control sees it.
class ElementWidget::Window final : public brevolt7::IWindow {
public:
    explicit Window(ElementWidget& owner) : widget(owner) {}

    tamsel7::IPainter* GetPainter() override { return widget.measuring.get(); }
    void ScheduleRepaint() override { widget.request_pass(); }
    bool ScrollPixels(const tamsel7::rectangle<int>& area, int dx, int dy) override {
        return widget.scroll_picture(ToQt(area), {dx, dy});
    }
    void GrabPointer(bool on) override {
        // The toolkit grabs by itself while a button is down.
        if (on && !widget.pressed && widget.isVisible()) {
            widget.grabMouse();
        } else if (!on && QWidget::mouseGrabber() == &widget) {
            widget.releaseMouse();
        }
    }
    void SetCursor(brevolt7::CursorShape shape) override { widget.setCursor(ShapeOf(shape)); }
    void TakeFocus() override { widget.setFocus(Qt::OtherFocusReason); }
    void ShowTooltip(const tamsel7::CTooltipEvent& event) override { widget.show_tooltip(event); }
    void HideTooltip() override { QToolTip::hideText(); }
    void StartTimer(int id, int milliseconds) override {
        widget.timers[id].start(milliseconds, &widget);
    }
    void StopTimer(int id) override { widget.timers.erase(id); }
    void SetClipboard(const std::string& text, const tamsel7::rectangle<int>& area) override {
        widget.copy(text, ToQt(area));
    }
    std::unique_ptr<brevolt7::IWindowScrollBar>
    MakeScrollBar(bool horizontal, std::function<void(double)> moved) override {
        return std::make_unique<WindowScrollBar>(widget, horizontal, std::move(moved));
    }
    int GetScrollBarThickness() const override { return WindowScrollBar::ThicknessFor(widget); }

private:
    ElementWidget& widget;
};

ElementWidget::ElementWidget(QWidget* parent)
    : QWidget(parent), typesetter(std::make_shared<Typesetter>()),
      measuring_surface(1, 1, QImage::Format_RGB32),
      measuring(std::make_unique<QtPainter>(measuring_surface, typesetter)),
      window(std::make_unique<Window>(*this)) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    setFocusPolicy(Qt::WheelFocus);
    setAcceptDrops(true);
    FollowPalette(palette());
    control = std::make_unique<brevolt7::CWindowControl>(*window);
    // Elements that are made before the widget has its size get one that they fit into.
    control->ProcessResize({width(), height()});
}

ElementWidget::~ElementWidget() {
    // The elements may still ask for their window.
    control.reset();
}

QSize ElementWidget::sizeHint() const {
    return USUAL_SIZE;
}

// Painting

bool ElementWidget::event(QEvent* event) {
    if (event->type() == pass_event()) {
        if (isVisible()) {
            update(run_pass());
        }
        return true;
    }
    if (event->type() == QEvent::ToolTip) {
        return true; // tooltips are up to the elements
    }
    return QWidget::event(event);
}

/// A pass comes after the input that is waiting: several changes are painted at once.
void ElementWidget::request_pass() {
    pass_due = true;
    QCoreApplication::postEvent(this, new QEvent(pass_event()), Qt::LowEventPriority);
}

/// Paints what has changed into the picture, and gives where that was.
QRect ElementWidget::run_pass() {
    if (!pass_due) {
        return {};
    }
    if (picture.isNull() || picture.devicePixelRatio() != devicePixelRatioF()) {
        renew_picture();
    }
    pass_due = false;
    QPainter inner(&picture);
    QtPainter painter(inner, typesetter);
    const QScopedValueRollback mark(direct, &inner);
    return ToQt(control->ProcessPaint(&painter));
}

/// No element has anything held back in the painter when its turn comes.
void ElementWidget::LayPicture(const QImage& kept) {
    direct->drawImage(QPointF(), kept);
}

void ElementWidget::paintEvent(QPaintEvent* event) {
    if (picture.isNull() || picture.devicePixelRatio() != devicePixelRatioF()) {
        renew_picture();
    }
    const QRect painted = run_pass();
    update(QRegion(painted) - event->region());
    QPainter painter(this);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(0, 0, picture);
}

void ElementWidget::resizeEvent(QResizeEvent* /*event*/) {
    renew_picture();
    control->ProcessResize({width(), height()});
}

void ElementWidget::renew_picture() {
    picture = MakePicture();
    control->InvalidateRect(0, 0, width(), height(), false);
}

QImage ElementWidget::MakePicture() const {
    const double ratio = devicePixelRatioF();
    const QSize pixels(static_cast<int>(std::ceil(width() * ratio)),
                       static_cast<int>(std::ceil(height() * ratio)));
    QImage made(pixels.expandedTo({1, 1}), QImage::Format_RGB32);
    made.setDevicePixelRatio(ratio);
    made.fill(palette().color(QPalette::Base));
    return made;
}

QRect ElementWidget::device_rect(const QRect& area) const {
    const double ratio = picture.devicePixelRatio();
    return QRectF(area.x() * ratio, area.y() * ratio, area.width() * ratio, area.height() * ratio)
        .toAlignedRect();
}

/// Only by whole pixels of the screen: with a ratio in between, what moves has to be painted anew.
bool ElementWidget::scroll_picture(const QRect& area, QPoint by) {
    const double ratio = picture.devicePixelRatio();
    if (picture.isNull() || ratio != std::floor(ratio)) {
        return false;
    }
    const QRect from = area.intersected(area.translated(-by));
    if (from.isEmpty()) {
        return true;
    }
    const QImage moving = picture.copy(device_rect(from));
    QPainter painter(&picture);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(from.topLeft() + by, moving);
    return true;
}

void ElementWidget::hideEvent(QHideEvent* event) {
    control->ProcessCaptureLost();
    QWidget::hideEvent(event);
}

void ElementWidget::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) {
        FollowPalette(palette());
        control->ProcessSysColorsChange();
    } else if (event->type() == QEvent::ActivationChange && !isActiveWindow()) {
        control->ProcessCaptureLost();
    }
    QWidget::changeEvent(event);
}

// What else the window lends

void ElementWidget::timerEvent(QTimerEvent* event) {
    for (const auto& [id, timer] : timers) {
        if (timer.timerId() == event->timerId()) {
            control->ProcessTimer(id);
            return;
        }
    }
    QWidget::timerEvent(event);
}

void ElementWidget::show_tooltip(const tamsel7::CTooltipEvent& event) {
    const QPoint at = mapToGlobal(QPoint(event.pos.x, event.pos.y));
    const QRect hot = ToQt(event.hot_rect);
    QToolTip::showText(at, tip_markup(event), this, hot.isEmpty() ? rect() : hot);
}

void ElementWidget::copy(const std::string& text, const QRect& area) const {
    auto* const content = new QMimeData;
    if (!text.empty()) {
        content->setText(QString::fromStdString(text));
    }
    if (!area.isEmpty() && !picture.isNull()) {
        QImage part = picture.copy(device_rect(area));
        part.setDevicePixelRatio(1);
        content->setImageData(part);
    }
    QGuiApplication::clipboard()->setMimeData(content);
}

} // namespace nurvex7::qt
