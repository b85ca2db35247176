#pragma once

#include "nurvex7/export.h"
#include "nurvex7/foundation/graph_ptr.h"
#include "nurvex7/foundation/pipeline.h"
#include "nurvex7/model/topology.h"
#include "nurvex7/platform/tamsel7/geometry.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <utility>
#include <vector>

namespace nurvex7 {

/// All that a store has made of break nodes, as long as somebody holds any of them.
struct BreakNodeList {
    /// From here on they are nobody's.
    void disown_all();

    BreakNodes* first = nullptr;
};

/// The break nodes of one edge inside one owner, and where they stand.
///
/// Layouts make break nodes by the million, and go through them run by run and not one by one. So a
/// run is one piece of memory: itself, the places, room for the notes of two tables, the nodes.
/// What is appended later stands in a piece of its own.
///
/// Space   graph; owner-relative inside a layout run
/// Order   as they were made; ids descend
/// Keeps   a run its edge and its break nodes; a break node the memory that it stands in
class NURVEX7_API BreakNodes final : public node_impl_set {
public:
    using point = tamsel7::point<double>;

    /// A run of a store, or of nobody. Duty: count is at least 0
    static graph_ptr<BreakNodes> Make(const graph_ptr<IEdgeImpl>& edge, DefaultGraphVis* store,
                                      int count);
    BreakNodes(const BreakNodes&) = delete;
    BreakNodes& operator=(const BreakNodes&) = delete;
    ~BreakNodes() override;
    static void operator delete(BreakNodes* gone, std::destroying_delete_t);

    int GetCount() const override { return total; }
    graph_ptr<INodeImpl> GetItem(int index) override { return &at(index); }
    void append(int count);

    // Duty: 0 <= index < GetCount()
    DummyNodeImpl& at(int index) {
        return index < count ? nodes()[index] : at_appended(index - count);
    }
    int id_at(int index) { return at(index).id; }
    void set_place_at(int index, const point& value) {
        if (index >= count) {
            set_place_of_appended(index - count, value);
            return;
        }
        places()[index] = value; // without a look at the node
        if (indexed) {
            leave_index();
        }
    }
    void shift(const point& by);
    /// Calls `f(piece)` for this piece and those that were appended.
    template <typename F>
    void for_each_piece(F f) {
        f(*this);
        for (const Appended& more : appended) {
            f(*more.piece);
        }
    }

    // Of this very piece. Duty: 0 <= index < get_own_count()
    int get_own_count() const { return count; }
    DummyNodeImpl& own_node(int index) { return nodes()[index]; }
    const point& own_place(int index) const { return places()[index]; }

    /// What somebody notes of each node of a piece, in NOTE_SIZE bytes: which nodes have a note,
    /// and the notes. Deliberate: what the bytes mean is his business alone.
    struct Notes {
        std::byte* bytes = nullptr;
        unsigned char* present = nullptr;

        explicit operator bool() const { return bytes != nullptr; }
    };
    static constexpr std::size_t NOTE_SIZE = 8;
    /// The notes of a holder that bear his stamp; none where he has taken no room with it.
    Notes find_notes(const void* holder, std::uint16_t stamp) {
        for (std::size_t which = 0; which < holders.size(); ++which) {
            if (holders[which] == holder && stamps[which] == stamp) {
                return notes(which);
            }
        }
        return Notes();
    }
    /// Room for a holder, with a stamp that he has not had here; none where it is all taken. What
    /// he noted under another stamp is gone. Duty: the holder keeps the run until he drops his
    /// notes
    Notes take_notes(const void* holder, std::uint16_t stamp);
    void drop_notes(const void* holder);
    /// Makes the notes of one holder those of another one, under a stamp that the other has not had
    /// here; what he noted under another stamp is gone. False where the first has none, where there
    /// is no room for two, or where the other has notes under that stamp already. Duty: both keep
    /// the run
    bool pass_notes(const void* holder, std::uint16_t stamp, const void* to,
                    std::uint16_t new_stamp) {
        const std::size_t which = holders[0] == holder ? 0 : 1;
        const std::size_t other = 1 - which;
        const bool has_room =
            holders[other] == nullptr || (holders[other] == to && stamps[other] != new_stamp);
        if (holders[which] != holder || stamps[which] != stamp || !has_room) {
            return false;
        }
        holders[which] = to;
        stamps[which] = new_stamp;
        holders[other] = holder;
        stamps[other] = static_cast<std::uint16_t>(stamp - 1); // none of his counts any more
        return true;
    }
    /// Under whatever stamp.
    bool has_notes_of(const void* holder) const {
        return holders[0] == holder || holders[1] == holder;
    }

