#include "shell/WriterFixture.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <filesystem>

namespace velmora {
namespace {

// Only a file with a hole can be larger than the disk it lies on.
TEST_F(Backup, IsNotBegunWithoutRoom) {
    std::filesystem::resize_file(temp / "Game/Data/A.event", std::uintmax_t{1} << 43);
    const std::string copy = BackUp(true);
    EXPECT_THAT(prompts.Transcript.back(), ::testing::StartsWith("Message[Critical]: The copy needs 87960"));
    EXPECT_FALSE(Files::FolderExists(copy));
}

} // namespace
} // namespace velmora
