// The window itself: its parts, its menus and its looks.
#include "apps/nurvex/view_window.h"

#include "nurvex7/model/folding.h"
#include "nurvex7/model/queries.h"

#include <QCloseEvent>
#include <QDockWidget>
#include <QDropEvent>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLocale>
#include <QMenuBar>
#include <QMimeData>
#include <QScreen>
#include <QSettings>
#include <QStatusBar>
#include <QToolBar>
#include <QUrl>
#include <QVBoxLayout>

#include <cmath>
#include <initializer_list>
#include <utility>

namespace nurvex {

using namespace nurvex7;

namespace {

constexpr QSize USUAL_SIZE(1100, 720);
constexpr double ZOOM_STEP = 1.25;
constexpr int DARK_BELOW = 128;
constexpr int PALE = 140; ///< of 255: text that stands in for what will be typed

Theme theme_of(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() < DARK_BELOW ? Theme::DARK : Theme::LIGHT;
}

} // namespace

ViewWindow::ViewWindow()
    : style(theme_of(palette())),
      history([this](FoldHistory::Drawing drawing) { after_step(drawing); }),
      view(new GraphView(this)), overview(new OverviewPane(this, &view->GetViewer())),
      find(new FindBar(this)) {
    setWindowTitle(QStringLiteral("nurvex"));
    setCentralWidget(view);
    auto* const dock = new QDockWidget(QStringLiteral("Overview"), this);
    dock->setObjectName(QStringLiteral("overview"));
    dock->setWidget(overview);
    addDockWidget(Qt::RightDockWidgetArea, dock);
    make_file_menu();
    make_edit_menu();
    make_view_menu();
    make_graph_menu();
    view_menu->addSeparator();
    view_menu->addAction(dock->toggleViewAction());
    make_tool_bar();
    make_status_bar();

    setAcceptDrops(true);
    // Those that take drops themselves; all others leave them to the window.
    for (QWidget* const widget : std::initializer_list<QWidget*>{this, view, overview, find}) {
        widget->installEventFilter(this);
    }
    view->on_view_changed = [this] { update_status(); };
    view->on_rectangle_drawn = [this] { set_drag_mode(GraphView::DragMode::PAN); };
    view->GetContent().on_drawing_changed = [this] { overview->Renew(); };
    overview->on_painting = [this](bool begins) { style.ShowPointer(!begins); };
    view->on_menu = [this](QPoint pixel) { show_menu(pixel); };
    find->on_found = [this](const Node& node) { go_to(node); };
    find->on_nothing = [this](const QString& text) {
        statusBar()->showMessage(QStringLiteral("No caption holds \u201c%1\u201d.").arg(text),
                                 5000);
    };
    style.SetFolded([this](const Node& node, const std::vector<VisibilityChange>& changes) {
        const bool shown = !changes.empty() && changes.front().was_hidden;
        history.Record((shown ? QStringLiteral("unfold of \u201c%1\u201d")
                              : QStringLiteral("fold of \u201c%1\u201d"))
                           .arg(QString::fromStdString(node.GetCaption())),
                       changes);
        // The click lays out when it ends. Whoever lays out by then counts behind it.
        const auto count_after_click = [this] {
            if (!view->GetContent().IsHeld()) {
                count();
            }
        };
        QMetaObject::invokeMethod(this, count_after_click, Qt::QueuedConnection);
    });
    style.Dress(view->GetGraph(), view->GetPainter());
    make_hint();
    follow_palette();
    restore_state();
    update_status();
    view->setFocus();
}

/// The elements go before what they refer to.
ViewWindow::~ViewWindow() {
    overview->GetContent().SetViewer(nullptr);
    style.SetFolded({});
    view->on_view_changed = {};
    view->GetContent().on_drawing_changed = {};
    overview->on_painting = {};
    style.Undress(view->GetGraph());
}

// Menus

QAction* ViewWindow::add(QMenu& menu, const char* name, const char* text, const QKeySequence& keys,
                         std::function<void()> done) {
    QAction* const action = menu.addAction(QString::fromUtf8(text));
    action->setObjectName(QString::fromLatin1(name));
    action->setShortcut(keys);
    connect(action, &QAction::triggered, this, [run = std::move(done)] { run(); });
    return action;
}

void ViewWindow::make_file_menu() {
    QMenu& menu = *menuBar()->addMenu(QStringLiteral("&File"));
    add(menu, "open", "&Open\u2026", QKeySequence::Open, [this] { ask_and_open(); });
    recent = menu.addMenu(QStringLiteral("Open &Recent"));
    connect(recent, &QMenu::aboutToShow, this, [this] { fill_recent(); });
    add(menu, "reload", "Re&load", Qt::Key_F5, [this] {
        if (!path.isEmpty()) {
            Open(path);
        }
    });
    menu.addSeparator();
    add(menu, "export", "&Export Drawing\u2026", Qt::CTRL | Qt::Key_E,
        [this] { ask_and_export(/*whole=*/true); });
    add(menu, "export_view", "Export What Is &Seen\u2026", Qt::CTRL | Qt::SHIFT | Qt::Key_E,
        [this] { ask_and_export(/*whole=*/false); });
    add(menu, "print", "&Print\u2026", QKeySequence::Print, [this] { print(); });
    menu.addSeparator();
    add(menu, "quit", "&Quit", QKeySequence::Quit, [this] { close(); });
}

void ViewWindow::make_edit_menu() {
    QMenu& menu = *menuBar()->addMenu(QStringLiteral("&Edit"));
    QAction* const undo = history.GetStack().createUndoAction(this, QStringLiteral("&Undo"));
    undo->setShortcut(QKeySequence::Undo);
    undo->setObjectName(QStringLiteral("undo"));
    QAction* const redo = history.GetStack().createRedoAction(this, QStringLiteral("&Redo"));
    redo->setShortcut(QKeySequence::Redo);
    redo->setObjectName(QStringLiteral("redo"));
    menu.addActions({undo, redo});
    menu.addSeparator();
    add(menu, "find", "&Find a Node", QKeySequence::Find, [this] {
        find->setFocus();
        find->selectAll();
    });
    add(menu, "find_next", "Find &Next", QKeySequence::FindNext, [this] { find->FindNext(); });
    menu.addSeparator();
    add(menu, "unselect", "&Clear the Selection", Qt::CTRL | Qt::SHIFT | Qt::Key_A, [this] {
        clear_selection();
        view->GetViewer().RenewView(true);
    });
    select_rectangle =
        add(menu, "select_rectangle", "&Select by a Rectangle", Qt::CTRL | Qt::Key_B, [this] {
            set_drag_mode(select_rectangle->isChecked() ? GraphView::DragMode::SELECT_RECTANGLE
                                                        : GraphView::DragMode::PAN);
        });
    select_rectangle->setCheckable(true);
}

void ViewWindow::make_view_menu() {
    view_menu = menuBar()->addMenu(QStringLiteral("&View"));
    QMenu& menu = *view_menu;
    add(menu, "zoom_in", "Zoom &In", QKeySequence::ZoomIn, [this] { view->Zoom(ZOOM_STEP); });
    add(menu, "zoom_out", "Zoom &Out", QKeySequence::ZoomOut,
        [this] { view->Zoom(1 / ZOOM_STEP); });
    add(menu, "fit", "&Fit the Drawing", Qt::CTRL | Qt::Key_0, [this] { view->Fit(2.0); });
    add(menu, "actual_size", "&Actual Size", Qt::CTRL | Qt::Key_1,
        [this] { view->ShowActualSize(); });
    zoom_rectangle =
        add(menu, "zoom_rectangle", "&Zoom to a Rectangle", Qt::CTRL | Qt::Key_R, [this] {
            set_drag_mode(zoom_rectangle->isChecked() ? GraphView::DragMode::ZOOM_RECTANGLE
                                                      : GraphView::DragMode::PAN);
        });
    zoom_rectangle->setCheckable(true);
    menu.addSeparator();
    add(menu, "to_child", "Go to a &Child", Qt::ALT | Qt::Key_Right, [this] { go_along(true); });
    add(menu, "to_parent", "Go to a &Parent", Qt::ALT | Qt::Key_Left, [this] { go_along(false); });
    add(menu, "to_next", "Go to the &Next Node", Qt::ALT | Qt::Key_Down, [this] { go_beside(1); });
    add(menu, "to_previous", "Go to the Pre&vious Node", Qt::ALT | Qt::Key_Up,
        [this] { go_beside(-1); });
}

void ViewWindow::make_graph_menu() {
    graph_menu = menuBar()->addMenu(QStringLiteral("&Graph"));
    QMenu& menu = *graph_menu;
    add(menu, "fold_parents", "Fold &Parents Away", Qt::CTRL | Qt::Key_Left,
        [this] { fold(FOLD_PARENTS, /*away=*/true); });
    add(menu, "fold_children", "Fold &Children Away", Qt::CTRL | Qt::Key_Right,
        [this] { fold(FOLD_CHILDREN, /*away=*/true); });
    add(menu, "unfold_parents", "Unfold P&arents", Qt::CTRL | Qt::SHIFT | Qt::Key_Left,
        [this] { fold(FOLD_PARENTS, /*away=*/false); });
    add(menu, "unfold_children", "Unfold Childr&en", Qt::CTRL | Qt::SHIFT | Qt::Key_Right,
        [this] { fold(FOLD_CHILDREN, /*away=*/false); });
    menu.addSeparator();
    add(menu, "hide", "&Hide", Qt::CTRL | Qt::Key_H, [this] { hide_selected(); });
    add(menu, "show_all", "&Show All Nodes", Qt::CTRL | Qt::SHIFT | Qt::Key_H,
        [this] { show_all(); });
    add(menu, "show_starts", "Show &Only the Starts", Qt::CTRL | Qt::SHIFT | Qt::Key_T,
        [this] { show_starts(); });
    menu.addSeparator();
    QAction* const drag = add(menu, "drag_nodes", "&Drag Nodes", Qt::CTRL | Qt::Key_D, [] {});
    drag->setCheckable(true);
    connect(drag, &QAction::toggled, this,
            [this](bool on) { view->GetContent().AllowNodeDrag(on); });
    add(menu, "spacing", "Spac&ing\u2026", Qt::CTRL | Qt::Key_G, [this] { ask_spacing(); });
}

void ViewWindow::make_tool_bar() {
    QToolBar& bar = *addToolBar(QStringLiteral("Tools"));
    bar.setObjectName(QStringLiteral("tools"));
    bar.setToolButtonStyle(Qt::ToolButtonTextOnly);
    const auto put = [&](const char* name, const char* short_text) {
        QAction* const action = findChild<QAction*>(QString::fromLatin1(name));
        if (short_text != nullptr) {
            action->setIconText(QString::fromUtf8(short_text));
        }
        action->setToolTip(QStringLiteral("%1 (%2)").arg(
            action->text().remove(QLatin1Char('&')).remove(QStringLiteral("\u2026")),
            action->shortcut().toString(QKeySequence::NativeText)));
        bar.addAction(action);
    };
    put("open", "Open");
    put("reload", nullptr);
    bar.addSeparator();
    put("zoom_out", "\u2212");
    put("zoom_in", "+");
    put("fit", "Fit");
    put("actual_size", "1:1");
    put("zoom_rectangle", "Zoom Area");
    bar.addSeparator();
    put("select_rectangle", "Select Area");
    put("hide", nullptr);
    put("show_all", "Show All");
    put("undo", "Undo");
    auto* const gap = new QWidget(&bar);
    gap->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    bar.addWidget(gap);
    bar.addWidget(find);
}

/// What to do while nothing is shown.
void ViewWindow::make_hint() {
    hint = new QLabel(QStringLiteral("Open a text graph with %1, or drop one here.")
                          .arg(QKeySequence(QKeySequence::Open).toString(QKeySequence::NativeText)),
                      view);
    hint->setAttribute(Qt::WA_TransparentForMouseEvents);
    hint->setEnabled(false);
    auto* const centre = new QVBoxLayout(view);
    centre->addWidget(hint, 0, Qt::AlignCenter);
}

void ViewWindow::make_status_bar() {
    counts = new QLabel(this);
    time = new QLabel(this);
    scale = new QLabel(this);
    for (QLabel* const label : {counts, time, scale}) {
        label->setContentsMargins(6, 0, 6, 0);
        statusBar()->addPermanentWidget(label);
    }
}

void ViewWindow::set_drag_mode(GraphView::DragMode mode) {
    view->SetDragMode(mode);
    zoom_rectangle->setChecked(mode == GraphView::DragMode::ZOOM_RECTANGLE);
    select_rectangle->setChecked(mode == GraphView::DragMode::SELECT_RECTANGLE);
}

// State

void ViewWindow::count() {
    nodes = edges = shown_nodes = 0;
    const graph_ptr2<Graph> graph = view->GetGraph();
    MarkDrawnIn(graph);
    ForEachNodeIn(
        graph->GetRoot(),
        [this](const Node& node) {
            ++nodes;
            shown_nodes += IsFlagSet(node, NODE_DRAWN) ? 1 : 0;
            edges += node.GetEdgesOut().GetCount();
        },
        /*post_order=*/false, /*include_self=*/false);
    update_status();
}

void ViewWindow::update_status() {
    const QLocale groups(QLocale::English); // a million is not read without
    const auto counted = [&groups](int count, const QString& thing) {
        return QStringLiteral("%1 %2%3").arg(groups.toString(count), thing, count == 1 ? "" : "s");
    };
    const QString some = shown_nodes < nodes
                             ? QStringLiteral("%1 of ").arg(groups.toString(shown_nodes))
                             : QString();
    counts->setText(path.isEmpty() ? QString()
                                   : some + counted(nodes, QStringLiteral("node")) + ", " +
                                         counted(edges, QStringLiteral("edge")));
    const double percent = view->GetScale() * 100;
    scale->setText(percent < 1 ? QStringLiteral("%1 %").arg(percent, 0, 'g', 2)
                               : QStringLiteral("%1 %").arg(std::lround(percent)));
    if (layout.get() != nullptr) {
        const double last = layout->TakeMilliseconds();
        layout_milliseconds = last > 0 ? last : layout_milliseconds;
        time->setText(
            layout_milliseconds < 1000
                ? QStringLiteral("layout %1 ms").arg(layout_milliseconds, 0, 'f', 1)
                : QStringLiteral("layout %1 s").arg(layout_milliseconds / 1000, 0, 'f', 1));
    }
}

void ViewWindow::restore_state() {
    const QSettings settings;
    if (!restoreGeometry(settings.value(QStringLiteral("window/geometry")).toByteArray())) {
        resize(USUAL_SIZE.boundedTo(screen()->availableSize() * 9 / 10));
    }
    restoreState(settings.value(QStringLiteral("window/state")).toByteArray());
}

void ViewWindow::closeEvent(QCloseEvent* event) {
    if (opening) {
        event->ignore(); // the dialogue of the opening has to be answered first
        return;
    }
    QSettings settings;
    settings.setValue(QStringLiteral("window/geometry"), saveGeometry());
    settings.setValue(QStringLiteral("window/state"), saveState());
    QMainWindow::closeEvent(event);
}

void ViewWindow::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && view != nullptr && !theme_changing) {
        follow_palette();
    }
}

