#pragma once

#include "nurvex7/export.h"
#include "nurvex7/layout/ilayout.h"
#include "nurvex7/layout/layout_records.h"
#include "nurvex7/model/node.h"
#include "nurvex7/model/structure_index.h"

#include <climits>
#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace nurvex7 {

class BreakRun;
class LevelGraph;
class Ordinals;
class RunEdges;
class RunNodes;
struct PlacedNode;
struct Placing;
struct Returning;
struct RunEdge;
struct Standing;
struct Turn;
struct NodeByAdjacentYComparator;

/// What an Update of an owner would meet, see IncLayout::LookAhead.
enum class UpdateOutlook {
    NEVER_LAID_OUT, ///< the owner has no drawing to keep: queue MakeLayout
    NOTHING_NEW,    ///< no node and no edge that is not in the drawing already
    FITS,           ///< what is new can be fitted in
    DOES_NOT_FIT    ///< a new node has no place to start from: Update would never end
};

/// The incremental layered layout. Levels are columns, x grows with the level, y runs along a
/// level; long edges bend at dummy nodes; edges that run backwards or stay on their level are
/// routed on tracks under their nodes; edges across the border of an owner end in ports on it.
///
/// The frame is that of Sugiyama, Tagawa and Toda ("Methods for visual understanding of
/// hierarchical system structures", 1981): levels, dummy nodes, order, coordinates. What it adds is
/// Update: old nodes keep their level, their order and their y, and only what is new is fitted into
/// the free spaces.
///
/// A run serves one owner and what it owns directly. Make and Update serve the owners below first:
/// for the outer run an owner is one large node. All phases are members that a derived layout may
/// replace in the lists or call from phases of its own. It names them through its own class, and
/// puts its own in as `static_cast<phase_t>(&Derived::phase)`.
///
/// Space   owner-relative, in all phases
/// Keeps   the tables of an owner, and with them its nodes and their visual store, until the next
///         Make of the owner or of the root, or until the owner is removed and another run begins;
///         also after the graph is gone
/// Duty    not for two graphs in turn: the tables of an owner are kept under its id, and the roots
///         of all graphs share the id 0. In an Update each new node has an old neighbour that was
///         visible, or its whole component is new.
class NURVEX7_API IncLayout : public ILayout {
public:
    /// The spacing defaults: level_gap 30, node_gap 12, edge_gap 2, edge_margin 5.
    IncLayout();
    /// The parameters are told at Init.
    IncLayout(double level_gap, double node_gap, double edge_gap, double edge_margin);
    ~IncLayout() override;
    IncLayout(const IncLayout&) = delete;
    IncLayout& operator=(const IncLayout&) = delete;

    /// A new layout with the default spacing.
    static graph_ptr2<IncLayout> Create();

    /// Sets the spacing and appends the phases to the three lists.
    ///
    /// level_gap    x distance between two levels that are not empty; level 1 starts there
    /// node_gap     y distance between two real nodes of a level, half of it on each side
    /// edge_gap     y distance between dummy nodes, and between tracks under a node
    /// edge_margin  x length of the stubs beside a node at which routed edges turn
    ///
    /// Deliberate: appends, never replaces. A second Init makes every phase run twice.
    void Init(double level_gap, double node_gap, double edge_gap, double edge_margin);

    void Make(Node owner) override;
    void Update(Node owner) override;
    void Resize(Node owner) override;

    /// The id of no node.
    static constexpr int NOBODY = INT_MIN;

    /// Tells what an Update of an owner would meet now, in it and in every owner inside it.
    ///
    /// A new node is fitted in beside an old neighbour that was visible, or its whole component is
    /// new. Where it is neither, Update would search for ever: queue MakeLayout instead.
    /// Keeps   everything: it makes no record, not even by reading
    UpdateOutlook LookAhead(const Node& owner) const;
    /// Tells what the run of the owner alone would meet: which of the owners that LookAhead looks
    /// at is the one that needs a Make.
    UpdateOutlook LookAheadAlone(const Node& owner) const;

protected:
    friend class LayoutProbe;
    friend struct NodeByAdjacentYComparator;

    using phase_t = void (IncLayout::*)();
    using node_store = GraphInfoStore<NodeInfo, EdgeInfo>;
    using local_store = GraphInfoStore<LocalNodeInfo, LocalEdgeInfo>;
    using node_iterator = std::vector<Node>::iterator;
    using const_node_iterator = std::vector<Node>::const_iterator;

