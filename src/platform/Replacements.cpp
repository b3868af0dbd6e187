#include "platform/Replacements.h"

#include "platform/Attempts.h"
#include "platform/HostFiles.h"
#include "platform/PathTexts.h"

#include <algorithm>
#include <atomic>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <future>
#include <memory>
#include <random>
#include <utility>

namespace velmora::Files {

namespace fs = std::filesystem;
using HostFiles::OutFile;

namespace {

/// A name that nothing in the folder has, unlike any name that is looked for in it. It begins with the time,
/// since a second name of an old file has that file's age.
fs::path TemporaryBeside(const fs::path& target) {
    std::random_device random;
    char name[40];
    std::snprintf(name, sizeof name, ".velmora-%08x%08x.tmp", static_cast<unsigned>(std::time(nullptr)),
                  random());
    return target.parent_path() / name;
}

bool IsOldTemporary(std::string_view name) {
    constexpr std::string_view start = ".velmora-";
    constexpr unsigned day = 24 * 60 * 60;
    unsigned made = 0;
    if (name.size() != std::string_view(".velmora-0123456789abcdef.tmp").size() || !name.starts_with(start) ||
        !(name.ends_with(".tmp") || name.ends_with(".old")))
        return false;
    const char* const time = name.data() + start.size();
    return std::from_chars(time, time + 8, made, 16).ptr == time + 8 &&
           std::int64_t{made} + day < std::int64_t{std::time(nullptr)};
}

} // namespace

void ReplaceSafely(std::string_view path, std::string_view bytes, const Placing& placing) {
    ReplaceSafely(path, AsPieces(bytes), placing);
}

void ReplaceSafely(std::string_view path, const Pieces& pieces, const Placing& placing) {
    Replacements single;
    single.Put(path, pieces, {}, placing);
    single.Settle();
}

void RemoveOldTemporaries(std::string_view folder) {
    try {
        for (const auto& entry : fs::directory_iterator(HostPath(folder)))
            if (IsOldTemporary(PathTexts::NameText(entry.path().filename())))
                RemoveQuietly(entry.path(), Wanted::File);
    } catch (const std::exception&) {
        // Nothing depends on it; the next time may do better.
    }
}

struct Replacements::Pending {
    fs::path Target;
    fs::path Temporary;
    std::function<void()> Settled;
    std::unique_ptr<OutFile> Open; ///< until it is finished: failures of the disk are told to its writer
    std::exception_ptr FlushFailure;
    HostFiles::Replaced Replaced; ///< once it is finished
};

Replacements::Replacements() = default;

Replacements::~Replacements() {
    try {
        Settle();
    } catch (const Failure&) {
        // Whoever wants to know settles.
    }
}

void Replacements::Put(std::string_view path, const Pieces& pieces, std::function<void()> settled,
                       const Placing& placing) {
    if (failure)
        return; // Settle tells it
    constexpr std::size_t mostOpen = 64;
    if (pending.size() - finished == mostOpen)
        FinishOpen();
    const fs::path host = HostPath(path);
    Attempt("write", host, Wanted::File, [&] {
        const bool isPrivate = placing.Readers == Sharing::Private;
        const fs::path target = isPrivate ? host : HostFiles::FollowLinks(host);
        HostFiles::CheckReplaceable(target);
        const fs::path temporary = TemporaryBeside(target);
        try {
            auto file = std::make_unique<OutFile>(temporary, OutFile::Opening::CreateNew, isPrivate);
            if (!isPrivate && Exists(target))
                file->TakeModeOf(target);
            if (!placing.NoMoreOpenThan.empty())
                file->BeNoMoreOpenThan(HostPath(placing.NoMoreOpenThan));
            pieces([&file](std::string_view piece) { file->Write(piece); });
            file->StartFlush();
            pending.push_back({target, temporary, std::move(settled), std::move(file), {}, {}});
        } catch (...) {
            RemoveQuietly(temporary, Wanted::File);
            throw;
        }
    });
}

void Replacements::FinishOpen() {
    FlushOpen();
    while (!failure && finished < pending.size())
        FinishNext();
}

/// Several at a time: a disk takes as long for the flushes that wait together as for one.
void Replacements::FlushOpen() {
    constexpr std::size_t mostWaiting = 8;
    std::atomic<std::size_t> next = finished;
    const auto flush = [&] {
        for (std::size_t i = next++; i < pending.size(); i = next++)
            try {
                pending[i].Open->Flush();
            } catch (...) {
                pending[i].FlushFailure = std::current_exception();
            }
    };
    std::vector<std::future<void>> helpers;
    for (std::size_t i = finished + 1; i < std::min(pending.size(), finished + mostWaiting); ++i)
        helpers.push_back(std::async(flush));
    flush();
}

void Replacements::FinishNext() {
    Pending& next = pending[finished];
    try {
        Attempt("write", next.Target, Wanted::File, [&] {
            if (next.FlushFailure)
                std::rethrow_exception(next.FlushFailure);
            next.Open->Close();
            next.Replaced = HostFiles::Replace(next.Temporary, next.Target);
        });
        next.Open.reset();
        ++finished;
    } catch (...) {
        failure = std::current_exception();
    }
}

void Replacements::Settle() {
    FinishOpen();
    auto replaced = std::exchange(pending, {});
    for (; replaced.size() > finished; replaced.pop_back()) {
        replaced.back().Open.reset();
        RemoveQuietly(replaced.back().Temporary, Wanted::File);
    }
    finished = 0;
    const std::exception_ptr failed = std::exchange(failure, nullptr);
    MakeLast(std::move(replaced));
    if (failed)
        std::rethrow_exception(failed);
}

void Replacements::MakeLast(std::vector<Pending> replaced) {
    auto next = replaced.begin();
    try {
        FlushFolders(replaced);
        for (; next != replaced.end(); ++next) {
            Attempt("write", next->Target, Wanted::File, [&] { HostFiles::Settle(next->Replaced); });
            if (next->Settled)
                next->Settled();
        }
    } catch (...) {
        while (replaced.end() != next) {
            HostFiles::TakeBack(replaced.back().Replaced);
            replaced.pop_back();
        }
        throw;
    }
}

void Replacements::FlushFolders(const std::vector<Pending>& replaced) {
    fs::path flushed;
    for (const Pending& one : replaced) {
        const fs::path folder = one.Target.parent_path();
        if (&one != &replaced.front() && folder == flushed)
            continue;
        Attempt("write", one.Target, Wanted::File, [&] { HostFiles::FlushFolderOf(one.Replaced); });
        flushed = folder;
    }
}

} // namespace velmora::Files
