#pragma once

#include "nurvex7/foundation/pipeline.h"
#include "nurvex7/layout/layout_records.h"
#include "nurvex7/model/flags.h"
#include "nurvex7/model/structure_index.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace nurvex7 {

/// The nodes of a run in numbers, with what the run before knew of each.
///
/// An Update comes past every node of what stands, mostly to find that nothing has happened to it.
/// So the records of the nodes are looked up once, in their order, and their neighbours are
/// followed in the numbers of the kept answers.
///
/// Duty    the structure and the records stand still while this is in use, and so do the flags and
///         the notes of places, unless they are asked for again
class RunNodes {
public:
    using node_store = GraphInfoStore<NodeInfo, EdgeInfo>;
    using Link = StructureIndex::Link;

    struct Past {
        NodeInfo info;
        bool hidden;      ///< now
        bool is_recorded; ///< there is a record of it, of the same store

        bool is_new() const { return !info.is_old || info.was_hidden; }
    };

    RunNodes(const StructureIndex& answers, const std::vector<Node>& list, const node_store& old)
        : index(answers), records(old), now(list.size(), nullptr) {
        places.reserve(list.size());
        past.reserve(list.size());
        for (const Node& node : list) {
            places.push_back(index.FindPlace(node));
            past.push_back(past_of(node));
            any_hidden = any_hidden || past.back().hidden;
            recorded += past.back().is_recorded ? 1 : 0;
        }
        take_notes_back();
    }

    /// To be called after somebody else has numbered places.
    void take_notes_back() {
        for (int i = 0; i < get_count(); ++i) {
            const int place = places[static_cast<std::size_t>(i)];
            if (place >= 0) {
                const int before = number_of(place);
                repeats = repeats || (before >= 0 && before != i);
                index.NoteOfPlace(place) = i;
            }
        }
    }
    /// To be called where flags may have changed. Duty: the list is the same
    void read_flags_again(const std::vector<Node>& list) {
        any_hidden = false;
        for (std::size_t i = 0; i < list.size(); ++i) {
            past[i].hidden = is_hidden(list[i]);
            any_hidden = any_hidden || past[i].hidden;
        }
    }

    int get_count() const { return static_cast<int>(places.size()); }
    /// How many have a record of the same store.
    std::size_t get_recorded_count() const { return recorded; }
    bool has_hidden() const { return any_hidden; }
    /// True where a node stands in the list twice.
    bool has_repeated() const { return repeats; }
    /// The number of the node at a place; -1 for one that is not of the list, and for no place.
    int number_of(int place) const {
        if (place < 0) {
            return -1;
        }
        const int note = index.NoteOfPlace(place);
        return note < get_count() && places[static_cast<std::size_t>(note)] == place ? note : -1;
    }
    /// The place of a node; -1 where the answers do not cover it.
    int place_of(int i) const { return places[static_cast<std::size_t>(i)]; }
    const Past& at(int i) const { return past[static_cast<std::size_t>(i)]; }
    /// Also of a node that is not of the list: answers name those of another graph.
    Past at_place(int place) const {
        const int i = number_of(place);
        return i >= 0 ? at(i) : past_of(index.NodeAt(place));
    }

    /// The record that a node has in this run; null until the run has asked for it.
    NodeInfo*& record(int i) { return now[static_cast<std::size_t>(i)]; }

    std::span<const Link> children_of(int i) const {
        return index.ChildLinks(places[static_cast<std::size_t>(i)]);
    }
    std::span<const Link> parents_of(int i) const {
        return index.ParentLinks(places[static_cast<std::size_t>(i)]);
    }

private:
    static bool is_hidden(const Node& node) { return (node.GetCondition() & NODE_HIDDEN) != 0; }
    Past past_of(const Node& node) const {
        const auto* const found = records.node_info.find_entry(node);
        return {found != nullptr ? found->second : records.default_node, is_hidden(node),
                found != nullptr && found->first.get_vis().get() == node.get_vis().get()};
    }

    const StructureIndex& index;
    const node_store& records;
    std::vector<int> places; ///< -1 where the answers do not cover the node
    std::vector<Past> past;
    std::size_t recorded = 0;
    bool any_hidden = false;
    bool repeats = false;
    std::vector<NodeInfo*> now;
};

} // namespace nurvex7