    // Level assignment (level_assignment.cpp)
    void determine_levels();
    void find_connectivity_components(std::vector<Node>* list,
                                      std::vector<std::vector<Node>>* components);
    void collect_connectivity_component(Node start, std::vector<Node>* component);
    void enumerate_connectivity_component(std::vector<Node>* component);
    void _mark_edges(const Node& node);
    int _degree(graph_ptr2<IGraphSet<NodeEdgePair>> set);
    int _degree_ex(const Node& node, bool LocalEdgeInfo::*member, Order order, bool both);
    void mark_reversed_edges(std::vector<Node>* list, bool by_order);
    void mark_levels(std::vector<Node>* list);
    void set_node_level(const Node& node, int level);
    void tighten_start_nodes(std::vector<Node>* starts);

    // Levels of new nodes (new_levels.cpp)
    void determine_new_nodes_levels();
    void mark_new_nodes_levels(std::vector<Node>* component);

    // Dummy nodes (dummy_nodes.cpp)
    void place_nodes_on_levels();
    void insert_dummy_nodes_inout(const Node& node, Order order);
    void insert_dummy_nodes_between(const Node& from, const Node& to, const Edge& edge);
    void put_dummy_on_level(const Node& dummy, int level);
    void count_wrap(const Node& from, const Node& to);
    bool holds_real_node_last() const;

    // Marks and level table (level_table.cpp)
    void mark_old();
    bool keep_edge_records(const RunEdges& edges);
    void mark_bends_old(const BreakRun& bends);
    void mark_as_neighbours(const Node& a, const Node& b, const Edge& edge);
    void record_neighbours(const Node& a, const Node& b, const Edge& edge);
    void shift_old_levels();
    void shift_level_table(int k, int longest);
    void place_new_nodes();
    void place_if_new(RunEdges& edges, int i);
    bool _is_new(const Node& node);

    // Crossing reduction (crossing_reduction.cpp)
    void barycentric_adjust();
    void forward_barycentric_adjust();
    void backward_barycentric_adjust();
    void enumerate_level_by_y_coord(std::vector<Node>* level);

    // Vertical placement (vertical_placement.cpp)
    void calculate_initial_y_coords();
    void make_y_shifts();
    double _get_height(const Node& node);
    double room_on_level(std::size_t k, std::size_t i);
    void find_rooms(std::size_t k, std::map<double, double>& rooms);
    double gap_of(const Node& node) const;

    // Force adjustment (force_adjustment.cpp)
    void force_adjust();
    void force_adjust_block(node_iterator first, node_iterator last, DependenceLevel dependence,
                            bool with_dummies, double lower, double upper);

    // Coordinates (coordinates.cpp)
    void calculate_x_coords();
    double top_shift() const;
    double place_column(std::size_t k, double x, Placing& placing);
    PlacedNode place_normal_node(Node node, double x_start, double x_end, double y);
    void place_edges_beside(const Placing& placing);
    void place_edge_beside(const RunEdges& edges, const RunEdge& e, const PlacedNode* tail,
                           const PlacedNode* head);
    void place_passing_edges(const Placing& placing);
    void place_break_node(Node node, double x_start, double x_end, double y, const BreakRun& b,
                          bool reversed);
    int find_partner(const Node& node, const BreakRun& b);

    // Routing (edge_routing.cpp)
    void adjust_break_to_inner(Node break_node, const Node& node, double x, double y, Order order);
    static void place_backedge_out(const BreakRun& b, double x_start, double x_stub, double y);
    static void place_backedge_in(const BreakRun& b, double x_stub, double x_end, double y);
    double lay_tracks(int node, double bottom, RunEdges& edges);
    void adjust_ports(std::vector<Node>* level, double x, Order order);
    tamsel7::point<double> get_inout_coords(const NodeEdgePair& pair, Order order);
    static double inout_offset(const NodeEdgePair& pair, Order order);
    static double y_beside(const Edge& edge, const Node& node, double y, Order order);

    // The old drawing (old_drawing.cpp)
    void restore_old_levels();
    void restore_old_dummy(const Node& node);
    void lengthen_to_hold(int level);

    // New nodes (new_nodes.cpp)
    /// A free stretch along a level, in y; `size` shrinks by what is planned for it.
    struct FreeSpace {
        double start;
        double end;
        double size;
    };

    void calculate_new_nodes_y_coords();
    void place_new_nodes_of(std::vector<Node>& level, node_iterator first);
    std::vector<FreeSpace> free_spaces(node_iterator first, node_iterator last);
    static std::size_t _nearest_space(const std::vector<FreeSpace>& spaces, double ideal,
                                      double need);
    double ideal_y(const Node& node);
    void pack(std::vector<Node>& planned, bool upwards, double from);

