#pragma once

#include "TempFolder.h"
#include "events/clsEvent.h"
#include "upissues/clsUPIssue.h"

#include <filesystem>
#include <map>
#include <string>

namespace velmora {

/// A folder, or what is below it, as it is typed on the command line, in UTF-8.
inline std::string Typed(const TempFolder& folder, const std::string& below = {}) {
    const std::u8string utf8 = (below.empty() ? folder.Host() : folder.Host() / below).u8string();
    return {utf8.begin(), utf8.end()};
}

/// A small game directory whose records break no rule until a test adds some that do.
class GameFolder : public TempFolder {
  public:
    GameFolder() {
        Write("GFX/Raid.pcx", "picture");
        std::filesystem::create_directories(Host() / "Data" / "UP_Issues");
    }

    static clsEvent SoundEvent(const std::string& name) {
        clsEvent event;
        event.EventName = name;
        event.Title = "Raid";
        event.Description = "They raid %s.";
        event.DescStr01 = 7;
        event.Image = "Gfx\\\\Raid.pcx";
        event.GoodOption = "Talk";
        event.NeutralOption = "Wait";
        event.EvilOption = "Raid back";
        event.MoralityWeight = 1;
        return event;
    }
    static std::string Event(const std::string& name) { return SoundEvent(name).GenerateEventString(false); }

    static clsUPIssue SoundIssue(const std::string& name) {
        clsUPIssue issue;
        issue.UPIssueName = name;
        issue.Question = "Shall we?";
        issue.UPIssueAttribute = 3;
        issue.Option01 = "Yes";
        issue.OptionVal01 = 1;
        return issue;
    }
    static std::string Issue(const std::string& name) {
        return SoundIssue(name).GenerateUPIssueString(false);
    }

    [[nodiscard]] std::string Typed(const std::string& below = {}) const {
        return velmora::Typed(*this, below);
    }

    /// Every file and folder in it with its bytes.
    [[nodiscard]] std::map<std::string, std::string> Everything() const {
        std::map<std::string, std::string> all;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(Host())) {
            const std::string name = entry.path().lexically_relative(Host()).generic_string();
            all[name] = entry.is_regular_file() ? Read(name) : "(folder)";
        }
        return all;
    }
};

} // namespace velmora
