#pragma once

#include <optional>
#include <string>
#include <string_view>

/// UTF-8 as the platform layer reads and writes it: strict, no overlong forms, no surrogates.
namespace velmora::Utf8 {

/// What many programs begin a text in UTF-8 with.
inline constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

inline std::string_view WithoutMark(std::string_view text) {
    return text.substr(text.starts_with(ByteOrderMark) ? ByteOrderMark.size() : 0);
}

/// Takes the first character off `rest`. Nothing, and `rest` untouched, when it does not start with one.
inline std::optional<char32_t> TakeCharacter(std::string_view& rest) {
    if (rest.empty())
        return std::nullopt;
    const auto lead = static_cast<unsigned char>(rest[0]);
    const std::size_t length = lead < 0x80   ? 1
                               : lead < 0xC2 ? 0
                               : lead < 0xE0 ? 2
                               : lead < 0xF0 ? 3
                               : lead < 0xF5 ? 4
                                             : 0;
    if (length == 0 || rest.size() < length)
        return std::nullopt;
    char32_t character = length == 1 ? lead : lead & (0x7Fu >> length);
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(rest[i]);
        if ((next & 0xC0) != 0x80)
            return std::nullopt;
        character = (character << 6) | (next & 0x3Fu);
    }
    const bool overlong = (length == 3 && character < 0x800) || (length == 4 && character < 0x10000);
    if (overlong || character > 0x10FFFF || (character >= 0xD800 && character <= 0xDFFF))
        return std::nullopt;
    rest.remove_prefix(length);
    return character;
}

inline void Append(std::string& text, char32_t character) {
    const auto tail = [&](int shift) { text += static_cast<char>(0x80 | ((character >> shift) & 0x3F)); };
    if (character < 0x80) {
        text += static_cast<char>(character);
    } else if (character < 0x800) {
        text += static_cast<char>(0xC0 | (character >> 6));
        tail(0);
    } else if (character < 0x10000) {
        text += static_cast<char>(0xE0 | (character >> 12));
        tail(6);
        tail(0);
    } else {
        text += static_cast<char>(0xF0 | (character >> 18));
        tail(12);
        tail(6);
        tail(0);
    }
}

inline bool IsAscii(std::string_view text) {
    for (const char byte : text)
        if (static_cast<unsigned char>(byte) >= 0x80)
            return false;
    return true;
}

/// True for well-formed UTF-8 that holds at least one character beyond ASCII.
inline bool IsBeyondAscii(std::string_view text) {
    bool beyond = false;
    while (!text.empty()) {
        const auto character = TakeCharacter(text);
        if (!character)
            return false;
        beyond = beyond || *character >= 0x80;
    }
    return beyond;
}

} // namespace velmora::Utf8
