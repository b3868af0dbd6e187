// The problems that the windows list are those that `check` prints.
#include "CliRun.h"
#include "GameFolder.h"
#include "kinds/IgnoreFile.h"
#include "kinds/Kinds.h"
#include "platform/CodePage.h"
#include "records/ProblemIndex.h"
#include "services/Catalogues.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <random>

namespace velmora {
namespace {

using ::testing::HasSubstr;
using Strings = std::vector<std::string>;

std::string Told(std::string_view severity, std::string_view rule, const std::string& file,
                 const std::string& record, std::string_view field, const std::string& text) {
    std::string told;
    for (const std::string_view piece :
         {severity, rule, std::string_view(file), std::string_view(record), field, std::string_view(text)})
        told.append(piece).append(" | ");
    return told;
}

/// What `check` finds in one kind of record.
Strings Checked(const std::string& game, const KindEntry& kind) {
    const Json json = CliRun("check", game, "--format", "json", "--kind", std::string(kind.Option)).Parsed();
    Strings found;
    const auto add = [&](const Json& list) {
        for (const Json& entry : list)
            found.push_back(Told(entry["severity"].get<std::string>(), entry["rule"].get<std::string>(),
                                 entry["file"], entry["name"], entry["field"].get<std::string>(),
                                 entry["text"]));
    };
    add(json["messages"]);
    for (const Json& record : json["reasons"])
        add(record["findings"]);
    add(json["notes"]);
    std::ranges::sort(found);
    return found;
}

/// A library with the index of its problems.
struct Indexed {
    Indexed(const KindEntry& kind, std::string game)
        : Entry(kind), Game(std::move(game)), Records(*kind.Kind) {
        BuildCatalogues();
        Changes.OnChange([this](const Edits::Change& change) { Index.Follow(change); });
        Read();
    }
    void Read() {
        std::vector<Problem> found;
        LoadRequest request;
        request.Folder = Game + "/" + std::string(Entry.Folder);
        request.OwnFile = Entry.OwnFile;
        request.Problems = [&](const Problem& problem) { found.push_back(problem); };
        Changes.Reread([&] {
            Records.Clear();
            if (Entry.MakeAdmission)
                Records.Admit = Entry.MakeAdmission();
            Records.Load(request);
        });
        Index.Begin(Game + "/");
        Index.SetFound(std::move(found));
    }
    void Finish() {
        while (!Index.Work(std::chrono::microseconds(0))) {
        }
    }
    [[nodiscard]] Strings Problems() const {
        Strings found;
        for (const ProblemIndex::HolderPtr& holder : Index.All())
            for (const Problem& problem : holder->Problems)
                found.push_back(Told(NameOf(problem.Level), problem.Rule, problem.File, problem.Record,
                                     problem.Field, CodePage::ToUtf8(problem.Text)));
        std::ranges::sort(found);
        return found;
    }

    const KindEntry& Entry;
    std::string Game;
    Library Records;
    Edits Changes{Records};
    ProblemIndex Index{Records};
};

TEST(Problems, OfTheSampleAreThoseOfItsCheck) {
    for (const KindEntry& kind : Kinds()) {
        Indexed indexed(kind, VELMORA_SAMPLE);
        indexed.Finish();
        EXPECT_EQ(indexed.Problems(), Checked(VELMORA_SAMPLE, kind));
    }
}

class RandomProblems : public ::testing::Test {
  protected:
    std::size_t Roll(std::size_t sides) { return random() % sides; }
    std::string AnyText() {
        static const Strings texts{"", "Hm.", "100% %s", "%s %s %s", std::string(250, 'x')};
        return texts[Roll(texts.size())];
    }
    void Spoil(Record& record) {
        auto& event = static_cast<clsEvent&>(record);
        event.Description = AnyText();
        event.EvilOption = AnyText();
        event.Image = Roll(3) == 0 ? "Gfx\\\\Q.pcx" : "Gfx\\\\P.pcx";
        event.DescStr01 = static_cast<std::int32_t>(Roll(3));
        event.EvilOptStr02 = static_cast<std::int32_t>(Roll(3));
        event.IsDirty = true;
        event.IsBeingAdded = false;
    }
    /// One change of one to many records, or a step back or forth.
    void Change(Indexed& indexed) {
        Library& records = indexed.Records;
        Edits::Step step(records, "change");
        const std::size_t first = Roll(records.Count());
        switch (Roll(7)) {
        case 0:
            Spoil(step.Add("New" + std::to_string(made++), indexed.Game + "/Data/", "B.event"));
            break;
        case 1:
            step.Remove(records.NameOf(records.At(first)));
            break;
        case 2:
            return indexed.Changes.Undo();
        case 3:
            return indexed.Changes.Redo();
        case 4:
            return indexed.Changes.RenameFile(records.At(first).ShortName, Roll(2) ? "A.event" : "C.event");
        default:
            for (std::size_t i = first; i < records.Count() && i < first + (Roll(4) ? 1 : 200); ++i)
                Spoil(step.Change(records.NameOf(records.At(i))));
        }
        indexed.Changes.Do(std::move(step));
    }

