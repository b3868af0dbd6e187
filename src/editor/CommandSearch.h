#pragma once

#include <QDialog>
#include <functional>

class QAction;
class QLineEdit;
class QMainWindow;
class QTreeWidget;
class QTreeWidgetItem;

namespace velmora {

/// Finds a command of a window by its words, with its key and, where it is off, why. Enter runs it.
class CommandSearch : public QDialog {
    Q_OBJECT

  public:
    /// Why a command is off.
    using WhyOff = std::function<QString(const QAction&)>;

    CommandSearch(QMainWindow& searchedWindow, const WhyOff& whyOff);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void AddMenu(const QList<QAction*>& actions, const QString& path, bool on, const WhyOff& whyOff);
    void AddCommand(QAction& action, const QString& path, bool on, const WhyOff& whyOff);
    void Filter(const QString& line);
    void Run(QTreeWidgetItem* item);

    QLineEdit* words;
    QTreeWidget* list;
};

} // namespace velmora
