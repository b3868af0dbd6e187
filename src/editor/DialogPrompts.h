#pragma once

#include "services/Prompts.h"

namespace velmora {

/// Answers prompts with real dialogs over the active window.
class DialogPrompts : public Prompts {
  public:
    void Message(const std::string& text, Icon icon, const std::string& details) override;
    bool MessageInSeries(const std::string& text, Icon icon, const std::string& details) override;
    void MessageList(const std::vector<std::string>& texts) override;
    bool Ask(const Question& question) override;
    std::string Input(const std::string& prompt) override;
    std::string PickFolder(const std::string& title, const std::string& start) override;
    std::string PickFile(const FileRequest& request) override;
    std::string ReportError(const ErrorDetails& error) override;
    void ShowTextFile(const std::string& path) override;
    std::unique_ptr<Progress> StartProgress(const std::string& title) override;
};

} // namespace velmora
