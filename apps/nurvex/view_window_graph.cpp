// What can be done with the graph that is shown.
#include "apps/nurvex/failure.h"
#include "apps/nurvex/spacing_dialog.h"
#include "apps/nurvex/starts.h"
#include "apps/nurvex/view_window.h"
#include "apps/nurvex/waiting.h"
#include "nurvex7/model/folding.h"
#include "nurvex7/model/queries.h"

#include <QScopeGuard>
#include <QScopedValueRollback>
#include <QStatusBar>

#include <algorithm>
#include <cstddef>
#include <exception>

namespace nurvex {

using namespace nurvex7;

namespace {

template <typename F>
void for_all(const graph_ptr2<Graph>& graph, F f) {
    ForEachNodeIn(graph->GetRoot(), f, /*post_order=*/false, /*include_self=*/false);
}

bool is_drawn(const Node& node) {
    return IsFlagSet(node, NODE_DRAWN);
}

} // namespace

std::vector<Node> ViewWindow::selected() const {
    std::vector<Node> found;
    for_all(view->GetGraph(), [&found](const Node& node) {
        if (IsFlagSet(node, NODE_SELECTED)) {
            found.push_back(node);
        }
    });
    return found;
}

/// One step of the history: `work` on each selected node.
void ViewWindow::for_selected(const QString& name, const VisibilityWork& work) {
    const std::vector<Node> chosen = selected();
    if (chosen.empty()) {
        statusBar()->showMessage(
            QStringLiteral("Select a node first: click it, or find it by its caption."), 5000);
        return;
    }
    VisibilityRecord before;
    for (const Node& node : chosen) {
        before.Note(node);
        before.NoteNeighbours(node);
    }
    for (const Node& node : chosen) {
        work(node);
    }
    ShowClustersAround(before.FindChanges());
    const std::vector<VisibilityChange> changes = before.FindChanges();
    QueueLayouts(changes);
    history.Record(name, changes);
    after_change(chosen.front());
}

void ViewWindow::fold(FoldDirection direction, bool away) {
    for_selected(away ? QStringLiteral("fold") : QStringLiteral("unfold"), [=](const Node& node) {
        if (away) {
            Fold(node, direction);
        } else {
            Unfold(node, direction);
        }
    });
}

void ViewWindow::hide_selected() {
    for_selected(QStringLiteral("hide"), [](const Node& node) {
        Hide(node);
        Unselect(node);
    });
}

void ViewWindow::show_all() {
    VisibilityRecord before;
    for_all(view->GetGraph(), [&before](const Node& node) {
        MarkOld(node);
        if (IsFlagSet(node, NODE_HIDDEN)) {
            before.Note(node);
            Show(node);
        }
    });
    const std::vector<VisibilityChange> changes = before.FindChanges();
    QueueLayouts(changes);
    history.Record(QStringLiteral("show all"), changes);
    after_change(std::nullopt);
}

/// A large graph is then opened up from there.
void ViewWindow::show_starts() {
    VisibilityRecord before;
    for_all(view->GetGraph(), [&before](const Node& node) {
        MarkOld(node);
        before.Note(node);
    });
    Node root = view->GetGraph()->GetRoot();
    ShowOnlyStarts(root);
    const std::vector<VisibilityChange> changes = before.FindChanges();
    if (changes.empty()) {
        view->GetViewer().RenewView(true); // what was new is not any more
        return;
    }
    root.MakeLayout(); // in the old places they would stand far apart
    history.Record(QStringLiteral("show only the starts"), changes, FoldHistory::Drawing::ANEW);
    after_step(FoldHistory::Drawing::ANEW);
}

void ViewWindow::after_step(FoldHistory::Drawing drawing) {
    after_change(std::nullopt);
    if (drawing == FoldHistory::Drawing::ANEW) {
        view->ShowWhole(); // what was seen stands elsewhere now
    }
}

void ViewWindow::after_change(const std::optional<Node>& kept) {
    constexpr int LARGE = 20'000; // a smaller graph is laid out before anybody waits
    if (nodes < LARGE) {
        view->Refresh(kept);
    } else {
        refresh_waiting(kept);
    }
    count();
}

/// With a dialogue that lets the window live. There is nothing to cancel: what was drawn before is
/// not drawn any more.
void ViewWindow::refresh_waiting(const std::optional<Node>& kept) {
    const QScopedValueRollback mark(opening, true);
    Waiting waiting(this, Waiting::Offer::NOTHING);
    HoverContent& content = view->GetContent();
    content.SetHeld(true); // a repaint meanwhile would lay out, at once or inside this layout
    layout->SetPause([&waiting](int) { waiting.Pause(0); });
    const auto go_on = qScopeGuard([&] {
        layout->SetPause({});
        content.SetHeld(false);
    });
    waiting.Begin(QStringLiteral("Laying out\u2026"), 1);
    view->Refresh(kept);
}

// Selection

void ViewWindow::clear_selection() {
    for_all(view->GetGraph(), &Unselect);
}

void ViewWindow::select_only(const Node& node) {
    clear_selection();
    Select(node);
}

/// Shows a node that is folded away, with the clusters around it.
void ViewWindow::reveal(const Node& node) {
    VisibilityRecord before;
    std::vector<Node> around{node};
    while (!IsRoot(around.back().GetOwner())) {
        around.push_back(around.back().GetOwner());
    }
    for_all(view->GetGraph(), &MarkOld);
    for (const Node& each : around) {
        before.Note(each);
        Show(each);
    }
    const std::vector<VisibilityChange> changes = before.FindChanges();
    QueueLayouts(changes);
    history.Record(
        QStringLiteral("show \u201c%1\u201d").arg(QString::fromStdString(node.GetCaption())),
        changes);
    if (!changes.empty()) {
        after_change(std::nullopt);
    }
}

void ViewWindow::go_to(const Node& node) {
    reveal(node);
    select_only(node);
    constexpr double readable = 0.7;
    if (view->GetScale() < readable) {
        view->ShowActualSize();
    }
    view->CentreOn(node);
    view->GetViewer().RenewView(true);
}

/// From the selected node along an edge, or to the first node where none is selected.
void ViewWindow::go_along(bool to_children) {
    const std::vector<Node> chosen = selected();
    if (chosen.empty()) {
        go_beside(1);
        return;
    }
    NodeSet ends = to_children ? chosen.front().GetChildren() : chosen.front().GetParents();
    for (int i = 0; i < ends.GetCount(); ++i) {
        if (is_drawn(ends.GetItem(i))) {
            go_to(ends.GetItem(i));
            return;
        }
    }
}

/// Through all drawn nodes, in the order of the file.
void ViewWindow::go_beside(int step) {
    std::vector<Node> drawn;
    for_all(view->GetGraph(), [&drawn](const Node& node) {
        if (is_drawn(node) && node.GetOwned().GetCount() == 0) {
            drawn.push_back(node);
        }
    });
    if (drawn.empty()) {
        return;
    }
    const auto size = static_cast<std::ptrdiff_t>(drawn.size());
    const auto at = std::find_if(drawn.begin(), drawn.end(),
                                 [](const Node& node) { return IsFlagSet(node, NODE_SELECTED); });
    const std::ptrdiff_t next = at == drawn.end() ? 0 : ((at - drawn.begin()) + step + size) % size;
    go_to(drawn[static_cast<std::size_t>(next)]);
}

// Menu and spacing

/// The menu belongs to the node under the pointer, which it selects.
void ViewWindow::show_menu(QPoint pixel) {
    const std::optional<Node> node = view->FindNode(pixel);
    if (node && !IsFlagSet(*node, NODE_SELECTED) && node->GetOwned().GetCount() == 0) {
        select_only(*node);
        view->GetViewer().RenewView(true);
    }
    graph_menu->popup(view->mapToGlobal(pixel));
}

void ViewWindow::ask_spacing() {
    const std::optional<Spacing> chosen = AskSpacing(this, spacing);
    if (!chosen) {
        return;
    }
    SetSpacing(*chosen);
}

/// What is folded away stays so.
void ViewWindow::SetSpacing(const Spacing& chosen) {
    if (path.isEmpty()) {
        spacing = chosen;
        return;
    }
    const graph_ptr2<Graph> graph = view->GetGraph();
    const QScopedValueRollback mark(opening, true);
    view->GetContent().SetHeld(true); // a repaint meanwhile would lay out inside this layout
    const auto return_to_old = [&] {
        graph->SetDefaultLayout(layout);
        graph->GetRoot().MakeLayout();
    };
    QString failed;
    try {
        layout = LayOut(graph, chosen, view->GetPainter(), this);
        spacing = chosen;
    } catch (const Cancelled&) {
        return_to_old();
    } catch (const std::exception& failure) {
        return_to_old();
        failed = QString::fromStdString(WordsOf(failure, path.toStdString()));
    }
    view->GetContent().SetHeld(false);
    after_change(std::nullopt);
    if (!failed.isEmpty()) {
        tell(QStringLiteral("The distances stay as they were"), failed);
    }
}

} // namespace nurvex
