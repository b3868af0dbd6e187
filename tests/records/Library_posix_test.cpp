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
    EXPECT_THAT(library.ChangedOutside(data).Changed, ::testing::IsEmpty());
    Edit(library.Names()[0]);
    Edit(library.Names()[1]);
    EXPECT_THAT(library.ChangedOutside(data, library.FilesToWrite()).Changed, ::testing::IsEmpty());
    EXPECT_EQ(FailureOf([this] { library.WriteFiles(data, library.FilesToWrite()); }).Number,
              FailureAlreadyReported);
    EXPECT_EQ(Files::ListFiles(data).size(), 2u);
    EXPECT_EQ(temp.Read("Data/A.Event"), twin);
}

TEST_F(LibraryOnPosixTest, ReadsNoFileWhoseNameLeadsElsewhere) {
    temp.Write("secret.event", Block("Elsewhere"));
    temp.Write("Data/..\\secret.event", Block("Inside"));
    ASSERT_TRUE(Load(true));
    EXPECT_TRUE(library.Empty());
    EXPECT_THAT(texts, ::testing::ElementsAre(::testing::StartsWith("..\\secret.event:0: ")));
    EXPECT_THAT(Files::ListFiles(backups), ::testing::IsEmpty());
}

TEST_F(LibraryOnPosixTest, BackupsOfLongNamesHaveShortOnesAndNoneIsMoreOpenThanItsFile) {
    const std::string same(244, 'a');
    for (const char* last : {"1", "2"}) {
        Put(same + "\xE9" + last + ".event", "// by hand\r\n" + Block(std::string("Event") + last));
        std::filesystem::permissions(Files::HostPath(data + same + "\xE9" + last + ".event"),
                                     std::filesystem::perms::owner_read |
                                         std::filesystem::perms::owner_write);
    }
    ASSERT_TRUE(Load(true));
    EXPECT_EQ(texts.size(), 2u);
    EXPECT_THAT(texts[0], ::testing::HasSubstr(".1stEVENT"));
    ASSERT_TRUE(Load(true));
    EXPECT_THAT(texts, ::testing::IsEmpty()) << "told when the first copy is made";
    for (const std::string& name : library.Names())
        Edit(name);
    EXPECT_EQ(library.WriteFiles(data, library.FilesToWrite()).size(), 2u);
    EXPECT_EQ(Files::ListFiles(backups).size(), 6u);
    for (const auto& copy : std::filesystem::directory_iterator(backups))
        EXPECT_EQ(copy.status().permissions(),
                  std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
}

} // namespace
} // namespace velmora
