// The window, on the offscreen platform: events go in as the desktop sends them, and what comes of
// them is looked at in the graph and on the screen.
#include "tests/apps/view_window_fixture.h"

namespace nurvex {
namespace {

TEST_F(ViewWindowTest, ClicksOnAPortFoldAndUnfoldAndUndoTakesThemBack) {
    const Node payment = node("payment");
    const QPoint before = corner_of(payment);
    // Across the border of the cluster: its bends go along with what they belong to.
    const auto arrival = [this] {
        NodeSet route = node("browser").GetEdgesOut().GetItem(0).GetBreakNodes();
        const auto tip = route.GetItem(route.GetCount() - 1).GetPosition();
        const auto last = route.GetItem(route.GetCount() - 2).GetPosition();
        return QPointF(tip.x - last.x, tip.y - last.y);
    };
    const QPointF arrived = arrival();
    click(right_port_of(payment));
    EXPECT_EQ(arrival(), arrived);
    EXPECT_EQ(hidden(), "stock mail ");
    EXPECT_EQ(corner_of(payment), before) << "the clicked node stays where it is";
    EXPECT_TRUE(status().contains("4 of 6 nodes, 4 edges")) << status().toStdString();
    const QAction* const undo = window.findChild<QAction*>("undo");
    EXPECT_TRUE(undo->text().contains(" fold of")) << undo->text().toStdString();
    click(right_port_of(payment));
    EXPECT_EQ(hidden(), "");
    EXPECT_TRUE(undo->text().contains(" unfold of")) << undo->text().toStdString();
    EXPECT_EQ(corner_of(payment), before);
    const tamsel7::_color fresh = PaletteOf(Theme::LIGHT).fresh.fill;
    for (const char* caption : {"basket", "stock"}) {
        const QPoint below_caption(0, static_cast<int>(0.38 * node(caption).GetSize().height));
        const QColor seen =
            view().GetPicture().pixelColor(middle_of(node(caption)) + below_caption);
        EXPECT_EQ(seen == QColor(fresh.red, fresh.green, fresh.blue),
                  std::string(caption) == "stock")
            << caption;
    }

    act("undo");
    EXPECT_EQ(hidden(), "stock mail ");
    act("undo");
    EXPECT_EQ(hidden(), "");
    act("redo");
    EXPECT_EQ(hidden(), "stock mail ");
    act("show_all");
    EXPECT_EQ(hidden(), "");
}

TEST_F(ViewWindowTest, MenusFoldAndHideWhatIsSelected) {
    click(middle_of(node("payment")));
    EXPECT_EQ(selected(), "payment ");
    act("fold_parents");
    EXPECT_EQ(hidden(), "basket ");
    act("unfold_parents");
    EXPECT_EQ(hidden(), "");
    act("hide");
    EXPECT_EQ(hidden(), "payment ");
    act("undo");
    EXPECT_EQ(hidden(), "");
    act("show_starts");
    EXPECT_EQ(hidden(), "basket payment stock mail ");
    click(right_port_of(node("browser")));
    EXPECT_EQ(hidden(), "payment stock mail ");
    act("undo");
    act("undo");
    EXPECT_EQ(hidden(), "");
}

TEST_F(ViewWindowTest, WhatIsFoldedAwayGivesWay) {
    const Node browser = node("browser");
    const Node basket = node("basket");
    const QPoint stands = middle_of(browser);
    click(stands);
    act("hide");
    EXPECT_FALSE(view().FindNode(stands));
    act("select_rectangle");
    drag(view(), stands - QPoint(30, 30), stands + QPoint(5, 5));
    EXPECT_EQ(selected(), "");

    // Somebody else stands there now, of a higher id.
    MoveNode(basket, browser.GetPosition().x, browser.GetPosition().y);
    view().GetViewer().RenewView(true);
    settle();
    ASSERT_TRUE(view().FindNode(stands));
    EXPECT_EQ(*view().FindNode(stands), basket);
    click(middle_of(basket));
    EXPECT_EQ(selected(), "basket ");
}

TEST_F(ViewWindowTest, NothingIsLaidOutByARepaintOfAHeldView) {
    const double width = node("shop").GetSize().width;
    node("payment").SetCaption("payment by card, by bank or on delivery");
    view().GetGraph()->GetRoot().MakeLayout();
    for (const bool held : {true, false}) {
        view().GetContent().SetHeld(held);
        view().GetViewer().RenewView(true);
        settle();
        EXPECT_EQ(node("shop").GetSize().width > width, !held);
    }
}

TEST_F(ViewWindowTest, PansZoomsAndFits) {
    GraphView& v = view();
    const Node browser = node("browser");
    const QPoint before = corner_of(browser);
    drag(v, {5, 5}, {65, 45});
    EXPECT_EQ(corner_of(browser) - before, QPoint(60, 40));

    const double scale = v.GetScale();
    // The wheel with the control key: what is under the pointer stays.
    const QPoint at = middle_of(browser);
    QWheelEvent wheel(at, v.mapToGlobal(QPointF(at)), {}, {0, 240}, Qt::NoButton,
                      Qt::ControlModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&v, &wheel);
    settle();
    EXPECT_NEAR(v.GetScale(), 1.44 * scale, 1e-9);
    EXPECT_LE((middle_of(browser) - at).manhattanLength(), 2);
    EXPECT_TRUE(status().contains(QString::number(std::lround(144 * scale)) + " %"));

    for (int i = 0; i < 5; ++i) {
        act("zoom_in");
    }
    const double wheel_from = v.GetViewer().GetStartX();
    QWheelEvent scroll(at, v.mapToGlobal(QPointF(at)), {}, {0, 120}, Qt::NoButton,
                       Qt::ShiftModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&v, &scroll);
    EXPECT_NEAR(v.GetViewer().GetStartX(), wheel_from - 48 / v.GetScale(), 1e-9);

    const double start = v.GetViewer().GetStartX();
    QKeyEvent key(QEvent::KeyPress, Qt::Key_Left, {});
    v.setFocus();
    QApplication::sendEvent(&v, &key);
    EXPECT_NEAR(std::abs(v.GetViewer().GetStartX() - start), 4 / v.GetScale(), 1e-9);

    act("actual_size");
    EXPECT_EQ(v.GetScale(), 1.0);
    act("zoom_out");
    EXPECT_EQ(v.GetScale(), 0.8);
    const Node root = v.GetGraph()->GetRoot();
    Spacing wide;
    wide.node_gap = 180'000;
    for (const bool large : {false, true}) {
        if (large) {
            window.SetSpacing(wide);
        }
        act("fit");
        EXPECT_TRUE(
            v.GetVisibleArea().contains(QRectF(root.GetPosition().x, root.GetPosition().y,
                                               root.GetSize().width, root.GetSize().height)));
        EXPECT_EQ(status().contains("|0.0"), large) << status().toStdString();
    }
    const double whole = v.GetScale();
    act("zoom_out");
    EXPECT_EQ(v.GetScale(), whole) << "nothing would come into sight";
    act("zoom_in");
    EXPECT_EQ(v.GetScale(), 1.25 * whole);
}

TEST_F(ViewWindowTest, PressesAreSeenAndLeaveNoTraces) {
    const auto seen = [this] { return view().GetPicture().copy(); };
    const auto press = [this](QPoint at) {
        mouse(view(), QEvent::MouseButtonPress, at, Qt::LeftButton, Qt::LeftButton);
        settle();
    };
    const auto release = [this](QPoint at) {
        mouse(view(), QEvent::MouseButtonRelease, at, Qt::LeftButton, Qt::NoButton);
        settle();
    };
    const auto farthest = [](const QImage& a, const QImage& b) {
        int most = 0;
        for (int i = 0; i < a.width() * a.height(); ++i) {
            const QPoint at(i % a.width(), i / a.width());
            most = std::max(most, std::abs(qGray(a.pixel(at)) - qGray(b.pixel(at))));
        }
        return most;
    };
    const QPoint port = right_port_of(node("payment"));
    const QPoint in_cluster = corner_of(node("shop")) + QPoint(4, 40);
    struct Case {
        const char* what;
        std::function<void()> work;
        bool shows;
    };
    const Case cases[] = {
        {"a click on the ground",
         [&] {
             click({5, 5});
         },
         false},
        {"a click on the ground of a cluster", [&] { click(in_cluster); }, false},
        {"a press of a port", [&] { press(port); }, true},
        {"its release elsewhere",
         [&] {
             release({5, 5});
         },
         true},
        {"a click on a node", [&] { click(middle_of(node("mail"))); }, true},
        {"a pan",
         [&] {
             press({5, 5});
             mouse(view(), QEvent::MouseMove, {65, 45}, Qt::NoButton, Qt::LeftButton);
             settle();
         },
         true},
        {"the end of a pan",
         [&] {
             release({65, 45});
         },
         false},
    };
    for (const Case& c : cases) {
        const QImage before = seen();
        c.work();
        const QImage after = seen();
        EXPECT_EQ(after != before, c.shows) << c.what;
        view().GetViewer().RenewView(true);
        settle();
        // A slanting line that was moved with its surroundings may be rounded otherwise.
        EXPECT_LE(farthest(seen(), after), 1) << c.what;
    }
}

TEST_F(ViewWindowTest, RectanglesZoomAndSelect) {
    view().SetDragMode(GraphView::DragMode::PAN);
    drag(view(), {5, 5}, {95, 75}); // so that pixels are no graph coordinates
    act("select_rectangle");
    const QPoint payment = corner_of(node("payment"));
    drag(view(), payment - QPoint(4, 4), middle_of(node("payment")) + QPoint(2, 12));
    EXPECT_EQ(selected(), "payment ");

    act("zoom_rectangle");
    const QPoint from = corner_of(node("shop")) - QPoint(2, 2);
    const double before = view().GetScale();
    drag(view(), from, from + QPoint(120, 90));
    EXPECT_GT(view().GetScale(), before * 2);
    EXPECT_LE((corner_of(node("shop")) - QPoint()).manhattanLength(), 30);
    // One rectangle, then a drag pans again; so it does when the rectangle was given up, before
    // it was begun or while it is drawn.
    for (QWidget* const focused :
         {static_cast<QWidget*>(&window), static_cast<QWidget*>(&view())}) {
        act("zoom_rectangle");
        if (focused == &view()) {
            mouse(view(), QEvent::MouseButtonPress, {200, 200}, Qt::LeftButton, Qt::LeftButton);
            mouse(view(), QEvent::MouseMove, {300, 300}, Qt::NoButton, Qt::LeftButton);
        }
        QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, {});
        QApplication::sendEvent(focused, &escape);
        mouse(view(), QEvent::MouseButtonRelease, {300, 300}, Qt::LeftButton, Qt::NoButton);
        const QPoint stands = corner_of(node("shop"));
        drag(view(), {300, 300}, {320, 310});
        EXPECT_EQ(corner_of(node("shop")) - stands, QPoint(20, 10));
    }
}

TEST_F(ViewWindowTest, DragsNodesOnlyWhereThatIsAllowed) {
    for (const bool allowed : {false, true}) {
        const QPoint mail = middle_of(node("mail"));
        const QPoint stock = middle_of(node("stock"));
        drag(view(), mail, mail + QPoint(30, 50));
        EXPECT_EQ(middle_of(node("mail")) - mail, QPoint(30, 50));
        EXPECT_EQ(middle_of(node("stock")) - stock, allowed ? QPoint() : QPoint(30, 50));
        act("drag_nodes");
    }
}

TEST_F(ViewWindowTest, LightsUpAndTellsWhatIsUnderThePointer) {
    const Node basket = node("basket");
    mouse(view(), QEvent::MouseMove, {1, 1}, Qt::NoButton, Qt::NoButton);
    settle();
    const QImage untouched = view().GetPicture().copy();
    EXPECT_EQ(tip_at(middle_of(basket)), "basket\n1 parent\n1 child");
    EXPECT_TRUE(IsFlagSet(basket, NODE_HOVERED));
    Edge edge = node("browser").GetEdgesOut().GetItem(0);
    NodeSet route = edge.GetBreakNodes();
    const auto a = route.GetItem(0).GetPosition();
    EXPECT_EQ(tip_at(pixel(a.x + 3, a.y).toPoint()), "puts in\nbrowser \u2192 basket");
    EXPECT_FALSE(IsFlagSet(basket, NODE_HOVERED));
    EXPECT_TRUE(IsFlagSet(edge, EDGE_HOVERED));
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&view(), &leave);
    EXPECT_FALSE(IsFlagSet(edge, EDGE_HOVERED));
    settle();
    EXPECT_EQ(view().GetPicture(), untouched) << "no line becomes bolder by being visited";

