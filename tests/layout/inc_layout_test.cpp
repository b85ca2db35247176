// The layout against its plainest form, to the last bit.
#include "tests/support/drawing.h"
#include "tests/support/layout_probe.h"
#include "tests/support/recording_painter.h"
#include "tests/support/twin.h"

#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <string>

namespace {

using namespace nurvex7;
using namespace nurvex7::testing_support;

void expect_equal_make(unsigned seed, int nodes) {
    SCOPED_TRACE("seed " + std::to_string(seed) + ", nodes " + std::to_string(nodes));
    Twin twin;
    twin.both([&](TestGraph& g) {
        grow(g, seed, shape_of_seed(seed, nodes));
        g.make();
    });
    ASSERT_EQ(first_difference(twin.product, twin.plain_graph), "");
    twin.both([](TestGraph& g) { g.make(); });
    ASSERT_EQ(first_difference(twin.product, twin.plain_graph), "") << "made again";
}

class Agreement : public testing::TestWithParam<unsigned> {};

TEST_P(Agreement, OfMakeOnSmallGraphs) {
    for (unsigned i = 0; i < 50; ++i) {
        const unsigned seed = GetParam() * 50 + i;
        expect_equal_make(seed, 2 + static_cast<int>(seed * 37 % 59));
        if (HasFatalFailure()) {
            return;
        }
    }
}

TEST(Agreement, OfMakeOnLargeGraphs) {
    for (unsigned seed = 1; seed <= 4; ++seed) {
        expect_equal_make(seed, 300);
    }
}

// The graph changes as an application changes it; where a change would break the duty that Update
// leaves to its caller, everything is made anew.
TEST_P(Agreement, OfUpdateAndResizeAfterRandomChanges) {
    for (unsigned i = 0; i < 20; ++i) {
        const unsigned seed = GetParam() * 20 + i;
        SCOPED_TRACE("seed " + std::to_string(seed));
        Twin twin;
        twin.both([&](TestGraph& g) {
            grow(g, seed, shape_of_seed(seed, 3 + static_cast<int>(seed % 25)));
            g.make();
        });
        for (unsigned step = 1; step <= 12; ++step) {
            SCOPED_TRACE("step " + std::to_string(step));
            const unsigned what = seed * 31 + step * 7;
            twin.both([&](TestGraph& g) {
                std::mt19937 random(seed * 1000 + step);
                change(g, random, 1 + static_cast<int>(step % 3));
            });
            const bool ends = twin.plain.UpdateEnds(twin.plain_graph.root());
            twin.both([&](TestGraph& g) {
                if (!ends) {
                    g.make();
                } else if (what % 3 == 0) {
                    g.resize(g.root());
                } else {
                    g.update(g.root());
                }
            });
            ASSERT_EQ(first_difference(twin.product, twin.plain_graph), "");
        }
    }
}

// A user may give an edge a list of his own. Where it is too short for what both ends of the edge
// place, the end in the later column has the last word.
TEST(Agreement, OfListsThatAreTooShort) {
    for (int length = 0; length < 10; ++length) {
        SCOPED_TRACE("length " + std::to_string(length));
        Twin twin;
        twin.both([&](TestGraph& g) {
            g.add("a>b b>c c>a a>c a>a d>c c>d b>e e>b A/x>c c>A/y");
            g.make();
            for (const char* const edge :
                 {"a>b", "b>c", "c>a", "a>c", "a>a", "d>c", "c>d", "e>b"}) {
                g.edge(edge).RemoveBreakNodesIn(g.root());
                g.edge(edge).AddBreakNodesIn(g.root(), length);
            }
            g.update(g.root());
        });
        ASSERT_EQ(first_difference(twin.product, twin.plain_graph), "");
        twin.both([](TestGraph& g) { g.resize(g.root()); });
        ASSERT_EQ(first_difference(twin.product, twin.plain_graph), "") << "resized";
    }
}

// A full layout lets go of most of what it knew, but a Resize reckons with its tracks and marks:
// the first node grows just as far as it can without a track and not with one.
TEST(Agreement, OfResizeAfterMakeWithTracks) {
    Twin twin;
    twin.both([](TestGraph& g) {
        g.add("a>a b>c c>b d>c");
        g.make();
        for (const char* const name : {"a", "b", "c"}) {
            g.node(name).SetSize({60, 32});
        }
        g.resize(g.root());
    });
    EXPECT_EQ(first_difference(twin.product, twin.plain_graph), "");
}

/// Nodes that are linked among themselves, in circles too, and to nothing else.
void add_island(TestGraph& g, const std::string& name, std::mt19937& random) {
    std::vector<Node> island;
    for (auto i = 4 + random() % 6; i > 0; --i) {
        island.push_back(g.add_node(g.root(), name + std::to_string(i)));
    }
    for (std::size_t i = 0; i < 2 * island.size(); ++i) {
        const Node from = island[random() % island.size()];
        g.add_edge(from, island[random() % island.size()]);
    }
}

// What hangs together and is all new is laid out as if there were nothing else.
TEST(Agreement, OfUpdateWithWholeNewComponents) {
    for (unsigned seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Twin twin;
        twin.plain.keep_hidden = seed % 3 != 0;
        LayoutProbe::set_switches(twin.product.layout, true, twin.plain.keep_hidden);
        twin.both([&](TestGraph& g) {
            RandomShape shape = shape_of_seed(seed, 12);
            shape.hidden = 15;
            grow(g, seed, shape);
            g.make();
            std::mt19937 random(seed);
            add_island(g, "i", random);
            add_island(g, "j", random);
            g.update(g.root());
        });
        ASSERT_EQ(first_difference(twin.product, twin.plain_graph), "");
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, Agreement, testing::Range(0U, 10U));

TEST(Agreement, WithTheSwitchesThatNobodyTurns) {
    for (unsigned seed = 0; seed < 120; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Twin twin;
        twin.plain.use_force_adjust = seed % 2 == 0;
        twin.plain.keep_hidden = seed % 4 >= 2;
        LayoutProbe::set_switches(twin.product.layout, twin.plain.use_force_adjust,
                                  twin.plain.keep_hidden);
        twin.both([&](TestGraph& g) {
            RandomShape shape = shape_of_seed(seed, 25);
            shape.hidden = 15;
            grow(g, seed, shape);
            g.make();
        });
        ASSERT_EQ(first_difference(twin.product, twin.plain_graph), "");
    }
}

/// Everything of a graph that is no drawing.
std::string structure_text(const TestGraph& g) {
    std::ostringstream out;
    for (const Node& node : g.nodes()) {
        out << node.GetCaption() << ' ' << node.GetOwner().GetCaption() << ' ' << node.GetTag()
            << ' ' << node.GetCondition() << '\n';
    }
    for (const Edge& edge : g.edges()) {
        out << edge.GetCaption() << ' ' << edge.From().GetCaption() << ' ' << edge.To().GetCaption()
            << ' ' << edge.GetTag() << ' ' << edge.GetCondition() << '\n';
    }
    return out.str();
}

TEST(Layout, WritesPositionsSizesAndBreakNodesAndNothingMore) {
    for (unsigned seed = 0; seed < 40; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        TestGraph g;
        RandomShape shape = shape_of_seed(seed, 30);
        shape.hidden = 20;
        grow(g, seed, shape);
        g.recalculate();
        const std::string before = structure_text(g);
        void (IncLayout::*const entries[])(Node) = {&IncLayout::Make, &IncLayout::Update,
                                                    &IncLayout::Resize};
        for (const auto entry : entries) {
            (g.layout.*entry)(g.root());
            EXPECT_EQ(structure_text(g), before);
        }
        tests::RecordingPainter painter;
        EXPECT_FALSE(g.graph->RecalculateLayout(&painter)) << "a run queues nothing";
    }
}

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr int LONG_CHAIN = 100'000;
#else
constexpr int LONG_CHAIN = 1'000'000;
#endif

// A walk that called itself from node to node would have come to the end of its stack.
TEST(Layout, DrawsAMillionNodesInARow) {
    TestGraph g;
    std::vector<Node> chain;
    for (int i = 0; i < LONG_CHAIN; ++i) {
        chain.push_back(g.root().AddNode());
        if (i > 0) {
            chain[chain.size() - 2].LinkTo(chain.back());
        }
    }
    g.make();
    EXPECT_EQ(chain.back().GetPosition().x, 35 + (LONG_CHAIN - 1) * 100.0);
    EXPECT_EQ(chain.back().GetPosition().y, 12);
}

} // namespace
