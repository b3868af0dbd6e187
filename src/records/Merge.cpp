#include "records/Merge.h"

#include "platform/CodePage.h"
#include "platform/Failure.h"
#include "platform/TextLines.h"
#include "records/LineGrammar.h"
#include "records/RecordFile.h"

#include <algorithm>
#include <array>
#include <unordered_set>
#include <utility>

namespace velmora {

namespace {

constexpr std::array<std::string_view, 3> ConflictLines{"<<<<<<< ours", "=======", ">>>>>>> theirs"};
constexpr std::array<std::string_view, 3> ConflictSigns{"<<<<<<< ",
                                                        "=======", ">>>>>>> "}; ///< whoever merged

std::string WithLineEnd(std::string_view text) {
    std::string whole(text);
    if (!whole.empty() && whole.back() != '\n')
        whole += whole.back() == '\r' ? "\n" : "\r\n"; // a file may end within its last line end
    return whole;
}

/// One record on the three sides and what becomes of it.
struct Merged {
    const Record* Wanted = nullptr;     ///< what it is to be, nullptr for none or a conflict
    std::string_view Kept = {};         ///< what is written for it, as a side has it
    std::string Text = {};              ///< what is written in its place
    std::unique_ptr<Record> Built = {}; ///< where no side has it as it is to be
    [[nodiscard]] bool Stays() const { return !Kept.empty() || !Text.empty(); }
    [[nodiscard]] std::string_view Written() const { return Text.empty() ? Kept : std::string_view(Text); }
};

class Merging {
  public:
    Merging(const RecordKind& mergedKind, const std::string& baseBytes, const std::string& ourBytes,
            const std::string& theirBytes)
        : kind(mergedKind) {
        base.Read(kind, baseBytes);
        ours.Read(kind, ourBytes);
        theirs.Read(kind, theirBytes);
        for (const RecordFile* side : {&base, &ours, &theirs}) {
            if (!side->Fault.empty())
                throw Failure(FailureInvalidArgument, side->Fault);
            for (const auto& [name, part] : side->Parts)
                if (!records.Exists(name))
                    records.Add(name, MergeRecord(name));
        }
    }

    MergeResult Run() {
        MergeResult result;
        const std::vector<std::string> order = Order();
        // A value may have come from a block before that is another one now.
        if (!base.GivesAll || !ours.GivesAll || !theirs.GivesAll)
            KeepValues(order);
        result.Text.reserve(std::max(ours.Bytes.size(), theirs.Bytes.size()) + theirs.Bytes.size() / 16);
        for (const std::string& name : order)
            result.Text += records.Find(name)->Written();
        result.Text += MergeTails();
        result.Conflicts = std::move(conflicts);
        return result;
    }

  private:
    using Part = RecordFile::Part;

    [[nodiscard]] bool Same(const Part& one, const Part& other) const {
        return kind.NameOf(*one.Content) == kind.NameOf(*other.Content) &&
               SameContent(kind, *one.Content, *other.Content);
    }

    /// Of two wordings that say the same the one that was changed; of two changed ones the longer.
    static std::string_view Chosen(std::string_view before, std::string_view our, std::string_view their) {
        if (our == before || their == before)
            return our == before ? their : our;
        return std::pair(our.size(), our) < std::pair(their.size(), their) ? their : our;
    }

    /// The empty lines and comments above a record.
    [[nodiscard]] std::string Above(std::string_view text) const {
        std::string above;
        std::string scratch;
        KeyValue parts;
        for (const std::string_view line : TextLines::Split(text)) {
            if (SplitLine(line, kind.ValuesKeepBlanks, scratch, parts)) {
                if (CodePage::EqualNoCase(parts.Key, kind.Header))
                    break;
            } else if (!SeparatorLine.starts_with(line) || line.empty()) {
                above.append(line).append("\r\n");
            }
        }
        return above;
    }
    [[nodiscard]] std::string Above(const Part* before, const Part* our, const Part* their) const {
        const auto of = [&](const Part* part) { return part ? Above(part->Text) : std::string(); };
        if (!our || !their)
            return of(our ? our : their);
        return WithLineEnd(Chosen(of(before), of(our), of(their)));
    }

