#include "nurvex7/foundation/graph_set.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace {

using nurvex7::erase_found;
using nurvex7::GraphSet;
using nurvex7::IGraphSet;

std::vector<int> items_of(GraphSet<int>& set) {
    std::vector<int> items;
    for (int i = 0; i < set.GetCount(); ++i) {
        items.push_back(set.GetItem(i));
    }
    return items;
}

void fill(GraphSet<int>& set, const std::vector<int>& items) {
    for (const int item : items) {
        set.push_back(item);
    }
}

// Deliberate: a stranger answers with its next higher neighbour, not with End(). Removal leans on
// it.
TEST(GraphSet, FindOfAnAbsentItemGivesTheNextHigherNeighbour) {
    GraphSet<int> set;
    EXPECT_TRUE(set.Find(1) == set.End());
    EXPECT_TRUE(set.is_sorted());
    fill(set, {30, 10, 20});
    EXPECT_EQ(items_of(set), (std::vector<int>{30, 10, 20}));
    EXPECT_EQ(set.Find(15).index, 1);
    EXPECT_EQ(*set.Find(15), 20);
    EXPECT_EQ(set.Find(5).index, 0);
    EXPECT_TRUE(set.Find(31) == set.End());
}

// Deliberate: removing what is not there takes a neighbour.
TEST(GraphSet, RemovingAStrangerTakesANeighbour) {
    struct {
        const char* name;
        std::vector<int> before;
        int removed;
        std::vector<int> after;
    } const cases[] = {
        {"an empty set stays", {}, 5, {}},
        {"an item goes and the order is by id", {30, 10, 20}, 10, {20, 30}},
        {"the next higher goes", {30, 10, 20}, 11, {10, 30}},
        {"the highest goes where none is higher", {30, 10, 20}, 31, {10, 20}},
        {"the only one goes", {10}, 99, {}},
    };
    for (const auto& c : cases) {
        GraphSet<int> set;
        fill(set, c.before);
        erase_found(set, c.removed);
        EXPECT_EQ(items_of(set), c.after) << c.name;
        EXPECT_EQ(set.is_sorted(), !c.before.empty()) << c.name;
    }
}

TEST(GraphSet, IteratorsOfTwoSetsDifferAtTheSamePlace) {
    GraphSet<int> a;
    GraphSet<int> b;
    EXPECT_TRUE(a.End() != b.End());
    fill(a, {7, 8});
    IGraphSet<int>::Iterator at(0, &a);
    at++;
    EXPECT_EQ(*at, 8);
    at++;
    EXPECT_TRUE(at == a.End());
}

// The plain form of a set: a vector that closes every gap at once.
struct plain_set {
    std::vector<int> items;
    bool sorted = false;

    std::size_t find(int x) {
        if (!sorted) {
            std::sort(items.begin(), items.end());
            sorted = true;
        }
        return static_cast<std::size_t>(std::lower_bound(items.begin(), items.end(), x) -
                                        items.begin());
    }
    void erase_found(int x) {
        if (!items.empty()) {
            const std::size_t at = std::min(find(x), items.size() - 1);
            items.erase(items.begin() + static_cast<std::ptrdiff_t>(at));
        }
    }
};

// Long sets leave gaps open; nothing that anybody can see may tell.
TEST(GraphSet, AgreesWithAPlainVectorUnderRandomCalls) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        const int size = static_cast<int>(1 + random() % (seed % 3 == 0 ? 20 : 4000));
        GraphSet<int> set;
        plain_set plain;
        for (int i = 0; i < size; ++i) {
            const int item = static_cast<int>(random() % 10'000);
            set.push_back(item);
            plain.items.push_back(item);
        }
        for (int step = 0; step < 3000 && !plain.items.empty(); ++step) {
            const int x = static_cast<int>(random() % 10'100);
            const auto kind = random() % 1000;
            const int last = set.GetCount() - 1;
            const int place = static_cast<int>(random() % plain.items.size());
            if (kind < 700) {
                erase_found(set, x);
                plain.erase_found(x);
            } else if (kind < 800) {
                EXPECT_EQ(set.Find(x).index, static_cast<int>(plain.find(x)));
            } else if (kind < 990) {
                ASSERT_EQ(set.GetItem(place), plain.items[static_cast<std::size_t>(place)]);
                ASSERT_EQ(set[last], plain.items.back());
            } else if (kind < 993) {
                ASSERT_EQ(items_of(set), plain.items);
            } else if (kind < 996) {
                ASSERT_EQ(std::vector<int>(set.begin(), set.end()), plain.items);
            } else if (kind < 998) {
                set.push_back(x);
                plain.items.push_back(x);
                plain.sorted = false;
            } else {
                GraphSet<int> copy = set;
                erase_found(copy, x);
                GraphSet<int> taken = std::move(copy);
                EXPECT_EQ(copy.GetCount(), 0);
                EXPECT_EQ(taken.GetCount(), last);
                EXPECT_EQ(set.GetCount(), last + 1);
                set = GraphSet<int>(set);
            }
            ASSERT_EQ(set.GetCount(), static_cast<int>(plain.items.size()));
        }
        EXPECT_EQ(set.take_items(), plain.items);
        EXPECT_TRUE(set.empty());
    }
}

} // namespace
