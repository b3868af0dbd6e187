#include "records/Replacement.h"

#include "platform/CodePage.h"
#include "platform/PathTexts.h"
#include "records/CheckRecords.h"

#include <algorithm>
#include <utility>

namespace velmora {

namespace {

/// Why no file could hold a text between quotes; empty when one could.
std::string_view RefusalOf(std::string_view text) {
    if (text.find('"') != std::string_view::npos)
        return "a double quote would end the text";
    if (text.find_first_of("\r\n") != std::string_view::npos)
        return "a line break would end the text; write \\n";
    if (text.find('\0') != std::string_view::npos)
        return "no text file holds a NUL character";
    if (text.find('\x7F') != std::string_view::npos && PathTexts::ToHostText(text) != CodePage::ToUtf8(text))
        return "a character is not in the game's code page";
    return {};
}

} // namespace

void Replacement::Begin(Request newRequest, std::shared_ptr<const CheckContext> checkContext) {
    request = std::move(newRequest);
    context = std::move(checkContext);
    lines.clear();
    chosen.clear();
    Restart();
}

void Replacement::Restart() {
    lines.clear();
    givenUp.clear();
    known = request.What && !request.Fields.empty() ? library.Count() : 0;
    next = 0;
    nextToCheck = 0;
}

std::string Replacement::KeyOf(const Line& line) const {
    return CodePage::ToLower(library.NameOf(RecordOf(line))) + '\n' + std::string(FieldOf(line).Property);
}

bool Replacement::Work(std::chrono::microseconds time) {
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + time;
    if (!Stands())
        return true;
    do {
        if (!Found()) { // a regular expression may take milliseconds on one record
            Find(next++);
        } else if (!Done()) {
            const std::size_t from = std::exchange(nextToCheck, EndOfRecord(nextToCheck));
            CheckRecord(Lines(lines).subspan(from, nextToCheck - from));
        }
    } while (!Done() && Clock::now() < end);
    return Done();
}

std::size_t Replacement::EndOfRecord(std::size_t line) const {
    std::size_t end = line + 1;
    while (end < lines.size() && lines[end].At.Position == lines[line].At.Position)
        ++end;
    return end;
}

void Replacement::Find(std::size_t position) {
    const Record& record = library.At(position);
    if (request.Within && !request.Within(record))
        return;
    for (std::uint32_t field = 0; field < request.Fields.size(); ++field) {
        const Place place{static_cast<std::uint32_t>(position), field};
        Line line{place, 0};
        if (!request.What->ForEachHit(request.Fields[field]->TextOf(record),
                                      [&](auto, auto, auto) { ++line.Hits; }))
            givenUp.push_back(place);
        if (line.Hits > 0)
            lines.push_back(line);
    }
}

std::string Replacement::Replaced(const Line& line, std::string_view* refusal) const {
    const std::string& text = FieldOf(line).TextOf(RecordOf(line));
    std::string result;
    std::size_t done = 0;
    request.What->ForEachHit(text, [&](std::size_t at, std::size_t length, std::string_view with) {
        result.append(text, done, at - done).append(with);
        done = at + length;
        if (refusal && refusal->empty())
            *refusal = RefusalOf(with);
    });
    return result.append(text, done);
}

void Replacement::Commit(const Line& line, std::string_view text, Record& scratch, Record& record) const {
    // Normalising each text by itself costs no copy of the others.
    FieldOf(line).SetText(scratch, text);
    if (library.Kind.Normalize)
        library.Kind.Normalize(scratch);
    FieldOf(line).SetText(record, FieldOf(line).TextOf(scratch));
    FieldOf(line).SetText(scratch, {});
}

void Replacement::Refuse(Line& line, std::string_view reason) {
    line.Refused = true;
    line.Ticked = false;
    line.Note = reason;
}

void Replacement::CheckRecord(Lines ofRecord) {
    const auto after = library.Kind.Copy(RecordOf(ofRecord.front()));
    const auto scratch = library.Kind.Make();
    for (Line& line : ofRecord) {
        std::string_view refusal;
        const std::string text = Replaced(line, &refusal);
        refusal.empty() ? Commit(line, text, *scratch, *after) : Refuse(line, refusal);
    }
    for (Line& line : ofRecord)
        if (!line.Refused && FieldOf(line).TextOf(*after) == FieldOf(line).TextOf(RecordOf(line)))
            Refuse(line, "stays as it is");
    NoteProblems(ofRecord, *after);
    if (chosen.empty())
        return;
    for (Line& line : ofRecord)
        if (const auto choice = chosen.find(KeyOf(line)); choice != chosen.end() && !line.Refused)
            line.Ticked = choice->second;
}

void Replacement::NoteProblems(Lines ofRecord, const Record& after) {
    for (const Problem& problem : NewProblems(library.Kind, *context, &RecordOf(ofRecord.front()), after)) {
        const auto isOf = [&](const Line& line) {
            return FieldOf(line).Property == problem.Field && !line.Refused;
        };
        auto line = std::ranges::find_if(ofRecord, isOf);
        if (line == ofRecord.end()) // of the record as a whole
            line = std::ranges::find_if(ofRecord, [](const Line& any) { return !any.Refused; });
        if (line == ofRecord.end() || !line->Note.empty())
            continue;
        line->Note = problem.Rule;
        line->Ticked = false;
    }
}

Replacement::Totals Replacement::Sum() const {
    Totals sum;
    for (std::size_t from = 0; from < lines.size();) {
        const std::size_t end = EndOfRecord(from);
        bool ticked = false;
        for (; from < end; ++from) {
            const Line& line = lines[from];
            sum.Hits += line.Hits;
            sum.TickedHits += line.Ticked ? line.Hits : 0;
            sum.Refused += line.Refused ? 1 : 0;
            sum.WithProblems += !line.Refused && !line.Note.empty() ? 1 : 0;
            ticked = ticked || line.Ticked;
        }
        ++sum.Records;
        sum.TickedRecords += ticked ? 1 : 0;
    }
    return sum;
}

Edits::Step Replacement::MakeStep(std::string name) const {
    Edits::Step step(library, std::move(name));
    const auto scratch = library.Kind.Make();
    const auto ticked = [](const Line& line) { return line.Ticked; };
    for (std::size_t from = 0; from < lines.size();) {
        const std::size_t end = EndOfRecord(from);
        const auto ofRecord = std::span(lines).subspan(from, end - from);
        from = end;
        if (std::ranges::none_of(ofRecord, ticked))
            continue;
        // What was not replaced stays, percent signs and all.
        Record& record = step.Change(library.NameOf(RecordOf(ofRecord.front())));
        for (const Line& line : ofRecord)
            if (line.Ticked)
                Commit(line, Replaced(line), *scratch, record);
        record.IsDirty = true;
    }
    return step;
}

std::string_view Replacement::GroupOf(std::size_t line) const {
    return Stands() ? RecordOf(lines[line]).ShortName : std::string_view();
}

std::pair<std::string_view, std::string_view> Replacement::NamesOf(std::size_t line) const {
    if (!Stands())
        return {};
    return {library.NameOf(RecordOf(lines[line])), FieldOf(lines[line]).Property};
}

ChangeList::Proposal Replacement::At(std::size_t at) const {
    if (!Stands())
        return {};
    const Line& line = lines[at];
    const Record& record = RecordOf(line);
    const auto after = library.Kind.Make();
    Commit(line, Replaced(line), *library.Kind.Make(), *after);
    return {library.NameOf(record), FieldOf(line).Property, FieldOf(line).TextOf(record),
            FieldOf(line).TextOf(*after), std::string(line.Note)};
}

void Replacement::Tick(std::size_t at, bool ticked) {
    Line& line = lines[at];
    if (line.Refused || !Stands())
        return;
    line.Ticked = ticked;
    chosen[KeyOf(line)] = ticked;
}

} // namespace velmora
