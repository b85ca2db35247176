#include "hosts/qt/typesetter.h"

#include <gtest/gtest.h>

namespace nurvex7::qt {
namespace {

TEST(Typesetter, ATextMeasuresWhatItTakesWhenItIsSet) {
    Typesetter typesetter;
    for (const char* const family : {"", "Arial"}) {
        Typeface& face = typesetter.GetTypeface(family);
        for (const char* const text :
             {"", " ", "AVATAR To. 11 ", "node\t12", "na\xC3\xAFve", "cut \xC3", "office ~"}) {
            EXPECT_EQ(face.Measure(text), face.Shape(text)->advance) << text;
        }
    }
}

} // namespace
} // namespace nurvex7::qt
