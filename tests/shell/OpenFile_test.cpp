// Content files that are opened from outside: by the command line, by another start, by a drop.
#include "SoundRecords.h"
#include "editor/RecordWindow.h"
#include "services/modWriter.h"
#include "shell/ShellFixture.h"

#include <QDir>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QUrl>
#include <QWindow>
#include <filesystem>

namespace velmora {
namespace {

using ::testing::HasSubstr;

class OpenFile : public ShellTest {
  protected:
    OpenFile() {
        for (const std::string game : {"Game", "Other"}) {
            temp.Write(game + "/Data/A.event", Event("Apple"));
            temp.Write(game + "/Data/B.event", Event("Banana") + Event("Cherry"));
            temp.Write(game + "/Data/Empty.event", "");
            temp.Write(game + "/Data/UP_Issues/Council.UPIssue", BlockOf(UPIssueKind, SoundIssue("Tax")));
        }
        temp.Write("Game/GFX/P.pcx", "no picture, but there");
        temp.Write("Elsewhere/B.event", Event("Lost"));
        temp.Write("Game/Data/Notes.txt", "no content");
        Start("Event File=X\r\nAutoBackup=FALSE\r\n");
    }
    static std::string Event(const std::string& name) { return BlockOf(EventKind, SoundEvent(name)); }

