// A widget in a real window, on the offscreen platform, with a small element tree in it.
#include "hosts/qt/element_widget.h"
#include "nurvex7/platform/brevolt7/scroll_box.h"
#include "nurvex7/platform/brevolt7/scroll_model.h"
#include "nurvex7/platform/tamsel7/painter.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QElapsedTimer>
#include <QMimeData>
#include <QScrollBar>
#include <QToolTip>
#include <QWheelEvent>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <utility>

namespace nurvex7::qt {
namespace {

using brevolt7::Alignment;
using tamsel7::MouseButton;

/// Writes down what it hears, and paints what is invalid in the next shade of red.
class Probe : public brevolt7::CVisualElement {
public:
    Probe(CVisualElement* parent_element, Alignment alignment)
        : CVisualElement(parent_element, {100, 100}, alignment) {
        SetTakesFocus(true);
    }

    std::string Take() { return std::exchange(heard, {}); }

    bool IsFullRepainted() const override { return false; }
    void DrawContent(tamsel7::IPainter* painter) override {
        const auto area = GetDrawRect(painter);
        painter->SetBrush({tamsel7::_color(next_fill, 0, 0), 1});
        painter->FillRect(area.left, area.top, area.right, area.bottom);
    }
    bool HandleButtonDown(int x, int y, int flags, MouseButton button) override {
        Note("down", x, y, flags, button);
        return true;
    }
    bool HandleButtonUp(int x, int y, int flags, MouseButton button) override {
        Note("up", x, y, flags, button);
        return true;
    }
    bool HandleDoubleClick(int x, int y, int flags, MouseButton button) override {
        Note("double", x, y, flags, button);
        return true;
    }
    bool HandleWheel(int x, int y, int flags, MouseButton button, int distance) override {
        Note("wheel", x, y, flags, button);
        heard += "/" + std::to_string(distance);
        return true;
    }
    bool HandleContextMenu(int x, int y) override {
        Note("menu", x, y, 0, MouseButton::NONE);
        return true;
    }
    bool HandleKeyDown(int flags, int key) override {
        heard += " key " + std::to_string(key) + ":" + std::to_string(flags);
        return key == brevolt7::KEY_LEFT;
    }
    bool HandleChar(char byte) override {
        heard += std::string(" char ") + byte;
        return true;
    }
    bool HandleOnTooltip(tamsel7::CTooltipEvent* event) override {
        event->text = "<b>tip</b>";
        return true;
    }
    bool HandleDragOver(CVisualElement*, int, int, brevolt7::DragInfo& info) override {
        return info.text == "welcome";
    }
    void HandleDropDone(CVisualElement*, int x, int y, brevolt7::DragInfo& info) override {
        Note("drop " + info.text, x, y, 0, MouseButton::NONE);
    }
    void HandleCaptureLost() override { heard += " lost"; }
    std::string HandleAsString() const override { return "words"; }
    bool IsCopyToClipboardEnabled() const override { return true; }

    std::uint8_t next_fill = 200;

private:
    void Note(const std::string& what, int x, int y, int flags, MouseButton button) {
        heard += " " + what + " " + std::to_string(x) + "," + std::to_string(y) + ":" +
                 std::to_string(flags) + "/" + std::to_string(static_cast<int>(button));
    }

    std::string heard;
};

bool wait_for(const std::function<bool()>& state) {
    QElapsedTimer clock;
    clock.start();
    while (!state() && clock.elapsed() < 10'000) {
        QApplication::processEvents(QEventLoop::AllEvents, 20);
    }
    return state();
}

class ElementWidgetTest : public testing::Test {
protected:
    void SetUp() override {
        band = new Probe(widget.GetRoot(), Alignment::ALIGN_TOP);
        rest = new Probe(widget.GetRoot(), Alignment::ALIGN_FILL);
        band->SetSize({100, 40}, false);
        widget.resize(200, 140);
        widget.show();
        widget.activateWindow();
        settle();
    }

    static void settle() {
        for (int i = 0; i < 5; ++i) {
            QApplication::sendPostedEvents();
            QApplication::processEvents();
        }
    }

