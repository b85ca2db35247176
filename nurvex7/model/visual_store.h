#pragma once

#include "nurvex7/export.h"
#include "nurvex7/foundation/graph_ptr.h"
#include "nurvex7/foundation/graph_ptr2.h"
#include "nurvex7/foundation/id_map.h"
#include "nurvex7/layout/ilayout.h"
#include "nurvex7/model/break_nodes.h"
#include "nurvex7/model/hit_index.h"
#include "nurvex7/model/topology.h"
#include "nurvex7/platform/tamsel7/geometry.h"
#include "nurvex7/presentation/iedge_handler.h"
#include "nurvex7/presentation/inode_handler.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace nurvex7 {

/// Position and size of one node. Space: graph (owner-relative inside a layout run).
class NURVEX7_API INodeVis : public Countable {
public:
    ~INodeVis() override;
    virtual graph_ptr<INodeImpl> get_node_impl() const = 0;
    virtual tamsel7::size<double> get_size() const = 0;
    virtual void set_size(const tamsel7::size<double>& value) = 0;
    virtual tamsel7::point<double> get_position() const = 0;
    virtual void set_position(const tamsel7::point<double>& value) = 0;
};

/// The break nodes of one edge: a run of them in every owner that the edge passes through.
class NURVEX7_API IEdgeVis : public Countable {
public:
    ~IEdgeVis() override;
    virtual graph_ptr<IEdgeImpl> get_edge_impl() const = 0;
    /// The whole route, from the source outward through its owners and inward to the target.
    virtual graph_ptr<node_impl_set> get_break_nodes() = 0;
    virtual void remove_break_nodes() = 0;
    /// The run in one owner; an empty one is entered where there is none.
    virtual graph_ptr<node_impl_set> get_break_nodes_in(int owner_id) = 0;
    /// The run in one owner, null where there is none and the record can tell without making one.
    virtual graph_ptr<node_impl_set> find_break_nodes_in(int owner_id);
    /// Appends new break nodes to the run of an owner. A count below 1 changes nothing.
    virtual void add_break_nodes_in(int owner_id, int count) = 0;
    virtual void remove_break_nodes_in(int owner_id) = 0;
};

/// What only a drawing needs, by id: positions and sizes, layouts and handlers of nodes, break
/// nodes of edges, the hit tests, and three lists of pending layout work.
///
/// Records come into being when they are first asked for, never with the node or edge.
class NURVEX7_API IGraphVis : public Countable {
public:
    ~IGraphVis() override;
    virtual graph_ptr<IEdgeVis> get_edge_vis(graph_ptr<IEdgeImpl> edge) = 0;
    virtual graph_ptr<INodeVis> get_node_vis(graph_ptr<INodeImpl> node) = 0;
    virtual void remove_edge_vis(graph_ptr<IEdgeImpl> edge) = 0;
    virtual void remove_node_vis(graph_ptr<INodeImpl> node) = 0;
    virtual graph_ptr2<ILayout> get_node_layout(graph_ptr<INodeImpl> node) = 0;
    virtual void set_node_layout(graph_ptr<INodeImpl> node, graph_ptr2<ILayout> layout) = 0;
    virtual graph_ptr2<INodeHandler> get_node_painter(graph_ptr<INodeImpl> node) = 0;
    virtual void set_node_painter(graph_ptr<INodeImpl> node, graph_ptr2<INodeHandler> painter) = 0;
    virtual graph_ptr2<ILayout> get_default_layout() = 0;
    virtual void set_default_layout(graph_ptr2<ILayout> layout) = 0;
    virtual graph_ptr2<INodeHandler> get_default_node_painter() = 0;
    virtual void set_default_node_painter(graph_ptr2<INodeHandler> painter) = 0;
    virtual graph_ptr2<IEdgeHandler> get_default_edge_painter() = 0;
    virtual void set_default_edge_painter(graph_ptr2<IEdgeHandler> painter) = 0;
    virtual graph_ptr<node_impl_vector> test_node_hit(double left, double top, double right,
                                                      double bottom) = 0;
    virtual graph_ptr<edge_impl_vector> test_edge_hit(double left, double top, double right,
                                                      double bottom) = 0;
    virtual void add_to_make_list(graph_ptr<INodeImpl> node) = 0;
    virtual graph_ptr<node_impl_set> get_make_list() = 0;
    virtual void clear_make_list() = 0;
    virtual void add_to_update_list(graph_ptr<INodeImpl> node) = 0;
    virtual graph_ptr<node_impl_set> get_update_list() = 0;
    virtual void clear_update_list() = 0;
    virtual void add_to_resize_list(graph_ptr<INodeImpl> node) = 0;
    virtual graph_ptr<node_impl_set> get_resize_list() = 0;
    virtual void clear_resize_list() = 0;
};

