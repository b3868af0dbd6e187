#pragma once

#include "SoundRecords.h"
#include "TempFolder.h"

#include <filesystem>
#include <string>

namespace velmora {

/// A small game directory whose records break no rule until a test adds some that do.
class GameFolder : public TempFolder {
  public:
    GameFolder() {
        Write("GFX/P.pcx", "picture");
        std::filesystem::create_directories(Host() / "Data" / "UP_Issues");
    }

    static std::string Event(const std::string& name) { return SoundEvent(name).GenerateEventString(false); }

    static std::string Issue(const std::string& name) {
        return SoundIssue(name).GenerateUPIssueString(false);
    }

    /// The folder, or what is below it, as it is typed on the command line, in UTF-8.
    [[nodiscard]] std::string Typed(const std::string& below = {}) const {
        const std::u8string utf8 = (below.empty() ? Host() : Host() / below).u8string();
        return {utf8.begin(), utf8.end()};
    }
};

} // namespace velmora
