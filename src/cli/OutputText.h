#pragma once

#include <filesystem>
#include <string>
#include <string_view>

/// Texts of the core as they go out, and texts of the command line as they come in.
namespace velmora::OutputText {

/// A core text on one line, in UTF-8: its line breaks become "; ", other control characters, and those that
/// turn the direction of writing, "\xNN" or "\uNNNN".
std::string OneLine(std::string_view text);

/// A file's name, in UTF-8.
std::string Name(std::string_view name);
/// A path in the host's own spelling, in UTF-8.
std::string Path(std::string_view path);

/// The core's text of a path that was typed in UTF-8.
std::string TypedPath(const std::string& utf8);

} // namespace velmora::OutputText
