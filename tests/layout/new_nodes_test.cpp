#include "tests/support/layout_probe.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace nurvex7;
using namespace nurvex7::testing_support;

// An old p beside two old nodes a and b of height 20, and new nodes that p leads to. All y are told
// from the top of a.
TEST(NewNodesYCoords, ANewNodeTakesAFreeSpaceNearItsNeighbours) {
    struct {
        const char* shows;
        double centre_of_p;
        double top_of_b;
        const char* added;
        std::vector<double> tops; ///< of the new nodes, in the order of their captions n, o
    } const cases[] = {
        {"right beside its neighbour where there is room", 60, 100, "p>n", {50}},
        {"pulled no further than the space reaches", 30, 100, "p>n", {32}},
        {"or ends", 90, 100, "p>n", {68}},
        {"a space of exactly its need is too small", 42, 64, "p>n", {96}},
        {"the nearer of the spaces that can take it", 29, 40, "p>n", {-32}},
        {"at equal distance the one further down", 30, 40, "p>n", {72}},
        {"what is planned for a space is not planned again", 50, 80, "p>n p>o", {40, 112}},
        {"two in one space", 60, 160, "p>n p>o", {34, 66}},
        {"above all they end at the first old node", -200, 100, "p>n p>o", {-226, -194}},
        {"and are stacked upwards from it", -10, 30, "p>n p>o", {-64, -32}},
        {"without neighbours the ideal is 0, here above p", 200, 300, "n", {158}},
        {"or below it", -80, 300, "n", {-58}}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.shows);
        TestGraph g("p>a p>b");
        LayoutProbe probe(g);
        probe.make();
        g.node("a").SetPosition(0, 0);
        g.node("b").SetPosition(0, c.top_of_b);
        g.node("p").SetPosition(0, c.centre_of_p - 10);
        g.add(c.added);
        probe.update();
        const double top = g.node("a").GetPosition().y;
        EXPECT_EQ(g.node("b").GetPosition().y - top, c.top_of_b) << "old nodes stay";
        EXPECT_EQ(g.node("p").GetPosition().y - top, c.centre_of_p - 10) << "old nodes stay";
        const char* const captions[] = {"n", "o"};
        for (std::size_t i = 0; i < c.tops.size(); ++i) {
            EXPECT_EQ(g.node(captions[i]).GetPosition().y - top, c.tops[i]);
        }
    }
}

TEST(NewNodesYCoords, ALevelOfNewNodesAloneFollowsItsNeighbours) {
    TestGraph g("a b c");
    g.make();
    g.add("c>d b>e");
    g.update(g.root());
    EXPECT_EQ(g.node("d").GetPosition().y, g.node("c").GetPosition().y);
    EXPECT_EQ(g.node("e").GetPosition().y, g.node("b").GetPosition().y);
}

/// Removes a node when the root is measured: in the midst of the run.
class Remover : public SizedNodeHandler {
public:
    explicit Remover(const Node& node) : removed(node) {}

    using SizedNodeHandler::GetSize;
    tamsel7::size<double> GetSize(Node node) override {
        if (IsRoot(node)) {
            removed.Remove();
        }
        return SizedNodeHandler::GetSize(node);
    }

private:
    Node removed;
};

TEST(PlaceNewNodes, BearsThatOneIsRemovedInTheMidstOfTheRun) {
    for (const char* added : {"n", "b>n a>n", "n>a"}) {
        TestGraph g("a>b b>c");
        g.make();
        g.add(added);
        const Node n = g.node("n");
        Remover remover(n);
        g.graph->SetDefaultNodeHandler(graph_ptr2<INodeHandler>(&remover, /*owns=*/false));
        g.update(g.root());
        EXPECT_TRUE(n.IsDummy());
        EXPECT_EQ(g.node("c").GetPosition().y, g.node("b").GetPosition().y);
    }
}

} // namespace
