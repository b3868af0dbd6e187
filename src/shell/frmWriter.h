#pragma once

#include "services/clsError.h"
#include "services/clsINI.h"

#include <QMainWindow>
#include <memory>
#include <string>

namespace Ui {
class frmWriter;
}

namespace velmora {

class RecordWindow;

/// The main window and start-up object: brings the shared services into being and opens one editor at a time.
class frmWriter : public QMainWindow {
    Q_OBJECT

  public:
    explicit frmWriter(QWidget* parent = nullptr);
    ~frmWriter() override;

    /// The window's load event: settings, error handler, catalogues, backup folder. A first start, or
    /// settings without a path or an event file, leads through the options dialog.
    void Load();

    /// Opens an editor by its name: "events", "upissues" or "sbmodules". False for any other.
    bool OpenEditor(const QString& name);
    /// Shows the first record of a content file in its editor, once no question is open. Another editor is
    /// closed first, with its own question; a file of another game's directory is asked about. What is in the
    /// way is told.
    void OpenFile(const std::string& path);
    /// Brings the window forward that waits for the user.
    static void ComeToFront();

  protected:
    /// Content files can be dropped anywhere on the program's windows.
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    void ConfigureErrorHandler();
    void ReadSettings();
    /// A key's value without NUL padding.
    std::string Setting(const char* key);
    /// The same with a default; `written` is then put into the file.
    std::string Setting(const char* key, const std::string& whenEmpty, const std::string& written);
    void ConfirmOptions();
    void ShowFile(const std::string& path);
    /// The editor on show, nullptr when it is the main window.
    [[nodiscard]] RecordWindow* ShownEditor() const;
    template <class Window>
    void Show(std::unique_ptr<Window>& window);
    /// Says at opening that nothing can be written to a folder, and why.
    static void TellReadOnly(const std::string& folder);
    void BackupDataDirectory();
    void CopyDataDirectory(const std::string& source, const std::string& target);

    std::unique_ptr<Ui::frmWriter> ui;
    clsINI iniAccessor;
    clsError errorHandler;
    // Editors live as long as the program: some of their state outlasts their closing.
    std::unique_ptr<class frmEvents> events;
    std::unique_ptr<class frmUPIssues> upIssues;
    std::unique_ptr<class frmSBModules> sbModules;
};

} // namespace velmora
