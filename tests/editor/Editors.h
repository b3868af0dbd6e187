#pragma once

#include "editor/EditorFixture.h"
#include "events/frmEvents.h"
#include "upissues/frmUPIssues.h"

#include <algorithm>
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

/// What tells one editor from the other. Names of controls and texts of messages follow from it.
struct Editor {
    const RecordKind* Records;
    std::unique_ptr<RecordWindow> (*Make)();
    std::string Folder; ///< below the game directory
    std::string OwnFile;
    std::string Word;     ///< in names of controls and routines
    std::string Noun;     ///< in messages
    std::string CopyNoun; ///< in the message that the name of a copy is taken
    std::string Title;    ///< in captions
    std::string MissingFolder;
    std::string EditItem;
    std::string SortByFileItem;
    std::string TextField;
    std::vector<std::string> NumberFields;
    std::vector<std::string> ReviewItems;
    std::vector<LongText> LongTexts;
};

template <class Window>
std::unique_ptr<RecordWindow> MakeWindow() {
    return std::make_unique<Window>();
}

inline const Editor EventEditor{
    &EventKind,
    MakeWindow<frmEvents>,
    "Game/Data/",
    "MyEvents.event",
    "Event",
    "event",
    "event",
    "Event",
    " directory!",
    "mnuEditThisEvent",
    "mnuSortByFileName",
    "txtDescription",
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
    MakeWindow<frmUPIssues>,
    "Game/Data/UP_Issues/",
    "MyUPIssues.upissue",
    "UPIssue",
    "UP Issue",
    "UPIssue",
    "UP Issue",
    "\\UP_Issue directory!",
    "mnuEditThisIssue",
    "mnuSortByFilename",
    "txtQuestion",
    {"txtYearsInEffect", "txtOptVal_0", "txtOptVal_5", "txtValue_0", "txtValue_1"},
    {"mnuIssueText"},
    {{"txtQuestion", "Question", "Question", "Question text length for this issue", 530},
     {"txtOption_0", "Option01", "Option", "option text length for #1", 30},
     {"txtOption_5", "Option06", "Option", "option text length for #6", 30}}};

/// Names an editor where tests are listed.
inline void PrintTo(const Editor* editor, std::ostream* out) {
    *out << editor->Word;
}
inline const auto EveryEditor = ::testing::Values(&EventEditor, &IssueEditor);
inline std::string NameOfEditor(const ::testing::TestParamInfo<const Editor*>& editor) {
    return editor.param->Word;
}

/// Records that pass every check.
inline clsEvent SoundEvent(const std::string& name) {
    clsEvent event;
    event.EventName = name;
    event.Title = "Title";
    event.Description = "about " + name;
    event.Image = R"(Gfx\\P.pcx)";
    event.GoodOption = event.NeutralOption = event.EvilOption = "Option";
    event.MoralityWeight = 1;
    return event;
}
inline clsUPIssue SoundIssue(const std::string& name) {
    clsUPIssue issue;
    issue.UPIssueName = name;
    issue.Question = "about " + name;
    issue.Option01 = "Yes";
    issue.OptionVal01 = 1;
    issue.UPIssueAttribute = 2;
    return issue;
}

/// The window of one editor over records of its own.
template <class Window, class RecordType>
class FormOf : public WindowTest {
  protected:
    explicit FormOf(const Editor& ownEditor) : editor(ownEditor) {
        temp.Write("Game/GFX/P.pcx", "no picture, but there");
    }
    void Put(const std::string& file, const std::vector<RecordType>& records) {
        std::string text;
        for (const RecordType& record : records)
            text += BlockOf(*editor.Records, record);
        temp.Write(editor.Folder + file, text);
    }
    /// Opens the window over one file of this text, or of these records.
    void Start(const std::string& text) {
        temp.Write(editor.Folder + "A" + std::string(editor.Records->Extension), text);
        Open<Window>();
    }
    void Start(const std::vector<RecordType>& records) {
        Put("A" + std::string(editor.Records->Extension), records);
        Open<Window>();
    }
    const RecordType& At(std::size_t at) { return static_cast<const RecordType&>(window->Records().At(at)); }
    std::string BlockAt(std::size_t at) { return BlockOf(*editor.Records, At(at)); }

    const Editor& editor;
};

/// One editor after the other over two files: Apple and Cherry in A, Banana in B.
class EditorTest : public WindowTest, public ::testing::WithParamInterface<const Editor*> {
  protected:
    EditorTest() {
        temp.Write("Game/GFX/P.pcx", "no picture, but there");
        Put("A", Block("Apple") + Block("Cherry"));
        Put("B", Block("Banana"));
    }
    void Start() {
        window = editor.Make();
        Reopen();
    }
    [[nodiscard]] std::string FileName(const std::string& base) const {
        return base + std::string(editor.Records->Extension);
    }
    void Put(const std::string& base, const std::string& text) {
        temp.Write(editor.Folder + FileName(base), text);
    }
    std::string OnDisk(const std::string& name) { return temp.Read(editor.Folder + name); }
    std::vector<std::string> FilesOnDisk() { return Sorted(editor.Folder); }
    std::vector<std::string> Sorted(const std::string& folder) {
        auto names = Files::ListFiles(temp / folder);
        std::sort(names.begin(), names.end());
        return names;
    }
    /// The block of a sound record; one of its texts can be another.
    [[nodiscard]] std::string Block(const std::string& name, const std::string& key = {},
                                    const std::string& text = {}) const {
        clsEvent event = SoundEvent(name);
        clsUPIssue issue = SoundIssue(name);
        Record& record = &editor == &EventEditor ? static_cast<Record&>(event) : issue;
        for (const Field& field : editor.Records->Fields)
            if (field.Key == key)
                field.SetText(record, text);
        return BlockOf(*editor.Records, record);
    }
    /// A file that cannot be read to its end.
    [[nodiscard]] std::string Broken() const {
        return "Probability 1\r\n" + std::string(editor.Records->Header) +
               " X\r\nProbability 99999999999\r\n";
    }
    void EditText(const std::string& text) {
        Pick(editor.EditItem);
        Type(editor.TextField, ToQt(text));
    }
    void Commit(const std::string& text) {
        EditText(text);
        Pick("mnuCommitChanges");
    }
    std::string Shown() { return Text(nameBox) + ", " + Text("lblWhereWeAt") + ", " + Text("lblStatus"); }
    [[nodiscard]] std::string Question(const std::string& names) const {
        return "Preparing to save " + editor.Noun + "s for the following files:||" + names + "||Proceed?";
    }
    void Write() {
        prompts.ExpectAsk("", true);
        Pick("mnuWriteToFile");
    }

    const Editor& editor = *GetParam();
    const std::string nameBox = "txt" + editor.Word + "Name";
    const std::string fileBox = "cbo" + editor.Word + "File";
    const std::string moveItem = "mnuMoveThis" + editor.Word + "ToANewFile";
    const std::string zoomFileItem = "mnuZoomTo" + editor.Word + "File";
};

} // namespace velmora
