#include "platform/Registry.h"

#include "platform/CodePage.h"
#include "platform/Failure.h"
#include "platform/FileLock.h"
#include "platform/Files.h"
#include "platform/PrefixRegistry.h"
#include "platform/Process.h"
#include "platform/RegistryFile.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <utility>

namespace velmora {

namespace {

namespace fs = std::filesystem;

/// Where a user's Windows programs live on this host.
class CompatibilityPrefix {
  public:
    CompatibilityPrefix() : folder(Process::Environment("WINEPREFIX")) {
        const std::string home = Process::Environment("HOME");
        if (folder.empty() && !home.empty())
            folder = Files::Join(home, ".wine");
    }

    [[nodiscard]] bool KeyExists(std::string_view key) const {
        const std::string text = Text();
        return PrefixRegistry::KeyExists(text, key) || PrefixRegistry::KeyExists(text, Key32(key));
    }

    [[nodiscard]] std::optional<RegistryValue> Read(std::string_view key, std::string_view name) const {
        const std::string text = Text();
        auto value = PrefixRegistry::Read(text, key, name);
        if (!value)
            value = PrefixRegistry::Read(text, Key32(key), name);
        if (value && (value->Type == RegistryType::Sz || value->Type == RegistryType::ExpandSz))
            value->Bytes = HostPathOf(value->Bytes);
        return value;
    }

  private:
    [[nodiscard]] std::string Text() const {
        const std::string file = Files::Join(folder, "system.reg");
        try {
            return !folder.empty() && Files::FileExists(file) ? Files::ReadWhole(file) : std::string();
        } catch (const Failure&) {
            return {};
        }
    }

    /// Where a 32-bit program's keys are kept on a 64-bit system.
    static std::string Key32(std::string_view key) {
        constexpr std::string_view software = "Software\\";
        const bool inside = CodePage::EqualNoCase(key.substr(0, software.size()), software);
        return inside ? "Software\\Wow6432Node\\" + std::string(key.substr(software.size())) : std::string();
    }

    /// A path on one of the prefix's drives as this host knows it; other texts stay.
    [[nodiscard]] std::string HostPathOf(const std::string& text) const {
        if (text.size() < 3 || text[1] != ':' || text[2] != '\\')
            return text;
        const char drive = static_cast<char>(CodePage::Fold(static_cast<unsigned char>(text[0])));
        std::error_code error;
        const std::string link = Files::Join(folder, std::string("dosdevices/") + drive + ':');
        const fs::path root = fs::canonical(Files::HostPath(link), error);
        if (error)
            return text;
        std::string rest = text.substr(3);
        std::replace(rest.begin(), rest.end(), '\\', '/');
        return Files::Join(Files::PathText(root), rest);
    }

    std::string folder;
};

std::string FullKey(std::uint32_t root, std::string_view key) {
    constexpr std::array names{"HKEY_CLASSES_ROOT", "HKEY_CURRENT_USER", "HKEY_LOCAL_MACHINE", "HKEY_USERS"};
    const std::uint32_t index = root - 0x80000000u;
    if (index >= names.size())
        return {};
    return key.empty() ? names[index] : std::string(names[index]) + '\\' + std::string(key);
}

/// A registry kept in a file of the user's, read anew for each operation: other programs change it too.
class FileRegistry : public Registry {
  public:
    explicit FileRegistry(std::string registryFile) : file(std::move(registryFile)) {}

    bool KeyExists(std::uint32_t root, std::string_view key) override {
        const std::string full = FullKey(root, key);
        return !full.empty() &&
               (Readable().KeyExists(full) || (root == LocalMachine && CompatibilityPrefix().KeyExists(key)));
    }

    Created CreateKey(std::uint32_t root, std::string_view key) override {
        return Change([&](RegistryFile& registry) { return registry.CreateKey(FullKey(root, key)); },
                      Created::Failed);
    }

    bool DeleteKey(std::uint32_t root, std::string_view key) override {
        return Change([&](RegistryFile& registry) { return registry.DeleteKey(FullKey(root, key)); }, false);
    }

    bool Write(std::uint32_t root, std::string_view key, std::string_view name,
               const RegistryValue& value) override {
        return Change(
            [&](RegistryFile& registry) { return registry.SetValue(FullKey(root, key), name, value); },
            false);
    }

    std::optional<RegistryValue> Read(std::uint32_t root, std::string_view key,
                                      std::string_view name) override {
        const RegistryFile registry = Readable();
        if (const RegistryValue* const value = registry.Find(FullKey(root, key), name))
            return *value;
        return root == LocalMachine ? CompatibilityPrefix().Read(key, name) : std::nullopt;
    }

    std::vector<std::string> BrokenLines() override {
        const RegistryFile registry = Readable();
        std::vector<std::string> lines;
        for (const RegistryFile::BrokenLine& line : registry.BrokenLines())
            lines.push_back(file + ':' + std::to_string(line.Number) + ": " + line.Text);
        return lines;
    }

  private:
    [[nodiscard]] std::string Text() const {
        return Files::FileExists(file) ? Files::ReadWhole(file) : std::string();
    }

    [[nodiscard]] RegistryFile Readable() const {
        try {
            return RegistryFile(Text());
        } catch (const Failure&) {
            return RegistryFile();
        }
    }

    /// Makes a change that no other program can come between; `failed` when the file cannot be changed.
    template <class Work, class Result>
    Result Change(const Work& work, Result failed) {
        try {
            Files::CreateFolder(Files::FolderOf(file));
            // No other program comes between reading, changing and writing.
            const FileLock lock(file + ".lock");
            const std::string before = Text();
            RegistryFile registry(before);
            const std::string readBack = registry.Text();
            const Result result = work(registry);
            if (registry.Text() != readBack)
                Files::ReplaceSafely(file, registry.Text());
            return result;
        } catch (const std::exception&) {
            return failed;
        }
    }

    std::string file;
};

} // namespace

std::unique_ptr<Registry> HostRegistry() {
    std::string file = Process::Environment("VELMORA_REGISTRY");
    if (file.empty())
        file = Files::Join(Process::UserConfigFolder(), "registry.reg");
    return std::make_unique<FileRegistry>(std::move(file));
}

} // namespace velmora
