#include "events/clsEvent.h"

#include "events/EventPreview.h"
#include "events/EventRules.h"
#include "records/CheckContext.h"
#include "services/Numbers.h"

#include <array>

namespace velmora {

namespace {

using E = clsEvent;

constexpr std::array<Field, 28> EventFields{
    TextField<&E::Title>("Title", 14),
    TextField<&E::Description>("Description", 8),
    TextField<&E::Image>("Image", 14),
    NumberField<&E::EventType>("EventType", 10, true),
    TextField<&E::GoodOption>("GoodOption", 9),
    TextField<&E::NeutralOption>("NeutralOption", 6),
    TextField<&E::EvilOption>("EvilOption", 9, true),
    NumberField<&E::GoodAttribute>("GoodAttribute", 9),
    NumberField<&E::NeutralAttribute>("NeutralAttribute", 6),
    NumberField<&E::EvilAttribute>("EvilAttribute", 9, true),
    NumberField<&E::GoodValue>("GoodValue", 9),
    NumberField<&E::NeutralValue>("NeutralValue", 6),
    NumberField<&E::EvilValue>("EvilValue", 9, true),
    NumberField<&E::GoodPopChange>("GoodPopChange", 5),
    NumberField<&E::NeutralPopChange>("NeutralPopChange", 2),
    NumberField<&E::EvilPopChange>("EvilPopChange", 5, true),
    NumberField<&E::MoralityWeight>("MoralityWeight", 8),
    NumberField<&E::Probability>("Probability", 2, true),
    NumberField<&E::DescStr01>("DescStr01", 2),
    NumberField<&E::DescStr02>("DescStr02", 2),
    NumberField<&E::DescStr03>("DescStr03", 2),
    NumberField<&E::DescStr04>("DescStr04", 2, true),
    NumberField<&E::GoodOptStr01>("GoodOptStr01", 2),
    NumberField<&E::GoodOptStr02>("GoodOptStr02", 2, true),
    NumberField<&E::NeutralOptStr01>("NeutralOptStr01", 1),
    NumberField<&E::NeutralOptStr02>("NeutralOptStr02", 1, true),
    NumberField<&E::EvilOptStr01>("EvilOptStr01", 2),
    NumberField<&E::EvilOptStr02>("EvilOptStr02", 2, true),
};

std::string ChoiceOf(const Field& field, const Record& record) {
    const auto& event = static_cast<const E&>(record);
    if (field.Property == "MoralityWeight")
        return std::to_string(LegalMoralityWeight(event.MoralityWeight));
    if (!field.Property.ends_with("Attribute"))
        return {};
    return NameByNumber(EventAttributes(event.EventType), field.NumberOf(record));
}

void CheckRecord(const Record& record, const CheckContext& context, std::vector<Problem>& problems) {
    const auto& event = static_cast<const E&>(record);
    problems = CheckEvent(event, context.HasPicture(event.Image), EventSubs());
    CheckEventLengths(event, problems);
}

RecordKind MakeEventKind() {
    RecordKind kind;
    kind.Word = "event";
    kind.Window = "frmEvents";
    kind.NameWord = "Event";
    kind.Header = "EVENT";
    kind.End = "ENDEVENT";
    kind.Extension = ".event";
    kind.BackupMark = "EVENT";
    kind.LoadRoutine = "LoadCurrentEvents";
    kind.ParseRoutine = "ParseOutEventFile";
    kind.ReorderRoutine = "ReorderEvents";
    kind.MissingFolderText = "Unable to acces the Velmora Data directory!";
    kind.DuplicateText = "Duplicate event found!  EventName = ";
    kind.DuplicateRule = "duplicate-event";
    kind.Fields = EventFields;
    kind.Name = TextField<&E::EventName>("EVENT", 1, false, "EventName");
    kind.BlurbOf = TextField<&E::Description>("Description").TextOf;
    kind.Title = TextField<&E::Title>("Title");
    kind.TitleWord = "Title";
    kind.TypeOf = [](const Record& record) -> std::string_view {
        return static_cast<const E&>(record).EventType == 1 ? "Random" : "Colonial";
    };
    kind.ChoiceOf = ChoiceOf;
    kind.Number = [](Record& record) -> std::int32_t& { return static_cast<E&>(record).EventNumber; };
    kind.Makes<E>();
    kind.Normalize = [](Record& record) { NormalizeEvent(static_cast<E&>(record)); };
    kind.Check = CheckRecord;
    kind.Substitutions = EventSubs;
    kind.PreviewOf = [](const Record& record, const SampleNames& samples) {
        return PreviewEvent(static_cast<const E&>(record), samples);
    };
    kind.ReadNumber = LeadingNumber;
    return kind;
}

} // namespace

const RecordKind EventKind = MakeEventKind();

std::string clsEvent::GenerateEventString(bool) const {
    return BlockOf(EventKind, *this);
}

} // namespace velmora
