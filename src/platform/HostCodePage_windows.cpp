#include "platform/HostCodePage.h"
#include "platform/HostWindows.h"

namespace velmora::HostCodePage {

namespace {

char32_t Mapped(char32_t character, DWORD how) {
    if (character > 0xFFFF)
        return character;
    const auto from = static_cast<wchar_t>(character);
    wchar_t to = from;
    const int length = ::LCMapStringEx(LOCALE_NAME_INVARIANT, how, &from, 1, &to, 1, nullptr, nullptr, 0);
    return length == 1 ? to : character;
}

} // namespace

std::optional<Table> SystemTable() {
    const UINT codePage = ::GetACP();
    CPINFO facts{};
    if (!::GetCPInfo(codePage, &facts) || facts.MaxCharSize != 1)
        return std::nullopt;
    Table table{};
    for (unsigned byte = 0; byte < 256; ++byte) {
        const char from = static_cast<char>(byte);
        wchar_t to = 0;
        const bool defined = ::MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, &from, 1, &to, 1) == 1;
        table[byte] = defined ? to : Undefined;
    }
    return table;
}

char32_t ToLower(char32_t character) {
    return Mapped(character, LCMAP_LOWERCASE);
}

char32_t ToUpper(char32_t character) {
    return Mapped(character, LCMAP_UPPERCASE);
}

} // namespace velmora::HostCodePage
