#include "lsp/TextDocument.h"

#include <gtest/gtest.h>

#include <random>

namespace velmora::lsp {
namespace {

TEST(TextDocument, KeepsItsLinesAsPiecesAreReplaced) {
    std::minstd_rand random(1);
    const auto upTo = [&](std::size_t most) { return random() % (most + 1); };
    TextDocument typed;
    for (int change = 0; change < 3000; ++change) {
        std::string piece;
        for (std::size_t left = upTo(6); left > 0; --left)
            piece += "a\r\n"[upTo(2)];
        // Longer texts are cut down again.
        const std::size_t from = upTo(typed.Bytes().size());
        const std::size_t to = from + upTo(typed.Bytes().size() > 60 ? 60 : 4);
        typed.Replace(typed.PositionOf(from), typed.PositionOf(to), piece);
        TextDocument fresh;
        fresh.Set(typed.Bytes());
        ASSERT_EQ(typed.FileLineCount(), fresh.FileLineCount());
        for (std::size_t at = 0; at <= fresh.Bytes().size(); ++at) {
            ASSERT_EQ(typed.PositionOf(at).Line, fresh.PositionOf(at).Line);
            ASSERT_EQ(typed.PositionOf(at).Character, fresh.PositionOf(at).Character);
            ASSERT_EQ(typed.FileLineOf(at), fresh.FileLineOf(at));
        }
    }
    // What is found in one go, too.
    typed.Set("a\r\nb\rc\n\r");
    EXPECT_EQ(typed.FileLineCount(), 3u);
    EXPECT_EQ(typed.PositionOf(8).Line, 4u);
    EXPECT_EQ(typed.Line(1), "b");
}

} // namespace
} // namespace velmora::lsp
