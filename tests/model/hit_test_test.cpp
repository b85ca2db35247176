#include "nurvex7/model/graph.h"
#include "nurvex7/model/moving.h"
#include "tests/support/plain_hits.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace nurvex7;
using point = tamsel7::point<double>;

struct HitTest : testing::Test {
    Node add(const Node& owner, const std::string& caption, const tamsel7::rectangle<double>& at) {
        Node node = Node(owner).AddNode();
        node.SetCaption(caption);
        place(node, at);
        return node;
    }
    static void place(Node node, const tamsel7::rectangle<double>& at) {
        node.SetPosition(at.left, at.top);
        node.SetSize({at.right - at.left, at.bottom - at.top});
    }
    Edge route(const std::string& caption, const std::vector<point>& bends) {
        Edge edge = a.LinkTo(a);
        edge.SetCaption(caption);
        edge.AddBreakNodesIn(root, static_cast<int>(bends.size()));
        NodeSet run = edge.GetBreakNodesIn(root);
        for (std::size_t i = 0; i < bends.size(); ++i) {
            run.GetItem(static_cast<int>(i)).SetPosition(bends[i]);
        }
        return edge;
    }
    template <typename Set>
    static std::string captions(Set hits) {
        std::string text;
        for (int i = 0; i < hits.GetCount(); ++i) {
            const std::string caption = hits.GetItem(i).GetCaption();
            text += (i > 0 ? " " : "") + (caption.empty() ? "root" : caption);
        }
        return text;
    }
    std::string nodes(double left, double top, double right, double bottom) {
        return captions(graph.HitNodeTest(left, top, right, bottom));
    }
    std::string edges(double left, double top, double right, double bottom) {
        return captions(graph.HitEdgeTest(left, top, right, bottom));
    }

    Graph graph;
    Node root = graph.GetRoot();
    Node a = root.AddNode();
};

