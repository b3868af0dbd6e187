#include "records/Replacement.h"

#include "LibraryFixture.h"
#include "SoundRecords.h"
#include "platform/CodePage.h"
#include "services/Catalogues.h"

namespace velmora {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ReplacementTest : public LibraryFixture {
  protected:
    using Strings = std::vector<std::string>;
    ReplacementTest() : LibraryFixture(EventKind, "MyEvents.event") { temp.Write("Gfx/P.pcx", "picture"); }

    struct Asked {
        std::string What;
        std::string With;
        TextMatcher::How How = {};
    };
    /// Looks for a text in all texts of the records.
    void Find(const Asked& asked, std::function<bool(const Record&)> within = {}) {
        Replacement::Request request{
            std::make_shared<TextMatcher>(asked.What, asked.With, asked.How), {}, std::move(within)};
        for (const Field& field : EventKind.Fields)
            if (field.Type == FieldType::Text)
                request.Fields.push_back(&field);
        replacement.Begin(std::move(request), std::make_shared<CheckContext>(temp.Path()));
        while (!replacement.Work({})) {
        }
    }
    void Replace() { edits.Do(replacement.MakeStep("replacement")); }
    void AddSound(const std::string& name, const std::string& description) {
        Add(name, "A.event", [&](Record& record) {
            CopyContent(EventKind, SoundEvent(name), record);
            static_cast<clsEvent&>(record).Description = description;
        });
    }
    /// "[x] Raid Title: before -> after (note)".
    Strings Lines() const {
        Strings shown;
        for (std::size_t line = 0; line < replacement.Count(); ++line) {
            const auto change = replacement.At(line);
            shown.push_back((replacement.IsTicked(line) ? "[x] " : "[ ] ") + std::string(change.Record) +
                            " " + std::string(change.Field) + ": " + change.Before + " -> " + change.After +
                            (change.Note.empty() ? "" : " (" + std::string(change.Note) + ")"));
        }
        return shown;
    }

    Replacement replacement{library};
};

/// Where a hit may begin and end is told from the text around it, put together anew.
bool IsWord(const std::string& text, std::size_t at, std::size_t length) {
    static const std::string letters = "aAbB\xC9\xE9\xDF"
                                       "1n_"; // of the texts below
    const std::string before = text.substr(0, at);
    const bool afterBreak = before.size() > 1 && CodePage::ToLower(before.substr(before.size() - 2)) == "\\n";
    return (before.empty() || afterBreak || letters.find(before.back()) == std::string::npos) &&
           (at + length == text.size() || letters.find(text[at + length]) == std::string::npos);
}

std::string PlainReplace(const std::string& text, const std::string& what, const std::string& with,
                         TextMatcher::How how) {
    const auto folded = [&](const std::string& any) { return how.MatchCase ? any : CodePage::ToLower(any); };
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        const bool isHit = folded(text.substr(at, what.size())) == folded(what) &&
                           (!how.WholeWord || IsWord(text, at, what.size()));
        result += isHit ? with : text.substr(at, 1);
        at += isHit ? what.size() : 1;
    }
    return result;
}

TEST_F(ReplacementTest, IsAPlainReplaceOfAllTextsAndIsUndoneToTheByte) {
    std::mt19937 random(5);
    const auto text = [&](std::size_t longest) {
        static const std::string letters = "aAbB\xC9\xE9\xDF"
                                           "1 -n\\_";
        std::string made;
        for (std::size_t left = 1 + random() % longest; left > 0; --left)
            made += letters[random() % letters.size()];
        return made;
    };
    for (int i = 0; i < 120; ++i)
        Add("N" + std::to_string(i), std::string(1, static_cast<char>('A' + random() % 3)) + ".event",
            [&](Record& added) {
                for (const Field& field : EventKind.Fields)
                    if (field.Type == FieldType::Text)
                        field.SetText(added, text(random() % 6 == 0 ? 150 : 20));
            });
    std::size_t hits = 0;
    for (int round = 0; round < 150; ++round) {
        const TextMatcher::How how{random() % 2 == 0, random() % 2 == 0};
        const Asked asked{text(3), random() % 4 == 0 ? "" : text(4), how};
        const bool oneFile = random() % 3 == 0;
        const std::string before = Blocks();
        Find(asked, oneFile ? [](const Record& record) { return record.ShortName == "B.event"; }
                            : std::function<bool(const Record&)>());
        for (std::size_t line = 0; line < replacement.Count(); ++line)
            replacement.Tick(line, true); // whatever the checks say
        std::string expected;
        for (const auto& [name, record] : library) {
            auto copy = EventKind.Copy(record);
            for (const Field& field : EventKind.Fields)
                if (field.Type == FieldType::Text && (!oneFile || record.ShortName == "B.event"))
                    field.SetText(*copy, PlainReplace(field.TextOf(record), asked.What, asked.With, how));
            AppendBlock(EventKind, *copy, expected);
        }
        hits += replacement.Sum().TickedHits;
        Replace();
        ASSERT_EQ(Blocks(), expected) << asked.What << '|' << asked.With;
        edits.Undo();
        ASSERT_EQ(Blocks(), before);
        edits.Redo();
    }
    EXPECT_GT(hits, 5000u);
}

