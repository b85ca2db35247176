#pragma once

#include "apps/nurvex/find_bar.h"
#include "apps/nurvex/fold_history.h"
#include "apps/nurvex/graph_opening.h"
#include "apps/nurvex/graph_view.h"
#include "apps/nurvex/overview_pane.h"
#include "apps/nurvex/spacing.h"
#include "apps/nurvex/view_style.h"
#include "nurvex7/model/flags.h"

#include <QAction>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QString>

#include <optional>
#include <vector>

namespace nurvex {

/// The window of `nurvex view`: the viewer, an overview, and what can be done with the graph.
///
/// A graph is opened into a fresh one, and only when that is good does it take the place of the one
/// that is shown. What goes wrong is told, and nothing is lost by it.
class ViewWindow : public QMainWindow {
public:
    ViewWindow();
    ~ViewWindow() override;

    /// True where the file is shown now; else the user has been told why not.
    bool Open(const QString& path);
    /// The file that is shown; empty where there is none.
    const QString& GetPath() const { return path; }
    GraphView& GetView() const { return *view; }
    OverviewPane& GetOverview() const { return *overview; }
    FindBar& GetFindBar() const { return *find; }
    /// Writes the drawing, or what is seen of it, in the format of the suffix. Errors: told.
    bool Export(const QString& to, bool whole);

    /// Lays the graph out with other distances.
    void SetSpacing(const Spacing& chosen);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    using VisibilityWork = std::function<void(const nurvex7::Node&)>;

    QAction* add(QMenu& menu, const char* name, const char* text, const QKeySequence& keys,
                 std::function<void()> done);
    void make_file_menu();
    void make_edit_menu();
    void make_view_menu();
    void make_graph_menu();
    void make_tool_bar();
    void make_status_bar();
    void make_hint();
    void restore_state();

    // Files: view_window_files.cpp
    void ask_and_open();
    void ask_and_export(bool whole);
    void print();
    void show_opened(const OpenedGraph& opened, const QString& file);
    void remember_recent(const QString& file);
    void fill_recent();
    void tell(const QString& title, const QString& text);

    // The graph: view_window_graph.cpp
    std::vector<nurvex7::Node> selected() const;
    void for_selected(const QString& name, const VisibilityWork& work);
    void fold(nurvex7::FoldDirection direction, bool away);
    void hide_selected();
    void show_all();
    void show_starts();
    void clear_selection();
    void select_only(const nurvex7::Node& node);
    void go_to(const nurvex7::Node& node);
    void go_along(bool to_children);
    void go_beside(int step);
    void reveal(const nurvex7::Node& node);
    void show_menu(QPoint pixel);
    void ask_spacing();
    void after_step(FoldHistory::Drawing drawing);
    void after_change(const std::optional<nurvex7::Node>& kept);
    void refresh_waiting(const std::optional<nurvex7::Node>& kept);

    void follow_palette();
    void update_status();
    void count();
    void set_drag_mode(GraphView::DragMode mode);

    ViewStyle style;
    Spacing spacing;
    FoldHistory history;
    GraphView* view;
    OverviewPane* overview;
    FindBar* find;
    nurvex7::graph_ptr2<ViewLayout> layout; ///< of the graph that is shown
    QString path;
    bool opening = false;
    bool theme_changing = false;
    double layout_milliseconds = 0;

    QMenu* recent = nullptr;
    QMenu* view_menu = nullptr;
    QMenu* graph_menu = nullptr;
    QLabel* hint = nullptr;
    QAction* zoom_rectangle = nullptr;
    QAction* select_rectangle = nullptr;
    QLabel* counts = nullptr;
    QLabel* scale = nullptr;
    QLabel* time = nullptr;
    int nodes = 0;
    int edges = 0;
    int shown_nodes = 0;
};

} // namespace nurvex
