#include "kinds/Spelling.h"

#include "kinds/PlayerTexts.h"
#include "platform/CodePage.h"
#include "services/Catalogues.h"

#include <algorithm>

namespace velmora {

namespace {

/// The words of a name such as "PirateQueen_2".
std::string Parted(std::string_view name) {
    const auto isSmall = [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return CodePage::Upper(byte) != byte;
    };
    std::string parted;
    for (std::size_t i = 0; i < name.size(); ++i) {
        const bool begins = i > 0 && isSmall(name[i - 1]) && IsLetter(name[i]) && !isSmall(name[i]);
        parted.append(begins ? " " : "").append(1, IsLetter(name[i]) ? name[i] : ' ');
    }
    return parted;
}

} // namespace

Spelling::Spelling(const std::vector<std::string>& dictionaries, const std::vector<std::string>& folders)
    : speller(dictionaries, folders) {
    for (const Catalogue* catalogue : {&UPIssueAttributes, &RandomEventAttributes, &ColonialEventAttributes,
                                       &UPIssueTypes, &SBModuleTypes})
        for (const auto& [name, number] : *catalogue)
            LearnWords(name);
    for (const CodeCatalogue* catalogue : {&StarbaseModels, &SBModuleAbilities})
        for (const auto& [name, code] : *catalogue)
            LearnWords(name);
    LearnWords("Velmora");
}

void Spelling::ReadWords(const std::string& gameDirectory) {
    const std::lock_guard lock(mutex);
    known.clear();
    words = {};
    words.Read(gameDirectory);
}

void Spelling::AddWords(const std::vector<std::string>& added) {
    const std::lock_guard lock(mutex);
    words.Add(added);
    known.clear();
}

std::vector<Problem> Spelling::BrokenLines() const {
    const std::lock_guard lock(mutex);
    return words.Broken();
}

std::vector<std::string> Spelling::Suggest(std::string_view word) const {
    const std::lock_guard lock(mutex);
    return speller.Suggest(word);
}

void Spelling::LearnWords(std::string_view text) {
    for (const WordPlace& word : WordsIn(text))
        learned.insert(CodePage::ToLower(word.In(text)));
}

void Spelling::Learn(const Library& library) {
    const std::lock_guard lock(mutex);
    known.clear();
    for (const auto& [name, record] : library) {
        LearnWords(name);
        LearnWords(Parted(name));
    }
}

bool Spelling::Knows(std::string_view word) {
    const std::lock_guard lock(mutex);
    return LookUp(word);
}

bool Spelling::LookUp(std::string_view word) {
    if (speller.Empty())
        return true;
    if (const auto found = known.find(word); found != known.end())
        return found->second;
    const bool isKnown =
        speller.Knows(word) || words.Knows(word) || learned.count(CodePage::ToLower(word)) > 0;
    known.emplace(word, isKnown);
    return isKnown;
}

std::vector<WordPlace> Spelling::UnknownIn(std::string_view text) {
    std::vector<WordPlace> places = WordsIn(text);
    const std::lock_guard lock(mutex);
    std::erase_if(places, [&](const WordPlace& word) { return LookUp(word.In(text)); });
    return places;
}

void Spelling::Check(const RecordKind& kind, const Record& record, std::vector<Problem>& problems) {
    for (const PlayerText& shown : PlayerTextsOf(kind)) {
        const std::string& text = shown.Shown->TextOf(record);
        std::vector<std::string_view> unknown;
        for (const WordPlace& word : UnknownIn(text))
            if (std::ranges::find(unknown, word.In(text)) == unknown.end())
                unknown.push_back(word.In(text));
        if (unknown.empty())
            continue;
        std::string told;
        for (const std::string_view word : unknown)
            told.append(told.empty() ? "" : ", ").append(word);
        problems.push_back({SpellingRule,
                            (unknown.size() == 1 ? "Unknown word in the " : "Unknown words in the ") +
                                std::string(shown.Label) + " text: " + told + ".",
                            Severity::Note, shown.Shown->Property});
    }
}

} // namespace velmora
