#pragma once

#include "platform/Files.h"

#include <array>
#include <string>

namespace velmora {

/// The settings record: filled at start-up and whenever the options dialog closes.
struct SettingsRecord {
    std::string IniFilePath;
    std::string GamePath;     ///< the game's install directory, with trailing separator
    std::string DataPath;     ///< GamePath + Data
    std::string UPIssuePath;  ///< DataPath + UP_Issues
    std::string BackupPath;   ///< BackupData in the program directory
    std::string EventFile;    ///< the user's own event file, with extension
    std::string UPIssueFile;  ///< the user's own UP issue file
    std::string SBModuleFile; ///< the user's own starbase module file
    bool AutoBackup = false;
    std::string SortBy; ///< "0" by file name, "1" alphabetically

    /// Sets GamePath and the two directories below it.
    void SetGamePath(const std::string& path) {
        GamePath = path;
        DataPath = GamePath + "Data" + Files::Separator;
        UPIssuePath = DataPath + "UP_Issues" + Files::Separator;
    }
};

inline SettingsRecord Settings;

/// The directory of the settings file, logs, backups and help texts, without trailing separator.
inline std::string ProgramDirectory;

/// Path of a file beside the program.
inline std::string ProgramFile(const std::string& name) {
    return Files::Join(ProgramDirectory, name);
}

/// Path of a help text: beside the settings, else beside the executable, else where packages install it.
std::string HelpFile(const std::string& name);

/// Characters that no file name may hold, in the order in which they are looked for.
inline constexpr std::array<char, 9> IllegalFileChars{'\\', '/', ':', '*', '?', '"', '<', '>', '|'};

} // namespace velmora