class NURVEX7_API DefaultNodeVis final : public INodeVis {
public:
    explicit DefaultNodeVis(graph_ptr<INodeImpl> node, DefaultGraphVis* of_store = nullptr);
    DefaultNodeVis(const DefaultNodeVis&) = delete;
    DefaultNodeVis& operator=(const DefaultNodeVis&) = delete;
    ~DefaultNodeVis() override;
    graph_ptr<INodeImpl> get_node_impl() const override { return node_impl; }
    tamsel7::size<double> get_size() const override { return size; }
    void set_size(const tamsel7::size<double>& value) override {
        size = value;
        if (indexed) {
            leave_index();
        }
    }
    tamsel7::point<double> get_position() const override {
        return bend != nullptr ? bend->run->place_of(*bend) : position;
    }
    void set_position(const tamsel7::point<double>& value) override {
        if (bend != nullptr) {
            bend->run->set_place_of(*bend, value);
            return;
        }
        position = value;
        if (indexed) {
            leave_index();
        }
    }
    /// From here on it is nobody's, and stands for itself.
    void disown();

    bool indexed = false; ///< its place is in a box of the store's hit index
    graph_ptr<INodeImpl> node_impl;
    DefaultGraphVis* store; ///< whose record this is; null once it is nobody's

private:
    // Layouts store millions of positions: only the first after a build tells of itself.
    void leave_index();

    tamsel7::size<double> size;
    tamsel7::point<double> position;
    DummyNodeImpl* bend; ///< the node, where its place is that in its run; null otherwise
};

/// What the store keeps of one node.
struct NodeVisInfo {
    graph_ptr2<ILayout> layout;       ///< empty unless set
    graph_ptr2<INodeHandler> painter; ///< empty unless set
    graph_ptr<INodeVis> vis;          ///< null until first asked for
};

class NURVEX7_API DefaultEdgeVis final : public IEdgeVis {
public:
    explicit DefaultEdgeVis(graph_ptr<IEdgeImpl> edge, DefaultGraphVis* of_store = nullptr);
    DefaultEdgeVis(const DefaultEdgeVis&) = delete;
    DefaultEdgeVis& operator=(const DefaultEdgeVis&) = delete;
    ~DefaultEdgeVis() override;
    graph_ptr<IEdgeImpl> get_edge_impl() const override;
    graph_ptr<node_impl_set> get_break_nodes() override;
    void remove_break_nodes() override;
    graph_ptr<node_impl_set> get_break_nodes_in(int owner_id) override;
    graph_ptr<node_impl_set> find_break_nodes_in(int owner_id) override;
    void add_break_nodes_in(int owner_id, int count) override;
    void remove_break_nodes_in(int owner_id) override;

    /// True where nobody can come back to this record: the edge or both its ends are removed, no
    /// hit test finds it, and only the store, with the node records given, holds anything of it.
    bool is_out_of_reach(const IdMap<NodeVisInfo>& records) const;

    /// The run of an owner, for who does not keep it; an empty one is entered where there is none.
    BreakNodes& run_in(int owner_id) {
        BreakNodes* const known = known_run_in(owner_id);
        return known != nullptr ? *known : *make_run(owner_id, 0);
    }
    /// Likewise; null where there is none.
    BreakNodes* known_run_in(int owner_id) const {
        return first_run.owner_id == owner_id ? first_run.nodes.get() : further_run_in(owner_id);
    }

    /// True where the edge has no bends in another owner than that of its first run.
    bool has_one_run() const { return further_runs.empty(); }

    /// The hit index of the store holds the route.
    void mark_indexed();

    /// True where get_break_nodes gives the route that it has given before.
    bool has_route() const { return break_nodes_cache.get() != nullptr; }

