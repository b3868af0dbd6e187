#include "records/Merge.h"

#include "FailureOf.h"
#include "events/clsEvent.h"
#include "records/RecordFile.h"
#include "sbmodules/clsSBModule.h"
#include "services/modWriter.h"
#include "upissues/clsUPIssue.h"

#include <gmock/gmock.h>

#include <map>
#include <random>

namespace velmora {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// The fields of the records of a file, by name.
using Fields = std::vector<FieldValue>;
using Content = std::map<std::string, Fields>;

Content ContentOf(const RecordKind& kind, const std::string& text) {
    RecordFile file;
    file.Read(kind, text);
    Content content;
    for (const auto& part : file.Parts) {
        Fields& fields = content[part.first];
        kind.ForEachField([&](const Field& field) { fields.push_back(field.Get(part.second.Content())); });
    }
    return content;
}

/// A history of one file: a base and what two people made of it.
class History {
  public:
    History(const RecordKind& kindOfFile, unsigned seed) : kind(kindOfFile), random(seed) {
        for (int i = 0; i < 6; ++i)
            parts.push_back(Block(i == 2 ? "" : "r" + std::to_string(i))); // a header may lack its name
        Base = Text(parts);
        Ours = Edited();
        Theirs = Edited();
    }
    std::string Base;
    std::string Ours;
    std::string Theirs;

  private:
    std::string Block(const std::string& name) {
        auto record = kind.Make();
        kind.Name.SetText(*record, name);
        kind.ForEachField([&](const Field& field) { Change(*record, field); });
        return BlockOf(kind, *record);
    }
    void Change(Record& record, const Field& field) {
        const int value = static_cast<int>(random() % 4);
        if (field.TextOf)
            field.SetText(record, std::to_string(value));
        else if (field.ListOf)
            field.Set(record, std::vector<std::string>{"a" + std::to_string(value)});
        else
            field.SetNumber(record, value);
    }
    std::string Edited() {
        std::vector<std::string> edited = parts;
        for (std::size_t edits = random() % 4; edits > 0; --edits) {
            std::string& part = edited[random() % edited.size()];
            const std::size_t what = random() % 7;
            if (what == 0)
                part.clear();
            else if (what == 1)
                part = "// a word\r\n" + part;
            else if (what == 2)
                edited.insert(edited.begin() + static_cast<long>(random() % edited.size()),
                              Block("n" + std::to_string(random() % 3)));
            else if (what == 3)
                std::swap(part, edited[random() % edited.size()]);
            else if (what == 4 && part.find("Description") != std::string::npos)
                part.erase(part.find("  Description"),
                           part.find('\n', part.find("  Description")) + 1 - part.find("  Description"));
            else
                ChangeOne(part);
        }
        std::map<std::string, int> met;
        std::erase_if(edited, [&](const std::string& part) { return met[NameIn(part)]++ > 0; });
        return Text(edited);
    }
    std::string NameIn(const std::string& part) const {
        const Content content = ContentOf(kind, part);
        return content.empty() ? part : content.begin()->first;
    }
    void ChangeOne(std::string& part) {
        RecordFile file;
        file.Read(kind, part);
        if (file.Parts.Empty())
            return;
        const auto copy = kind.Copy(file.Parts.ItemAt(0).Content());
        Record& record = *copy;
        std::vector<const Field*> fields;
        kind.ForEachField([&](const Field& field) { fields.push_back(&field); });
        Change(record, *fields[random() % fields.size()]);
        part = BlockOf(kind, record);
    }
    static std::string Text(const std::vector<std::string>& blocks) { return Join(blocks, ""); }

