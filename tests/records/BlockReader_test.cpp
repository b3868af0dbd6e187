#include "records/BlockReader.h"

#include "events/clsEvent.h"
#include "platform/Failure.h"

#include <gtest/gtest.h>

#include <random>

namespace velmora {
namespace {

/// All that comes of reading: records, findings, losses, a failure.
std::vector<std::string> Read(const WrittenBlocks& blocks) {
    std::vector<std::string> outcome;
    const FindingSink note = [&](const Finding& finding) {
        outcome.push_back(std::to_string(finding.Line) + finding.Text);
    };
    const auto take = [&](const std::unique_ptr<Record>& record, std::size_t line) {
        outcome.push_back(std::to_string(record->HeaderLine) + ' ' + std::to_string(line));
        outcome.push_back(BlockOf(EventKind, *record));
    };
    BlockReader reader(EventKind, "some.event", note, take);
    try {
        reader.Read(blocks);
    } catch (const Failure& failure) {
        outcome.push_back(failure.Description());
    }
    for (std::string& loss : reader.Losses.Texts())
        outcome.push_back(std::move(loss));
    return outcome;
}

class OddFiles {
  public:
    std::string Next() {
        std::string text;
        for (auto pieces = Below(5); pieces > 0; --pieces)
            text += Piece();
        return text;
    }

  private:
    std::size_t Below(std::size_t end) { return random() % end; }
    std::string Rest() {
        static constexpr std::string_view alphabet = "  \"\"\t\r\n0017-.xE/\\\xE9";
        std::string rest = Below(2) ? "  " : "";
        for (auto length = Below(10); length > 0; --length)
            rest += alphabet[Below(alphabet.size())];
        return rest + (Below(2) ? "\r\n" : "\n");
    }
    std::string Piece() {
        switch (Below(8)) {
        case 0:
            return "EVENT" + Rest();
        case 1:
            return "Title" + Rest();
        case 2:
            return std::string(SeparatorLine) + Rest();
        case 3:
            return "ENDEVENT" + Rest();
        default:
            return Block(Below(3) ? EventKind.Fields.size() : Below(5));
        }
    }
    /// An event, one line of which is odd.
    std::string Block(std::size_t odd) {
        std::string text = "EVENT " + std::to_string(Below(20)) + "\r\n";
        text.insert(6, Below(20) ? "Raid" : "");
        for (std::size_t i = 0; i < EventKind.Fields.size(); ++i) {
            const Field& field = EventKind.Fields[i];
            if (i == odd && Below(3) == 0)
                continue;
            text.append("  ").append(field.Key);
            const std::string value = std::to_string(Below(100));
            text += i == odd                        ? Rest()
                    : field.Type == FieldType::Text ? " \"" + value + "\"\n"
                                                    : ' ' + value + "\r\n";
        }
        return text + "ENDEVENT\r\n";
    }

    std::mt19937 random{1};
};

TEST(BlockReader, ReadsWrittenBlocksAsItReadsLines) {
    OddFiles files;
    std::size_t written = 0;
    for (int round = 0; round < 20000; ++round) {
        const std::string text = files.Next();
        WrittenBlocks blocks;
        blocks.Find(EventKind, text);
        written += blocks.Blocks.size();
        WrittenBlocks lines;
        lines.Others.push_back({1, 0, text});
        ASSERT_EQ(Read(blocks), Read(lines)) << text;
    }
    EXPECT_GT(written, 10000u);
}

} // namespace
} // namespace velmora
