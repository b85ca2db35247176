#include "apps/nurvex/find_bar.h"

#include "nurvex7/model/queries.h"

#include <QCompleter>
#include <QKeyEvent>
#include <QStringListModel>

#include <algorithm>
#include <cstddef>

namespace nurvex {

using namespace nurvex7;

namespace {

constexpr int WIDTH = 220;

} // namespace

FindBar::FindBar(QWidget* parent) : QLineEdit(parent) {
    setPlaceholderText(QStringLiteral("Find a node"));
    setClearButtonEnabled(true);
    setMaximumWidth(WIDTH);
    setObjectName(QStringLiteral("find"));
    auto* const completer = new QCompleter(new QStringListModel(this), this);
    completer->setCaseSensitivity(Qt::CaseInsensitive);
    completer->setFilterMode(Qt::MatchContains);
    setCompleter(completer);
    connect(this, &QLineEdit::returnPressed, this, [this] { FindNext(); });
}

/// Undo and redo stay with the folds: what is typed here is short.
bool FindBar::event(QEvent* event) {
    if (event->type() == QEvent::KeyPress || event->type() == QEvent::InputMethod) {
        gather_to_offer(); // before completions are looked up
    }
    if (event->type() == QEvent::ShortcutOverride) {
        auto* const key = static_cast<QKeyEvent*>(event);
        if (key->matches(QKeySequence::Undo) || key->matches(QKeySequence::Redo)) {
            event->ignore();
            return true;
        }
    }
    return QLineEdit::event(event);
}

void FindBar::SetGraph(const graph_ptr2<Graph>& graph) {
    searched = graph;
    entries.clear();
    static_cast<QStringListModel*>(completer()->model())->setStringList({});
    last_text.clear();
    next = 0;
    too_many = false;
}

void FindBar::gather_to_offer() {
    if (searched.get() == nullptr || too_many) {
        return;
    }
    std::size_t count = 0;
    ForEachNodeIn(
        searched->GetRoot(), [&count](const Node&) { ++count; }, /*post_order=*/false,
        /*include_self=*/false);
    too_many = count > most_offered;
    if (!too_many) {
        gather();
    }
}

void FindBar::gather() {
    if (searched.get() == nullptr) {
        return;
    }
    ForEachNodeIn(
        searched->GetRoot(),
        [this](const Node& node) {
            const QString caption = QString::fromStdString(node.GetCaption());
            if (!caption.isEmpty()) {
                entries.push_back(Entry{caption, node});
            }
        },
        /*post_order=*/false, /*include_self=*/false);
    searched = {};
    sort_by_caption();
    if (entries.size() <= most_offered) {
        offer();
    }
}

void FindBar::offer() {
    QStringList captions;
    for (const Entry& entry : entries) {
        if (captions.isEmpty() || captions.last() != entry.caption) {
            captions.append(entry.caption);
        }
    }
    static_cast<QStringListModel*>(completer()->model())->setStringList(captions);
}

/// Nodes compare by id and do not take each other's place: indices are sorted in their stead.
void FindBar::sort_by_caption() {
    std::vector<std::size_t> order(entries.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
        order[i] = i;
    }
    std::stable_sort(order.begin(), order.end(), [this](std::size_t a, std::size_t b) {
        return entries[a].caption.compare(entries[b].caption, Qt::CaseInsensitive) < 0;
    });
    std::vector<Entry> sorted;
    sorted.reserve(entries.size());
    for (const std::size_t i : order) {
        sorted.push_back(entries[i]);
    }
    entries.swap(sorted);
}

/// A caption that is just the text goes before those that hold it.
void FindBar::FindNext() {
    const QString wanted = text().trimmed();
    if (wanted.isEmpty()) {
        return;
    }
    gather();
    std::vector<std::size_t> hits;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (entries[i].caption.contains(wanted, Qt::CaseInsensitive)) {
            hits.push_back(i);
        }
    }
    std::stable_partition(hits.begin(), hits.end(), [&](std::size_t i) {
        return entries[i].caption.compare(wanted, Qt::CaseInsensitive) == 0;
    });
    if (hits.empty()) {
        if (on_nothing) {
            on_nothing(wanted);
        }
        return;
    }
    next = wanted == last_text ? (next + 1) % hits.size() : 0;
    last_text = wanted;
    if (on_found) {
        on_found(entries[hits[next]].node);
    }
}

} // namespace nurvex
