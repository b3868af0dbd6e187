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
    for (std::size_t i = 0; i < 100; ++i) {
        paths.push_back(folder / std::to_string(i));
        folder.Write(std::to_string(i), std::string(500 + i, static_cast<char>('a' + i % 26)));
    }
    paths.insert(paths.begin() + 50, folder / "missing");
    FilesAhead ahead(EventKind, paths);
    for (const std::string& path : paths) {
        const FileBytes& file = ahead.Next();
        if (path == folder / "missing") {
            EXPECT_EQ(FailureOf([&] { std::rethrow_exception(file.Failure); }).Number, 53);
            continue;
        }
        // While these are read the other thread gets as far ahead as it may.
        for (std::size_t other = 0; other < 50; ++other)
            Files::ReadWhole(paths[other]);
        ASSERT_EQ(file.Failure, nullptr);
        ASSERT_EQ(file.Bytes, Files::ReadWhole(path));
        ASSERT_EQ(file.Content, HashOf(file.Bytes));
    }
}

} // namespace
} // namespace velmora
