#include "nurvex7/foundation/graph_ptr2.h"

#include <gtest/gtest.h>

#include <typeinfo>

namespace {

using nurvex7::graph_ptr2;

struct base {
    virtual ~base() = default;
};
struct other {
    virtual ~other() = default;
};
struct watched : base {
    explicit watched(int& alive_count) : alive(alive_count) { ++alive; }
    ~watched() override { --alive; }
    int& alive;
};
struct two_faces : base, other {};

TEST(GraphPtr2, OnlyAnOwningHandleDeletesTheObjectAndTheLastOfThem) {
    int alive = 0;
    watched object(alive);
    graph_ptr2<watched> a(new watched(alive), /*owns=*/true);
    graph_ptr2<watched> b = a;
    a.reset();
    EXPECT_EQ(a.get(), nullptr);
    EXPECT_EQ(alive, 2);
    b.reset();
    EXPECT_EQ(alive, 1);
    {
        const graph_ptr2<watched> c(&object, /*owns=*/false);
        const graph_ptr2<base> d = c;
        EXPECT_FALSE(d.owns());
        EXPECT_EQ(c.get_counter()->ref_count, 2);
    }
    EXPECT_EQ(alive, 1);
}

// What the object does while it dies still finds the count in place, at 1.
TEST(GraphPtr2, TheObjectDiesBeforeItsCount) {
    struct reads_count : base {
        reads_count(const nurvex7::Counter*& c, int& s) : counter(c), seen(s) {}
        ~reads_count() override { seen = counter->ref_count; }
        const nurvex7::Counter*& counter;
        int& seen;
    };
    const nurvex7::Counter* counter = nullptr;
    int seen = 0;
    graph_ptr2<reads_count> a(new reads_count(counter, seen), /*owns=*/true);
    counter = a.get_counter();
    a.reset();
    EXPECT_EQ(seen, 1);
}

TEST(GraphPtr2, AnEmptyHandleCopiesAndReleasesButDoesNotConvert) {
    graph_ptr2<watched> empty(nullptr, /*owns=*/true);
    EXPECT_EQ(empty.get_counter(), nullptr);
    graph_ptr2<watched> copy = empty;
    copy.reset();
    EXPECT_THROW(static_cast<void>(graph_ptr2<base>{empty}), std::bad_cast);
}

TEST(GraphPtr2, ConversionGoesAcrossTheClassTreeOrThrows) {
    const graph_ptr2<base> a(new two_faces, /*owns=*/true);
    const graph_ptr2<other> aside = a;
    EXPECT_EQ(aside.get(), dynamic_cast<other*>(a.get()));
    EXPECT_EQ(aside.get_counter(), a.get_counter());
    int alive = 0;
    const graph_ptr2<base> b(new watched(alive), /*owns=*/true);
    EXPECT_THROW(static_cast<void>(graph_ptr2<other>{b}), std::bad_cast);
    EXPECT_EQ(b.get_counter()->ref_count, 1);
}

TEST(GraphPtr2, AssignmentTakesTheMarkOfOwnershipAndKeepsItselfWhole) {
    int alive = 0;
    watched kept(alive);
    graph_ptr2<watched> a(new watched(alive), /*owns=*/true);
    const graph_ptr2<watched>& same = a;
    a = same;
    EXPECT_EQ(alive, 2);
    a = graph_ptr2<watched>(&kept, /*owns=*/false);
    EXPECT_EQ(alive, 1);
    a.reset();
    EXPECT_EQ(alive, 1);
    EXPECT_FALSE(a.owns()) << "a released handle keeps its mark";
}

} // namespace
