#pragma once

#include "records/ChangeList.h"
#include "records/CheckContext.h"
#include "records/Comparison.h"
#include "records/Edits.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velmora {

/// A library held against the files of another folder: what a person may take over from there, field by
/// field, and records that only the other folder has as a whole. Nothing is ticked at first, and nothing
/// changes before the step that it makes is done.
///
/// A value is taken in the form in which a commit would make it. One that would bring its record a problem,
/// on top of all else that is ticked of it, says so.
class FolderComparison : public ChangeList {
  public:
    struct Totals {
        std::size_t Changed = 0; ///< records
        std::size_t Added = 0;   ///< records that only the other folder has
        std::size_t Removed = 0; ///< records that it lacks
        std::size_t Same = 0;
        std::size_t Ticked = 0;       ///< lines
        std::size_t WithProblems = 0; ///< records to which what is ticked would bring a problem
        std::size_t Faults = 0;
    };

    /// The library has to stay as it is until the step is made.
    FolderComparison(const Library& subject, std::shared_ptr<const CheckContext> checkContext)
        : library(subject), context(std::move(checkContext)) {}

    /// Compares with a game directory, its data directory or a folder of files; once. False for one without
    /// a file of the kind. What cannot be read is a fault, told among the lines.
    bool Read(const std::string& folder);

    [[nodiscard]] Totals Sum() const;
    /// The ticked lines as one step. `folder` is where the library's files are.
    [[nodiscard]] Edits::Step MakeStep(std::string name, const std::string& folder) const;

    [[nodiscard]] std::size_t Count() const override { return lines.size(); }
    [[nodiscard]] std::string_view GroupOf(std::size_t line) const override;
    [[nodiscard]] std::pair<std::string_view, std::string_view> NamesOf(std::size_t line) const override;
    [[nodiscard]] Proposal At(std::size_t line) const override;
    [[nodiscard]] bool IsTicked(std::size_t line) const override { return lines[line].Ticked; }
    [[nodiscard]] bool MayTick(std::size_t line) const override { return lines[line].Refusal.empty(); }
    void Tick(std::size_t line, bool ticked) override;

  private:
    /// One field of a record that differs, its file, the record as a whole, or a fault.
    struct Line {
        std::uint32_t Group;
        const Field* Shown = nullptr; ///< nullptr for all but a field
        std::string Refusal = {};     ///< why it cannot be taken
        bool Ticked = false;
    };
    struct Group {
        std::string Title;
        const RecordDifference* Of = nullptr; ///< nullptr for a fault
        std::size_t First = 0;                ///< its lines
        std::size_t Last = 0;
        mutable std::optional<bool> Faulty = false; ///< what is ticked would bring a problem; none: not known
    };

    void AddGroup(const std::string& title, const RecordDifference* difference);
    void AddLine(const Field* field, std::string refusal);
    void AddFaults();
    void AddRecord(const RecordDifference& difference);
    void AddChanges(const RecordDifference& difference);
    [[nodiscard]] const Group& GroupAt(std::size_t line) const { return groups[lines[line].Group]; }
    [[nodiscard]] std::span<const Line> LinesOf(const Group& group) const {
        return std::span(lines).subspan(group.First, group.Last - group.First);
    }
    [[nodiscard]] bool AnyTicked(const Group& group) const;
    /// The library's record, nullptr for one that is only in the other folder.
    [[nodiscard]] static const Record* Before(const Group& group);
    enum class Beside { With, Without };
    /// The record as it would be with the ticked lines; with or without one of them in any case.
    [[nodiscard]] std::unique_ptr<Record> Taken(const Group& group, const Line* line = nullptr,
                                                Beside which = Beside::With) const;
    [[nodiscard]] bool IsFaulty(const Group& group) const;
    [[nodiscard]] Proposal WholeAt(const Line& line) const;
    [[nodiscard]] Proposal ChangeAt(const Line& line) const;
    void AddToStep(const Group& group, const std::string& file, const std::string& folder,
                   Edits::Step& step) const;

    const Library& library;
    std::shared_ptr<const CheckContext> context;
    RecordSide here;
    RecordSide there;
    std::vector<RecordDifference> differences;
    std::vector<Group> groups;
    std::vector<Line> lines; ///< those of a group together
};

} // namespace velmora
