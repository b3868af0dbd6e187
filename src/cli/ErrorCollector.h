#pragma once

#include "services/Prompts.h"
#include "services/clsError.h"

#include <string>
#include <vector>

namespace velmora {

/// Stands in for the error dialog while it lives: keeps what it would show, writes no log.
class ErrorCollector : public Prompts {
  public:
    struct Report {
        ErrorDetails Details;
        std::vector<std::string> Routines; ///< event routine first
    };

    ErrorCollector();
    ~ErrorCollector() override;
    ErrorCollector(const ErrorCollector&) = delete;
    ErrorCollector& operator=(const ErrorCollector&) = delete;

    std::vector<Report> Reports;

    std::string ReportError(const ErrorDetails& error) override;
    // Loading reports through its sink; nothing else talks to a person here.
    void Message(const std::string& /*text*/, Icon /*icon*/, const std::string& /*details*/) override {}
    bool MessageInSeries(const std::string& /*text*/, Icon /*icon*/,
                         const std::string& /*details*/) override {
        return false;
    }
    void MessageList(const std::vector<std::string>& /*texts*/) override {}
    bool Ask(const Question& /*question*/) override { return false; }
    std::string Input(const std::string& /*prompt*/) override { return {}; }
    std::string PickFolder(const std::string& /*title*/, const std::string& /*start*/) override { return {}; }
    std::string PickFile(const FileRequest& /*request*/) override { return {}; }
    void ShowTextFile(const std::string& /*path*/) override {}
    std::unique_ptr<Progress> StartProgress(const std::string& /*title*/) override { return nullptr; }

  private:
    clsError handler;
    Prompts* previousPrompts;
    clsError* previousHandler;
};

} // namespace velmora
