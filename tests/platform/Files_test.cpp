#include "FailureOf.h"
#include "TempFolder.h"
#include "platform/FileTrees.h"
#include "platform/Files.h"
#include "platform/HostFiles.h"

#include <gmock/gmock.h>

#include <functional>
#include <tuple>

namespace velmora {
namespace {

using ::testing::HasSubstr;
using ::testing::UnorderedElementsAre;

const std::string sep(1, Files::Separator);

class FilesTest : public ::testing::Test {
  protected:
    /// A file or folder, spelt as failures spell it.
    [[nodiscard]] std::string At(const std::string& name) const {
        return Files::PathText(folder.Host() / name);
    }

    TempFolder folder;
};

void ExpectFailure(std::int32_t number, const std::string& inDescription, const std::function<void()>& work) {
    const Failure failure = FailureOf(work);
    EXPECT_EQ(failure.Number, number) << failure.Description();
    EXPECT_THAT(failure.Description(), HasSubstr(inDescription));
}

TEST_F(FilesTest, TakesPathsApartAndSpellsThemAsTheHostDoes) {
    using Case = std::tuple<std::string, std::string, std::string>;
    for (const auto& [path, parent, name] :
         {Case{"", "", ""}, Case{"a.event", "", "a.event"}, Case{"d/a.event", "d/", "a.event"},
          Case{"C:\\d\\a.event", "C:\\d\\", "a.event"}, Case{"d\\e/f", "d\\e/", "f"}, Case{"d/", "d/", ""}}) {
        EXPECT_EQ(Files::FolderOf(path), parent);
        EXPECT_EQ(Files::NameOf(path), name);
        EXPECT_EQ(Files::Join(parent, name), path);
    }
    EXPECT_EQ(Files::Join("d", "n"), "d" + sep + "n");
    EXPECT_EQ(Files::PathText("C:/d//a.event"), "C:" + sep + "d" + sep + "a.event");
    EXPECT_EQ(Files::PathText("/d/a.event"), sep + "d" + sep + "a.event");
}

TEST_F(FilesTest, FindsNamesWithEitherSeparatorAndInAnyCase) {
    folder.Write("Data/UP_Issues/Council.UPIssue", "found");
    for (const char* path :
         {"\\DATA\\UP_ISSUES\\COUNCIL.UPISSUE", "/Data/UP_Issues/Council.UPIssue",
          "//data\\\\UP_Issues\\/Council.UPIssue", "/./Data/UP_Issues/../UP_Issues/Council.UPIssue"})
        EXPECT_EQ(Files::ReadWhole(folder.Path() + path), "found") << path;
    EXPECT_TRUE(Files::FolderExists(folder.Path() + "\\DATA\\"));
    EXPECT_FALSE(Files::FileExists(folder.Path() + "/data/up_issues/council"));
    EXPECT_FALSE(Files::FileExists(At("Data/UP_Issues")));
    EXPECT_FALSE(Files::FolderExists(At("Data/UP_Issues/Council.UPIssue")));
    for (const std::string name : {"NEW.event", "new.EVENT"}) {
        Files::ReplaceSafely(folder.Path() + "\\data\\" + name, name);
        EXPECT_EQ(folder.Read("Data/NEW.event"), name);
    }
}

TEST_F(FilesTest, ListsFilesWithNamesOfTheCodePageAndOthers) {
    folder.Write("d/Sub.event/c.event", "");
    for (const auto& name :
         {u8"Caf\u00E9.event", u8"\u0416uk.event", u8"\u00C3\u00A9.event", u8"\u20AC.event"})
        std::ofstream(folder.Host() / "d" / name) << "x";
    const auto listed = Files::ListFiles(At("d"));
    EXPECT_THAT(listed, UnorderedElementsAre("Caf\xE9.event", "\x7F\xD0\x96uk.event", "\xC3\xA9.event",
                                             "\x80.event"));
    for (const auto& name : listed)
        EXPECT_EQ(Files::ReadWhole(Files::Join(At("d"), name)), "x") << name;
    EXPECT_TRUE(Files::FileExists(At("d") + "/CAF\xC9.EVENT"));
    ExpectFailure(FailurePathNotFound, "missing", [&] { Files::ListFiles(At("missing")); });
    ExpectFailure(FailurePathFileAccess, "Caf", [&] { Files::ListFiles(At("d/Caf\xE9.event")); });
}

TEST_F(FilesTest, ReadsAndMeasuresWholeFiles) {
    std::string bytes;
    for (int i = 0; i < 300'000; ++i)
        bytes += static_cast<char>(i * 7);
    for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{4096}, bytes.size()}) {
        folder.Write("d/f", bytes.substr(0, size));
        EXPECT_TRUE(Files::ReadWhole(At("d/f")) == bytes.substr(0, size)) << size;
        EXPECT_EQ(Files::SizeOf(At("d/f")), size);
    }
    ExpectFailure(FailureFileNotFound, At("d/no"), [&] { Files::ReadWhole(At("d/no")); });
    ExpectFailure(FailurePathNotFound, At("no/f"), [&] { Files::ReadWhole(At("no/f")); });
    ExpectFailure(FailurePathFileAccess, At("d"), [&] { Files::ReadWhole(At("d")); });
    ExpectFailure(FailurePathFileAccess, At("d"), [&] { Files::SizeOf(At("d")); });
}

TEST_F(FilesTest, AppendsReplacesAndDeletesFilesOnly) {
    Files::Append(At("log"), "one\r\n");
    Files::Append(At("LOG"), "two\r\n");
    EXPECT_EQ(folder.Read("log"), "one\r\ntwo\r\n");
    for (const std::string& bytes : {std::string("new\0text", 8), std::string()}) {
        Files::ReplaceSafely(At("log"), bytes);
        EXPECT_EQ(folder.Read("log"), bytes);
    }
    folder.Write("d.event/inside", "x");
    ExpectFailure(FailurePathNotFound, "log", [&] { Files::Append(At("no/log"), "x"); });
    ExpectFailure(FailurePathNotFound, "Cannot write", [&] { Files::ReplaceSafely(At("no/f"), ""); });
    ExpectFailure(FailurePathFileAccess, "Cannot write " + At("d.event"),
                  [&] { Files::ReplaceSafely(At("d.event"), "y"); });
    ExpectFailure(FailureFileNotFound, "Cannot delete", [&] { Files::DeleteFile(At("d.event/no")); });
    EXPECT_THROW(Files::DeleteFile(At("d.event")), Failure);
    EXPECT_EQ(folder.EntryCount(), 2);
    EXPECT_EQ(folder.Read("d.event/inside"), "x");
    Files::DeleteFile(At("D.event/INSIDE"));
    EXPECT_FALSE(folder.Has("d.event/inside"));
}

TEST_F(FilesTest, CopiesFiles) {
    folder.Write("from", "bytes");
    for (const char* old : {"", "bytes", "older", "other bytes"}) {
        folder.Write("to", old);
        Files::CopyFile(At("from"), At("to"));
        EXPECT_EQ(folder.Read("to"), "bytes");
    }
    ExpectFailure(FailureFileNotFound, "Cannot read", [&] { Files::CopyFile(At("no"), At("to")); });
}

TEST_F(FilesTest, CopiesTrees) {
    folder.Write("Data/a.event", "aa");
    folder.Write("Data/UP_Issues/b.UPIssue", "bbb");
    folder.Write("Copies/Data.incomplete/a.event", "of a program that was killed");
    std::filesystem::create_directory(folder.Host() / "Data/Empty");
    const auto old = std::filesystem::file_time_type::clock::now() - std::chrono::hours(1000);
    std::filesystem::last_write_time(folder.Host() / "Data/UP_Issues/b.UPIssue", old);
    for (const char* name : {"Data/UP_Issues", "Data"})
        HostFiles::TakeTimeOf(folder.Host() / "Data/UP_Issues/b.UPIssue", folder.Host() / name);
    std::vector<std::string> told;
    const auto copying = [&](const std::string& file) {
        told.push_back(file);
        EXPECT_FALSE(folder.Has("Copies/Data")) << "it never passes for whole before it is";
    };
    EXPECT_THAT(Files::CopyTree(At("Data"), At("Copies/Data"), copying), ::testing::IsEmpty());
    EXPECT_EQ(folder.Read("Copies/Data/a.event"), "aa");
    EXPECT_EQ(folder.Read("Copies/Data/UP_Issues/b.UPIssue"), "bbb");
    EXPECT_TRUE(folder.Has("Copies/Data/Empty"));
    EXPECT_FALSE(folder.Has("Copies/Data.incomplete"));
    for (const char* name : {"Copies/Data/UP_Issues/b.UPIssue", "Copies/Data/UP_Issues", "Copies/Data"})
        EXPECT_EQ(std::filesystem::last_write_time(folder.Host() / name),
                  std::filesystem::last_write_time(folder.Host() / std::string(name).substr(7)));
    EXPECT_THROW(Files::CopyTree(At("Data"), At("Copies/DATA")), Failure) << "the place is taken";
    EXPECT_THAT(told, UnorderedElementsAre(At("Data/a.event"), At("Data/UP_Issues/b.UPIssue")));
    EXPECT_EQ(Files::TreeSize(At("Data")), 5u);
    ExpectFailure(FailurePathNotFound, "no", [&] { Files::CopyTree(At("no"), At("x")); });
    EXPECT_FALSE(folder.Has("x"));
    Files::CopyTree(At("Data"), At("Data/Copy"));
    EXPECT_EQ(folder.Read("Data/Copy/a.event"), "aa");
    EXPECT_FALSE(folder.Has("Data/Copy/Copy")) << "a tree is copied into itself once";
}

TEST_F(FilesTest, CreatesFoldersAndTellsWhereFilesCanBeCreated) {
    Files::CreateFolder(At("a/b/c"));
    EXPECT_TRUE(folder.Has("a/b/c"));
    Files::CreateFolder(At("A/B") + sep);
    folder.Write("f", "x");
    ExpectFailure(FailurePathFileAccess, "Cannot create", [&] { Files::CreateFolder(At("f")); });
    EXPECT_THROW(Files::CreateFolder(At("f/g")), Failure);
    EXPECT_EQ(Files::WriteRefusal(folder.Path()), "");
    EXPECT_NE(Files::WriteRefusal(At("no")), "");
    EXPECT_NE(Files::WriteRefusal(At("f")), "");
    EXPECT_EQ(folder.EntryCount(), 2);
}

} // namespace
} // namespace velmora
