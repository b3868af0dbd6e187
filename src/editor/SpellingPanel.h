#pragma once

#include <QTimer>
#include <QWidget>
#include <cstddef>
#include <map>
#include <string>
#include <vector>

class QComboBox;
class QLabel;
class QPushButton;
class QTreeWidget;

namespace velmora {

class RecordWindow;
class SpellChecker;
class Workbench;

/// The dock that lists all unknown words of a window's records, how often each stands where, and adds them to
/// the game's own. It looks while it can be seen, some milliseconds at a time.
class SpellingPanel : public QWidget {
    Q_OBJECT

  public:
    SpellingPanel(RecordWindow& recordWindow, Workbench& workbench, SpellChecker& spellChecker);

  signals:
    /// A word is to be replaced in all records; by what may have been meant.
    void ReplaceWanted(const std::string& word, const std::string& meant);

  private:
    void BuildPanel();
    void Restart();
    void WorkOn();
    void Look(std::size_t position);
    void List();
    void Tell();
    void AddSelected();
    void ReplaceCurrent();
    void ShowFirst();
    void OfferDictionaries();

    struct Found {
        std::size_t Count = 0;
        std::vector<std::string> Records;
    };
    RecordWindow& window;
    SpellChecker& checker;
    QTreeWidget* tree = nullptr;
    QLabel* label = nullptr;
    QComboBox* dictionaries = nullptr;
    QPushButton* add = nullptr;
    QPushButton* replace = nullptr;
    QTimer slices;
    std::size_t next = 0;
    std::map<std::string, Found, std::less<>> found;
};

} // namespace velmora
