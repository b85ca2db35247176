#include "apps/nurvex/caption_text.h"

namespace nurvex {

namespace {

bool begins_letter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

} // namespace

std::string CutToBytes(const std::string& text, std::size_t most) {
    if (text.size() <= most) {
        return text;
    }
    constexpr std::size_t longest_letter = 4; // what is longer is no letter
    std::size_t end = most;
    while (end > 0 && most - end < longest_letter && !begins_letter(text[end])) {
        --end;
    }
    return text.substr(0, end);
}

std::string Shorten(const std::string& text, std::size_t letters) {
    std::size_t met = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        met += begins_letter(text[i]) ? 1 : 0;
        if (met > letters) {
            return text.substr(0, i) + "\u2026";
        }
    }
    return text;
}

std::string BreakIntoLines(const std::string& text, std::size_t letters) {
    std::string lines;
    std::size_t in_line = 0;
    std::size_t behind_space = 0; // letters of the line
    std::size_t space = std::string::npos;
    for (const char byte : text) {
        const bool full = in_line == letters && begins_letter(byte);
        const bool ends_line = byte == '\n' || (full && byte == ' ');
        if (full && !ends_line) {
            if (space == std::string::npos) {
                lines += '\n';
                in_line = 0;
            } else {
                lines[space] = '\n';
                in_line = behind_space;
            }
            space = std::string::npos;
        }
        in_line = ends_line ? 0 : in_line + (begins_letter(byte) ? 1 : 0);
        behind_space += begins_letter(byte) ? 1 : 0;
        if (byte == ' ' || ends_line) {
            space = ends_line ? std::string::npos : lines.size();
            behind_space = 0;
        }
        lines += ends_line ? '\n' : byte;
    }
    return lines;
}

} // namespace nurvex
