#include "services/Numbers.h"

#include "FailureOf.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <string>

namespace velmora {
namespace {

TEST(LeadingNumber, ReadsTheLongestLeadingPart) {
    const std::pair<double, std::vector<const char*>> cases[] = {
        {0, {"",   "0",   "abc",   "-",   "--5", "+-5",  ".",  "-.",     "e5",    ".e5",  "&H",
             "&O", "&17", "-&H10", "inf", "nan", "0x10", "$5", "1e-999", "0e999", "\2405"}},
        {1, {"1,000", "1e", "1e+", "1ex", "&o18", "1\r0"}},
        {1.2, {"1.2.3"}},
        {2.5, {"2.5", "25e-1", "25D-1x"}},
        {0.5, {".5"}},
        {5, {"5.", "+5"}},
        {-5, {"- 5"}},
        {7, {"007"}},
        {12, {"12abc"}},
        {-12, {"-12"}},
        {15, {"&HFG", "&O17"}},
        {16, {"&H10", "& H 1 0"}},
        {105, {"  1\t0\n5"}},
        {255, {"&hff"}},
        {1000, {"1e3", "1E3", "1d3", "1D+3", "1e3e3", "1 e 3"}},
        {65535, {"&HFFFF"}},
        {-999999999, {"-999999999"}},
        {2147483648.0, {"2147483648"}},
        {4294967295.0, {"&HFFFFFFFF"}}};
    for (const auto& [value, texts] : cases)
        for (const char* text : texts)
            EXPECT_EQ(LeadingNumber(text), value) << '[' << text << ']';
}

TEST(LeadingNumber, IsInfiniteBeyondWhatADoubleHoldsAndZeroBelowWhateverTheLocale) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* locale : {"de_DE.UTF-8", "de_DE", before.c_str()}) {
        std::setlocale(LC_ALL, locale);
        EXPECT_EQ(LeadingNumber("2.5"), 2.5);
        EXPECT_EQ(LeadingNumber("2,5"), 2);
    }
    EXPECT_EQ(LeadingNumber("1e400"), HUGE_VAL);
    EXPECT_EQ(LeadingNumber("-1e99999999999999999999"), -HUGE_VAL);
    EXPECT_EQ(LeadingNumber(std::string(400, '9') + "e-5"), HUGE_VAL);
    EXPECT_EQ(LeadingNumber("0." + std::string(400, '0') + "1"), 0);
    EXPECT_EQ(LeadingNumber("0." + std::string(400, '0') + "1e401"), 1);
}

TEST(RoundToInt32, TakesHalvesToTheEvenNeighbour) {
    using Case = std::pair<double, std::int32_t>;
    for (const auto& [value, rounded] :
         {Case{2.5, 2}, Case{3.5, 4}, Case{-0.5, 0}, Case{-1.5, -2}, Case{-2.5, -2}, Case{0.49, 0},
          Case{0.51, 1}, Case{2147483647.4, 2147483647}, Case{2147483646.5, 2147483646},
          Case{-2147483648.5, -2147483647 - 1}})
        EXPECT_EQ(RoundToInt32(value), rounded) << value;
}

TEST(RoundToInt32, OverflowsBeyond32Bits) {
    for (const double value :
         {2147483647.5, 2147483648.0, -2147483649.0, 1e300, HUGE_VAL, -HUGE_VAL, std::nan("")}) {
        const Failure failure = FailureOf([&] { RoundToInt32(value); });
        EXPECT_EQ(failure.Number, FailureOverflow) << value;
        EXPECT_EQ(failure.Description(), "Overflow");
    }
}

TEST(NumberOf, TakesPlainNumbersWithBlanksAroundAndRefusesTheRest) {
    using Case = std::pair<const char*, double>;
    for (const auto& [text, number] :
         {Case{"0", 0}, Case{"-12", -12}, Case{"+3.25", 3.25}, Case{".5", 0.5}, Case{"5.", 5},
          Case{"  42  ", 42}, Case{"1e5", 1e5}, Case{"1E-5", 1e-5}, Case{"2D2", 200}, Case{"00012", 12},
          Case{"1e400", HUGE_VAL}}) {
        EXPECT_TRUE(IsNumeric(text)) << '[' << text << ']';
        EXPECT_EQ(NumberOf(text), number);
    }
    for (const char* text :
         {"",   " ",  "-",    ".",    "abc",   "12abc", "1 2", "- 5", "1e", "e5",  "1.2.3",
          "$5", "5%", "&H10", "0x10", "1,000", "(5)",   "inf", "nan", "5-", "\t5", "5\r\n"}) {
        EXPECT_FALSE(IsNumeric(text)) << '[' << text << ']';
        EXPECT_EQ(FailureOf([&] { NumberOf(text); }).Number, FailureTypeMismatch) << text;
    }
}

TEST(FieldToInt32, RoundsAndFailsAsACommitDoes) {
    EXPECT_EQ(FieldToInt32(" 2.5 "), 2);
    EXPECT_EQ(FieldToInt32("-3.5"), -4);
    EXPECT_EQ(FieldToInt32("2147483647"), 2147483647);
    EXPECT_EQ(FailureOf([] { FieldToInt32("2147483648"); }).Number, FailureOverflow);
    EXPECT_EQ(FailureOf([] { FieldToInt32("1e999"); }).Number, FailureOverflow);
    EXPECT_EQ(FailureOf([] { FieldToInt32(""); }).Number, FailureTypeMismatch);
}

} // namespace
} // namespace velmora
