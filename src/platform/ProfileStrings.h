#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Profile strings: values of an INI file, read and written as the Windows profile functions promise.
///
/// Sections and keys match without regard to case. Blanks around keys and values are stripped on reading,
/// and one pair of single or double quotes around a value. Lines starting with ";" and lines that are
/// neither section nor entry are kept on writing. Files are 8-bit text with CR LF; LF is accepted. Files are
/// replaced as a whole (Files::ReplaceSafely).
namespace velmora::ProfileStrings {

/// Value of a key, at most `size - 1` characters of it; `fallback` (trailing blanks stripped, cut alike) when
/// file, section or key is missing.
std::string Read(std::string_view section, std::string_view key, std::string_view fallback, std::size_t size,
                 std::string_view file);

/// Sets a key, creating file, section and key as needed. Throws Failure when the file cannot be written.
void Write(std::string_view section, std::string_view key, std::string_view value, std::string_view file);

/// The section's "key=value" entries, each followed by a NUL, at most `size - 2` characters of them (cut at
/// the end of the buffer, as Windows does). Comments are left out. Empty when the section is missing.
std::string ReadSection(std::string_view section, std::size_t size, std::string_view file);

/// Replaces a section by the NUL-separated entries of `data`. Throws Failure when the file cannot be written.
void WriteSection(std::string_view section, std::string_view data, std::string_view file);

} // namespace velmora::ProfileStrings
