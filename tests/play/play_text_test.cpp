// Numbers in captions, tags and undo records.
#include "play/play_text.h"

#include <gtest/gtest.h>

namespace tallyon {
namespace {

TEST(PlayText, NumbersReadAndWrittenLikeTheCaptions)
{
    EXPECT_EQ(CaptionNumber(3), " 3");
    EXPECT_EQ(CaptionNumber(0), " 0");
    EXPECT_EQ(CaptionNumber(-4), "-4");
    const std::pair<const char*, int> reads[] = {{"7", 7}, {" 12", 12}, {"-3", -3}, {"", 0}, {"x", 0},
                                                 {"5x5", 5}, {"-", 0}, {"99999999999", 2147483647}};
    for (const auto& [text, value] : reads)
        EXPECT_EQ(NumberFromText(text), value) << text;
    EXPECT_EQ(SplitText("1,2,", ','), std::vector<std::string>({"1", "2", ""}));
    EXPECT_EQ(SplitText("", ','), std::vector<std::string>({""}));
}

} // namespace
} // namespace tallyon
