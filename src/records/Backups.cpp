#include "records/Backups.h"

#include "platform/CodePage.h"
#include "platform/ContentHash.h"
#include "platform/Files.h"
#include "platform/Replacements.h"
#include "platform/TimeText.h"
#include "platform/Utf8.h"
#include "services/KeyedCollection.h"

#include <algorithm>
#include <cstdio>
#include <ctime>

namespace velmora {

namespace {

constexpr std::size_t CopiesKept = 20;

bool IsDateMark(std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i)
        if (i == 0 ? text[i] != '.' : i == 9 ? text[i] != '-' : text[i] < '0' || text[i] > '9')
            return false;
    return true;
}

/// True when no character of a text in UTF-8 is cut in two at its end.
bool EndsWhole(std::string_view cut, std::string_view whole) {
    return !Utf8::IsBeyondAscii(whole) || Utf8::IsAscii(cut) || Utf8::IsBeyondAscii(cut);
}

} // namespace

void Backups::KeepLoaded(const std::string& dataFolder, const std::vector<std::string>& names,
                         const Copying& copying, const ProblemSink& problems) const {
    const auto ending = [this](std::string_view which) { return std::string(which).append(kind.BackupMark); };
    // The first in order has the shorter name for its backups; a whole file name is never a shorter one.
    KeyedCollection<bool> bases;
    Files::Replacements copies;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (copying)
            copying(names[i], i, names.size());
        std::string base = CodePage::ReplaceNoCase(names[i], kind.Extension, "");
        if (!bases.TryAdd(base, true))
            base = names[i];
        const std::string stem = folder + Fitting(base, ending(".latest"));
        const std::string path = dataFolder + names[i];
        const std::string bytes = Files::ReadWhole(path);
        if (!Files::FileExists(stem + ending(".1st"))) {
            copies.Put(stem + ending(".1st"), bytes, Files::Placing{.NoMoreOpenThan = path});
            if (stem != folder + base)
                problems({.Rule = "long-file-name",
                          .Text = "The name of this file is too long for its backups.  They are named " +
                                  stem + ending(".1st") + " and the like.",
                          .Kind = kind.Word,
                          .File = names[i],
                          .MessageIcon = Icon::Information});
        }
        // Mostly the latest copy is in place; leaving it spares the disk on every start.
        if (!Files::Holds(stem + ending(".latest"), bytes))
            copies.Put(stem + ending(".latest"), bytes, Files::Placing{.NoMoreOpenThan = path});
    }
    copies.Settle();
}

std::string Backups::KeepDated(const std::string& path, std::string_view bytes) const {
    if (folder.empty())
        return {};
    const std::string extension(kind.Extension);
    const std::string name = Files::NameOf(path);
    const std::string base =
        Fitting(name.substr(0, name.size() - extension.size()), DateMark(0) + "_9999" + extension);
    const std::string stem = folder + base + DateMark(std::time(nullptr));
    std::string copy = stem + extension;
    for (int n = 2; Files::FileExists(copy); ++n)
        copy = std::string(stem).append("_").append(std::to_string(n)).append(extension);
    Files::ReplaceSafely(copy, bytes, Files::Placing{.NoMoreOpenThan = path});
    DropOldCopies(base, Files::NameOf(copy));
    return copy;
}

/// Their names sort by date. The one just made stays even where the clock has gone back.
void Backups::DropOldCopies(const std::string& base, const std::string& justMade) const {
    std::vector<std::string> others;
    const std::size_t length = base.size() + DateMark(0).size();
    for (std::string& name : Files::ListFiles(folder))
        if (name != justMade && name.size() >= length + kind.Extension.size() &&
            CodePage::EqualNoCase(std::string_view(name).substr(0, base.size()), base) &&
            CodePage::EndsWithNoCase(name, kind.Extension) &&
            IsDateMark(name.substr(base.size(), length - base.size())))
            others.push_back(std::move(name));
    std::sort(others.begin(), others.end());
    for (std::size_t i = 0; i + CopiesKept - 1 < others.size(); ++i)
        Files::DeleteFile(folder + others[i]);
}

/// The base itself, or what of it fits; a mark of the whole keeps cut ones apart.
std::string Backups::Fitting(const std::string& base, std::string_view longestEnding) const {
    std::string mark;
    std::string cut = base;
    while (!cut.empty() && (!EndsWhole(cut, base) ||
                            !Files::NameFits(folder, std::string(cut).append(mark).append(longestEnding)))) {
        char digits[18];
        std::snprintf(digits, sizeof digits, "~%016llx",
                      static_cast<unsigned long long>(HashOf(CodePage::ToLower(base)).Odd));
        mark = digits;
        cut.pop_back();
    }
    return cut + mark;
}

} // namespace velmora
