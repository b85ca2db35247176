// Pointer, keys, focus and drops of the widget, handed on to its elements.
#include "hosts/qt/element_widget.h"
#include "hosts/qt/input.h"

#include <QContextMenuEvent>
#include <QDropEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QWheelEvent>

#include <utility>

namespace nurvex7::qt {

namespace {

int flags_of(const QSinglePointEvent& event) {
    return FlagsOf(event.buttons(), event.modifiers());
}

QPoint place_of(const QSinglePointEvent& event) {
    return event.position().toPoint();
}

/// What comes from other programs: its text, and the toolkit's own object for who knows it.
brevolt7::DragInfo drag_info(const QMimeData* content) {
    brevolt7::DragInfo info;
    info.data = content;
    info.text = content->text().toStdString();
    return info;
}

} // namespace

// Pointer

void ElementWidget::press(QMouseEvent* event, bool double_click) {
    const QPoint at = place_of(*event);
    const tamsel7::MouseButton button = ButtonOf(event->button());
    due_menu.reset();
    pressed = true;
    if (button == tamsel7::MouseButton::NONE) {
        event->ignore();
    } else if (double_click) {
        control->ProcessDoubleClick(at.x(), at.y(), flags_of(*event), button);
    } else {
        control->ProcessButtonDown(at.x(), at.y(), flags_of(*event), button);
    }
}

void ElementWidget::mousePressEvent(QMouseEvent* event) {
    press(event, /*double_click=*/false);
}

void ElementWidget::mouseDoubleClickEvent(QMouseEvent* event) {
    press(event, /*double_click=*/true);
}

void ElementWidget::mouseReleaseEvent(QMouseEvent* event) {
    const QPoint at = place_of(*event);
    const tamsel7::MouseButton button = ButtonOf(event->button());
    if (button == tamsel7::MouseButton::NONE) {
        event->ignore();
        return;
    }
    pressed = event->buttons() != Qt::NoButton;
    control->ProcessButtonUp(at.x(), at.y(), flags_of(*event), button);
    if (due_menu && event->buttons() == Qt::NoButton) {
        const QPoint menu_at = *std::exchange(due_menu, std::nullopt);
        control->ProcessContextMenu(menu_at.x(), menu_at.y());
    }
}

void ElementWidget::mouseMoveEvent(QMouseEvent* event) {
    const QPoint at = place_of(*event);
    // A menu or a dialogue that opened meanwhile got the release.
    if (event->buttons() == Qt::NoButton && std::exchange(pressed, false)) {
        control->ProcessCaptureLost();
    }
    control->ProcessMouseMove(at.x(), at.y(), flags_of(*event), tamsel7::MouseButton::NONE);
}

void ElementWidget::leaveEvent(QEvent* /*event*/) {
    control->ProcessMouseLeave();
}

/// A wheel along x is one along y with the shift key. With the alt key the toolkit takes one for
/// the other by itself.
void ElementWidget::wheelEvent(QWheelEvent* event) {
    const QPoint at = place_of(*event);
    const QPoint distance = event->angleDelta();
    const int flags = flags_of(*event);
    const auto turn = [&](int how_far, int with_flags) {
        return how_far != 0 && control->ProcessWheel(at.x(), at.y(), with_flags,
                                                     tamsel7::MouseButton::NONE, how_far);
    };
    const bool along_y = turn(distance.y(), flags);
    const bool along_x = turn(distance.x(), flags | brevolt7::FLAG_SHIFT);
    event->setAccepted(along_y || along_x);
}

/// Some platforms ask for the menu at the press of a button, some at its release. Elements hear of
/// it after the release, so that no press stays open behind a menu.
void ElementWidget::contextMenuEvent(QContextMenuEvent* event) {
    event->accept();
    if (event->reason() == QContextMenuEvent::Keyboard) {
        control->ProcessKeyDown(0, brevolt7::KEY_MENU);
    } else if (pressed) {
        due_menu = event->pos();
    } else {
        control->ProcessContextMenu(event->x(), event->y());
    }
}

// Keys and focus

void ElementWidget::keyPressEvent(QKeyEvent* event) {
    const std::optional<int> key = KeyOf(*event);
    // The toolkit asks for the menu by itself.
    const bool own_key = key && *key != brevolt7::KEY_MENU;
    bool handled = own_key && control->ProcessKeyDown(FlagsOf({}, event->modifiers()), *key);
    if (!handled && !event->text().isEmpty() && event->text().front().isPrint()) {
        for (const char byte : event->text().toStdString()) {
            handled = control->ProcessChar(byte) || handled;
        }
    }
    if (!handled) {
        QWidget::keyPressEvent(event);
    }
}

void ElementWidget::keyReleaseEvent(QKeyEvent* event) {
    const std::optional<int> key = KeyOf(*event);
    if (!key || !control->ProcessKeyUp(FlagsOf({}, event->modifiers()), *key)) {
        QWidget::keyReleaseEvent(event);
    }
}

/// The tab key goes through the elements first, and on to other widgets behind the last of them.
bool ElementWidget::focusNextPrevChild(bool next) {
    return control->ProcessKeyDown(next ? 0 : brevolt7::FLAG_SHIFT, brevolt7::KEY_TAB) ||
           QWidget::focusNextPrevChild(next);
}

void ElementWidget::focusInEvent(QFocusEvent* event) {
    control->ProcessFocusChange(true);
    const bool backwards = event->reason() == Qt::BacktabFocusReason;
    if (control->GetFocus() == nullptr || backwards || event->reason() == Qt::TabFocusReason) {
        brevolt7::CVisualElement* const root = GetRoot();
        control->SetFocus(backwards ? root->GetLastTabElement() : root->GetFirstTabElement());
    }
}

void ElementWidget::focusOutEvent(QFocusEvent* /*event*/) {
    control->ProcessFocusChange(false);
}

// Drops

void ElementWidget::dragEnterEvent(QDragEnterEvent* event) {
    dragMoveEvent(event);
}

void ElementWidget::dragMoveEvent(QDragMoveEvent* event) {
    brevolt7::DragInfo info = drag_info(event->mimeData());
    const QPoint at = event->position().toPoint();
    if (control->ProcessDragOver(at.x(), at.y(), info)) {
        event->acceptProposedAction();
    } else {
        event->ignore();
    }
    // A widget that refuses the entrance hears nothing of the moves behind it.
    if (event->type() == QEvent::DragEnter) {
        event->setAccepted(true);
    }
}

void ElementWidget::dropEvent(QDropEvent* event) {
    brevolt7::DragInfo info = drag_info(event->mimeData());
    const QPoint at = event->position().toPoint();
    if (control->ProcessDrop(at.x(), at.y(), info)) {
        event->acceptProposedAction();
    } else {
        event->ignore();
    }
}

} // namespace nurvex7::qt
