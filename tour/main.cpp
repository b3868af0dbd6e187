// Plays the program on the sample game, from the first start to the last window.
//   tour PLAY_FOLDER PICTURE_FOLDER SUFFIX
#include "Tour.h"

#include "editor/DialogPrompts.h"
#include "editor/QtText.h"
#include "editor/TextViewer.h"
#include "events/clsEvent.h"
#include "kinds/Kinds.h"
#include "platform/Files.h"
#include "services/Settings.h"
#include "services/modWriter.h"
#include "shell/frmWriter.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDockWidget>
#include <QFile>
#include <QLineEdit>
#include <QPalette>
#include <QProgressDialog>
#include <QStyleFactory>
#include <QTest>
#include <QTreeView>

namespace velmora {
namespace {

void UseDarkColours() {
    QPalette dark(QColor(45, 45, 48), QColor(37, 37, 40));
    dark.setColor(QPalette::Base, QColor(30, 30, 32));
    dark.setColor(QPalette::Highlight, QColor(60, 110, 190));
    dark.setColor(QPalette::HighlightedText, Qt::white);
    dark.setColor(QPalette::ToolTipBase, QColor(60, 60, 64));
    dark.setColor(QPalette::ToolTipText, Qt::white);
    dark.setColor(QPalette::Link, QColor(110, 170, 255));
    QApplication::setPalette(dark);
}

void PlayFirstStart(Tour& tour, const QString& play, const QString& home) {
    ProgramDirectory = PathFromQt(home);
    frmWriter writer;
    tour.Meet(QStringLiteral("first-start"), QStringLiteral("OK"));
    tour.Meet(QStringLiteral("no-registry"), QStringLiteral("OK"));
    tour.Meet({}, [&](QWidget& options) {
        tour.Type(options, "txtVelmoraPath", QStringLiteral("/home/captain/Games/Velmora"));
        tour.Step(QStringLiteral("options"), &options);
        tour.Type(options, "txtVelmoraPath", play + QStringLiteral("/Velmora"));
        Tour::Press(options, QStringLiteral("Done"));
    });
    writer.Load();
    writer.show();
    tour.Step(QStringLiteral("main"), &writer);
}

/// The sample has a file with faults; they are told one by one until the user asks for a list.
void MeetLoadingMessages(Tour& tour, bool pictures) {
    const auto name = [pictures](const char* what) {
        return pictures ? QString::fromLatin1(what) : QString();
    };
    tour.Meet(name("loading-message"), QStringLiteral("OK"));
    tour.Meet({}, [&tour, name](QWidget& box) {
        tour.Find<QCheckBox>(box, "chkRestAsList").setChecked(true);
        if (const QString what = name("loading-messages"); !what.isEmpty())
            tour.Step(what, &box);
        Tour::Press(box, QStringLiteral("OK"));
    });
    tour.Meet(name("loading-list"), QStringLiteral("Close"));
}

void EditAnEvent(Tour& tour, QWidget& window) {
    tour.Choose(window, "mnuEditThisEvent");
    tour.Step(QStringLiteral("event-editing"), &window);
    auto& attribute = tour.Find(window, "cboAttributeDropDown_0");
    attribute.setFocus();
    QTest::keyClick(&attribute, Qt::Key_Down);
    tour.Step(QStringLiteral("event-hint"), &window);
    tour.Step(QStringLiteral("event-differences"), &window);

    tour.Type(window, "txtProbability", QStringLiteral("99999999999"));
    tour.Meet(QStringLiteral("error"), [&](QWidget& dialog) {
        Tour::Press(dialog, QStringLiteral("Details >>"));
        tour.Step(QStringLiteral("error-details"), &dialog);
        Tour::Press(dialog, QStringLiteral("Close"));
    });
    tour.Choose(window, "mnuCommitChanges");
    tour.Type(window, "txtProbability", QStringLiteral("50"));

    tour.Type(window, "txtTitle", {});
    tour.Meet(QStringLiteral("event-reasons"), QStringLiteral("No"));
    tour.Choose(window, "mnuCommitChanges");
    tour.Type(window, "txtTitle", QStringLiteral("A Whale of a Time"));
    tour.Choose(window, "mnuCommitChanges");
    tour.Step(QStringLiteral("event-committed"), &window);
    tour.Choose(window, "mnuUndo");
    tour.Step(QStringLiteral("event-undone"), &window);
    tour.Choose(window, "mnuRedo");
}

void LookThroughRecords(Tour& tour, QWidget& window) {
    tour.Choose(window, "mnuFilterRecords");
    tour.Step(QStringLiteral("records"), &window);
    tour.Type(window, "txtFilter", QStringLiteral("pirate -queen"));
    tour.Step(QStringLiteral("records-filter"), &window);
    tour.Type(window, "txtFilter", QStringLiteral("state:edited"));
    tour.Step(QStringLiteral("records-edited"), &window);
    tour.Meet(QStringLiteral("records-filter-help"), QStringLiteral("OK"));
    QTest::mouseClick(&tour.Find(window, "cmdFilterHelp"), Qt::LeftButton);
    tour.Type(window, "txtFilter", {});
}

void LookAtProblems(Tour& tour, QWidget& window) {
    tour.Find<QDockWidget>(window, "dckProblems").show();
    tour.Find<QComboBox>(window, "cboGroupBy").setCurrentIndex(1);
    tour.Find<QLineEdit>(window, "txtProblemFilter").setText(QStringLiteral("UnfilledBlank"));
    tour.Choose(window, "mnuNextProblem");
    tour.Step(QStringLiteral("problems-next"), &window);
    tour.Find<QLineEdit>(window, "txtProblemFilter").clear();
    tour.Step(QStringLiteral("problems-by-rule"), &window);
    tour.Choose(window, "mnuEditThisEvent");
    tour.Find<QComboBox>(window, "cboGroupBy").setCurrentIndex(2);
    tour.Step(QStringLiteral("problems-not-committed"), &window);
    tour.Choose(window, "mnuDiscardChanges");
    tour.Find<QDockWidget>(window, "dckProblems").hide();
}

void LookAtPreview(Tour& tour, QWidget& window) {
    tour.Find<QDockWidget>(window, "dckPreview").show();
    tour.Find<QDockWidget>(window, "dckUndoHistory").hide();
    tour.Step(QStringLiteral("preview"), &window);
    tour.Find<QCheckBox>(window, "chkSampleNames").setChecked(true);
    tour.Choose(window, "mnuEditThisEvent");
    tour.Type(window, "txtGoodOption", QStringLiteral("%s welcomes %s, which is 100% sure. ").repeated(7));
    tour.Step(QStringLiteral("preview-too-long"), &window);
    tour.Choose(window, "mnuDiscardChanges");
    tour.Find<QCheckBox>(window, "chkSampleNames").setChecked(false);
    tour.Find<QDockWidget>(window, "dckPreview").hide();
    tour.Zoom(window, "mnuZoomTo", QStringLiteral("PirateQueen"));
    tour.Find<QDockWidget>(window, "dckSpelling").show();
    tour.Find<QDockWidget>(window, "dckSpelling").raise();
    QTest::qWait(500); // for the dictionaries
    tour.Step(QStringLiteral("spelling"), &window);
    tour.Find<QDockWidget>(window, "dckSpelling").hide();
}

void ReplaceTexts(Tour& tour, QWidget& window) {
    tour.Choose(window, "mnuFindReplace");
    tour.Type(window, "txtFind", QStringLiteral("whale"));
    tour.Type(window, "txtReplace", QStringLiteral("leviathan"));
    tour.Step(QStringLiteral("replace-hits"), &window);
    tour.Choose(window, "mnuNextHit");
    tour.Step(QStringLiteral("replace-next"), &window);
    QTest::mouseClick(&tour.Find(window, "cmdReplace"), Qt::LeftButton);
    tour.Step(QStringLiteral("replace-done"), &window);
    tour.Choose(window, "mnuUndo");
    tour.Find<QCheckBox>(window, "chkRegExp").setChecked(true);
    tour.Type(window, "txtFind", QStringLiteral("(whale"));
    tour.Step(QStringLiteral("replace-fault"), &window);
    tour.Type(window, "txtFind", {});
    tour.Find<QDockWidget>(window, "dckReplace").hide();
}

/// Another copy of the game in which somebody went on writing.
std::string MakeColleague(const std::string& folder) {
    const KindEntry& kind = EntryOf(EventKind);
    Files::CreateFolder(folder);
    for (const std::string& path : FilesOf(kind, Settings.GamePath)) {
        std::string text = ReplaceAll(Files::ReadWhole(path), "EVENT HatDay", "EVENT DayOfTheHat");
        text = ReplaceAll(text, "A Whale of a Time", "The Whale That Sang Back");
        text = ReplaceAll(text, "The Ambassador Is a Cat", "The %s Is a Cat");
        text = ReplaceAll(text, "EVENT InspectorGeneral", "EVENT InspectorOfInspectors");
        Files::ReplaceSafely(Files::Join(folder, Files::NameOf(path)), text);
    }
    return folder;
}

void CompareFolders(Tour& tour, QWidget& window) {
    const std::string folder = MakeColleague(ProgramDirectory + "/Anna");
    tour.Meet({}, [&](QWidget& picker) {
        tour.Find<QLineEdit>(picker, "fileNameEdit").setText(PathToQt(folder));
        static_cast<QDialog&>(picker).accept();
    });
    tour.Meet({}, [&](QWidget& dialog) {
        auto& tree = tour.Find<QTreeView>(dialog, "tvwCompare");
        const auto groups = tree.model()->match(tree.model()->index(0, 0), Qt::DisplayRole,
                                                QStringLiteral("changed: "), 2, Qt::MatchStartsWith);
        for (const QModelIndex& group : groups)
            tree.model()->setData(group, Qt::Checked, Qt::CheckStateRole);
        tour.Step(QStringLiteral("compare"), &dialog);
        Tour::Press(dialog, QStringLiteral("Cancel"));
    });
    tour.Choose(window, "mnuCompareWith");
}

void SearchCommands(Tour& tour, QWidget& window) {
    tour.Meet(QString(), [&](QWidget& dialog) {
        tour.Type(dialog, "txtCommand", QStringLiteral("problem"));
        tour.Step(QStringLiteral("command-search"), &dialog);
        dialog.close();
    });
    tour.Choose(window, "mnuCommandSearch");
    QTest::qWait(200); // until it was met
}

void PlayEvents(Tour& tour, frmWriter& writer) {
    MeetLoadingMessages(tour, true);
    tour.Choose(writer, "mnuEvents");
    QWidget& window = tour.Window("frmEvents");
    tour.Step(QStringLiteral("event-browsing"), &window);
    tour.Zoom(window, "mnuZoomTo", QStringLiteral("WhaleSong"), QStringLiteral("event-zoom"));
    tour.Step(QStringLiteral("event-random"), &window);
    tour.Meet(QStringLiteral("event-review"), QStringLiteral("OK"));
    tour.Choose(window, "mnuReviewDescription");
    EditAnEvent(tour, window);
    LookThroughRecords(tour, window);
    LookAtProblems(tour, window);
    ReplaceTexts(tour, window);
    CompareFolders(tour, window);
    SearchCommands(tour, window);
    LookAtPreview(tour, window);
    tour.Meet(QStringLiteral("write-question"), [&](QWidget& box) {
        Tour::Press(box, QStringLiteral("Show Details..."));
        tour.Step(QStringLiteral("write-details"), &box);
        Tour::Press(box, QStringLiteral("No"));
    });
    tour.Choose(window, "mnuWriteToFile");
    tour.Meet(QStringLiteral("close-question"), QStringLiteral("Yes"));
    window.close();
}

void PlayIssues(Tour& tour, frmWriter& writer) {
    tour.Choose(writer, "mnuUPIssues");
    QWidget& window = tour.Window("frmUPIssues");
    for (const char* issue : {"OffMyLawn", "GiftOfTongues", "EmptyChairWorld"}) {
        tour.Zoom(window, "mnuZoomTo", QString::fromLatin1(issue));
        tour.Step(QStringLiteral("issue-") + QString::fromLatin1(issue), &window);
    }
    tour.Choose(window, "mnuEditThisIssue");
    tour.Step(QStringLiteral("issue-editing"), &window);
    tour.Choose(window, "mnuDiscardChanges");
    tour.Meet(QStringLiteral("issue-review"), QStringLiteral("OK"));
    tour.Choose(window, "mnuIssueText");
    tour.Find<QDockWidget>(window, "dckPreview").show();
    tour.Step(QStringLiteral("issue-preview"), &window);
    window.close();
}

void PlayModules(Tour& tour, frmWriter& writer) {
    writer.OpenEditor(QStringLiteral("sbmodules"));
    QWidget& window = tour.Window("frmSBModules");
    tour.Step(QStringLiteral("module"), &window);
    window.close();
}

void PlayHelpers(Tour& tour, frmWriter& writer) {
    tour.Meet(QStringLiteral("backup-question"), QStringLiteral("Yes"));
    tour.Meet(QStringLiteral("backup-done"), QStringLiteral("OK"));
    tour.Choose(writer, "mnuBackupDataDirectory");
    {
        // The sample is copied too quickly for the dialog to appear.
        const auto progress = gPrompts->StartProgress("Backup Data Directory");
        QTest::qWait(600);
        progress->Working("Pirates.event", 0, 0);
        for (QWidget* window : QApplication::topLevelWidgets())
            if (qobject_cast<QProgressDialog*>(window) && window->isVisible())
                tour.Step(QStringLiteral("backup-progress"), window);
    }
    QFile help(PathToQt(HelpFile("EventsInstructions.txt")));
    if (!help.open(QIODevice::ReadOnly | QIODevice::Text))
        qFatal("no help text");
    TextViewer viewer(QStringLiteral("EventsInstructions.txt"), QString::fromLatin1(help.readAll()));
    viewer.show();
    tour.Step(QStringLiteral("instructions"), &viewer);
    tour.Choose(writer, "mnuUserGuide");
    QWidget& guide = tour.Window("frmUserGuide");
    QTest::keyClick(&tour.Find(guide, "txtPage"), Qt::Key_Tab);
    QTest::keyClick(&tour.Find(guide, "txtPage"), Qt::Key_Return);
    tour.Step(QStringLiteral("user-guide"), &guide);
    guide.close();
}

int Play(const QString& play, const QString& pictures, const QString& suffix) {
    DialogPrompts prompts;
    gPrompts = &prompts;
    Tour tour(pictures, suffix);
    PlayFirstStart(tour, play, play + QStringLiteral("/first"));
    ProgramDirectory = PathFromQt(play + QStringLiteral("/home"));
    frmWriter writer;
    writer.Load();
    writer.show();
    PlayEvents(tour, writer);
    PlayIssues(tour, writer);
    PlayModules(tour, writer);
    PlayHelpers(tour, writer);
    return tour.Surprises() == 0 ? 0 : 1;
}

} // namespace
} // namespace velmora

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    if (argc != 4)
        qFatal("usage: tour PLAY_FOLDER PICTURE_FOLDER SUFFIX");
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setQuitOnLastWindowClosed(false);
    if (qEnvironmentVariable("VELMORA_TOUR_LOOK") == QLatin1String("dark"))
        velmora::UseDarkColours();
    const QStringList words = QApplication::arguments();
    return velmora::Play(words[1], words[2], words[3]);
}
