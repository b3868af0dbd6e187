#include "records/Merge.h"

#include "platform/CodePage.h"
#include "platform/Failure.h"
#include "platform/TextLines.h"
#include "records/LineGrammar.h"
#include "records/RecordFile.h"

#include <algorithm>
#include <array>
#include <future>
#include <iterator>
#include <unordered_map>
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
    const RecordFile::Part* Taken = nullptr; ///< the side that has it as it is to be
    std::string_view Kept = {};              ///< what is written for it, as a side has it
    std::string Text = {};                   ///< what is written in its place
    std::unique_ptr<Record> Built = {};      ///< where no side has it as it is to be
    /// What it is to be, nullptr for none or a conflict.
    [[nodiscard]] const Record* Wanted() const { return Taken ? &Taken->Content() : Built.get(); }
    [[nodiscard]] bool Stays() const { return !Kept.empty() || !Text.empty(); }
    [[nodiscard]] std::string_view Written() const { return Text.empty() ? Kept : std::string_view(Text); }
};

class Merging {
  public:
    Merging(const RecordKind& mergedKind, const std::string& baseBytes, const std::string& ourBytes,
            const std::string& theirBytes)
        : kind(mergedKind) {
        // Each waits for the memory most of the time.
        auto readBase = std::async(std::launch::async, [&] { base.Read(kind, baseBytes); });
        auto readTheirs = std::async(std::launch::async, [&] { theirs.Read(kind, theirBytes); });
        ours.Read(kind, ourBytes);
        readBase.get();
        readTheirs.get();
        baseOrder = Take(base, &Subject::Before);
        ourOrder = Take(ours, &Subject::Our);
        theirOrder = Take(theirs, &Subject::Their);
        for (auto& [name, subject] : records)
            subject.Result = MergeRecord(name, subject);
    }

    MergeResult Run() {
        MergeResult result;
        const Places order = Order();
        // A value may have come from a block before that is another one now.
        if (!GiveAll())
            KeepValues(order);
        result.Text.reserve(std::max(ours.Bytes.size(), theirs.Bytes.size()) + theirs.Bytes.size() / 16);
        for (const std::size_t at : order) {
            result.Text += At(at).Result.Written();
            if (At(at).Result.Built)
                result.Joined.push_back(records.KeyAt(at));
        }
        result.Text += MergeTails();
        result.Conflicts = std::move(conflicts);
        return result;
    }

  private:
    using Part = RecordFile::Part;
    using Places = std::vector<std::size_t>; ///< positions in `records`

    struct Subject {
        const Part* Before = nullptr;
        const Part* Our = nullptr;
        const Part* Their = nullptr;
        Merged Result = {};
        /// It has a place in the base that the others are found by.
        [[nodiscard]] bool IsAnchor() const { return Before && Result.Stays(); }
    };

    [[nodiscard]] bool GiveAll() const { return base.GivesAll && ours.GivesAll && theirs.GivesAll; }
    [[nodiscard]] const Subject& At(std::size_t at) const { return records.ItemAt(at); }

    /// Notes the records of one side and returns their order.
    Places Take(const RecordFile& side, const Part* Subject::*which) {
        if (!side.Fault.empty())
            throw Failure(FailureInvalidArgument, side.Fault);
        Places order;
        order.reserve(side.Parts.Count());
        for (const auto& [name, part] : side.Parts) {
            std::size_t at = records.IndexOf(name);
            if (at == KeyedCollection<Subject>::None) {
                at = records.Count();
                records.Add(name, Subject());
            }
            records.ItemAt(at).*which = &part;
            order.push_back(at);
        }
        return order;
    }

