#pragma once

#include "nurvex7/model/graph.h"

#include <QLineEdit>

#include <cstddef>
#include <functional>
#include <vector>

namespace nurvex {

/// A field to find nodes in, by a part of their captions.
class FindBar : public QLineEdit {
public:
    /// Called with each node that was found, one at a time.
    std::function<void(const nurvex7::Node&)> on_found;
    /// Called where no caption holds the text.
    std::function<void(const QString&)> on_nothing;

    /// Of more captions none are offered while somebody types: each key would wait for the list.
    std::size_t most_offered = 20'000;

    explicit FindBar(QWidget* parent);

    /// What is looked for is in this graph from now on. Its captions are gathered by the first
    /// search, or the first key, since many a large graph is only looked at.
    void SetGraph(const nurvex7::graph_ptr2<nurvex7::Graph>& graph);
    /// The next one that fits, from the beginning again behind the last.
    void FindNext();

protected:
    bool event(QEvent* event) override;

private:
    struct Entry {
        QString caption;
        nurvex7::Node node;
    };

    void gather_to_offer();
    void gather();
    void offer();
    void sort_by_caption();

    nurvex7::graph_ptr2<nurvex7::Graph> searched; ///< empty once its captions are gathered
    std::vector<Entry> entries;                   ///< by caption
    QString last_text;
    std::size_t next = 0;
    bool too_many = false; ///< captions to be offered
};

} // namespace nurvex
