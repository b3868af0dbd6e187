#include "editor/QtText.h"

#include "platform/Files.h"
#include "platform/PathTexts.h"

namespace velmora {

QString ToQt(std::string_view bytes) {
    return QString::fromStdString(PathTexts::ToHostText(bytes));
}

QString LinesToQt(std::string_view bytes) {
    return ToQt(bytes)
        .replace(QLatin1String("\r\n"), QLatin1String("\n"))
        .replace(QLatin1Char('\r'), QLatin1Char('\n'));
}

std::string FromQt(const QString& text) {
    return PathTexts::FromHostText(text.toStdString());
}

QString PathToQt(std::string_view path) {
    const std::u8string utf8 = Files::HostPath(path).u8string();
    return QString::fromUtf8(reinterpret_cast<const char*>(utf8.data()), static_cast<qsizetype>(utf8.size()));
}

std::string PathFromQt(const QString& path) {
    return Files::PathText(std::filesystem::path(path.toStdU16String()));
}

} // namespace velmora