    bool indexed = false;   ///< its route is in boxes of the store's hit index
    DefaultGraphVis* store; ///< whose record this is; null once it is nobody's

private:
    /// The run of the edge in one owner.
    struct Run {
        int owner_id = 0;
        graph_ptr<BreakNodes> nodes;
    };

    BreakNodes* further_run_in(int owner_id) const;
    const graph_ptr<BreakNodes>& make_run(int owner_id, int count);
    void forget_route();
    graph_ptr<INodeImpl> append_outward_runs(const graph_ptr<INodeImpl>& from,
                                             const graph_ptr<node_impl_vector>& route) const;
    void append_inward_runs(const graph_ptr<INodeImpl>& to, const graph_ptr<INodeImpl>& outermost,
                            const graph_ptr<node_impl_vector>& route) const;

    // Most edges have one run. The first has none while there are no others either.
    Run first_run;
    graph_ptr<IEdgeImpl> edge_impl;
    graph_ptr<node_impl_vector> break_nodes_cache; ///< null when it has to be built again
    std::vector<Run> further_runs;
};

/// What the store keeps of one edge.
struct EdgeVisInfo {
    graph_ptr<IEdgeVis> vis;
};

class EdgeCollector;

class NURVEX7_API DefaultGraphVis final : public IGraphVis {
public:
    DefaultGraphVis();
    DefaultGraphVis(const DefaultGraphVis&) = delete;
    DefaultGraphVis& operator=(const DefaultGraphVis&) = delete;
    ~DefaultGraphVis() override;

    graph_ptr<IEdgeVis> get_edge_vis(graph_ptr<IEdgeImpl> edge) override;
    graph_ptr<INodeVis> get_node_vis(graph_ptr<INodeImpl> node) override;
    void remove_edge_vis(graph_ptr<IEdgeImpl> edge) override;
    void remove_node_vis(graph_ptr<INodeImpl> node) override;
    graph_ptr2<ILayout> get_node_layout(graph_ptr<INodeImpl> node) override;
    void set_node_layout(graph_ptr<INodeImpl> node, graph_ptr2<ILayout> layout) override;
    graph_ptr2<INodeHandler> get_node_painter(graph_ptr<INodeImpl> node) override;
    void set_node_painter(graph_ptr<INodeImpl> node, graph_ptr2<INodeHandler> painter) override;
    graph_ptr2<ILayout> get_default_layout() override;
    void set_default_layout(graph_ptr2<ILayout> layout) override;
    graph_ptr2<INodeHandler> get_default_node_painter() override;
    void set_default_node_painter(graph_ptr2<INodeHandler> painter) override;
    graph_ptr2<IEdgeHandler> get_default_edge_painter() override;
    void set_default_edge_painter(graph_ptr2<IEdgeHandler> painter) override;
    graph_ptr<node_impl_vector> test_node_hit(double left, double top, double right,
                                              double bottom) override;
    graph_ptr<edge_impl_vector> test_edge_hit(double left, double top, double right,
                                              double bottom) override;
    void add_to_make_list(graph_ptr<INodeImpl> node) override;
    graph_ptr<node_impl_set> get_make_list() override;
    void clear_make_list() override;
    void add_to_update_list(graph_ptr<INodeImpl> node) override;
    graph_ptr<node_impl_set> get_update_list() override;
    void clear_update_list() override;
    void add_to_resize_list(graph_ptr<INodeImpl> node) override;
    graph_ptr<node_impl_set> get_resize_list() override;
    void clear_resize_list() override;

    /// The layout that get_node_layout would give, asked without making a record. Null for none.
    const ILayout* find_layout(int node_id) const;
    /// How many node records the store holds. Break nodes have none until they are asked for it.
    std::size_t get_node_record_count() const { return node_map.size(); }
    std::size_t get_edge_record_count() const { return edge_map.size(); }
    const IdMap<NodeVisInfo>& get_node_records() const { return node_map; }
    const IdMap<EdgeVisInfo>& get_edge_records() const { return edge_map; }
    /// What the indexes of the hit tests take, in bytes.
    std::size_t get_hit_index_memory() const;

    // Records tell what changes of what an index holds of them.

    /// The place or the size of a node or a break node is another one.
    void note_place(INodeImpl& node);
    /// The route of an edge is another one.
    void note_route(int edge_id);

