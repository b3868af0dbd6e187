#pragma once

#include "events/clsEvent.h"
#include "upissues/clsUPIssue.h"

#include <string>

namespace velmora {

/// A record that passes every check where the game has the picture P.pcx.
inline clsEvent SoundEvent(const std::string& name) {
    clsEvent event;
    event.EventName = name;
    event.Title = "Title";
    event.Description = "about " + name;
    event.Image = R"(Gfx\\P.pcx)";
    event.GoodOption = "Talk";
    event.NeutralOption = "Wait";
    event.EvilOption = "Raid back";
    event.MoralityWeight = 1;
    return event;
}
inline clsUPIssue SoundIssue(const std::string& name) {
    clsUPIssue issue;
    issue.UPIssueName = name;
    issue.Question = "about " + name;
    issue.Option01 = "Yes";
    issue.OptionVal01 = 1;
    issue.UPIssueAttribute = 2;
    return issue;
}

} // namespace velmora
