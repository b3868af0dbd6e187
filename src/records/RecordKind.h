#pragma once

#include "records/Preview.h"
#include "records/Record.h"
#include "services/Problem.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace velmora {

/// How a value stands in a file.
enum class FieldType {
    Text,
    Number,     ///< turned into 32 bits as its line is read
    LateNumber, ///< turned into 32 bits only when its block ends; must then have been given in the file
    List,       ///< each line of a block adds an entry; a block without one adds an empty entry
};

/// A field's value: a text, a number or a list, as the field's type says.
using FieldValue = std::variant<std::string, std::int32_t, std::vector<std::string>>;

/// One line of a record's block: its key in the file and the member that holds it.
struct Field {
    std::string_view Key;
    std::string_view Property; ///< name of the member
    FieldType Type;
    const std::string& (*TextOf)(const Record&) = nullptr;
    std::int32_t (*NumberOf)(const Record&) = nullptr;
    const std::vector<std::string>& (*ListOf)(const Record&) = nullptr;
    void (*SetText)(Record&, std::string_view) = nullptr; ///< for a list: adds an entry
    void (*SetNumber)(Record&, std::int32_t) = nullptr;
    void (*ClearList)(Record&) = nullptr;
    int Blanks = 1;              ///< blanks between key and value when written
    bool EmptyLineAfter = false; ///< an empty line follows when written

    // Whatever the type; reading a file goes straight to the members.
    [[nodiscard]] FieldValue Get(const Record& record) const;
    /// The value as a text, the entries of a list joined by "; ".
    [[nodiscard]] std::string Shown(const Record& record) const;
    /// Replaces the value. Throws std::bad_variant_access for a value of another type. A list drops entries
    /// that it holds already.
    void Set(Record& record, const FieldValue& value) const;
};

template <class Member>
struct MemberOwner;
template <class Type, class Owner>
struct MemberOwner<Type Owner::*> {
    using type = Owner;
};
template <auto Member>
using OwnerOf = typename MemberOwner<decltype(Member)>::type;

/// The field of a text member.
template <auto Member>
constexpr Field TextField(std::string_view key, int blanks = 1, bool emptyLineAfter = false,
                          std::string_view property = {}) {
    using Owner = OwnerOf<Member>;
    Field field{key, property.empty() ? key : property, FieldType::Text};
    field.TextOf = [](const Record& r) -> const std::string& { return static_cast<const Owner&>(r).*Member; };
    field.SetText = [](Record& r, std::string_view text) { (static_cast<Owner&>(r).*Member).assign(text); };
    field.Blanks = blanks;
    field.EmptyLineAfter = emptyLineAfter;
    return field;
}

/// The field of a number member.
template <auto Member>
constexpr Field NumberField(std::string_view key, int blanks = 1, bool emptyLineAfter = false,
                            std::string_view property = {}, FieldType type = FieldType::Number) {
    using Owner = OwnerOf<Member>;
    Field field{key, property.empty() ? key : property, type};
    field.NumberOf = [](const Record& r) { return static_cast<const Owner&>(r).*Member; };
    field.SetNumber = [](Record& r, std::int32_t number) { static_cast<Owner&>(r).*Member = number; };
    field.Blanks = blanks;
    field.EmptyLineAfter = emptyLineAfter;
    return field;
}

/// The field of a list: `List` is the member function that shows it, `Add` adds an entry, `Clear` drops all.
template <auto List, auto Add, auto Clear>
constexpr Field ListField(std::string_view key, std::string_view property) {
    using Owner = OwnerOf<List>;
    Field field{key, property, FieldType::List};
    field.ListOf = [](const Record& r) -> const std::vector<std::string>& {
        return (static_cast<const Owner&>(r).*List)();
    };
    field.SetText = [](Record& r, std::string_view text) { (static_cast<Owner&>(r).*Add)(text); };
    field.ClearList = [](Record& r) { (static_cast<Owner&>(r).*Clear)(); };
    return field;
}

class CheckContext;

