#include "tests/support/random_calls.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

// Random calls of the whole model and layout. The same in every run; NURVEX_CALLS sets their
// number, NURVEX_CALLS_SEED the first seed, and NURVEX_CALLS_TRACE prints each call by name.

namespace {

using namespace nurvex7::testing_support;

constexpr int CALLS_OF_A_SEED = 2'000;

unsigned long from_environment(const char* name, unsigned long otherwise) {
    const char* const text = std::getenv(name);
    return text != nullptr ? std::strtoul(text, nullptr, 10) : otherwise;
}

TEST(FuzzCalls, NoOrderOfCallsDoesHarm) {
    const unsigned long calls = from_environment("NURVEX_CALLS", 1'000'000);
    const bool traced = std::getenv("NURVEX_CALLS_TRACE") != nullptr;
    unsigned seed = static_cast<unsigned>(from_environment("NURVEX_CALLS_SEED", 1));
    unsigned long runs = 0;
    for (unsigned long made = 0; made < calls; made += CALLS_OF_A_SEED) {
        std::printf("seed %u\n", seed); // known also where the program does not come back
        std::fflush(stdout);
        RandomCalls caller(seed++);
        caller.make(CALLS_OF_A_SEED, traced);
        runs += static_cast<unsigned long>(caller.get_run_count());
        ASSERT_EQ(caller.find_fault(), "");
    }
    EXPECT_GT(runs, calls / 100) << "too few of the calls ran a layout";
}

} // namespace
