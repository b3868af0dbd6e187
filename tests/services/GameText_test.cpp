#include "services/GameText.h"

#include "services/modWriter.h"

#include <gtest/gtest.h>

#include <random>

namespace velmora {
namespace {

TEST(GameText, CountsWhatTheGameHolds) {
    struct Case {
        const char* Text;
        std::size_t Maximum;
        std::size_t Fits;
        const char* Told;
    };
    for (const Case& c : std::initializer_list<Case>{{"", 3, 0, "0 of 3, 3 left"},
                                                     {"abc", 3, 3, "3 of 3, 0 left"},
                                                     {"abcd", 3, 3, "4 of 3, 1 too long"},
                                                     {"50%", 3, 2, "4 of 3, 1 too long"},
                                                     {"a%sb", 3, 3, "4 of 3, 1 too long"},
                                                     {"%%%", 3, 2, "4 of 3, 1 too long"},
                                                     {"caf\xE9\\n", 7, 6, "6 of 7, 1 left"}}) {
        EXPECT_EQ(FittingLength(c.Text, c.Maximum), c.Fits) << c.Text;
        EXPECT_EQ(LengthOfLimit(LengthInGame(c.Text), c.Maximum), c.Told) << c.Text;
    }
}

TEST(GameText, CountsAsTheCheckDoes) {
    std::mt19937 random(5);
    constexpr std::size_t limit = 30;
    constexpr std::string_view letters = "ab %%sS\\n";
    for (int i = 0; i < 2000; ++i) {
        std::string text(random() % 40, ' ');
        for (char& c : text)
            c = letters[random() % letters.size()];
        std::vector<Problem> notes;
        CheckLength(text, limit, "Option", "option-length", "Option01", notes);
        const std::size_t length = LengthInGame(text);
        ASSERT_EQ(notes.size(), length > limit ? 1u : 0u) << text;
        if (!notes.empty()) {
            ASSERT_EQ(notes[0].Text, LengthText("Option", length, limit));
        }
        const std::size_t fits = FittingLength(text, limit);
        ASSERT_LE(LengthInGame(text.substr(0, fits)), limit) << text;
        ASSERT_TRUE(fits == text.size() || LengthInGame(text.substr(0, fits + 1)) > limit) << text;
    }
}

} // namespace
} // namespace velmora
