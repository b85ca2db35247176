// What was drawn stays: levels, the order along them, and the y within an owner, on random graphs
// that are folded and unfolded the way an application does it.
#include "nurvex7/model/queries.h"
#include "tests/support/drawing.h"
#include "tests/support/plain_queries.h"
#include "tests/support/twin.h"
#include "tests/support/watched_layout.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <random>
#include <set>
#include <string>

namespace {

using namespace nurvex7;
using namespace nurvex7::testing_support;
using picture = WatchedLayout::picture;

constexpr double CLOSE = 1e-9;
constexpr double TOP_MARGIN = 12;

/// What an owner has to keep where it is: its visible nodes, and the bends of the edges between
/// them. Edges across its border have no place of their own to keep.
std::set<int> kept_in(const Node& owner) {
    std::set<int> kept;
    for (const Node& n : items(owner.GetOwned())) {
        if (hidden(n)) {
            continue;
        }
        kept.insert(n.GetID());
        for (const NodeEdgePair& pair : children_of(n)) {
            if (!hidden(pair.node)) {
                for (const Node& bend : items(pair.edge.GetBreakNodesIn(owner))) {
                    kept.insert(bend.GetID());
                }
            }
        }
    }
    return kept;
}

/// Level by level, those of a picture that are in a set too.
picture only(const picture& all, const std::set<int>& wanted) {
    picture found(all.size());
    for (std::size_t k = 0; k < all.size(); ++k) {
        std::copy_if(all[k].begin(), all[k].end(), std::back_inserter(found[k]),
                     [&](const WatchedLayout::Standing& n) { return wanted.count(n.id) == 1; });
    }
    return found;
}

std::map<int, double> ys_of(const picture& all) {
    std::map<int, double> ys;
    for (const auto& level : all) {
        for (const WatchedLayout::Standing& n : level) {
            ys[n.id] = n.y;
        }
    }
    return ys;
}

/// `1: 4 7 | 2: 5`, the ids level by level.
std::string order_of(const picture& all) {
    std::string text;
    for (std::size_t k = 0; k < all.size(); ++k) {
        text += all[k].empty() ? "" : "| " + std::to_string(k) + ": ";
        for (const WatchedLayout::Standing& n : all[k]) {
            text += std::to_string(n.id) + " ";
        }
    }
    return text;
}

/// How far a drawing has moved as a whole; every node has to have moved by that and by its shift.
double common_move(const std::map<int, double>& before, const std::map<int, double>& after,
                   const std::map<int, double>& shifts = {}) {
    double move = 0;
    bool first = true;
    for (const auto& [id, y] : before) {
        const auto shift = shifts.find(id);
        const double own = after.at(id) - y - (shift != shifts.end() ? shift->second : 0);
        move = first ? own : move;
        first = false;
        EXPECT_NEAR(own, move, CLOSE * std::max(1.0, std::abs(y) / 1e4)) << "node " << id;
    }
    return move;
}

std::set<int> ids_of(const picture& all) {
    std::set<int> ids;
    for (const auto& entry : ys_of(all)) {
        ids.insert(entry.first);
    }
    return ids;
}

/// Room that is opened moves a node by where its centre is, so that no node passes another whose
/// centre is further down. One can where two overlap: a cluster has outgrown the next node, or a
/// node was shown while its owner got a Resize only, and came back on top of what took its place.
bool centres_in_order(const picture& all) {
    return std::all_of(all.begin(), all.end(), [](const auto& level) {
        return std::is_sorted(level.begin(), level.end(), [](const auto& a, const auto& b) {
            return a.y + a.height / 2 < b.y + b.height / 2;
        });
    });
}

/// Levels and order of what an owner keeps stand still, and y changes by the room that was opened.
void expect_kept(const WatchedLayout::Run& run) {
    SCOPED_TRACE("in '" + run.owner.GetCaption() + "'");
    const picture kept = only(run.before, kept_in(run.owner));
    ASSERT_EQ(order_of(only(run.restored, ids_of(kept))), order_of(kept));
    if (centres_in_order(run.restored)) {
        ASSERT_EQ(order_of(only(run.drawn, ids_of(kept))), order_of(kept));
    }
    common_move(ys_of(kept), ys_of(run.restored));
    common_move(ys_of(run.restored), ys_of(run.drawn), expected_shifts(run.restored));
}

/// Checks the runs since the last call.
void expect_all_kept(WatchedLayout& layout) {
    for (const WatchedLayout::Run& run : layout.runs) {
        expect_kept(run);
    }
    layout.runs.clear();
}

RandomShape nested_shape(unsigned seed, int nodes) {
    RandomShape shape = shape_of_seed(seed, nodes);
    shape.inside = seed % 3 == 0 ? 0 : 40;
    shape.hidden = seed % 4 == 0 ? 10 : 0;
    if (nodes > 200) { // few long edges, so that what is looked at is nodes
        shape.edges = nodes;
        shape.own_owner = 90;
        shape.forward = 80;
    }
    return shape;
}

std::map<int, std::vector<Node>> all_bends(const TestGraph& g) {
    std::map<int, std::vector<Node>> bends;
    for (const Edge& edge : g.edges()) {
        bends[edge.GetID()] = items(edge.GetBreakNodes());
    }
    return bends;
}

/// The drawing of an owner without a change: at most it climbs as a whole, up to the top margin.
void expect_no_change(const WatchedLayout::Run& run) {
    SCOPED_TRACE("in '" + run.owner.GetCaption() + "'");
    const picture kept = only(run.before, kept_in(run.owner));
    ASSERT_EQ(order_of(run.drawn), order_of(kept));
    const std::map<int, double> before = ys_of(kept);
    const double move = common_move(before, ys_of(run.drawn));
    EXPECT_LE(move, CLOSE);
    double top = TOP_MARGIN - move;
    for (const auto& entry : before) {
        top = std::min(top, entry.second);
    }
    EXPECT_GE(top + move, TOP_MARGIN - CLOSE);
}

class StaysPut : public testing::TestWithParam<unsigned> {};

TEST_P(StaysPut, WhenNothingChanges) {
    for (unsigned i = 0; i < 40; ++i) {
        const unsigned seed = GetParam() * 40 + i;
        SCOPED_TRACE("seed " + std::to_string(seed));
        WatchedLayout layout;
        TestGraph g;
        g.use_layout(layout);
        grow(g, seed, nested_shape(seed, 5 + static_cast<int>(seed % 60)));
        g.make();
        const std::map<int, std::vector<Node>> bends = all_bends(g);
        for (int again = 0; again < 6; ++again) {
            g.update(g.root());
            for (const WatchedLayout::Run& run : layout.runs) {
                expect_no_change(run);
            }
            layout.runs.clear();
            ASSERT_EQ(all_bends(g), bends);
            ASSERT_FALSE(HasFailure()) << "update " << again;
        }
    }
}

/// Leaves grow, to twice their height at most: one that outgrew the next one's top would take it
/// along for ever instead of pushing it away.
void grow_leaves_of(const Node& owner, std::mt19937& random) {
    for (Node& n : items(owner.GetOwned())) {
        if (n.GetOwned().GetCount() == 0 && random() % 3 == 0) {
            const tamsel7::size<double> size = n.GetSize();
            n.SetSize(
                {size.width * 1.5, size.height * (1 + static_cast<double>(random() % 8) / 7)});
        }
    }
}

TEST_P(StaysPut, WhenResizedASecondTime) {
    for (unsigned i = 0; i < 25; ++i) {
        const unsigned seed = GetParam() * 25 + i;
        SCOPED_TRACE("seed " + std::to_string(seed));
        WatchedLayout layout;
        TestGraph g;
        g.use_layout(layout);
        grow(g, seed, nested_shape(seed, 5 + static_cast<int>(seed % 60)));
        g.make();
        std::mt19937 random(seed);
        std::vector<Node> owners = g.nodes();
        owners.push_back(g.root());
        for (const Node& owner : owners) {
            if (owner.GetOwned().GetCount() == 0 && random() % 4 > 0) {
                continue; // a leaf takes the size of its handler, and its owners are resized
            }
            if (random() % 4 == 0) {
                g.update(g.root());
            }
            layout.runs.clear();
            grow_leaves_of(owner, random);
            g.resize(owner);
            expect_all_kept(layout);
            const std::vector<Fact> once = drawing_facts(g);
            g.resize(owner);
            const std::vector<Fact> twice = drawing_facts(g);
            for (std::size_t k = 0; k < once.size(); ++k) {
                ASSERT_NEAR(once[k].value, twice[k].value, CLOSE) << once[k].what;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, StaysPut, testing::Range(0U, 5U));

/// Folds at random nodes, and unfolds at those again.
class Folder {
public:
    Folder(TestGraph& of_graph, unsigned seed) : g(of_graph), random(seed), nodes(g.nodes()) {}

    /// A few folds at once, as they are queued until the graph is drawn.
    void step() {
        for (auto folds = 1 + random() % 3; folds > 0; --folds) {
            fold_or_unfold();
        }
        g.recalculate();
    }

private:
    void fold_or_unfold() {
        const FoldDirection direction = random() % 3 == 0 ? FOLD_PARENTS : FOLD_CHILDREN;
        std::size_t at = random() % nodes.size();
        if (folded.empty() || random() % 2 == 0) {
            folded.push_back({at, direction});
            Fold(nodes[at], direction);
            return;
        }
        std::swap(folded[at % folded.size()], folded.back());
        Unfold(nodes[folded.back().first], folded.back().second);
        folded.pop_back();
    }

    TestGraph& g;
    std::mt19937 random;
    std::vector<Node> nodes;
    std::vector<std::pair<std::size_t, FoldDirection>> folded; // by place in nodes
};

struct Folding {
    unsigned seed;
    int nodes;
    int steps;
    int compared; ///< how many of the steps the plain layout does too
};

void PrintTo(const Folding& f, std::ostream* out) {
    *out << f.nodes << " nodes, seed " << f.seed;
}

class Folded : public testing::TestWithParam<Folding> {};

TEST_P(Folded, NodesThatAreLeftStay) {
    const Folding& f = GetParam();
    SCOPED_TRACE("seed " + std::to_string(f.seed));
    WatchedLayout layout;
    Twin twin;
    twin.product.use_layout(layout);
    twin.both([&](TestGraph& g) {
        grow(g, f.seed, nested_shape(f.seed, f.nodes));
        g.make();
    });
    Folder product(twin.product, f.seed);
    Folder plain(twin.plain_graph, f.seed);
    for (int step = 0; step < f.steps; ++step) {
        SCOPED_TRACE("step " + std::to_string(step));
        product.step();
        expect_all_kept(layout);
        if (step < f.compared) {
            plain.step();
            ASSERT_EQ(first_difference(twin.product, twin.plain_graph), "");
        }
        ASSERT_FALSE(HasFailure());
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, Folded,
                         testing::Values(Folding{1, 10, 300, 300}, Folding{2, 25, 300, 300},
                                         Folding{3, 60, 200, 200}, Folding{4, 150, 200, 60},
                                         Folding{5, 150, 200, 60}, Folding{6, 500, 100, 20},
                                         Folding{7, 2000, 40, 2}, Folding{8, 2000, 40, 2}));

} // namespace
