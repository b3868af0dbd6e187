#include "kinds/GameWords.h"

#include "platform/CodePage.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "platform/TextLines.h"
#include "platform/Utf8.h"
#include "services/Words.h"

#include <algorithm>

namespace velmora {

namespace {

constexpr std::string_view FileName = "velmora.dic";

bool IsWide(std::string_view bytes) {
    return bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF");
}

bool IsUtf8(std::string_view bytes) {
    return bytes.starts_with(Utf8::ByteOrderMark) || Utf8::IsBeyondAscii(bytes);
}

bool IsCount(std::string_view line) {
    return !line.empty() && std::ranges::all_of(line, [](char c) { return c >= '0' && c <= '9'; });
}

std::string_view WithoutPossessive(std::string_view word) {
    for (const std::string_view end : {"'s", "\x92s", "'S", "\x92S"})
        if (word.ends_with(end))
            return word.substr(0, word.size() - end.size());
    return word;
}

} // namespace

void GameWords::Read(const std::string& gameDirectory) {
    path = Files::Join(gameDirectory, FileName);
    Take(Files::FileExists(path) ? Files::ReadWhole(path) : std::string());
}

void GameWords::Take(std::string_view content) {
    words.clear();
    broken.clear();
    const bool utf8 = IsUtf8(content);
    std::size_t number = 0;
    for (std::string_view line : TextLines::Split(Utf8::WithoutMark(content))) {
        ++number;
        line = TextLines::Stripped(line.substr(0, line.find_first_of("#/")));
        if (line.empty() || (number == 1 && IsCount(line)))
            continue;
        const auto own = utf8 ? CodePage::FromUtf8(line) : std::string(line);
        TakeLine(own ? *own : std::string(1, '\0'), number);
    }
}

void GameWords::TakeLine(std::string_view line, std::size_t number) {
    const bool isWord =
        std::ranges::all_of(line, [](char c) { return IsLetter(c) || c == '-' || c == '\'' || c == '\x92'; });
    const std::vector<WordPlace> parts = WordsIn(line); // those between hyphens
    if (isWord && !parts.empty()) {
        for (const WordPlace& part : parts)
            words.insert(CodePage::ToLower(part.In(line)));
        return;
    }
    broken.push_back({BrokenWordLineRule,
                      "This line holds no word of two letters or more, or something beside it.",
                      Severity::Warning,
                      {},
                      {},
                      {},
                      std::string(FileName),
                      number});
}

bool GameWords::Knows(std::string_view word) const {
    return !words.empty() && (words.count(CodePage::ToLower(word)) > 0 ||
                              words.count(CodePage::ToLower(WithoutPossessive(word))) > 0);
}

void GameWords::Add(const std::vector<std::string>& added) {
    std::string bytes = Files::FileExists(path) ? Files::ReadWhole(path) : std::string();
    if (IsWide(bytes))
        throw Failure(FailureInvalidArgument,
                      path + " is in UTF-16; please save it in UTF-8, so that words can be added to it");
    if (!bytes.empty() && bytes.back() != '\n')
        bytes += "\r\n";
    const bool utf8 = IsUtf8(bytes);
    for (const std::string& word : added)
        bytes += (utf8 ? CodePage::ToUtf8(word) : word) + "\r\n";
    Files::ReplaceSafely(path, bytes);
    Take(bytes);
}

} // namespace velmora
