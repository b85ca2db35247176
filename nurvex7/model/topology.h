#pragma once

#include "nurvex7/export.h"
#include "nurvex7/foundation/graph_ptr.h"
#include "nurvex7/foundation/graph_set.h"
#include "nurvex7/model/fwd.h"

#include <cstdint>
#include <memory>
#include <new>
#include <string>

namespace nurvex7 {

using node_impl_set = IGraphSet<graph_ptr<INodeImpl>>;
using edge_impl_set = IGraphSet<graph_ptr<IEdgeImpl>>;
using node_impl_vector = GraphSet<graph_ptr<INodeImpl>>;
using edge_impl_vector = GraphSet<graph_ptr<IEdgeImpl>>;

/// A node of the graph: structure and flags, nothing of its looks.
///
/// Ids: 0 is the root of every graph, positive ids are real nodes, negative ids are break nodes.
/// Ids are process-wide and never used again.
class NURVEX7_API INodeImpl : public Countable {
public:
    INodeImpl() = default;
    /// The notes below belong to the object, like its count.
    INodeImpl(const INodeImpl& other) : Countable(other) {}
    INodeImpl& operator=(const INodeImpl&) { return *this; }
    ~INodeImpl() override;
    virtual int get_id() const = 0;
    virtual std::string get_caption() const = 0;
    virtual void set_caption(const std::string& text) = 0;
    virtual int get_tag() const = 0;
    virtual void set_tag(const int& value) = 0;
    virtual int get_condition() const = 0;
    virtual void set_condition(int flags) = 0;
    /// Distinct sources of the edges in, by ascending id.
    virtual graph_ptr<node_impl_set> get_parents() = 0;
    /// Distinct targets of the edges out, by ascending id.
    virtual graph_ptr<node_impl_set> get_children() = 0;
    virtual graph_ptr<edge_impl_set> get_edges_in() = 0;
    virtual graph_ptr<edge_impl_set> get_edges_out() = 0;
    virtual graph_ptr<IEdgeImpl> link_to(graph_ptr<INodeImpl> target) = 0;
    virtual graph_ptr<INodeImpl> add_node() = 0;
    virtual void remove() = 0;
    virtual graph_ptr<INodeImpl> get_owner() const = 0;
    virtual graph_ptr<node_impl_set> get_owned() = 0;
    virtual void set_owner(graph_ptr<INodeImpl> new_owner) = 0;
    /// Whether get_owner gives one, asked without taking hold of it.
    virtual bool has_owner() const;

    // Notes that spare a search. Neither is ever trusted: who follows one looks whether it leads
    // back to this node.

    /// Where the last walk that numbered its nodes has put this one in its list.
    mutable std::int32_t place = -1;
    /// The record of this node in the visual store that was asked last; cut by its end.
    mutable DefaultNodeVis* known_vis = nullptr;

    /// The run that a break node stands in and that has its place; null for any other node.
    BreakNodes* const run = nullptr;

protected:
    explicit INodeImpl(BreakNodes* in) : run(in) {}
};

/// A directed edge between two nodes of any depth. Both ends are null once it is removed.
class NURVEX7_API IEdgeImpl : public Countable {
public:
    IEdgeImpl() = default;
    IEdgeImpl(const IEdgeImpl& other) : Countable(other) {}
    IEdgeImpl& operator=(const IEdgeImpl&) { return *this; }
    ~IEdgeImpl() override;
    virtual int get_id() const = 0;
    virtual std::string get_caption() const = 0;
    virtual void set_caption(const std::string& text) = 0;
    virtual int get_tag() const = 0;
    virtual void set_tag(const int& value) = 0;
    virtual int get_condition() const = 0;
    virtual void set_condition(int flags) = 0;
    virtual graph_ptr<INodeImpl> from() const = 0;
    virtual graph_ptr<INodeImpl> to() const = 0;
    virtual void remove() = 0;

