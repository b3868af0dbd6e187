#pragma once

#include "services/clsINI.h"

#include <QDialog>
#include <memory>
#include <string>

namespace Ui {
class frmOptions;
}

namespace velmora {

/// The options dialog. It cannot be left until the path names an existing folder and the event file is none
/// of the game's own.
class frmOptions : public QDialog {
    Q_OBJECT

  public:
    explicit frmOptions(clsINI& iniAccessor, QWidget* parent = nullptr);
    ~frmOptions() override;

    /// Fills the dialog and shows it modally.
    void Show();

    /// The game path that the settings file holds: whole where that is a folder, else cut to the accessor's
    /// buffer like every value.
    static std::string StoredPath(clsINI& ini);
    /// Says why settings did not get into their file.
    static void TellNotStored(const clsINI& ini);

  protected:
    void closeEvent(QCloseEvent* event) override;
    void reject() override { close(); }

  private:
    /// The six settings as texts, names without extension.
    struct WorkingCopy {
        std::string Path;
        std::string EventFile;
        std::string UPIssueFile;
        std::string SBModuleFile;
        std::string AutoBackup;
        std::string SortBy;
    };

    void Load();
    void ReadSettingsFile();
    void TakeDefaults();
    void ShowCopy();
    void TakeControls();
    void Browse();
    /// The closing steps; false keeps the dialog open.
    bool Close();
    bool CheckPath();
    bool CheckEventFile();
    /// Tells the first name that no file may have.
    bool CheckFileNames();
    void Store();

    std::unique_ptr<Ui::frmOptions> ui;
    clsINI& ini;
    WorkingCopy copy;
};

} // namespace velmora