    // Of a node that stands in this very piece.
    point place_of(const DummyNodeImpl& node) const { return places()[node.index]; }
    void set_place_of(const DummyNodeImpl& node, const point& value) {
        places()[node.index] = value;
        if (indexed) {
            leave_index();
        }
    }
    const point* address_of_place(const DummyNodeImpl& node) const { return places() + node.index; }

    /// Asks for the beginning of a run; of most runs that holds the places too, or even the notes.
    /// Null is nothing.
    static void PrefetchHead(const BreakNodes* run) { prefetch(run, 128); }
    static void PrefetchPlaces(const BreakNodes* run) { prefetch(run, 192); }
    static void Prefetch(const BreakNodes* run) { prefetch(run, 320); }
    /// Asks for all of this piece.
    void PrefetchAll() const {
        const auto* const begin = reinterpret_cast<const char*>(this);
        const auto* const end = reinterpret_cast<const char*>(nodes() + count);
        prefetch(this, static_cast<std::size_t>(end - begin));
    }

    /// Whose places these are; null once they are nobody's.
    const DefaultGraphVis* get_store() const { return store; }
    const graph_ptr<IEdgeImpl>& get_edge() const { return edge; }
    /// The set of exactly the one edge.
    const graph_ptr<edge_impl_vector>& get_edge_set();
    /// The hit index of the store holds these places: the next change of one is told.
    void mark_indexed();
    /// True where nobody but the holder of the run has anything of it. `extra(node)` tells how
    /// often he holds a node besides.
    template <typename F>
    bool is_held_once(F extra) {
        if (ref_count != 1 || (edge_set.get() != nullptr && edge_set->ref_count != 1)) {
            return false;
        }
        for (int i = 0; i < count; ++i) {
            if (nodes()[i].ref_count != 1 + extra(nodes()[i])) {
                return false;
            }
        }
        return std::all_of(appended.begin(), appended.end(),
                           [&](const Appended& more) { return more.piece->is_held_once(extra); });
    }
    /// How often all this holds its edge.
    int count_edge_holds() const;

    /// Called when a break node has been let go by everybody.
    void lose_one();

    /// For who numbers runs; it may be somebody else's, so it has to be checked before it is
    /// believed.
    mutable std::int32_t note = -1;

private:
    friend struct BreakNodeList;

    struct Appended {
        int start; ///< of its nodes in the run, behind those of the first piece
        graph_ptr<BreakNodes> piece;
    };

    BreakNodes(const graph_ptr<IEdgeImpl>& of_edge, DefaultGraphVis* of_store, int how_many);

    // The parts of the memory behind this object.
    static std::size_t bytes_of_notes(std::size_t n) {
        return 2 * n * NOTE_SIZE + (2 * n + 7) / 8 * 8;
    }
    point* places() { return reinterpret_cast<point*>(this + 1); }
    const point* places() const { return reinterpret_cast<const point*>(this + 1); }
    std::byte* all_notes() { return reinterpret_cast<std::byte*>(places() + count); }
    Notes notes(std::size_t of) {
        const auto n = static_cast<std::size_t>(count);
        return Notes{all_notes() + of * n * NOTE_SIZE,
                     reinterpret_cast<unsigned char*>(all_notes() + 2 * n * NOTE_SIZE + of * n)};
    }
    const DummyNodeImpl* nodes() const { return const_cast<BreakNodes*>(this)->nodes(); }
    DummyNodeImpl* nodes() {
        return reinterpret_cast<DummyNodeImpl*>(all_notes() +
                                                bytes_of_notes(static_cast<std::size_t>(count)));
    }
    DummyNodeImpl& at_appended(int index);
    void set_place_of_appended(int index, const point& value);
    void leave_index();
    void let_go();
    void end();

    const int count; ///< break nodes in this piece
    int total;       ///< with those that were appended
    int held = 0;    ///< break nodes that outlive the run
    bool indexed = false;
    DefaultGraphVis* store;
    std::array<std::uint16_t, 2> stamps{};
    std::array<const void*, 2> holders{}; ///< of the notes
    graph_ptr<IEdgeImpl> edge;
    graph_ptr<edge_impl_vector> edge_set; ///< null until asked for
    std::vector<Appended> appended;
    BreakNodes* next = nullptr; ///< of the same store
    BreakNodes* before = nullptr;
};

} // namespace nurvex7
