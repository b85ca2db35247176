// One number for the drawings of a set of graphs and scripts. It is the same for every compiler and
// every level of optimisation: doubles are computed as written.
#include "tests/support/drawing.h"
#include "tests/support/random_graph.h"
#include "tests/support/twin.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <fstream>
#include <iomanip>
#include <sstream>

namespace {

using namespace nurvex7;
using namespace nurvex7::testing_support;

/// FNV-1a over the bits of all numbers of a drawing (Fowler, Noll, Vo).
class DrawingHash {
public:
    void take(const TestGraph& g) {
        for (const Fact& fact : drawing_facts(g)) {
            // The two zeros are one place in a drawing.
            const std::uint64_t bits = std::bit_cast<std::uint64_t>(fact.value + 0.0);
            for (int byte = 0; byte < 8; ++byte) {
                hash = (hash ^ ((bits >> (8 * byte)) & 0xFFU)) * 0x100000001B3ULL;
            }
        }
    }
    std::string text() const {
        std::ostringstream out;
        out << std::hex << std::setw(16) << std::setfill('0') << hash;
        return out.str();
    }

private:
    std::uint64_t hash = 0xCBF29CE484222325ULL;
};

TEST(DrawingHash, IsTheSameInEveryBuild) {
    DrawingHash hash;
    for (unsigned seed = 1; seed <= 60; ++seed) {
        TestGraph g;
        grow(g, seed, shape_of_seed(seed, 5 + static_cast<int>(seed * 3)));
        g.make();
        hash.take(g);
        std::mt19937 random(seed);
        for (int step = 0; step < 5; ++step) {
            change(g, random, 2);
            switch (g.layout.LookAhead(g.root())) {
            case UpdateOutlook::NEVER_LAID_OUT:
            case UpdateOutlook::DOES_NOT_FIT:
                g.make();
                break;
            case UpdateOutlook::NOTHING_NEW:
                g.resize(g.root());
                break;
            case UpdateOutlook::FITS:
                g.update(g.root());
                break;
            }
            hash.take(g);
        }
    }
    std::ifstream golden(NURVEX_TESTS_DIR "/golden/drawings.hash");
    std::string expected;
    golden >> expected;
    std::cout << "drawing hash " << hash.text() << '\n';
    EXPECT_EQ(hash.text(), expected);
}

} // namespace
