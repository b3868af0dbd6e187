#include "platform/FileTrees.h"

#include "platform/Attempts.h"
#include "platform/HostFiles.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace velmora::Files {

namespace fs = std::filesystem;
using HostFiles::InFile;
using HostFiles::OutFile;

namespace {

using Created = std::vector<std::pair<fs::path, Wanted>>;

/// Creates a folder with its parents, noting what was missing.
void MakeFolders(const fs::path& folder, Created& created) {
    if (folder.empty() || IsFolder(folder))
        return;
    MakeFolders(folder.parent_path(), created);
    HostFiles::MakeFolder(folder);
    created.emplace_back(folder, Wanted::Folder);
}

void RemoveAgain(const Created& created) {
    for (auto last = created.rbegin(); last != created.rend(); ++last)
        RemoveQuietly(last->first, last->second);
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
        if (std::find(around.begin(), around.end(), real) != around.end())
            throw std::system_error(std::make_error_code(std::errc::too_many_symbolic_link_levels));
        around.push_back(real);
        for (const auto& entry : fs::directory_iterator(folder)) {
            const fs::path path = relative / entry.path().filename();
            const bool isFolder = IsFolder(entry.path());
            entries.push_back({path, isFolder ? Wanted::Folder : Wanted::File});
            if (isFolder)
                CollectTree(root, path, around, entries);
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
    while (const std::size_t got = source.Read(buffer.data(), buffer.size()))
        target.Write({buffer.data(), got});
    target.Close();
}

void CopyEntry(const TreeEntry& entry, const fs::path& from, const fs::path& to, Created& created) {
    const fs::path source = from / entry.Relative;
    const fs::path target = to / entry.Relative;
    if (entry.Kind == Wanted::Folder)
        Attempt("create", target, Wanted::Folder, [&] { MakeFolders(target, created); });
    else if (Attempt("look for", target, Wanted::File, [&] { return Exists(target); }))
        CopyFile(PathText(source), PathText(target));
    else
        Attempt("copy", source, Wanted::File, [&] { CopyNew(source, target, created); });
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
            if (copying && entry.Kind == Wanted::File)
                copying(PathText(source / entry.Relative));
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
        if (entry.Kind == Wanted::File)
            sum += Attempt("read", path, Wanted::File, [&] { return HostFiles::SizeOf(path); });
    }
    return sum;
}

} // namespace velmora::Files