    BreakNodeList break_nodes;

private:
    /// A stretch of a route that has a box of its own.
    struct Stretch {
        int edge_id;
        int first; ///< the places of its first and last break node in the route
        int last;
    };

    static constexpr std::size_t FIRST_SWEEP = 1024;

    NodeVisInfo& record_of(int id);
    void sweep_when_due();
    void sweep();
    void note_route_of(INodeImpl& bend);
    void index_nodes();
    void index_edges();
    void index_route(int id, DefaultEdgeVis& edge);
    void add_stretches(int id);
    static bool test_stretch(const Stretch& stretch, const EdgeVisInfo& info,
                             EdgeCollector& collector);
    std::vector<int> find_nodes_in(const tamsel7::rectangle<double>& area);
    std::vector<Stretch> find_stretches_in(const tamsel7::rectangle<double>& area);

    graph_ptr2<ILayout> default_layout;
    graph_ptr2<INodeHandler> default_node_painter;
    graph_ptr2<IEdgeHandler> default_edge_painter;
    IdMap<NodeVisInfo> node_map;
    IdMap<EdgeVisInfo> edge_map;
    graph_ptr<node_impl_vector> make_list;
    graph_ptr<node_impl_vector> update_list;
    graph_ptr<node_impl_vector> resize_list;
    std::size_t sweep_at = FIRST_SWEEP; ///< records that call for the next sweep
    bool walks_edges = false;           ///< no record may go while a walk runs
    HitIndex node_index;                ///< holds node ids
    HitIndex edge_index;                ///< holds places in `stretches`
    std::vector<Stretch> stretches;
    std::vector<tamsel7::point<double>> places; ///< of the route that is being indexed
};

/// The record of a node in a store, where the node remembers it; null where the store has to be
/// asked.
inline DefaultNodeVis* known_vis_in(const IGraphVis* store, const INodeImpl& node) {
    DefaultNodeVis* const known = node.known_vis;
    return known != nullptr && known->store == store ? known : nullptr;
}

/// The run that has the place of a node in a store; null for all but the break nodes of that store.
inline BreakNodes* run_in_store(const IGraphVis* store, const INodeImpl& node) {
    BreakNodes* const run = node.run;
    return run != nullptr && run->get_store() == store ? run : nullptr;
}

/// Where a node stands. Asking makes a record, unless it is a break node of the store. Space: graph
inline tamsel7::point<double> place_in_store(IGraphVis& store, const graph_ptr<INodeImpl>& node) {
    if (const DefaultNodeVis* const known = known_vis_in(&store, *node)) {
        return known->get_position();
    }
    if (const BreakNodes* const run = run_in_store(&store, *node)) {
        return run->place_of(static_cast<const DummyNodeImpl&>(*node));
    }
    return store.get_node_vis(node)->get_position();
}

inline void set_place_in_store(IGraphVis& store, const graph_ptr<INodeImpl>& node,
                               const tamsel7::point<double>& value) {
    if (DefaultNodeVis* const known = known_vis_in(&store, *node)) {
        known->set_position(value);
    } else if (BreakNodes* const run = run_in_store(&store, *node)) {
        run->set_place_of(static_cast<const DummyNodeImpl&>(*node), value);
    } else {
        store.get_node_vis(node)->set_position(value);
    }
}

/// Walks the node records of a hit test; Space: graph.
class NodeCollector {
public:
    NodeCollector(double l, double t, double r, double b);
    void operator()(const NodeVisInfo& info);

    double left;
    double top;
    double right;
    double bottom;
    graph_ptr<node_impl_vector> touching;
    graph_ptr<node_impl_vector> enclosing;
};

/// Walks the edge records of a hit test; Space: graph.
class EdgeCollector {
public:
    EdgeCollector(double l, double t, double r, double b, IGraphVis* store);
    void operator()(const EdgeVisInfo& info);
    /// Whether one of the segments between break nodes of a route is hit. Duty: 0 <= first,
    /// last < GetCount()
    bool route_hit(node_impl_set& route, int first, int last) const;

    double left;
    double top;
    double right;
    double bottom;
    IGraphVis* vis;
    graph_ptr<edge_impl_vector> hits;

private:
    bool segment_hit(const tamsel7::point<double>& a, const tamsel7::point<double>& c) const;
};

} // namespace nurvex7
