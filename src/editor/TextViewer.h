#pragma once

#include <QDialog>
#include <QFont>
#include <string>

namespace velmora {

/// The font for texts whose characters stand under one another.
QFont FixedWidthFont();

/// A read-only window for a longer text, which can be selected and copied.
class TextViewer : public QDialog {
    Q_OBJECT

  public:
    TextViewer(const QString& title, const QString& text, QWidget* parent = nullptr);

    /// Opens a text file in the host's text viewer; where none shows it, in a window of our own.
    static void ShowFile(const std::string& path);

  private:
    static void ShowOwn(const std::string& path);
};

} // namespace velmora
