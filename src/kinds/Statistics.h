#pragma once

#include "kinds/PlayerTexts.h"
#include "records/RecordKind.h"
#include "services/KeyedCollection.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// What there is in a library, counted a record at a time.
class Statistics {
  public:
    struct Bar {
        std::string Label;
        std::size_t Count = 0;
        std::string Filter = {}; ///< the filter line that lists these records, empty where none does
        std::string Detail = {};
    };
    struct Table {
        std::string_view Key; ///< "files"
        std::string_view Title;
        std::vector<Bar> Bars; ///< the highest first, but for those that have an order of their own
    };

    explicit Statistics(const RecordKind& recordKind)
        : kind(recordKind), lengths(PlayerTextsOf(recordKind).size()) {}

    void Add(const Record& record);
    void AddProblem(std::string_view rule) { Count(problems, rule); }
    [[nodiscard]] std::size_t Records() const { return records; }

    /// All that was counted; empty tables are left out. Pictures that no record uses are looked for in the
    /// folders that records name, below the game directory.
    [[nodiscard]] std::vector<Table> Tables(const std::string& gameDirectory) const;

  private:
    using Counts = KeyedCollection<std::size_t>;
    struct Length {
        std::size_t Longest = 0;
        std::size_t Over = 0;
    };
    static void Count(Counts& counts, std::string_view key);
    static std::vector<Bar> BarsOf(const Counts& counts, std::string_view prefix);
    void AddEvent(const Record& record);
    void AddLengths(const Record& record);
    void AddPictures(const std::string& gameDirectory, std::vector<Table>& tables) const;

    const RecordKind& kind;
    std::size_t records = 0;
    Counts files;
    Counts types;
    Counts problems;
    Counts pictures;                      ///< by path, with single separators
    std::array<std::size_t, 5> weights{}; ///< of morality, from 1
    std::array<Counts, 3> attributes;     ///< by answer
    std::vector<Length> lengths;          ///< of the texts that players read, in their order
};

} // namespace velmora
