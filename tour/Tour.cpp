#include "Tour.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QProgressDialog>
#include <QTest>

#include <cstdio>

namespace velmora {

Tour::Tour(const QString& pictureFolder, const QString& pictureSuffix)
    : folder(pictureFolder), suffix(pictureSuffix) {
    // Queued, as a timer stays silent while its own slot runs, and dialogs open dialogs.
    connect(&watch, &QTimer::timeout, this, &Tour::LookForDialog, Qt::QueuedConnection);
    watch.start(20);
}

void Tour::Step(const QString& what, QWidget* window) {
    if (!window)
        window = QApplication::activeModalWidget() ? QApplication::activeModalWidget()
                                                   : QApplication::activeWindow();
    if (!window || !QTest::qWaitForWindowExposed(window))
        qFatal("nothing to see at %s", qPrintable(what));
    QTest::qWait(50); // what was just typed or chosen is drawn by then
    const QString file = QStringLiteral("%1/%2-%3%4.png").arg(folder).arg(++number, 2, 10, QLatin1Char('0'));
    const QString path = file.arg(what, suffix);
    if (!window->grab().save(path))
        qFatal("cannot write %s", qPrintable(path));
    std::printf("%s (%d x %d)\n", qPrintable(path), window->width(), window->height());
}

void Tour::Meet(const QString& what, const std::function<void(QWidget&)>& answer) {
    meetings.push_back([this, what, answer](QWidget& dialog) {
        if (!what.isEmpty())
            Step(what, &dialog);
        answer(dialog);
    });
}

void Tour::Meet(const QString& what, const QString& button) {
    Meet(what, [button](QWidget& dialog) { Press(dialog, button); });
}

void Tour::LookForDialog() {
    met.removeIf([](const QPointer<QWidget>& dialog) { return !dialog || !dialog->isVisible(); });
    QWidget* dialog = QApplication::activeModalWidget();
    if (!dialog || met.contains(dialog) || !dialog->isVisible() || qobject_cast<QProgressDialog*>(dialog))
        return; // a progress dialog waits for no answer
    met.append(dialog);
    if (meetings.empty()) {
        ++surprises;
        Step(QStringLiteral("surprise"), dialog);
        dialog->close();
        return;
    }
    const auto meeting = meetings.front();
    meetings.pop_front();
    meeting(*dialog);
}

void Tour::Press(QWidget& dialog, const QString& button) {
    for (QAbstractButton* candidate : dialog.findChildren<QAbstractButton*>())
        if (candidate->isVisible() && candidate->text().remove(QLatin1Char('&')) == button) {
            QTest::mouseClick(candidate, Qt::LeftButton);
            return;
        }
    qFatal("no button %s in %s", qPrintable(button), qPrintable(dialog.windowTitle()));
}

void Tour::Choose(QWidget& window, const char* action) {
    auto& item = Find<QAction>(window, action);
    if (!item.isEnabled())
        qFatal("%s cannot be chosen", action);
    item.trigger();
}

void Tour::Zoom(QWidget& window, const char* action, const QString& name, const QString& what) {
    Meet({}, [this, name, what](QWidget& dialog) {
        auto& list = Find<QComboBox>(dialog, "cboZoomTo");
        const int at = list.findText(name);
        if (at < 0)
            qFatal("no %s to zoom to", qPrintable(name));
        list.setCurrentIndex(at);
        if (!what.isEmpty())
            Step(what, &dialog);
        QTest::mouseClick(&Find<QAbstractButton>(dialog, "cmdGo"), Qt::LeftButton);
    });
    Choose(window, action);
}

void Tour::Type(QWidget& window, const char* field, const QString& text) {
    auto& box = Find(window, field);
    box.setFocus();
    QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&box, Qt::Key_Delete);
    QTest::keyClicks(&box, text);
}

QWidget& Tour::Window(const char* name) {
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible() && window->objectName() == QLatin1String(name)) {
            window->activateWindow();
            return *window;
        }
    qFatal("no window %s", name);
}

} // namespace velmora
