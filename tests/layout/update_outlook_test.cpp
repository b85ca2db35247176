#include "nurvex7/model/folding.h"
#include "tests/support/test_graph.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace {

using namespace nurvex7;
using namespace nurvex7::testing_support;

void nothing(TestGraph&) {}

std::function<void(TestGraph&)> adding(const std::string& words) {
    return [words](TestGraph& g) { g.add(words); };
}

// The walk over the component starts at what has no place: x comes first in the order of ids.
void move_in_before_all(TestGraph& g) {
    Node x = g.node("x");
    x.SetOwner(g.root());
    g.node("gone").Remove();
    const Node between = g.add_node(g.root(), "between");
    g.add_edge(x, between);
    g.add_edge(between, g.node("a"));
}

TEST(LookAhead, TellsWhatAnUpdateWouldMeet) {
    TestGraph elsewhere("f");
    struct {
        const char* what;
        const char* words; ///< the graph that is drawn first
        std::function<void(TestGraph&)> change;
        UpdateOutlook expected;
    } const changes[] = {
        {"no change", "a>b b>c", nothing, UpdateOutlook::NOTHING_NEW},
        {"a node beside an old one", "a>b", adding("b>c"), UpdateOutlook::FITS},
        {"an edge between old nodes", "a>b b>c", adding("a>c"), UpdateOutlook::FITS},
        {"a component that is all new", "a>b", adding("c>d d>e"), UpdateOutlook::FITS},
        {"a chain of two on an old node", "a>b", adding("b>c c>d"), UpdateOutlook::DOES_NOT_FIT},
        {"a chain that begins at the node without a place", "C/x gone a>b", move_in_before_all,
         UpdateOutlook::DOES_NOT_FIT},
        {"a node that was hidden and is shown", "a>b !b", [](TestGraph& g) { Show(g.node("b")); },
         UpdateOutlook::FITS},
        {"one without edges that is shown", "a>b c !c", [](TestGraph& g) { Show(g.node("c")); },
         UpdateOutlook::FITS},
        {"a new node on one that stays hidden", "a>b a>c !b", adding("b>d"),
         UpdateOutlook::DOES_NOT_FIT},
        {"an edge to a node that stays hidden", "a>b c !c", adding("a>c"),
         UpdateOutlook::NOTHING_NEW},
        {"an edge to a node of another graph", "a>b",
         [&](TestGraph& g) { g.add_edge(g.node("b"), elsewhere.node("f")); },
         UpdateOutlook::DOES_NOT_FIT},
        {"an old node that is hidden now", "a>b b>c", [](TestGraph& g) { Hide(g.node("b")); },
         UpdateOutlook::NOTHING_NEW},
        {"a node that met a resize first", "a>b",
         [](TestGraph& g) {
             g.add("b>c");
             g.resize(g.root());
         },
         UpdateOutlook::FITS}};
    for (const auto& c : changes) {
        SCOPED_TRACE(c.what);
        TestGraph g(c.words);
        g.make();
        c.change(g);
        EXPECT_EQ(g.layout.LookAhead(g.root()), c.expected);
        EXPECT_EQ(g.layout.LookAhead(g.root()), c.expected) << "asking changed the answer";
        if (c.expected != UpdateOutlook::DOES_NOT_FIT) {
            g.update(g.root()); // ends
            EXPECT_NE(g.layout.LookAhead(g.root()), UpdateOutlook::FITS);
        }
    }
}

TEST(LookAhead, SeesIntoInnerOwnersWhoeverServesThemAndMakesNoRecord) {
    TestGraph g("C/a>C/b C>d");
    EXPECT_EQ(g.layout.LookAhead(g.node("C")), UpdateOutlook::NEVER_LAID_OUT);
    EXPECT_EQ(g.layout.LookAhead(g.node("a")), UpdateOutlook::NOTHING_NEW);
    g.make();
    const IncLayout other;
    EXPECT_EQ(other.LookAhead(g.root()), UpdateOutlook::NEVER_LAID_OUT);
    g.add("C/b>C/c C/c>C/e");
    const auto* store = dynamic_cast<DefaultGraphVis*>(g.root().get_vis().get());
    const std::size_t before = store->get_node_record_count();
    EXPECT_EQ(other.LookAhead(g.root()), UpdateOutlook::DOES_NOT_FIT);
    EXPECT_EQ(g.layout.LookAhead(g.root()), UpdateOutlook::DOES_NOT_FIT);
    EXPECT_EQ(g.layout.LookAheadAlone(g.root()), UpdateOutlook::NOTHING_NEW);
    EXPECT_EQ(g.layout.LookAheadAlone(g.node("C")), UpdateOutlook::DOES_NOT_FIT);
    EXPECT_EQ(store->get_node_record_count(), before);
}

} // namespace