    static RecordWindow* Editor() {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (auto* editor = qobject_cast<RecordWindow*>(window); editor && editor->isVisible())
                return editor;
        return nullptr;
    }
    /// The window on show and its record, the game that is in use.
    [[nodiscard]] std::string Shown() const {
        const RecordWindow* editor = Editor();
        return (editor ? FromQt(editor->objectName()) + " " + editor->ShownRecordName()
                       : std::string(writer.isVisible() ? "frmWriter" : "nothing")) +
               " in " + Files::NameOf(Settings.GamePath.substr(0, Settings.GamePath.size() - 1));
    }
    QWidget& Form() override {
        RecordWindow* editor = Editor();
        return editor ? static_cast<QWidget&>(*editor) : ShellTest::Form();
    }
    void Edit() {
        ASSERT_TRUE(QTest::qWaitForWindowActive(&Form()));
        Pick("mnuEditThisEvent");
        Type("txtTitle", QStringLiteral("typed"));
    }
};

TEST_F(OpenFile, LeadsToItsFirstRecordOrSaysWhyNot) {
    struct Case {
        std::string File;
        std::string Shown;
        std::string Told;
    };
    std::vector<Case> cases{
        {"Game/Notes.event", "frmWriter in Game", "There is no file"},
        {"Game/Data/Notes.txt", "frmWriter in Game", "*.event, *.UPIssue, *.SBModule"},
        {"Elsewhere/B.event", "frmWriter in Game", "from the folder Data/ of its directory"},
        {"Game/Data/UP_Issues/../B.event", "frmEvents Banana in Game", ""},
        {"Game/Data/A.event", "frmEvents Apple in Game", ""},
        {"Game/data/a.EVENT", "frmEvents Apple in Game", ""},
        {"Game/Data/Empty.event", "frmEvents Apple in Game", "No Event was read from Empty.event"},
        {"Game/Data/UP_Issues/Council.UPIssue", "frmUPIssues Tax in Game", ""},
        {"Game/Data/B.event", "frmEvents Banana in Game", ""}};
    std::error_code noLinks; // as for most users of Windows
    std::filesystem::create_symlink(temp.Host() / "Game/Data/B.event", temp.Host() / "Elsewhere/Link.event",
                                    noLinks);
    if (!noLinks)
        cases.push_back({"Elsewhere/Link.event", "frmEvents Banana in Game", ""});
    for (const Case& one : cases) {
        writer.OpenFile(PathFromQt(QDir::cleanPath(PathToQt(temp / one.File))));
        EXPECT_EQ(Shown(), one.Shown) << one.File;
        EXPECT_THAT(Join(prompts.TakeTranscript(), "\n"), HasSubstr(one.Told)) << one.File;
        EXPECT_EQ(prompts.Details.size(), one.Told.empty() ? 0u : 1u) << one.File;
        prompts.Details.clear();
    }
}

TEST_F(OpenFile, ReadsOneThatCameSince) {
    writer.OpenFile(temp / "Game/Data/A.event");
    temp.Write("Game/Data/New.event", Event("Novelty"));
    writer.OpenFile(temp / "Game/Data/New.event");
    EXPECT_EQ(Shown(), "frmEvents Novelty in Game");
    EXPECT_THAT(prompts.Transcript, IsEmpty());
}

TEST_F(OpenFile, AsksBeforeItUsesAnotherGameAndKeepsTheSettings) {
    const std::string settings = Written();
    const std::string file = temp / "Other/Data/B.event";
    prompts.ExpectAsk("", false);
    writer.OpenFile(file);
    EXPECT_EQ(Shown(), "frmWriter in Game");
    EXPECT_THAT(prompts.Questions.back().Text, HasSubstr(temp / "Other"));
    prompts.ExpectAsk("", true);
    writer.OpenFile(file);
    EXPECT_EQ(Shown(), "frmEvents Banana in Other");
    writer.OpenFile(temp / "Other/Data/A.event");
    EXPECT_EQ(Shown(), "frmEvents Apple in Other");
    EXPECT_EQ(Written(), settings);
}

TEST_F(OpenFile, GivesUpNoWorkUnasked) {
    writer.OpenFile(temp / "Game/Data/A.event");
    Edit();
    for (const char* file :
         {"Game/Data/B.event", "Game/Data/UP_Issues/Council.UPIssue", "Other/Data/B.event"}) {
        writer.OpenFile(temp / file);
        EXPECT_EQ(Text("txtTitle"), "typed") << file;
        EXPECT_EQ(Text("lblEditStatus"), "Commit or discard first") << file;
    }
    Pick("mnuCommitChanges");
    writer.OpenFile(temp / "Game/Data/B.event");
    EXPECT_EQ(Shown(), "frmEvents Banana in Game");
    for (const bool giveUp : {false, true}) {
        prompts.ExpectAsk("", giveUp); // the editor's own, at its closing
        writer.OpenFile(temp / "Game/Data/UP_Issues/Council.UPIssue");
        EXPECT_EQ(Shown(), giveUp ? "frmUPIssues Tax in Game" : "frmEvents Banana in Game");
    }
}

TEST_F(OpenFile, WaitsForTheAnswerToAnOpenQuestion) {
    InOptions([this] { Pick("mnuOptions"); },
              [this] {
                  writer.OpenFile(temp / "Game/Data/B.event");
                  EXPECT_FALSE(Editor());
                  Click("cmdDone");
              });
    EXPECT_TRUE(QTest::qWaitFor([this] { return Shown() == "frmEvents Banana in Game"; })) << Shown();
}

/// Drags something over the middle of a control and drops it; whether it was taken.
bool Drop(QWidget& control, const QString& file) {
    QMimeData data;
    data.setUrls({QUrl(QStringLiteral("https://example.org/A.event")), QUrl::fromLocalFile(file)});
    QWidget& window = *control.window();
    const QPoint middle = control.mapTo(&window, control.rect().center());
    QDragEnterEvent enter(middle, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.windowHandle(), &enter);
    if (!enter.isAccepted())
        return false;
    QDropEvent drop(middle, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.windowHandle(), &drop);
    EXPECT_EQ(drop.dropAction(), Qt::CopyAction);
    return drop.isAccepted();
}

TEST_F(OpenFile, CanBeDroppedOnAnyWindow) {
    writer.show();
    EXPECT_FALSE(Drop(writer, PathToQt(temp / "Game/Data/Notes.txt")));
    for (const auto& [file, shown] : {std::pair{"A.event", "frmEvents Apple in Game"},
                                      {"B.event", "frmEvents Banana in Game"},
                                      {"UP_Issues/Council.UPIssue", "frmUPIssues Tax in Game"}}) {
        EXPECT_TRUE(Drop(Form(), PathToQt(temp / "Game/Data/" + file))) << file;
        EXPECT_TRUE(QTest::qWaitFor([&, expected = std::string(shown)] { return Shown() == expected; }))
            << Shown();
    }
    EXPECT_THAT(prompts.Transcript, IsEmpty());
}

TEST_F(OpenFile, IsNoTextToDropIntoAField) {
    writer.OpenFile(temp / "Game/Data/A.event");
    Edit();
    EXPECT_TRUE(Drop(*Get<QWidget>("txtTitle"), PathToQt(temp / "Game/Data/B.event")));
    EXPECT_TRUE(QTest::qWaitFor([this] { return Text("lblEditStatus") == "Commit or discard first"; }));
    EXPECT_EQ(Text("txtTitle"), "typed");
}

} // namespace
} // namespace velmora
