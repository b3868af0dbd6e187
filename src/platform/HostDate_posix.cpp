#include "platform/HostDate.h"
#include "platform/Utf8.h"

#include <langinfo.h>
#include <locale.h>
#include <memory>
#include <string_view>
#include <type_traits>

namespace velmora {

std::optional<std::string> HostDate(std::time_t time) {
    // The user's own, whatever the program's locale is.
    const std::unique_ptr<std::remove_pointer_t<locale_t>, decltype(&freelocale)> user(
        newlocale(LC_TIME_MASK, "", nullptr), freelocale);
    if (!user || nl_langinfo_l(D_FMT, user.get()) == std::string_view("%m/%d/%y"))
        return std::nullopt;
    std::tm local{};
    localtime_r(&time, &local);
    char text[128];
    const std::string date(text, strftime_l(text, sizeof text, "%x %X", &local, user.get()));
    return date.empty() || !Utf8::IsAscii(date) ? std::nullopt : std::optional(date);
}

} // namespace velmora
