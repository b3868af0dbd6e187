#include "records/BlockReader.h"

#include "events/clsEvent.h"
#include "platform/Failure.h"
#include "services/modWriter.h"

#include <gtest/gtest.h>

#include <random>

namespace velmora {
namespace {

/// All that comes of reading: records, findings, losses, a failure.
std::vector<std::string> Read(const WrittenBlocks& blocks) {
    std::vector<std::string> outcome;
    const ProblemSink note = [&](const Problem& finding) {
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

/// Events as the editor writes them, but for an odd piece here and there.
std::string OddFile(std::mt19937& random) {
    const auto below = [&](std::size_t end) { return random() % end; };
    std::string text;
    for (auto events = below(5); events > 0; --events) {
        clsEvent event;
        event.EventName = "Raid" + std::to_string(below(20));
        for (const Field& field : EventKind.Fields)
            if (field.Type == FieldType::Text)
                field.SetText(event, std::to_string(below(100)));
            else
                field.SetNumber(event, static_cast<std::int32_t>(below(100)));
        std::string block = event.GenerateEventString(false);
        static constexpr const char* pieces[] = {"",   " ", "\"",     "\t",    "\n",     "0",         "-",
                                                 ".9", "/", "\\\xE9", "EVENT", "Title ", "ENDEVENT\n"};
        for (auto odd = below(2) * below(9); odd > 0; --odd)
            block.replace(below(block.size()), below(2) * below(30), pieces[below(std::size(pieces))]);
        text += below(2) ? block : ReplaceAll(block, "\r", "");
    }
    return text;
}

TEST(BlockReader, ReadsWrittenBlocksAsItReadsLines) {
    std::mt19937 random{1};
    std::size_t written = 0;
    for (int round = 0; round < 20000; ++round) {
        const std::string text = OddFile(random);
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
