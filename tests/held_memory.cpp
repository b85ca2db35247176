#include "nurvex7/layout/inc_layout.h"
#include "nurvex7/model/folding.h"
#include "nurvex7/model/graph.h"
#include "nurvex7/model/queries.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <malloc.h>
#include <new>
#include <random>
#include <string>
#include <vector>

// What a graph of a thousand nodes holds after many rounds of changes and layouts. All memory that
// the program holds is counted, so this is a program of its own.

namespace {

std::size_t held = 0;

} // namespace

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    void* const memory = std::malloc(size);
    held += memory != nullptr ? malloc_usable_size(memory) : 0;
    return memory;
}

void* operator new(std::size_t size) {
    void* const memory = operator new(size, std::nothrow);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void operator delete(void* memory) noexcept {
    if (memory != nullptr) {
        held -= malloc_usable_size(memory);
        std::free(memory);
    }
}

void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}

namespace {

using namespace nurvex7;

constexpr std::size_t NODES = 1'000;
constexpr std::size_t REPLACED = 20; // added in a round, and removed in the next

/// A graph of many small clusters that goes on changing and always comes back to the same size:
/// what a round adds is removed in the next one, and what it folds it unfolds.
class ChangingGraph {
public:
    explicit ChangingGraph(graph_ptr2<ILayout> by) : layout(by) {
        graph->SetDefaultLayout(layout);
        while (nodes.size() < NODES) {
            Node beside = nodes.empty() ? graph->GetRoot() : any_node();
            Node owner = IsRoot(beside) || below(10) == 0 ? beside : beside.GetOwner();
            Node added = owner.AddNode();
            if (owner != beside) {
                beside.LinkTo(added);
            }
            nodes.push_back(added);
        }
    }

    void change() {
        std::for_each(added_edges.begin(), added_edges.end(), [](Edge& e) { e.Remove(); });
        std::for_each(added_nodes.begin(), added_nodes.end(), [](Node& n) { n.Remove(); });
        added_edges.clear();
        added_nodes.clear();
        for (std::size_t i = 0; i < REPLACED; ++i) {
            const Node folded = any_node();
            Fold(folded, FOLD_CHILDREN);
            Unfold(folded, FOLD_CHILDREN);
            Node beside = any_node();
            added_nodes.push_back(beside.GetOwner().AddNode());
            added_edges.push_back(beside.LinkTo(added_nodes.back()));
            // The edges inside go with their nodes.
            Node inside = added_nodes.back().AddNode();
            inside.LinkTo(added_nodes.back().AddNode());
        }
    }

    void lay_out(bool from_nothing) {
        const auto& by = dynamic_cast<const IncLayout&>(*layout);
        graph->GetRoot().get_vis()->clear_update_list();
        if (from_nothing || by.LookAhead(graph->GetRoot()) == UpdateOutlook::DOES_NOT_FIT) {
            graph->GetRoot().MakeLayout();
        } else {
            graph->GetRoot().UpdateLayout();
            ++updates;
        }
        graph->RecalculateLayout(nullptr);
    }

    int get_updates() const { return updates; }

private:
    std::size_t below(std::size_t bound) { return random() % bound; }
    Node any_node() { return nodes[below(nodes.size())]; }

    std::mt19937 random{1};
    graph_ptr2<ILayout> layout;
    graph_ptr2<Graph> graph{new Graph, /*owns=*/true};
    std::vector<Node> nodes;
    std::vector<Node> added_nodes;
    std::vector<Edge> added_edges;
    int updates = 0;
};

class HeldMemory : public testing::TestWithParam<bool> {};

// Records that nobody can reach go now and then, so the most of fifty rounds is what counts.
TEST_P(HeldMemory, DoesNotGrowWithTheRounds) {
    ChangingGraph g(IncLayout::Create());
    std::size_t most_at_first = 0;
    std::size_t most_at_last = 0;
    for (int round = 1; round <= 1'000; ++round) {
        g.change();
        g.lay_out(/*from_nothing=*/GetParam() || round == 1);
        if (round > 50 && round <= 100) {
            most_at_first = std::max(most_at_first, held);
        } else if (round > 950) {
            most_at_last = std::max(most_at_last, held);
        }
    }
    EXPECT_LT(static_cast<double>(most_at_last), 1.05 * static_cast<double>(most_at_first));
    EXPECT_TRUE(GetParam() || g.get_updates() > 500) << "too few of the rounds were updates";
}

INSTANTIATE_TEST_SUITE_P(Rounds, HeldMemory, testing::Values(true, false), [](const auto& param) {
    return std::string(param.param ? "OfMake" : "OfUpdate");
});

// Everything that a graph and its layout made goes with them: the rest of the process is as before.
TEST(HeldMemory, GoesWithTheGraph) {
    const auto hold_one = [](const graph_ptr2<ILayout>& layout) {
        ChangingGraph g(layout);
        g.change();
        g.lay_out(true);
        g.change();
        g.lay_out(false);
    };
    GetDefaultEdgeHandler();
    GetDefaultLayout();
    GetDefaultNodeHandler();
    const std::size_t before = held;
    hold_one(IncLayout::Create());
    EXPECT_EQ(held, before);
}

} // namespace
