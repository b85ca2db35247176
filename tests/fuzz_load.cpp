#include "apps/nurvex/graph_check.h"
#include "nurvex7/layout/inc_layout.h"
#include "nurvex7/model/folding.h"
#include "nurvex7/model/queries.h"
#include "nurvex7/model/text_graph.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <sstream>
#include <string>
#include <vector>

// Random bytes and random edits of graphs that load, through the checker and the loader. The same
// inputs in every run; NURVEX_FUZZ_INPUTS sets their number, NURVEX_FUZZ_SEED other ones.

namespace nurvex7 {
namespace {

unsigned long from_environment(const char* name, unsigned long otherwise) {
    const char* const text = std::getenv(name);
    return text != nullptr ? std::strtoul(text, nullptr, 10) : otherwise;
}

const std::vector<std::string>& seeds() {
    static const std::vector<std::string> texts{
        "t\n[nodes]\n1 \"a\" 0 0\n2 \"b\" 0 1\n3 \"c\" 0 2\n[edges]\n1 2 \"\"\n3 3 \"e\"\n",
        "t\n[types]\nx\n[clusters]\n9 \"C\" 1 0\n[nodes]\n4 \"d\" 1 9\n[edges]\n4 9 \"\"\n4 9 "
        "\"\"\n",
        "t\n[nodes]\n1 \"Thread\" 0 0\n2 \"main\" 0 0\n3 \"main\" 0 2\n[edges]\n1 2 \"\"\n2 3 "
        "\"\"\n",
        "t\n[nodes]\n-5 \"a \"b\" c\" +7 0\n6 \"\" 0 -5\n[edges]\n-5 6\n", ""};
    return texts;
}

/// What slips in where somebody edits: pieces of the format and a few that are none.
const std::vector<std::string>& pieces() {
    static const std::vector<std::string> texts{
        "\"", "\n",  "\r\n",   " ",       "0",       "1",          "-1",          "3",
        "9",  "x",   "\t",     "[nodes]", "[edges]", "[types]",    "\n[nodes]\n", "\n[edges]\n",
        "[",  "]",   "Thread", "main",    "+",       "2147483648", "1 2 \"\"\n",  "\n7 \"q\" 0 1\n",
        "\v", "\x80"};
    return texts;
}

class Mutator {
public:
    explicit Mutator(unsigned seed) : random(seed) {}

    std::string next() {
        return below(8) == 0 ? random_bytes() : edited(seeds()[below(seeds().size())]);
    }

private:
    std::size_t below(std::size_t bound) { return random() % bound; }

    std::string random_bytes() {
        std::string text = below(2) == 0 ? "t\n[nodes]\n" : "";
        for (std::size_t left = below(80); left > 0; --left) {
            text += static_cast<char>(below(256));
        }
        return text;
    }

    std::string edited(std::string text) {
        for (std::size_t edits = below(5); edits > 0; --edits) {
            const std::size_t at = below(text.size() + 1);
            switch (below(5)) {
            case 0:
                text.erase(at, 1 + below(8));
                break;
            case 1:
                text.insert(at, 1, static_cast<char>(below(256)));
                break;
            case 2:
                text.insert(at, text.substr(below(text.size() + 1), below(30)));
                break;
            default:
                text.insert(at, pieces()[below(pieces().size())]);
            }
        }
        return text;
    }

    std::mt19937 random;
};

/// What a caller of Load has to keep away from it: a path of "main" nodes may lead in a circle, and
/// a node that owns itself is a cycle of counts that nothing frees. Says so too often, never too
/// rarely.
bool may_break_a_duty(const std::string& text) {
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        const NodeLine node = ReadNodeLine(line);
        if (node.id == node.owner && node.id != 0 && node.id != -1) {
            return true;
        }
    }
    return text.find("Thread") != std::string::npos && text.find("main") != std::string::npos;
}

nurvex::GraphSize size_of(const graph_ptr2<Graph>& graph) {
    nurvex::GraphSize size;
    ForEachNodeIn(
        graph->GetRoot(),
        [&size](const Node& node) {
            ++size.nodes;
            size.clusters += node.GetOwned().GetCount() > 0 ? 1U : 0U;
            size.edges += static_cast<std::size_t>(node.GetEdgesOut().GetCount());
        },
        /*post_order=*/false, /*include_self=*/false);
    return size;
}

/// Loads a graph and, where that succeeds, draws it as far as a program without a surface can and
/// tells how large it is.
int load(const std::string& text, nurvex::GraphSize* size = nullptr) {
    IncLayout layout; // the graph does not own it: its tables hold nodes
    const graph_ptr2<Graph> graph(new Graph, /*owns=*/true);
    graph->SetDefaultLayout(graph_ptr2<ILayout>(&layout, /*owns=*/false));
    std::istringstream in(text);
    const int loaded = Load(graph, in);
    if (loaded == 1) {
        if (size != nullptr) {
            *size = size_of(graph);
        }
        graph->RecalculateLayout(nullptr);
        MarkDrawnIn(graph);
        graph->HitNodeTest(-1e9, -1e9, 1e9, 1e9);
        graph->HitEdgeTest(-1e9, -1e9, 1e9, 1e9);
    }
    return loaded;
}

TEST(FuzzTextGraph, WhatTheCheckerLetsPassLoadsAndNothingElseDoesHarm) {
    Mutator mutator(static_cast<unsigned>(from_environment("NURVEX_FUZZ_SEED", 1)));
    unsigned long fine = 0;
    const unsigned long inputs = from_environment("NURVEX_FUZZ_INPUTS", 100'000);
    for (unsigned long i = 0; i < inputs; ++i) {
        const std::string text = mutator.next();
        SCOPED_TRACE(testing::PrintToString(text));
        std::istringstream in(text);
        nurvex::GraphSize announced;
        nurvex::GraphSize loaded;
        const bool is_fine = nurvex::check_text_graph(in, &announced).empty();
        fine += is_fine ? 1 : 0;
        if (is_fine) {
            ASSERT_EQ(load(text, &loaded), 1);
            ASSERT_EQ(loaded, announced);
        } else if (!may_break_a_duty(text)) {
            load(text);
        }
    }
    EXPECT_TRUE(fine > inputs / 10 || inputs < 100) << "too few of the inputs are graphs";
}

} // namespace
} // namespace nurvex7
