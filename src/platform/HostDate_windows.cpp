#include "platform/HostDate.h"
#include "platform/Utf8.h"

#include <windows.h>

namespace velmora {

namespace {

WORD Word(int value) {
    return static_cast<WORD>(value);
}

} // namespace

std::optional<std::string> HostDate(std::time_t time) {
    const std::tm& local = *std::localtime(&time);
    SYSTEMTIME system{};
    system.wYear = Word(local.tm_year + 1900);
    system.wMonth = Word(local.tm_mon + 1);
    system.wDay = Word(local.tm_mday);
    system.wHour = Word(local.tm_hour);
    system.wMinute = Word(local.tm_min);
    system.wSecond = Word(local.tm_sec);
    char date[128];
    char clock[128];
    if (!GetDateFormatA(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &system, nullptr, date, sizeof date) ||
        !GetTimeFormatA(LOCALE_USER_DEFAULT, 0, &system, nullptr, clock, sizeof clock))
        return std::nullopt;
    std::string text = std::string(date) + ' ' + clock;
    return Utf8::IsAscii(text) ? std::optional(std::move(text)) : std::nullopt;
}

} // namespace velmora
