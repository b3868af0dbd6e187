#pragma once

#include "records/LineGrammar.h"
#include "records/LossCounts.h"
#include "records/RecordKind.h"
#include "records/WrittenBlocks.h"
#include "services/Problem.h"

#include <array>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// Reads the blocks of one file. Values are held per key for the whole file: a block that omits a key takes
/// the value of the nearest earlier block that had it.
class BlockReader {
  public:
    /// `take` gets each record at the end of its block, content and HeaderLine set, and the block's end line.
    using Taker = std::function<void(std::unique_ptr<Record>, std::size_t endLine)>;

    BlockReader(const RecordKind& recordKind, std::string fileName, const ProblemSink& problems, Taker taker);

    /// Reads a file's bytes; lines end with CR LF or LF. Throws Failure (6 or 13) naming file, line and key
    /// for a number beyond 32 bits or a late number that was never given.
    void Read(std::string_view bytes);
    /// The same of a file that was taken apart.
    void Read(const WrittenBlocks& blocks);

    /// What writing the records read so far would lose. The taker adds the records that it drops.
    LossCounts Losses;

  private:
    struct Held {
        std::string_view Text;
        double Late = 0;
        std::int32_t Number = 0;
        std::size_t GivenIn = 0; ///< number of the last block that gave it, 0 for none
        std::vector<std::string_view> Entries;
    };

    void TakeWritten(const WrittenBlocks& blocks, std::size_t from, std::size_t to);
    void HoldWritten(const WrittenBlocks& blocks, std::size_t at);
    void ReadOthers(const WrittenBlocks::OtherLines& lines);
    void ReadLine(std::string_view line);
    void ReportUnrecognized(const KeyValue& parts);
    [[nodiscard]] std::size_t FindField(std::string_view key);
    void Hold(std::size_t at, std::string_view value);
    void BeginBlock(std::string_view value);
    void EndBlock();
    void LeaveUnfinished();
    void Fill(Record& record);
    /// A view that outlives the line it was read from.
    std::string_view Keep(std::string_view value);
    std::int32_t ToNumber(double value, std::string_view key) const;
    void Report(std::string_view rule, std::string text, std::string_view field = {}) const;

    const RecordKind& kind;
    std::string file;
    const ProblemSink& sink;
    Taker take;

    std::vector<Held> held; // one an entry of kind.Fields
    std::size_t blockNumber = 1;
    bool inBlock = false;
    std::array<std::vector<std::size_t>, 32> fieldsByLength;
    std::size_t nextField = 0; // blocks mostly hold their keys in table order
    std::string name;
    std::int32_t headerNumber = 0;
    std::size_t headerLine = 0;
    std::size_t lineNumber = 0;
    std::string scratch;
    std::deque<std::string> kept;
};

/// The line that the description of a failure of reading names, 0 for none.
std::size_t LineNamedIn(std::string_view description);

} // namespace velmora
