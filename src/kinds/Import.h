#pragma once

#include "kinds/FileNames.h"
#include "kinds/Kinds.h"
#include "records/CheckContext.h"
#include "records/Edits.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// A table of records or of their texts that was edited elsewhere, held against a library: what each of its
/// rows would change. Nothing changes before the step that it makes is done, and nothing is ever deleted.
///
/// Rows know records by name. A text is made fit as a commit makes it, and a record that would get a problem
/// that it has not is refused. A translated text whose source is no longer what it was is a conflict.
class Import {
  public:
    enum class Outcome { Same, New, Changed, Refused, Conflict };
    struct FieldChange {
        std::string_view Property; ///< "ShortName" for the file
        std::string Before;
        std::string After;
    };
    struct Row {
        std::size_t Line = 0; ///< in the table, from 1
        std::string Name = {};
        Outcome Is = Outcome::Same;
        std::vector<FieldChange> Changes = {};
        std::string Reason = {};    ///< why it is refused, or what the conflict is
        std::string_view Rule = {}; ///< that the record would break
    };

    /// New records that name no file go to `ownFile`. Library and context have to outlive this.
    Import(const Library& target, const CheckContext& checkContext, std::string ownFile)
        : library(target), context(checkContext), own(std::move(ownFile)), files(target) {}

    /// The kinds that a table may be about by its columns; none when it is no table of ours.
    static std::vector<const KindEntry*> KindsOf(const std::string& bytes);

    /// Takes the table in: UTF-8, UTF-16 with a byte order mark or the code page; separated by commas,
    /// semicolons or tabs. Throws Failure (5) when no column names the records.
    void Read(const std::string& bytes);

    /// All rows but those that change nothing, in order.
    [[nodiscard]] const std::vector<Row>& Rows() const { return rows; }
    [[nodiscard]] std::size_t CountOf(Outcome outcome) const;
    /// Columns that are not known, as they are headed.
    [[nodiscard]] const std::vector<std::string>& UnknownColumns() const { return unknown; }

    /// One step with all rows that are new or changed and `wanted`. `folder` is where the kind's files are.
    [[nodiscard]] Edits::Step StepOf(const std::string& folder,
                                     const std::function<bool(const Row&)>& wanted = {}) const;

  private:
    struct Column {
        enum class Use { Name, Field, File, Source, Target, ID, None } For = Use::None;
        const Field* Shown = nullptr;
    };
    using Cells = std::vector<std::string>;

    void ReadHeader(const Cells& headings);
    void Take(Cells& cells, bool wellQuoted, Row row);
    [[nodiscard]] bool HasColumn(Column::Use use) const;
    [[nodiscard]] Column ColumnOf(const std::string& heading) const;
    void TakeRecord(const Cells& cells, Row row);
    void TakeText(const Cells& cells, Row row);
    void TakeTranslation(const Field& field, const std::string& source, const std::string& target, Row& row);
    void SetField(const Field& field, const std::string& cell, const Record* before, Record& after,
                  Row& row) const;
    void SetFile(const std::string& cell, const Record* before, Record& after, Row& row);
    void Judge(const Record* before, const Record& after, Row& row) const;
    void NoteChanges(const Record* before, const Record& after, Row& row) const;
    void Keep(Row row);
    void Apply(const Row& row, Record& record) const;

    const Library& library;
    const CheckContext& context;
    std::string own;
    std::vector<Column> columns;
    std::vector<std::string> unknown;
    KeyedCollection<bool> met; ///< names of records, or IDs of texts
    FileSpelling files;
    KeyedCollection<std::unique_ptr<Record>> texted; ///< records with the texts that were taken so far
    std::vector<Row> rows;
    std::size_t same = 0;
};

} // namespace velmora
