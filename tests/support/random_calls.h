#pragma once

#include "nurvex7/layout/inc_layout.h"
#include "nurvex7/model/graph.h"
#include "tests/support/recording_painter.h"

#include <memory>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace nurvex7::testing_support {

/// A layout that is served from within the call of its owner, as every derived one is at first.
class DerivedLayout : public IncLayout {};

/// A program gone mad: a few graphs, and calls of all that the model and the layout offer, on
/// whatever nodes, edges and numbers come to hand.
///
/// It keeps few duties of a caller: no null handle, no removed node or edge as an argument, no link
/// to a root, no node made its own owner, no call that is said never to end. Of removed nodes it
/// only reads. Two graphs may share a layout, storage moves between them, nodes are put into other
/// graphs, and sets are held while what they show goes away.
class RandomCalls {
public:
    /// The seed also decides how large the graphs may get and how wild the numbers are.
    explicit RandomCalls(unsigned seed);
    ~RandomCalls();
    RandomCalls(const RandomCalls&) = delete;
    RandomCalls& operator=(const RandomCalls&) = delete;

    /// Makes that many calls. `traced` prints the name of each to stderr before it is made.
    void make(int count, bool traced);
    /// What was wrong with an answer, or is with the structure of a graph; empty where nothing is.
    std::string find_fault() const;
    /// How many of the calls ran a layout.
    int get_run_count() const { return runs; }

private:
    struct Call {
        const char* name;
        int weight;
        void (RandomCalls::*make)();
    };
    static const std::vector<Call>& calls();
    static std::vector<Call> structure_calls();
    static std::vector<Call> visual_calls();
    static std::vector<Call> layout_calls();

    // What comes to hand (random_calls.cpp)
    int below(int bound);
    bool chance(int percent);
    double number();
    tamsel7::point<double> point() { return {number(), number()}; }
    graph_ptr2<Graph>& graph();
    Node root() { return graph()->GetRoot(); }
    Node node();
    Node node_or_root();
    Node any_kind_of_node();
    std::optional<Edge> edge();
    std::optional<Node> bend();
    ILayout& layout();
    graph_ptr2<ILayout> layout_handle();
    void keep(const Node& made);
    void gather_nodes();
    void replace_graph(std::size_t place);

    // Structure (random_calls_structure.cpp)
    void add_node();
    void link();
    void link_elsewhere();
    void remove_node();
    void remove_edge();
    void remove_all();
    void remove_while_walking();
    void set_owner();
    void refused_on_break_node();
    void name_things();
    void read_sets();
    void hold_set();
    void read_held_sets();
    void read_removed();
    void query_neighbours();
    void query_edges();
    void query_order();
    void walk();
    void load();
    void set_storage();
    void renew_graph();

    // Flags, positions, handlers (random_calls_visual.cpp)
    void set_flags();
    void hide_or_show();
    void fold();
    void mark_drawn();
    void set_place();
    void shift();
    void shift_inside();
    void move_node();
    void set_handler();
    void set_default_handlers();
    void bend_edge();
    void straighten_edge();
    void read_route();
    void read_records();
    void hit();

    // Layouts (random_calls_layout.cpp)
    void set_layout();
    void set_default_layout();
    void queue_make();
    void queue_update();
    void queue_resize();
    void queue_resize_all();
    void recalculate();
    void run_make();
    void run_update();
    void run_resize();
    void run_by_layout_of_node();
    void init_again();
    void look_ahead();
    bool may_update(const ILayout& by, const Node& owner) const;
    void forget_updates_without_end();
    std::string random_text();

    std::mt19937 random;
    int wildness;                                    ///< numbers out of all proportion, in percent
    std::size_t most_nodes;                          ///< where more are removed than added
    int foreignness;                                 ///< calls that mix graphs, in percent
    std::vector<std::unique_ptr<IncLayout>> layouts; ///< outlive the graphs, own none
    std::vector<int> inits;                          ///< calls of Init, by layout
    std::unique_ptr<INodeHandler> node_handler;
    std::unique_ptr<IEdgeHandler> edge_handler;
    tests::RecordingPainter painter;
    std::vector<graph_ptr2<Graph>> graphs;
    std::vector<Node> nodes; ///< of all graphs; removed ones go when they come to hand
    std::vector<Edge> edges;
    std::vector<Node> bends;
    std::vector<Node> removed;
    std::vector<Node> old_roots; ///< of storages that were replaced
    std::vector<NodeSet> node_sets;
    std::vector<EdgeSet> edge_sets;
    int runs = 0;
    std::string fault; ///< of an answer
};

} // namespace nurvex7::testing_support
