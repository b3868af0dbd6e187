#include "kinds/TableText.h"

#include "platform/CodePage.h"
#include "platform/Utf8.h"

#include <algorithm>

namespace velmora {

namespace {

std::string FromUtf16(std::string_view bytes, bool littleEndian) {
    const auto unit = [&](std::size_t at) {
        const auto low = static_cast<unsigned char>(bytes[at + (littleEndian ? 0 : 1)]);
        const auto high = static_cast<unsigned char>(bytes[at + (littleEndian ? 1 : 0)]);
        return static_cast<char32_t>(high << 8 | low);
    };
    std::string text;
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        char32_t character = unit(at);
        if (character >= 0xD800 && character < 0xDC00 && at + 3 < bytes.size()) {
            const char32_t second = unit(at + 2);
            if (second >= 0xDC00 && second < 0xE000) {
                character = 0x10000 + ((character - 0xD800) << 10) + (second - 0xDC00);
                at += 2;
            }
        }
        Utf8::Append(text, character >= 0xD800 && character < 0xE000 ? U'\uFFFD' : character);
    }
    return text;
}

bool IsUtf8(std::string_view text) {
    for (;;) {
        const auto* beyond =
            std::ranges::find_if(text, [](char c) { return static_cast<signed char>(c) < 0; });
        text.remove_prefix(static_cast<std::size_t>(beyond - text.begin()));
        if (text.empty())
            return true;
        if (!Utf8::TakeCharacter(text))
            return false;
    }
}

} // namespace

std::string TableText(const std::string& bytes) {
    if (bytes.starts_with(Utf8::ByteOrderMark))
        return std::string(Utf8::WithoutMark(bytes));
    if (bytes.starts_with("\xFF\xFE"))
        return FromUtf16(std::string_view(bytes).substr(2), true);
    if (bytes.starts_with("\xFE\xFF"))
        return FromUtf16(std::string_view(bytes).substr(2), false);
    return IsUtf8(bytes) ? bytes : CodePage::ToUtf8(bytes);
}

} // namespace velmora
