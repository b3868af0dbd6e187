#include "records/FilesAhead.h"

#include "FailureOf.h"
#include "TempFolder.h"
#include "events/clsEvent.h"

#include <gtest/gtest.h>

#include <vector>

namespace velmora {
namespace {

TEST(FilesAhead, AFileStaysAsItIsUntilTheNextIsAskedFor) {
    const TempFolder folder;
    std::vector<std::string> paths;
    std::vector<std::string> contents;
    for (std::size_t i = 0; i < 100; ++i) {
        const std::string name = std::to_string(i);
        paths.push_back(folder / name);
        contents.push_back(name + std::string(500 + i, static_cast<char>('a' + i % 26)));
        folder.Write(name, contents.back());
    }
    FilesAhead ahead(EventKind, paths);
    for (std::size_t i = 0; i < paths.size(); ++i) {
        const FileBytes& file = ahead.Next();
        // While these are read the other thread gets as far ahead as it may.
        for (const std::string& other : paths)
            Files::ReadWhole(other);
        ASSERT_EQ(file.Bytes, contents[i]);
        ASSERT_EQ(file.Content, HashOf(contents[i]));
    }
}

TEST(FilesAhead, AFileThatCannotBeReadSaysSoInItsPlace) {
    const TempFolder folder;
    folder.Write("a", "A");
    folder.Write("c", "C");
    FilesAhead ahead(EventKind, {folder / "a", folder / "b", folder / "c"});
    EXPECT_EQ(ahead.Next().Failure, nullptr);
    const std::exception_ptr failure = ahead.Next().Failure;
    ASSERT_NE(failure, nullptr);
    EXPECT_EQ(FailureOf([&] { std::rethrow_exception(failure); }).Number, 53);
    const FileBytes& last = ahead.Next();
    EXPECT_EQ(last.Failure, nullptr);
    EXPECT_EQ(last.Bytes, "C");
}

} // namespace
} // namespace velmora
