#include "nurvex7/layout/layout_records.h"
#include "nurvex7/layout/node_records.h"
#include "nurvex7/model/break_run.h"
#include "nurvex7/model/graph.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <utility>
#include <vector>

namespace {

using namespace nurvex7;
using Table = NodeRecords<NodeInfo>;

/// Three tables beside maps: two find room in the runs of break nodes, the third has to keep its
/// records by id.
class NodeRecordsTest : public testing::Test {
protected:
    NodeRecordsTest() {
        for (int i = 0; i < 6; ++i) {
            nodes.push_back(root.AddNode());
        }
        for (int i = 0; i < 8; ++i) {
            edges.push_back(pick(nodes).LinkTo(pick(nodes)));
            add_bends(edges.back());
        }
    }

    template <typename T>
    T& pick(std::vector<T>& from) {
        return from[random() % from.size()];
    }
    void add_bends(Edge& edge) {
        edge.AddBreakNodesIn(root, static_cast<int>(random() % 5 + 1));
        NodeSet run = edge.GetBreakNodesIn(root);
        for (int i = 0; i < run.GetCount(); ++i) {
            bends.push_back(run.GetItem(i));
        }
    }
    Node any_node() { return random() % 4 == 0 ? pick(nodes) : pick(bends); }

    void expect_same(std::size_t t) {
        for (const Node& n : all()) {
            const NodeInfo* const found = tables[t].find(n);
            const auto wanted = models[t].find(n.GetID());
            ASSERT_EQ(found != nullptr, wanted != models[t].end()) << n.GetID();
            ASSERT_TRUE(found == nullptr || found->level == wanted->second) << n.GetID();
        }
        std::size_t count = 0;
        tables[t].for_each([&](NodeInfo&) { ++count; });
        ASSERT_EQ(count, models[t].size());
        std::map<int, int> met;
        tables[t].for_each_node([&](const Node& n) { ++met[n.GetID()]; },
                                [&](BreakNodes& piece, int i) { ++met[piece.own_node(i).id]; });
        ASSERT_EQ(met.size(), count);
    }
    std::vector<Node> all() const {
        std::vector<Node> both(nodes);
        both.insert(both.end(), bends.begin(), bends.end());
        return both;
    }

    std::mt19937 random{3};
    graph_ptr2<Graph> graph{new Graph, true};
    Node root = graph->GetRoot();
    std::vector<Node> nodes;
    std::vector<Edge> edges;
    std::vector<Node> bends; ///< also of runs that have been dropped since
    Table tables[3];
    std::map<int, int> models[3]; ///< level by id
};

TEST_F(NodeRecordsTest, AgreeWithMapsThroughRandomCalls) {
    for (int round = 0; round < 4000; ++round) {
        const std::size_t t = random() % 3;
        switch (random() % 16) {
        case 0:
            round % 2 == 0 ? tables[t].clear() : tables[t].start_again();
            models[t].clear();
            break;
        case 1: { // what stood becomes the past
            const std::size_t past = (t + 1) % 3;
            if (round % 2 == 0) {
                tables[past] = std::move(tables[t]);
            } else {
                tables[past].swap(tables[t]);
                tables[t].start_again();
            }
            models[past] = std::exchange(models[t], {});
            break;
        }
        case 2:
            pick(edges).RemoveBreakNodesIn(root);
            break;
        case 3:
            add_bends(pick(edges));
            break;
        case 4: {
            const BreakRun run(pick(edges), root);
            tables[t].for_each_in(*run.get_nodes(), root.get_vis(), NodeInfo{round},
                                  [](NodeInfo&) {});
            for (int i = 0; i < run.get_count(); ++i) {
                models[t].emplace(run.id_at(i), round);
            }
            break;
        }
        case 5: { // what the past noted of a run goes over as it is
            const std::size_t past = (t + 1) % 3;
            BreakNodes& run = *BreakRun(pick(edges), root).get_nodes();
            if (tables[t].take_over(run, root.get_vis(), tables[past])) {
                for (int i = 0; i < run.get_own_count(); ++i) {
                    const auto taken = models[past].extract(run.own_node(i).id);
                    ASSERT_EQ(models[t].count(run.own_node(i).id), 0U);
                    if (!taken.empty()) {
                        models[t][taken.key()] = taken.mapped();
                    }
                }
                ASSERT_NO_FATAL_FAILURE(expect_same(past)) << round;
            }
            break;
        }
        default: {
            const Node n = any_node();
            tables[t].find_or_make(n, NodeInfo{}).level = round;
            models[t][n.GetID()] = round;
        }
        }
        ASSERT_NO_FATAL_FAILURE(expect_same(t)) << round;
    }
}

// A record keeps what it is about, also beyond its graph.
TEST_F(NodeRecordsTest, KeepTheirNodes) {
    const int id = bends.front().GetID();
    for (Table& table : tables) {
        table.find_or_make(bends.front(), NodeInfo{7});
    }
    bends.clear();
    nodes.clear();
    edges.clear();
    graph = graph_ptr2<Graph>();
    for (Table& table : tables) {
        int met = 0;
        table.for_each_node([&](const Node& n) { met = n.GetID(); },
                            [&](BreakNodes& piece, int i) { met = piece.own_node(i).id; });
        EXPECT_EQ(met, id);
    }
}

} // namespace
