#include "records/Library.h"

#include "FailureOf.h"
#include "LibraryFixture.h"
#include "events/clsEvent.h"

namespace velmora {
namespace {

class LibraryOnPosixTest : public LibraryFixture {
  protected:
    LibraryOnPosixTest() : LibraryFixture(EventKind, "MyEvents.event") {}
};

TEST_F(LibraryOnPosixTest, WritesNoneOfTwoFilesThatAreOneToTheGame) {
    Put("a.event", Block("One"));
    const std::string twin = Block("Two");
    temp.Write("Data/A.Event", twin);
    ASSERT_TRUE(Load());
    EXPECT_THAT(texts,
                ::testing::ElementsAre("a.event:0: The files A.Event and a.event are one file to the game.  "
                                       "Neither will be written to. [case-twin-files]"));
    Edit(library.Names()[0]);
    Edit(library.Names()[1]);
    EXPECT_EQ(FailureOf([this] { library.WriteFiles(data, library.FilesToWrite()); }).Number,
              FailureAlreadyReported);
    EXPECT_EQ(Files::ListFiles(data).size(), 2u);
    EXPECT_EQ(temp.Read("Data/A.Event"), twin);
}
} // namespace
} // namespace velmora
