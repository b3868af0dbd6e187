#include "records/Losses.h"

#include "LibraryFixture.h"
#include "events/clsEvent.h"
#include "records/TextDiff.h"

namespace velmora {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class LossesTest : public LibraryFixture {
  protected:
    LossesTest() : LibraryFixture(EventKind, "MyEvents.event") {}

    std::vector<std::string> LossesOf(const std::string& text) {
        Put("a.event", text);
        EXPECT_TRUE(Load());
        return library.LossesOf("a.event", Get("a.event")).Texts();
    }
    /// A block as the editor writes it, with another line before its end.
    static std::string Whole(const std::string& name, const std::string& line = {}) {
        clsEvent event;
        event.EventName = name;
        std::string text = event.GenerateEventString(false);
        text.insert(text.rfind("ENDEVENT"), line);
        return text;
    }
};

TEST_F(LossesTest, TellWhatARewriteDrops) {
    EXPECT_THAT(LossesOf(Whole("One") + Whole("Two")), IsEmpty());
    using Case = std::pair<const char*, std::vector<std::string>>;
    const std::string again = "1 value given again in its block";
    for (const auto& [line, losses] :
         {Case{"// by hand", {"1 comment"}}, Case{"Colour mauve\r\nShape round", {"2 unrecognized lines"}},
          Case{"Title \"a\"", {again}}, Case{"Title \"a\" b", {"1 text after a closing quote", again}},
          Case{"Probability 1 2", {"1 value with blanks in it", again}},
          Case{"Probability 12.7", {"1 number cut or rounded", again}},
          Case{"Probability 12x", {"1 number cut or rounded", again}}})
        EXPECT_EQ(LossesOf(Whole("One", std::string(line) + "\r\n") + Whole("Two")), losses);
}

TEST_F(LossesTest, TellWhatReadingRepaired) {
    EXPECT_THAT(
        LossesOf(Whole("One") + Whole("9Lives") + Whole("ONE") + "EVENT Four\r\nENDEVENT\r\nEVENT Five\r\n"),
        ElementsAre("1 name made legal",
                    std::to_string(EventKind.Fields.size()) + " values carried over from an earlier block",
                    "1 record dropped for its name", "1 block without its end"));
}

TEST_F(LossesTest, AreNoRecordsThatMoveToAnotherFile) {
    Put("a.event", Whole("One") + Whole("Two"));
    ASSERT_TRUE(Load());
    Edits::Step step(library, "moving");
    step.Move("One", data, "a.event", "b.event");
    edits.Do(std::move(step));
    const std::string foreign = Whole("One", "// by hand\r\n") + Whole("Two") + Whole("Foreign");
    EXPECT_THAT(library.LossesOf("a.event", foreign).Texts(),
                ElementsAre("1 comment", "1 record dropped for its name"));
}

TEST_F(LossesTest, StandInTheDetailsOfAWrite) {
    Put("a.event", Whole("One", "// by hand\r\n"));
    ASSERT_TRUE(Load());
    EXPECT_THAT(WriteDetails(library, data, {"a.event"}), HasSubstr("a.event\r  lost: 1 comment\r@ "));
    edits.ToggleDeletion("One");
    EXPECT_THAT(WriteDetails(library, data, {"a.event"}),
                ::testing::StartsWith("a.event: will be deleted\r  lost: 1 comment\r@ 1\r- //"));
}

TEST_F(LossesTest, AreKeptInADatedCopy) {
    Put("a.event", Whole("One"));
    ASSERT_TRUE(Load());
    Title("One", "New");
    library.WriteFiles(data, {"a.event"});
    Put("a.event", "");
    library.WriteFiles(data, {"a.event"});
    EXPECT_THAT(Files::ListFiles(backups), IsEmpty()) << "nothing was dropped";
    const std::string foreign = Whole("Foreign");
    Put("a.event", foreign);
    library.WriteFiles(data, {"a.event"});
    const std::vector<std::string> copies = Files::ListFiles(backups);
    ASSERT_EQ(copies.size(), 1u);
    EXPECT_EQ(Files::ReadWhole(backups + copies[0]), foreign);
    Files::DeleteFile(backups + copies[0]);

    for (int day = 10; day < 35; ++day)
        Files::ReplaceSafely(backups + "a.201001" + std::to_string(day) + "-120000.event", "old");
    Files::ReplaceSafely(backups + "a.b.20100101-120000.event", "another file's");
    const std::string commented = Whole("One", "// by hand\r\n");
    Put("a.event", commented);
    ASSERT_TRUE(Load());
    library.WriteFiles(data, {"a.event"});
    std::vector<std::string> kept = Files::ListFiles(backups);
    std::sort(kept.begin(), kept.end());
    ASSERT_EQ(kept.size(), 21u);
    EXPECT_EQ(kept.front(), "a.20100116-120000.event");
    EXPECT_EQ(Files::ReadWhole(backups + kept[19]), commented);
    EXPECT_EQ(kept.back(), "a.b.20100101-120000.event");

    for (int day = 10; day < 30; ++day)
        Files::ReplaceSafely(backups + "a.299901" + std::to_string(day) + "-120000.event",
                             "from a wrong clock");
    Put("a.event", commented);
    ASSERT_TRUE(Load());
    const std::vector<std::string> made = library.WriteFiles(data, {"a.event"});
    ASSERT_EQ(made.size(), 1u);
    EXPECT_EQ(Files::ReadWhole(made[0]), commented);
    EXPECT_EQ(Files::ListFiles(backups).size(), 21u);
}

TEST(TextDiff, ListsTheLinesThatDiffer) {
    EXPECT_EQ(DiffLines("a\nb\nc\n", "a\r\nx\r\nc\r\n"), "@ 2\r- b\r+ x\r");
    EXPECT_EQ(DiffLines("a\nb\nc\nd\n", "a\nc\nd\ne\n"), "@ 2\r- b\r@ 5\r+ e\r");
    std::string many;
    for (int i = 0; i < 3000; ++i)
        many += std::to_string(i) + '\n';
    EXPECT_EQ(DiffLines(many, many), "");
    EXPECT_THAT(DiffLines(many, ""), ::testing::EndsWith("... and 2700 more lines\r"));
    EXPECT_EQ(DiffLines(many, "x\n" + many + "y\n"), "@ 1\r+ x\r@ 3001\r+ y\r");
}

} // namespace
} // namespace velmora
