#include "FailureOf.h"
#include "TempFolder.h"
#include "platform/Files.h"

#include <gmock/gmock.h>

#include <functional>
#include <tuple>

namespace velmora {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::UnorderedElementsAre;

const std::string sep(1, Files::Separator);

/// A file or folder in a folder, spelt as failures spell it.
std::string At(const TempFolder& folder, const std::string& name) {
    return Files::PathText(folder.Host() / name);
}

void ExpectFailure(std::int32_t number, const std::string& inDescription, const std::function<void()>& work) {
    const Failure failure = FailureOf(work);
    EXPECT_EQ(failure.Number, number) << failure.Description();
    EXPECT_THAT(failure.Description(), HasSubstr(inDescription));
}

TEST(Files, TakesPathsApart) {
    using Case = std::tuple<std::string, std::string, std::string>;
    for (const auto& [path, folder, name] :
         {Case{"", "", ""}, Case{"a.event", "", "a.event"}, Case{"d/a.event", "d/", "a.event"},
          Case{"C:\\d\\a.event", "C:\\d\\", "a.event"}, Case{"d\\e/f", "d\\e/", "f"}, Case{"d/", "d/", ""}}) {
        EXPECT_EQ(Files::FolderOf(path), folder);
        EXPECT_EQ(Files::NameOf(path), name);
        EXPECT_EQ(Files::Join(folder, name), path);
    }
    EXPECT_EQ(Files::Join("d", "n"), "d" + sep + "n");
}

TEST(Files, SpellsPathsWithTheHostsSeparators) {
    EXPECT_EQ(Files::PathText("C:/d//a.event"), "C:" + sep + "d" + sep + "a.event");
    EXPECT_EQ(Files::PathText("/d/a.event"), sep + "d" + sep + "a.event");
    EXPECT_EQ(Files::PathText("d/a.event"), "d" + sep + "a.event");
}

TEST(Files, FindsNamesWithEitherSeparatorAndInAnyCase) {
    TempFolder folder;
    folder.Write("Data/UP_Issues/Council.UPIssue", "found");
    for (const char* path :
         {"/data/up_issues/council.upissue", "\\DATA\\UP_ISSUES\\COUNCIL.UPISSUE",
          "/Data/UP_Issues/Council.UPIssue", "/Data\\UP_Issues/Council.UPIssue",
          "//Data\\\\UP_Issues\\/Council.UPIssue", "/./Data/UP_Issues/../UP_Issues/Council.UPIssue"})
        EXPECT_EQ(Files::ReadWhole(folder.Path() + path), "found") << path;
    EXPECT_TRUE(Files::FolderExists(folder.Path() + "\\DATA\\"));
    EXPECT_FALSE(Files::FileExists(folder.Path() + "/data/up_issues/council"));
    EXPECT_FALSE(Files::FileExists(At(folder, "Data/UP_Issues")));
    EXPECT_FALSE(Files::FolderExists(At(folder, "Data/UP_Issues/Council.UPIssue")));
    Files::ReplaceSafely(folder.Path() + "\\data\\NEW.event", "y");
    EXPECT_EQ(folder.Read("Data/NEW.event"), "y");
    Files::ReplaceSafely(folder.Path() + "\\data\\new.EVENT", "z");
    EXPECT_EQ(folder.Read("Data/NEW.event"), "z");
}

TEST(Files, NamesOfTheCodePageAndOthersTravel) {
    TempFolder folder;
    std::filesystem::create_directory(folder.Host() / "d");
    for (const auto& name :
         {u8"Caf\u00E9.event", u8"\u0416uk.event", u8"\u00C3\u00A9.event", u8"\u20AC.event"})
        std::ofstream(folder.Host() / "d" / name) << "x";
    const auto listed = Files::ListFiles(At(folder, "d"));
    EXPECT_THAT(listed, UnorderedElementsAre("Caf\xE9.event", "\xD0\x96uk.event", "\xC3\x83\xC2\xA9.event",
                                             "\x80.event"));
    for (const auto& name : listed)
        EXPECT_EQ(Files::ReadWhole(Files::Join(At(folder, "d"), name)), "x") << name;
    EXPECT_TRUE(Files::FileExists(At(folder, "d") + "/CAF\xC9.EVENT"));
}

TEST(Files, ListsFilesOnly) {
    TempFolder folder;
    for (const char* name : {"b.event", "A.EVENT", "Sub.event/c.event"})
        folder.Write(name, "");
    EXPECT_THAT(Files::ListFiles(folder.Path()), UnorderedElementsAre("b.event", "A.EVENT"));
    std::filesystem::create_directory(folder.Host() / "Empty");
    EXPECT_THAT(Files::ListFiles(At(folder, "Empty")), ElementsAre());
    ExpectFailure(FailurePathNotFound, "missing", [&] { Files::ListFiles(At(folder, "missing")); });
    ExpectFailure(FailurePathFileAccess, "b.event", [&] { Files::ListFiles(At(folder, "b.event")); });
}

TEST(Files, ReadsAndMeasuresWholeFiles) {
    TempFolder folder;
    std::string bytes;
    for (int i = 0; i < 300'000; ++i)
        bytes += static_cast<char>(i * 7);
    for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{4096}, bytes.size()}) {
        folder.Write("d/f", bytes.substr(0, size));
        EXPECT_TRUE(Files::ReadWhole(At(folder, "d/f")) == bytes.substr(0, size)) << size;
        EXPECT_EQ(Files::SizeOf(At(folder, "d/f")), size);
    }
    ExpectFailure(FailureFileNotFound, At(folder, "d/no"), [&] { Files::ReadWhole(At(folder, "d/no")); });
    ExpectFailure(FailurePathNotFound, At(folder, "no/f"), [&] { Files::ReadWhole(At(folder, "no/f")); });
    ExpectFailure(FailurePathFileAccess, At(folder, "d"), [&] { Files::ReadWhole(At(folder, "d")); });
    ExpectFailure(FailureFileNotFound, At(folder, "no"), [&] { Files::SizeOf(At(folder, "no")); });
    ExpectFailure(FailurePathFileAccess, At(folder, "d"), [&] { Files::SizeOf(At(folder, "d")); });
}

