#include "platform/Files.h"

#include "platform/Failure.h"
#include "platform/HostFiles.h"
#include "platform/PathTexts.h"
#include "platform/Replacements.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <exception>
#include <memory>
#include <random>
#include <system_error>
#include <utility>

namespace velmora::Files {

namespace {

namespace fs = std::filesystem;
using HostFiles::InFile;
using HostFiles::OutFile;

enum class Wanted { File, Folder };

bool IsFolder(const fs::path& path) {
    std::error_code ignored;
    return fs::is_directory(path, ignored);
}

bool Exists(const fs::path& path) {
    std::error_code ignored;
    return fs::exists(path, ignored);
}

bool FolderIsThere(const fs::path& file) {
    return !file.has_parent_path() || IsFolder(file.parent_path());
}

std::int32_t NumberOf(const std::error_code& code, const fs::path& path, Wanted wanted) {
    if (code == std::errc::no_such_file_or_directory) {
        return wanted == Wanted::File && FolderIsThere(path) ? FailureFileNotFound : FailurePathNotFound;
    }
    if (code == std::errc::permission_denied || code == std::errc::operation_not_permitted ||
        code == std::errc::read_only_file_system) {
        return FailurePermissionDenied;
    }
    if (HostFiles::IsDiskFull(code)) {
        return FailureDiskFull;
    }
    return code == std::errc::io_error ? FailureDeviceError : FailurePathFileAccess;
}

/// Runs work on a file or folder, with the system's refusals turned into the failures users know.
template <class Work>
auto Attempt(const char* doing, const fs::path& path, Wanted wanted, Work work) {
    try {
        return work();
    } catch (const std::system_error& refusal) {
        throw Failure(NumberOf(refusal.code(), path, wanted),
                      std::string("Cannot ") + doing + ' ' + PathText(path) + ": " +
                          PathTexts::FromHostText(refusal.code().message()));
    }
}

void ReadAll(InFile& file, std::string& bytes) {
    // One byte more than expected: the read that finds the end then needs no growing.
    bytes.resize(std::max(bytes.size(), static_cast<std::size_t>(file.Size()) + 1));
    std::size_t filled = 0;
    while (const std::size_t got = file.Read(bytes.data() + filled, bytes.size() - filled)) {
        filled += got;
        if (filled == bytes.size()) {
            bytes.resize(bytes.size() + bytes.size() / 2 + 4096);
        }
    }
    bytes.resize(filled);
}

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

void RemoveQuietly(const fs::path& path, Wanted kind) {
    try {
        kind == Wanted::File ? HostFiles::Unlink(path) : HostFiles::RemoveFolder(path);
    } catch (const std::system_error&) {
        // Called while a failure is on its way: that one is the one to report.
    }
}

void AppendTo(const fs::path& host, std::string_view bytes, bool flush) {
    Attempt("write", host, Wanted::File, [&] {
        OutFile file(host, OutFile::Opening::Append);
        file.Write(bytes);
        if (flush)
            file.Flush();
        file.Close();
    });
}

bool Holds(std::string_view path, std::string_view bytes) {
    return FileExists(path) && SizeOf(path) == bytes.size() && ReadWhole(path) == bytes;
}

} // namespace

bool FileExists(std::string_view path) {
    const fs::path host = HostPath(path);
    return Exists(host) && !IsFolder(host);
}

bool FolderExists(std::string_view path) {
    return IsFolder(HostPath(path));
}

std::vector<std::string> ListFiles(std::string_view folder) {
    const fs::path host = HostPath(folder);
    return Attempt("list", host, Wanted::Folder, [&] {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(host)) {
            // What cannot be looked at is listed: opening it will say why.
            std::error_code ignored;
            if (!entry.is_directory(ignored)) {
                names.push_back(PathTexts::NameText(entry.path().filename()));
            }
        }
        return names;
    });
}

std::string ReadWhole(std::string_view path) {
    std::string bytes;
    ReadWhole(path, bytes);
    return bytes;
}