/// The views take the ground of the drawing; all other colours are the desktop's.
void ViewWindow::follow_palette() {
    theme_changing = true;
    style.SetTheme(theme_of(palette()));
    const tamsel7::_color ground = style.GetBackground();
    QPalette colours = palette();
    colours.setColor(QPalette::Base, QColor(ground.red, ground.green, ground.blue));
    view->setPalette(colours);
    overview->setPalette(colours);
    // Some desktops leave out this one, and black on black is not read.
    QColor pale = palette().color(QPalette::Text);
    pale.setAlpha(PALE);
    QPalette of_field = palette();
    of_field.setColor(QPalette::PlaceholderText, pale);
    find->setPalette(of_field);
    theme_changing = false;
}

/// The escape key gives up a rectangle, and a search: what follows is for the view again.
void ViewWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        set_drag_mode(GraphView::DragMode::PAN);
        view->setFocus();
        return;
    }
    QMainWindow::keyPressEvent(event);
}

/// Files that are dropped anywhere on the window are opened.
bool ViewWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::DragEnter && event->type() != QEvent::DragMove &&
        event->type() != QEvent::Drop) {
        return QMainWindow::eventFilter(watched, event);
    }
    auto* const drop = static_cast<QDropEvent*>(event);
    const QList<QUrl> urls = drop->mimeData()->urls();
    if (watched == find && urls.isEmpty()) {
        return false; // a text to be found
    }
    const bool wanted = !opening && urls.size() == 1 && urls.first().isLocalFile();
    drop->setAccepted(wanted);
    if (wanted && event->type() == QEvent::Drop) {
        const QString file = urls.first().toLocalFile();
        // The program that the file comes from waits for the end of the drop.
        QMetaObject::invokeMethod(
            this, [this, file] { Open(file); }, Qt::QueuedConnection);
    }
    return true;
}

} // namespace nurvex
