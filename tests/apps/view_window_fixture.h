#pragma once

#include "apps/nurvex/view_window.h"
#include "nurvex7/model/folding.h"
#include "nurvex7/model/moving.h"
#include "nurvex7/model/queries.h"

#include <QApplication>
#include <QCompleter>
#include <QContextMenuEvent>
#include <QDir>
#include <QDockWidget>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QMessageBox>
#include <QMimeData>
#include <QProgressDialog>
#include <QSettings>
#include <QStatusBar>
#include <QSvgRenderer>
#include <QTemporaryDir>
#include <QTimer>
#include <QToolTip>
#include <QUrl>
#include <QWheelEvent>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <initializer_list>
#include <string>

namespace nurvex {

using namespace nurvex7;

inline constexpr const char* SHOP = R"(shop
[nodes]
1 "shop" 0 0
2 "basket" 0 1
3 "payment" 0 1
4 "stock" 0 0
5 "browser" 0 0
6 "mail" 0 0
[edges]
5 2 "puts in"
2 3 ""
3 4 ""
3 6 "receipt"
)";

class ViewWindowTest : public testing::Test {
protected:
    void SetUp() override {
        QSettings().clear();
        window.resize(900, 600);
        window.show();
        window.activateWindow();
        settle();
        write("shop.txt", SHOP);
        ASSERT_TRUE(window.Open(file("shop.txt")));
        settle();
    }

    QString file(const QString& name) const { return folder.filePath(name); }
    void write(const QString& name, const QByteArray& content) const {
        QFile out(file(name));
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(content);
    }
    static void settle() {
        for (int i = 0; i < 5; ++i) {
            QApplication::sendPostedEvents();
            QApplication::processEvents();
        }
    }

    GraphView& view() { return window.GetView(); }
    Node node(const std::string& caption) {
        std::optional<Node> found;
        ForEachNodeIn(
            view().GetGraph()->GetRoot(),
            [&](const Node& n) {
                if (n.GetCaption() == caption) {
                    found.emplace(n);
                }
            },
            /*post_order=*/false, /*include_self=*/false);
        return found.value();
    }
    std::string hidden() {
        std::string text;
        for (const char* caption : {"basket", "payment", "stock", "browser", "mail"}) {
            text += IsFlagSet(node(caption), NODE_HIDDEN) ? std::string(caption) + " " : "";
        }
        return text;
    }
    std::string selected() {
        std::string text;
        for (const char* caption : {"basket", "payment", "stock", "browser", "mail"}) {
            text += IsFlagSet(node(caption), NODE_SELECTED) ? std::string(caption) + " " : "";
        }
        return text;
    }
    QPointF pixel(double x, double y) {
        const double scale = view().GetScale();
        return QPointF((x - view().GetViewer().GetStartX()) * scale,
                       (y - view().GetViewer().GetStartY()) * scale);
    }
    QPoint corner_of(const Node& n) {
        return pixel(n.GetPosition().x, n.GetPosition().y).toPoint();
    }
    QPoint middle_of(const Node& n) {
        return pixel(n.GetPosition().x + n.GetSize().width / 2,
                     n.GetPosition().y + n.GetSize().height / 2)
            .toPoint();
    }
    QPoint right_port_of(const Node& n) {
        return pixel(n.GetPosition().x + n.GetSize().width - n.GetSize().height / 2,
                     n.GetPosition().y + n.GetSize().height / 2)
            .toPoint();
    }

    void mouse(QWidget& widget, QEvent::Type type, QPoint at, Qt::MouseButton button,
               Qt::MouseButtons held) {
        QMouseEvent event(type, at, widget.mapToGlobal(at), button, held, {});
        QApplication::sendEvent(&widget, &event);
    }
    void click(QPoint at) {
        mouse(view(), QEvent::MouseButtonPress, at, Qt::LeftButton, Qt::LeftButton);
        mouse(view(), QEvent::MouseButtonRelease, at, Qt::LeftButton, Qt::NoButton);
        settle();
    }
    void drag(QWidget& widget, QPoint from, QPoint to) {
        mouse(widget, QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton);
        for (int i = 1; i <= 4; ++i) {
            mouse(widget, QEvent::MouseMove, from + (to - from) * i / 4, Qt::NoButton,
                  Qt::LeftButton);
            settle(); // a frame is painted with each move
        }
        mouse(widget, QEvent::MouseButtonRelease, to, Qt::LeftButton, Qt::NoButton);
        settle();
    }
    void act(const char* name) {
        QAction* const action = window.findChild<QAction*>(QString::fromLatin1(name));
        ASSERT_NE(action, nullptr) << name;
        action->trigger();
        settle();
    }
    QString status() {
        QString text;
        for (const QLabel* label : window.statusBar()->findChildren<QLabel*>()) {
            text += label->text() + QLatin1Char('|');
        }
        return text;
    }
    /// Does something that ends in a message box, and gives its text.
    QString told(const std::function<void()>& work) {
        QString text;
        QTimer closer;
        QObject::connect(&closer, &QTimer::timeout, [&text] {
            if (auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                text = box->text();
                box->accept();
            }
        });
        closer.start(10);
        work();
        return text;
    }
    static void wait_for(const std::function<bool()>& state) {
        QElapsedTimer clock;
        clock.start();
        while (!state() && clock.elapsed() < 10'000) {
            QApplication::processEvents(QEventLoop::AllEvents, 10);
        }
    }
    QString tip_at(QPoint at) {
        view().GetControl().tooltip_delay = 1;
        mouse(view(), QEvent::MouseMove, {1, 1}, Qt::NoButton, Qt::NoButton);
        wait_for([] { return !QToolTip::isVisible(); });
        mouse(view(), QEvent::MouseMove, at, Qt::NoButton, Qt::NoButton);
        wait_for([] { return QToolTip::isVisible(); });
        return QToolTip::text();
    }

    QTemporaryDir folder;
    ViewWindow window;
};

} // namespace nurvex
