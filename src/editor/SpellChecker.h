#pragma once

#include "editor/RuledBox.h"
#include "kinds/Spelling.h"
#include "records/Edits.h"

#include <QObject>
#include <QStringList>
#include <QThreadPool>
#include <functional>
#include <memory>
#include <string>
#include <vector>

class QAction;
class QMenu;

namespace velmora {

class RecordWindow;
class Workbench;

/// Looks up the words of a window's texts: marks those that nobody knows in their boxes, and offers in the
/// boxes' menus what may have been meant. The dictionaries are opened in another thread, once, and the names
/// of the records are learned there.
class SpellChecker : public QObject {
    Q_OBJECT

  public:
    /// To be made once the form's fields are bound.
    SpellChecker(RecordWindow& recordWindow, Workbench& workbench);

    /// nullptr until dictionaries are open and the names of the records are known, and while the spelling is
    /// not to be checked.
    [[nodiscard]] std::shared_ptr<Spelling> Words() const {
        return checks && spelling && !learning && !spelling->Empty() ? spelling : nullptr;
    }
    /// True until then, when it is to be checked.
    [[nodiscard]] bool Opening() const { return checks && (opening || learning); }
    /// What keeps words from being looked up, in one line; empty when nothing does.
    [[nodiscard]] QString Trouble() const;
    [[nodiscard]] QStringList Dictionaries() const;
    /// Looks words up in other dictionaries from now on, in every window.
    void Choose(const QStringList& dictionaries);
    /// Adds to the game's own words, and tells when that cannot be done.
    void Add(const std::vector<std::string>& words);

  signals:
    /// Other words are known now, or they are looked up no more.
    void Changed();

  private:
    void Begin();
    void Open();
    void ReadWords();
    void Learn();
    void FollowChange(const Edits::Change& change);
    template <class Box>
    void Adopt(Box* box);
    template <class Box>
    void Mark(Box* box);
    template <class Box>
    void Offer(Box* box, QMenu* menu);
    void Refresh();

    RecordWindow& window;
    QAction* item;
    bool checks = false;
    bool opening = false;
    bool learning = false;
    bool learnAgain = false; ///< records have come or gone meanwhile
    std::shared_ptr<Spelling> spelling;
    std::vector<std::function<void()>> markings; ///< one a box
    QThreadPool pool;                            ///< gone, and waited for, before all else
};

} // namespace velmora
