#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

/// How texts of the core and texts of the host become each other; the rule is told in Files.h.
namespace velmora::PathTexts {

/// Any text of the host, in UTF-8, as a text of the core. What is no UTF-8 stays as it is.
std::string FromHostText(std::string_view text);

/// A text of the core as UTF-8, whatever names of the host's files it mentions. Never fails.
std::string ToHostText(std::string_view text);

/// A path as settings files of the code page keep it: UTF-8 where the code page cannot express it.
std::string StoredText(std::string_view path);
std::string FromStoredText(std::string_view stored);

/// One component of a path as the host spells it, and back.
std::filesystem::path HostName(std::string_view component);
std::string NameText(const std::filesystem::path& name);

/// The components of a path text, separators left out.
std::vector<std::string_view> Components(std::string_view path);

} // namespace velmora::PathTexts
