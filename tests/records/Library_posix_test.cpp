#include "records/Library.h"

#include "FailureOf.h"
#include "LibraryFixture.h"
#include "events/clsEvent.h"

namespace velmora {
namespace {

using ::testing::ElementsAre;

class LibraryOnPosixTest : public LibraryFixture {
  protected:
    LibraryOnPosixTest() : LibraryFixture(EventKind, "MyEvents.event") {}
};

TEST_F(LibraryOnPosixTest, EndsLoadingAtAFileThatCannotBeRead) {
    // More files than are read ahead, on either side.
    for (const std::string number : {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"})
        Put("a" + number + ".event", Block("Event" + number));
    std::filesystem::create_symlink("nowhere", temp.Path() + "Data/a5b.event");
    EXPECT_THAT(LoadFailing(), ElementsAre(::testing::StartsWith("53 "), "frmEvents_Form_Load",
                                           "frmEvents_LoadCurrentEvents", "frmEvents_ParseOutEventFile"));
    EXPECT_THAT(Names(), ElementsAre("Event0 1", "Event1 2", "Event2 3", "Event3 4", "Event4 5", "Event5 6"));
}

TEST_F(LibraryOnPosixTest, WritesNoneOfTwoFilesThatAreOneToTheGame) {
    Put("a.event", Block("One"));
    const std::string twin = Block("Two");
    temp.Write("Data/A.Event", twin);
    ASSERT_TRUE(Load());
    EXPECT_THAT(texts, ElementsAre("a.event:0: The files A.Event and a.event are one file to the game.  "
                                   "Neither will be written to. [case-twin-files]"));
    library.At(0).IsDirty = library.At(1).IsDirty = true;
    EXPECT_EQ(FailureOf([this] { library.WriteFiles(data, library.FilesToWrite()); }).Number,
              FailureAlreadyReported);
    EXPECT_EQ(Files::ListFiles(data).size(), 2u);
    EXPECT_EQ(temp.Read("Data/A.Event"), twin);
}

} // namespace
} // namespace velmora
