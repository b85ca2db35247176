#pragma once

#include <cstddef>
#include <string>

namespace nurvex {

/// The beginning of a text in UTF-8 in at most so many bytes; no letter is cut in two.
std::string CutToBytes(const std::string& text, std::size_t most);

/// At most so many letters of a text in UTF-8; where there are more, an ellipsis stands for them.
std::string Shorten(const std::string& text, std::size_t letters);

/// Breaks a text in UTF-8 into lines of at most so many letters, at spaces where there are any.
/// Line breaks that it has already stay.
std::string BreakIntoLines(const std::string& text, std::size_t letters);

} // namespace nurvex