    void mouse(QEvent::Type type, QPoint at, Qt::MouseButton button, Qt::MouseButtons held,
               Qt::KeyboardModifiers keys = {}) {
        QMouseEvent event(type, at, widget.mapToGlobal(at), button, held, keys);
        QApplication::sendEvent(&widget, &event);
    }
    void press_key(int key, Qt::KeyboardModifiers keys = {}, const QString& text = {}) {
        QKeyEvent event(QEvent::KeyPress, key, keys, text);
        QApplication::sendEvent(&widget, &event);
    }
    int red_at(int x, int y) { return qRed(widget.grab().toImage().pixel(x, y)); }

    ElementWidget widget;
    Probe* band = nullptr;
    Probe* rest = nullptr;
};

TEST_F(ElementWidgetTest, PaintsOnlyWhatIsInvalidAndKeepsTheRest) {
    EXPECT_EQ(red_at(5, 5), 200);
    EXPECT_EQ(red_at(5, 100), 200);
    band->next_fill = rest->next_fill = 90;
    rest->InvalidateRect({10, 10, 30, 30});
    settle();
    EXPECT_EQ(red_at(20, 40 + 20), 90);
    EXPECT_EQ(red_at(40, 40 + 20), 200);
    EXPECT_EQ(red_at(5, 5), 200);
    // A widget that grows keeps nothing of what it showed.
    widget.resize(240, 160);
    settle();
    EXPECT_EQ(red_at(5, 5), 90);
    EXPECT_EQ(red_at(235, 155), 90);
}

TEST_F(ElementWidgetTest, MovesPixelsInsideAnArea) {
    rest->InvalidateRect({0, 0, 200, 100});
    rest->next_fill = 60;
    rest->InvalidateRect({0, 0, 20, 20});
    settle();
    rest->next_fill = 200;
    rest->InvalidateRect({50, 0, 200, 100});
    settle();
    ASSERT_EQ(red_at(10, 50), 60);
    ASSERT_TRUE(widget.GetControl().ScrollPixels({0, 40, 200, 140}, 100, 0));
    settle();
    EXPECT_EQ(red_at(110, 50), 60);
    EXPECT_EQ(red_at(110, 30), 200) << "outside the area";
}

TEST_F(ElementWidgetTest, TellsElementsOfPointerEventsInTheirPixels) {
    mouse(QEvent::MouseButtonPress, {30, 60}, Qt::LeftButton, Qt::LeftButton, Qt::ControlModifier);
    mouse(QEvent::MouseButtonRelease, {31, 61}, Qt::LeftButton, Qt::NoButton);
    EXPECT_EQ(rest->Take(), " down 30,20:9/1 up 31,21:0/1");
    mouse(QEvent::MouseButtonDblClick, {5, 6}, Qt::LeftButton, Qt::LeftButton, Qt::ShiftModifier);
    mouse(QEvent::MouseButtonRelease, {5, 6}, Qt::LeftButton, Qt::NoButton);
    EXPECT_EQ(band->Take(), " double 5,6:5/1 up 5,6:0/1");

    QWheelEvent wheel(QPointF(30, 60), widget.mapToGlobal(QPointF(30, 60)), {}, {-60, 120},
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&widget, &wheel);
    EXPECT_EQ(rest->Take(), " wheel 30,20:0/0/120 wheel 30,20:4/0/-60");
}

TEST_F(ElementWidgetTest, AsksForTheMenuWhenItsButtonIsUp) {
    mouse(QEvent::MouseButtonPress, {30, 60}, Qt::RightButton, Qt::RightButton);
    QContextMenuEvent by_mouse(QContextMenuEvent::Mouse, {30, 60}, widget.mapToGlobal(QPoint()));
    QApplication::sendEvent(&widget, &by_mouse);
    mouse(QEvent::MouseButtonRelease, {30, 60}, Qt::RightButton, Qt::NoButton);
    const std::string heard = rest->Take();
    EXPECT_EQ(std::count(heard.begin(), heard.end(), 'm'), 1) << heard;
    rest->Take();
    widget.GetControl().SetFocus(rest);
    QContextMenuEvent by_key(QContextMenuEvent::Keyboard, {0, 0}, widget.mapToGlobal(QPoint()));
    QApplication::sendEvent(&widget, &by_key);
    EXPECT_EQ(rest->Take(), " key 93:0 menu 100,50:0/0");
}

TEST_F(ElementWidgetTest, NoticesAReleaseThatWentElsewhere) {
    mouse(QEvent::MouseButtonPress, {30, 60}, Qt::LeftButton, Qt::LeftButton);
    rest->CaptureMouse();
    rest->Take();
    mouse(QEvent::MouseMove, {80, 60}, Qt::NoButton, Qt::NoButton);
    EXPECT_EQ(rest->Take(), " lost");
    EXPECT_EQ(widget.GetControl().GetCapture(), nullptr);
}

TEST_F(ElementWidgetTest, TranslatesKeysAndTexts) {
    widget.GetControl().SetFocus(rest);
    press_key(Qt::Key_Left, Qt::ShiftModifier);
    press_key(Qt::Key_F3);
    press_key(Qt::Key_A, {}, "\u00e4");
    EXPECT_EQ(rest->Take(), " key 37:4 key 114:0 key 65:0 char \xc3 char \xa4");

    press_key(Qt::Key_Insert, Qt::ControlModifier);
    const QMimeData* const copied = QGuiApplication::clipboard()->mimeData();
    EXPECT_EQ(copied->text(), "words");
    EXPECT_EQ(copied->imageData().value<QImage>().size(),
              QSize(200, 100) * widget.devicePixelRatioF());
}

TEST_F(ElementWidgetTest, ShowsTooltipsAsPlainTexts) {
    widget.GetControl().tooltip_delay = 1;
    mouse(QEvent::MouseMove, {30, 60}, Qt::NoButton, Qt::NoButton);
    ASSERT_TRUE(wait_for([] { return QToolTip::isVisible(); }));
    EXPECT_TRUE(QToolTip::text().contains("&lt;b&gt;tip")) << QToolTip::text().toStdString();
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&widget, &leave);
    EXPECT_TRUE(wait_for([] { return !QToolTip::isVisible(); }));
}

TEST_F(ElementWidgetTest, TakesDropsThatAnElementWants) {
    for (const auto& [text, taken] : {std::pair("welcome", true), std::pair("other", false)}) {
        QMimeData content;
        content.setText(text);
        QDragEnterEvent enter({30, 60}, Qt::CopyAction, &content, Qt::LeftButton, {});
        QApplication::sendEvent(&widget, &enter);
        QDropEvent drop(QPointF(30, 60), Qt::CopyAction, &content, Qt::LeftButton, {});
        QApplication::sendEvent(&widget, &drop);
        EXPECT_EQ(drop.isAccepted(), taken) << text;
    }
    EXPECT_EQ(rest->Take(), " drop welcome 30,20:0/0");
}

/// A range of 1000 units, one to a pixel.
class Range : public brevolt7::ISimpleScrollModel {
public:
    double GetFrom() const override { return 0; }
    double GetTo() const override { return 1000; }
    void SetStart(double to) override { start = to; }
    double GetStart() const override { return start; }
    int GetMinScrollDistance() const override { return 1; }
    void SetMeasure(std::pair<double, int>) override {}
    std::pair<double, int> GetMeasure() const override { return {1.0, 1}; }

