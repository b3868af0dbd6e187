#pragma once

#include "cli/Reports.h"

#include <string>

namespace velmora {

/// A report to which every finding is alike: one with a path.
class PlacedReport : public CheckReport {
  public:
    explicit PlacedReport(const GameLoader& gameLoader) : loader(gameLoader) {}

    void Begin(Section /*section*/) override {}
    void Add(const KindEntry& kind, const Problem& message) override { Take(kind, message, message.Text); }
    void Add(const KindEntry& kind, const Record& /*record*/, const std::vector<Problem>& problems) override {
        for (const Problem& problem : problems)
            Take(kind, problem, problem.Record + ": " + problem.Text);
    }
    void Add(const LoadError& error) override { Take(*error.Kind, error.Told, error.Told.Text); }

  protected:
    /// `text` names the record.
    virtual void Take(const KindEntry& kind, const Problem& problem, const std::string& text) = 0;
    /// Where a finding is, in UTF-8 with slashes: below the current directory, else the whole path.
    [[nodiscard]] std::string PathOf(const KindEntry& kind, const Problem& problem) const;

    [[nodiscard]] bool AnyFailed() const { return !loader.Errors().empty(); }

  private:
    const GameLoader& loader;
};

} // namespace velmora
