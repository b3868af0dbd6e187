#pragma once

#include <QString>
#include <string>
#include <string_view>

/// Conversions between the core's texts (code-page bytes) and those that windows show.
namespace velmora {

/// Names of the host's files that the code page cannot express are shown as what they are.
QString ToQt(std::string_view bytes);

/// The same for a text whose lines end with a carriage return (13): each becomes a line break.
QString LinesToQt(std::string_view bytes);

/// The inverse. A character that the code page lacks is kept as in names of files (PathTexts.h); boxes for
/// other texts than those refuse it before it gets here.
std::string FromQt(const QString& text);

/// Conversions of paths, to and from the host's own spelling.
QString PathToQt(std::string_view path);
std::string PathFromQt(const QString& path);

} // namespace velmora
