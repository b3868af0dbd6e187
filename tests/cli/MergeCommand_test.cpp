#include "CliRun.h"
#include "GameFolder.h"
#include "platform/CodePage.h"

#include <gmock/gmock.h>

namespace velmora {
namespace {

using ::testing::HasSubstr;

std::string Raid(const std::string& title, const std::string& rest = {}) {
    return "EVENT Raid\r\nTitle \"" + title + "\"\r\nDescription \"Caf\xE9\"\r\n" + rest + "ENDEVENT\r\n";
}

TEST(MergeCommand, TellsConflictsAndNewProblems) {
    GameFolder game;
    const auto merge = [&](const std::string& base, const std::string& ours, const std::string& theirs) {
        game.Write("Data/base.event", base);
        game.Write("Data/ours.event", ours);
        game.Write("Data/theirs.event", theirs);
        return CliRun("merge", game.Typed("Data/base.event"), game.Typed("Data/ours.event"),
                      game.Typed("Data/theirs.event"), "-o", game.Typed("Data/ours.event"));
    };
    const CliRun clean = merge(Raid("a"), Raid("b"), Raid("a", "Probability 5\r\n"));
    EXPECT_EQ(clean.Status, 0) << clean.Err;
    EXPECT_THAT(game.Read("Data/ours.event"),
                ::testing::AllOf(HasSubstr("\"b\""), HasSubstr("Probability  5")));

    const CliRun both = merge(Raid("a"), Raid("b"), Raid("c"));
    EXPECT_EQ(both.Status, 1);
    EXPECT_THAT(both.Err, HasSubstr("ours.event: conflict: Raid: both sides changed Title\n"));
    const CliRun check("check", game.Typed(), "--kind", "events");
    EXPECT_THAT(check.Out,
                HasSubstr("ours.event:1: warning: A merge left a conflict here: \"<<<<<<< ours\""));
    const CliRun unsettled = merge(Raid("a"), game.Read("Data/ours.event"), Raid("c"));
    EXPECT_EQ(unsettled.Status, 2);
    EXPECT_THAT(unsettled.Err, HasSubstr("ours.event: A conflict of an earlier merge is not settled yet"));

    const std::string wild = "DescStr01 1\r\n";
    const CliRun broken =
        merge(Raid("a", wild + "GoodOption \"%s\"\r\n"), Raid("a", wild + "GoodOption \"\"\r\n"),
              Raid("a", wild + "GoodOption \"%s\"\r\nGoodOptStr01 1\r\n"));
    EXPECT_EQ(broken.Status, 1);
    EXPECT_THAT(broken.Err, HasSubstr("new: Raid: "));
}

TEST(DiffCommand, TellsWhatChangedByRecordFieldAndWord) {
    GameFolder game;
    const auto diff = [&](const std::string& before, const std::string& after, const char* format = "text") {
        game.Write("Data/a.event", before);
        game.Write("Data/b.event", after);
        return CliRun("diff", game.Typed("Data/a.event"), game.Typed("Data/b.event"), "--format", format);
    };
    const std::string other = "EVENT Other\r\nTitle \"o\"\r\nDescription \"\"\r\nENDEVENT\r\n";
    const CliRun words = diff(Raid("We are here"), Raid("We were here", "Probability 5\r\n") + other);
    EXPECT_EQ(words.Status, 1);
    EXPECT_EQ(words.Out, "~ Raid (b.event)\n    Title: We [-are -]{+were +}here\n    Probability: 0 -> 5\n"
                         "+ Other (b.event)\n");
    EXPECT_EQ(diff(Raid("a") + other, other + Raid("a")).Out, "the event records stand in another order\n");
    EXPECT_EQ(diff(Raid("a"), "// b\r\n" + Raid("a")).Out,
              "the event files differ in spacing, comments or the like only\n");
    EXPECT_EQ(diff(Raid("a"), Raid("a")).Status, 0);
    const Json json = diff(Raid("a"), Raid("\xE9"), "json").Parsed();
    EXPECT_EQ(json["records"][0]["fields"][0].dump(),
              "{\"field\":\"Title\",\"before\":\"a\",\"after\":\"é\"}");
    EXPECT_EQ(CliRun("diff", game.Typed(), game.Typed()).Status, 0);
    EXPECT_EQ(CliRun("diff", game.Typed(), game.Typed("Data/a.event")).Status, 2);
    EXPECT_THAT(CliRun("diff", game.Typed("none"), game.Typed()).Err,
                HasSubstr("none: no such file or directory"));
}

} // namespace
} // namespace velmora
