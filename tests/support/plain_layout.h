#pragma once

#include "nurvex7/layout/ilayout.h"
#include "nurvex7/layout/layout_records.h"
#include "nurvex7/model/node.h"

#include <map>
#include <vector>

namespace nurvex7::testing_support {

/// The layered layout in its plainest form: every query asked anew, every record looked up in an
/// ordered map, recursion wherever the thing itself recurses. It shares no code with IncLayout and
/// exists so that IncLayout can be compared with it, bit for bit.
///
/// Duty    small graphs of one family of ids; one object serves one graph
class PlainLayout : public ILayout {
public:
    explicit PlainLayout(double between_levels = 30, double between_nodes = 12,
                         double between_edges = 2, double stub = 5);

    void Make(Node owner) override;
    void Update(Node owner) override;
    void Resize(Node owner) override;

    /// True where the caller has kept the duty of Update: each new node has an old neighbour that
    /// was visible, or its whole component is new. An Update ends only then.
    bool UpdateEnds(Node owner);

    bool use_force_adjust = true;
    bool keep_hidden = true;

private:
    struct NodeRecord {
        int level = -1;
        bool is_old = false;
        bool was_hidden = false;
    };
    struct Store {
        std::map<Node, NodeRecord> of_node;
        std::map<Edge, bool> edge_is_old;
    };
    struct LocalNode {
        bool visited = false;
        int wrap_count = 0;
        int order = -1;
        std::vector<NodeEdgePair> in_neighbours;
        std::vector<NodeEdgePair> out_neighbours;
    };
    struct LocalEdge {
        bool reversed = false;
        bool flat = false;
        bool marked = false;
    };
    struct Column {
        double x_start = 0;
        double x_end = 0;
        double width = 0;
    };
    /// Memory with a length: shortening forgets nothing, lengthening writes zeros.
    struct Table {
        std::vector<Column> memory;
        int length = 0;

        void set_length(int wanted);
        void zero();
        Column read(int level) const;
        void write(int level, const Column& column);
    };
    struct FreeSpace {
        double start;
        double end;
        double size;
    };
    using pair_list = std::vector<NodeEdgePair>;
    using level_list = std::vector<Node>;

    bool take_leaf_size(Node owner);
    void begin_run(const Node& owner);

    bool skipped(const Node& node) const;
    bool is_new(const Node& node);
    bool is_old_edge(const Node& node, const NodeEdgePair& pair);
    bool was_shown(const Node& node);

    void determine_levels();
    void determine_new_nodes_levels();
    std::vector<level_list> find_components();
    void collect_component(const Node& start, level_list& component);
    void enumerate_component(const level_list& component);
    bool sweep_component(const level_list& component, int& front, int& back, int& remaining);
    void settle(const Node& node, int order);
    int degree(const pair_list& pairs);
    int degree_ex(const Node& node, bool LocalEdge::*member, bool incoming, bool both);
    int count_runs(const Node& node, const pair_list& pairs, bool LocalEdge::*member, bool wanted);
    void mark_reversed_edges(const level_list& list, bool by_order);
    void mark_levels(const level_list& list);
    void set_node_level(const Node& node, int level, std::map<Node, int>& walked);
    void tighten_start_nodes(const level_list& starts);
    void mark_new_nodes_levels(const level_list& component);
    int level_between(const std::vector<int>& parents, const std::vector<int>& children);
    std::vector<int> old_levels(const pair_list& pairs);

    void place_nodes_on_levels();
    void insert_dummy_nodes_inout(const Node& node, bool incoming);
    void insert_dummy_nodes_between(const Node& from, const Node& to, Edge edge);
    void mark_old();
    void mark_as_neighbours(const Node& a, const Node& b, const Edge& edge);
    void shift_old_levels();
    void place_new_nodes();
    void lengthen_levels(int count);

    void barycentric_adjust();
    void sort_level(int level, std::vector<NodeEdgePair> LocalNode::*neighbours);
    double sort_key(const Node& node, std::vector<NodeEdgePair> LocalNode::*neighbours);
    void enumerate_level(int level);

    void calculate_initial_y_coords();
    void make_y_shifts();
    double get_height(const Node& node);
    double gap_of(Node node) const;

    void force_adjust();
    void force_adjust_block(const level_list& run, DependenceLevel dependence, bool with_dummies,
                            double lower, double upper);
    pair_list pulling(const Node& node, DependenceLevel dependence);

    void calculate_x_coords();
    Column make_column(int level, double x);
    double lay_tracks(const Node& node, const Column& column, const Node& owner);
    void place_normal_node(Node node, const Column& column, double y);
    void place_break_node(Node node, const Column& column, double y, const Node& owner);
    void adjust_break_to_inner(const std::vector<Node>& list, int index, const Node& node, double x,
                               double y, bool incoming);
    void adjust_ports(int level, double x, bool incoming);
    void adjust_to_inner(Node break_node, const Node& node, double x, double y, bool incoming);
    tamsel7::point<double> exit_point(const NodeEdgePair& pair);

    void restore_old_levels();
    void restore_old_dummy(const Node& node);

    void calculate_new_nodes_y_coords();
    void place_new_nodes_of(level_list& level);
    std::vector<FreeSpace> find_spaces(const level_list& level, int& first_new);
    double ideal_y(const Node& node);
    int choose_space(std::vector<FreeSpace>& spaces, double ideal, double need);
    void pack(level_list planned, std::vector<FreeSpace>& spaces, int place);

    int level_count() const { return static_cast<int>(level_nodes.size()); }
    level_list& at(int level) { return level_nodes[static_cast<std::size_t>(level)]; }

    double level_gap;
    double node_gap;
    double edge_gap;
    double edge_margin;
    std::map<Node, Store> cluster_info;
    std::map<Node, Table> cluster_levels;
    Store* cur_info = nullptr;
    Store old_info;
    std::map<Node, LocalNode> local_node;
    std::map<Edge, LocalEdge> local_edge;
    Table* cur_levels = nullptr;
    std::vector<level_list> level_nodes;
    level_list nodes;
    tamsel7::size<double> result_size;
};

} // namespace nurvex7::testing_support
