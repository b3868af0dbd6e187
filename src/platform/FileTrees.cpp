#include "platform/FileTrees.h"

#include "platform/Attempts.h"
#include "platform/HostFiles.h"
#include "platform/PathTexts.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace velmora::Files {

namespace fs = std::filesystem;
using HostFiles::InFile;
using HostFiles::OutFile;

namespace {

/// A folder's entries and all below, folders before what is in them.
struct Tree {
    struct Entry {
        fs::path Relative;
        Wanted Kind;
    };
    std::vector<Entry> Entries;
    std::vector<std::string> LeftOut; ///< what cannot be read
};

/// Runs work that reads; false, with a note, when the host refuses it.
template <class Work>
bool ReadOrLeaveOut(const fs::path& path, std::vector<std::string>& leftOut, Work work) {
    try {
        work();
        return true;
    } catch (const std::system_error& refusal) {
        leftOut.push_back(PathText(path) + ": " + PathTexts::FromHostText(refusal.code().message()));
        return false;
    }
}

/// Lists a folder. `around` holds the folders that are being looked through: a symbolic link back to one of
/// them would lead round for ever.
std::vector<fs::path> NamesIn(const fs::path& folder, const std::vector<fs::path>& around) {
    if (std::find(around.begin(), around.end(), fs::canonical(folder)) != around.end())
        throw std::system_error(std::make_error_code(std::errc::too_many_symbolic_link_levels));
    std::vector<fs::path> names;
    for (const auto& entry : fs::directory_iterator(folder))
        names.push_back(entry.path().filename());
    return names;
}

void Collect(const fs::path& root, const fs::path& relative, std::vector<fs::path>& around, Tree& tree) {
    const fs::path folder = relative.empty() ? root : root / relative;
    const std::vector<fs::path> names = NamesIn(folder, around);
    around.push_back(fs::canonical(folder));
    for (const fs::path& name : names)
        ReadOrLeaveOut(folder / name, tree.LeftOut, [&] {
            const bool isFolder = IsFolder(folder / name);
            const std::size_t place = tree.Entries.size();
            tree.Entries.push_back({relative / name, isFolder ? Wanted::Folder : Wanted::File});
            try {
                if (isFolder)
                    Collect(root, relative / name, around, tree);
            } catch (const std::system_error&) {
                tree.Entries.resize(place);
                throw;
            }
        });
    around.pop_back();
}

Tree TreeOf(const fs::path& root) {
    Tree tree;
    std::vector<fs::path> around;
    Attempt("read", root, Wanted::Folder, [&] { Collect(root, {}, around, tree); });
    return tree;
}

/// Copies a file; a source that cannot be read to its end is left out.
void CopyNew(const fs::path& from, const fs::path& to, std::vector<std::string>& leftOut) {
    std::optional<InFile> source;
    if (!ReadOrLeaveOut(from, leftOut, [&] { source.emplace(from); }))
        return;
    bool whole = true;
    Attempt("copy", from, Wanted::File, [&] {
        OutFile target(to, OutFile::Opening::CreateNew);
        target.BeNoMoreOpenThan(from);
        std::string buffer(std::size_t{1} << 18, '\0');
        std::size_t got = 0;
        const auto read = [&] { got = source->Read(buffer.data(), buffer.size()); };
        while ((whole = ReadOrLeaveOut(from, leftOut, read)) && got > 0)
            target.Write({buffer.data(), got});
        target.Close();
        whole ? HostFiles::TakeTimeOf(from, to) : HostFiles::Unlink(to);
    });
}

/// Folders get their times, and are closed to others, once they are filled.
void FinishFolder(const fs::path& from, const fs::path& to) {
    Attempt("copy", from, Wanted::Folder, [&] {
        fs::permissions(to, fs::status(from).permissions() | fs::perms::owner_all);
        HostFiles::TakeTimeOf(from, to);
    });
}

/// Creates a folder with its parents.
void MakeFolders(const fs::path& folder) {
    if (folder.empty() || IsFolder(folder))
        return;
    MakeFolders(folder.parent_path());
    HostFiles::MakeFolder(folder);
}

void CopyEntries(const fs::path& source, const fs::path& target, Tree& tree,
                 const std::function<void(const std::string& file)>& copying) {
    Attempt("create", target, Wanted::Folder, [&] { HostFiles::MakeFolder(target); });
    for (const auto& [relative, kind] : tree.Entries) {
        const fs::path copy = target / relative;
        if (kind == Wanted::Folder) {
            Attempt("create", copy, Wanted::Folder, [&] { HostFiles::MakeFolder(copy); });
            continue;
        }
        if (copying)
            copying(PathText(source / relative));
        CopyNew(source / relative, copy, tree.LeftOut);
    }
    for (auto last = tree.Entries.rbegin(); last != tree.Entries.rend(); ++last)
        if (last->Kind == Wanted::Folder)
            FinishFolder(source / last->Relative, target / last->Relative);
    FinishFolder(source, target);
}

} // namespace

void CreateFolder(std::string_view path) {
    const fs::path host = HostPath(path);
    Attempt("create", host, Wanted::Folder, [&] { MakeFolders(host); });
}

std::vector<std::string> CopyTree(std::string_view from, std::string_view to,
                                  const std::function<void(const std::string& file)>& copying) {
    const fs::path source = HostPath(from);
    const fs::path target = HostPath(to);
    const fs::path unfinished = fs::path(target) += ".incomplete";
    Tree tree = TreeOf(source);
    Attempt("create", target, Wanted::Folder, [&] {
        if (Exists(target))
            throw std::system_error(std::make_error_code(std::errc::file_exists));
        fs::remove_all(unfinished); // of a program that was killed
    });
    try {
        CopyEntries(source, unfinished, tree, copying);
        Attempt("create", target, Wanted::Folder, [&] { HostFiles::RenameFolder(unfinished, target); });
    } catch (...) {
        std::error_code ignored; // the first failure is the one to report
        fs::remove_all(unfinished, ignored);
        throw;
    }
    return std::move(tree.LeftOut);
}

std::uint64_t TreeSize(std::string_view folder) {
    const fs::path root = HostPath(folder);
    Tree tree = TreeOf(root);
    std::uint64_t sum = 0;
    for (const auto& [relative, kind] : tree.Entries) {
        const fs::path path = root / relative;
        if (kind == Wanted::File)
            ReadOrLeaveOut(path, tree.LeftOut, [&] { sum += HostFiles::SizeOf(path); });
    }
    return sum;
}

} // namespace velmora::Files