    std::mt19937 random{11};
    int made = 0;
};

TEST_F(RandomProblems, FollowEveryChange) {
    GameFolder game;
    std::string text;
    for (int i = 0; i < 120; ++i)
        text += GameFolder::Event("Raid" + std::to_string(i)) + (i % 50 == 0 ? "  Nonsense 1\r\n" : "");
    game.Write("Data/A.event", text);
    Indexed indexed(Kinds().front(), game.Typed());
    for (int round = 0; round < 8; ++round) {
        for (int i = 0; i < 8; ++i) {
            Change(indexed);
            indexed.Index.Work(std::chrono::microseconds(0)); // the rest is left to the next round
        }
        indexed.Finish();
        const Strings known = indexed.Problems();
        indexed.Changes.Write(indexed.Game + "/Data/", indexed.Records.FilesToWrite());
        if (round == 4)
            game.Write("GFX/Q.pcx", "picture"); // a new one counts from the next change of its records on
        indexed.Read();
        indexed.Finish();
        EXPECT_EQ(indexed.Problems(), Checked(indexed.Game, Kinds().front()));
        if (round < 4) {
            EXPECT_TRUE(std::ranges::includes(known, indexed.Problems())) << "they were known before, too";
        }
    }
}

TEST(IgnoreFile, HidesOneOfOneFileAndOfAll) {
    GameFolder game;
    const auto event = [](const char* name) {
        clsEvent bad = SoundEvent(name);
        bad.Title.clear();
        return bad.GenerateEventString(false);
    };
    game.Write("Data/A.event", event("One") + event("Two"));
    game.Write("Data/My own #1.event", event("Three") + "  Say \"so\"\r\n");
    const auto left = [&](const char* option = "--format=text") {
        const CliRun run("check", game.Typed(), option);
        std::string names;
        for (const std::string& line : run.Lines())
            for (const char* name : {"One", "Two", "Three", "Say"})
                if (line.find(name) != std::string::npos)
                    names += name;
        return names + " " + std::to_string(run.Status) + " " + run.Err;
    };
    EXPECT_EQ(left(), "SayOneTwoThree 1 ");
    IgnoreFile file;
    file.Read(game.Path());
    const std::string kept = "; not understood\nrule:no-titel # typed\n\n# a remark\nrule:no-image text:\"x";
    game.Write("velwriter.ignore", kept);
    const Problem two{"no-title", "No Title.", Severity::Error, "Title", "Two", "event", "A.event"};
    Problem three = two;
    three.File = "my own #1.EVENT";
    file.Hide(two, IgnoreFile::Scope::One);
    EXPECT_THAT(left(), HasSubstr("SayOneThree 1 "));
    file.Hide(three, IgnoreFile::Scope::InFile);
    EXPECT_THAT(left(), HasSubstr("SayOne 1 "));
    const Problem say = Indexed(Kinds().front(), game.Typed()).Index.Of("")->Problems.at(0);
    file.Hide(say, IgnoreFile::Scope::One);
    EXPECT_THAT(left(), HasSubstr("One 1 "));
    file.Hide(two, IgnoreFile::Scope::Everywhere);
    const std::string broken = left();
    EXPECT_THAT(broken, ::testing::StartsWith(" 0 "));
    for (const char* named : {".ignore:1: ", ".ignore:2: This line hides nothing: there is no rule no-titel",
                              ".ignore:5: This line hides nothing: text: a quote is not closed"})
        EXPECT_THAT(broken, HasSubstr(named));
    EXPECT_THAT(left("--no-ignore-file"), "SayOneTwoThree 1 ");
    EXPECT_EQ(file.Broken().size(), 3u);
    file.Show(two);
    file.Show(three);
    file.Show(say);
    EXPECT_EQ(game.Read("velwriter.ignore"), kept + "\r\n");
}

} // namespace
} // namespace velmora
