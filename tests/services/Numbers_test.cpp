#include "services/Numbers.h"

#include "FailureOf.h"
#include "platform/Failure.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <string>

namespace velmora {
namespace {

TEST(LeadingNumber, ReadsTheLongestLeadingPart) {
    const struct {
        std::string Text;
        double Value;
    } cases[] = {
        {"", 0},
        {"0", 0},
        {"7", 7},
        {"-12", -12},
        {"+5", 5},
        {"12abc", 12},
        {"abc", 0},
        {"-", 0},
        {"--5", 0},
        {"+-5", 0},
        {"2.5", 2.5},
        {".5", 0.5},
        {"5.", 5},
        {".", 0},
        {"-.", 0},
        {"1.2.3", 1.2},
        {"1,000", 1},
        {"007", 7},
        {"1e3", 1000},
        {"1E3", 1000},
        {"1d3", 1000},
        {"1D+3", 1000},
        {"25e-1", 2.5},
        {"25D-1x", 2.5},
        {"1e", 1},
        {"1e+", 1},
        {"1ex", 1},
        {"e5", 0},
        {".e5", 0},
        {"1e3e3", 1000},
        {"1 0", 10},
        {"  1\t0\n5", 105},
        {"- 5", -5},
        {"1 e 3", 1000},
        {"1\r0", 1},
        {"&H10", 16},
        {"&hff", 255},
        {"&HFG", 15},
        {"& H 1 0", 16},
        {"&H", 0},
        {"&HFFFF", 65535},
        {"&O17", 15},
        {"&o18", 1},
        {"&O", 0},
        {"&17", 0},
        {"-&H10", 0},
        {"inf", 0},
        {"nan", 0},
        {"0x10", 0},
        {"$5", 0},
        {"1e-999", 0},
        {"0e999", 0},
        {"\xA0"
         "5",
         0},
        {"999999999", 999999999},
        {"-999999999", -999999999},
        {"2147483648", 2147483648.0},
        {"&HFFFFFFFF", 4294967295.0},
    };
    for (const auto& [text, value] : cases)
        EXPECT_EQ(LeadingNumber(text), value) << '[' << text << ']';
}

TEST(LeadingNumber, IsInfiniteBeyondWhatADoubleHoldsAndZeroBelow) {
    EXPECT_EQ(LeadingNumber("1e400"), HUGE_VAL);
    EXPECT_EQ(LeadingNumber("-1e99999999999999999999"), -HUGE_VAL);
    EXPECT_EQ(LeadingNumber(std::string(400, '9') + "e-5"), HUGE_VAL);
    EXPECT_EQ(LeadingNumber("0." + std::string(400, '0') + "1"), 0);
    EXPECT_EQ(LeadingNumber("0." + std::string(400, '0') + "1e401"), 1);
}

TEST(LeadingNumber, DoesNotDependOnTheLocale) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* locale : {"de_DE.UTF-8", "de_DE", "C.UTF-8", "C"}) {
        std::setlocale(LC_ALL, locale);
        EXPECT_EQ(LeadingNumber("2.5"), 2.5);
        EXPECT_EQ(LeadingNumber("2,5"), 2);
    }
    std::setlocale(LC_ALL, before.c_str());
}

TEST(RoundToInt32, TakesHalvesToTheEvenNeighbour) {
    const struct {
        double Value;
        std::int32_t Rounded;
    } cases[] = {{2.5, 2},
                 {3.5, 4},
                 {-0.5, 0},
                 {-1.5, -2},
                 {-2.5, -2},
                 {0.49, 0},
                 {0.51, 1},
                 {12, 12},
                 {2147483647.4, 2147483647},
                 {2147483646.5, 2147483646},
                 {-2147483648.5, -2147483647 - 1}};
    for (const auto& [value, rounded] : cases)
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

TEST(IsNumeric, AcceptsPlainNumbersWithBlanksAround) {
    for (const char* text :
         {"0", "-12", "3.5", "+7", ".5", "5.", "  42  ", "1e5", "1E-5", "2d3", "00012", "1e400"})
        EXPECT_TRUE(IsNumeric(text)) << '[' << text << ']';
}

TEST(IsNumeric, RefusesEverythingElse) {
    for (const char* text :
         {"",   " ",  "-",    ".",    "abc",   "12abc", "1 2", "- 5", "1e", "e5",  "1.2.3",
          "$5", "5%", "&H10", "0x10", "1,000", "(5)",   "inf", "nan", "5-", "\t5", "5\r\n"})
        EXPECT_FALSE(IsNumeric(text)) << '[' << text << ']';
}

TEST(NumberOf, ReadsWhatIsNumericAndRefusesTheRest) {
    EXPECT_EQ(NumberOf(" -12 "), -12);
    EXPECT_EQ(NumberOf("+3.25"), 3.25);
    EXPECT_EQ(NumberOf("2D2"), 200);
    for (const char* text : {"", "abc", "12abc", "&H10"})
        EXPECT_EQ(FailureOf([&] { NumberOf(text); }).Number, FailureTypeMismatch) << text;
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
