#include "kinds/Import.h"

#include "kinds/PlayerTexts.h"
#include "kinds/TableText.h"
#include "platform/CodePage.h"
#include "platform/Failure.h"
#include "platform/PathTexts.h"
#include "platform/Utf8.h"
#include "records/CheckRecords.h"
#include "records/Csv.h"
#include "services/Numbers.h"
#include "services/modWriter.h"

#include <algorithm>
#include <array>

namespace velmora {

namespace {

constexpr std::string_view FileProperty = "ShortName";
constexpr std::string_view BadQuotes =
    "a quote is not closed, or closed amid its cell; rows below it may have been taken for part of it";

bool IsPosition(std::string_view heading) {
    return CodePage::EqualNoCase(heading, "OrigNumber") ||
           std::ranges::any_of(Kinds(), [&](const KindEntry& entry) {
               return CodePage::EqualNoCase(heading, entry.NumberProperty);
           });
}

/// Columns of the translators' table that are there to be read only.
bool IsForTranslators(std::string_view heading) {
    return std::ranges::any_of(std::array{"location", "context", "remark"},
                               [&](const char* name) { return CodePage::EqualNoCase(heading, name); });
}

bool IsOfAnyKind(std::string_view id) {
    return std::ranges::any_of(
        Kinds(), [&](const KindEntry& entry) { return id.starts_with(std::string(entry.Kind->Word) + "."); });
}

const Field* TranslatableField(const RecordKind& kind, std::string_view property) {
    for (const PlayerText& text : PlayerTextsOf(kind))
        if (text.Shown->Property == property)
            return text.Shown;
    return nullptr;
}

/// A text that a field can hold; nothing, with the reason, for any other.
std::optional<std::string> FieldText(const std::string& utf8, std::string& reason) {
    auto text = CodePage::FromUtf8(utf8);
    if (!text)
        reason = "it holds a character that the game's code page lacks";
    else if (text->find('"') != std::string::npos)
        reason = "it holds a double quote, which ends a text in the game's files";
    else if (text->find_first_of(std::string_view("\n\0", 2)) != std::string::npos)
        reason = "it holds a line break; in the game's texts that is \\n";
    else
        return text;
    return std::nullopt;
}

void Refuse(Import::Row& row, std::string reason) {
    if (row.Is == Import::Outcome::Refused)
        return; // the first reason will do
    row.Is = Import::Outcome::Refused;
    row.Reason = std::move(reason);
}

} // namespace

std::vector<const KindEntry*> Import::KindsOf(const std::string& bytes) {
    const std::string table = TableText(bytes);
    Csv::Reader reader(table, Csv::SeparatorOf(table));
    Cells headings;
    reader.Next(headings);
    const auto has = [&](std::string_view name) {
        return std::ranges::any_of(
            headings, [&](const std::string& heading) { return CodePage::EqualNoCase(heading, name); });
    };
    std::vector<const KindEntry*> kinds;
    for (const KindEntry& entry : Kinds())
        if (has(entry.Kind->Name.Property) || (entry.Written && has("ID") && has("target")))
            kinds.push_back(&entry);
    return kinds;
}

void Import::Read(const std::string& bytes) {
    const std::string table = TableText(bytes);
    Csv::Reader reader(table, Csv::SeparatorOf(table));
    Cells cells;
    reader.Next(cells);
    if (!reader.WellQuoted())
        throw Failure(FailureInvalidArgument, "The first row: " + std::string(BadQuotes));
    ReadHeader(cells);
    while (reader.Next(cells))
        Take(cells, reader.WellQuoted(), {.Line = reader.Line()});
}

void Import::Take(Cells& cells, bool wellQuoted, Row row) {
    if (wellQuoted && std::ranges::all_of(cells, &std::string::empty))
        return; // spreadsheets write rows and cells as far as anything was ever typed
    while (cells.size() > columns.size() && cells.back().empty())
        cells.pop_back();
    if (!wellQuoted || cells.size() > columns.size()) {
        Refuse(row, wellQuoted ? "it has more cells than there are columns" : std::string(BadQuotes));
        return Keep(std::move(row));
    }
    if (HasColumn(Column::Use::Target))
        TakeText(cells, std::move(row));
    else
        TakeRecord(cells, std::move(row));
}

void Import::ReadHeader(const Cells& headings) {
    columns.clear();
    for (const std::string& heading : headings)
        columns.push_back(ColumnOf(heading));
    const bool texts = HasColumn(Column::Use::Target);
    if (texts ? !HasColumn(Column::Use::ID) || !HasColumn(Column::Use::Source)
              : !HasColumn(Column::Use::Name))
        throw Failure(FailureInvalidArgument, "The first row names no column " +
                                                  std::string(library.Kind.Name.Property) +
                                                  ", nor the columns source, target and ID");
    for (std::size_t i = 0; i < columns.size(); ++i)
        if (columns[i].For == Column::Use::None && !headings[i].empty() && !IsPosition(headings[i]) &&
            !(texts && IsForTranslators(headings[i])))
            unknown.push_back(headings[i]);
}

bool Import::HasColumn(Column::Use use) const {
    return std::ranges::find(columns, use, &Column::For) != columns.end();
}

Import::Column Import::ColumnOf(const std::string& heading) const {
    const auto is = [&](std::string_view name) { return CodePage::EqualNoCase(heading, name); };
    const RecordKind& kind = library.Kind;
    if (is(kind.Name.Property))
        return {Column::Use::Name};
    if (is(FileProperty))
        return {Column::Use::File};
    Column column;
    kind.ForEachField([&](const Field& field) {
        if (is(field.Property) && field.Type != FieldType::List)
            column = {Column::Use::Field, &field};
    });
    if (column.Shown)
        return column;
    for (const auto& [name, use] :
         {std::pair("source", Column::Use::Source), {"target", Column::Use::Target}, {"ID", Column::Use::ID}})
        if (is(name))
            return {use};
    return {};
}

void Import::Keep(Row row) {
    if (row.Is == Outcome::Same)
        ++same;
    else
        rows.push_back(std::move(row));
}

void Import::TakeRecord(const Cells& cells, Row row) {
    for (std::size_t i = 0; i < cells.size(); ++i)
        if (columns[i].For == Column::Use::Name)
            row.Name = CodePage::FromUtf8Lossy(Csv::Unguarded(cells[i]));
    const Record* before = library.Find(row.Name);
    const std::unique_ptr<Record> after = before ? library.Kind.Copy(*before) : library.Kind.Make();
    if (before) {
        row.Name = library.NameOf(*before);
    } else {
        row.Is = Outcome::New;
        library.Kind.Name.SetText(*after, row.Name);
        after->ShortName = files.Of(own);
        if (row.Name.empty())
            Refuse(row, "it names no record");
        else if (!IsLegalName(row.Name))
            Refuse(row, "the game takes no such name");
    }
    if (!met.TryAdd(row.Name, true))
        Refuse(row, "the table has this record twice");
    for (std::size_t i = 0; i < cells.size(); ++i)
        if (columns[i].For == Column::Use::Field)
            SetField(*columns[i].Shown, cells[i], before, *after, row);
        else if (columns[i].For == Column::Use::File)
            SetFile(cells[i], before, *after, row);
    if (row.Is != Outcome::Refused)
        NoteChanges(before, *after, row);
    if (row.Is == Outcome::New || row.Is == Outcome::Changed)
        Judge(before, *after, row);
    Keep(std::move(row));
}

void Import::SetField(const Field& field, const std::string& cell, const Record* before, Record& after,
                      Row& row) const {
    const std::string property(field.Property);
    if (field.Type == FieldType::Text) {
        if (before && cell == field.TextOf(*before) && Utf8::IsAscii(cell))
            return; // nearly all of them
        const std::string text = Csv::Unguarded(cell);
        if (before && text == CodePage::ToUtf8(field.TextOf(*before)))
            return; // whatever it holds
        std::string reason;
        if (const auto bytes = FieldText(text, reason))
            field.SetText(after, *bytes);
        else
            Refuse(row, property + ": " + reason);
        return;
    }
    const std::string number = Csv::Unguarded(cell);
    if (number.empty())
        return;
    try {
        field.SetNumber(after, FieldToInt32(number));
    } catch (const Failure& failure) {
        Refuse(row, property + ": " + number + ": " + failure.Description());
    }
}

void Import::SetFile(const std::string& cell, const Record* before, Record& after, Row& row) {
    const std::string file = PathTexts::FromHostText(Csv::Unguarded(cell));
    if (file.empty() || (before && CodePage::EqualNoCase(file, before->ShortName)))
        return;
    const std::string refusal = FileRefusal(library.Kind, before ? before->ShortName : std::string(), file);
    if (!refusal.empty())
        Refuse(row, std::string(FileProperty) + ": " + refusal);
    else
        after.ShortName = files.Of(file);
}

void Import::NoteChanges(const Record* before, const Record& after, Row& row) const {
    // Most rows change nothing: told before anything is copied.
    if (before && before->ShortName == after.ShortName && SameContent(library.Kind, *before, after))
        return;
    const auto legal = library.Kind.Copy(after);
    NormalizeChanges(library.Kind, before, *legal);
    library.Kind.ForEachField([&](const Field& field) {
        if (field.Type == FieldType::List || (before && field.Get(*before) == field.Get(*legal)))
            return;
        row.Changes.push_back(
            {field.Property, before ? field.Shown(*before) : std::string(), field.Shown(*legal)});
    });
    if (!before || before->ShortName != after.ShortName)
        row.Changes.push_back({FileProperty, before ? before->ShortName : std::string(), after.ShortName});
    if (before && !row.Changes.empty())
        row.Is = Outcome::Changed;
}

/// Refuses a record that would break a rule that it does not break as it is.
void Import::Judge(const Record* before, const Record& after, Row& row) const {
    for (const Problem& problem : NewProblems(library.Kind, context, before, after))
        if (problem.Level == Severity::Error) {
            Refuse(row, problem.Text);
            row.Rule = problem.Rule;
            return;
        }
}

void Import::TakeText(const Cells& cells, Row row) {
    std::string source;
    std::string target;
    std::string id;
    for (std::size_t i = 0; i < cells.size(); ++i)
        if (columns[i].For == Column::Use::Source)
            source = Csv::Unguarded(cells[i]);
        else if (columns[i].For == Column::Use::Target)
            target = Csv::Unguarded(cells[i]);
        else if (columns[i].For == Column::Use::ID)
            id = Csv::Unguarded(cells[i]);
    const std::string prefix = std::string(library.Kind.Word) + ".";
    if (!id.starts_with(prefix) && IsOfAnyKind(id))
        return; // a text of another kind
    if (target.empty())
        return Keep(std::move(row)); // not translated
    const std::size_t dot = id.rfind('.');
    const Field* field =
        id.starts_with(prefix) ? TranslatableField(library.Kind, id.substr(dot + 1)) : nullptr;
    row.Name = field && dot > prefix.size()
                   ? CodePage::FromUtf8Lossy(id.substr(prefix.size(), dot - prefix.size()))
                   : id;
    if (!field || !met.TryAdd(id, true)) {
        Refuse(row, field ? "the table has this text twice" : "no text has this ID");
        return Keep(std::move(row));
    }
    TakeTranslation(*field, source, target, row);
    Keep(std::move(row));
}

/// Each text is judged by itself, on top of those taken before: what is wrong with one does not hold up the
/// others.
void Import::TakeTranslation(const Field& field, const std::string& source, const std::string& target,
                             Row& row) {
    const Record* before = library.Find(row.Name);
    const std::string text = before ? CodePage::ToUtf8(field.TextOf(*before)) : std::string();
    if (before && text == target)
        return;
    if (!before || text != source) {
        row.Is = Outcome::Conflict;
        row.Reason = before ? std::string(field.Property) + ": the text has changed since the export"
                            : "the record is gone";
        return;
    }
    if (!texted.Exists(row.Name))
        texted.Add(row.Name, library.Kind.Copy(*before));
    std::unique_ptr<Record>& soFar = *texted.Find(row.Name);
    std::unique_ptr<Record> after = library.Kind.Copy(*soFar);
    SetField(field, target, before, *after, row);
    if (row.Is == Outcome::Refused)
        return;
    NoteChanges(soFar.get(), *after, row);
    if (row.Is == Outcome::Changed)
        Judge(before, *after, row);
    if (row.Is == Outcome::Changed)
        soFar = std::move(after);
}

std::size_t Import::CountOf(Outcome outcome) const {
    return outcome == Outcome::Same ? same
                                    : static_cast<std::size_t>(std::ranges::count(rows, outcome, &Row::Is));
}

void Import::Apply(const Row& row, Record& record) const {
    for (const FieldChange& change : row.Changes)
        library.Kind.ForEachField([&](const Field& field) {
            if (field.Property != change.Property)
                return;
            if (field.Type == FieldType::Text)
                field.SetText(record, change.After);
            else
                field.SetNumber(record, FieldToInt32(change.After));
        });
    record.IsDirty = true;
    record.IsBeingAdded = false;
}

Edits::Step Import::StepOf(const std::string& folder, const std::function<bool(const Row&)>& wanted) const {
    const auto taken = [&](const Row& row) {
        return (row.Is == Outcome::New || row.Is == Outcome::Changed) && (!wanted || wanted(row));
    };
    const auto count = std::ranges::count_if(rows, taken);
    Edits::Step step(library, "import of " + std::to_string(count) + (count == 1 ? " row" : " rows"));
    KeyedCollection<Record*> changed; // texts of one record come in several rows
    for (const Row& row : rows) {
        if (!taken(row))
            continue;
        const auto file = std::ranges::find(row.Changes, FileProperty, &FieldChange::Property);
        if (!changed.Exists(row.Name)) {
            Record* record = nullptr;
            if (row.Is == Outcome::New) {
                record = &step.Add(row.Name, folder, file->After);
                step.NoteFile(file->After);
            } else if (file != row.Changes.end()) {
                record = &step.Move(row.Name, folder, file->Before, file->After);
            } else {
                record = &step.Change(row.Name);
            }
            changed.Add(row.Name, record);
        }
        Apply(row, **changed.Find(row.Name));
    }
    return step;
}

} // namespace velmora