    const OverviewPane& overview = window.GetOverview();
    const QImage calm = overview.GetPicture().copy();
    mouse(view(), QEvent::MouseMove, middle_of(basket), Qt::NoButton, Qt::NoButton);
    view().GetViewer().RenewView(true);
    settle();
    EXPECT_NE(view().GetPicture(), untouched);
    EXPECT_EQ(overview.GetPicture(), calm) << "nothing would take it off again";
}

TEST_F(ViewWindowTest, TheOverviewMovesAndResizesWhatIsSeen) {
    for (int i = 0; i < 8; ++i) {
        act("zoom_in");
    }
    OverviewPane& overview = window.GetOverview();
    const double zoom = overview.ToPixel({1, 0}).x() - overview.ToPixel({0, 0}).x();
    EXPECT_NEAR(overview.ToPixel({0, 1}).y() - overview.ToPixel({0, 0}).y(), zoom, 1e-9);
    const auto frame = [&] {
        const QRectF seen = view().GetVisibleArea();
        return QRectF(overview.ToPixel(seen.topLeft()), seen.size() * zoom);
    };
    const QPointF before = view().GetVisibleArea().topLeft();
    const QPoint inside = frame().center().toPoint();
    drag(overview, inside, inside + QPoint(12, 6));
    const QPointF moved = (view().GetVisibleArea().topLeft() - before) * zoom;
    EXPECT_NEAR(moved.x(), 12, 1);
    EXPECT_NEAR(moved.y(), 6, 1);

    // A press beside the frame takes the view there.
    const QPoint beside = overview.rect().center() + QPoint(0, overview.height() / 3);
    drag(overview, beside, beside);
    EXPECT_LE((frame().center() - beside).manhattanLength(), 2);

    const double scale = view().GetScale();
    const QRectF now = frame();
    const QPoint border(qRound(now.right()), qRound(now.center().y()));
    drag(overview, border, border + QPoint(16, 0));
    EXPECT_LT(view().GetScale(), scale * 0.95);
}