    double start = 0;
};

TEST_F(ElementWidgetTest, ScrollBoxesGetBarsOfTheToolkit) {
    Range range;
    auto* const box = new brevolt7::CScrollBox(rest, {100, 100}, Alignment::ALIGN_FILL);
    box->SetVertScroll(&range);
    auto* const pane = new Probe(box, Alignment::ALIGN_FILL);
    box->SetCentralPane(pane);
    settle();
    QScrollBar* shown = nullptr;
    for (QScrollBar* const bar : widget.findChildren<QScrollBar*>()) {
        if (bar->isVisible()) {
            EXPECT_EQ(shown, nullptr);
            shown = bar;
        }
    }
    ASSERT_NE(shown, nullptr);
    EXPECT_EQ(shown->geometry(), QRect(200 - shown->width(), 40, shown->sizeHint().width(), 100));
    EXPECT_EQ(shown->maximum(), 900);
    EXPECT_EQ(pane->GetBounds().right, 200 - shown->width());

    shown->setValue(300); // as a drag of its thumb does
    EXPECT_EQ(range.start, 300);
    box->GetWrappedVertScroll()->SetStart(450);
    settle();
    EXPECT_EQ(shown->value(), 450);
    box->SetVisible(false);
    EXPECT_FALSE(shown->isVisible());
    delete box;
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(widget.findChildren<QScrollBar*>().isEmpty());
}

} // namespace
} // namespace nurvex7::qt