TEST_F(HitTest, OfTheSurroundingClustersOnlyTheInnermostCount) {
    place(root, {0, 0, 200, 100});
    const Node outer = add(root, "outer", {10, 10, 110, 90});
    const Node inner = add(outer, "inner", {20, 20, 100, 80});
    add(inner, "leaf", {30, 30, 50, 50});
    add(root, "over", {60, 25, 90, 45}); // lies on the inside of inner without being owned by it
    struct {
        const char* name;
        tamsel7::rectangle<double> area;
        const char* hits;
    } const cases[] = {
        {"a click on free ground is the root's", {150, 50, 150, 50}, "root"},
        {"a click on a cluster", {15, 50, 15, 50}, "outer"},
        {"a click two clusters deep", {25, 50, 25, 50}, "inner"},
        {"a click on a leaf", {40, 40, 40, 40}, "leaf"},
        {"two that do not own each other", {70, 30, 70, 30}, "inner over"},
        {"a rectangle that cuts a leaf", {40, 40, 55, 45}, "leaf inner"},
        {"a rectangle over everything", {-5, -5, 300, 300}, "root outer inner leaf over"},
        {"a touch of a border", {110, 50, 120, 60}, "outer root"},
        {"a touch of a corner from outside", {-5, -5, 0, 0}, "root"},
        {"beside everything", {201, 0, 300, 10}, ""},
        {"above everything", {0, -9, 10, -1}, ""},
        {"a click on the left border cuts", {10, 50, 10, 50}, "outer root"},
        {"a click on the top border", {60, 10, 60, 10}, "outer root"},
        {"a click on the right border", {110, 50, 110, 50}, "outer root"},
        {"a click on the bottom border", {60, 90, 60, 90}, "outer root"},
        {"a touch from below", {150, 100, 160, 120}, "root"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(nodes(c.area.left, c.area.top, c.area.right, c.area.bottom), c.hits) << c.name;
    }
}

TEST_F(HitTest, OnlyRecordedNodesAreHit) {
    Node b = add(root, "b", {0, 0, 10, 10});
    a.GetHandler(); // a record without a place
    EXPECT_EQ(nodes(-1, -1, 20, 20), "b");
    a.SetCaption("a");
    a.GetSize();
    EXPECT_EQ(nodes(-1, -1, 20, 20), "a b");
    b.Remove();
    EXPECT_EQ(nodes(-1, -1, 20, 20), "a");
    b.GetPosition(); // a record again, of a node without an owner
    EXPECT_EQ(nodes(-1, -1, 20, 20), "a");
    route("r", {{1, 1}, {2, 2}});
    EXPECT_EQ(nodes(-1, -1, 20, 20), "a") << "break nodes are never hit";
    add(add(root, "c", {0, 0, 5, 5}), "d", {0, 0, 5, 5}).GetOwner().Remove();
    EXPECT_EQ(nodes(-1, -1, 20, 20), "a") << "what went with its owner has no owner";
}

TEST_F(HitTest, ASegmentIsHitWhereItMeetsTheRectangle) {
    struct {
        const char* name;
        point from;
        point to;
        bool hit;
    } const cases[] = {
        // against the rectangle 10,10 to 20,20
        {"an end inside", {15, 15}, {100, 100}, true},
        {"an end on the border", {10, 15}, {0, 0}, true},
        {"an end on a corner", {20, 20}, {30, 30}, true},
        {"left of it", {0, 0}, {5, 40}, false},
        {"right of it", {25, 0}, {20, 40}, false},
        {"along the left side", {10, 0}, {10, 40}, false},
        {"along the top", {0, 10}, {40, 10}, false},
        {"below it", {0, 20}, {40, 30}, false},
        {"straight down through it", {15, 0}, {15, 40}, true},
        {"straight up through it", {15, 40}, {15, 0}, true},
        {"straight across", {0, 15}, {40, 15}, true},
        {"back across", {40, 15}, {0, 15}, true},
        {"a diagonal through two corners", {0, 0}, {40, 40}, true},
        {"steep through top and bottom", {12, 0}, {18, 40}, true},
        {"in at the left, out at the top", {0, 22}, {22, 0}, true},
        {"past the corner", {0, 18}, {18, 0}, false},
        {"through the lower right corner", {13, 28}, {28, 13}, false},
        {"cuts off the lower right corner", {12, 26}, {26, 12}, true},
        {"cuts off the lower left corner", {5, 12}, {17, 24}, true},
        {"right of it, pointing at its right side", {25, 12}, {40, 14}, false},
        {"below it, pointing at its top", {12, 25}, {14, 40}, false},
        {"a single point beside", {5, 15}, {5, 15}, false},
    };
    for (const auto& c : cases) {
        Edge edge = route("x", {c.from, c.to});
        EXPECT_EQ(edges(10, 10, 20, 20), c.hit ? "x" : "") << c.name;
        edge.Remove();
    }
}

TEST_F(HitTest, EdgesAreHitOnceAndById) {
    route("late", {{0, 0}, {10, 10}, {0, 20}, {10, 30}});
    route("later", {{0, 30}, {10, 0}});
    route("far", {{50, 0}, {50, 30}});
    route("stub", {{5, 5}});
    a.LinkTo(a).SetCaption("no record");
    EXPECT_EQ(edges(0, 0, 10, 30), "late later");
    EXPECT_EQ(edges(0, 15, 2, 25), "late later");
    EXPECT_EQ(edges(0, 5, 1, 10), "");
}

TEST_F(HitTest, RemovedEdgesAreHitOnlyByARouteThatStillStands) {
    Node b = add(root, "b", {0, 0, 1, 1});
    Edge edge = a.LinkTo(b);
    edge.SetCaption("a>b");
    edge.AddBreakNodesIn(root, 2);
    edge.GetBreakNodesIn(root).GetItem(1).SetPosition(20, 20);
    EXPECT_EQ(edges(5, 5, 15, 15), "a>b");
    b.Remove(); // takes the edge out of the graph, but not its record
    EXPECT_EQ(edge.From().get_impl().get(), nullptr);
    EXPECT_EQ(edges(5, 5, 15, 15), "a>b");
    edge.AddBreakNodesIn(root, 1); // the route would have to be built anew, and cannot be
    EXPECT_EQ(edges(5, 5, 15, 15), "");
}

TEST_F(HitTest, PlacesThatAreNoNumbersDoNotSpoilTheTest) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    route("nan", {{nan, 0}, {15, nan}});
    route("ok", {{0, 15}, {40, 15}});
    EXPECT_EQ(edges(10, 10, 20, 20), "ok");
}

// A click deep inside must not compare every surrounding cluster with every other.
TEST_F(HitTest, AnswersForADeepNest) {
    Node owner = root;
    for (int depth = 0; depth < 20'000; ++depth) {
        owner = add(owner, "n", {0.0, 0.0, 10, 10});
    }
    owner.SetCaption("innermost");
    EXPECT_EQ(nodes(5, 5, 5, 5), "innermost");
}

// Break nodes have their places in their runs, so that no test leaves a record of them.
TEST_F(HitTest, BendsNeedNoRecord) {
    const Edge edge = route("ab", {{0, 15}, {40, 15}});
    Edge(edge).AddBreakNodesIn(root, 2);
    const auto& store = static_cast<const DefaultGraphVis&>(*root.get_vis());
    const std::size_t before = store.get_node_record_count();
    EXPECT_EQ(edges(10, 10, 20, 20), "ab");
    EXPECT_EQ(edges(50, 50, 60, 60), "");
    edge.GetBreakNodes().GetItem(2).SetPosition(100, 100);
    EXPECT_EQ(edges(69, 50, 71, 60), "ab");
    edge.GetBreakNodes().GetItem(2).Remove(); // of its place: it is back at 0,0
    EXPECT_EQ(edges(69, 50, 71, 60), "");
    EXPECT_EQ(edges(30, 10, 31, 12), "ab");
    EXPECT_EQ(store.get_node_record_count(), before);
}

