#include "Fault.h"
#include "ScratchRegistry.h"
#include "platform/Process.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace velmora {
namespace {

using namespace std::string_literals;
namespace fs = std::filesystem;

constexpr std::uint32_t Machine = Registry::LocalMachine;
const RegistryValue One{RegistryType::Sz, "1\0"s};

class RegistryPosixTest : public ::testing::Test {
  protected:
    [[nodiscard]] std::string Read(const std::string& name, const std::string& key = "Software\\K") const {
        const auto value = scratch.Host->Read(Machine, key, name);
        return value ? value->Bytes.substr(0, value->Bytes.find('\0')) : "nothing";
    }

    /// Has a compatibility prefix whose registry holds one key.
    void HavePrefix(const std::string& key, const std::string& lines) const {
        fs::create_directories(prefix / "dosdevices");
        fs::create_directories(prefix / "drive_c/Games");
        fs::create_directory_symlink("../drive_c", prefix / "dosdevices/c:");
        fs::create_directory_symlink("/", prefix / "dosdevices/z:");
        scratch.Folder.Write(".wine/system.reg", "WINE REGISTRY Version 2\n\n" + key + " 170\n" + lines);
        SetEnvironment("WINEPREFIX", Files::PathText(prefix));
    }

    ScratchRegistry scratch;
    const fs::path prefix = fs::canonical(scratch.Folder.Host()) / ".wine";
    const std::string driveC = Files::PathText(prefix / "drive_c") + '/';
};

TEST_F(RegistryPosixTest, KeepsAReadableFileAndItsBrokenLines) {
    scratch.Folder.Write("registry.reg", "REGEDIT4\n[HKEY_LOCAL_MACHINE\\K]\nwhat is this\n");
    scratch.Host->CreateKey(Machine, "L\\M");
    EXPECT_TRUE(scratch.Host->Write(Machine, "K", "x", One));
    EXPECT_TRUE(scratch.Host->Write(Machine, "L\\M", "Path", {RegistryType::Sz, "/games/\0"s}));
    EXPECT_EQ(scratch.Folder.Read("registry.reg"),
              "REGEDIT4\r\n[HKEY_LOCAL_MACHINE\\K]\r\nwhat is this\r\n\"x\"=\"1\"\r\n\r\n"
              "[HKEY_LOCAL_MACHINE\\L\\M]\r\n\"Path\"=\"/games/\"\r\n");
    EXPECT_EQ(scratch.Host->BrokenLines(), std::vector{scratch.Folder / "registry.reg" + ":3: what is this"});
}

TEST_F(RegistryPosixTest, LivesInTheConfigurationFolder) {
    SetEnvironment("VELMORA_REGISTRY", "");
    SetEnvironment("XDG_CONFIG_HOME", scratch.Folder / "config");
    EXPECT_EQ(HostRegistry()->CreateKey(Machine, "K"), Registry::Created::New);
    ::unsetenv("XDG_CONFIG_HOME");
    EXPECT_TRUE(scratch.Folder.Has("config/VelmoraWriter/registry.reg"));
}

TEST_F(RegistryPosixTest, FailsWithoutHarmToTheFile) {
    scratch.Host->CreateKey(Machine, "K");
    {
        const Fault fault("write", 0, EIO);
        EXPECT_EQ(scratch.Host->CreateKey(Machine, "L"), Registry::Created::Failed);
        EXPECT_FALSE(scratch.Host->DeleteKey(Machine, "K"));
    }
    EXPECT_TRUE(scratch.Host->KeyExists(Machine, "K"));
    SetEnvironment("VELMORA_REGISTRY", scratch.Folder.Path());
    EXPECT_FALSE(HostRegistry()->Write(Machine, "K", "x", One));
    EXPECT_FALSE(HostRegistry()->Read(Machine, "K", "x"));
}

TEST_F(RegistryPosixTest, LosesNothingWhenTwoProgramsWrite) {
    scratch.Host->CreateKey(Machine, "K");
    constexpr int writes = 40;
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    bool well = true;
    for (int i = 0; i < writes; ++i)
        well =
            scratch.Host->Write(Machine, "K", (child == 0 ? "child" : "parent") + std::to_string(i), One) &&
            well;
    if (child == 0)
        ::_exit(well ? 0 : 1);
    EXPECT_TRUE(well);
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    for (int i = 0; i < writes; ++i)
        for (const std::string who : {"child", "parent"})
            EXPECT_EQ(Read(who + std::to_string(i), "K"), "1") << i;
}

TEST_F(RegistryPosixTest, FindsTheGameInACompatibilityPrefixUnlessItsOwnFileHasIt) {
    HavePrefix(R"([Software\\K])", R"("Path"="C:\\Games\\Velmora\\"
"Gone"="c:\\Nowhere"
"Root"="Z:\\usr"
"Other"="Q:\\x"
"Relative"="C:x"
"Expand"=str(2):"C:\\Games"
"Text"="no path")");
    using Case = std::pair<const char*, std::string>;
    for (const auto& [name, value] :
         {Case{"Path", driveC + "Games/Velmora/"}, Case{"Gone", driveC + "Nowhere"}, Case{"Root", "/usr"},
          Case{"Other", "Q:\\x"}, Case{"Relative", "C:x"}, Case{"Expand", driveC + "Games"},
          Case{"Text", "no path"}, Case{"Missing", "nothing"}})
        EXPECT_EQ(Read(name), value);
    EXPECT_FALSE(scratch.Host->Read(Registry::CurrentUser, "Software\\K", "Path")) << "it is no user's";
    EXPECT_FALSE(scratch.Host->Write(Machine, "Software\\K", "Path", One)) << "it is read only";
    EXPECT_EQ(scratch.Host->CreateKey(Machine, "Software\\K"), Registry::Created::New);
    EXPECT_EQ(Read("Path"), driveC + "Games/Velmora/");
    EXPECT_TRUE(scratch.Host->Write(Machine, "Software\\K", "Path", One));
    EXPECT_EQ(Read("Path"), "1");
}

TEST_F(RegistryPosixTest, FindsA32BitGameInTheHomeFolderWithoutAPrefixNamed) {
    HavePrefix(R"([Software\\Wow6432Node\\K])", R"("Path"="C:\\Games")");
    const std::string home = Process::Environment("HOME");
    SetEnvironment("WINEPREFIX", "");
    SetEnvironment("HOME", scratch.Folder.Path());
    EXPECT_TRUE(scratch.Host->KeyExists(Machine, "Software\\K"));
    EXPECT_EQ(Read("Path"), driveC + "Games");
    SetEnvironment("HOME", home);
}

} // namespace
} // namespace velmora