    // Notes like those of a node.
    mutable std::int32_t place = -1;
    mutable DefaultEdgeVis* known_vis = nullptr;
};

// Counted nodes and edges compare by id, not by address, and look through the pointer without a
// test. Deliberate: `p == 0` on a counted node asks for the root, never for null; for null, ask
// the raw pointer.
inline bool operator==(const graph_ptr<INodeImpl>& a, const graph_ptr<INodeImpl>& b) {
    return a->get_id() == b->get_id();
}
inline bool operator!=(const graph_ptr<INodeImpl>& a, const graph_ptr<INodeImpl>& b) {
    return a->get_id() != b->get_id();
}
inline bool operator<(const graph_ptr<INodeImpl>& a, const graph_ptr<INodeImpl>& b) {
    return a->get_id() < b->get_id();
}
inline bool operator==(const graph_ptr<INodeImpl>& a, int id) {
    return a->get_id() == id;
}
inline bool operator==(int id, const graph_ptr<INodeImpl>& a) {
    return a->get_id() == id;
}
inline bool operator!=(const graph_ptr<INodeImpl>& a, int id) {
    return a->get_id() != id;
}
inline bool operator!=(int id, const graph_ptr<INodeImpl>& a) {
    return a->get_id() != id;
}

inline bool operator==(const graph_ptr<IEdgeImpl>& a, const graph_ptr<IEdgeImpl>& b) {
    return a->get_id() == b->get_id();
}
inline bool operator!=(const graph_ptr<IEdgeImpl>& a, const graph_ptr<IEdgeImpl>& b) {
    return a->get_id() != b->get_id();
}
inline bool operator<(const graph_ptr<IEdgeImpl>& a, const graph_ptr<IEdgeImpl>& b) {
    return a->get_id() < b->get_id();
}
inline bool operator==(const graph_ptr<IEdgeImpl>& a, int id) {
    return a->get_id() == id;
}
inline bool operator==(int id, const graph_ptr<IEdgeImpl>& a) {
    return a->get_id() == id;
}
inline bool operator!=(const graph_ptr<IEdgeImpl>& a, int id) {
    return a->get_id() != id;
}
inline bool operator!=(int id, const graph_ptr<IEdgeImpl>& a) {
    return a->get_id() != id;
}

/// What has been found out below a root, and holds until somebody tells of a change.
///
/// The root and all nodes and edges that were looked at share one of these and tell it: nodes of
/// who they own and how they are joined, both of the flags that decide what is drawn.
class NURVEX7_API GraphNotes final : public Countable {
public:
    GraphNotes();
    ~GraphNotes() override;

    /// Something is owned, joined or gone otherwise than before.
    void forget();

    bool drawn_marks_hold = false; ///< those that MarkDrawnIn has written
    /// The answers of the structure queries and what has been added since; null where none are
    /// kept.
    std::unique_ptr<KeptStructure> structure;
};

/// Has a root, a node or an edge tell these notes of changes, and no others. What others have noted
/// may not hold for it from here on.
template <typename T>
void tell_notes(T& item, const graph_ptr<GraphNotes>& notes) {
    if (item.notes.get() != notes.get()) {
        if (item.notes.get() != nullptr) {
            item.notes->forget();
        }
        item.notes = notes;
    }
}

/// The root of a graph: owns the top-level nodes, has id 0 and no edges, and cannot be flagged.
///
/// Duty    who changes a field himself, here or below, has the notes forget
class NURVEX7_API DefaultRootNodeImpl : public INodeImpl {
public:
    DefaultRootNodeImpl();

    int get_id() const override;
    std::string get_caption() const override;
    void set_caption(const std::string& text) override;
    int get_tag() const override;
    void set_tag(const int& value) override;
    int get_condition() const override;
    void set_condition(int flags) override;
    graph_ptr<node_impl_set> get_parents() override;
    graph_ptr<node_impl_set> get_children() override;
    graph_ptr<edge_impl_set> get_edges_in() override;
    graph_ptr<edge_impl_set> get_edges_out() override;
    graph_ptr<IEdgeImpl> link_to(graph_ptr<INodeImpl> target) override;
    graph_ptr<INodeImpl> add_node() override;
    void remove() override;
    graph_ptr<INodeImpl> get_owner() const override;
    graph_ptr<node_impl_set> get_owned() override;
    void set_owner(graph_ptr<INodeImpl> new_owner) override;

    graph_ptr<node_impl_vector> owned;
    graph_ptr<GraphNotes> notes; ///< null before anybody looks
};

/// A real node. Live from add_node until it or an owner above it is removed; afterwards it has a
/// null owner and an id that is not 0.
///
/// Duty    as for a root; a change of the condition concerns the drawn marks alone
class NURVEX7_API DefaultNodeImpl : public DefaultRootNodeImpl {
public:
    explicit DefaultNodeImpl(graph_ptr<INodeImpl> owned_by);

    static int current_id;

    int get_id() const override;
    std::string get_caption() const override;
    void set_caption(const std::string& text) override;
    int get_tag() const override;
    void set_tag(const int& value) override;
    int get_condition() const override;
    void set_condition(int flags) override;
    graph_ptr<node_impl_set> get_parents() override;
    graph_ptr<node_impl_set> get_children() override;
    graph_ptr<edge_impl_set> get_edges_in() override;
    graph_ptr<edge_impl_set> get_edges_out() override;
    graph_ptr<IEdgeImpl> link_to(graph_ptr<INodeImpl> target) override;
    void remove() override;
    graph_ptr<INodeImpl> get_owner() const override;
    void set_owner(graph_ptr<INodeImpl> new_owner) override;
    bool has_owner() const override;

    void unlink_owner();
    void delete_node();
    void delete_edge_from(graph_ptr<IEdgeImpl> edge);
    void delete_edge_to(graph_ptr<IEdgeImpl> edge);
    void remove_edge(graph_ptr<IEdgeImpl> edge);
    void get_neighbours(edge_impl_vector& edges, graph_ptr<INodeImpl> (IEdgeImpl::*end)() const,
                        node_impl_vector& result);

