#include "kinds/FileNames.h"

#include "events/EventRules.h"
#include "events/clsEvent.h"
#include "platform/CodePage.h"
#include "services/modWriter.h"

namespace velmora {

std::string FileRefusal(const RecordKind& kind, const std::string& from, const std::string& file) {
    if (!CodePage::EndsWithNoCase(file, kind.Extension) || file.size() == kind.Extension.size())
        return file + " is no name of a file for it";
    const std::string base = file.substr(0, file.size() - kind.Extension.size());
    if (StripIllegalFileChars(base) != base)
        return "no file can be named " + file;
    if (&kind == &EventKind)
        for (const std::string& name : {file, from})
            if (IsReservedEventFile(name))
                return name + " is the game's own";
    return FileNameRefusal(base);
}

const std::string& FileSpelling::Of(const std::string& file) {
    const auto& known = library.FileList();
    if (const std::size_t at = known.IndexOf(file); at != Library::None)
        return known.KeyAt(at);
    met.TryAdd(file, true);
    return met.KeyAt(met.IndexOf(file));
}

} // namespace velmora
