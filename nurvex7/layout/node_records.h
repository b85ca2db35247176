#pragma once

#include "nurvex7/foundation/id_map.h"
#include "nurvex7/foundation/pipeline.h"
#include "nurvex7/model/node.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

namespace nurvex7 {

/// The records that a table keeps of nodes.
///
/// Layouts keep a few bytes of every break node, of which there are millions. Such a record lies in
/// the memory of its run, where a walk along the run finds it beside the places; a record of any
/// other node, or one that is too large, lies in a map by id.
///
/// Keeps   the nodes of its records alive, break nodes with their whole run; references to records
///         stay valid while records are added
template <typename N>
class NodeRecords {
public:
    using entry = std::pair<const Node, N>;

    NodeRecords() = default;
    NodeRecords(const NodeRecords&) = delete;
    NodeRecords(NodeRecords&& other) noexcept { swap(other); }
    NodeRecords& operator=(NodeRecords&& other) noexcept {
        clear();
        swap(other);
        return *this;
    }
    ~NodeRecords() { clear(); }

    void swap(NodeRecords& other) noexcept {
        std::swap(vis, other.vis);
        by_id.swap(other.by_id);
        runs.swap(other.runs);
        tag.swap(other.tag);
        std::swap(stamp, other.stamp);
        std::swap(current, other.current);
        std::swap(has_bends_by_id, other.has_bends_by_id);
    }

    void clear() {
        for_each_ahead(
            runs.size(), [&](std::size_t i) { runs[i]->drop_notes(tag.get()); },
            [&](std::size_t i) { prefetch(runs[i].get()); });
        runs.clear();
        current = 0;
        clear_by_id();
    }

    /// Ends the keeping of runs that have not been entered since start_again.
    void let_go_of_stale() {
        if (current < runs.size()) {
            std::erase_if(runs, [this](const graph_ptr<BreakNodes>& run) {
                const bool is_stale = !run->find_notes(tag.get(), stamp);
                if (is_stale) {
                    run->drop_notes(tag.get());
                }
                return is_stale;
            });
        }
    }

    /// Empties the table for somebody who is about to enter the same nodes again, but for a few. It
    /// goes on to keep their runs, those that are not entered again until let_go_of_stale.
    void start_again() {
        if (stamp == std::numeric_limits<std::uint16_t>::max()) {
            clear();
        }
        let_go_of_stale();
        ++stamp;
        current = 0;
        clear_by_id();
    }

    /// Null where there is none.
    N* find(const Node& node) {
        const INodeImpl& impl = *node.get_impl();
        if constexpr (FITS_IN_RUN) {
            if (impl.run != nullptr && tag != nullptr) {
                const auto& bend = static_cast<const DummyNodeImpl&>(impl);
                if (const BreakNodes::Notes notes = impl.run->find_notes(tag.get(), stamp)) {
                    if (notes.present[bend.index] != 0) {
                        return record_in(notes, bend.index);
                    }
                }
                if (!has_bends_by_id) {
                    return nullptr;
                }
            }
        }
        entry* const found = by_id.find(node.GetID());
        return found != nullptr ? &found->second : nullptr;
    }
    const N* find(const Node& node) const { return const_cast<NodeRecords*>(this)->find(node); }

    /// The record of a node that is no break node, together with its handle; null where there is
    /// none.
    const entry* find_entry(const Node& node) const { return by_id.find(node.GetID()); }
    /// How many records do not lie in runs, and how many pieces of runs hold the others.
    std::size_t get_count_by_id() const { return by_id.size(); }
    std::size_t get_piece_count() const { return current; }

    /// Whether records lie in a run, which is kept for them.
    bool is_holding(BreakNodes& run) const { return tag != nullptr && run.has_notes_of(tag.get()); }

    N& find_or_make(const Node& node, const N& initial) {
        if constexpr (FITS_IN_RUN) {
            INodeImpl& impl = *node.get_impl();
            if (impl.run != nullptr) {
                if (const BreakNodes::Notes notes = notes_in(*impl.run, node.get_vis())) {
                    return record_in(notes, static_cast<const DummyNodeImpl&>(impl).index, initial);
                }
                has_bends_by_id = true;
            }
        }
        return by_id.find_or_make(node.GetID(), node, initial).second;
    }

    /// The same of a break node by its place in a piece of a run.
    N& find_or_make(BreakNodes& piece, int index, const graph_ptr<IGraphVis>& store,
                    const N& initial) {
        static_assert(FITS_IN_RUN);
        if (const BreakNodes::Notes notes = notes_in(piece, store)) {
            return record_in(notes, index, initial);
        }
        return find_or_make(Node(store, &piece.own_node(index)), initial);
    }

    /// The records that a piece of a run holds, one for each of its break nodes, whether it was
    /// ever asked for or not; null where it holds none.
    const N* find_all_in(BreakNodes& piece) const {
        static_assert(FITS_IN_RUN && sizeof(N) == BreakNodes::NOTE_SIZE);
        const BreakNodes::Notes notes =
            tag != nullptr ? piece.find_notes(tag.get(), stamp) : BreakNodes::Notes();
        return notes ? record_in(notes, 0) : nullptr;
    }

