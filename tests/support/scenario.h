#pragma once

#include <algorithm>
#include <cctype>
#include <ostream>
#include <string>

namespace nurvex7::testing_support {

/// One row of a table of layouts: what it shows, a graph in the words of TestGraph, the picture.
struct Scenario {
    std::string shows;
    std::string words;
    std::string picture;
    std::string marks = {}; ///< further facts, where the table says which
};

inline void PrintTo(const Scenario& s, std::ostream* out) {
    *out << s.shows << ": " << s.words;
}

/// The name of a row for the list of tests: what it shows, in letters and digits.
struct RowName {
    template <typename Info>
    std::string operator()(const Info& info) const {
        std::string name = info.param.shows;
        std::replace_if(
            name.begin(), name.end(), [](unsigned char c) { return !std::isalnum(c); }, '_');
        return name;
    }
};

} // namespace nurvex7::testing_support
