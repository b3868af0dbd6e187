#pragma once

#include "records/Library.h"

#include <QDialog>
#include <cstdint>
#include <memory>
#include <string>

namespace Ui {
class frmZoomTo;
}

namespace velmora {

/// Jumps to a record by its name or its file; serves every editor.
class frmZoomTo : public QDialog {
    Q_OBJECT

  public:
    /// What the list holds. Even modes belong to events, odd ones to UP issues.
    enum Mode { EventNames = 0, UPIssueNames = 1, EventFiles = 2, UPIssueFiles = 3 };

    explicit frmZoomTo(const Library& zoomedLibrary, QWidget* parent = nullptr);
    ~frmZoomTo() override;

    Mode ZoomMode = EventNames;
    std::int32_t ZoomResult = -1; ///< 0-based position chosen with Go, -1 without

    /// Fills the list, the record of this name selected (by files: the first file).
    void SetCurrentName(const std::string& name);

    /// The whole dialog: shows it modally and returns ZoomResult.
    std::int32_t ZoomTo(const std::string& title, Mode mode, const std::string& currentName);

  private:
    void ShowBlurb();
    void Go();
    [[nodiscard]] bool ByFile() const { return ZoomMode == EventFiles || ZoomMode == UPIssueFiles; }

    std::unique_ptr<Ui::frmZoomTo> ui;
    const Library& library;
    std::string currentName;
};

} // namespace velmora