TEST_F(ViewWindowTest, TheOverviewIsPaintedAnewOnlyForAnotherDrawing) {
    OverviewPane& overview = window.GetOverview();
    int painted = 0;
    overview.on_painting = [&painted](bool begins) { painted += begins ? 1 : 0; };
    const auto paintings_by = [&](const std::function<void()>& work) {
        painted = 0;
        work();
        settle();
        return painted;
    };
    EXPECT_EQ(paintings_by([&] {
                  drag(view(), {5, 5}, {65, 45});
                  act("zoom_in");
                  act("fit");
                  mouse(view(), QEvent::MouseMove, middle_of(node("mail")), Qt::NoButton, {});
              }),
              0);
    const auto colours = window.palette();
    QPalette dark = colours;
    dark.setColor(QPalette::Window, QColor(40, 40, 40));
    const std::vector<std::function<void()>> changes{
        [&] { click(middle_of(node("mail"))); },
        [&] { click(right_port_of(node("payment"))); },
        [&] { act("undo"); },
        [&] {
            view().GetGraph()->GetRoot().MakeLayout();
            view().GetContent().Invalidate();
        },
        [&] { window.setPalette(dark); },
        [&] { window.resize(window.size() + QSize(40, 60)); },
        [&] { window.Open(file("shop.txt")); }};
    for (std::size_t i = 0; i < changes.size(); ++i) {
        EXPECT_GT(paintings_by(changes[i]), 0) << i;
        const QImage kept = overview.GetPicture().copy();
        overview.Renew();
        EXPECT_EQ(paintings_by([&] { view().GetViewer().RenewView(false); }), 1) << i;
        EXPECT_EQ(overview.GetPicture(), kept) << i;
    }
}

