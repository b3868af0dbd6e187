#include "editor/ChoiceBox.h"
#include "editor/QtText.h"
#include "editor/frmZoomTo.h"
#include "events/clsEvent.h"
#include "upissues/clsUPIssue.h"

#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <gtest/gtest.h>

namespace velmora {

namespace {

struct ZoomCase {
    const RecordKind* Kind;
    const char* About; ///< the file key of what a record is about
    std::int32_t NameMode;
    std::int32_t FileMode;
    std::string FileIntroduction;
};

/// Three records, the last of them in a second file.
void FillLibrary(Library& library, const std::string& aboutKey) {
    for (const char* name : {"Apple", "Banana", "Cherry"}) {
        Record& record = library.AddNew(name, "Data/", std::string(name) == "Cherry" ? "Two" : "One");
        for (const Field& field : library.Kind.Fields)
            if (field.Key == aboutKey)
                field.SetText(record, std::string("about ") + name);
    }
    library.Files.Add("One", 0);
    library.Files.Add("Two", 1);
}

/// Chooses an entry, checks what it says, and confirms.
std::int32_t Zoom(const Library& library, std::int32_t mode, const char* entry, const std::string& blurb) {
    frmZoomTo dialog(library);
    QTimer::singleShot(0, &dialog, [&] {
        auto* box = dialog.findChild<ChoiceBox*>(QStringLiteral("cboZoomTo"));
        box->setCurrentIndex(box->findText(QString::fromLatin1(entry)));
        EXPECT_EQ(FromQt(dialog.findChild<QLabel*>(QStringLiteral("lblBlurb"))->text()), blurb);
        dialog.findChild<QPushButton*>(QStringLiteral("cmdGo"))->click();
    });
    return dialog.ZoomTo("Zoom", mode, "Apple");
}

} // namespace

TEST(ZoomTo, TellsWhatARecordOfEveryKindIsAbout) {
    const ZoomCase cases[]{
        {&EventKind, "Description", frmZoomTo::EventNames, frmZoomTo::EventFiles, "Events"},
        {&UPIssueKind, "Question", frmZoomTo::UPIssueNames, frmZoomTo::UPIssueFiles, "UP Issues"}};
    for (const ZoomCase& zoom : cases) {
        SCOPED_TRACE(zoom.About);
        Library library(*zoom.Kind);
        FillLibrary(library, zoom.About);
        EXPECT_EQ(Zoom(library, zoom.NameMode, "Apple", "about Apple"), 0);
        EXPECT_EQ(Zoom(library, zoom.NameMode, "Banana", "about Banana"), 1);
        const std::string contained = zoom.FileIntroduction + " contained in this file:\n";
        EXPECT_EQ(Zoom(library, zoom.FileMode, "One", contained + "Apple, Banana"), 0);
        EXPECT_EQ(Zoom(library, zoom.FileMode, "Two", contained + "Cherry"), 2);
    }
}

} // namespace velmora