    const RecordKind& kind;
    std::mt19937 random;
    std::vector<std::string> parts;
};

/// What a record should become; nothing for a conflict.
std::optional<Fields> Expected(const Fields* base, const Fields* ours, const Fields* theirs) {
    static const Fields gone;
    const Fields& b = base ? *base : gone;
    const Fields& o = ours ? *ours : gone;
    const Fields& t = theirs ? *theirs : gone;
    if (o == t || t == b)
        return o;
    if (o == b)
        return t;
    if (b.empty() || o.empty() || t.empty())
        return std::nullopt;
    Fields merged = o;
    for (std::size_t i = 0; i < b.size(); ++i)
        if (o[i] == b[i])
            merged[i] = t[i];
        else if (t[i] != b[i] && t[i] != o[i])
            return std::nullopt;
    return merged;
}

const Fields* In(const Content& content, const std::string& name) {
    const auto found = content.find(name);
    return found == content.end() ? nullptr : &found->second;
}

/// The result without its conflicts.
std::string Settled(const std::string& text) {
    std::string settled;
    bool inside = false;
    for (std::string line : Split(text, "\n")) {
        inside = inside || line.starts_with("<<<<<<<");
        if (!inside && !line.empty())
            settled += line + "\n";
        inside = inside && !line.starts_with(">>>>>>>");
    }
    return settled;
}

void ExpectMerged(const RecordKind& kind, const History& history) {
    const MergeResult result = Merge(kind, history.Base, history.Ours, history.Theirs);
    const Content base = ContentOf(kind, history.Base);
    const Content ours = ContentOf(kind, history.Ours);
    const Content theirs = ContentOf(kind, history.Theirs);
    Content wanted;
    std::vector<std::string> conflicts;
    for (const Content* side : {&base, &ours, &theirs})
        for (const auto& [name, fields] : *side) {
            const auto expected = Expected(In(base, name), In(ours, name), In(theirs, name));
            if (!expected)
                conflicts.push_back(name);
            else if (!expected->empty())
                wanted[name] = *expected;
        }
    std::sort(conflicts.begin(), conflicts.end());
    conflicts.erase(std::unique(conflicts.begin(), conflicts.end()), conflicts.end());
    std::vector<std::string> told;
    for (const MergeConflict& conflict : result.Conflicts)
        told.push_back(conflict.Name);
    std::sort(told.begin(), told.end());
    ASSERT_EQ(told, conflicts);
    ASSERT_EQ(ContentOf(kind, Settled(result.Text)), wanted);
    const MergeResult swapped = Merge(kind, history.Base, history.Theirs, history.Ours);
    ASSERT_EQ(Settled(swapped.Text), Settled(result.Text));
    ASSERT_EQ(swapped.Conflicts.size(), conflicts.size());
    ASSERT_EQ(Merge(kind, history.Base, history.Base, history.Theirs).Text, history.Theirs);
    ASSERT_EQ(Merge(kind, history.Base, history.Ours, history.Base).Text, history.Ours);
}

TEST(Merge, LosesNoFieldThatOneSideChanged) {
    // Three merges each.
    for (unsigned seed = 0; seed < 3'400; ++seed) {
        const RecordKind& kind = *std::array{&EventKind, &UPIssueKind, &SBModuleKind}[seed % 3];
        SCOPED_TRACE(seed);
        ExpectMerged(kind, History(kind, seed));
        if (::testing::Test::HasFatalFailure())
            return;
    }
}

TEST(Merge, KeepsWhatStandsAroundRecordsAndMarksConflictsWhole) {
    const auto block = [](const std::string& name, const std::string& title) {
        return "// about " + name + "\r\nEVENT " + name + "\r\n  Title \"" + title + "\"\r\nENDEVENT\r\n";
    };
    const std::string base = block("A", "a") + block("B", "b") + "// the end\r\n";
    const MergeResult clean = Merge(EventKind, base, block("A", "x") + block("B", "b") + "// the end\r\n",
                                    block("A", "a") + block("B", "y") + "// an end\r\n");
    EXPECT_THAT(clean.Conflicts, IsEmpty());
    EXPECT_EQ(clean.Text, block("A", "x") + block("B", "y") + "// an end\r\n");

    const std::string cut = block("A", "a") + "EVENT C\r\n  Title \"c\"\r\nENDEVENT\r";
    EXPECT_EQ(Merge(EventKind, block("A", "a"), cut, block("A", "x")).Text,
              block("A", "x") + "EVENT C\r\n  Title \"c\"\r\nENDEVENT\r\n");

    const MergeResult both = Merge(EventKind, base, block("A", "x") + block("B", "b"), block("A", "y"));
    ASSERT_EQ(both.Conflicts.size(), 1u);
    EXPECT_EQ(both.Conflicts[0].Name, "A");
    EXPECT_THAT(both.Conflicts[0].Fields, ElementsAre("Title"));
    EXPECT_THAT(both.Text, ::testing::StartsWith("// about A\r\n<<<<<<< ours\r\n" +
                                                 std::string(SeparatorLine) + "EVENT A"));
    EXPECT_THAT(both.Text, HasSubstr("ENDEVENT\r\n>>>>>>> theirs\r\n"));
    EXPECT_THAT(FailureOf([&] { Merge(EventKind, base, both.Text, base); }).Description(),
                HasSubstr("not settled"));
    EXPECT_THAT(FailureOf([&] { Merge(EventKind, base, block("A", "") + block("a", ""), ""); }).Description(),
                HasSubstr("Two records are named a"));
    const std::string unended = "EVENT A\r\n  Title \"a\"\r\n" + block("B", "b");
    EXPECT_THAT(
        FailureOf([&] { Merge(EventKind, base, unended, block("A", "a") + block("B", "y")); }).Description(),
        HasSubstr("Line 1: This block has no ENDEVENT"));
}

TEST(Merge, KeepsNamesThatComeFromTheBlockBefore) {
    const std::string block = "EVENT A\r\n  Title \"a\"\r\nENDEVENT\r\n";
    const std::string nameless = "  Title \"b\"\r\nENDEVENT\r\n";
    RecordFile after;
    const MergeResult named = Merge(EventKind, "  Title \"\"\r\nENDEVENT\r\n", nameless,
                                    block + "EVENT\r\n  Title \"\"\r\nENDEVENT\r\n");
    after.Read(EventKind, named.Text);
    EXPECT_EQ(after.Fault + " " + std::to_string(after.Parts.Count()), " 2")
        << "not read by the name before it";

    const std::string digits = "EVENT -0.5\r\nENDEVENT\r\n"; // reads as 05, which reads as Zero5
    EXPECT_THAT(FailureOf([&] { Merge(EventKind, block, block + digits, ""); }).Description(),
                HasSubstr("The record 05 reads differently"));
}

TEST(Merge, RefusesConflictsAndNoRemarksThatLookLikeTheirLines) {
    const auto block = [](const std::string& title) {
        return "EVENT A\r\n  Title \"" + title + "\"\r\nENDEVENT\r\n";
    };
    struct Case {
        std::string Remarks;
        bool IsConflict;
    };
    for (const auto& [remarks, isConflict] :
         {Case{"=======\r\n", false}, Case{"======= Raids =======\r\n", false},
          Case{"<<<<<<< new\r\n", false}, Case{">>>>>>> old\r\n", false},
          Case{"<<<<<<< new\r\n=======\r\n", false}, Case{">>>>>>> a\r\n=======\r\n<<<<<<< b\r\n", false},
          Case{"<<<<<<< a\r\n========\r\n>>>>>>> b\r\n", false},
          Case{"// <<<<<<< a\r\n=======\r\n>>>>>>> b\r\n", false},
          Case{"<<<<<<< a\r\n=======\r\n>>>>>>> b\r\n", true},
          Case{"<<<<<<< a\n// between\n=======\n>>>>>>> b\n", true},
          Case{"=======\r\n<<<<<<< a\r\n=======\r\n>>>>>>> b\r\n", true}}) {
        const auto merge = [&, text = remarks] {
            return Merge(EventKind, text + block("a"), text + block("b"), text + block("a") + "// end\r\n");
        };
        if (isConflict) {
            EXPECT_THAT(FailureOf(merge).Description(), HasSubstr("not settled")) << remarks;
            continue;
        }
        const MergeResult merged = merge();
        EXPECT_EQ(merged.Text, remarks + block("b") + "// end\r\n");
        EXPECT_THAT(merged.Conflicts, IsEmpty());
    }
}

} // namespace
} // namespace velmora
