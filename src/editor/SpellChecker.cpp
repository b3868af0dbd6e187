#include "editor/SpellChecker.h"

#include "editor/LineBox.h"
#include "editor/QtText.h"
#include "editor/RecordWindow.h"
#include "editor/TextBox.h"
#include "editor/Workbench.h"
#include "kinds/PlayerTexts.h"
#include "platform/Failure.h"
#include "services/Settings.h"
#include "services/Trap.h"

#include <QAction>
#include <QMenu>
#include <QSettings>
#include <algorithm>

namespace velmora {

namespace {

const QString Group = QStringLiteral("Spelling");
const QString CheckedKey = QStringLiteral("Checked");
const QString DictionariesKey = QStringLiteral("Dictionaries");
constexpr std::size_t MostSuggestions = 6;

} // namespace

SpellChecker::SpellChecker(RecordWindow& recordWindow, Workbench& workbench)
    : QObject(&recordWindow), window(recordWindow),
      item(workbench.AddItem("mnuCheckSpelling", tr("Check &Spelling"))) {
    item->setCheckable(true);
    checks = Workbench::Store(Group)->value(CheckedKey, true).toBool();
    item->setChecked(checks);
    connect(item, &QAction::toggled, this, [this](bool on) {
        checks = on;
        Workbench::Store(Group)->setValue(CheckedKey, on);
        Begin();
    });
    connect(&window, &RecordWindow::LibraryRead, this, [this] {
        if (!spelling)
            return Begin();
        if (checks)
            ReadWords();
        Learn();
    });
    window.Changes().OnChange([this](const Edits::Change& change) { FollowChange(change); });
    for (const PlayerText& text : PlayerTextsOf(window.Records().Kind)) {
        QWidget* control = window.Fields().ControlOf(text.Shown->Property);
        if (auto* line = qobject_cast<LineBox*>(control))
            Adopt(line);
        else if (auto* box = qobject_cast<TextBox*>(control))
            Adopt(box);
    }
}

void SpellChecker::Begin() {
    if (checks && spelling)
        ReadWords();
    else if (checks && !opening)
        Open();
    Refresh();
}

void SpellChecker::Open() {
    std::vector<std::string> names;
    for (const QString& name : Dictionaries())
        names.push_back(FromQt(name));
    opening = true;
    pool.start([this, names] {
        auto opened = std::make_shared<Spelling>(names);
        QMetaObject::invokeMethod(
            this,
            [this, opened] {
                spelling = opened;
                spelling->LearnVocabulary();
                opening = false;
                ReadWords();
                Learn();
            },
            Qt::QueuedConnection);
    });
}

void SpellChecker::ReadWords() {
    try {
        spelling->ReadWords(Settings.GamePath);
    } catch (const Failure& failure) {
        window.ShowHint(failure.Description());
    }
}

void SpellChecker::Learn() {
    learnAgain = learning;
    if (!spelling || learning)
        return;
    learning = true;
    std::vector<std::string> names;
    names.reserve(window.Records().Count());
    for (const auto& [name, record] : window.Records())
        names.push_back(name);
    pool.start([this, words = spelling, names] {
        words->LearnOnly(names);
        QMetaObject::invokeMethod(
            this,
            [this] {
                learning = false;
                learnAgain ? Learn() : Refresh();
            },
            Qt::QueuedConnection);
    });
}

void SpellChecker::FollowChange(const Edits::Change& change) {
    if (change.Kind == Edits::How::Normalized || change.Kind == Edits::How::Reread || !spelling)
        return;
    learnAgain = learning;
    bool otherWords = false;
    for (const std::string_view name : change.Names)
        otherWords |= !learning && spelling->Follow(name, window.Records().Exists(name));
    if (otherWords)
        Refresh();
}

QString SpellChecker::Trouble() const {
    return spelling ? ToQt(spelling->Trouble()) : QString();
}

QStringList SpellChecker::Dictionaries() const {
    const QStringList both{QStringLiteral("en_US"), QStringLiteral("en_GB")};
    return Workbench::Store(Group)->value(DictionariesKey, both).toStringList();
}

void SpellChecker::Choose(const QStringList& dictionaries) {
    if (dictionaries == Dictionaries() || opening)
        return;
    Workbench::Store(Group)->setValue(DictionariesKey, dictionaries);
    spelling.reset();
    Begin();
}

void SpellChecker::Refresh() {
    for (const auto& mark : markings)
        mark();
    emit Changed();
}

void SpellChecker::Add(const std::vector<std::string>& words) {
    TrapEvent(window.Records().Kind.Routine("AddWord_Click"), NoInputParms, [&] {
        if (spelling)
            spelling->AddWords(words);
    });
    Refresh();
}

template <class Box>
void SpellChecker::Adopt(Box* box) {
    markings.emplace_back([this, box] { Mark(box); });
    connect(box, &Box::textChanged, this, [this, box] { Mark(box); });
    connect(box, &Box::MenuShown, this, [this, box](QMenu* menu) { Offer(box, menu); });
}

template <class Box>
void SpellChecker::Mark(Box* box) {
    std::vector<TextRange> ranges;
    if (const auto words = Words())
        for (const WordPlace& word : words->UnknownIn(box->Bytes()))
            ranges.push_back({static_cast<qsizetype>(word.From), static_cast<qsizetype>(word.Length)});
    box->SetMarked(TextMark::Misspelled, ranges);
}

template <class Box>
void SpellChecker::Offer(Box* box, QMenu* menu) {
    const auto words = Words();
    const std::string text = box->Bytes();
    const auto at = static_cast<std::size_t>(box->MenuPosition());
    const std::vector<WordPlace> unknown = words ? words->UnknownIn(text) : std::vector<WordPlace>();
    const auto found = std::ranges::find_if(
        unknown, [&](const WordPlace& word) { return word.From <= at && at <= word.From + word.Length; });
    if (found == unknown.end() || box->isReadOnly())
        return;
    const WordPlace place = *found;
    const std::string word(place.In(text));
    QAction* first = menu->actions().value(0);
    const auto add = [&](const char* name, const QString& shown, const std::function<void()>& run) {
        auto* action = new QAction(shown, menu);
        action->setObjectName(QString::fromLatin1(name));
        connect(action, &QAction::triggered, this, run);
        menu->insertAction(first, action);
    };
    std::vector<std::string> meant = words->Suggest(word);
    meant.resize(std::min(meant.size(), MostSuggestions));
    for (const std::string& suggestion : meant)
        add("mnuSuggestion", ToQt(suggestion), [box, place, suggestion] {
            box->ReplaceRange({static_cast<qsizetype>(place.From), static_cast<qsizetype>(place.Length)},
                              ToQt(suggestion));
        });
    add("mnuAddWord", tr("Add \"%1\" To The &Game's Words").arg(ToQt(word)), [this, word] { Add({word}); });
    menu->insertSeparator(first);
}

} // namespace velmora
