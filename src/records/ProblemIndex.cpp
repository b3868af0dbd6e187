#include "records/ProblemIndex.h"

#include "platform/CodePage.h"
#include "platform/Files.h"

#include <algorithm>

namespace velmora {

namespace {

/// Records that are checked at once after a change; takes far less than a frame.
constexpr std::size_t MostAtOnce = 64;

bool Same(const ProblemIndex::Holder& one, const ProblemIndex::Holder& other) {
    return one.File == other.File && one.Uncommitted == other.Uncommitted &&
           std::ranges::equal(one.Problems, other.Problems, [](const Problem& left, const Problem& right) {
               return left.Rule == right.Rule && left.Field == right.Field && left.Text == right.Text;
           });
}

} // namespace

void ProblemIndex::Begin(const std::string& gameDirectory) {
    gamePath = gameDirectory;
    holders.RemoveAll();
    drafted.clear();
    Restart();
}

void ProblemIndex::SetFound(std::vector<Problem> found) {
    loadingOf.RemoveAll();
    for (std::size_t i = 0; i < found.size(); ++i)
        if (const std::string& record = found[i].Record; !record.empty()) {
            loadingOf.TryAdd(record, std::vector<std::size_t>());
            loadingOf.Find(record)->push_back(i);
        }
    loading = found.empty() ? nullptr : std::make_shared<Holder>(Holder{.Problems = std::move(found)});
}

void ProblemIndex::Restart() {
    context = std::make_unique<CheckContext>(gamePath);
    next = library.Kind.Check ? 0 : Library::None;
}

bool ProblemIndex::Work(std::chrono::microseconds time) {
    using Clock = std::chrono::steady_clock;
    const int batch = more ? 1 : 16; // takes some tens of microseconds
    const auto end = Clock::now() + time;
    do {
        for (int i = 0; i < batch && !Done(); ++i)
            Check(library.At(next++));
    } while (!Done() && Clock::now() < end);
    return Done();
}

void ProblemIndex::Check(const Record& record, bool uncommitted) {
    const std::string& name = library.NameOf(record);
    if (!uncommitted && !drafted.empty() && CodePage::EqualNoCase(name, drafted))
        return;
    Holder after{name, record.ShortName, {}, uncommitted};
    library.Kind.Check(record, *context, after.Problems);
    if (more)
        more(record, after.Problems);
    for (Problem& problem : after.Problems) {
        problem.Kind = library.Kind.Word;
        problem.Record = name;
        problem.File = record.ShortName;
    }
    Put(name, after.Problems.empty() ? nullptr : std::make_shared<Holder>(std::move(after)));
}

void ProblemIndex::Put(std::string_view record, const HolderPtr& after) {
    HolderPtr* held = holders.Find(record);
    const HolderPtr before = held ? *held : nullptr;
    if (before == after || (before && after && Same(*before, *after)))
        return;
    if (held)
        *held = after;
    else
        holders.Add(record, after);
    if (told)
        told(before, after);
}

void ProblemIndex::Follow(const Edits::Change& change) {
    if (!library.Kind.Check || change.Kind == Edits::How::Reread)
        return;
    for (const std::string_view name : change.Names)
        if (!library.Exists(name))
            Put(name, nullptr);
    if (!Done()) // positions may have moved
        next -= std::min(next, change.Names.size());
    if (change.Names.size() > MostAtOnce)
        return Restart();
    for (const std::string_view name : change.Names)
        if (const Record* record = library.Find(name)) {
            if (PictureChanged(*record))
                Restart();
            Check(*record);
        }
}

/// True when a record's picture was added or taken away since pictures were looked for.
bool ProblemIndex::PictureChanged(const Record& record) const {
    for (const Field& field : library.Kind.Fields)
        if (field.Property == "Image") {
            const std::string& picture = field.TextOf(record);
            const bool isThere = !Files::NameOf(picture).empty() && Files::FileExists(gamePath + picture);
            return isThere != context->HasPicture(picture);
        }
    return false;
}

void ProblemIndex::SetDraft(const Record& draft) {
    if (!library.Kind.Check)
        return;
    drafted = library.NameOf(draft);
    if (PictureChanged(draft))
        Restart();
    Check(draft, true);
}

void ProblemIndex::DropDraft() {
    const std::string name = std::exchange(drafted, {});
    if (const Record* record = library.Find(name))
        Check(*record);
    else if (!name.empty())
        Put(name, nullptr);
}

ProblemIndex::HolderPtr ProblemIndex::Of(std::string_view record) const {
    if (record.empty())
        return loading;
    const HolderPtr* held = holders.Find(record);
    return held ? *held : nullptr;
}

std::vector<ProblemIndex::HolderPtr> ProblemIndex::All() const {
    std::vector<std::pair<std::size_t, HolderPtr>> placed;
    for (const auto& [name, holder] : holders)
        if (holder)
            placed.emplace_back(library.IndexOf(name), holder);
    std::ranges::sort(placed, {}, [](const auto& item) { return item.first; });
    std::vector<HolderPtr> all;
    if (loading)
        all.push_back(loading);
    for (auto& [position, holder] : placed)
        all.push_back(std::move(holder));
    return all;
}

} // namespace velmora