/// Everything that tells one kind of record from another: the words of its files, the table of its fields and
/// the names that failures are reported under.
struct RecordKind {
    std::string_view Word;        ///< "event": the kind in machine-readable output
    std::string_view Window;      ///< "frmEvents": prefix of routine names
    std::string_view NameWord;    ///< "Event": the kind in reports about names
    std::string_view Header;      ///< "EVENT": key of a block's first line
    std::string_view End;         ///< "ENDEVENT": key of a block's last line
    std::string_view Extension;   ///< ".event"
    std::string_view BackupMark;  ///< "EVENT": backups end in ".1st" and ".latest" with this word
    std::string_view LoadRoutine; ///< "LoadCurrentEvents"
    std::string_view ParseRoutine;
    std::string_view ReorderRoutine;
    std::string_view MissingFolderText;
    std::string_view DuplicateText; ///< up to the name: "Duplicate event found!  EventName = "
    std::string_view DuplicateRule;
    bool EmptyLineAfterHeader = false;
    bool ValuesKeepBlanks = false;     ///< each piece of an unquoted value keeps one blank before it
    std::optional<Field> HeaderNumber; ///< where the header holds a number before the name

    std::span<const Field> Fields;                          ///< in file order, those of the header left out
    Field Name;                                             ///< the member that the header names
    const std::string& (*BlurbOf)(const Record&) = nullptr; ///< what a record is about, in its own words
    Field Title;                                            ///< what stands beside the name in a list
    std::string_view TitleWord;                             ///< "Question": its heading there
    std::string_view (*TypeOf)(const Record&) =
        nullptr; ///< word of the game's vocabulary, as the form has it
    /// Name of the choice that a number stands for, as the form has it; empty for one that is none. Not set
    /// for a kind without.
    std::string (*ChoiceOf)(const Field&, const Record&) = nullptr;
    std::int32_t& (*Number)(Record&) = nullptr; ///< 1-based position in the editor's order
    std::unique_ptr<Record> (*Make)() = nullptr;
    std::unique_ptr<Record> (*Copy)(const Record&) = nullptr; ///< all of it, flags and numbers included
    /// Makes of a record what showing it makes: legal percent signs and numbers. Not set for a kind without.
    void (*Normalize)(Record&) = nullptr;
    /// Appends what is wrong with a record, as it would be once it is normalised. Any thread may ask. Not set
    /// for a kind without checks beyond those of loading.
    void (*Check)(const Record&, const CheckContext&, std::vector<Problem>&) = nullptr;
    /// What a "%s" in its texts can stand for; not set for a kind without.
    const Catalogue& (*Substitutions)() = nullptr;
    /// The record as the player meets it.
    Preview (*PreviewOf)(const Record&, const SampleNames&) = nullptr;
    double (*ReadNumber)(std::string_view) = nullptr; ///< the number at the start of a value

    [[nodiscard]] std::string Routine(std::string_view procedure) const {
        return std::string(Window) + "_" + std::string(procedure);
    }
    [[nodiscard]] const std::string& NameOf(const Record& record) const { return Name.TextOf(record); }
    [[nodiscard]] std::int32_t NumberOf(const Record& record) const {
        return Number(const_cast<Record&>(record)); // only read
    }

    /// Calls `visit` with each content field but the name, in file order.
    template <class Visit>
    void ForEachField(const Visit& visit) const {
        if (HeaderNumber)
            visit(*HeaderNumber);
        for (const Field& field : Fields)
            visit(field);
    }
    /// Sets what makes records of a type.
    template <class Type>
    void Makes() {
        Make = []() -> std::unique_ptr<Record> { return std::make_unique<Type>(); };
        Copy = [](const Record& record) -> std::unique_ptr<Record> {
            return std::make_unique<Type>(static_cast<const Type&>(record));
        };
    }
};

/// Stands above and below the header of each block.
constexpr std::string_view SeparatorLine =
    "//------------------------------------------------------------------------\r\n";

/// The block of file text of a record, appended to `text`. Texts are made fit for a file (TextForFile).
void AppendBlock(const RecordKind& kind, const Record& record, std::string& text);
std::string BlockOf(const RecordKind& kind, const Record& record);

/// True when all content but the name is the same.
bool SameContent(const RecordKind& kind, const Record& one, const Record& other);
/// Gives a record the content of another, all but the name.
void CopyContent(const RecordKind& kind, const Record& from, Record& to);
/// Gives what differs from a record as it was the form that showing gives it; all of it where there was none.
void NormalizeChanges(const RecordKind& kind, const Record* before, Record& after);
/// A second record like the first, with its name, flags, status and file.
std::unique_ptr<Record> Clone(const RecordKind& kind, const Record& record);

} // namespace velmora