    /// The block of a record without the empty lines behind it: those stand above the next one.
    [[nodiscard]] std::string Block(const Record& record) const {
        std::string block = BlockOf(kind, record);
        block.erase(block.find_last_not_of("\r\n") + 1);
        return block + "\r\n";
    }

    Merged MergeRecord(const std::string& name) {
        const Part* before = base.Parts.Find(name);
        const Part* our = ours.Parts.Find(name);
        const Part* their = theirs.Parts.Find(name);
        if (our && their && Same(*our, *their))
            return Keep(*our->Content, Chosen(before ? before->Text : "", our->Text, their->Text));
        if (!our && !their)
            return {};
        if (!our || !their) {
            const Part& left = our ? *our : *their;
            if (before && !Same(*before, left))
                return Conflict(name, our, their, {});
            return before ? Merged() : Take(left);
        }
        if (before && Same(*before, *our))
            return Take(*their);
        if (before && Same(*before, *their))
            return Take(*our);
        return before ? MergeFields(name, *before, *our, *their) : Conflict(name, our, their, {});
    }
    static Merged Take(const Part& part) { return Keep(*part.Content, part.Text); }
    static Merged Keep(const Record& record, std::string_view text) {
        Merged merged{&record};
        if (text.ends_with('\n'))
            merged.Kept = text;
        else
            merged.Text = WithLineEnd(text);
        return merged;
    }

    Merged MergeFields(const std::string& name, const Part& before, const Part& our, const Part& their) {
        auto built = kind.Copy(*our.Content);
        std::vector<std::string> clashes;
        const auto merge = [&](const Field& field) {
            const FieldValue old = field.Get(*before.Content);
            const FieldValue mine = field.Get(*our.Content);
            const FieldValue other = field.Get(*their.Content);
            if (mine == old)
                field.Set(*built, other);
            else if (other != old && other != mine)
                clashes.emplace_back(field.Property);
        };
        merge(kind.Name);
        kind.ForEachField(merge);
        if (!clashes.empty())
            return Conflict(name, &our, &their, std::move(clashes));
        std::string text = Above(&before, &our, &their) + Block(*built);
        const Record* wanted = built.get();
        return {wanted, {}, std::move(text), std::move(built)};
    }

    Merged Conflict(const std::string& name, const Part* our, const Part* their,
                    std::vector<std::string> fields) {
        conflicts.push_back({name, std::move(fields)});
        Merged merged;
        merged.Text = Above(base.Parts.Find(name), our, their);
        for (const std::string_view line : ConflictLines) {
            merged.Text.append(line).append("\r\n");
            const Part* side = line == ConflictLines[0] ? our : line == ConflictLines[1] ? their : nullptr;
            if (side)
                merged.Text += Block(*side->Content);
        }
        return merged;
    }

    /// Names of the records that stay and that the base has, in the order of one side.
    std::vector<std::string> Skeleton(const RecordFile& side) const {
        std::vector<std::string> names;
        for (const auto& [name, part] : side.Parts)
            if (base.Parts.Exists(name) && records.Find(name)->Stays())
                names.push_back(CodePage::ToLower(name));
        return names;
    }

    /// What a side adds behind each record of the base, "" for what stands before the first.
    using Additions = KeyedCollection<std::vector<std::string>>;
    void FindAdditions(const RecordFile& side, Additions& additions) const {
        std::string anchor;
        for (const auto& [name, part] : side.Parts) {
            if (base.Parts.Exists(name) && records.Find(name)->Stays())
                anchor = CodePage::ToLower(name);
            else if (!base.Parts.Exists(name))
                (additions.TryAdd(anchor, std::vector<std::string>()),
                 additions.Find(anchor)->push_back(name));
        }
    }

    std::vector<std::string> Order() const {
        // Of sides that both moved records, the one whose order comes first: it must not matter which is
        // ours.
        std::vector<std::string> order = Skeleton(base);
        const std::vector<std::string> mine = Skeleton(ours);
        const std::vector<std::string> other = Skeleton(theirs);
        AddMissing(order, mine, other);
        Additions added;
        Additions addedToo;
        FindAdditions(ours, added);
        FindAdditions(theirs, addedToo);
        std::vector<std::string> names;
        KeyedCollection<bool> placed;
        const auto place = [&](const std::string& name) {
            if (placed.TryAdd(name, true))
                names.push_back(name);
        };
        order.insert(order.begin(), std::string());
        for (std::size_t at = 0; at < order.size(); ++at) {
            const std::string& anchor = order[at];
            if (at > 0) // a block with a mistyped header has no name either
                place(anchor);
            std::vector<std::vector<std::string>> runs;
            for (const Additions* side : {&added, &addedToo})
                if (const auto* run = side->Find(anchor))
                    runs.push_back(*run);
            std::sort(runs.begin(), runs.end());
            for (const auto& run : runs)
                std::for_each(run.begin(), run.end(), place);
        }
        return names;
    }

