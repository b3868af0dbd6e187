#include "platform/HostCodePage_posix.h"

#include <cerrno>
#include <cwctype>
#include <iconv.h>
#include <langinfo.h>
#include <locale.h>
#include <string>
#include <wctype.h>

namespace velmora::HostCodePage {

namespace {

/// What one byte stands for by itself; nothing when it only begins a character.
std::optional<char32_t> Decode(iconv_t converter, unsigned char byte) {
    char in = static_cast<char>(byte);
    char* from = &in;
    std::size_t left = 1;
    char32_t out[4] = {};
    char* to = reinterpret_cast<char*>(out);
    std::size_t room = sizeof out;
    iconv(converter, nullptr, nullptr, nullptr, nullptr);
    const bool refused = iconv(converter, &from, &left, &to, &room) == static_cast<std::size_t>(-1);
    if (refused)
        return errno == EILSEQ ? std::optional(Undefined) : std::nullopt;
    // Some sets hold a character back until they know what follows it.
    iconv(converter, nullptr, nullptr, &to, &room);
    return sizeof out - room == sizeof out[0] ? std::optional(out[0]) : std::nullopt;
}

bool ExtendsAscii(const Table& table) {
    bool extends = false;
    for (char32_t byte = 0; byte < 256; ++byte) {
        if (byte < 0x80 && table[byte] != byte)
            return false;
        extends = extends || (byte >= 0x80 && table[byte] != Undefined);
    }
    return extends;
}

/// Letters by Unicode for every language: the user's own locale may know ASCII only.
locale_t UnicodeLocale() {
    static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    return locale;
}

} // namespace

std::optional<Table> TableOf(const char* characterSet) {
    const char* const utf32 = __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ ? "UTF-32LE" : "UTF-32BE";
    iconv_t converter = iconv_open(utf32, characterSet);
    if (converter == reinterpret_cast<iconv_t>(-1)) // NOLINT(performance-no-int-to-ptr): what POSIX returns
        return std::nullopt;
    Table table{};
    bool singleByte = true;
    for (unsigned byte = 0; byte < 256 && singleByte; ++byte) {
        const auto character = Decode(converter, static_cast<unsigned char>(byte));
        singleByte = character.has_value();
        table[byte] = character.value_or(Undefined);
    }
    iconv_close(converter);
    return singleByte && ExtendsAscii(table) ? std::optional(table) : std::nullopt;
}

std::optional<Table> SystemTable() {
    const locale_t locale = newlocale(LC_CTYPE_MASK, "", nullptr);
    if (locale == nullptr)
        return std::nullopt;
    const std::string characterSet = nl_langinfo_l(CODESET, locale);
    freelocale(locale);
    return TableOf(characterSet.c_str());
}

char32_t ToLower(char32_t character) {
    const locale_t locale = UnicodeLocale();
    const auto wide = static_cast<wint_t>(character);
    return static_cast<char32_t>(locale != nullptr ? towlower_l(wide, locale) : std::towlower(wide));
}

char32_t ToUpper(char32_t character) {
    const locale_t locale = UnicodeLocale();
    const auto wide = static_cast<wint_t>(character);
    return static_cast<char32_t>(locale != nullptr ? towupper_l(wide, locale) : std::towupper(wide));
}

} // namespace velmora::HostCodePage
