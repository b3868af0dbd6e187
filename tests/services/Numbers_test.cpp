#include "services/Numbers.h"

#include "FailureOf.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>

namespace velmora {
namespace {

TEST(LeadingNumber, ReadsTheLongestLeadingPartWhateverTheLocale) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* locale : {"de_DE", "de_DE.UTF-8"})
        std::setlocale(LC_ALL, locale);
    const std::string zeros = "0." + std::string(400, '0');
    const std::pair<double, std::vector<std::string>> cases[] = {
        {0, {"",    "abc",   "-",   "--5", "+-5",  ".",  "-.",     "e5",    ".e5",   "&H",       "&O",
             "&17", "-&H10", "inf", "nan", "0x10", "$5", "1e-999", "0e999", "\2405", zeros + "1"}},
        {1, {"1,000", "1.", "1e", "1e+", "1ex", "&o18", "1\r0", zeros + "1e401"}},
        {2.5, {"2.5", "+2.5.3", "25e-1", "25D-1x", ".25e1"}},
        {-5, {"- 5", "-5,3"}},
        {15, {"&HFG", "&hf", "&O17", "0015", "15abc", "  1\t5\n"}},
        {16, {"&H10", "& H 1 0"}},
        {1000, {"1e3", "1E3", "1d3", "1D+3", "1e3e3", "1 e 3"}},
        {-999999999, {"-999999999"}},
        {4294967295.0, {"4294967295", "&HFFFFFFFF"}},
        {HUGE_VAL, {"1e400", std::string(400, '9') + "e-5"}},
        {-HUGE_VAL, {"-1e99999999999999999999"}}};
    for (const auto& [value, texts] : cases)
        for (const std::string& text : texts)
            EXPECT_EQ(LeadingNumber(text), value) << '[' << text << ']';
    std::setlocale(LC_ALL, before.c_str());
}

TEST(LeadingDecimal, StopsAtTheFirstOtherCharacter) {
    using Case = std::pair<const char*, double>;
    for (const auto& [text, value] :
         {Case{"", 0}, Case{"  ", 0}, Case{" 2", 2}, Case{"1 2", 1}, Case{"- 5", 0}, Case{"-2.5x", -2.5},
          Case{"&H10", 0}, Case{"\t5", 0}, Case{"1e3", 1000}, Case{"123456789", 123456789}})
        EXPECT_EQ(LeadingDecimal(text), value) << '[' << text << ']';
}

TEST(RoundToInt32, TakesHalvesToTheEvenNeighbourAndOverflowsBeyond32Bits) {
    using Case = std::pair<double, std::int32_t>;
    for (const auto& [value, rounded] :
         {Case{2.5, 2}, Case{3.5, 4}, Case{-0.5, 0}, Case{-1.5, -2}, Case{0.49, 0}, Case{0.51, 1},
          Case{2147483647.4, 2147483647}, Case{-2147483648.5, -2147483647 - 1}})
        EXPECT_EQ(RoundToInt32(value), rounded) << value;
    for (const double value : {2147483647.5, -2147483649.0, HUGE_VAL, -HUGE_VAL, std::nan("")})
        EXPECT_EQ(FailureOf([&] { RoundToInt32(value); }).Number, FailureOverflow) << value;
}

TEST(NumberOf, TakesPlainNumbersWithBlanksAroundAndRefusesTheRest) {
    using Case = std::pair<const char*, double>;
    for (const auto& [text, number] :
         {Case{"-12", -12}, Case{"+3.25", 3.25}, Case{".5", 0.5}, Case{"5.", 5}, Case{"  42  ", 42},
          Case{"1E-5", 1e-5}, Case{"2D2", 200}, Case{"00012", 12}, Case{"1e400", HUGE_VAL}}) {
        EXPECT_TRUE(IsNumeric(text)) << text;
        EXPECT_EQ(NumberOf(text), number);
    }
    for (const char* text : {"",   " ",    "-",    ".",     "12abc", "1 2", "- 5", "1e", "e5",  "1.2.3", "$5",
                             "5%", "&H10", "0x10", "1,000", "(5)",   "inf", "nan", "5-", "\t5", "5\r\n"}) {
        EXPECT_FALSE(IsNumeric(text)) << '[' << text << ']';
        EXPECT_EQ(FailureOf([&] { FieldToInt32(text); }).Number, FailureTypeMismatch) << text;
    }
    EXPECT_EQ(FieldToInt32(" -3.5 "), -4);
    EXPECT_EQ(FailureOf([] { FieldToInt32("2147483648"); }).Number, FailureOverflow);
}

} // namespace
} // namespace velmora