void ReadWhole(std::string_view path, std::string& bytes) {
    const fs::path host = HostPath(path);
    Attempt("read", host, Wanted::File, [&] {
        InFile file(host);
        ReadAll(file, bytes);
    });
}

std::uint64_t SizeOf(std::string_view path) {
    const fs::path host = HostPath(path);
    return Attempt("read", host, Wanted::File, [&] { return std::uint64_t{fs::file_size(host)}; });
}

void Append(std::string_view path, std::string_view bytes) {
    AppendTo(HostPath(path), bytes, false);
}

void AppendSafely(std::string_view path, std::string_view bytes) {
    AppendTo(HostPath(path), bytes, true);
}

void ReplaceSafely(std::string_view path, std::string_view bytes) {
    Replacements single;
    single.Put(path, bytes);
    single.Settle();
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
    if (failure) {
        return; // Settle tells it
    }
    constexpr std::size_t mostOpen = 64;
    if (pending.size() - finished == mostOpen) {
        FinishNext();
    }
    const fs::path host = HostPath(path);
    Attempt("write", host, Wanted::File, [&] {
        const fs::path target = HostFiles::FollowLinks(host);
        HostFiles::CheckReplaceable(target);
        const fs::path temporary = TemporaryBeside(target);
        try {
            auto file = std::make_unique<OutFile>(temporary, OutFile::Opening::CreateNew);
            if (Exists(target)) {
                file->TakeModeOf(target);
            }
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
    while (!failure && finished < pending.size()) {
        FinishNext();
    }
    auto replaced = std::exchange(pending, {});
    for (; replaced.size() > finished; replaced.pop_back()) {
        replaced.back().Open.reset();
        RemoveQuietly(replaced.back().Temporary, Wanted::File);
    }
    finished = 0;
    const std::exception_ptr failed = std::exchange(failure, nullptr);
    MakeLast(std::move(replaced));
    if (failed) {
        std::rethrow_exception(failed);
    }
}

void Replacements::MakeLast(std::vector<Pending> replaced) {
    auto next = replaced.begin();
    try {
        FlushFolders(replaced);
        for (; next != replaced.end(); ++next) {
            Attempt("write", next->Target, Wanted::File, [&] { HostFiles::Settle(next->Replaced); });
            if (next->Settled) {
                next->Settled();
            }
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
        if (&one != &replaced.front() && folder == flushed) {
            continue;
        }
        Attempt("write", one.Target, Wanted::File, [&] { HostFiles::FlushFolderOf(one.Replaced); });
        flushed = folder;
    }
}

void CopyFile(std::string_view from, std::string_view to) {
    const std::string bytes = ReadWhole(from);
    // Backup copies mostly find their like in place; leaving it spares the disk on every start.
    if (!Holds(to, bytes)) {
        ReplaceSafely(to, bytes);
    }
}

void DeleteFile(std::string_view path) {
    const fs::path host = HostPath(path);
    Attempt("delete", host, Wanted::File, [&] { HostFiles::Unlink(host); });
}

void RemoveOldTemporaries(std::string_view folder) {
    try {
        const auto dayAgo = fs::file_time_type::clock::now() - std::chrono::hours(24);
        for (const auto& entry : fs::directory_iterator(HostPath(folder))) {
            if (IsTemporary(PathTexts::NameText(entry.path().filename())) &&
                entry.last_write_time() < dayAgo) {
                RemoveQuietly(entry.path(), Wanted::File);
            }
        }
    } catch (const fs::filesystem_error&) {
        // Nothing depends on it; the next time may do better.
    }
}

bool FolderWritable(std::string_view folder) {
    const fs::path host = HostPath(folder);
    return IsFolder(host) && HostFiles::MayCreateIn(host);
}

namespace {

using Created = std::vector<std::pair<fs::path, Wanted>>;

/// Creates a folder with its parents, noting what was missing.
void MakeFolders(const fs::path& folder, Created& created) {
    if (folder.empty() || IsFolder(folder)) {
        return;
    }
    MakeFolders(folder.parent_path(), created);
    HostFiles::MakeFolder(folder);
    created.emplace_back(folder, Wanted::Folder);
}

void RemoveAgain(const Created& created) {
    for (auto last = created.rbegin(); last != created.rend(); ++last) {
        RemoveQuietly(last->first, last->second);
    }
}

struct TreeEntry {
    fs::path Relative;
    Wanted Kind;
};

/// Everything in a folder and below, folders before what is in them. `around` holds the folders that are
/// being looked through: a symbolic link back to one of them would lead round for ever.
void CollectTree(const fs::path& root, const fs::path& relative, std::vector<fs::path>& around,
                 std::vector<TreeEntry>& entries) {
    const fs::path folder = relative.empty() ? root : root / relative;
    Attempt("read", folder, Wanted::Folder, [&] {
        const fs::path real = fs::canonical(folder);
        if (std::find(around.begin(), around.end(), real) != around.end()) {
            throw std::system_error(std::make_error_code(std::errc::too_many_symbolic_link_levels));
        }
        around.push_back(real);
        for (const auto& entry : fs::directory_iterator(folder)) {
            const fs::path path = relative / entry.path().filename();
            const bool isFolder = IsFolder(entry.path());
            entries.push_back({path, isFolder ? Wanted::Folder : Wanted::File});
            if (isFolder) {
                CollectTree(root, path, around, entries);
            }
        }
        around.pop_back();
    });
}

std::vector<TreeEntry> TreeOf(const fs::path& root) {
    std::vector<fs::path> around;
    std::vector<TreeEntry> entries;
    CollectTree(root, {}, around, entries);
    return entries;
}

void CopyNew(const fs::path& from, const fs::path& to, Created& created) {
    InFile source(from);
    OutFile target(to, OutFile::Opening::CreateNew);
    created.emplace_back(to, Wanted::File);
    std::string buffer(std::size_t{1} << 18, '\0');
    while (const std::size_t got = source.Read(buffer.data(), buffer.size())) {
        target.Write({buffer.data(), got});
    }
    target.Close();
}

void CopyEntry(const TreeEntry& entry, const fs::path& from, const fs::path& to, Created& created) {
    const fs::path source = from / entry.Relative;
    const fs::path target = to / entry.Relative;
    if (entry.Kind == Wanted::Folder) {
        Attempt("create", target, Wanted::Folder, [&] { MakeFolders(target, created); });
    } else if (Exists(target)) {
        CopyFile(PathText(source), PathText(target));
    } else {
        Attempt("copy", source, Wanted::File, [&] { CopyNew(source, target, created); });
    }
}

} // namespace

void CreateFolder(std::string_view path) {
    const fs::path host = HostPath(path);
    Created created;
    Attempt("create", host, Wanted::Folder, [&] { MakeFolders(host, created); });
}

void CopyTree(std::string_view from, std::string_view to,
              const std::function<void(const std::string& file)>& copying) {
    const fs::path source = HostPath(from);
    const fs::path target = HostPath(to);
    const auto entries = TreeOf(source);
    Created created;
    try {
        Attempt("create", target, Wanted::Folder, [&] { MakeFolders(target, created); });
        for (const auto& entry : entries) {
            if (copying && entry.Kind == Wanted::File) {
                copying(PathText(source / entry.Relative));
            }
            CopyEntry(entry, source, target, created);
        }
    } catch (...) {
        RemoveAgain(created);
        throw;
    }
}

std::uint64_t TreeSize(std::string_view folder) {
    const fs::path root = HostPath(folder);
    std::uint64_t sum = 0;
    for (const auto& entry : TreeOf(root)) {
        const fs::path path = root / entry.Relative;
        if (entry.Kind == Wanted::File) {
            sum += Attempt("read", path, Wanted::File, [&] { return std::uint64_t{fs::file_size(path)}; });
        }
    }
    return sum;
}

} // namespace velmora::Files
