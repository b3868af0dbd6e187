#include "kinds/Statistics.h"

#include "events/EventRules.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "platform/PathTexts.h"
#include "services/Catalogues.h"
#include "services/GameText.h"

#include <algorithm>
#include <set>

namespace velmora {

namespace {

constexpr std::array<std::string_view, 3> AnswerKeys{"goodAttributes", "neutralAttributes", "evilAttributes"};
constexpr std::array<std::string_view, 3> AnswerTitles{
    "Attributes of good answers", "Attributes of neutral answers", "Attributes of evil answers"};
constexpr std::array<std::string_view, 3> AnswerFilters{
    "GoodAttribute:", "NeutralAttribute:", "EvilAttribute:"};

/// A picture's path in one spelling, whatever separators it has.
std::string PictureKey(std::string_view image) {
    std::string key;
    for (const std::string_view piece : PathTexts::Components(image))
        key.append(key.empty() ? "" : "\\").append(piece);
    return key;
}

std::string FilterOf(std::string_view prefix, std::string_view value) {
    return std::string(prefix).append("\"").append(value).append("\"");
}

} // namespace

void Statistics::Count(Counts& counts, std::string_view key) {
    if (!counts.TryAdd(key, 1))
        ++*counts.Find(key);
}

void Statistics::Add(const Record& record) {
    ++records;
    Count(files, record.ShortName);
    Count(types, kind.TypeOf(record));
    if (&kind == &EventKind)
        AddEvent(record);
    AddLengths(record);
}

void Statistics::AddEvent(const Record& record) {
    const auto& event = static_cast<const clsEvent&>(record);
    ++weights.at(static_cast<std::size_t>(LegalMoralityWeight(event.MoralityWeight) - 1));
    if (!event.Image.empty())
        Count(pictures, PictureKey(event.Image));
    const Catalogue& names = EventAttributes(event.EventType);
    Count(attributes[0], NameByNumber(names, event.GoodAttribute));
    Count(attributes[1], NameByNumber(names, event.NeutralAttribute));
    Count(attributes[2], NameByNumber(names, event.EvilAttribute));
}

void Statistics::AddLengths(const Record& record) {
    const std::span<const PlayerText> texts = PlayerTextsOf(kind);
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const std::size_t length = LengthInGame(texts[i].Shown->TextOf(record));
        lengths[i].Longest = std::max(lengths[i].Longest, length);
        lengths[i].Over += texts[i].Limit > 0 && length > texts[i].Limit ? 1 : 0;
    }
}

std::vector<Statistics::Bar> Statistics::BarsOf(const Counts& counts, std::string_view prefix) {
    std::vector<Bar> bars;
    for (const auto& [label, count] : counts)
        bars.push_back({label, count, prefix.empty() ? std::string() : FilterOf(prefix, label)});
    std::ranges::stable_sort(bars, std::ranges::greater(), &Bar::Count);
    return bars;
}

std::vector<Statistics::Table> Statistics::Tables(const std::string& gameDirectory) const {
    std::vector<Table> tables;
    tables.push_back({"files", "Files", BarsOf(files, "file:")});
    tables.push_back({"types", "Types", BarsOf(types, "type:")});
    tables.push_back({"problems", "Problems by rule", BarsOf(problems, "rule:")});
    Table texts{"lengths", "Texts longer than recommended", {}};
    for (std::size_t i = 0; i < lengths.size(); ++i)
        if (const PlayerText& text = PlayerTextsOf(kind)[i]; text.Limit > 0)
            texts.Bars.push_back(
                {std::string(text.Label), lengths[i].Over, FilterOf("rule:", text.LengthRule),
                 "longest " + std::to_string(lengths[i].Longest) + " of " + std::to_string(text.Limit)});
    tables.push_back(std::move(texts));
    if (&kind == &EventKind) {
        Table morality{"morality", "Morality weights", {}};
        for (std::size_t i = 0; i < weights.size(); ++i) {
            const std::string weight = std::to_string(i + 1);
            morality.Bars.push_back({weight, weights[i], FilterOf("MoralityWeight:", weight)});
        }
        tables.push_back(std::move(morality));
        for (std::size_t i = 0; i < attributes.size(); ++i)
            tables.push_back({AnswerKeys[i], AnswerTitles[i], BarsOf(attributes[i], AnswerFilters[i])});
        AddPictures(gameDirectory, tables);
    }
    std::erase_if(tables, [](const Table& table) { return table.Bars.empty(); });
    return tables;
}

void Statistics::AddPictures(const std::string& gameDirectory, std::vector<Table>& tables) const {
    Table once{"picturesUsedOnce", "Pictures used once", {}};
    Table never{"picturesNeverUsed", "Pictures never used", {}};
    std::set<std::string> folders;
    for (const auto& [picture, count] : pictures) {
        folders.insert(CodePage::ToUpper(Files::FolderOf(picture)));
        if (count == 1)
            once.Bars.push_back({picture, 1, FilterOf({}, Files::NameOf(picture))});
    }
    for (const std::string& folder : folders) {
        try {
            for (const std::string& name : Files::ListFiles(Files::Join(gameDirectory, folder)))
                if (CodePage::EndsWithNoCase(name, ".pcx") && !pictures.Exists(folder + name))
                    never.Bars.push_back({folder + name, 0});
        } catch (const Failure&) {
            // A folder that is missing has no picture that could be unused.
        }
    }
    for (Table* table : {&once, &never}) {
        std::ranges::sort(table->Bars, {}, &Bar::Label);
        tables.push_back(std::move(*table));
    }
}

} // namespace velmora
