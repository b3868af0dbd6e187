#include "FailureOf.h"
#include "TempFolder.h"
#include "platform/CodePage.h"
#include "platform/Failure.h"
#include "platform/Files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

namespace velmora {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

const std::string sep(1, Files::Separator);

/// A file or folder in a folder, spelt as failures spell it.
std::string At(const TempFolder& folder, const std::string& name) {
    return Files::PathText((folder.Host() / name).make_preferred());
}

void ExpectFailure(std::int32_t number, const std::string& inDescription, const std::function<void()>& work) {
    const Failure failure = FailureOf(work);
    EXPECT_EQ(failure.Number, number) << failure.Description();
    EXPECT_THAT(failure.Description(), HasSubstr(inDescription));
}

TEST(Files, TakesPathsApart) {
    struct Case {
        const char* Path;
        const char* Folder;
        const char* Name;
    };
    for (const Case& each :
         {Case{"", "", ""}, Case{"a.event", "", "a.event"}, Case{"d/a.event", "d/", "a.event"},
          Case{"C:\\d\\a.event", "C:\\d\\", "a.event"}, Case{"d\\e/f", "d\\e/", "f"}, Case{"d/", "d/", ""}}) {
        EXPECT_EQ(Files::FolderOf(each.Path), each.Folder);
        EXPECT_EQ(Files::NameOf(each.Path), each.Name);
    }
    EXPECT_EQ(Files::Join("d", "n"), "d" + sep + "n");
    EXPECT_EQ(Files::Join("d/", "n"), "d/n");
    EXPECT_EQ(Files::Join("d\\", "n"), "d\\n");
    EXPECT_EQ(Files::Join("", "n"), "n");
}

TEST(Files, AcceptsBothSeparatorsAndDoubledOnes) {
    TempFolder folder;
    folder.Write("Data/Sub/a.event", "x");
    for (const char* path : {"/Data/Sub/a.event", "\\Data\\Sub\\a.event", "/Data\\Sub/a.event",
                             "//Data\\\\Sub\\/a.event", "/./Data/Sub/../Sub/a.event"}) {
        EXPECT_TRUE(Files::FileExists(folder.Path() + path)) << path;
    }
    EXPECT_TRUE(Files::FolderExists(folder.Path() + "\\Data\\"));
}

TEST(Files, FindsNamesWithoutRegardToCase) {
    TempFolder folder;
    folder.Write("Data/UP_Issues/Council.UPIssue", "found");
    for (const char* path : {"/data/up_issues/council.upissue", "\\DATA\\UP_ISSUES\\COUNCIL.UPISSUE",
                             "/Data/UP_Issues/Council.UPIssue"}) {
        SCOPED_TRACE(path);
        EXPECT_EQ(Files::ReadWhole(folder.Path() + path), "found");
    }
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
    const std::u8string names[] = {u8"Caf\u00E9.event", u8"\u0416uk.event", u8"\u00C3\u00A9.event",
                                   u8"\u20AC.event"};
    for (const auto& name : names) {
        std::filesystem::create_directory(folder.Host() / "d");
        std::ofstream(folder.Host() / "d" / name) << "x";
    }
    const auto listed = Files::ListFiles(At(folder, "d"));
    EXPECT_THAT(listed, UnorderedElementsAre("Caf\xE9.event", "\xD0\x96uk.event", "\xC3\x83\xC2\xA9.event",
                                             "\x80.event"));
    for (const auto& name : listed) {
        EXPECT_EQ(Files::ReadWhole(Files::Join(At(folder, "d"), name)), "x") << name;
    }
    EXPECT_TRUE(Files::FileExists(At(folder, "d") + "/CAF\xC9.EVENT"));
}

TEST(Files, ListsFilesOnly) {
    TempFolder folder;
    folder.Write("b.event", "");
    folder.Write("A.EVENT", "");
    folder.Write("Sub.event/c.event", "");
    EXPECT_THAT(Files::ListFiles(folder.Path()), UnorderedElementsAre("b.event", "A.EVENT"));
    folder.Write("Empty/x", "");
    std::filesystem::remove(folder.Host() / "Empty/x");
    EXPECT_THAT(Files::ListFiles(At(folder, "Empty")), IsEmpty());
    ExpectFailure(FailurePathNotFound, "missing", [&] { Files::ListFiles(At(folder, "missing")); });
    ExpectFailure(FailurePathFileAccess, "b.event", [&] { Files::ListFiles(At(folder, "b.event")); });
}

TEST(Files, ReadsAndMeasuresWholeFiles) {
    TempFolder folder;
    std::string bytes;
    for (int i = 0; i < 300'000; ++i) {
        bytes += static_cast<char>(i * 7);
    }
    for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{4096}, bytes.size()}) {
        const std::string path = At(folder, "f");
        folder.Write("f", bytes.substr(0, size));
        EXPECT_TRUE(Files::ReadWhole(path) == bytes.substr(0, size)) << size;
        EXPECT_EQ(Files::SizeOf(path), size);
    }
}

