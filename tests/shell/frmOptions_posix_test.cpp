#include "OptionsFixture.h"

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
    EXPECT_TRUE(prompts.Transcript.empty());
    EXPECT_EQ(Written(), IniOf(temp / "Game/", "MyEvents", "MyUPIssues", "MySBModules", "TRUE", "0"));
}

} // namespace
} // namespace velmora
