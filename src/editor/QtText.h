#pragma once

#include <QString>
#include <string>
#include <string_view>

/// Conversions between the core's texts (code-page bytes) and those that windows show.
namespace velmora {

QString ToQt(std::string_view bytes);

/// The same for a text whose lines end with a carriage return (13): each becomes a line break.
QString LinesToQt(std::string_view bytes);

/// Code-page form of a text; a character that the code page lacks becomes "?". The text boxes refuse such
/// characters before they get here.
std::string FromQt(const QString& text);

/// Conversions of paths, which also carry names that the code page cannot express.
QString PathToQt(std::string_view path);
std::string PathFromQt(const QString& path);

} // namespace velmora
