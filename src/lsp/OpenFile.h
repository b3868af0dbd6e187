#pragma once

#include "lsp/FolderIndex.h"
#include "lsp/TextDocument.h"
#include "records/LossCounts.h"

#include <memory>
#include <string>
#include <vector>

namespace velmora::lsp {

/// So many problems of a text are told; a text of another kind altogether has one in each line.
inline constexpr std::size_t MostProblems = 1000;

/// A file of one kind that a client has open.
struct OpenFile {
    const KindEntry* Kind = nullptr;
    std::string Path; ///< empty for a text without a file
    std::string Name; ///< of the file
    std::shared_ptr<FolderIndex> Index;
    TextDocument Text;
    bool IsUtf8 = false; ///< the client reads or writes it as UTF-8, which the game does not

    // What the text was found to hold when it was last read.
    std::vector<NamedRecord> Records;
    std::vector<Problem> Problems;   ///< those of other files' sakes left out
    std::size_t ProblemsLeftOut = 0; ///< beyond the most that are told
    std::string Published;           ///< what the client was last told
    bool IsChanged = true;           ///< the text was, since it was last read
};

/// Reads the text again: its records and what is wrong with them.
void ReadAgain(OpenFile& file);

/// What the text would be as the editor writes it.
struct Formatted {
    std::string Text;    ///< code page, CR LF
    std::string Refusal; ///< why there is none; empty when there is
    LossCounts Losses;
};
Formatted Format(const OpenFile& file);

/// Looks at the file on disk to tell whether it is in UTF-8 to the client.
void CompareWithDisk(OpenFile& file);

/// Why a text is not open in the code page of the game; empty when it is.
std::string EncodingFault(const OpenFile& file);

} // namespace velmora::lsp
