#pragma once

#include <QDialog>

class QMenu;
class QTextBrowser;

namespace velmora {

/// The pages of the user guide, which lead to one another.
class UserGuide : public QDialog {
    Q_OBJECT

  public:
    /// Shows the page in this file first, or that it is missing.
    explicit UserGuide(const QString& index);

    /// Opens the guide, or brings it to the front.
    static void Open();
    /// Puts the command that opens it at the end of a window's Help menu.
    static void AddTo(QMenu& help);

  private:
    void AddButtons(QTextBrowser* pages, const QUrl& index);
};

} // namespace velmora