TEST_F(ViewWindowTest, FindsNodesAndShowsThemAgain) {
    click(right_port_of(node("payment")));
    ASSERT_EQ(hidden(), "stock mail ");
    window.GetFindBar().setText("MAI");
    window.GetFindBar().FindNext();
    settle();
    EXPECT_EQ(hidden(), "stock ");
    EXPECT_EQ(selected(), "mail ");
    const QPoint centre = view().rect().center();
    EXPECT_LE((middle_of(node("mail")) - centre).manhattanLength(), 4);
    window.GetFindBar().setText("a");
    std::string found;
    for (int i = 0; i < 4; ++i) {
        window.GetFindBar().FindNext();
        found += selected();
    }
    EXPECT_EQ(found, "basket mail payment basket ");
    act("to_child");
    EXPECT_EQ(selected(), "payment ");
    act("to_parent");
    EXPECT_EQ(selected(), "basket ");

    FindBar& bar = window.GetFindBar();
    for (const std::size_t most : {std::size_t{6}, std::size_t{5}}) {
        bar.most_offered = most;
        ASSERT_TRUE(window.Open(file("shop.txt")));
        for (int i = 0; i < 2; ++i) { // before and after the captions were searched
            bar.clear();
            QKeyEvent key(QEvent::KeyPress, Qt::Key_O, Qt::NoModifier, "o");
            QApplication::sendEvent(&bar, &key);
            EXPECT_EQ(bar.completer()->completionCount(), most == 6 ? 3 : 0);
            bar.FindNext();
        }
        bar.FindNext();
        EXPECT_EQ(selected(), "stock ") << "after browser and shop";
    }
}

