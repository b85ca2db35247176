#pragma once

#include "tests/support/plain_layout.h"
#include "tests/support/random_graph.h"
#include "tests/support/test_graph.h"

namespace nurvex7::testing_support {

/// Two graphs of one structure: one is laid out by the product, the other in the plainest form.
struct Twin {
    Twin() { plain_graph.use_layout(plain); }

    template <typename F>
    void both(F f) {
        f(product);
        f(plain_graph);
    }

    PlainLayout plain;
    TestGraph product;
    TestGraph plain_graph;
};

} // namespace nurvex7::testing_support
