#include "nurvex7/foundation/pipeline.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

// Each thing is asked for by all asks in their order, all that before its turn, and has one turn.
TEST(ForEachAhead, AsksForEverythingBeforeItsTurn) {
    for (const std::size_t count : {0U, 1U, 5U, 6U, 7U, 40U}) {
        std::vector<int> asked(count, 0);
        std::vector<std::size_t> turns;
        nurvex7::for_each_ahead(
            count,
            [&](std::size_t i) {
                EXPECT_EQ(asked[i], 2);
                turns.push_back(i);
            },
            [&](std::size_t i) { EXPECT_EQ(asked[i]++, 0); },
            [&](std::size_t i) { EXPECT_EQ(asked[i]++, 1); });
        ASSERT_EQ(turns.size(), count);
        for (std::size_t i = 0; i < count; ++i) {
            EXPECT_EQ(turns[i], i);
        }
    }
}

} // namespace
