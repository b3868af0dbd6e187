#pragma once

#include "records/Preview.h"

#include <QTimer>
#include <QWidget>
#include <memory>
#include <string>
#include <vector>

class QCheckBox;
class QLineEdit;
class QTextEdit;

namespace velmora {

class PictureViewer;
class Record;
class RecordList;
class RecordWindow;
class Workbench;

/// The dock that shows a record as the player will meet it: while browsing the one that the list points to,
/// else what the form holds. Wild cards are names in brackets, or sample names that the author sets.
class PreviewPanel : public QWidget {
    Q_OBJECT

  public:
    PreviewPanel(RecordWindow& recordWindow, Workbench& workbench, RecordList& list);

    /// Shows anew, once for all that one command changes.
    void Later() { later.start(); }

  private:
    void BuildPanel();
    QWidget* BuildSamples();
    void Follow(RecordList& list);
    void Refresh();
    /// nullptr when there is none.
    [[nodiscard]] std::unique_ptr<Record> Wanted() const;
    [[nodiscard]] SampleNames Samples() const;
    void KeepSamples() const;

    RecordWindow& window;
    PictureViewer* picture = nullptr;
    QTextEdit* text = nullptr;
    QCheckBox* useSamples = nullptr;
    struct Sample {
        std::string Name;
        QLineEdit* Box;
    };
    std::vector<Sample> samples;
    QTimer later;
    std::string pointed; ///< name of the record that the list points to, empty for the one on show
    std::string shownPicture;
    std::string shownName;
};

} // namespace velmora
