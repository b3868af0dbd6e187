#include "records/Library.h"

#include "LibraryFixture.h"
#include "events/clsEvent.h"

namespace velmora {
namespace {

class LibraryOnPosixTest : public LibraryFixture {
  protected:
    LibraryOnPosixTest() : LibraryFixture(EventKind, "MyEvents.event") {}
};

TEST_F(LibraryOnPosixTest, EndsLoadingAtAFileThatCannotBeRead) {
    Put("a.event", Block("One"));
    std::filesystem::create_symlink("nowhere", temp.Path() + "Data/b.event");
    const auto seen = LoadFailing();
    ASSERT_EQ(seen.size(), 4u);
    EXPECT_THAT(seen[0], ::testing::StartsWith("53 "));
    EXPECT_EQ(seen.back(), "frmEvents_ParseOutEventFile");
}

} // namespace
} // namespace velmora
