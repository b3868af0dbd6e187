#pragma once

#include "SoundRecords.h"
#include "editor/EditorFixture.h"
#include "events/frmEvents.h"
#include "upissues/frmUPIssues.h"

#include <ostream>

namespace velmora {

/// A text of a record that has a recommended length.
struct LongText {
    std::string Box;
    std::string Key; ///< in the file
    std::string Label;
    std::string Subject; ///< of the notice that it is too long
    std::size_t Limit;
};

/// What tells one editor from the other.
struct Editor {
    const RecordKind* Records;
    std::string Folder; ///< below the game directory
    Strings NumberFields;
    Strings ReviewItems;
    std::vector<LongText> LongTexts;
};

inline const Editor EventEditor{
    &EventKind,
    "Game/Data/",
    {"txtGoodValue", "txtNeutralValue", "txtEvilValue", "txtGoodPopChange", "txtNeutralPopChange",
     "txtEvilPopChange", "txtProbability"},
    {"mnuReviewDescription", "mnuReviewGood", "mnuReviewNeutral", "mnuReviewEvil"},
    {{"txtDescription", "Description", "Description", "Description text length for this event", 540},
     {"txtGoodOption", "GoodOption", "Good Option", "Good Option text length for this event", 200},
     {"txtNeutralOption", "NeutralOption", "Neutral Option", "Neutral Option text length for this event",
      200},
     {"txtEvilOption", "EvilOption", "Evil Option", "Evil Option text length for this event", 200}}};
inline const Editor IssueEditor{
    &UPIssueKind,
    "Game/Data/UP_Issues/",
    {"txtYearsInEffect", "txtOptVal_0", "txtOptVal_5", "txtValue_0", "txtValue_1"},
    {"mnuIssueText"},
    {{"txtQuestion", "Question", "Question", "Question text length for this issue", 530},
     {"txtOption_0", "Option01", "Option", "option text length for #1", 30},
     {"txtOption_5", "Option06", "Option", "option text length for #6", 30}}};

/// Names an editor where tests are listed.
inline void PrintTo(const Editor* editor, std::ostream* out) {
    *out << editor->Records->Window;
}
inline const auto EveryEditor = ::testing::Values(&EventEditor, &IssueEditor);

/// The window of one editor over records of its own.
template <class Window, class RecordType>
class FormOf : public WindowTest {
  protected:
    explicit FormOf(const Editor& ownEditor) : editor(ownEditor) {}
    /// Opens the window over one file of this text, or of these records.
    void Start(const std::string& text) {
        temp.Write(editor.Folder + "A" + std::string(editor.Records->Extension), text);
        Open<Window>();
    }
    void Start(const std::vector<RecordType>& records) {
        std::string text;
        for (const RecordType& record : records)
            text += BlockOf(*editor.Records, record);
        Start(text);
    }
    const RecordType& At(std::size_t at) { return static_cast<const RecordType&>(window->Records().At(at)); }
    std::string BlockAt(std::size_t at) { return BlockOf(*editor.Records, At(at)); }

    const Editor& editor;
};

/// One editor after the other over two files: Apple and Cherry in A, Banana in B.
class EditorTest : public WindowTest, public ::testing::WithParamInterface<const Editor*> {
  protected:
    EditorTest() {
        Put("A", Block("Apple") + Block("Cherry"));
        Put("B", Block("Banana"));
    }
    [[nodiscard]] std::unique_ptr<RecordWindow> Make() const {
        if (events)
            return std::make_unique<frmEvents>();
        return std::make_unique<frmUPIssues>();
    }
    void Start() {
        window = Make();
        Reopen();
    }
    [[nodiscard]] std::string FileName(const std::string& base) const {
        return base + std::string(editor.Records->Extension);
    }
    void Put(const std::string& base, const std::string& text) {
        temp.Write(editor.Folder + FileName(base), text);
    }
    std::string OnDisk(const std::string& name) { return temp.Read(editor.Folder + name); }
    /// The block of a sound record; one of its texts can be another.
    [[nodiscard]] std::string Block(const std::string& name, const std::string& key = {},
                                    const std::string& text = {}) const {
        clsEvent event = SoundEvent(name);
        clsUPIssue issue = SoundIssue(name);
        Record& record = events ? static_cast<Record&>(event) : issue;
        for (const Field& field : editor.Records->Fields)
            if (field.Key == key)
                field.SetText(record, text);
        return BlockOf(*editor.Records, record);
    }
    /// A file that cannot be read to its end.
    [[nodiscard]] std::string Broken() const {
        return std::string(editor.Records->Header) + " X\r\nProbability 99999999999\r\n";
    }
    void EditText(const std::string& text) {
        Pick(editItem);
        Type(textField, ToQt(text));
    }
    void Commit(const std::string& text) {
        EditText(text);
        Pick("mnuCommitChanges");
    }
    std::string Shown() { return Text(nameBox) + ", " + Text("lblWhereWeAt") + ", " + Text("lblStatus"); }
    void Write() {
        prompts.ExpectAsk("", true);
        Pick("mnuWriteToFile");
    }

    const Editor& editor = *GetParam();
    const bool events = &editor == &EventEditor;
    const std::string word = events ? "Event" : "UPIssue"; ///< in names of controls and routines
    const std::string title = events ? "Event" : "UP Issue";
    const std::string noun = events ? "event" : "UP Issue";
    const std::string editItem = events ? "mnuEditThisEvent" : "mnuEditThisIssue";
    const std::string sortByFileItem = events ? "mnuSortByFileName" : "mnuSortByFilename";
    const std::string textField = editor.LongTexts[0].Box;
    const std::string nameBox = "txt" + word + "Name";
    const std::string fileBox = "cbo" + word + "File";
    const std::string moveItem = "mnuMoveThis" + word + "ToANewFile";
    const std::string zoomFileItem = "mnuZoomTo" + word + "File";
    const std::string edited = "EDITED, PENDING A WRITE TO FILE";
};

} // namespace velmora
