#include "records/Search.h"

#include "LibraryFixture.h"
#include "SoundRecords.h"
#include "events/clsEvent.h"
#include "platform/CodePage.h"
#include "services/Catalogues.h"

namespace velmora {
namespace {

/// A library of short texts of few letters, so that whatever is asked for is often there.
class SearchTest : public LibraryFixture {
  protected:
    SearchTest() : LibraryFixture(EventKind, "MyEvents.event") {}

    std::size_t Roll(std::size_t sides) { return random() % sides; }
    std::string AnyText(std::size_t longest) {
        static const std::string letters = "aAbB\xC9\xE9\xDF 1-";
        std::string text;
        for (std::size_t left = Roll(longest + 1); left > 0; --left)
            text += letters[Roll(letters.size())];
        return text;
    }
    void AddRandom(int count) {
        for (int i = 0; i < count; ++i)
            Add(AnyText(3) + "n" + std::to_string(library.Count()), AnyText(2) + ".event",
                [this](Record& added) {
                    auto& event = static_cast<clsEvent&>(added);
                    for (std::string* text : {&event.Title, &event.Description, &event.EvilOption})
                        *text = AnyText(Roll(8) == 0 ? 200 : 20);
                    event.EventType = static_cast<std::int32_t>(Roll(3));
                    event.GoodValue = static_cast<std::int32_t>(Roll(300)) - 150;
                    event.IsDirty = Roll(3) == 0;
                    event.FileOnDisk = Roll(2) == 0 ? 0 : -1;
                    event.ToBeDeleted = Roll(5) == 0;
                });
    }
    std::string AnyWord() {
        static const std::vector<std::string> prefixes{
            "", "", "", "", "-", "file:", "title:", "-title:", "state:", "TYPE:", "rule:", "x:", "-rule:"};
        static const std::vector<std::string> words{"edited",   "deleted", "new",  "random",
                                                    "colonial", "long",    "title"};
        const std::string word = Roll(3) == 0 ? words[Roll(words.size())] : AnyText(4);
        const std::string prefix = prefixes[Roll(prefixes.size())];
        return prefix + (Roll(3) == 0 ? '"' + word + (Roll(5) == 0 ? "" : "\"") : word);
    }

    static std::vector<std::string_view> Rules(const Record& record) {
        const auto& event = static_cast<const clsEvent&>(record);
        std::vector<std::string_view> rules;
        if (event.Title.empty())
            rules.emplace_back("no-title");
        if (event.Description.size() > 20)
            rules.emplace_back("description-too-long");
        return rules;
    }
    /// What a filter line means, word by word over texts put together.
    static bool Means(const std::string& line, const Record& record) {
        std::size_t at = 0;
        while ((at = line.find_first_not_of(' ', at)) != std::string::npos) {
            const bool negated = line[at] == '-';
            std::string place;
            if (negated)
                ++at;
            for (const char* prefix : {"file:", "title:", "state:", "type:", "rule:"})
                if (CodePage::ToLower(line.substr(at, std::string_view(prefix).size())) == prefix)
                    place = prefix;
            at += place.size();
            const bool phrase = at < line.size() && line[at] == '"';
            if (phrase)
                ++at;
            const std::size_t end = std::min(line.find(phrase ? '"' : ' ', at), line.size());
            const std::string word = CodePage::ToLower(line.substr(at, end - at));
            at = std::min(end + 1, line.size());
            if (!word.empty() && negated == (TextsIn(place, record).find(word) != std::string::npos))
                return false;
        }
        return true;
    }
    /// The texts of a place in lower case, a line each.
    static std::string TextsIn(const std::string& place, const Record& record) {
        const auto& event = static_cast<const clsEvent&>(record);
        std::string texts;
        if (place == "rule:")
            for (const std::string_view rule : Rules(record))
                texts.append(rule) += '\n';
        else if (place.empty())
            EventKind.ForEachField([&](const Field& field) {
                texts +=
                    (field.TextOf ? field.TextOf(record) : std::to_string(field.NumberOf(record))) + '\n';
            });
        if (place.empty())
            texts += event.EventName + '\n';
        if (place.empty() || place == "file:")
            texts += event.ShortName;
        if (place == "title:")
            texts = event.Title;
        if (place == "state:")
            texts = event.ToBeDeleted      ? "deleted"
                    : !event.IsDirty       ? ""
                    : event.FileOnDisk < 0 ? "new"
                                           : "edited";
        if (place == "type:")
            texts = event.EventType == 1 ? "random" : "colonial";
        return CodePage::ToLower(texts);
    }
    std::vector<std::uint32_t> PlainSearch(const std::string& line) const {
        std::vector<std::uint32_t> positions;
        for (std::uint32_t at = 0; at < library.Count(); ++at)
            if (Means(line, library.At(at)))
                positions.push_back(at);
        return positions;
    }

