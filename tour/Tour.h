#pragma once

#include <QList>
#include <QPointer>
#include <QString>
#include <QTimer>
#include <QWidget>

#include <deque>
#include <functional>

namespace velmora {

/// Drives the program's real windows as a user would, and takes pictures on the way: NN-what.png.
class Tour : public QObject {
  public:
    Tour(const QString& pictureFolder, const QString& pictureSuffix);

    /// Takes a picture of a window; without one, of the window that has the user's attention.
    void Step(const QString& what, QWidget* window = nullptr);

    /// Meets the next modal dialog: takes a picture unless `what` is empty, then does `answer`.
    void Meet(const QString& what, const std::function<void(QWidget&)>& answer);
    /// Meets the next modal dialog and presses the button with this text.
    void Meet(const QString& what, const QString& button);

    /// Triggers a menu item of a window.
    void Choose(QWidget& window, const char* action);
    /// Goes to a record with the window's zoom dialog.
    void Zoom(QWidget& window, const char* action, const QString& name, const QString& what = {});
    /// Types over what a field holds.
    void Type(QWidget& window, const char* field, const QString& text);
    static void Press(QWidget& dialog, const QString& button);

    /// The window on show of this object name; the tour fails without it.
    QWidget& Window(const char* name);
    template <class Widget = QWidget>
    Widget& Find(QWidget& window, const char* name) {
        auto* widget = window.findChild<Widget*>(QString::fromLatin1(name));
        if (!widget)
            qFatal("%s lacks %s", qPrintable(window.objectName()), name);
        return *widget;
    }

    /// How many dialogs nobody had announced, and announced ones that never came.
    [[nodiscard]] int Surprises() const { return surprises + static_cast<int>(meetings.size()); }

  private:
    void LookForDialog();

    QString folder;
    QString suffix;
    int number = 0;
    int surprises = 0;
    std::deque<std::function<void(QWidget&)>> meetings;
    QList<QPointer<QWidget>> met;
    QTimer watch;
};

} // namespace velmora
