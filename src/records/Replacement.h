#pragma once

#include "records/ChangeList.h"
#include "records/CheckContext.h"
#include "records/Edits.h"
#include "records/Matcher.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace velmora {

/// Finds a text in the records of a library and replaces it in those lines that are ticked. A line is one
/// field of one record, with all hits in it.
///
/// Finding and checking go a slice at a time, so that nobody waits for them. Each line is checked as a commit
/// would check it: one that no file could hold is refused; one that would bring a new problem names its rule
/// and is not ticked, unless a person does.
class Replacement : public ChangeList {
  public:
    struct Request {
        std::shared_ptr<const Matcher> What;       ///< nullptr: nothing is looked for
        std::vector<const Field*> Fields;          ///< of texts
        std::function<bool(const Record&)> Within; ///< which records; empty for all of them
    };
    struct Place {
        std::uint32_t Position; ///< of the record in the library
        std::uint32_t Field;    ///< in the request
    };
    struct Totals {
        std::size_t Hits = 0;
        std::size_t Records = 0;
        std::size_t TickedHits = 0;
        std::size_t TickedRecords = 0;
        std::size_t Refused = 0;      ///< lines
        std::size_t WithProblems = 0; ///< lines
    };

    explicit Replacement(const Library& searched) : library(searched) {}

    void Begin(Request newRequest, std::shared_ptr<const CheckContext> checkContext);
    /// Begins anew with the same request, as the library is another one. What a person ticked stays so.
    void Restart();
    /// Goes on until the time is up, but for a while in any case; true when all is found and checked.
    bool Work(std::chrono::microseconds time);
    /// True when all hits are found.
    [[nodiscard]] bool Found() const { return next >= known; }
    [[nodiscard]] bool Done() const { return Found() && nextToCheck == lines.size(); }
    /// How many records were looked at.
    [[nodiscard]] std::size_t Searched() const { return next; }

    /// Fields that took too much work to be searched to their ends.
    [[nodiscard]] const std::vector<Place>& GivenUp() const { return givenUp; }
    [[nodiscard]] Place PlaceOf(std::size_t line) const { return lines[line].At; }
    [[nodiscard]] std::string_view FieldOf(Place place) const {
        return request.Fields[place.Field]->Property;
    }
    [[nodiscard]] Totals Sum() const;

    /// The ticked lines as one step. Only when all is done.
    [[nodiscard]] Edits::Step MakeStep(std::string name) const;

    [[nodiscard]] std::size_t Count() const override { return lines.size(); }
    [[nodiscard]] std::string_view GroupOf(std::size_t line) const override;
    [[nodiscard]] std::pair<std::string_view, std::string_view> NamesOf(std::size_t line) const override;
    [[nodiscard]] Proposal At(std::size_t line) const override;
    [[nodiscard]] bool IsTicked(std::size_t line) const override { return lines[line].Ticked; }
    [[nodiscard]] bool MayTick(std::size_t line) const override { return !lines[line].Refused; }
    void Tick(std::size_t line, bool ticked) override;

  private:
    struct Line {
        Place At;
        std::uint32_t Hits;
        bool Ticked = true;
        bool Refused = false;
        std::string_view Note = {};
    };
    using Lines = std::span<Line>;

    /// False while the library is being read again.
    [[nodiscard]] bool Stands() const { return library.Count() >= known; }
    [[nodiscard]] const Record& RecordOf(const Line& line) const { return library.At(line.At.Position); }
    [[nodiscard]] const Field& FieldOf(const Line& line) const { return *request.Fields[line.At.Field]; }
    [[nodiscard]] std::size_t EndOfRecord(std::size_t line) const;
    /// What a person chose is kept under this.
    [[nodiscard]] std::string KeyOf(const Line& line) const;
    void Find(std::size_t position);
    void CheckRecord(Lines ofRecord);
    void NoteProblems(Lines ofRecord, const Record& after);
    static void Refuse(Line& line, std::string_view reason);
    [[nodiscard]] std::string Replaced(const Line& line, std::string_view* refusal = nullptr) const;
    /// Puts a line's text into a record, in the form in which it would be committed. `scratch` is an empty
    /// record.
    void Commit(const Line& line, std::string_view text, Record& scratch, Record& record) const;

    const Library& library;
    Request request;
    std::shared_ptr<const CheckContext> context;
    std::vector<Line> lines; ///< those of a record in the order of the request
    std::vector<Place> givenUp;
    std::unordered_map<std::string, bool> chosen; ///< what a person ticked, by KeyOf
    std::size_t known = 0;                        ///< how many records there were
    std::size_t next = 0;
    std::size_t nextToCheck = 0;
};

} // namespace velmora