    // Epilogues: three entries, so that the lists can differ (level_table.cpp)
    void make_epilogue();
    void update_epilogue();
    void resize_epilogue();

    // The answers of the structure queries, kept for the run.
    StructureIndex::Pairs children_of(const Node& node);
    StructureIndex::Pairs parents_of(const Node& node);
    StructureIndex::Pairs edges_out_of(const Node& node);
    StructureIndex::Pairs edges_in_of(const Node& node);

    /// True for a hidden node where hidden nodes take no part in level logic.
    bool passed_over(const Node& node) const;

    std::map<Node, node_store> cluster_info;   ///< per object: what survives, per owner
    std::map<Node, LevelTable> cluster_levels; ///< per object: the columns, per owner
    node_store* cur_info = nullptr;            ///< per owner: its entry of cluster_info
    node_store old_info;    ///< per run: that entry as it stood before; the edges up to mark_old
    local_store local_info; ///< per run; Resize reads that of the run before
    LevelTable* cur_levels = nullptr;           ///< per owner: its entry of cluster_levels
    std::vector<std::vector<Node>> level_nodes; ///< per run: the nodes of each level, in order
    std::vector<Node> nodes;                    ///< per run: what the owner owns, in set order
    std::vector<phase_t> make_phases;           ///< per object
    std::vector<phase_t> resize_phases;         ///< per object
    std::vector<phase_t> update_phases;         ///< per object
    double level_gap = 0;                       ///< per object
    double node_gap = 0;                        ///< per object
    double edge_gap = 0;                        ///< per object
    double edge_margin = 0;                     ///< per object
    bool use_force_adjust = false;              ///< per object: backward sweep of force_adjust
    bool keep_hidden = false;                   ///< per object: hidden nodes hold their level
    tamsel7::size<double> result_size;          ///< per run: the finished drawing of the owner

    /// A derived layout sets it where nothing of its own has to hear of an owner before its inside:
    /// nests of any depth are then served without deep calls, as in this class itself.
    bool serves_nests_flat = false;

    /// A derived layout sets it where its own phases leave what the phases share as it is, but for
    /// the nodes on the levels, read no neighbours of nodes that stood before, and of the marks of
    /// the level assignment none but reversed and flat. What is looked up in a run is then looked
    /// up once, as in this class itself, and not by each phase anew.
    ///
    /// Duty    such a phase calls level_changed for each level whose nodes it has moved, sorted,
    ///         added or taken away
    bool shares_tables = false;
    void level_changed(std::size_t level);

    /// Called before each phase and now and then in its midst. A derived layout may let others have
    /// their turn here, or end the run by throwing; the outermost owner that is being served has to
    /// be laid out anew then. It must not touch the graph.
    virtual void checkpoint() {}

private:
    class ForceField; // force_adjustment.cpp

    /// Holds the answers of the structure queries, for the length of an outermost run at least.
    class KeptAnswers {
    public:
        KeptAnswers(IncLayout& l, const Node& owner);
        ~KeptAnswers();
        KeptAnswers(const KeptAnswers&) = delete;
        KeptAnswers& operator=(const KeptAnswers&) = delete;

    private:
        IncLayout& layout;
        bool replaced = false;
        std::shared_ptr<const StructureIndex> before;
    };

    void run(const std::vector<phase_t>& phases);
    void count_steps(std::size_t steps);
    bool knows_all_phases() const;

    // How runs nest (nested_runs.cpp)
    bool take_size_of_leaf(Node& owner);
    void serve_inside(const Node& owner, void (*serve)(Node));
    void start_run(const Node& owner);
    static void release_levels(std::vector<std::vector<Node>>& levels);
    void ask_for_known(std::size_t i) const;
    void remember_old_drawing(const Node& owner);
    void forget_removed_owners();
    void take_old_drawing_back(const Node& owner);
    void take_nodes_back(const WayBack& back);
    void take_bends_back(const WayBack& back);
    void take_other_bends_back(const WayBack& back);

    UpdateOutlook look_ahead(const Node& owner, bool with_owners_inside) const;
    const IncLayout* layout_that_serves(const Node& node) const;

    /// An edge between two owned nodes that is about to get its bends.
    struct Crossing {
        const Node& from;
        const Node& to;
        const Edge& edge;
        int owner_id;
        int from_level;
        int to_level;
    };
    void insert_bends(const Crossing& crossing);
    void insert_chain(const Crossing& crossing, const BreakRun& b, int skipped, int sign);
    bool is_marked_reversed(const Edge& edge);

