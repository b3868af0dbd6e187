#include "records/Library.h"

#include "FailureOf.h"
#include "LibraryFixture.h"
#include "events/clsEvent.h"

#include <fstream>

namespace velmora {
namespace {

class LibraryOnPosixTest : public LibraryFixture {
  protected:
    LibraryOnPosixTest() : LibraryFixture(EventKind, "MyEvents.event") {}
};

TEST_F(LibraryOnPosixTest, EndsLoadingAtAFileThatCannotBeRead) {
    // More files than are read ahead, on either side.
    for (const char number : std::string("0123456789"))
        Put(std::string("a") + number + ".event", Block(std::string("Event") + number));
    std::filesystem::create_symlink("nowhere", temp.Path() + "Data/a5b.event");
    const auto seen = LoadFailing();
    ASSERT_EQ(library.Records.Count(), 6u);
    for (std::size_t i = 0; i < 6; ++i)
        EXPECT_EQ(library.NameOf(library.At(i)), "Event" + std::to_string(i));
    ASSERT_EQ(seen.size(), 4u);
    EXPECT_THAT(seen[0], ::testing::StartsWith("53 "));
    EXPECT_EQ(seen.back(), "frmEvents_ParseOutEventFile");
}

TEST_F(LibraryOnPosixTest, WritesNoneOfTwoFilesThatAreOneToTheGame) {
    Put("a.event", Block("One"));
    const std::string twin = Block("Two");
    std::ofstream(data + "A.Event", std::ios::binary) << twin;
    ASSERT_TRUE(Load());
    EXPECT_THAT(texts,
                ::testing::ElementsAre("a.event:0: The files A.Event and a.event are one file to the game.  "
                                       "Neither will be written to. [case-twin-files]"));
    library.At(0).IsDirty = library.At(1).IsDirty = true;
    EXPECT_EQ(FailureOf([this] { library.WriteFiles(data, library.FilesToWrite()); }).Number,
              FailureAlreadyReported);
    EXPECT_EQ(Files::ListFiles(data).size(), 2u);
    std::ifstream kept(data + "A.Event", std::ios::binary);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(kept), {}), twin);
}

} // namespace
} // namespace velmora
