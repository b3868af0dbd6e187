#pragma once

#include "services/Prompts.h"

#include <QDialog>
#include <memory>
#include <string>

namespace Ui {
class frmError;
}

namespace velmora {

/// The error dialog. Closing it only hides it, so that what the user typed can still be read.
class frmError : public QDialog {
    Q_OBJECT

  public:
    explicit frmError(const ErrorDetails& error, QWidget* parent = nullptr);
    ~frmError() override;

    [[nodiscard]] std::string UserMessage() const;

  private:
    void ToggleDetails();
    void ShowDetails(bool shown);
    void HoldOnScreen();

    std::unique_ptr<Ui::frmError> ui;
};

} // namespace velmora
