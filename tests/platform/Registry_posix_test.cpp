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
const std::string Velmora = "Software\\Corvane\\Morvath.Net\\Velmora";
const RegistryValue One{RegistryType::Sz, "1\0"s};

std::string TextOf(const std::optional<RegistryValue>& value) {
    return value ? value->Bytes.substr(0, value->Bytes.find('\0')) : "nothing";
}

TEST(RegistryPosix, KeepsAReadableFileAndItsBrokenLines) {
    const ScratchRegistry scratch;
    scratch.Folder.Write("registry.reg", "REGEDIT4\n[HKEY_LOCAL_MACHINE\\K]\nwhat is this\n");
    scratch.Host->CreateKey(Machine, Velmora);
    EXPECT_TRUE(scratch.Host->Write(Machine, "K", "x", One));
    EXPECT_TRUE(scratch.Host->Write(Machine, Velmora, "Path", {RegistryType::Sz, "/games/\0"s}));
    EXPECT_EQ(
        scratch.Folder.Read("registry.reg"),
        "REGEDIT4\r\n[HKEY_LOCAL_MACHINE\\K]\r\nwhat is this\r\n\"x\"=\"1\"\r\n\r\n[HKEY_LOCAL_MACHINE\\" +
            Velmora + "]\r\n\"Path\"=\"/games/\"\r\n");
    EXPECT_EQ(scratch.Host->BrokenLines(), std::vector{scratch.Folder / "registry.reg" + ":3: what is this"});
}

TEST(RegistryPosix, LivesInTheConfigurationFolder) {
    const ScratchRegistry scratch;
    SetEnvironment("VELMORA_REGISTRY", "");
    SetEnvironment("XDG_CONFIG_HOME", scratch.Folder / "config");
    EXPECT_EQ(HostRegistry()->CreateKey(Machine, Velmora), Registry::Created::New);
    ::unsetenv("XDG_CONFIG_HOME");
    EXPECT_TRUE(scratch.Folder.Has("config/VelmoraWriter/registry.reg"));
}

TEST(RegistryPosix, FailsWithoutHarmToTheFile) {
    const ScratchRegistry scratch;
    scratch.Host->CreateKey(Machine, "K");
    const std::string before = scratch.Folder.Read("registry.reg");
    {
        const Fault fault("write", 0, EIO);
        EXPECT_EQ(scratch.Host->CreateKey(Machine, "L"), Registry::Created::Failed);
        EXPECT_FALSE(scratch.Host->DeleteKey(Machine, "K"));
    }
    EXPECT_EQ(scratch.Folder.Read("registry.reg"), before);
    SetEnvironment("VELMORA_REGISTRY", scratch.Folder.Path());
    EXPECT_FALSE(HostRegistry()->Write(Machine, "K", "x", One));
    EXPECT_FALSE(HostRegistry()->Read(Machine, "K", "x"));
}

TEST(RegistryPosix, LosesNothingWhenTwoProgramsWrite) {
    const ScratchRegistry scratch;
    scratch.Host->CreateKey(Machine, "K");
    constexpr int Writes = 40;
    const auto writeAll = [&](const std::string& who) {
        bool well = true;
        for (int i = 0; i < Writes; ++i)
            well = scratch.Host->Write(Machine, "K", who + std::to_string(i), One) && well;
        return well;
    };
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0)
        ::_exit(writeAll("child") ? 0 : 1);
    EXPECT_TRUE(writeAll("parent"));
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    for (int i = 0; i < Writes; ++i)
        for (const std::string who : {"child", "parent"})
            EXPECT_EQ(TextOf(scratch.Host->Read(Machine, "K", who + std::to_string(i))), "1") << i;
}

/// A compatibility prefix whose registry holds one key.
class Prefix {
  public:
    explicit Prefix(const std::string& lines, const std::string& key = Velmora) {
        fs::create_directories(scratch.Folder.Host() / "prefix/dosdevices");
        fs::create_directories(scratch.Folder.Host() / "prefix/drive_c/Games");
        fs::create_directory_symlink("../drive_c", scratch.Folder.Host() / "prefix/dosdevices/c:");
        fs::create_directory_symlink("/", scratch.Folder.Host() / "prefix/dosdevices/z:");
        std::string escaped;
        for (const char c : key)
            escaped += c == '\\' ? "\\\\" : std::string(1, c);
        scratch.Folder.Write("prefix/system.reg",
                             "WINE REGISTRY Version 2\n\n[" + escaped + "] 170\n#time=1\n" + lines + "\n");
        SetEnvironment("WINEPREFIX", scratch.Folder / "prefix");
    }

    [[nodiscard]] std::string Read(const std::string& name) const {
        return TextOf(scratch.Host->Read(Machine, Velmora, name));
    }
    /// A path on drive C as this host spells it.
    [[nodiscard]] std::string OnDriveC(const std::string& name) const {
        return Files::PathText(fs::canonical(scratch.Folder.Host())) + "/prefix/drive_c/" + name;
    }

    ScratchRegistry scratch;
};

TEST(RegistryPosix, FindsTheGameInACompatibilityPrefix) {
    const std::string lines = R"("Path"="C:\\Games\\Velmora\\"
"Gone"="c:\\Nowhere"
"Root"="Z:\\usr"
"Other"="Q:\\x"
"Relative"="C:x"
"Expand"=str(2):"C:\\Games"
"Text"="no path")";
    for (const std::string& key : {Velmora, "Software\\Wow6432Node" + Velmora.substr(8)}) {
        const Prefix prefix(lines, key);
        EXPECT_TRUE(prefix.scratch.Host->KeyExists(Machine, Velmora));
        using Case = std::pair<const char*, std::string>;
        for (const auto& [name, value] :
             {Case{"Path", prefix.OnDriveC("Games/Velmora/")}, Case{"Gone", prefix.OnDriveC("Nowhere")},
              Case{"Root", "/usr"}, Case{"Other", "Q:\\x"}, Case{"Relative", "C:x"},
              Case{"Expand", prefix.OnDriveC("Games")}, Case{"Text", "no path"}, Case{"Missing", "nothing"}})
            EXPECT_EQ(prefix.Read(name), value);
    }
}

TEST(RegistryPosix, PrefersItsOwnFileToThePrefix) {
    const Prefix prefix(R"("Path"="C:\\Games")");
    Registry& registry = *prefix.scratch.Host;
    EXPECT_FALSE(registry.Write(Machine, Velmora, "Path", One)) << "the prefix is read only";
    EXPECT_EQ(registry.CreateKey(Machine, Velmora), Registry::Created::New);
    EXPECT_EQ(prefix.Read("Path"), prefix.OnDriveC("Games"));
    EXPECT_TRUE(registry.Write(Machine, Velmora, "Path", One));
    EXPECT_EQ(prefix.Read("Path"), "1");
    EXPECT_FALSE(registry.Read(Registry::CurrentUser, Velmora, "Path")) << "the prefix is no user's";
}

TEST(RegistryPosix, LooksIntoTheHomeFolderWithoutAPrefixNamed) {
    const Prefix prefix(R"("Path"="C:\\Games")");
    const std::string home = Process::Environment("HOME");
    fs::rename(prefix.scratch.Folder.Host() / "prefix", prefix.scratch.Folder.Host() / ".wine");
    SetEnvironment("WINEPREFIX", "");
    SetEnvironment("HOME", prefix.scratch.Folder.Path());
    EXPECT_EQ(prefix.Read("Path"),
              Files::PathText(fs::canonical(prefix.scratch.Folder.Host())) + "/.wine/drive_c/Games");
    SetEnvironment("HOME", home);
}

} // namespace
} // namespace velmora
