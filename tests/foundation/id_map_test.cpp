#include "nurvex7/foundation/id_map.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace {

using nurvex7::IdMap;

// The plain form: what an ordered map does under the same calls is what IdMap has to do.
TEST(IdMap, AgreesWithAnOrderedMapUnderRandomCalls) {
    for (unsigned seed = 1; seed <= 40; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        IdMap<std::string> map;
        std::map<int, std::string> plain;
        const int base = seed % 2 == 0 ? 10'000'000 : -20;
        for (int step = 0; step < 2000; ++step) {
            const int id =
                base + static_cast<int>(random() % 300) - (seed % 3 == 0 ? 5'000'000 : 0);
            if (random() % 50 == 0) { // the records move on, and come back another time
                IdMap<std::string> moved(std::move(map));
                ASSERT_EQ(map.find(id), nullptr);
                map.swap(moved);
                ASSERT_EQ(moved.find(id), nullptr);
            }
            switch (random() % 4) {
            case 0:
                EXPECT_EQ(map.erase(id), plain.erase(id) == 1);
                break;
            case 1:
                ASSERT_EQ(map.find(id) != nullptr, plain.count(id) == 1);
                break;
            default:
                map[id] += "x";
                plain[id] += "x";
            }
        }
        if (seed % 5 == 0) {
            const auto odd = [](int id) { return id % 2 != 0; };
            map.erase_if([&](int id, const std::string&) { return odd(id); });
            std::erase_if(plain, [&](const auto& entry) { return odd(entry.first); });
        }
        const IdMap<std::string> copy = map;
        std::vector<std::pair<int, std::string>> walked;
        copy.for_each([&](int id, const std::string& s) { walked.emplace_back(id, s); });
        EXPECT_EQ(walked, (std::vector<std::pair<int, std::string>>(plain.begin(), plain.end())));
        EXPECT_EQ(map.size(), plain.size());
    }
}

TEST(IdMap, ReferencesStayValidAndMemoryFollowsTheRecordsThatAreLeft) {
    IdMap<int> map;
    int& first = map[7];
    first = 42;
    for (int id = 8; id < 100'000; ++id) {
        map[id] = id;
    }
    EXPECT_EQ(&first, map.find(7));
    for (int id = 8; id < 100'000; ++id) {
        map.erase(id);
    }
    EXPECT_EQ(&first, map.find(7));
    EXPECT_LT(map.get_page_count(), 20U);
}

TEST(IdMap, WhatDiesWithARecordMayAskForItAgain) {
    struct Asking {
        IdMap<std::shared_ptr<Asking>>* map;
        bool* asked;
        ~Asking() {
            *asked = true;
            (*map)[1] = nullptr;
        }
    };
    bool asked = false;
    IdMap<std::shared_ptr<Asking>> map;
    map[1].reset(new Asking{&map, &asked});
    map.erase(1);
    EXPECT_TRUE(asked);
    EXPECT_NE(map.find(1), nullptr);
}

TEST(IdMap, ARecordThatWasFoundLastGoesWithItsPage) {
    IdMap<int> map;
    for (int id = 0; id < 1000; ++id) {
        map[id] = id;
    }
    ASSERT_EQ(*map.find(500), 500);
    map.erase_if([](int id, int) { return id >= 100; });
    EXPECT_EQ(map.find(500), nullptr);
    ASSERT_EQ(*map.find(50), 50);
    const IdMap<int> copy = map;
    map.clear();
    EXPECT_EQ(map.find(50), nullptr);
    EXPECT_EQ(*copy.find(50), 50);
}

TEST(IdMap, IdsAtTheEndsOfTheRangeWalkInOrder) {
    IdMap<int> map;
    const std::vector<int> ids = {INT32_MAX, 0, INT32_MIN, -1, 1};
    for (const int id : ids) {
        map[id] = id;
    }
    std::vector<int> walked;
    map.for_each([&](int id, int value) {
        EXPECT_EQ(id, value);
        walked.push_back(id);
    });
    EXPECT_EQ(walked, (std::vector<int>{INT32_MIN, -1, 0, 1, INT32_MAX}));
}

} // namespace
