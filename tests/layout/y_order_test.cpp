#include "nurvex7/layout/y_order.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <functional>
#include <random>

namespace {

using namespace nurvex7;

struct Family {
    const char* name;
    std::function<double(std::mt19937&, int)> y;
};

double share(std::mt19937& random) {
    return static_cast<double>(random()) / 4294967296.0;
}

double one_of(std::mt19937& random, unsigned count) {
    return static_cast<double>(random() % count);
}

const Family families[] = {
    {"even", [](auto& random, int n) { return share(random) * n; }},
    {"nearly in order", [](auto& random, int n) { return n + 3 * share(random); }},
    {"many equal", [](auto& random, int) { return one_of(random, 4); }},
    {"in two heaps", [](auto& random, int) { return share(random) + 1e6 * one_of(random, 2); }},
    {"one far off", [](auto& random, int n) { return n == 7 ? -1e300 : share(random); }},
    {"too far apart",
     [](auto& random, int) { return one_of(random, 2) > 0 ? DBL_MAX : -DBL_MAX / 3; }},
    {"too close", [](auto& random, int) { return DBL_TRUE_MIN * one_of(random, 3); }},
    {"without end", [](auto& random, int n) { return n % 5 > 0 ? share(random) : HUGE_VAL; }},
};

TEST(YOrder, IsThatOfAStableSort) {
    std::mt19937 random(5);
    for (const Family& family : families) {
        for (int size = 0; size < 300; size += 1 + size / 5) {
            SCOPED_TRACE(std::string(family.name) + " " + std::to_string(size));
            std::vector<Turn> turns;
            for (int n = 0; n < size; ++n) {
                turns.push_back({family.y(random, n), turns.size()});
            }
            std::vector<Turn> wanted = turns;
            std::stable_sort(wanted.begin(), wanted.end(),
                             [](const Turn& a, const Turn& b) { return a.y < b.y; });
            sort_by_y(turns);
            EXPECT_TRUE(std::equal(turns.begin(), turns.end(), wanted.begin(), wanted.end(),
                                   [](const Turn& a, const Turn& b) { return a.at == b.at; }));
        }
    }
}

} // namespace