TEST(Files, AppendsReplacesAndCreates) {
    TempFolder folder;
    Files::Append(At(folder, "log"), "one\r\n");
    Files::Append(At(folder, "LOG"), "two\r\n");
    EXPECT_EQ(folder.Read("log"), "one\r\ntwo\r\n");
    Files::ReplaceSafely(At(folder, "log"), std::string("new\0text", 8));
    EXPECT_EQ(folder.Read("log"), std::string("new\0text", 8));
    Files::ReplaceSafely(At(folder, "b.event"), "");
    EXPECT_EQ(folder.Read("b.event"), "");
    Files::ReplaceSafely(At(folder, "B.EVENT"), "x");
    EXPECT_EQ(folder.Read("b.event"), "x");
    EXPECT_THAT(Files::ListFiles(folder.Path()), UnorderedElementsAre("log", "b.event"));
    ExpectFailure(FailurePathNotFound, "log", [&] { Files::Append(At(folder, "no/log"), "x"); });
    ExpectFailure(FailurePathNotFound, "Cannot write", [&] { Files::ReplaceSafely(At(folder, "no/f"), ""); });
}

TEST(Files, ReplacesAndDeletesNothingThatIsNoFile) {
    TempFolder folder;
    folder.Write("d.event/inside", "x");
    ExpectFailure(FailurePathFileAccess, "Cannot write " + At(folder, "d.event"),
                  [&] { Files::ReplaceSafely(At(folder, "d.event"), "y"); });
    EXPECT_EQ(folder.EntryCount(), 1);
    ExpectFailure(FailureFileNotFound, "Cannot delete", [&] { Files::DeleteFile(At(folder, "d.event/no")); });
    EXPECT_THROW(Files::DeleteFile(At(folder, "d.event")), Failure);
    EXPECT_EQ(folder.Read("d.event/inside"), "x");
    Files::DeleteFile(At(folder, "D.event/INSIDE"));
    EXPECT_FALSE(folder.Has("d.event/inside"));
}

