#include "services/Words.h"

#include <gmock/gmock.h>

#include <string>

namespace velmora {
namespace {

using ::testing::ElementsAreArray;
using Strings = std::vector<std::string>;

TEST(Words, AreWhatCanBeLookedUp) {
    struct Case {
        std::string Text;
        Strings Words;
    };
    for (const Case& c : std::initializer_list<Case>{
             {"", {}},
             {"Two words, and more.", {"Two", "words", "and", "more"}},
             {"%s pays %S%%sure 5%", {"pays", "sure"}},
             {"%swords 100%%safe", {"words", "safe"}},
             {"one\\ntwo\\Nthree\\four", {"one", "two", "three", "four"}},
             {"'tis the crew's 'last' o'clock''", {"tis", "the", "crew's", "last", "o'clock"}},
             {"don\x92t caf\xE9 stra\xDF"
              "e",
              {"don\x92t", "caf\xE9",
               "stra\xDF"
               "e"}},
             {"MK2 B52 my_word a 42nd x-ray", {"ray"}},
             {"well-known", {"well", "known"}},
             {"tail%", {"tail"}},
             {"tail\\", {"tail"}}}) {
        Strings found;
        for (const WordPlace& word : WordsIn(c.Text))
            found.emplace_back(word.In(c.Text));
        EXPECT_THAT(found, ElementsAreArray(c.Words)) << c.Text;
    }
}

} // namespace
} // namespace velmora