// What has moved since the last look at everything is found where it is, and not where it was, by
// itself and by the thousands.
TEST_F(HitTest, FindsInALargeGraphWhatALookAtEachFinds) {
    using namespace testing_support;
    std::mt19937 random(5);
    const auto number = [&] { return static_cast<double>(random() % 4000) / 3; };
    const graph_ptr2<Graph> large(new Graph, /*owns=*/true);
    std::vector<Node> all{large->GetRoot()};
    std::vector<Edge> routed;
    const auto bend = [&](Edge edge) {
        edge.RemoveBreakNodes();
        edge.AddBreakNodesIn(large->GetRoot(), static_cast<int>(random() % 12));
        NodeSet run = edge.GetBreakNodes();
        const point from{number(), number()};
        for (int i = 0; i < run.GetCount(); ++i) {
            run.GetItem(i).SetPosition(from.x + i * 9, from.y + number() / 20);
        }
    };
    for (int i = 0; i < 3000; ++i) {
        Node added = all[random() % (i % 2 == 0 ? 1 : all.size())].AddNode();
        place(added, {0, 0, number() / 9, number() / 9});
        added.SetPosition(number(), number());
        if (i > 0) {
            routed.push_back(added.LinkTo(all[1 + random() % (all.size() - 1)]));
            bend(routed.back());
        }
        all.push_back(added);
    }
    for (int step = 0; step < 300; ++step) {
        const double x = number();
        const double y = number();
        ASSERT_EQ(find_hit_fault(large, {x, y, x + number() / 9, y + number() / 9}), "") << step;
        for (int change = 0; change < (step % 50 == 0 ? 2000 : 3); ++change) {
            MoveNode(all[1 + random() % (all.size() - 1)], number(), number());
            all[random() % all.size()].SetSize({number() / 9, number() / 9});
            bend(routed[random() % routed.size()]);
        }
    }
    const std::size_t memory = store_of(large).get_hit_index_memory();
    EXPECT_LT(memory, 200 * all.size());
}

// Between two columns edges rise a thousand times as far as they go, beside each other and across,
// near and so far away that a float knows no fractions. A point on one of them is hit to the bit.
TEST_F(HitTest, FindsSteepEdgesSideBySideAndAcross) {
    using namespace testing_support;
    struct {
        double scale;
        point offset;
    } const cases[] = {{1, {0, 0}},   {1e-4, {0, 0}},  {1, {3e5, -5e7}},
                       {1e9, {0, 0}}, {1e-46, {0, 0}}, {1e-3, {1e6, 1e6}}};
    for (const auto& c : cases) {
        std::mt19937 random(3);
        const auto number = [&](unsigned below) {
            return static_cast<double>(random() % below) / 8;
        };
        std::vector<std::vector<point>> routes;
        std::vector<Edge> added;
        for (int i = 0; i < 600; ++i) {
            const double drift = i % 3 == 0 ? number(300'000) : 20'000;
            std::vector<point> bends;
            for (int gap = 0; gap < 4; ++gap) {
                const double y = gap * drift + i * 16;
                for (const point at : {point{gap * 100.0, y}, point{gap * 100.0 + 70, y}}) {
                    bends.push_back({at.x * c.scale + c.offset.x, at.y * c.scale + c.offset.y});
                }
            }
            if (i % 5 == 0) {
                std::reverse(bends.begin(), bends.end());
            }
            added.push_back(route("x", bends));
            routes.push_back(bends);
        }
        std::size_t hits = 0;
        for (int test = 0; test < 1000; ++test) {
            const std::vector<point>& bends = routes[random() % routes.size()];
            const std::size_t first = 1 + random() % 3 * 2;
            const point from = bends[first];
            const point to = bends[first + 1];
            const double x = from.x + (to.x - from.x) * number(8);
            const double y = (x - from.x) * (from.y - to.y) / (from.x - to.x) + from.y;
            const double around = test % 2 == 0 ? 0 : number(64) * c.scale;
            hit_area area{x - around, y - around, x + around, y + around};
            if (test % 10 == 9) { // turned inside out
                std::swap(area.top, area.bottom);
            } else if (test % 10 == 7) {
                std::swap(area.left, area.right);
            }
            const auto found =
                ids_of(graph.HitEdgeTest(area.left, area.top, area.right, area.bottom));
            ASSERT_EQ(found, plain_edge_hits(static_cast<DefaultGraphVis&>(*root.get_vis()), area));
            hits += found.size();
        }
        EXPECT_GT(hits, 900u);
        for (Edge& edge : added) {
            edge.Remove();
        }
    }
}

} // namespace
