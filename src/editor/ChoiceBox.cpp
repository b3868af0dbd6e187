#include "editor/ChoiceBox.h"

#include "editor/QtText.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QFocusEvent>
#include <QLineEdit>
#include <QListView>
#include <QSignalBlocker>
#include <QStringListModel>
#include <QWheelEvent>

namespace velmora {

namespace {

constexpr std::size_t LongestPlainList = 30;

/// Else a list of many thousand entries would take its time to open.
void DoNotMeasureEntries(QAbstractItemView* view) {
    if (auto* listView = qobject_cast<QListView*>(view))
        listView->setUniformItemSizes(true);
}

} // namespace

ChoiceBox::ChoiceBox(QWidget* parent) : QComboBox(parent), list(new QStringListModel(this)) {
    setModel(list);
    // Its size does not depend on the entries, so that a form keeps still from record to record.
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(8);
    setMaxVisibleItems(20);
    DoNotMeasureEntries(view());
}

void ChoiceBox::SetEntries(const std::vector<std::string>& names, int selected) {
    const QSignalBlocker quiet(this);
    if (names != entries) {
        QStringList texts;
        texts.reserve(static_cast<qsizetype>(names.size()));
        for (const std::string& name : names)
            texts += ToQt(name);
        entries = names;
        MakeSearchable(names.size() > LongestPlainList);
        list->setStringList(texts);
    }
    setCurrentIndex(selected);
    if (isEditable())
        setEditText(itemText(currentIndex()));
}

std::string ChoiceBox::Chosen() const {
    const auto at = static_cast<std::size_t>(currentIndex());
    return at < entries.size() ? entries[at] : std::string();
}

void ChoiceBox::wheelEvent(QWheelEvent* event) {
    event->ignore(); // an open list is a window of its own and scrolls by itself
}

void ChoiceBox::focusInEvent(QFocusEvent* event) {
    QComboBox::focusInEvent(event);
    if (isEditable() && event->reason() == Qt::MouseFocusReason)
        QMetaObject::invokeMethod(lineEdit(), &QLineEdit::selectAll, Qt::QueuedConnection);
}

void ChoiceBox::MakeSearchable(bool searchable) {
    if (isEditable() == searchable)
        return;
    setEditable(searchable);
    if (!searchable)
        return;
    setInsertPolicy(NoInsert);
    completer()->setCompletionMode(QCompleter::PopupCompletion);
    completer()->setFilterMode(Qt::MatchContains);
    completer()->setCaseSensitivity(Qt::CaseInsensitive);
    completer()->setMaxVisibleItems(maxVisibleItems());
    DoNotMeasureEntries(completer()->popup());
    connect(lineEdit(), &QLineEdit::textEdited, this,
            [this](const QString& text) { ChooseText(text, true); });
    connect(this, &QComboBox::editTextChanged, lineEdit(),
            [this](const QString& text) { ChooseText(text, false); });
    connect(lineEdit(), &QLineEdit::editingFinished, this, &ChoiceBox::LeaveSearch);
}

bool ChoiceBox::ChooseText(const QString& text, bool byHand) {
    if (text == itemText(currentIndex()))
        return true;
    const auto at = static_cast<int>(list->stringList().indexOf(text));
    if (at < 0)
        return false;
    setCurrentIndex(at);
    if (byHand)
        emit activated(at);
    return true;
}

void ChoiceBox::LeaveSearch() {
    const QString typed = currentText();
    if (completer()->popup()->isVisible() || ChooseText(typed, true))
        return; // a visible list picks the entry itself
    if (const int found = findText(typed, Qt::MatchFixedString); found >= 0)
        ChooseText(itemText(found), true);
    setEditText(itemText(currentIndex()));
}

} // namespace velmora
