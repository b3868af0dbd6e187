#include "shell/ShellFixture.h"

#include <cstdint>
#include <filesystem>

namespace velmora {
namespace {

TEST_F(OptionsDialog, FindsTheGameInTheRegistry) {
    registry.Folder.Write("registry.reg",
                          "REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\Software\\Corvane\\Morvath.Net\\"
                          "Velmora]\r\n\"Path\"=\"" +
                              temp / "Game" + "\"\r\n");
    Show([this] {
        EXPECT_EQ(Text("txtVelmoraPath"), temp / "Game");
        Click("cmdDone");
    });
    EXPECT_THAT(prompts.Transcript, IsEmpty());
    EXPECT_EQ(Settings.GamePath, Game());
}

// Only a file with a hole can be larger than the disk it lies on.
TEST_F(Backup, IsNotBegunWithoutRoom) {
    std::filesystem::resize_file(temp / "Game/Data/A.event", std::uintmax_t{1} << 43);
    const std::string copy = BackUp(true);
    EXPECT_THAT(prompts.Transcript.back(), StartsWith("Message[Critical]: The copy needs 87960"));
    EXPECT_FALSE(Files::FolderExists(copy));
}

} // namespace
} // namespace velmora