/// Small drawings are shown whole, large ones at a readable scale from their first node on,
/// which is far from the middle of their left side here.
TEST_F(ViewWindowTest, OpensWhereADrawingBegins) {
    const QRectF all(0, 0, view().width(), view().height());
    const Node root = view().GetGraph()->GetRoot();
    const QRectF shown(pixel(root.GetPosition().x, root.GetPosition().y),
                       QSizeF(root.GetSize().width, root.GetSize().height) * view().GetScale());
    EXPECT_TRUE(all.contains(shown));
    EXPECT_LE((shown.center() - all.center()).manhattanLength(), 4);

    QByteArray text("fan\n[nodes]\n1 \"start\" 0 0\n");
    QByteArray edges("[edges]\n");
    for (int i = 2; i < 90; ++i) {
        const QByteArray id = QByteArray::number(i);
        text += id + " \"n" + id + "\" 0 0\n";
        edges += QByteArray::number(i < 30 ? i - 1 : 29) + " " + id + " \"\"\n";
    }
    write("fan.txt", text + edges);
    ASSERT_TRUE(window.Open(file("fan.txt")));
    settle();
    EXPECT_EQ(view().GetScale(), 1.0);
    EXPECT_LT(corner_of(node("start")).x(), 40);
    EXPECT_LE(std::abs(middle_of(node("start")).y() - view().height() / 2), 2);
    // The frame of the overview is painted whole, at the place where it is dragged.
    const QRectF seen = view().GetVisibleArea();
    const OverviewPane& overview = window.GetOverview();
    const QPoint corner = overview.ToPixel(seen.topLeft()).toPoint();
    const QColor frame = overview.GetPicture().pixelColor(corner.x(), corner.y() + 4);
    EXPECT_GT(frame.red(), frame.green() + 80);
}

// A large graph is not laid out in one go: the window has its turn in between, and draws nothing
// of what is half done.
TEST_F(ViewWindowTest, LivesWhileALargeGraphIsLaidOutAgain) {
    QByteArray text("large\n[nodes]\n");
    QByteArray edges("[edges]\n");
    for (int i = 1; i <= 25'000; ++i) {
        const QByteArray id = QByteArray::number(i);
        text += id + " \"n" + id + "\" 1 0\n";
        edges += i > 1 ? QByteArray::number(i / 2) + " " + id + " \"\"\n" : QByteArray();
    }
    write("large.txt", text + edges);
    ASSERT_TRUE(window.Open(file("large.txt")));
    settle();
    int turns = 0;
    QTimer other;
    QObject::connect(&other, &QTimer::timeout, [&] {
        if (window.findChild<QProgressDialog*>() != nullptr) {
            ++turns;
            view().grab();
            EXPECT_FALSE(window.Open(file("shop.txt"))) << "one after the other";
        }
    });
    other.start(0);
    act("show_starts");
    act("show_all");
    other.stop();
    EXPECT_GE(turns, 2) << "one for each at least, as soon as it begins";
    EXPECT_TRUE(status().contains("25,000 nodes, 24,999 edges")) << status().toStdString();
    EXPECT_TRUE(window.Open(file("shop.txt")));
}

TEST_F(ViewWindowTest, AnOpeningCanBeCancelledInEachStage) {
    const QPoint stands = corner_of(node("payment"));
    for (const char* stage : {"Checking", "Reading", "Laying out", "Preparing"}) {
        QTimer impatient;
        QObject::connect(&impatient, &QTimer::timeout, [this, stage] {
            auto* const waiting = window.findChild<QProgressDialog*>();
            if (waiting != nullptr && waiting->labelText().startsWith(QLatin1String(stage))) {
                waiting->cancel();
            }
        });
        impatient.start(0);
        EXPECT_FALSE(window.Open(file("shop.txt"))) << stage;
        impatient.stop();
        settle();
        EXPECT_EQ(corner_of(node("payment")), stands) << stage;
    }
    EXPECT_TRUE(window.Open(file("shop.txt")));
}