    /// Takes the order of the side that changed it; of two the lesser one, whichever side that is.
    static void AddMissing(std::vector<std::string>& order, const std::vector<std::string>& mine,
                           const std::vector<std::string>& other) {
        const auto moved = [&](const std::vector<std::string>& side) {
            KeyedCollection<bool> held;
            for (const std::string& name : side)
                held.TryAdd(name, true);
            std::vector<std::string> common = order;
            std::erase_if(common, [&](const std::string& name) { return !held.Exists(name); });
            return common != side;
        };
        const bool mineMoved = moved(mine);
        const bool otherMoved = moved(other);
        if (!mineMoved && !otherMoved)
            return;
        const auto& chosen = mineMoved && otherMoved ? std::min(mine, other) : mineMoved ? mine : other;
        std::vector<std::string> result = chosen;
        const std::unordered_set<std::string> held(chosen.begin(), chosen.end());
        for (const std::string& name : order)
            if (!held.contains(name))
                result.push_back(name);
        order = std::move(result);
    }

    void KeepValues(const std::vector<std::string>& order) {
        for (bool changed = true; changed;) {
            changed = false;
            std::string text;
            for (const std::string& name : order)
                if (records.Find(name)->Wanted)
                    text += records.Find(name)->Written();
            RecordFile read;
            read.Read(kind, text);
            for (const auto& [name, part] : read.Parts) {
                Merged& merged = *records.Find(name);
                if (SameContent(kind, *merged.Wanted, *part.Content))
                    continue;
                std::string written = Above(merged.Written()) + Block(*merged.Wanted);
                changed = changed || written != merged.Text; // else no wording says it better
                merged.Text = std::move(written);
            }
        }
    }

    [[nodiscard]] std::string MergeTails() const {
        if (ours.Tail == base.Tail || ours.Tail == theirs.Tail)
            return std::string(theirs.Tail);
        if (theirs.Tail == base.Tail)
            return std::string(ours.Tail);
        return WithLineEnd(std::min(ours.Tail, theirs.Tail)) + std::string(std::max(ours.Tail, theirs.Tail));
    }

    const RecordKind& kind;
    RecordFile base;
    RecordFile ours;
    RecordFile theirs;
    KeyedCollection<Merged> records;
    std::vector<MergeConflict> conflicts;
};

std::string_view LineFrom(std::string_view text, std::size_t at) {
    text.remove_prefix(at);
    return TextLines::Take(text);
}

/// True when a text holds lines of signs in the order in which they stand around the sides of a conflict. One
/// of them alone may be a remark.
bool HoldsConflict(std::string_view text) {
    std::size_t at = 0;
    for (const std::string_view signs : ConflictSigns) {
        at = text.find(signs, at);
        while (at != std::string_view::npos &&
               ((at > 0 && text[at - 1] != '\n') || !IsConflictLine(LineFrom(text, at))))
            at = text.find(signs, at + 1);
        if (at == std::string_view::npos)
            return false;
    }
    return true;
}

} // namespace

bool IsConflictLine(std::string_view line) {
    return line.starts_with(ConflictSigns[0]) || line.starts_with(ConflictSigns[2]) ||
           line == ConflictSigns[1];
}

MergeResult Merge(const RecordKind& kind, const std::string& base, const std::string& ours,
                  const std::string& theirs) {
    for (const std::string* side : {&base, &ours, &theirs})
        if (HoldsConflict(*side))
            throw Failure(FailureInvalidArgument, "A conflict of an earlier merge is not settled yet");
    if (ours == theirs || theirs == base)
        return {ours, {}};
    if (ours == base)
        return {theirs, {}};
    return Merging(kind, base, ours, theirs).Run();
}

} // namespace velmora
