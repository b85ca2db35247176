#pragma once

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <string>
#include <string_view>
#include <system_error>

namespace nurvex {

inline bool is_white_space(char letter) {
    return letter == ' ' || (letter >= '\t' && letter <= '\r');
}

/// A piece of the file in a message: short, and without what a terminal would obey.
inline std::string shown(std::string_view text) {
    constexpr std::size_t LONGEST = 24;
    std::string result = "\"";
    for (const char letter : text.substr(0, LONGEST)) {
        result += letter >= ' ' && letter <= '~' ? letter : '?';
    }
    return result + (text.size() > LONGEST ? "...\"" : "\"");
}

/// The length of the letter of UTF-8 that a text begins with; 0 where there is none: a byte goes on
/// what nothing began, a letter is cut or longer than need be, or it is half of a pair.
inline std::size_t utf8_length(std::string_view text) {
    const auto byte = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char first = byte(0);
    const std::size_t length = first < 0x80    ? 1
                               : first < 0xC2  ? 0
                               : first < 0xE0  ? 2
                               : first < 0xF0  ? 3
                               : first <= 0xF4 ? 4
                                               : 0;
    if (length > text.size()) {
        return 0;
    }
    for (std::size_t i = 1; i < length; ++i) {
        if (byte(i) < 0x80 || byte(i) > 0xBF) {
            return 0;
        }
    }
    const bool unfit = (first == 0xE0 && byte(1) < 0xA0) || (first == 0xED && byte(1) > 0x9F) ||
                       (first == 0xF0 && byte(1) < 0x90) || (first == 0xF4 && byte(1) > 0x8F);
    return unfit ? 0 : length;
}

inline bool is_utf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = utf8_length(text);
        if (length == 0) {
            return false;
        }
        text.remove_prefix(length);
    }
    return true;
}

/// Without the white space around it.
inline std::string_view trimmed(std::string_view text) {
    while (!text.empty() && is_white_space(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && is_white_space(text.back())) {
        text.remove_suffix(1);
    }
    return text;
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
    const auto first = std::find_if_not(rest.begin(), rest.end(), is_white_space);
    const auto last = std::find_if(first, rest.end(), is_white_space);
    const std::string_view text = rest.substr(static_cast<std::size_t>(first - rest.begin()),
                                              static_cast<std::size_t>(last - first));
    rest.remove_prefix(static_cast<std::size_t>(last - rest.begin()));
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
