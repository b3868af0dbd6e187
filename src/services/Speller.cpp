#include "services/Speller.h"

#include "platform/CodePage.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "platform/Process.h"
#include "platform/TextLines.h"
#include "platform/Utf8.h"
#include "services/modWriter.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <hunspell/hunspell.hxx>
#include <optional>
#include <sstream>

namespace velmora {

namespace {

constexpr bool OnWindows = std::filesystem::path::preferred_separator == '\\';

/// A path as Hunspell wants it: UTF-8, on Windows with the mark of a path of any length.
std::string HunspellPath(const std::string& path) {
    const std::u8string utf8 = std::filesystem::absolute(Files::HostPath(path)).make_preferred().u8string();
    return (OnWindows ? "\\\\?\\" : "") + std::string(utf8.begin(), utf8.end());
}

std::string HowToInstall(const std::string& name, const std::vector<std::string>& folders) {
    if (OnWindows)
        return "put " + name + ".aff and " + name + ".dic into " + folders.front();
    std::string package = CodePage::ToLower(name);
    std::ranges::replace(package, '_', '-');
    return "install the package hunspell-" + package;
}

// Hunspell itself tells nobody but the console what is wrong with the files of a dictionary.

std::string FaultOfWords(const std::string& dicPath) {
    const std::string bytes = Files::ReadWhole(dicPath);
    std::string_view rest = Utf8::WithoutMark(bytes);
    const std::string_view first = rest.empty() ? rest : TextLines::Stripped(TextLines::Take(rest));
    std::size_t count = 0;
    const auto [end, error] = std::from_chars(first.data(), first.data() + first.size(), count);
    if (error != std::errc() || end == first.data() || count == 0)
        return "its first line is no count of words";
    return count > bytes.size() ? "its first line counts more words than there are" : "";
}

/// Of a table of affixes ("SFX S Y 2") all that it counts must follow.
std::string FaultOfAffixes(const std::string& affPath) {
    const std::string bytes = Files::ReadWhole(affPath);
    bool encoded = false;
    std::size_t missing = 0;
    for (const std::string_view line : TextLines::Split(Utf8::WithoutMark(bytes))) {
        std::istringstream words{std::string(line)};
        std::string word;
        std::string flag;
        std::string joins;
        words >> word >> flag;
        encoded |= word == "SET" && !flag.empty();
        if (word != "SFX" && word != "PFX")
            continue;
        if (missing > 0)
            --missing;
        else
            words >> joins >> missing;
    }
    if (!encoded)
        return "its .aff names no encoding";
    return missing > 0 ? "its .aff ends within a table of affixes" : "";
}

/// The bytes for a word in an encoding; nothing when that cannot be told.
std::optional<std::string> Encoded(std::string_view word, const std::string& encoding) {
    std::string utf8 = ReplaceAll(CodePage::ToUtf8(word), "\xE2\x80\x99", "'");
    if (encoding == "UTF-8")
        return utf8;
    std::string latin;
    for (const char byte : word) {
        const char32_t character = CodePage::ToUnicode(static_cast<unsigned char>(byte));
        if (character > 0xFF && character != U'\u2019')
            return std::nullopt;
        latin += character == U'\u2019' ? '\'' : static_cast<char>(character);
    }
    return latin;
}

std::optional<std::string> Decoded(const std::string& word, const std::string& encoding) {
    if (encoding == "UTF-8")
        return CodePage::FromUtf8(word);
    std::string text;
    for (const char byte : word) {
        const auto own = CodePage::FromUnicode(static_cast<unsigned char>(byte));
        if (!own)
            return std::nullopt;
        text += static_cast<char>(*own);
    }
    return text;
}

} // namespace

class Speller::Dictionary {
  public:
    Dictionary(const std::string& aff, const std::string& dic)
        : hunspell(HunspellPath(aff).c_str(), HunspellPath(dic).c_str()),
          encoding(hunspell.get_dict_encoding()) {}

    [[nodiscard]] std::string Fault() const {
        return encoding == "UTF-8" || encoding == "ISO8859-1"
                   ? ""
                   : "it is in " + encoding + ", which is not read; the one in UTF-8 is";
    }
    [[nodiscard]] bool Knows(std::string_view word) const {
        const auto bytes = Encoded(word, encoding);
        return bytes && hunspell.spell(*bytes);
    }
    [[nodiscard]] std::vector<std::string> Suggest(std::string_view word) const {
        std::vector<std::string> meant;
        if (const auto bytes = Encoded(word, encoding))
            for (const std::string& suggestion : hunspell.suggest(*bytes))
                if (auto text = Decoded(suggestion, encoding))
                    meant.push_back(*text);
        return meant;
    }

  private:
    mutable Hunspell hunspell;
    std::string encoding;
};

Speller::Speller(const std::vector<std::string>& names, const std::vector<std::string>& folders) {
    for (const std::string& name : names)
        if (const std::string fault = Open(name, folders); !fault.empty() && trouble.empty())
            trouble = fault;
}

Speller::~Speller() = default;

std::vector<std::string> Speller::Folders() {
    const std::string beside =
        Files::Join(Files::FolderOf(Process::ExecutablePath()), "dictionaries") + Files::Separator;
    if (const std::string named = Process::Environment("DICPATH"); !named.empty())
        return {named + Files::Separator};
    std::vector<std::string> folders{beside};
    if (!OnWindows)
        folders.emplace_back("/usr/share/hunspell/");
    return folders;
}

std::vector<std::string> Speller::Installed(const std::vector<std::string>& folders) {
    std::vector<std::string> names;
    for (const std::string& folder : folders) {
        if (!Files::FolderExists(folder))
            continue;
        for (const std::string& file : Files::ListFiles(folder))
            if (CodePage::EndsWithNoCase(file, ".aff"))
                names.push_back(file.substr(0, file.size() - 4));
    }
    std::ranges::sort(names);
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

std::string Speller::Open(const std::string& name, const std::vector<std::string>& folders) {
    for (const std::string& folder : folders) {
        const std::string aff = folder + name + ".aff";
        const std::string dic = folder + name + ".dic";
        if (!Files::FileExists(aff) || !Files::FileExists(dic))
            continue;
        std::string fault;
        try {
            fault = FaultOfWords(dic);
            if (fault.empty())
                fault = FaultOfAffixes(aff);
            if (fault.empty()) {
                auto dictionary = std::make_unique<Dictionary>(aff, dic);
                fault = dictionary->Fault();
                if (fault.empty())
                    open.push_back(std::move(dictionary));
            }
        } catch (const Failure& failure) {
            fault = failure.Description();
        }
        if (!fault.empty())
            fault.insert(0, "The dictionary " + dic + " cannot be used: ")
                .append(". Please ")
                .append(HowToInstall(name, folders))
                .append(" again.");
        return fault;
    }
    return "There is no dictionary " + name + " to check the spelling with. Please " +
           HowToInstall(name, folders) + ".";
}

bool Speller::Knows(std::string_view word) const {
    return open.empty() ||
           std::ranges::any_of(open, [&](const auto& dictionary) { return dictionary->Knows(word); });
}

std::vector<std::string> Speller::Suggest(std::string_view word) const {
    std::vector<std::string> all;
    for (const auto& dictionary : open)
        for (std::string& meant : dictionary->Suggest(word))
            if (std::ranges::find(all, meant) == all.end())
                all.push_back(std::move(meant));
    return all;
}

} // namespace velmora
