#include "platform/Files.h"

#include "platform/Attempts.h"
#include "platform/HostFiles.h"
#include "platform/PathTexts.h"

#include <algorithm>
#include <system_error>

namespace velmora::Files {

namespace {

namespace fs = std::filesystem;
using HostFiles::Entry;
using HostFiles::InFile;
using HostFiles::OutFile;

void ReadAll(InFile& file, std::string& bytes) {
    // One byte more than expected: the read that finds the end then needs no growing.
    bytes.resize(std::max(bytes.size(), static_cast<std::size_t>(file.Size()) + 1));
    std::size_t filled = 0;
    while (const std::size_t got = file.Read(bytes.data() + filled, bytes.size() - filled)) {
        filled += got;
        if (filled == bytes.size())
            bytes.resize(bytes.size() + bytes.size() / 2 + 4096);
    }
    bytes.resize(filled);
}

void ReadInto(const fs::path& host, Sharing sharing, std::string& bytes) {
    Attempt("read", host, Wanted::File, [&] {
        InFile file(host, sharing == Sharing::Private);
        ReadAll(file, bytes);
    });
}

void AppendTo(const fs::path& host, Sharing sharing, const Pieces& pieces, bool flush) {
    Attempt("write", host, Wanted::File, [&] {
        OutFile file(host, OutFile::Opening::Append, sharing == Sharing::Private);
        pieces([&file](std::string_view piece) { file.Write(piece); });
        if (flush)
            file.Flush();
        file.Close();
    });
}

} // namespace

bool FileExists(std::string_view path) {
    const fs::path host = HostPath(path);
    return Attempt("look for", host, Wanted::File, [&] { return HostFiles::EntryAt(host); }) == Entry::File;
}

bool FolderExists(std::string_view path) {
    const fs::path host = HostPath(path);
    return Attempt("look for", host, Wanted::Folder, [&] { return HostFiles::EntryAt(host); }) ==
           Entry::Folder;
}

std::vector<std::string> ListFiles(std::string_view folder) {
    const fs::path host = HostPath(folder);
    return Attempt("list", host, Wanted::Folder, [&] {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(host)) {
            // What cannot be looked at is listed: opening it will say why.
            std::error_code ignored;
            if (!entry.is_directory(ignored))
                names.push_back(PathTexts::NameText(entry.path().filename()));
        }
        return names;
    });
}

std::string ReadWhole(std::string_view path, Sharing sharing) {
    std::string bytes;
    ReadInto(HostPath(path), sharing, bytes);
    return bytes;
}

void ReadWhole(std::string_view path, std::string& bytes) {
    ReadInto(HostPath(path), Sharing::Usual, bytes);
}

std::uint64_t SizeOf(std::string_view path) {
    const fs::path host = HostPath(path);
    return Attempt("read", host, Wanted::File, [&] { return HostFiles::SizeOf(host); });
}

void Append(std::string_view path, std::string_view bytes) {
    AppendTo(HostPath(path), Sharing::Usual, AsPieces(bytes), false);
}

void AppendSafely(std::string_view path, std::string_view bytes, Sharing sharing) {
    AppendSafely(path, AsPieces(bytes), sharing);
}

void AppendSafely(std::string_view path, const Pieces& pieces, Sharing sharing) {
    AppendTo(HostPath(path), sharing, pieces, true);
}

bool Holds(std::string_view path, std::string_view bytes) {
    return FileExists(path) && SizeOf(path) == bytes.size() && ReadWhole(path) == bytes;
}

void CopyFile(std::string_view from, std::string_view to) {
    const std::string bytes = ReadWhole(from);
    // Backup copies mostly find their like in place; leaving it spares the disk on every start.
    if (!Holds(to, bytes))
        ReplaceSafely(to, bytes, {.NoMoreOpenThan = std::string(from)});
}

void DeleteFile(std::string_view path) {
    const fs::path host = HostPath(path);
    Attempt("delete", host, Wanted::File, [&] {
        HostFiles::Unlink(host);
        HostFiles::FlushFolderOf({.Target = host, .Kept = {}});
    });
}

std::string WriteRefusal(std::string_view folder) {
    try {
        const fs::path host = HostPath(folder);
        if (!IsFolder(host))
            return PathTexts::FromHostText(std::make_error_code(std::errc::not_a_directory).message());
        HostFiles::TryCreatingIn(host);
        return {};
    } catch (const std::system_error& refusal) {
        return PathTexts::FromHostText(refusal.code().message());
    } catch (const Failure& failure) {
        return failure.Description();
    }
}

} // namespace velmora::Files
