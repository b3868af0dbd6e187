#include "records/BlockReader.h"

#include "events/clsEvent.h"
#include "platform/CodePage.h"
#include "platform/Failure.h"

#include <gtest/gtest.h>

#include <random>

namespace velmora {
namespace {

struct Outcome {
    std::vector<std::string> Values;
    std::vector<std::string> Findings;
    std::int32_t Failed = 0;
    bool operator==(const Outcome&) const = default;
};

Outcome Read(const std::string& text) {
    Outcome outcome;
    const FindingSink note = [&](const Finding& finding) {
        outcome.Findings.push_back(std::to_string(finding.Line) + CodePage::ToLower(finding.Text));
    };
    BlockReader reader(EventKind, "some.event", note, [&](std::unique_ptr<Record> record, std::size_t line) {
        outcome.Values.push_back(std::to_string(line));
        for (const Field& field : EventKind.Fields)
            outcome.Values.push_back(field.Type == FieldType::Text ? field.TextOf(*record)
                                                                   : std::to_string(field.NumberOf(*record)));
    });
    try {
        reader.Read(text);
    } catch (const Failure& failure) {
        outcome.Failed = failure.Number;
    }
    return outcome;
}

/// An event one line of which goes on after its key with `rest`.
std::string EventWith(std::size_t odd, const std::string& rest, bool asWritten) {
    std::string text = "EVENT Raid\r\n";
    for (std::size_t i = 0; i < EventKind.Fields.size(); ++i) {
        const Field& field = EventKind.Fields[i];
        text += "  ";
        text += i == odd && !asWritten ? CodePage::ToUpper(field.Key) : std::string(field.Key);
        text += i == odd ? rest : field.Type == FieldType::Text ? "  \"text\"\r\n" : "  7\r\n";
    }
    return text + "ENDEVENT\r\n";
}

// Only a key in the editor's own spelling is read by the short path.
TEST(BlockReader, ReadsALineAlikeWhateverTheCaseOfItsKey) {
    const std::string_view alphabet = "  \"\"\t\r\n17-.xE/\\\xE9";
    std::mt19937 random(1);
    for (int round = 0; round < 20000; ++round) {
        std::string rest = random() % 2 ? "  " : "";
        for (auto length = random() % 10; length > 0; --length)
            rest += alphabet[random() % alphabet.size()];
        rest += random() % 2 ? "\r\n" : "\n";
        const std::size_t odd = random() % 5;
        const std::string written = EventWith(odd, rest, true);
        const Outcome byShortPath = Read(written);
        ASSERT_EQ(byShortPath, Read(EventWith(odd, rest, false))) << testing::PrintToString(written);
    }
}

} // namespace
} // namespace velmora
