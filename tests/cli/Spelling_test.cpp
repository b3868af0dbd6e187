// Which words are known, what is said of the others, and of dictionaries and lists that cannot be used.
#include "kinds/Spelling.h"

#include "CliRun.h"
#include "FailureOf.h"
#include "GameFolder.h"
#include "LibraryFixture.h"
#include "ScratchRegistry.h"
#include "events/clsEvent.h"
#include "services/Catalogues.h"

#include <gmock/gmock.h>

namespace velmora {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using Strings = std::vector<std::string>;

/// Two small dictionaries: "xx" in UTF-8, "yy" in Latin-1.
struct Dictionaries {
    Dictionaries() {
        folder.Write("xx.aff", "SET UTF-8\nSFX S Y 1\nSFX S 0 s .\nTRY esianrtolcdugmphbyfvkwz\n");
        folder.Write("xx.dic", "5\nship/S\npirate/S\ncaf\xC3\xA9\nabout\nyes\n");
        folder.Write("yy.aff", "SET ISO8859-1\n");
        folder.Write("yy.dic", "1\nna\xEFve\n");
    }
    TempFolder folder;
    Strings Folders{folder.Path()};
};

TEST(Spelling, KnowsDictionariesVocabularyNamesAndTheGamesWords) {
    BuildCatalogues();
    const Dictionaries dictionaries;
    TempFolder game;
    LibraryInFolder events(EventKind, "A.event");
    events.Put("A.event", events.Block("PirateQueen_Zarg2"));
    events.Load();
    game.Write("velmora.dic", "Blorb\r\n");
    Spelling spelling({"xx", "yy"}, dictionaries.Folders);
    spelling.LearnVocabulary();
    EXPECT_EQ(spelling.Trouble(), "");
    EXPECT_FALSE(spelling.Knows("Zarg"));
    EXPECT_FALSE(spelling.Knows("blorb"));
    spelling.ReadWords(game.Path());
    spelling.Learn(events.library);
    for (const char* word : {"ship", "Ships", "PIRATE", "caf\xE9", "na\xEFve", "BLORB", "Blorb's", "zarg",
                             "Queen", "cash", "Terror", "Velmora"})
        EXPECT_TRUE(spelling.Knows(word)) << word;
    for (const char* word : {"shipp", "cafe", "naive", "Blorbs", "Qu"})
        EXPECT_FALSE(spelling.Knows(word)) << word;
    for (const auto& [name, exists, otherWords, known] : {std::tuple("Zarg", true, false, true),
                                                          {"PIRATEQUEEN_ZARG2", false, true, true},
                                                          {"zarg", false, true, false},
                                                          {"zarg", false, false, false}}) {
        EXPECT_EQ(spelling.Follow(name, exists), otherWords) << name;
        EXPECT_EQ(spelling.Knows("Zarg"), known) << name;
    }
    spelling.LearnOnly({"QueenZarg"});
    EXPECT_TRUE(spelling.Knows("Zarg"));
    spelling.LearnOnly({"Queen"});
    EXPECT_FALSE(spelling.Knows("Zarg"));
    EXPECT_THAT(spelling.Suggest("shipp"), ::testing::Contains("ship"));
    EXPECT_THAT(spelling.Suggest("caffe"), ::testing::Contains("caf\xE9"));
    spelling.AddWords({"Qu"});
    EXPECT_TRUE(spelling.Knows("Qu"));
    EXPECT_EQ(game.Read("velmora.dic"), "Blorb\r\nQu\r\n");

    clsEvent event = SoundEvent("Raid");
    event.Title = "Ship";
    event.Description = "%s pirates abowt xyz\\nabowt ships 5%%";
    event.GoodOption = event.NeutralOption = event.EvilOption = "yes";
    std::vector<Problem> problems;
    spelling.Check(EventKind, event, problems);
    ASSERT_EQ(problems.size(), 1u);
    EXPECT_EQ(problems[0].Text, "Unknown words in the Description text: abowt, xyz.");
    EXPECT_EQ(problems[0].Field, "Description");
    EXPECT_EQ(problems[0].Level, Severity::Note);
    ReleaseCatalogues();
}

TEST(Spelling, SaysWhichDictionaryToInstallOrRepair) {
    struct Case {
        std::string Aff;
        std::string Dic;
        std::string Told;
    };
    TempFolder folder;
    for (const Case& c : std::initializer_list<Case>{
             {"SET UTF-8\n", "", "its first line is no count of words"},
             {"SET UTF-8\n", "ship\nboat\n", "its first line is no count of words"},
             {"SET UTF-8\n", "900000000\nship\n", "its first line counts more words than there are"},
             {"ship\n", "1\nship\n", "its .aff names no encoding"},
             {"SET UTF-8\nSFX S Y 2\nSFX S 0 s x\n", "1\nship\n", "its .aff ends within a table of affixes"},
             {"SET KOI8-R\n", "1\nship\n", "it is in KOI8-R, which is not read"}}) {
        folder.Write("en_XX.aff", c.Aff);
        folder.Write("en_XX.dic", c.Dic);
        Spelling spelling({"en_XX"}, {folder.Path()});
        EXPECT_THAT(spelling.Trouble(),
                    AllOf(HasSubstr("en_XX.dic cannot be used: " + c.Told), HasSubstr(" again.")));
        EXPECT_TRUE(spelling.Knows("anything")) << c.Told;
    }
    const Spelling none({"en_YY"}, {folder.Path()});
    EXPECT_THAT(none.Trouble(), AllOf(HasSubstr("There is no dictionary en_YY"), HasSubstr("lease ")));
    EXPECT_THAT(Speller::Installed({folder.Path(), folder.Path() + "none/"}), ElementsAre("en_XX"));
}

TEST(GameWords, ReadsListsAsPeopleWriteThemAndNamesTheRest) {
    struct Case {
        std::string Content;
        Strings Known;
        std::vector<std::size_t> BrokenLines;
    };
    TempFolder game;
    for (const Case& c :
         std::initializer_list<Case>{{"", {}, {}},
                                     {"Zarg\n\n  Blorb \r\n", {"zarg", "blorb", "Zarg's"}, {}},
                                     {"\xEF\xBB\xBF"
                                      "3\r\nZarg/MS\nCaf\xC3\xA9 # the bar\n# only a remark\n",
                                      {"zarg", "caf\xE9"},
                                      {}},
                                     {"Caf\xC3\xA9\n", {"caf\xE9"}, {}},
                                     {"caf\xE9\n", {"CAF\xC9"}, {}},
                                     {"Zog-Zorb\nO'Brien\n", {"zog", "zorb", "o'brien"}, {}},
                                     {"12\nZarg\n13\n", {"zarg"}, {3}},
                                     {"two words\nx\nok\x01word\nZarg", {"zarg"}, {1, 2, 3}},
                                     {"Caf\xC3\xA9\n\xD0\x96uk\nZarg\n", {"caf\xE9", "zarg"}, {2}}}) {
        game.Write("velmora.dic", c.Content);
        GameWords words;
        words.Read(game.Path());
        for (const std::string& word : c.Known)
            EXPECT_TRUE(words.Knows(word)) << word << " in " << c.Content;
        EXPECT_FALSE(words.Knows("MS"));
        std::vector<std::size_t> lines;
        for (const Problem& problem : words.Broken())
            lines.push_back(problem.Line);
        EXPECT_EQ(lines, c.BrokenLines) << c.Content;
        words.Add({"Ne\xEFw"});
        GameWords again;
        again.Read(game.Path());
        EXPECT_TRUE(again.Knows("ne\xEFw")) << c.Content;
        EXPECT_EQ(again.Broken().size(), c.BrokenLines.size()) << c.Content;
        for (const std::string& word : c.Known)
            EXPECT_TRUE(again.Knows(word)) << word;
    }
    const std::string wide("\xFF\xFEZ\0\n\0", 6);
    game.Write("velmora.dic", wide);
    GameWords words;
    words.Read(game.Path());
    EXPECT_FALSE(words.Broken().empty());
    EXPECT_THAT(FailureOf([&] { words.Add({"Zarg"}); }).Description(), HasSubstr("UTF-16"));
    EXPECT_EQ(game.Read("velmora.dic"), wide);
}

TEST(CheckCommand, ChecksSpellingOnlyWhenAsked) {
    const Dictionaries dictionaries;
    const char* before = std::getenv("DICPATH");
    SetEnvironment("DICPATH", dictionaries.folder.Path());
    GameFolder game;
    clsEvent event = SoundEvent("Raid");
    event.Title = "Ship";
    event.Description = "pirates abowt ships";
    event.GoodOption = event.NeutralOption = event.EvilOption = "yes";
    game.Write("Data/A.event", event.GenerateEventString(false));
    game.Write("velmora.dic", "x y\r\n");
    const CliRun plain("check", game.Typed());
    EXPECT_EQ(plain.Out, "");
    EXPECT_EQ(plain.Err, "");
    const CliRun run("check", game.Typed(), "--spelling", "--dictionary", "xx,yy");
    EXPECT_THAT(run.Out,
                AllOf(HasSubstr("A.event:5: note: Raid: Unknown word in the Description text: abowt. "
                                "[spelling]\n")));
    EXPECT_THAT(run.Err, HasSubstr("velmora.dic:1: This line holds no word"));
    EXPECT_EQ(run.Status, 0);
    game.Write("velmora.dic", "abowt\r\n");
    EXPECT_EQ(CliRun("check", game.Typed(), "--spelling", "--dictionary", "xx").Out, "");
    const CliRun none("check", game.Typed(), "--spelling", "--dictionary", "zz");
    EXPECT_EQ(none.Status, 2);
    EXPECT_THAT(none.Err, HasSubstr("There is no dictionary zz"));
    SetEnvironment("DICPATH", before ? before : "");
}

} // namespace
} // namespace velmora
