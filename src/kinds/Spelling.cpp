#include "kinds/Spelling.h"

#include "kinds/PlayerTexts.h"
#include "platform/CodePage.h"
#include "services/Catalogues.h"

#include <algorithm>
#include <set>
#include <utility>

namespace velmora {

namespace {

/// A name such as "PirateQueen_2" with its words apart.
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

/// The words of a name, whole and apart, in small letters.
std::set<std::string> WordsOfName(std::string_view name) {
    std::set<std::string> words;
    for (const std::string& text : {std::string(name), Parted(name)})
        for (const WordPlace& word : WordsIn(text))
            words.insert(CodePage::ToLower(word.In(text)));
    return words;
}

} // namespace

bool Spelling::NameWords::Follow(std::string_view name, bool exists) {
    const auto held = names.find(name);
    if ((held != names.end()) == exists)
        return false;
    bool otherWords = false;
    for (const std::string& word : WordsOfName(exists ? name : *held)) { // where words part is in its case
        std::size_t& count = counts[word];
        count += exists ? 1 : -1;
        otherWords |= count == (exists ? 1 : 0);
        if (count == 0)
            counts.erase(word);
    }
    if (exists)
        names.emplace(name);
    else
        names.erase(held);
    return otherWords;
}

Spelling::Spelling(const std::vector<std::string>& dictionaries, const std::vector<std::string>& folders)
    : speller(dictionaries, folders) {}

void Spelling::LearnVocabulary() {
    const std::lock_guard lock(mutex);
    known.clear();
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
    for (const auto& [name, record] : library)
        names.Follow(name, true);
}

void Spelling::LearnOnly(const std::vector<std::string>& recordNames) {
    NameWords learning;
    for (const std::string& name : recordNames)
        learning.Follow(name, true);
    const std::lock_guard lock(mutex); // whoever asks meanwhile is not held up
    std::swap(names, learning);
    known.clear();
}

bool Spelling::Follow(std::string_view recordName, bool exists) {
    const std::lock_guard lock(mutex);
    const bool otherWords = names.Follow(recordName, exists);
    if (otherWords)
        known.clear();
    return otherWords;
}

bool Spelling::Knows(std::string_view word) {
    const std::lock_guard lock(mutex);
    return LookUp(word);
}

bool Spelling::IsOfGame(const std::string& smallWord) const {
    return learned.count(smallWord) > 0 || names.Has(smallWord);
}

bool Spelling::LookUp(std::string_view word) {
    if (speller.Empty())
        return true;
    if (const auto found = known.find(word); found != known.end())
        return found->second;
    const bool isKnown = speller.Knows(word) || words.Knows(word) || IsOfGame(CodePage::ToLower(word));
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
