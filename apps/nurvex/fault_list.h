#pragma once

#include "apps/nurvex/graph_check.h"

#include <cstddef>
#include <iterator>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace nurvex {

/// The faults found so far: those of the lowest lines, and the number of the others.
class FaultList {
public:
    /// The message is made only for a fault that is listed: a file may hold millions.
    template <typename MakeMessage>
    void add(std::size_t line, MakeMessage make_message) {
        ++count;
        if (listed.size() == MOST_LISTED) {
            const auto last = std::prev(listed.end());
            if (last->first <= line) {
                return;
            }
            listed.erase(last);
        }
        listed.emplace(line, make_message());
    }

    /// All that is listed, by line, and the number of the others in an entry of its own.
    std::vector<Fault> take() {
        std::vector<Fault> faults;
        for (auto& [line, message] : listed) {
            faults.push_back({line, std::move(message)});
        }
        if (count > faults.size()) {
            const std::string left_out = std::to_string(count - faults.size());
            faults.push_back({faults.back().line, "... and " + left_out + " more"});
        }
        return faults;
    }

private:
    static constexpr std::size_t MOST_LISTED = 50;

    std::multimap<std::size_t, std::string> listed;
    std::size_t count = 0;
};

} // namespace nurvex
