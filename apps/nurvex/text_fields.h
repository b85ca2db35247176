#pragma once

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <string>
#include <string_view>
#include <system_error>

namespace nurvex {

inline constexpr std::string_view WHITE_SPACE = " \t\n\v\f\r";

/// A piece of the file in a message: short, and without what a terminal would obey.
inline std::string shown(std::string_view text) {
    constexpr std::size_t LONGEST = 24;
    std::string result = "\"";
    for (const char letter : text.substr(0, LONGEST)) {
        result += letter >= ' ' && letter <= '~' ? letter : '?';
    }
    return result + (text.size() > LONGEST ? "...\"" : "\"");
}

/// Without the white space around it.
inline std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(WHITE_SPACE);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(WHITE_SPACE) + 1 - first);
}

/// Whether a field is a number.
enum class FieldState { MISSING, FINE, MALFORMED, TOO_LARGE };

/// A run of letters between white space.
struct Field {
    FieldState state = FieldState::MISSING;
    std::string_view text;
};

/// Cuts the first field off a text. It is fine where all of it is a number that fits: the loader
/// then reads the same value.
inline Field next_field(std::string_view& rest) {
    rest.remove_prefix(std::min(rest.find_first_not_of(WHITE_SPACE), rest.size()));
    const std::string_view text = rest.substr(0, rest.find_first_of(WHITE_SPACE));
    rest.remove_prefix(text.size());
    if (text.empty()) {
        return {};
    }
    const bool plus = text.front() == '+' && text.find('-') == std::string_view::npos;
    int value = 0;
    const auto [end, error] =
        std::from_chars(text.data() + (plus ? 1 : 0), text.data() + text.size(), value);
    const bool whole = error != std::errc::invalid_argument && end == text.data() + text.size();
    if (!whole) {
        return {FieldState::MALFORMED, text};
    }
    return {error == std::errc() ? FieldState::FINE : FieldState::TOO_LARGE, text};
}

} // namespace nurvex
