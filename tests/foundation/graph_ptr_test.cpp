#include "nurvex7/foundation/graph_ptr.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

using nurvex7::Countable;
using nurvex7::graph_ptr;

struct counted : Countable {
    explicit counted(int& alive_count) : alive(alive_count) { ++alive; }
    counted(const counted& other) : Countable(other), alive(other.alive) { ++alive; }
    counted& operator=(const counted&) = delete;
    ~counted() override { --alive; }
    int& alive;
};

struct special : counted {
    using counted::counted;
};

TEST(GraphPtr, TheLastHandleDeletesTheObjectWhateverWayItCame) {
    int first = 0;
    int second = 0;
    graph_ptr<special> derived(new special(first));
    graph_ptr<counted> base = derived;
    const graph_ptr<counted>& same = base;
    base = same;
    EXPECT_EQ(base->ref_count, 2) << "converted, and assigned to itself";
    graph_ptr<counted> other = base;
    base = other;
    EXPECT_EQ(base->ref_count, 3) << "assigned from another handle on the same object";
    graph_ptr<counted> moved = std::move(other);
    other = graph_ptr<counted>();
    derived.reset();
    EXPECT_EQ(derived.get(), nullptr);
    base = graph_ptr<counted>(new counted(second));
    EXPECT_EQ(moved->ref_count, 1);
    EXPECT_EQ(first, 1);
    moved.reset();
    EXPECT_EQ(first, 0);
    EXPECT_EQ(second, 1);
}

TEST(GraphPtr, ACopiedObjectStartsUncounted) {
    int alive = 0;
    graph_ptr<counted> a(new counted(alive));
    const graph_ptr<counted> copy(new counted(*a));
    EXPECT_EQ(a->ref_count, 1);
    EXPECT_EQ(copy->ref_count, 1);
}

// The object lets go of the handle that is being released: it must find that handle null.
TEST(GraphPtr, AHandleIsNullBeforeItsObjectDies) {
    struct looks_back : Countable {
        explicit looks_back(graph_ptr<looks_back>& h, bool& s) : handle(h), saw_null(s) {}
        ~looks_back() override { saw_null = handle.get() == nullptr; }
        graph_ptr<looks_back>& handle;
        bool& saw_null;
    };
    bool saw_null = false;
    graph_ptr<looks_back> handle;
    handle = graph_ptr<looks_back>(new looks_back(handle, saw_null));
    handle.reset();
    EXPECT_TRUE(saw_null);
}

} // namespace