TEST_F(ReplacementTest, ChecksEachLineAsACommitWould) {
    const struct {
        const char* Description;
        Asked Sought;
        const char* Line;
    } cases[] = {
        {"a red sun", {"red", "blue"}, "[x] Raid Description: a red sun -> a blue sun"},
        {"a Red red", {"RED", ""}, "[x] Raid Description: a Red red -> a  "},
        {"a Red red", {"red", "x", {.MatchCase = true}}, "[x] Raid Description: a Red red -> a Red x"},
        {"redder red", {"red", "x", {.WholeWord = true}}, "[x] Raid Description: redder red -> redder x"},
        {R"(So.\nRed)", {"red", "x", {.WholeWord = true}}, R"([x] Raid Description: So.\nRed -> So.\nx)"},
        {"aaa", {"aa", "a"}, "[x] Raid Description: aaa -> aa"},
        {"\xC9t\xE9", {"\xE9", "e"}, "[x] Raid Description: \xC9t\xE9 -> ete"},
        {"all", {"all", "100%"}, "[x] Raid Description: all -> 100%%"},
        {"all", {"all", "100%%"}, "[x] Raid Description: all -> 100%%"},
        {"red", {"red", "RED"}, "[x] Raid Description: red -> RED"},
        {"red", {"red", "red"}, "[ ] Raid Description: red -> red (stays as it is)"},
        {"red", {"red", "\""}, "[ ] Raid Description: red -> \" (a double quote would end the text)"},
        {"red",
         {"red", "a\rb"},
         "[ ] Raid Description: red -> a\rb (a line break would end the text; write \\n)"},
        {"red",
         {"red", "a\nb"},
         "[ ] Raid Description: red -> a\nb (a line break would end the text; write \\n)"},
        {"red",
         {"red", "\x7F\xE6\x98\x9F"},
         "[ ] Raid Description: red -> \x7F\xE6\x98\x9F (a character is not in the game's code page)"},
        {"red", {"red", ""}, "[ ] Raid Description: red ->  (no-description)"},
        {"red", {"red", "%s"}, "[ ] Raid Description: red -> %s (wild-card-placement)"},
    };
    for (const auto& [description, sought, line] : cases) {
        SCOPED_TRACE(line);
        library.Clear();
        AddSound("Raid", description);
        Find(sought);
        EXPECT_THAT(Lines(), ElementsAre(line));
    }
    library.Clear();
    AddSound("Long", std::string(539, 'a') + "z");
    Find({"z", "zz"});
    EXPECT_THAT(Lines(), ElementsAre(::testing::EndsWith("(description-length)")));
    AddSound("Longer", std::string(600, 'a') + "z");
    Find({"z", "zz"}, [](const Record& record) { return EventKind.NameOf(record) == "Longer"; });
    EXPECT_TRUE(replacement.IsTicked(0)) << "it was too long before";
}

TEST_F(ReplacementTest, ReplacesWhatIsTickedInOneStep) {
    AddSound("Raid", "talk");
    AddSound("Trade", "talk talk");
    Find({"talk", "Sing"});
    const auto sum = replacement.Sum();
    EXPECT_EQ((std::vector{sum.Hits, sum.Records, sum.TickedHits}), (std::vector<std::size_t>{5, 2, 5}));
    replacement.Tick(1, false);
    // Another record's change moves no tick.
    Edit("Trade", [](Record& record) { static_cast<clsEvent&>(record).NeutralOption = "Talk?"; });
    replacement.Restart();
    while (!replacement.Work({})) {
    }
    EXPECT_THAT(Lines(),
                ElementsAre("[x] Raid Description: talk -> Sing", "[ ] Raid GoodOption: Talk -> Sing",
                            "[x] Trade Description: talk talk -> Sing Sing",
                            "[x] Trade GoodOption: Talk -> Sing", "[x] Trade NeutralOption: Talk? -> Sing?"));
    const std::size_t steps = edits.StepsDone();
    Replace();
    EXPECT_EQ(edits.StepsDone(), steps + 1);
    EXPECT_EQ(edits.NextUndo().Count(), 2u);
    EXPECT_EQ(As<clsEvent>(0).GoodOption, "Talk");
    EXPECT_EQ(As<clsEvent>(1).NeutralOption, "Sing?");
    EXPECT_TRUE(library.At(1).IsDirty);
}

TEST_F(ReplacementTest, LeavesAloneWhatItDoesNotReplace) {
    Put("A.event", Block("Raid", "Title \"50% off\"\r\nDescription \"90% sun\"\r\nMoralityWeight 9\r\n"));
    Load();
    Find({"sun", "moon"});
    Replace();
    EXPECT_EQ(As<clsEvent>(0).Description, "90%% moon");
    EXPECT_EQ(As<clsEvent>(0).Title, "50% off");
    EXPECT_EQ(As<clsEvent>(0).MoralityWeight, 9);
}

TEST_F(ReplacementTest, IsQuietWhileTheLibraryIsReadAgain) {
    AddSound("Raid", "sun");
    Find({"sun", "moon"});
    ASSERT_EQ(replacement.Count(), 1u);
    library.Clear();
    EXPECT_TRUE(replacement.Work({}));
    EXPECT_EQ(replacement.At(0).After, "");
    EXPECT_EQ(replacement.GroupOf(0), "");
    replacement.Tick(0, false);
    replacement.Restart();
    EXPECT_THAT(Lines(), IsEmpty());
    Find({"", "moon"});
    EXPECT_THAT(Lines(), IsEmpty());
}

} // namespace
} // namespace velmora
