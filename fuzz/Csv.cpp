// Tables come from other programs: whatever stands in one makes rows that can be written and read again, and
// changes a library only as the game's files allow.
#include "records/Csv.h"
#include "kinds/Import.h"
#include "kinds/TableText.h"
#include "platform/Failure.h"
#include "services/Catalogues.h"
#include "upissues/clsUPIssue.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

using namespace velmora;

void ExpectLastingRows(const std::string& bytes) {
    const std::string table = TableText(bytes);
    const char separator = Csv::SeparatorOf(table);
    Csv::Reader reader(table, separator);
    std::vector<std::string> cells;
    std::vector<std::string> again;
    while (reader.Next(cells)) {
        std::string row;
        for (const std::string& cell : cells) {
            row += Csv::Cell(Csv::Guarded(cell), separator) + separator;
            if (Csv::Unguarded(Csv::Guarded(cell)) != cell)
                std::abort();
        }
        row.back() = '\n';
        Csv::Reader second(row, separator);
        if (cells.size() == 1 && cells[0].empty())
            continue; // an empty line is no row
        if (!second.Next(again) || again.size() != cells.size())
            std::abort();
        for (std::size_t i = 0; i < cells.size(); ++i)
            if (Csv::Unguarded(again[i]) != cells[i])
                std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const bool built = (BuildCatalogues(), true);
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    ExpectLastingRows(bytes);
    Library library(UPIssueKind);
    const CheckContext context{std::string()};
    Import table(library, context, "MyUPIssues.upissue");
    try {
        table.Read(bytes);
    } catch (const Failure&) {
        return built ? 0 : 1;
    }
    Edits edits(library);
    edits.Do(table.StepOf("Data/UP_Issues/"));
    if (library.Count() != table.CountOf(Import::Outcome::New))
        std::abort();
    return 0;
}