    template <typename F>
    void sweep(F f);
    template <typename F>
    auto with_level_graph(const std::vector<Node>& list, F f);
    std::unique_ptr<LevelGraph> make_level_graph(const std::vector<Node>& list,
                                                 bool records_wait = false);
    std::unique_ptr<RunNodes> make_run_nodes() const;
    RunNodes& take_run_nodes();
    NodeInfo& info_of(int node);
    static NodeInfo& record_of(node_store& table, const BreakRun& b, int i);
    std::unique_ptr<RunEdges> make_run_edges(const RunNodes& of, bool new_runs_to_come,
                                             const WayBack* back = nullptr) const;
    RunEdges& take_run_edges(bool new_runs_to_come = false);
    void drop_run();
    void let_go_of_neighbours();
    const std::vector<Join>* find_joins() const { return collects_joins ? &joins : nullptr; }
    void restore_old_node(const Node& n, int i);
    void restore_on_level(int level, const Standing& standing, IGraphVis& vis, INodeImpl& impl);
    std::vector<std::vector<Node>> take_levels_apart();
    void fill_levels();
    void fill_level(std::size_t k, const std::vector<Turn>& turns);
    bool stands_as_before(std::size_t k, const std::vector<Turn>& turns) const;
    std::vector<std::vector<Standing>>& take_standings();
    static Standing standing_of(const Node& node);
    bool joins_old_chains() const;
    bool leaves_for_later() const;
    bool assign_levels_by_groups();
    void assign_new_levels(std::vector<Node>& component, bool all_new);
    void mark_edges_by_level(const std::vector<Node>& list);
    void set_direction(int edge_number, bool flat, bool reversed);
    void restore_old_dummies(const Node& n, int i);
    std::optional<WayBack> look_up_edges();
    void restore_chain(const Node& tail, const RunEdge& e);

    // Records that are kept (kept_records.cpp)
    const NodeInfo* records_to_keep(const RunEdge& e) const;
    void write_kept_records();
    void write_kept_records(const RunEdge& e, bool is_placed);
    bool stands_in_column(int level) const;
    void take_records_over(RunEdges& edges, const RunEdge& e);
    void place_kept_chain(const Placing& placing, const RunEdge& e);

    std::size_t forget_at = 16; ///< so many tables call for a look at their owners
    std::shared_ptr<const StructureIndex> structure; ///< per outermost run: the kept answers
    std::unique_ptr<LevelGraph> level_graph;         ///< per phase of the level assignment
    std::unique_ptr<RunNodes> run_nodes;             ///< per run, from the first phase that asks on
    std::unique_ptr<RunEdges> run_edges;             ///< likewise
    std::vector<std::vector<Standing>> standings;    ///< likewise: of level_nodes, as far as told
    /// Per Update and Resize, until the old levels are restored: those of the run before, whose
    /// handles can stay where the same nodes stand on a level.
    std::vector<std::vector<Node>> last_levels;
    std::vector<std::vector<Returning>> returning; ///< per restore_old_levels: what it has restored
    std::unique_ptr<Ordinals> ordinals; ///< per barycentric_adjust: the levels in numbers
    std::vector<Join> joins;            ///< per Make: all neighbours, where phases read no lists
    bool collects_joins = false;        ///< per Make
    /// Per Update, until the old levels are restored: the old drawing still stands in graph
    /// coordinates.
    std::optional<WayBack> way_back;
    bool keeps_records = false;      ///< per run: records of bends may be taken over as they are
    bool knows_who_is_shown = false; ///< per run: nobody is asked any more, flags stay
    int inits = 0;                   ///< calls of Init
    std::size_t steps_uncounted = 0; ///< since the last checkpoint, in nodes
    bool joins_chains = false;       ///< for who looks at the neighbour lists from outside
    int remembered_id = NOBODY;      ///< the owner that old_info is of, or was until it was cleared
    int served_id = NOBODY;          ///< the owner whose inside has been served already
};

/// The order of two nodes by y, for stable sorts.
struct NodeByYComparator {
    bool operator()(const Node& a, const Node& b) const {
        return a.GetPosition().y < b.GetPosition().y;
    }
};

/// The order of the nodes of one level by the mean y of their neighbours on the next one: what the
/// sweeps of the crossing reduction sort by, for derived layouts that sort themselves.
struct NURVEX7_API NodeByAdjacentYComparator {
    bool operator()(const Node& a, const Node& b) const;

    /// The mean y of the node's neighbours; its own y where it has none.
    double key(const Node& node) const;

    IncLayout* layout;
    Segments LocalNodeInfo::*neighbour_set;
};

/// True where a room was opened below a y, at a greater one; such a room does not push what stands
/// there.
NURVEX7_API bool first_greater_p(std::pair<double, double> entry, double y);

} // namespace nurvex7