    int id;
    int tag = 0;
    int condition = 0;
    std::string caption;
    graph_ptr<edge_impl_vector> edges_out;
    graph_ptr<edge_impl_vector> edges_in;
    graph_ptr<node_impl_vector> parents_cache;  ///< null until first asked for
    graph_ptr<node_impl_vector> children_cache; ///< likewise
    graph_ptr<INodeImpl> owner;
};

/// Duty    who changes an end himself has the notes of both ends forget; a change of the condition
///         concerns the drawn marks of its own notes
class NURVEX7_API DefaultEdgeImpl : public IEdgeImpl {
public:
    DefaultEdgeImpl(graph_ptr<INodeImpl> from_node, graph_ptr<INodeImpl> to_node);

    static int current_id;

    int get_id() const override;
    std::string get_caption() const override;
    void set_caption(const std::string& text) override;
    int get_tag() const override;
    void set_tag(const int& value) override;
    int get_condition() const override;
    void set_condition(int flags) override;
    graph_ptr<INodeImpl> from() const override;
    graph_ptr<INodeImpl> to() const override;
    void remove() override;

    graph_ptr<INodeImpl> source;
    graph_ptr<INodeImpl> target;
    int tag = 0;
    int condition = 0;
    int id;
    std::string caption;
    graph_ptr<GraphNotes> notes; ///< null before anybody looks
};

/// A break node: a bend of an edge. Only the visual record of an edge makes them, run by run.
class NURVEX7_API DummyNodeImpl final : public INodeImpl {
public:
    /// Duty: `in` keeps it at that place
    DummyNodeImpl(BreakNodes* in, int at) : INodeImpl(in), id(current_id--), index(at) {}
    /// It stands in the memory of its run, which goes when all is let go.
    static void operator delete(DummyNodeImpl* gone, std::destroying_delete_t);

    static int current_id;

    int get_id() const override;
    std::string get_caption() const override;
    void set_caption(const std::string& text) override;
    int get_tag() const override;
    void set_tag(const int& value) override;
    int get_condition() const override;
    void set_condition(int flags) override;
    graph_ptr<node_impl_set> get_parents() override;
    graph_ptr<node_impl_set> get_children() override;
    graph_ptr<edge_impl_set> get_edges_in() override;
    graph_ptr<edge_impl_set> get_edges_out() override;
    graph_ptr<IEdgeImpl> link_to(graph_ptr<INodeImpl> target) override;
    graph_ptr<INodeImpl> add_node() override;
    void remove() override;
    graph_ptr<INodeImpl> get_owner() const override;
    graph_ptr<node_impl_set> get_owned() override;
    void set_owner(graph_ptr<INodeImpl> new_owner) override;
    bool has_owner() const override;

    const int id;
    int condition = 0;
    const int index; ///< in its run
};

/// Holds the root of a graph. An application may bring a root of another kind by a storage of its
/// own.
class NURVEX7_API IGraphStorage : public Countable {
public:
    ~IGraphStorage() override;
    virtual graph_ptr<INodeImpl> get_root() const = 0;
    virtual void remove_root() = 0;
};

class NURVEX7_API DefaultStorage : public IGraphStorage {
public:
    explicit DefaultStorage(graph_ptr<INodeImpl> root_node);
    graph_ptr<INodeImpl> get_root() const override;
    void remove_root() override;

    graph_ptr<INodeImpl> root;
};

/// Functor forms of the steps of removal.
NURVEX7_API void _delete_node(graph_ptr<INodeImpl> node);
NURVEX7_API void _del_from(DefaultNodeImpl* node, graph_ptr<IEdgeImpl> edge);
NURVEX7_API void _del_to(DefaultNodeImpl* node, graph_ptr<IEdgeImpl> edge);

/// Appends each item of b to a, in order; a counts as unsorted.
NURVEX7_API void _append(const graph_ptr<node_impl_vector>& a,
                         const graph_ptr<node_impl_vector>& b);
/// A new set of the items of a, then those of b; a and b stay as they are.
NURVEX7_API graph_ptr<node_impl_vector> _join(const graph_ptr<node_impl_vector>& a,
                                              const graph_ptr<node_impl_vector>& b);

/// One step of a walk upward: the owner, or null where the walk ends.
///
/// A node that was made its own owner hangs in the air: nothing above it leads to a root, so the
/// walk ends there instead of going round for ever.
NURVEX7_API graph_ptr<INodeImpl> owner_above(const graph_ptr<INodeImpl>& node);

/// True where a walk upward from the node reaches a root: false for null, for break nodes, and for
/// what was removed or made its own owner.
NURVEX7_API bool belongs_to_root(const graph_ptr<INodeImpl>& node);

} // namespace nurvex7
