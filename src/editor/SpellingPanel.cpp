#include "editor/SpellingPanel.h"

#include "editor/QtText.h"
#include "editor/RecordWindow.h"
#include "editor/SpellChecker.h"
#include "editor/Workbench.h"
#include "kinds/PlayerTexts.h"
#include "services/modWriter.h"

#include <QComboBox>
#include <QDockWidget>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <chrono>

namespace velmora {

namespace {

constexpr std::chrono::milliseconds Slice{5};
constexpr std::size_t MostNames = 20; // that a row tells

QString Joined(const QStringList& names) {
    return names.join(QLatin1String(", "));
}

/// Sorts counts as numbers.
class WordRow : public QTreeWidgetItem {
  public:
    using QTreeWidgetItem::QTreeWidgetItem;
    bool operator<(const QTreeWidgetItem& other) const override {
        const int column = treeWidget()->sortColumn();
        return column == 1 ? text(1).toInt() < other.text(1).toInt()
                           : QString::localeAwareCompare(text(column), other.text(column)) < 0;
    }
};

} // namespace

SpellingPanel::SpellingPanel(RecordWindow& recordWindow, Workbench& workbench, SpellChecker& spellChecker)
    : QWidget(&recordWindow), window(recordWindow), checker(spellChecker) {
    BuildPanel();
    const auto* dock =
        workbench.AddDock("dckSpelling", tr("Spelling"), this, Qt::RightDockWidgetArea, "mnuShowSpelling");
    workbench.KeepColumns(tree->header());
    slices.setInterval(0);
    connect(&slices, &QTimer::timeout, this, &SpellingPanel::WorkOn);
    connect(dock, &QDockWidget::visibilityChanged, this, &SpellingPanel::Restart);
    connect(&checker, &SpellChecker::Changed, this, &SpellingPanel::Restart);
    connect(&window, &RecordWindow::Closed, this, &SpellingPanel::Restart);
    window.Changes().OnChange([this](const Edits::Change& change) {
        if (change.Kind != Edits::How::Normalized)
            Restart();
    });
}

void SpellingPanel::BuildPanel() {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    dictionaries = new QComboBox(this);
    dictionaries->setObjectName(QStringLiteral("cboDictionaries"));
    dictionaries->setAccessibleName(tr("Dictionaries"));
    dictionaries->setToolTip(tr("A word is known when one of these dictionaries has it."));
    OfferDictionaries();
    layout->addWidget(dictionaries);
    tree = new QTreeWidget(this);
    tree->setObjectName(QStringLiteral("tvwWords"));
    tree->setAccessibleName(tr("Unknown words"));
    tree->setHeaderLabels({tr("Word"), tr("Count"), tr("Records")});
    tree->header()->setObjectName(QStringLiteral("hdrWords"));
    tree->setRootIsDecorated(false);
    tree->setUniformRowHeights(true);
    tree->setSortingEnabled(true);
    tree->sortByColumn(0, Qt::AscendingOrder);
    tree->setSelectionMode(QAbstractItemView::ExtendedSelection);
    connect(tree, &QTreeWidget::itemActivated, this, &SpellingPanel::ShowFirst);
    connect(tree, &QTreeWidget::itemSelectionChanged, this, &SpellingPanel::Tell);
    layout->addWidget(tree, 1);
    label = new QLabel(this);
    label->setObjectName(QStringLiteral("lblSpelling"));
    label->setWordWrap(true);
    layout->addWidget(label);
    add = new QPushButton(tr("&Add To The Game's Words"), this);
    add->setObjectName(QStringLiteral("cmdAddWord"));
    connect(add, &QPushButton::clicked, this, &SpellingPanel::AddSelected);
    layout->addWidget(add);
    replace = new QPushButton(tr("&Replace Everywhere..."), this);
    replace->setObjectName(QStringLiteral("cmdReplaceWord"));
    connect(replace, &QPushButton::clicked, this, &SpellingPanel::ReplaceCurrent);
    layout->addWidget(replace);
}

void SpellingPanel::OfferDictionaries() {
    const QStringList chosen = checker.Dictionaries();
    QStringList names{QStringLiteral("en_US"), QStringLiteral("en_GB")};
    for (const std::string& name : Speller::Installed(Speller::Folders()))
        if (!names.contains(ToQt(name)))
            names.append(ToQt(name));
    dictionaries->addItem(QStringLiteral("en_US, en_GB"),
                          QStringList{QStringLiteral("en_US"), QStringLiteral("en_GB")});
    for (const QString& name : names)
        dictionaries->addItem(name, QStringList{name});
    if (dictionaries->findText(Joined(chosen)) < 0)
        dictionaries->addItem(Joined(chosen), chosen);
    dictionaries->setCurrentIndex(dictionaries->findText(Joined(chosen)));
    connect(dictionaries, &QComboBox::activated, this,
            [this] { checker.Choose(dictionaries->currentData().toStringList()); });
}

void SpellingPanel::Restart() {
    next = 0;
    found.clear();
    if (isVisible())
        slices.start();
    else
        slices.stop();
}

void SpellingPanel::WorkOn() {
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + Slice;
    const std::size_t count = checker.Words() ? window.Records().Count() : 0;
    while (next < count && Clock::now() < end)
        Look(next++);
    if (next < count)
        return label->setText(tr("Looking, %1 of %2").arg(next).arg(count));
    slices.stop();
    List();
}

void SpellingPanel::Look(std::size_t position) {
    const Library& library = window.Records();
    const Record& record = library.At(position);
    const auto words = checker.Words();
    for (const PlayerText& shown : PlayerTextsOf(library.Kind)) {
        const std::string& text = shown.Shown->TextOf(record);
        for (const WordPlace& place : words->UnknownIn(text)) {
            Found& word = found[std::string(place.In(text))];
            ++word.Count;
            if (word.Records.empty() || word.Records.back() != library.NameOf(record))
                word.Records.push_back(library.NameOf(record));
        }
    }
}

void SpellingPanel::List() {
    tree->clear();
    QList<QTreeWidgetItem*> rows;
    for (const auto& [word, at] : found) {
        std::vector<std::string> names(
            at.Records.begin(),
            at.Records.begin() + static_cast<std::ptrdiff_t>(std::min(at.Records.size(), MostNames)));
        if (at.Records.size() > MostNames)
            names.push_back("and " + std::to_string(at.Records.size() - MostNames) + " more");
        rows.append(new WordRow(QStringList{ToQt(word), QString::number(at.Count), ToQt(Join(names, ", "))}));
    }
    tree->addTopLevelItems(rows);
    if (!rows.empty())
        tree->setCurrentItem(tree->topLevelItem(0));
    Tell();
}

void SpellingPanel::Tell() {
    add->setEnabled(!tree->selectedItems().empty());
    replace->setEnabled(tree->selectedItems().size() == 1);
    if (slices.isActive())
        return;
    const QString trouble = checker.Trouble();
    label->setText(!trouble.isEmpty()  ? trouble
                   : checker.Opening() ? tr("Opening the dictionaries")
                   : !checker.Words()  ? tr("The spelling is not checked: View, Check Spelling")
                   : found.size() == 1 ? tr("1 unknown word")
                                       : tr("%1 unknown words").arg(found.size()));
}

void SpellingPanel::AddSelected() {
    std::vector<std::string> words; // the rows may go while they are added
    for (const QTreeWidgetItem* row : tree->selectedItems())
        words.push_back(FromQt(row->text(0)));
    checker.Add(words);
}

void SpellingPanel::ReplaceCurrent() {
    const auto words = checker.Words();
    const QList<QTreeWidgetItem*> rows = tree->selectedItems();
    if (!words || rows.empty())
        return;
    const std::string word = FromQt(rows.front()->text(0));
    const std::vector<std::string> meant = words->Suggest(word);
    emit ReplaceWanted(word, meant.empty() ? word : meant.front());
}

void SpellingPanel::ShowFirst() {
    const QTreeWidgetItem* row = tree->currentItem();
    const auto word = row ? found.find(FromQt(row->text(0))) : found.end();
    if (word != found.end() && window.Records().Exists(word->second.Records.front()))
        window.GoTo(window.Records().IndexOf(word->second.Records.front()));
}

} // namespace velmora
