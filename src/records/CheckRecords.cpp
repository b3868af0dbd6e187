#include "records/CheckRecords.h"

#include "records/FieldLines.h"

#include <algorithm>
#include <future>
#include <thread>

namespace velmora {

namespace {

/// Enough to be worth a thread, few enough that their problems do not fill the memory.
constexpr std::size_t RecordsAtOnce = 8192;

using Problems = std::vector<std::vector<Problem>>; // of each record

void CheckSome(const Library& library, const CheckContext& context, std::size_t from, Problems& problems) {
    const auto check = [&](std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end; ++i)
            library.Kind.Check(library.At(from + i), context, problems[i]);
    };
    const std::size_t processors = std::max(1u, std::thread::hardware_concurrency());
    const std::size_t share = problems.size() / processors + 1;
    std::vector<std::future<void>> others;
    for (std::size_t begin = share; begin < problems.size(); begin += share)
        others.push_back(
            std::async(std::launch::async, check, begin, std::min(begin + share, problems.size())));
    check(0, std::min(share, problems.size()));
    for (std::future<void>& other : others)
        other.get();
}

} // namespace

std::vector<Problem> NewProblems(const RecordKind& kind, const CheckContext& context, const Record* before,
                                 const Record& after) {
    std::vector<Problem> found;
    if (!kind.Check)
        return found;
    kind.Check(after, context, found);
    if (found.empty() || !before)
        return found;
    std::vector<Problem> held;
    kind.Check(*before, context, held);
    std::erase_if(found, [&](const Problem& problem) {
        return std::ranges::any_of(
            held, [&](const Problem& old) { return old.Rule == problem.Rule && old.Field == problem.Field; });
    });
    return found;
}

void CheckRecords(const Library& library, const CheckContext& context, const RecordCheck& tell,
                  const RecordCheck& more) {
    if (library.Kind.Check == nullptr)
        return;
    FieldLines lines(library.Kind);
    const std::size_t count = library.Count();
    for (std::size_t from = 0; from < count; from += RecordsAtOnce) {
        Problems problems(std::min(RecordsAtOnce, count - from));
        CheckSome(library, context, from, problems);
        for (std::size_t i = 0; i < problems.size(); ++i) {
            const Record& record = library.At(from + i);
            if (more)
                more(record, problems[i]);
            if (problems[i].empty())
                continue;
            lines.Place(record, problems[i]);
            tell(record, problems[i]);
        }
    }
}

} // namespace velmora
