#include "records/BlockReader.h"

#include "events/clsEvent.h"
#include "sbmodules/clsSBModule.h"
#include "services/modWriter.h"
#include "upissues/clsUPIssue.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

/// A value that holds the byte, and the value that a file keeps of it.
std::pair<FieldValue, FieldValue> ValuesOf(const Field& field, int byte) {
    const std::string text{static_cast<char>(byte), 'a', static_cast<char>(byte)};
    if (field.Type == FieldType::Text)
        return {text, TextForFile(text)};
    if (field.Type == FieldType::List)
        return {std::vector{"1" + text, "2" + text},
                std::vector{TextForFile("1" + text), TextForFile("2" + text)}};
    return {(byte - 128) * 16777216, (byte - 128) * 16777216};
}

std::unique_ptr<Record> ReadBack(const RecordKind& kind, const Record& record) {
    std::vector<std::unique_ptr<Record>> read;
    const ProblemSink fail = [](const Problem& finding) { ADD_FAILURE() << finding.Text; };
    BlockReader reader(kind, "a", fail, [&](auto taken, std::size_t) { read.push_back(std::move(taken)); });
    const std::string block = BlockOf(kind, record);
    reader.Read(block);
    EXPECT_FALSE(reader.Losses.Any()) << block;
    EXPECT_EQ(read.size(), 1u) << block;
    return std::move(read.at(0));
}

TEST(RecordKind, WritesCopiesAndClonesEveryValueOfEveryKind) {
    for (const RecordKind* kind : {&EventKind, &UPIssueKind, &SBModuleKind})
        for (int byte = 0; byte < 256; ++byte) {
            SCOPED_TRACE(std::string(kind->Word) + ' ' + std::to_string(byte));
            const auto record = kind->Make();
            kind->Name.SetText(*record, "Raid");
            record->ToBeDeleted = true;
            record->SetStatus("odd");
            record->FileOnDisk = byte;
            kind->Number(*record) = 7;
            kind->ForEachField([&](const Field& field) { field.Set(*record, ValuesOf(field, byte).first); });
            const auto read = ReadBack(*kind, *record);
            EXPECT_EQ(kind->NameOf(*read), "Raid");
            const auto other = ReadBack(*kind, *kind->Make()); // its lists hold an empty entry
            CopyContent(*kind, *record, *other);
            CopyContent(*kind, *other, *other);
            EXPECT_EQ(kind->NameOf(*other), "");
            const auto clone = Clone(*kind, *record);
            EXPECT_EQ(clone->Status(), record->Status());
            EXPECT_EQ(clone->FileOnDisk, byte);
            EXPECT_EQ(kind->Number(*clone), 7);
            EXPECT_EQ(BlockOf(*kind, *clone), BlockOf(*kind, *record));
            kind->ForEachField([&](const Field& field) {
                const auto& [given, kept] = ValuesOf(field, byte);
                EXPECT_EQ(field.Get(*read), kept) << field.Property;
                EXPECT_EQ(field.Get(*other), given) << field.Property;
                EXPECT_EQ(field.Get(*clone), given) << field.Property;
            });
        }
}

TEST(RecordKind, ReadsNumbersByTheRuleOfItsFiles) {
    const auto numbers = [](const RecordKind& kind, const std::string& key) {
        std::string read;
        for (const char* value : {"\"1 2\"", "&H10", "12abc"}) {
            const ProblemSink nobody = [](const Problem&) {};
            BlockReader reader(kind, "a", nobody, [&](const auto& record, std::size_t) {
                for (const Field& field : kind.Fields)
                    if (field.Key == key)
                        read += std::to_string(field.NumberOf(*record)) + ' ';
            });
            std::string block = BlockOf(kind, *kind.Make());
            block.insert(block.find(kind.End), key + ' ' + value + "\r\n");
            reader.Read(block);
        }
        return read;
    };
    EXPECT_EQ(numbers(EventKind, "Probability"), "12 16 12 ");
    EXPECT_EQ(numbers(UPIssueKind, "Value01"), "1 0 12 ");
    EXPECT_EQ(numbers(UPIssueKind, "OptionVal01"), "1 0 12 ");
    EXPECT_EQ(numbers(SBModuleKind, "ModuleSize"), "1 0 12 ");
}

} // namespace
} // namespace velmora
