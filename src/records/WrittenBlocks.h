#pragma once

#include "records/RecordKind.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace velmora {

/// The content of a file, taken apart without a library at hand: blocks in the form in which the editor
/// itself writes them, and all other lines. Its views are good as long as the bytes are.
///
/// Such a block gives every field once, in table order, and its values are read as they stand: nothing of it
/// is lost when it is written again. Its layout may be another one.
class WrittenBlocks {
  public:
    struct Block {
        std::size_t HeaderLine = 0; ///< lines count from 1
        std::size_t EndLine = 0;
        std::string_view Name;
        std::size_t End = 0; ///< offset of what stands behind it
    };
    /// Lines that have to be looked at one by one.
    struct OtherLines {
        std::size_t FirstLine = 0;
        std::size_t BlocksBefore = 0;
        std::string_view Bytes;
    };

    std::vector<Block> Blocks;
    std::vector<std::string_view> Texts; ///< of all blocks, in the order of their fields
    std::vector<std::int32_t> Numbers;   ///< the same
    std::vector<OtherLines> Others;

    /// The texts and numbers of one block.
    [[nodiscard]] const std::string_view* TextsOf(std::size_t block) const {
        return Texts.data() + block * (Texts.size() / Blocks.size());
    }
    [[nodiscard]] const std::int32_t* NumbersOf(std::size_t block) const {
        return Numbers.data() + block * (Numbers.size() / Blocks.size());
    }

    /// The record that a block gives, whatever stands before it.
    [[nodiscard]] std::unique_ptr<Record> MakeRecord(const RecordKind& kind, std::size_t block) const;

    /// Takes a file's bytes apart, in place of what was found before.
    void Find(const RecordKind& kind, std::string_view bytes);

  private:
    bool TakeBlock(const RecordKind& kind, std::string_view& bytes);
    bool TakeFields(const RecordKind& kind, std::string_view& bytes);
    void TakeOther(std::string_view& bytes);
    void SkipEmptyLines(std::string_view& bytes);
    std::size_t lineCount = 0;
};

} // namespace velmora
