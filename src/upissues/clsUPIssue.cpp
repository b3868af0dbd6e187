#include "upissues/clsUPIssue.h"

#include "services/Catalogues.h"
#include "services/Numbers.h"
#include "upissues/UPIssuePreview.h"
#include "upissues/UPIssueRules.h"

#include <array>

namespace velmora {

namespace {

using U = clsUPIssue;

template <auto Member>
constexpr Field OptionValueField(std::string_view key, bool emptyLineAfter = false) {
    return NumberField<Member>(key, 1, emptyLineAfter, {}, FieldType::LateNumber);
}

constexpr std::array<Field, 28> UPIssueFields{
    TextField<&U::Question>("Question", 4),
    TextField<&U::SubQuestion>("SubQuestion", 1),
    TextField<&U::Option01>("Option01", 4),
    TextField<&U::Option02>("Option02", 4),
    TextField<&U::Option03>("Option03", 4),
    TextField<&U::Option04>("Option04", 4),
    TextField<&U::Option05>("Option05", 4),
    TextField<&U::Option06>("Option06", 4, true),
    OptionValueField<&U::OptionVal01>("OptionVal01"),
    OptionValueField<&U::OptionVal02>("OptionVal02"),
    OptionValueField<&U::OptionVal03>("OptionVal03"),
    OptionValueField<&U::OptionVal04>("OptionVal04"),
    OptionValueField<&U::OptionVal05>("OptionVal05"),
    OptionValueField<&U::OptionVal06>("OptionVal06", true),
    NumberField<&U::UPIssueAttribute>("Attribute", 12, false, "UPIssueAttribute"),
    NumberField<&U::AppliesTo>("AppliesTo", 12),
    NumberField<&U::Prereq>("Prereq", 15),
    NumberField<&U::Probability>("Probability", 10),
    NumberField<&U::YearsInEffect>("YearsInEffect", 8, true),
    NumberField<&U::Value01>("Value01", 5),
    NumberField<&U::Value02>("Value02", 5),
    NumberField<&U::Value03>("Value03", 5),
    NumberField<&U::Value04>("Value04", 5, true),
    NumberField<&U::QuestionStr01>("QuestionStr01", 1),
    NumberField<&U::QuestionStr02>("QuestionStr02", 1),
    NumberField<&U::QuestionStr03>("QuestionStr03", 1),
    NumberField<&U::QuestionStr04>("QuestionStr04", 1, true),
    NumberField<&U::HowAIWouldVote>("HowAIWouldVote", 1, true),
};

void CheckRecord(const Record& record, const CheckContext& /*context*/, std::vector<Problem>& problems) {
    const auto& issue = static_cast<const U&>(record);
    problems = CheckUPIssue(issue, UPIssueSubs());
    CheckUPIssueLengths(issue, problems);
}

RecordKind MakeUPIssueKind() {
    RecordKind kind;
    kind.Word = "upissue";
    kind.Window = "frmUPIssues";
    kind.NameWord = "UP Issue";
    kind.Header = "UPISSUE";
    kind.End = "ENDUPISSUE";
    kind.Extension = ".UPIssue";
    kind.BackupMark = "UPIssue";
    kind.LoadRoutine = "LoadCurrentUPIssues";
    kind.ParseRoutine = "ParseOutUPIssueFile";
    kind.ReorderRoutine = "ReorderUPIssues";
    kind.MissingFolderText = "Unable to acces the Velmora Data\\UP_Issue directory!";
    kind.DuplicateText = "Duplicate UPIssue found!  UPIssueName = ";
    kind.DuplicateRule = "duplicate-upissue";
    kind.EmptyLineAfterHeader = true;
    kind.Fields = UPIssueFields;
    kind.Name = TextField<&U::UPIssueName>("UPISSUE", 1, false, "UPIssueName");
    kind.BlurbOf = TextField<&U::Question>("Question").TextOf;
    kind.Title = TextField<&U::Question>("Question");
    kind.TitleWord = "Question";
    kind.TypeOf = [](const Record& record) -> std::string_view {
        return NameByNumber(UPIssueTypes, static_cast<const U&>(record).UPIssueAttribute);
    };
    kind.Number = [](Record& record) -> std::int32_t& { return static_cast<U&>(record).UPIssueNumber; };
    kind.Makes<U>();
    kind.Normalize = [](Record& record) { NormalizeUPIssue(static_cast<U&>(record)); };
    kind.Check = CheckRecord;
    kind.Substitutions = UPIssueSubs;
    kind.PreviewOf = [](const Record& record, const SampleNames& samples) {
        return PreviewUPIssue(static_cast<const U&>(record), samples);
    };
    kind.ReadNumber = LeadingDecimal;
    return kind;
}

} // namespace

const RecordKind UPIssueKind = MakeUPIssueKind();

std::string clsUPIssue::GenerateUPIssueString(bool) const {
    return BlockOf(UPIssueKind, *this);
}

} // namespace velmora