    /// Makes the records that a piece of a run holds for another table those of this one; the other
    /// has them no more. False where this table has some of them already, or none of the others.
    bool take_over(BreakNodes& piece, const graph_ptr<IGraphVis>& store, NodeRecords& other) {
        static_assert(FITS_IN_RUN);
        if (tag == nullptr) {
            tag = std::make_unique<char>();
        }
        const bool is_of_store = vis.get() == nullptr || vis.get() == store.get();
        if (other.tag == nullptr || has_bends_by_id || !is_of_store) {
            return false;
        }
        const bool is_kept = piece.has_notes_of(tag.get());
        if (!piece.pass_notes(other.tag.get(), other.stamp, tag.get(), stamp)) {
            return false;
        }
        vis = store;
        ++current;
        if (!is_kept) {
            runs.push_back(&piece);
        }
        return true;
    }

    /// Calls `f(record)` for every break node of a run, whose records are made where there are
    /// none.
    ///
    /// Order   that of the run
    template <typename F>
    void for_each_in(BreakNodes& run, const graph_ptr<IGraphVis>& store, const N& initial, F f) {
        static_assert(FITS_IN_RUN);
        run.for_each_piece([&](BreakNodes& piece) {
            const BreakNodes::Notes notes = notes_in(piece, store);
            for (int i = 0; i < piece.get_own_count(); ++i) {
                f(notes ? record_in(notes, i, initial)
                        : find_or_make(Node(store, &piece.own_node(i)), initial));
            }
        });
    }

    /// Calls `f(record)` for every record. Order: none
    template <typename F>
    void for_each(F f) {
        by_id.for_each_unordered([&](int, entry& e) { f(e.second); });
        for_each_bend([&](BreakNodes&, int, N& record) { f(record); });
    }

    /// Likewise, but for the records of break nodes that lie in their runs.
    template <typename F>
    void for_each_by_id(F f) {
        by_id.for_each_unordered([&](int, entry& e) { f(e.second); });
    }

    /// Calls `on_node(node)` or `on_bend(piece, index)` for every node that has a record, the
    /// latter for the break nodes whose records lie in their runs. Order: none
    template <typename F, typename G>
    void for_each_node(F on_node, G on_bend) {
        for_each_node_by_id(on_node);
        for_each_bend_in_run(on_bend);
    }
    template <typename F>
    void for_each_node_by_id(F on_node) {
        by_id.for_each_unordered([&](int, entry& e) { on_node(e.first); });
    }
    template <typename F>
    void for_each_bend_in_run(F on_bend) {
        for_each_bend([&](BreakNodes& piece, int index, N&) { on_bend(piece, index); });
    }

    /// The records by id, for tables whose records are too large to lie in runs.
    IdMap<entry>& get_map() {
        static_assert(!FITS_IN_RUN);
        return by_id;
    }

private:
    static constexpr bool FITS_IN_RUN =
        sizeof(N) <= BreakNodes::NOTE_SIZE && std::is_trivially_copyable_v<N>;

    void clear_by_id() {
        by_id.clear([](const entry& e) { ask_for_lists(e.second); },
                    [](const entry& e) { ask_for_pairs(e.second); },
                    [](const entry& e) {
                        prefetch_line(e.first.get_impl().get());
                        ask_for_held(e.second);
                    });
        has_bends_by_id = false;
        vis.reset();
    }

    static N* record_in(const BreakNodes::Notes& notes, int index) {
        return reinterpret_cast<N*>(notes.bytes +
                                    static_cast<std::size_t>(index) * BreakNodes::NOTE_SIZE);
    }
    static N& record_in(const BreakNodes::Notes& notes, int index, const N& initial) {
        N* const record = record_in(notes, index);
        if (notes.present[index] == 0) {
            notes.present[index] = 1;
            std::construct_at(record, initial);
        }
        return *record;
    }

    /// Where the records of a piece lie; nothing where they have to go by id: other tables have
    /// taken all the room, or the places are not those of this store. A piece of which some record
    /// may lie by id already is left to that.
    BreakNodes::Notes notes_in(BreakNodes& piece, const graph_ptr<IGraphVis>& store) {
        if (tag == nullptr) {
            tag = std::make_unique<char>();
        }
        if (const BreakNodes::Notes known = piece.find_notes(tag.get(), stamp)) {
            return known;
        }
        if (vis.get() == nullptr) {
            vis = store;
        }
        if (has_bends_by_id || vis.get() != store.get() || piece.get_store() != store.get()) {
            return {};
        }
        const bool is_kept = piece.has_notes_of(tag.get());
        const BreakNodes::Notes taken = piece.take_notes(tag.get(), stamp);
        current += taken ? 1 : 0;
        if (taken && !is_kept) {
            runs.push_back(&piece);
        }
        return taken;
    }

    template <typename F>
    void for_each_bend(F f) {
        if constexpr (FITS_IN_RUN) {
            const auto go = [&](BreakNodes& piece) {
                const BreakNodes::Notes notes = piece.find_notes(tag.get(), stamp);
                for (int i = 0; notes && i < piece.get_own_count(); ++i) {
                    if (notes.present[i] != 0) {
                        f(piece, i, *record_in(notes, i));
                    }
                }
            };
            for_each_ahead(
                runs.size(), [&](std::size_t i) { go(*runs[i]); },
                [&](std::size_t i) { BreakNodes::Prefetch(runs[i].get()); });
        }
    }

    graph_ptr<IGraphVis> vis; ///< whose break nodes have their records in runs; null before any
    IdMap<entry> by_id;
    std::vector<graph_ptr<BreakNodes>> runs; ///< the pieces that hold records, or held them before
    std::unique_ptr<char> tag;               ///< what the records in runs are found by
    std::uint16_t stamp = 0;                 ///< and which of them count
    std::size_t current = 0;                 ///< pieces in which some count
    bool has_bends_by_id = false;
};

} // namespace nurvex7
