#include "platform/Replacements.h"

#include "platform/Attempts.h"
#include "platform/HostFiles.h"
#include "platform/PathTexts.h"

#include <chrono>
#include <cstdio>
#include <memory>
#include <random>
#include <utility>

namespace velmora::Files {

namespace fs = std::filesystem;
using HostFiles::OutFile;

namespace {

/// A name that nothing in the folder has, unlike any name that is looked for in it.
fs::path TemporaryBeside(const fs::path& target) {
    std::random_device random;
    char name[40];
    std::snprintf(name, sizeof name, ".velmora-%08x%08x.tmp", random(), random());
    return target.parent_path() / name;
}

bool IsTemporary(std::string_view name) {
    return name.size() == std::string_view(".velmora-0123456789abcdef.tmp").size() &&
           name.starts_with(".velmora-") && (name.ends_with(".tmp") || name.ends_with(".old"));
}

} // namespace

void ReplaceSafely(std::string_view path, std::string_view bytes) {
    Replacements single;
    single.Put(path, bytes);
    single.Settle();
}

void RemoveOldTemporaries(std::string_view folder) {
    try {
        const auto dayAgo = fs::file_time_type::clock::now() - std::chrono::hours(24);
        for (const auto& entry : fs::directory_iterator(HostPath(folder)))
            if (IsTemporary(PathTexts::NameText(entry.path().filename())) && entry.last_write_time() < dayAgo)
                RemoveQuietly(entry.path(), Wanted::File);
    } catch (const fs::filesystem_error&) {
        // Nothing depends on it; the next time may do better.
    }
}

struct Replacements::Pending {
    fs::path Target;
    fs::path Temporary;
    std::function<void()> Settled;
    std::unique_ptr<OutFile> Open; ///< until it is finished: failures of the disk are told to its writer
    HostFiles::Replaced Replaced;  ///< once it is finished
};

Replacements::Replacements() = default;

Replacements::~Replacements() {
    try {
        Settle();
    } catch (const Failure&) {
        // Whoever wants to know settles.
    }
}

void Replacements::Put(std::string_view path, std::string_view bytes, std::function<void()> settled) {
    if (failure)
        return; // Settle tells it
    constexpr std::size_t mostOpen = 64;
    if (pending.size() - finished == mostOpen)
        FinishNext();
    const fs::path host = HostPath(path);
    Attempt("write", host, Wanted::File, [&] {
        const fs::path target = HostFiles::FollowLinks(host);
        HostFiles::CheckReplaceable(target);
        const fs::path temporary = TemporaryBeside(target);
        try {
            auto file = std::make_unique<OutFile>(temporary, OutFile::Opening::CreateNew);
            if (Exists(target))
                file->TakeModeOf(target);
            file->Write(bytes);
            file->StartFlush();
            pending.push_back({target, temporary, std::move(settled), std::move(file), {}});
        } catch (...) {
            RemoveQuietly(temporary, Wanted::File);
            throw;
        }
    });
}

void Replacements::FinishNext() {
    Pending& next = pending[finished];
    try {
        Attempt("write", next.Target, Wanted::File, [&] {
            next.Open->Flush();
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
    while (!failure && finished < pending.size())
        FinishNext();
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
