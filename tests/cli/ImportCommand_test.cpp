#include "CliRun.h"
#include "GameFolder.h"
#include "platform/CodePage.h"
#include "records/Csv.h"
#include "services/modWriter.h"

#include <gmock/gmock.h>

#include <random>

namespace velmora {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

class ImportCommand : public ::testing::Test {
  protected:
    /// Every byte alone and beside others, and texts that spreadsheets take for something else.
    static std::vector<std::string> OddTexts() {
        std::vector<std::string> texts{"",      "1-2", "'5 May", "'",    "''=1",  "=1+1", "+1",  "-1",
                                       "@x",    "'@x", "007",    "1e5",  " 7",    "a,b",  "a;b", "x\ty",
                                       "\"q\"", "%",   "%s",     "100%", "\\n\\", " ",    "x ",  "'x'",
                                       "TRUE",  "'-",  "\t",     ",",    "'7"};
        std::mt19937 random(1);
        for (int byte = 1; byte < 256; ++byte) {
            texts.emplace_back(1, static_cast<char>(byte));
            std::string mixed;
            for (int i = 0; i < 4; ++i)
                mixed += i == 2 ? static_cast<char>(byte) : "'=-7,;\t \"%a"[random() % 11];
            texts.push_back(mixed);
        }
        return texts;
    }
    void WriteOddRecords() const {
        std::string events;
        std::string issues;
        int number = 0;
        for (const std::string& text : OddTexts()) {
            clsEvent event = SoundEvent("E" + std::to_string(++number));
            event.Title = event.GoodOption = event.Image = text;
            event.GoodValue = -number;
            event.MoralityWeight = 99; // which showing would change
            events += event.GenerateEventString(false);
            clsUPIssue issue = SoundIssue("I" + std::to_string(number));
            issue.Option02 = issue.Question = text;
            issues += issue.GenerateUPIssueString(false);
        }
        game.Write("Data/A.event", "// a remark\r\n" + events);
        game.Write("Data/UP_Issues/A b.UPIssue", issues);
    }
    /// Imports these bytes.
    template <class... Words>
    CliRun Import(const std::string& bytes, Words... words) const {
        game.Write("table", bytes);
        return CliRun("import", game.Typed(), game.Typed("table"), words...);
    }
    static std::string Utf16(const std::string& utf8, bool little) {
        std::string bytes = little ? "\xFF\xFE" : "\xFE\xFF";
        const std::string text = *CodePage::FromUtf8(utf8);
        for (const char c : text) {
            const char32_t unit = CodePage::ToUnicode(static_cast<unsigned char>(c));
            const char parts[] = {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
            bytes += little ? std::string(parts, 2) : std::string{parts[1], parts[0]};
        }
        return bytes;
    }

    GameFolder game;
};

TEST(Csv, GuardsWhatASpreadsheetTakesForMoreThanAText) {
    for (const std::string text : {"=1", "-x", "@a", "007", "50%", "1-2", "10:30", "1.5.2026", "5 May",
                                   "Sept 3", "3/4", "10:30 PM", "(5)", "$5", "TRUE", "false", "'1-2"})
        EXPECT_EQ(Csv::Guarded(text), "'" + text);
    for (const std::string text :
         {"", "May", "5 ships", "Ma 5", "Marching 5", "a-b", "%s", "'x", "True love"})
        EXPECT_EQ(Csv::Guarded(text), text);
}

TEST_F(ImportCommand, ExportThenImportChangesNothing) {
    WriteOddRecords();
    const std::string same = std::to_string(OddTexts().size()) + " the same\n";
    const std::string events = game.Read("Data/A.event");
    for (const char* kind : {"events", "upissues"})
        for (const char* separator : {",", ";", "tab"}) {
            SCOPED_TRACE(std::string(kind) + separator);
            const CliRun exported("export", game.Typed(), "--kind", kind, "--for", "spreadsheet",
                                  "--separator", separator);
            ASSERT_THAT(exported.Out, StartsWith("\xEF\xBB\xBF"));
            const std::string utf8 = exported.Out.substr(3);
            for (const std::string& form :
                 {exported.Out, utf8, *CodePage::FromUtf8(utf8), Utf16(utf8, true), Utf16(utf8, false)}) {
                const CliRun run = Import(form, "--write");
                EXPECT_EQ(run.Status, 0);
                EXPECT_EQ(run.Err, "");
                EXPECT_EQ(run.Out,
                          std::string(kind) + ": 0 new, 0 changed, 0 refused, 0 in conflict, " + same);
            }
        }
    EXPECT_EQ(game.Read("Data/A.event"), events) << "remark and all";
}

TEST_F(ImportCommand, TranslatedTextsComeBack) {
    WriteOddRecords();
    const CliRun exported("export", game.Typed(), "--for", "translators");
    Csv::Reader reader(std::string_view(exported.Out).substr(3), ',');
    std::vector<std::string> cells;
    ASSERT_TRUE(reader.Next(cells));
    EXPECT_THAT(cells, ElementsAre("location", "source", "target", "ID", "context", "remark"));
    std::string table = "ID,source,target\n";
    std::size_t rows = 0;
    while (reader.Next(cells)) {
        ++rows;
        table += cells[3] + "," + Csv::Cell(cells[1]) + ",=\n";
    }
    std::size_t entries = 0;
    for (const std::string& line : CliRun("export", game.Typed(), "--format", "po").Lines())
        entries += line.starts_with("msgctxt ") ? 1 : 0;
    EXPECT_EQ(rows, entries);
    const CliRun untouched = Import(exported.Out);
    EXPECT_EQ(untouched.Err, "") << "its own columns are all known";
    std::size_t same = 0;
    for (const std::string& line : untouched.Lines())
        same += std::stoul(line.substr(line.rfind(", ") + 2));
    EXPECT_EQ(same, rows) << "each text counts for its own kind";
    const CliRun run = Import(table);
    EXPECT_THAT(run.Out, AllOf(HasSubstr(" 0 refused, 0 in conflict"), Not(HasSubstr(" 0 changed"))))
        << "every source is the text that it was";
}

TEST_F(ImportCommand, TellsOfEachRowWhatItWouldChange) {
    game.Write("Data/A.event", "// a remark\r\n" + GameFolder::Event("Raid") + GameFolder::Event("Stay"));
    game.Write("Data/CoreEvents.event", GameFolder::Event("Core"));
    const std::string before = game.Read("Data/A.event");
    const std::string table = "EventName;Colour;Title;GoodValue;GoodOption;ShortName;OrigNumber\n"
                              "raid;red;\"New; \xC3\xA9\";7;50% off;;1\n"
                              "Stay;;Title;0;Talk;A.event;9\n"
                              "Fresh;;Fresh title;1;Yes;B.event;\n"
                              "Core;;Title;0;Talk;B.event;\n"
                              "Stay;;Other;0;Talk;;\n"
                              "9Lives;;x;0;y;;\n"
                              ";;x;0;y;;\n"
                              "One;;x;seven;y;;\n"
                              "Two;;x;99999999999;y;;\n"
                              "Three;;\"a \"\"quote\"\"\";0;y;;\n"
                              "Four;;\"two\nlines\";0;y;;\n"
                              "Five;;\xE6\x98\x9F;0;y;;\n"
                              "Six;;x;0;y;C.txt;\n"
                              "Seven;;x;0;y;;;z\n";
    const CliRun dry = Import(table);
    EXPECT_EQ(dry.Status, 1);
    EXPECT_THAT(dry.Err, HasSubstr("not known and left out: Colour\n"));
    const auto refused = [](int line, const std::string& rest) {
        return HasSubstr(":" + std::to_string(line) + ": refused: " + rest);
    };
    EXPECT_THAT(
        dry.Lines(),
        ElementsAre("changed: Raid: Title: [-Title-]{+New; \xC3\xA9+}",
                    "changed: Raid: GoodOption: [-Talk-]{+50%% off+}", "changed: Raid: GoodValue: [-0-]{+7+}",
                    refused(4, "Fresh: Unable to locate specified image file. [no-image]"),
                    refused(5, "Core: ShortName: CoreEvents.event is the game's own"),
                    refused(6, "Stay: the table has this record twice"), refused(7, "9Lives: the game takes"),
                    refused(8, ": it names no record"), refused(9, "One: GoodValue: seven: Type mismatch"),
                    refused(10, "Two: GoodValue: 99999999999: Overflow"),
                    refused(11, "Three: Title: it holds a double"),
                    refused(12, "Four: Title: it holds a line break"),
                    refused(14, "Five: Title: it holds a character"),
                    refused(15, "Six: ShortName: C.txt is no"), refused(16, ": it has more cells"),
                    "events: 0 new, 1 changed, 12 refused, 0 in conflict, 1 the same"));
    EXPECT_EQ(game.Read("Data/A.event"), before) << "without --write nothing is written";
    const CliRun run = Import(table, "--write");
    EXPECT_EQ(run.Status, 1);
    EXPECT_THAT(run.Out, AllOf(HasSubstr("copy of what the file had: "), HasSubstr("written: ")));
    clsEvent raid = SoundEvent("Raid");
    raid.Title = "New; \xE9";
    raid.GoodOption = "50%% off";
    raid.GoodValue = 7;
    EXPECT_EQ(game.Read("Data/A.event"), raid.GenerateEventString(false) + GameFolder::Event("Stay"));
    EXPECT_EQ(Files::ReadWhole((game / "BackupData/") + Files::ListFiles(game / "BackupData")[0]), before)
        << "what the rewrite dropped";
    EXPECT_THAT(Import(table).Out, HasSubstr(" 0 changed, 12 refused, 0 in conflict, 2 the same"));
}

TEST_F(ImportCommand, AddsAndMovesRecordsAndDeletesNone) {
    game.Write("Data/A.event", GameFolder::Event("Raid") + GameFolder::Event("Stay"));
    const std::string image = R"(Gfx\\P.pcx)";
    const CliRun run =
        Import("EventName,ShortName,Title,Description,Image,GoodOption,NeutralOption,EvilOption\n"
               "Raid,B.event,Title,about Raid,\"" +
                   image +
                   "\",Talk,Wait,Raid back\n"
                   "Fresh,,T,d," +
                   image + ",a,b,c\n",
               "--write");
    EXPECT_EQ(run.Status, 0) << run.Out;
    EXPECT_EQ(game.Read("Data/A.event"), GameFolder::Event("Stay"));
    EXPECT_EQ(game.Read("Data/B.event"), GameFolder::Event("Raid"));
    EXPECT_THAT(game.Read("Data/MyEvents.event"), HasSubstr("EVENT Fresh\r\n"));
    EXPECT_FALSE(game.Has("BackupData")) << "nothing was dropped";
}

TEST_F(ImportCommand, NamesThatDifferInCaseMeanOneFile) {
    game.Write("Data/A.event", GameFolder::Event("Raid") + GameFolder::Event("Stay"));
    game.Write("Data/B.event", GameFolder::Event("Third") + GameFolder::Event("Fourth"));
    const CliRun run = Import("EventName,ShortName\nRaid,New.event\nStay,NEW.EVENT\nThird,a.EVENT\n",
                              "--write", "--event-file", "MYEVENTS");
    std::vector<std::string> written;
    for (const std::string& line : run.Lines())
        if (line.starts_with("written: "))
            written.push_back(Files::NameOf(line));
    EXPECT_THAT(written, ::testing::UnorderedElementsAre("New.event", "A.event", "B.event")) << run.Out;
    EXPECT_EQ(game.Read("Data/New.event"), GameFolder::Event("Raid") + GameFolder::Event("Stay"));
}

TEST_F(ImportCommand, TakesEmptyRowsForNothingAndTellsOfQuotesThatAreNotClosed) {
    game.Write("Data/A.event", GameFolder::Event("Raid") + GameFolder::Event("Stay"));
    const std::string quote = "a quote is not closed";
    const std::string lost = "events: 0 new, 0 changed, 1 refused, 0 in conflict, ";
    const struct {
        const char* Table;
        int Status;
        std::string Told;
    } cases[] = {
        {"EventName,Title\n,\nRaid,Title,,,\n,,,,\n\"\",\"\"\n", 0,
         "events: 0 new, 0 changed, 0 refused, 0 in conflict, 1 the same\n"},
        {"EventName,Title\nRaid,\nStay\n", 1, "table:2: refused: Raid: No Title text set"},
        {"EventName,Title,Note\nRaid,Title,\"x\nStay,Other,y\n", 1, lost + "0 the same\n"},
        {"EventName,Title,Note\nRaid,Title,\"x\nStay,Other,\"y\"\n", 1, ":2: refused: : " + quote},
        {"EventName,Title\nRaid,Title\nStay,\"", 1, ":3: refused: : " + quote},
        {"ID,source,target,remark\nevent.Raid.Title,\"Title,,\nevent.Stay.Title,Title,Titel,\n", 1,
         ":2: refused: : " + quote},
        {"EventName,\"Title\nRaid,x\n", 2, "The first row: " + quote},
    };
    for (const auto& [table, status, told] : cases) {
        const CliRun run = Import(table);
        EXPECT_EQ(run.Status, status) << table;
        EXPECT_THAT(run.Out + run.Err, HasSubstr(told)) << table;
    }
}

TEST_F(ImportCommand, ATextThatChangedSinceTheExportIsAConflict) {
    clsEvent raid = SoundEvent("Raid");
    raid.Title = "Changed";
    game.Write("Data/A.event", raid.GenerateEventString(false));
    game.Write("Data/UP_Issues/A.UPIssue", GameFolder::Issue("Tax"));
    const std::string table = "ID,source,target\n"
                              "event.Raid.Title,Title,Titel\n"
                              "event.Raid.GoodOption,Talk,Reden\n"
                              "event.Raid.EvilOption,Raid back,\n"
                              "event.Raid.NeutralOption,Wait,%s\n"
                              "event.Gone.Title,Title,Titel\n"
                              "event.Raid.Image,x,y\n"
                              "upissue.Tax.Option01,Yes,Ja\n";
    const CliRun run = Import(table, "--write");
    EXPECT_EQ(run.Status, 1);
    EXPECT_THAT(run.Out,
                AllOf(HasSubstr(":2: conflict: Raid: Title: the text has changed since the export\n"),
                      HasSubstr("changed: Raid: GoodOption: [-Talk-]{+Reden+}\n"),
                      HasSubstr(":5: refused: Raid: "), HasSubstr(":6: conflict: Gone: the record is gone"),
                      HasSubstr(":7: refused: event.Raid.Image: no text has this ID"),
                      HasSubstr("changed: Tax: Option01: [-Yes-]{+Ja+}\n")));
    raid.GoodOption = "Reden";
    EXPECT_EQ(game.Read("Data/A.event"), raid.GenerateEventString(false));
    EXPECT_THAT(game.Read("Data/UP_Issues/A.UPIssue"), HasSubstr("\"Ja\""));
}

TEST_F(ImportCommand, RefusesWhatItCannotTakeWhole) {
    game.Write("Data/A.event", GameFolder::Event("Raid"));
    for (const auto& [table, message] : {std::pair("Name,Title\nRaid,x\n", "no column names records"),
                                         {"", "no column names records"},
                                         {"SBModuleName\nBastion\n", "only read"}}) {
        const CliRun run = Import(table);
        EXPECT_EQ(run.Status, 2);
        EXPECT_THAT(run.Err, HasSubstr(message));
    }
    game.Write("Data/B.event", "EVENT X\r\nProbability 9999999999\r\n");
    const std::string before = game.Read("Data/A.event");
    EXPECT_EQ(Import("EventName,Title\nRaid,x\n", "--write").Status, 2) << "not all files could be read";
    EXPECT_EQ(game.Read("Data/A.event"), before);
    for (const char* wrong : {"--write --dry-run", "--kind sbmodules"})
        EXPECT_EQ(Import("EventName\nRaid\n", std::string(wrong).substr(0, 7)).Status, 2) << wrong;
}

TEST(PoExport, GivesTranslatorsWhatTheyNeed) {
    GameFolder game;
    clsEvent raid = SoundEvent("Raid");
    raid.Description = "%s says: \\n\xE9";
    raid.DescStr01 = 1;
    game.Write("Data/A b.event", raid.GenerateEventString(false));
    EXPECT_THAT(CliRun("export", game.Typed(), "--format", "po").Out,
                AllOf(StartsWith("msgid \"\"\nmsgstr \"\"\n"),
                      HasSubstr("\n\n#. Description of Event Raid\n"
                                "#. at most 540 characters; %s stands for: Player Name\n"
                                "#: A_b.event:5\n#, c-format\nmsgctxt \"event.Raid.Description\"\n"
                                "msgid \"%s says: \\\\n\xC3\xA9\"\nmsgstr \"\"\n")));
    for (const char* wrong : {"spreadsheet", "json"})
        EXPECT_EQ(CliRun("export", game.Typed(), "--for", wrong).Status, 2);
    EXPECT_EQ(CliRun("export", game.Typed(), "--for", "translators", "--format", "json").Status, 2);
    EXPECT_EQ(CliRun("export", game.Typed(), "--separator", ";").Status, 2);
}

} // namespace
} // namespace velmora