TEST_F(ViewWindowTest, OtherSpacingKeepsWhatIsFoldedAway) {
    click(right_port_of(node("payment")));
    const auto gap = [this] {
        return node("shop").GetPosition().x - node("browser").GetPosition().x -
               node("browser").GetSize().width;
    };
    const double before = gap();
    Spacing wide;
    wide.level_gap += 40;
    window.SetSpacing(wide);
    EXPECT_DOUBLE_EQ(gap(), before + 40);
    EXPECT_EQ(hidden(), "stock mail ");
}

TEST_F(ViewWindowTest, ABrokenFileLeavesWhatIsShown) {
    click(right_port_of(node("payment")));
    const QPoint stands = corner_of(node("payment"));
    write("shop.txt", "shop\n[nodes]\n1 \"a\" 0 0\n[edges]\n1 77 \"\"\n");
    const QString text = told([&] { act("reload"); });
    EXPECT_TRUE(text.contains("shop.txt")) << text.toStdString();
    EXPECT_TRUE(text.contains("Line 5")) << text.toStdString();
    EXPECT_EQ(hidden(), "stock mail ");
    EXPECT_EQ(corner_of(node("payment")), stands);
    EXPECT_TRUE(told([&] { window.Open(file("missing.txt")); }).contains("missing.txt"));

    write("sound.txt", SHOP);
    write("other.txt", "other\n[nodes]\n1 \"alone\" 0 0\n[edges]\n");
    QMimeData content;
    content.setUrls({QUrl::fromLocalFile(file("other.txt"))});
    QDragEnterEvent enter({50, 50}, Qt::CopyAction, &content, Qt::LeftButton, {});
    QDropEvent drop(QPointF(50, 50), Qt::CopyAction, &content, Qt::LeftButton, {});
    for (QWidget* const on :
         std::initializer_list<QWidget*>{&view(), &window, &window.GetFindBar()}) {
        ASSERT_TRUE(window.Open(file("sound.txt")));
        QApplication::sendEvent(on, &enter);
        QApplication::sendEvent(on, &drop);
        settle();
        EXPECT_EQ(window.GetPath(), file("other.txt"));
        EXPECT_EQ(node("alone").GetCaption(), "alone");
    }
}

TEST_F(ViewWindowTest, ExportsTheDrawingOrWhatIsSeen) {
    for (int i = 0; i < 6; ++i) {
        act("zoom_in");
    }
    ASSERT_TRUE(window.Export(file("whole.svg"), /*whole=*/true));
    ASSERT_TRUE(window.Export(file("seen.svg"), /*whole=*/false));
    const QSize whole = QSvgRenderer(file("whole.svg")).defaultSize();
    const QSize seen = QSvgRenderer(file("seen.svg")).defaultSize();
    EXPECT_GT(whole.width(), seen.width());
    EXPECT_NEAR(seen.width(), view().GetVisibleArea().width(), 2);

    const QString text =
        told([&] { EXPECT_FALSE(window.Export(file("nowhere/picture.png"), /*whole=*/true)); });
    EXPECT_TRUE(text.contains("nowhere/picture.png")) << text.toStdString();
}

TEST_F(ViewWindowTest, FollowsADarkPaletteAndRemembersItsState) {
    const QColor light = view().grab().toImage().pixelColor(3, 3);
    QPalette dark = QApplication::palette();
    dark.setColor(QPalette::Window, QColor(40, 40, 40));
    window.setPalette(dark);
    settle();
    const QColor ground = view().grab().toImage().pixelColor(3, 3);
    EXPECT_GT(light.lightness(), 200);
    EXPECT_LT(ground.lightness(), 60);

    auto* const dock = window.findChild<QDockWidget*>("overview");
    dock->hide();
    window.close();
    const ViewWindow again;
    EXPECT_TRUE(again.findChild<QDockWidget*>("overview")->isHidden());
}

} // namespace
} // namespace nurvex

int main(int count, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QTemporaryDir settings;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());
    const QApplication application(count, arguments);
    QApplication::setOrganizationName("nurvex");
    QApplication::setApplicationName("nurvex");
    testing::InitGoogleTest(&count, arguments);
    return RUN_ALL_TESTS();
}
