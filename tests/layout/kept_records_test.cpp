// What a run takes over from the one before is what it would have found out by itself, whatever
// handlers do in the middle of it.
#include "tests/support/drawing.h"
#include "tests/support/plain_queries.h"
#include "tests/support/random_graph.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

namespace {

using namespace nurvex7;
using namespace nurvex7::testing_support;

/// Could have phases of its own, so that every run looks everything up and takes nothing over.
class OfAnotherKind : public IncLayout {};

/// A graph whose edges have widths from a handler that does something at one of its calls.
class Meddled : public IEdgeHandler {
public:
    Meddled(unsigned seed, IncLayout& with) : layout(with) {
        g.use_layout(layout);
        RandomShape shape = shape_of_seed(seed, 6 + static_cast<int>(seed % 60));
        shape.inside = seed % 3 == 0 ? 0 : 25;
        shape.hidden = seed % 4 == 0 ? 10 : 0;
        shape.forward = seed % 2 == 0 ? 90 : 60;
        grow(g, seed, shape);
        g.graph->SetDefaultEdgeHandler(graph_ptr2<IEdgeHandler>(this, /*owns=*/false));
        g.make();
    }

    void Draw(Edge, tamsel7::IPainter*) override {}
    double GetWidth(Edge edge) const override {
        ++calls;
        if (calls_left-- == 0) {
            meddle();
        }
        return g.edge_handler.GetWidth(edge);
    }

    void plan(unsigned what, unsigned at, int call) {
        const std::vector<Node> nodes = g.nodes();
        const Node n = nodes[at % nodes.size()];
        const Edge e = g.edges()[at % g.edges().size()];
        calls_left = call;
        meddle = [=] {
            switch (what) {
            case 0:
                return Node(n).SetCondition(n.GetCondition() | NODE_HIDDEN);
            case 1:
                return Node(n).SetCondition(n.GetCondition() & ~NODE_HIDDEN);
            case 2:
                return Edge(e).AddBreakNodesIn(e.From().GetOwner(), 1 + static_cast<int>(at % 4));
            case 3:
                throw std::runtime_error("no width");
            default:
                return;
            }
        };
    }

    void run(bool resizes) {
        calls = 0;
        try {
            if (layout.LookAhead(g.root()) > UpdateOutlook::FITS ||
                layout.LookAhead(g.root()) == UpdateOutlook::NEVER_LAID_OUT) {
                calls_left = -1;
                g.make();
            } else {
                resizes ? g.resize(g.root()) : g.update(g.root());
            }
        } catch (const std::runtime_error&) {
            // What was cut short goes back to where it stood, also where it is hidden by now.
            const std::vector<Node> nodes = g.nodes();
            for (std::size_t i = 0; i < nodes.size(); i += 3) {
                Node(nodes[i]).SetCondition(nodes[i].GetCondition() | NODE_HIDDEN);
            }
            g.recalculate();
        }
        calls_left = -1;
    }

    TestGraph g;
    IncLayout& layout;
    mutable int calls = 5;
    mutable int calls_left = -1;
    std::function<void()> meddle;
};

TEST(KeptRecords, DrawAsIfEverythingWereLookedUp) {
    for (unsigned seed = 0; seed < 150; ++seed) {
        IncLayout taking_over;
        OfAnotherKind looking_up;
        Meddled kept(seed, taking_over);
        Meddled plain(seed, looking_up);
        std::mt19937 random(seed);
        const auto below = [&](unsigned end) { return static_cast<unsigned>(random() % end); };
        for (int step = 0; step < 10; ++step) {
            SCOPED_TRACE("seed " + std::to_string(seed) + " step " + std::to_string(step));
            const unsigned change_seed = below(1U << 30);
            const unsigned what = below(7);
            const unsigned at = below(1U << 30);
            const int call = static_cast<int>(below(static_cast<unsigned>(kept.calls) + 1));
            for (Meddled* const each : {&kept, &plain}) {
                std::mt19937 changes(change_seed);
                change(each->g, changes, static_cast<int>(change_seed % 3));
                each->plan(what, at, call);
                each->run(at % 4 == 0);
            }
            ASSERT_EQ(kept.calls, plain.calls);
            ASSERT_EQ(first_difference(kept.g, plain.g), "");
        }
    }
}

} // namespace
