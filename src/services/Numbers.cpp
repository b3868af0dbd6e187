#include "services/Numbers.h"

#include "platform/Failure.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>

namespace velmora {

namespace {

constexpr std::string_view Digits = "0123456789";

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Position after the digits at `at`.
std::size_t SkipDigits(std::string_view text, std::size_t at) {
    return std::min(text.find_first_not_of(Digits, at), text.size());
}

/// Length of the exponent at the start of a text, 0 when it has no digits.
std::size_t ExponentLength(std::string_view text) {
    if (text.empty() || std::string_view("eEdD").find(text.front()) == std::string_view::npos)
        return 0;
    const std::size_t digits = text.size() > 1 && (text[1] == '+' || text[1] == '-') ? 2 : 1;
    const std::size_t end = SkipDigits(text, digits);
    return end > digits ? end : 0;
}

/// Length of the longest leading decimal number, 0 when there is none.
std::size_t DecimalLength(std::string_view text) {
    const std::size_t start = !text.empty() && (text[0] == '+' || text[0] == '-') ? 1 : 0;
    std::size_t end = SkipDigits(text, start);
    std::size_t digits = end - start;
    if (end < text.size() && text[end] == '.') {
        const std::size_t fraction = SkipDigits(text, end + 1);
        digits += fraction - end - 1;
        end = fraction;
    }
    return digits == 0 ? 0 : end + ExponentLength(text.substr(end));
}

/// Power of ten of the first digit that is not 0, of an unsigned number that has one.
double Magnitude(std::string_view number) {
    const std::size_t mantissaEnd = std::min(number.find('e'), number.size());
    const std::string_view mantissa = number.substr(0, mantissaEnd);
    const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
    double exponent = 0;
    const bool negative = number.substr(mantissaEnd).find('-') != std::string_view::npos;
    for (const char c : number.substr(mantissaEnd))
        if (IsDigit(c))
            exponent = exponent * 10 + (negative ? '0' - c : c - '0');
    return exponent + static_cast<double>(point) - static_cast<double>(mantissa.find_first_of("123456789"));
}

/// Value of a whole text that has the form of a decimal number; infinite beyond what a double holds.
double DecimalValue(std::string_view text) {
    const bool negative = text.front() == '-';
    if (negative || text.front() == '+')
        text.remove_prefix(1);
    std::string number(text);
    if (const std::size_t exponent = number.find_first_of("EdD"); exponent != std::string::npos)
        number[exponent] = 'e';
    double value = 0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    if (error == std::errc::result_out_of_range)
        value = Magnitude(number) > 0 ? std::numeric_limits<double>::infinity() : 0;
    return negative ? -value : value;
}

/// Value of the leading digits of a base up to 16, 0 without any.
double BasedValue(std::string_view text, std::size_t base) {
    constexpr std::string_view small = "0123456789abcdef";
    constexpr std::string_view capital = "0123456789ABCDEF";
    double value = 0;
    for (const char c : text) {
        const std::size_t digit = std::min(small.find(c), capital.find(c));
        if (digit >= base)
            break;
        value = value * static_cast<double>(base) + static_cast<double>(digit);
    }
    return value;
}

std::string WithoutBlanks(std::string_view text) {
    std::string cleaned;
    cleaned.reserve(text.size());
    for (const char c : text)
        if (c != ' ' && c != '\t' && c != '\n')
            cleaned += c;
    return cleaned;
}

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string_view{}
                                           : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

} // namespace

bool ReadPlainInteger(std::string_view text, std::int32_t& value) {
    const std::size_t start = !text.empty() && text[0] == '-' ? 1 : 0;
    if (text.size() == start || text.size() > start + 9)
        return false;
    std::int32_t number = 0;
    for (const char c : text.substr(start)) {
        if (!IsDigit(c))
            return false;
        number = number * 10 + (c - '0');
    }
    value = start == 1 ? -number : number;
    return true;
}

double LeadingNumber(std::string_view text) {
    std::int32_t value = 0;
    if (ReadPlainInteger(text, value))
        return value;
    const std::string cleaned = WithoutBlanks(text);
    if (cleaned.size() > 1 && cleaned[0] == '&') {
        const std::string_view digits = std::string_view(cleaned).substr(2);
        if (cleaned[1] == 'H' || cleaned[1] == 'h')
            return BasedValue(digits, 16);
        if (cleaned[1] == 'O' || cleaned[1] == 'o')
            return BasedValue(digits, 8);
    }
    const std::size_t length = DecimalLength(cleaned);
    return length == 0 ? 0 : DecimalValue(std::string_view(cleaned).substr(0, length));
}

double LeadingDecimal(std::string_view text) {
    std::int32_t value = 0;
    if (ReadPlainInteger(text, value))
        return value;
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    const std::size_t length = DecimalLength(text);
    return length == 0 ? 0 : DecimalValue(text.substr(0, length));
}

std::int32_t RoundToInt32(double value) {
    const double rounded = std::nearbyint(value);
    if (!(rounded >= std::numeric_limits<std::int32_t>::min() &&
          rounded <= std::numeric_limits<std::int32_t>::max()))
        throw Failure(FailureOverflow, "Overflow");
    return static_cast<std::int32_t>(rounded);
}

bool IsNumeric(std::string_view text) {
    const std::string_view number = Trimmed(text);
    return !number.empty() && DecimalLength(number) == number.size();
}

double NumberOf(std::string_view text) {
    const std::string_view number = Trimmed(text);
    std::int32_t value = 0;
    if (ReadPlainInteger(number, value))
        return value;
    if (!IsNumeric(number))
        throw Failure(FailureTypeMismatch, "Type mismatch");
    return DecimalValue(number);
}

std::int32_t FieldToInt32(std::string_view text) {
    return RoundToInt32(NumberOf(text));
}

} // namespace velmora