TEST(Files, SaysWhyNothingCanBeRead) {
    TempFolder folder;
    folder.Write("d/f", "x");
    ExpectFailure(FailureFileNotFound, At(folder, "d/no"), [&] { Files::ReadWhole(At(folder, "d/no")); });
    ExpectFailure(FailurePathNotFound, At(folder, "no/f"), [&] { Files::ReadWhole(At(folder, "no/f")); });
    ExpectFailure(FailurePathFileAccess, At(folder, "d"), [&] { Files::ReadWhole(At(folder, "d")); });
    ExpectFailure(FailureFileNotFound, At(folder, "no"), [&] { Files::SizeOf(At(folder, "no")); });
    ExpectFailure(FailurePathFileAccess, At(folder, "d"), [&] { Files::SizeOf(At(folder, "d")); });
}

TEST(Files, Appends) {
    TempFolder folder;
    Files::Append(At(folder, "log"), "one\r\n");
    Files::Append(At(folder, "LOG"), "two\r\n");
    EXPECT_EQ(folder.Read("log"), "one\r\ntwo\r\n");
    ExpectFailure(FailurePathNotFound, "log", [&] { Files::Append(At(folder, "no/log"), "x"); });
}

TEST(Files, ReplacesAndCreates) {
    TempFolder folder;
    const std::string path = At(folder, "a.event");
    folder.Write("a.event", "a much longer old text");
    Files::ReplaceSafely(path, std::string("new\0text", 8));
    EXPECT_EQ(folder.Read("a.event"), std::string("new\0text", 8));
    Files::ReplaceSafely(At(folder, "b.event"), "");
    EXPECT_EQ(folder.Read("b.event"), "");
    Files::ReplaceSafely(At(folder, "B.EVENT"), "x");
    EXPECT_EQ(folder.Read("b.event"), "x");
    EXPECT_THAT(Files::ListFiles(folder.Path()), UnorderedElementsAre("a.event", "b.event"));
    EXPECT_EQ(folder.EntryCount(), 2);
}

TEST(Files, ReplacesNothingThatIsNoFile) {
    TempFolder folder;
    folder.Write("d.event/inside", "x");
    ExpectFailure(FailurePathFileAccess, "Cannot write " + At(folder, "d.event"),
                  [&] { Files::ReplaceSafely(At(folder, "d.event"), "y"); });
    ExpectFailure(FailurePathNotFound, "Cannot write",
                  [&] { Files::ReplaceSafely(At(folder, "no/f"), "y"); });
    EXPECT_EQ(folder.Read("d.event/inside"), "x");
    EXPECT_EQ(folder.EntryCount(), 1);
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
    std::filesystem::create_directory(folder.Host() / "Data/Empty");
    std::vector<std::string> told;
    Files::CopyTree(At(folder, "Data"), At(folder, "Copies/DATA DIR"),
                    [&](const std::string& file) { told.push_back(file); });
    EXPECT_EQ(folder.Read("Copies/DATA DIR/a.event"), "aa");
    EXPECT_EQ(folder.Read("Copies/DATA DIR/UP_Issues/b.UPIssue"), "bbb");
    EXPECT_TRUE(std::filesystem::is_directory(folder.Host() / "Copies/DATA DIR/Empty"));
    EXPECT_THAT(told,
                UnorderedElementsAre(At(folder, "Data/a.event"), At(folder, "Data/UP_Issues/b.UPIssue")));
    EXPECT_EQ(Files::TreeSize(At(folder, "Data")), 5u);
    ExpectFailure(FailurePathNotFound, "no", [&] { Files::TreeSize(At(folder, "no")); });
    ExpectFailure(FailurePathNotFound, "no", [&] { Files::CopyTree(At(folder, "no"), At(folder, "x")); });
    EXPECT_FALSE(Files::FolderExists(At(folder, "x")));
}