    std::mt19937 random{11};
};

TEST_F(SearchTest, FindsWhatAPlainSearchFinds) {
    AddRandom(300);
    Search search(library, Rules);
    std::size_t hits = 0;
    for (int i = 0; i < 250; ++i) {
        std::string line;
        for (std::size_t words = Roll(4); words > 0; --words)
            line += AnyWord() + " ";
        // As it is typed, with the search at times done and at times begun when the next key comes.
        for (std::size_t typed = Roll(2) == 0 ? 0 : line.size(); typed <= line.size(); ++typed) {
            search.Begin(Filter(line.substr(0, typed)));
            for (std::size_t slices = Roll(20); slices > 0; --slices)
                search.Work({});
        }
        while (!search.Work({})) {
        }
        ASSERT_EQ(search.Found(), PlainSearch(line)) << line;
        hits += search.Found().size();
    }
    EXPECT_GT(hits, 1000u);
}

TEST_F(SearchTest, FindsATextWhereverItStands) {
    for (int i = 0; i < 3000; ++i) {
        const std::string text = AnyText(120);
        const std::string what = AnyText(5);
        const TextFinder finder(what);
        std::size_t at = 0;
        do {
            const std::size_t expected = CodePage::FindNoCase(text, what, at);
            ASSERT_EQ(finder.In(text, at), expected) << text << '|' << what << '|' << at;
            at = expected + 1;
        } while (at != 0);
    }
    EXPECT_EQ(TextFinder("a").In("A", 2), TextFinder::None);
}

TEST_F(SearchTest, LooksOnlyAtWhatIsLeftWhenTheFilterGetsLonger) {
    const auto narrows = [](const char* line, const char* than) {
        return Filter(line).Narrows(Filter(than));
    };
    EXPECT_TRUE(narrows("pirate", ""));
    EXPECT_TRUE(narrows("pirates queen", "Pirate"));
    EXPECT_TRUE(narrows("-quee", "-queen"));
    EXPECT_FALSE(narrows("-queens", "-queen"));
    EXPECT_FALSE(narrows("file:pirate", "pirate"));
    EXPECT_FALSE(narrows("-pirate", "pirate"));
}

TEST_F(SearchTest, LooksInAFieldByItsName) {
    const auto lists = [this](const char* line, const Record& record) {
        return Filter(line, &library.Kind).Matches(library.Kind, record, {});
    };
    const struct {
        const char* Line;
        bool Listed;
    } cases[] = {
        {"Probability:50", true},        {"probability:5", false},  {"GoodAttribute:\"morale bonus\"", true},
        {"GoodAttribute:Morale", false}, {"GoodAttribute:2", true}, {"MoralityWeight:5", true},
        {"MoralityWeight:99", true},     {"-Title:raid", false},    {"Description:\"a raid\"", true},
        {"NoSuchField:Raid", false},     {"Title:", true},          {"Image:raid", false},
    };
    clsEvent event = SoundEvent("Raid");
    event.Title = "Raid";
    event.Description = "About a raid: NoSuchField";
    event.Probability = 50;
    event.EventType = 0;
    event.GoodAttribute = 2;
    event.MoralityWeight = 99; // the editor makes five of it
    BuildCatalogues();
    for (const auto& [line, listed] : cases)
        EXPECT_EQ(lists(line, event), listed) << line;
    EXPECT_FALSE(Filter("Probability:50", &library.Kind).Narrows(Filter("Probability:5", &library.Kind)));
}

} // namespace
} // namespace velmora