    [[nodiscard]] bool Same(const Part& one, const Part& other) const {
        // Where blocks take values over from those before, the same text may say something else.
        if (GiveAll() && one.Text == other.Text)
            return true;
        return kind.NameOf(one.Content()) == kind.NameOf(other.Content()) &&
               SameContent(kind, one.Content(), other.Content());
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

    Merged MergeRecord(const std::string& name, const Subject& subject) {
        const auto& [before, our, their, result] = subject;
        if (our && their && Same(*our, *their))
            return Keep(*our, Chosen(before ? before->Text : "", our->Text, their->Text));
        if (!our && !their)
            return {};
        if (!our || !their) {
            const Part& left = our ? *our : *their;
            if (before && !Same(*before, left))
                return Conflict(name, subject, {});
            return before ? Merged() : Take(left);
        }
        if (before && Same(*before, *our))
            return Take(*their);
        if (before && Same(*before, *their))
            return Take(*our);
        return before ? MergeFields(name, subject) : Conflict(name, subject, {});
    }
    static Merged Take(const Part& part) { return Keep(part, part.Text); }
    static Merged Keep(const Part& part, std::string_view text) {
        Merged merged{&part};
        if (text.ends_with('\n'))
            merged.Kept = text;
        else
            merged.Text = WithLineEnd(text);
        return merged;
    }

    Merged MergeFields(const std::string& name, const Subject& subject) {
        const Part& before = *subject.Before;
        const Part& our = *subject.Our;
        const Part& their = *subject.Their;
        auto built = kind.Copy(our.Content());
        std::vector<std::string> clashes;
        const auto merge = [&](const Field& field) {
            const FieldValue old = field.Get(before.Content());
            const FieldValue mine = field.Get(our.Content());
            const FieldValue other = field.Get(their.Content());
            if (mine == old)
                field.Set(*built, other);
            else if (other != old && other != mine)
                clashes.emplace_back(field.Property);
        };
        merge(kind.Name);
        kind.ForEachField(merge);
        if (!clashes.empty())
            return Conflict(name, subject, std::move(clashes));
        std::string text = Above(&before, &our, &their) + Block(*built);
        return {nullptr, {}, std::move(text), std::move(built)};
    }

    Merged Conflict(const std::string& name, const Subject& subject, std::vector<std::string> fields) {
        const auto& [before, our, their, result] = subject;
        conflicts.push_back({name, std::move(fields)});
        Merged merged;
        merged.Text = Above(before, our, their);
        for (const std::string_view line : ConflictLines) {
            merged.Text.append(line).append("\r\n");
            const Part* side = line == ConflictLines[0] ? our : line == ConflictLines[1] ? their : nullptr;
            if (side)
                merged.Text += Block(side->Content());
        }
        return merged;
    }

    /// What stays of what the base has, in the order of one side.
    [[nodiscard]] Places Anchors(const Places& side) const {
        Places anchors;
        anchors.reserve(side.size());
        std::ranges::copy_if(side, std::back_inserter(anchors),
                             [this](std::size_t at) { return At(at).IsAnchor(); });
        return anchors;
    }

    /// What a side adds behind each record of the base.
    using Additions = std::unordered_map<std::size_t, Places>;
    static constexpr std::size_t Front = KeyedCollection<Subject>::None; ///< before the first
    [[nodiscard]] Additions FindAdditions(const Places& side) const {
        Additions additions;
        std::size_t anchor = Front;
        for (const std::size_t at : side)
            if (At(at).IsAnchor())
                anchor = at;
            else if (!At(at).Before)
                additions[anchor].push_back(at);
        return additions;
    }

    /// Tells two orders apart in the same way whichever side has which.
    [[nodiscard]] bool ComesFirst(const Places& one, const Places& other) const {
        return std::ranges::lexicographical_compare(one, other, [this](std::size_t a, std::size_t b) {
            return CodePage::CompareNoCase(records.KeyAt(a), records.KeyAt(b)) < 0;
        });
    }

    [[nodiscard]] Places Order() const {
        Places anchors = AnchorOrder();
        const Additions added = FindAdditions(ourOrder);
        const Additions addedToo = FindAdditions(theirOrder);
        Places order;
        order.reserve(records.Count());
        std::vector<bool> placed(records.Count());
        const auto place = [&](std::size_t at) {
            if (!placed[at])
                order.push_back(at);
            placed[at] = true;
        };
        anchors.insert(anchors.begin(), Front);
        for (const std::size_t anchor : anchors) {
            if (anchor != Front)
                place(anchor);
            std::vector<Places> runs;
            for (const Additions* side : {&added, &addedToo})
                if (const auto run = side->find(anchor); run != side->end())
                    runs.push_back(run->second);
            std::ranges::sort(runs, [this](const Places& a, const Places& b) { return ComesFirst(a, b); });
            for (const Places& run : runs)
                std::ranges::for_each(run, place);
        }
        return order;
    }

    /// What stays of what the base has, in the order of the side that changed it; of two the one that comes
    /// first: it must not matter which is ours.
    [[nodiscard]] Places AnchorOrder() const {
        Places order = Anchors(baseOrder);
        const Places mine = Anchors(ourOrder);
        const Places other = Anchors(theirOrder);
        const bool mineMoved = !IsPartOf(mine, order);
        const bool otherMoved = !IsPartOf(other, order);
        if (!mineMoved && !otherMoved)
            return order;
        Places result = !otherMoved || (mineMoved && ComesFirst(mine, other)) ? mine : other;
        std::vector<bool> held(records.Count());
        for (const std::size_t at : result)
            held[at] = true;
        std::ranges::copy_if(order, std::back_inserter(result), [&](std::size_t at) { return !held[at]; });
        return result;
    }
    /// True when a side has records of an order in that order.
    static bool IsPartOf(const Places& side, const Places& order) {
        auto next = side.begin();
        for (const std::size_t at : order)
            if (next != side.end() && *next == at)
                ++next;
        return next == side.end();
    }

    void KeepValues(const Places& order) {
        for (bool changed = true; changed;) {
            changed = false;
            std::string text;
            for (const std::size_t at : order)
                if (At(at).Result.Wanted())
                    text += At(at).Result.Written();
            RecordFile read;
            read.Read(kind, text);
            for (const std::size_t at : order) {
                Merged& merged = records.ItemAt(at).Result;
                // One without a line for its name is read by the name of the block before.
                const Part* part = read.Parts.Find(records.KeyAt(at));
                const Record* wanted = merged.Wanted();
                if (!wanted || (part && SameContent(kind, *wanted, part->Content())))
                    continue;
                std::string written = Above(merged.Written()) + Block(*wanted);
                if (written == merged.Text) // a name of which reading takes signs away until it is another
                    throw Failure(FailureInvalidArgument, "The record " + records.KeyAt(at) +
                                                              " reads differently once it is written anew");
                changed = true;
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
    KeyedCollection<Subject> records;
    Places baseOrder;
    Places ourOrder;
    Places theirOrder;
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