TEST(Files, CopiesATreeIntoItselfOnce) {
    TempFolder folder;
    folder.Write("Data/a.event", "x");
    Files::CopyTree(At(folder, "Data"), At(folder, "Data/Copy"));
    EXPECT_EQ(folder.Read("Data/Copy/a.event"), "x");
    EXPECT_FALSE(Files::FolderExists(At(folder, "Data/Copy/Copy")));
}

TEST(Files, CopiesATreeOverOldFiles) {
    TempFolder folder;
    folder.Write("Data/a.event", "new");
    folder.Write("Old/A.event", "old");
    folder.Write("Old/other", "kept");
    Files::CopyTree(At(folder, "Data"), At(folder, "Old"));
    EXPECT_EQ(folder.Read("Old/other"), "kept");
    EXPECT_EQ(Files::ReadWhole(At(folder, "Old/a.event")), "new");
}

TEST(Files, RemovesAHalfMadeTree) {
    TempFolder folder;
    for (const char* name : {"Data/a", "Data/b", "Data/Sub/c", "Target/kept"}) {
        folder.Write(name, name);
    }
    int files = 0;
    const auto stopAtThird = [&](const std::string&) {
        if (++files == 3) {
            throw Failure(FailureDiskFull, "full");
        }
    };
    ExpectFailure(FailureDiskFull, "full",
                  [&] { Files::CopyTree(At(folder, "Data"), At(folder, "New/Deep"), stopAtThird); });
    EXPECT_FALSE(Files::FolderExists(At(folder, "New")));
    files = 0;
    ExpectFailure(FailureDiskFull, "full",
                  [&] { Files::CopyTree(At(folder, "Data"), At(folder, "Target"), stopAtThird); });
    EXPECT_THAT(Files::ListFiles(At(folder, "Target")), ElementsAre("kept"));
    EXPECT_FALSE(Files::FolderExists(At(folder, "Target/Sub")));
}

TEST(Files, DeletesFilesOnly) {
    TempFolder folder;
    folder.Write("d/f", "x");
    ExpectFailure(FailureFileNotFound, "Cannot delete", [&] { Files::DeleteFile(At(folder, "d/no")); });
    EXPECT_THROW(Files::DeleteFile(At(folder, "d")), Failure);
    Files::DeleteFile(At(folder, "D/F"));
    EXPECT_FALSE(Files::FileExists(At(folder, "d/f")));
    EXPECT_TRUE(Files::FolderExists(At(folder, "d")));
}

TEST(Files, CreatesFolders) {
    TempFolder folder;
    Files::CreateFolder(At(folder, "a/b/c"));
    EXPECT_TRUE(Files::FolderExists(At(folder, "a/b/c")));
    Files::CreateFolder(At(folder, "A/B") + sep);
    EXPECT_EQ(folder.EntryCount(), 1);
    folder.Write("f", "x");
    ExpectFailure(FailurePathFileAccess, "Cannot create", [&] { Files::CreateFolder(At(folder, "f")); });
    EXPECT_THROW(Files::CreateFolder(At(folder, "f/g")), Failure);
}

TEST(Files, TellsWhereFilesCanBeCreated) {
    TempFolder folder;
    folder.Write("f", "x");
    EXPECT_TRUE(Files::FolderWritable(folder.Path()));
    EXPECT_FALSE(Files::FolderWritable(At(folder, "no")));
    EXPECT_FALSE(Files::FolderWritable(At(folder, "f")));
    EXPECT_EQ(folder.EntryCount(), 1);
}

} // namespace
} // namespace velmora
