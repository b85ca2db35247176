#pragma once

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <exception>
#include <fstream>
#include <string>
#include <vector>

/// What the programs that lay one graph out over and over have in common, so that their figures and
/// their coordinates can be put side by side.
namespace measured_runs {

/// PROGRAM GRAPH.txt GRAPH.sizes [RUNS] [--dump]
struct Options {
    std::string graph;
    std::string sizes;
    int runs = 5;
    bool dump = false;
};

inline Options ReadOptions(int count, char** words) {
    std::vector<std::string> given(words + 1, words + count);
    Options options;
    options.dump = std::erase(given, "--dump") > 0;
    if (given.size() < 2 || given.size() > 3) {
        std::fprintf(stderr, "usage: %s GRAPH.txt GRAPH.sizes [RUNS] [--dump]\n", words[0]);
        std::exit(2);
    }
    options.graph = given[0];
    options.sizes = given[1];
    options.runs = given.size() > 2 ? std::max(1, std::atoi(given[2].c_str())) : options.runs;
    return options;
}

/// Processor time in milliseconds: what else the machine does is not counted.
double milliseconds_of(auto f) {
    const std::clock_t start = std::clock();
    f();
    return 1e3 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

inline double median_of(std::vector<double> times) {
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

/// The most memory that this process has held so far, in kilobytes.
inline long peak_memory() {
    std::ifstream status("/proc/self/status");
    std::string word;
    long peak = 0;
    while (status >> word && word != "VmHWM:") {
    }
    status >> peak;
    return peak;
}

/// `prepare(options)` gives what `once(dumps)` is here: it lays out once, tells the milliseconds
/// and prints the coordinates where it shall. The figures go to the standard error.
int run(int count, char** words, auto prepare) {
    try {
        const Options options = ReadOptions(count, words);
        auto once = prepare(options);
        std::vector<double> times;
        for (int run = 1; run <= options.runs; ++run) {
            times.push_back(once(options.dump && run == options.runs));
        }
        std::fprintf(stderr, "median_ms %.4f peak_kb %ld\n", median_of(times), peak_memory());
        return 0;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "%s: %s\n", words[0], e.what());
        return 1;
    }
}

/// One fact a line: `node ID X Y`, `edge NUMBER X,Y X,Y ...` and `size WIDTH HEIGHT`.
inline void PrintNode(int id, double x, double y) {
    std::printf("node %d %.17g %.17g\n", id, x, y);
}

template <typename Points>
void PrintRoute(std::size_t number, const Points& points) {
    std::printf("edge %zu", number);
    for (const auto& point : points) {
        std::printf(" %.17g,%.17g", point.x, point.y);
    }
    std::printf("\n");
}

inline void PrintSize(double width, double height) {
    std::printf("size %.17g %.17g\n", width, height);
}

} // namespace measured_runs
