#include "editor/ChoiceBox.h"

#include "editor/QtText.h"

#include <QAbstractItemView>
#include <QAbstractListModel>
#include <QCompleter>
#include <QFocusEvent>
#include <QLineEdit>
#include <QListView>
#include <QSignalBlocker>
#include <QWheelEvent>
#include <utility>

namespace velmora {

/// The entries of a box. Only those that are looked at become texts of the toolkit: of many thousand most
/// never are.
class EntryList : public QAbstractListModel {
  public:
    using QAbstractListModel::QAbstractListModel;

    void SetEntries(std::vector<std::string> newEntries) {
        beginResetModel();
        entries = std::move(newEntries);
        texts.assign(entries.size(), QString());
        endResetModel();
    }
    [[nodiscard]] const std::vector<std::string>& Entries() const { return entries; }

    /// The only entry that holds a text in any letter case; null when there is none, or more than one.
    [[nodiscard]] QString OnlyOneWith(const QString& part) const {
        QString found;
        for (std::size_t at = 0; at < entries.size(); ++at) {
            if (!TextAt(at).contains(part, Qt::CaseInsensitive))
                continue;
            if (!found.isNull())
                return {};
            found = TextAt(at);
        }
        return found;
    }

    /// Position of a text, -1 when no entry reads so.
    [[nodiscard]] int IndexOf(const QString& text) const {
        for (std::size_t at = 0; at < entries.size(); ++at)
            if (TextAt(at) == text)
                return static_cast<int>(at);
        return -1;
    }

    [[nodiscard]] int rowCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : static_cast<int>(entries.size());
    }
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
        const auto at = static_cast<std::size_t>(index.row());
        const bool wanted = role == Qt::DisplayRole || role == Qt::EditRole;
        return wanted && index.isValid() && at < entries.size() ? QVariant(TextAt(at)) : QVariant();
    }

  private:
    const QString& TextAt(std::size_t at) const {
        if (texts[at].isNull())
            texts[at] = ToQt(entries[at]);
        return texts[at];
    }

    std::vector<std::string> entries;
    mutable std::vector<QString> texts; ///< null until they are asked for
};

namespace {

constexpr std::size_t LongestPlainList = 30;

/// Else a list of many thousand entries would take its time to open.
void DoNotMeasureEntries(QAbstractItemView* view) {
    if (auto* listView = qobject_cast<QListView*>(view))
        listView->setUniformItemSizes(true);
}

} // namespace

ChoiceBox::ChoiceBox(QWidget* parent) : QComboBox(parent), list(new EntryList(this)) {
    setModel(list);
    // Its size does not depend on the entries, so that a form keeps still from record to record.
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(8);
    setMaxVisibleItems(20);
    DoNotMeasureEntries(view());
}

void ChoiceBox::SetEntries(std::vector<std::string> names, int selected) {
    const QSignalBlocker quiet(this);
    if (names != list->Entries()) {
        MakeSearchable(names.size() > LongestPlainList);
        list->SetEntries(std::move(names));
    }
    setCurrentIndex(selected);
    if (isEditable())
        setEditText(itemText(currentIndex()));
}

std::string ChoiceBox::Chosen() const {
    const auto& entries = list->Entries();
    const auto at = static_cast<std::size_t>(currentIndex());
    return at < entries.size() ? entries[at] : std::string();
}

void ChoiceBox::wheelEvent(QWheelEvent* event) {
    event->ignore(); // an open list is a window of its own and scrolls by itself
}

void ChoiceBox::focusInEvent(QFocusEvent* event) {
    QComboBox::focusInEvent(event);
    if (!isEditable() || currentText() != itemText(currentIndex()))
        return;
    // What is typed first replaces the present name. A click puts the caret somewhere after this.
    if (event->reason() == Qt::MouseFocusReason)
        QMetaObject::invokeMethod(lineEdit(), &QLineEdit::selectAll, Qt::QueuedConnection);
    else if (event->reason() != Qt::PopupFocusReason)
        lineEdit()->selectAll();
}

void ChoiceBox::focusOutEvent(QFocusEvent* event) {
    QComboBox::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason)
        EndSearch();
}

void ChoiceBox::hidePopup() {
    QComboBox::hidePopup();
    if (isEditable()) // the entry picked comes into the text after this
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
    lineEdit()->installEventFilter(this);
    connect(lineEdit(), &QLineEdit::textEdited, this,
            [this](const QString& text) { ChooseText(text, true); });
    connect(this, &QComboBox::editTextChanged, lineEdit(),
            [this](const QString& text) { ChooseText(text, false); });
    connect(lineEdit(), &QLineEdit::returnPressed, this, &ChoiceBox::ReturnPressed);
}

bool ChoiceBox::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (watched == lineEdit() && (type == QEvent::ShortcutOverride || type == QEvent::KeyPress)) {
        // A choice is undone by the window, never by bringing back letters of its search.
        const auto& key = *static_cast<QKeyEvent*>(event);
        if (key.matches(QKeySequence::Undo) || key.matches(QKeySequence::Redo)) {
            event->ignore();
            return true;
        }
    }
    return QComboBox::eventFilter(watched, event);
}

bool ChoiceBox::ChooseText(const QString& text, bool byHand) {
    if (text == itemText(currentIndex()))
        return true;
    const int at = list->IndexOf(text);
    if (at < 0)
        return false;
    setCurrentIndex(at);
    if (byHand)
        emit activated(at);
    return true;
}

QString ChoiceBox::MatchOf(const QString& typed) const {
    const int same = findText(typed, Qt::MatchFixedString);
    return same >= 0 ? itemText(same) : list->OnlyOneWith(typed);
}

void ChoiceBox::ReturnPressed() {
    // Among several offered entries the search goes on.
    if (!completer()->popup()->isVisible() || !MatchOf(currentText()).isNull())
        EndSearch();
}

void ChoiceBox::EndSearch() {
    if (!isEditable() || ChooseText(currentText(), true))
        return;
    if (const QString match = MatchOf(currentText()); !match.isNull())
        ChooseText(match, true);
    setEditText(itemText(currentIndex()));
}

} // namespace velmora
