#include "apps/nurvex/caption_text.h"

#include <gtest/gtest.h>

#include <string>

namespace nurvex {
namespace {

TEST(CaptionText, IsCutBetweenLetters) {
    const std::string mixed = "a\u00e9\u4e2d\U0001F600"; // of 1, 2, 3 and 4 bytes
    const std::string whole[] = {"a", "a\u00e9", "a\u00e9\u4e2d", mixed};
    for (std::size_t most = 1; most <= mixed.size() + 1; ++most) {
        const std::size_t letters = most < 3 ? 1 : most < 6 ? 2 : most < 10 ? 3 : 4;
        EXPECT_EQ(CutToBytes(mixed, most), whole[letters - 1]) << most;
    }
    for (std::size_t letters = 1; letters < 4; ++letters) {
        EXPECT_EQ(Shorten(mixed, letters), whole[letters - 1] + "\u2026");
    }
    EXPECT_EQ(Shorten(mixed, 4), mixed);
    const std::string no_letters(20, '\x80');
    EXPECT_GE(CutToBytes(no_letters, 10).size(), 6U) << "nothing in it is a letter";
}

TEST(CaptionText, IsBrokenAtSpacesIntoLinesOfFiveLetters) {
    const char* const texts[][2] = {
        {"", ""},
        {"short", "short"},
        {"one two", "one\ntwo"},
        {"a b c d e f", "a b c\nd e f"},
        {"longword", "longw\nord"},
        {"a longwords b", "a\nlongw\nords\nb"},
        {"exact fits", "exact\nfits"},
        {"kept\nbreaks stay", "kept\nbreak\ns\nstay"},
        {"\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9", "\u00e9\u00e9\u00e9\u00e9\u00e9\n\u00e9"},
    };
    for (const auto& text : texts) {
        EXPECT_EQ(BreakIntoLines(text[0], 5), text[1]) << text[0];
    }
}

} // namespace
} // namespace nurvex