TEST(Files, CopiesFiles) {
    TempFolder folder;
    folder.Write("from", "bytes");
    for (const char* old : {"", "bytes", "older", "other bytes"}) {
        folder.Write("to", old);
        Files::CopyFile(At(folder, "from"), At(folder, "to"));
        EXPECT_EQ(folder.Read("to"), "bytes");
    }
    Files::CopyFile(At(folder, "from"), At(folder, "fresh"));
    EXPECT_EQ(folder.Read("fresh"), "bytes");
    ExpectFailure(FailureFileNotFound, "Cannot read",
                  [&] { Files::CopyFile(At(folder, "no"), At(folder, "to")); });
    EXPECT_EQ(folder.Read("to"), "bytes");
}

TEST(Files, CopiesTrees) {
    TempFolder folder;
    folder.Write("Data/a.event", "aa");
    folder.Write("Data/UP_Issues/b.UPIssue", "bbb");
    folder.Write("Copies/Data/A.event", "old");
    folder.Write("Copies/Data/other", "kept");
    std::filesystem::create_directory(folder.Host() / "Data/Empty");
    std::vector<std::string> told;
    Files::CopyTree(At(folder, "Data"), At(folder, "Copies/DATA"),
                    [&](const std::string& file) { told.push_back(file); });
    EXPECT_EQ(Files::ReadWhole(At(folder, "Copies/Data/a.event")), "aa");
    EXPECT_EQ(folder.Read("Copies/Data/UP_Issues/b.UPIssue"), "bbb");
    EXPECT_EQ(folder.Read("Copies/Data/other"), "kept");
    EXPECT_TRUE(folder.Has("Copies/Data/Empty"));
    EXPECT_THAT(told,
                UnorderedElementsAre(At(folder, "Data/a.event"), At(folder, "Data/UP_Issues/b.UPIssue")));
    EXPECT_EQ(Files::TreeSize(At(folder, "Data")), 5u);
    ExpectFailure(FailurePathNotFound, "no", [&] { Files::TreeSize(At(folder, "no")); });
    ExpectFailure(FailurePathNotFound, "no", [&] { Files::CopyTree(At(folder, "no"), At(folder, "x")); });
    EXPECT_FALSE(folder.Has("x"));
    Files::CopyTree(At(folder, "Data"), At(folder, "Data/Copy"));
    EXPECT_EQ(folder.Read("Data/Copy/a.event"), "aa");
    EXPECT_FALSE(folder.Has("Data/Copy/Copy")) << "a tree is copied into itself once";
}

TEST(Files, RemovesAHalfMadeTree) {
    TempFolder folder;
    for (const char* name : {"Data/a", "Data/b", "Data/Sub/c", "Target/kept"})
        folder.Write(name, name);
    for (const char* target : {"New/Deep", "Target"}) {
        int files = 0;
        const auto stopAtThird = [&](const std::string&) {
            if (++files == 3)
                throw Failure(FailureDiskFull, "full");
        };
        ExpectFailure(FailureDiskFull, "full",
                      [&] { Files::CopyTree(At(folder, "Data"), At(folder, target), stopAtThird); });
    }
    EXPECT_FALSE(folder.Has("New"));
    EXPECT_FALSE(folder.Has("Target/Sub"));
    EXPECT_THAT(Files::ListFiles(At(folder, "Target")), ElementsAre("kept"));
}

TEST(Files, CreatesFoldersAndTellsWhereFilesCanBeCreated) {
    TempFolder folder;
    Files::CreateFolder(At(folder, "a/b/c"));
    EXPECT_TRUE(folder.Has("a/b/c"));
    Files::CreateFolder(At(folder, "A/B") + sep);
    folder.Write("f", "x");
    EXPECT_EQ(folder.EntryCount(), 2);
    ExpectFailure(FailurePathFileAccess, "Cannot create", [&] { Files::CreateFolder(At(folder, "f")); });
    EXPECT_THROW(Files::CreateFolder(At(folder, "f/g")), Failure);
    EXPECT_TRUE(Files::FolderWritable(folder.Path()));
    EXPECT_FALSE(Files::FolderWritable(At(folder, "no")));
    EXPECT_FALSE(Files::FolderWritable(At(folder, "f")));
    EXPECT_EQ(folder.EntryCount(), 2);
}

} // namespace
} // namespace velmora
