#include "editor/UnwrittenFooter.h"

#include "platform/CodePage.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QMouseEvent>
#include <algorithm>

namespace velmora {

namespace {

/// To assistive programs the footer is a button.
class FooterInterface : public QAccessibleWidget {
  public:
    explicit FooterInterface(UnwrittenFooter* footer) : QAccessibleWidget(footer, QAccessible::Button) {}
    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name ? static_cast<QLabel*>(widget())->text()
                                         : QAccessibleWidget::text(kind);
    }
    [[nodiscard]] QStringList actionNames() const override {
        return QStringList{pressAction()} + QAccessibleWidget::actionNames();
    }
    void doAction(const QString& name) override {
        if (name == pressAction())
            emit static_cast<UnwrittenFooter*>(widget())->Pressed();
        else
            QAccessibleWidget::doAction(name);
    }
};

QAccessibleInterface* MakeInterface(const QString& /*className*/, QObject* object) {
    auto* footer = qobject_cast<UnwrittenFooter*>(object);
    return footer ? new FooterInterface(footer) : nullptr;
}

} // namespace

UnwrittenFooter::UnwrittenFooter(const Library& countedLibrary, QWidget* parent)
    : QLabel(parent), library(countedLibrary) {
    [[maybe_unused]] static const bool installed = [] {
        QAccessible::installFactory(MakeInterface);
        return true;
    }();
    setObjectName(QStringLiteral("lblUnwritten"));
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setMargin(4);
    setToolTip(tr("Writes them to file, after a question."));
    Tell();
}

void UnwrittenFooter::Follow(const Edits::Change& change) {
    if (change.Kind == Edits::How::Reread)
        return Recount();
    for (const std::string_view name : change.Names)
        Note(name, library.Find(name));
    Tell();
}

void UnwrittenFooter::Recount() {
    changed.clear();
    files.clear();
    for (const auto& [name, record] : library)
        if (record.IsDirty)
            Note(name, &record);
    Tell();
}

void UnwrittenFooter::Note(std::string_view name, const Record* record) {
    const auto [at, fresh] = changed.try_emplace(CodePage::ToLower(name));
    if (!fresh && --files[at->second] == 0)
        files.erase(at->second);
    if (record && record->IsDirty)
        ++files[at->second = record->ShortName];
    else
        changed.erase(at);
}

void UnwrittenFooter::Tell() {
    const auto& losing = library.FilesLosingRecords();
    const std::size_t fileCount =
        files.size() +
        static_cast<std::size_t>(std::count_if(
            losing.begin(), losing.end(), [this](const std::string& file) { return !files.contains(file); }));
    const std::size_t count = changed.size() + library.RemovedRecords().Count();
    const bool any = count > 0 || fileCount > 0;
    setText(any ? tr("%1 in %2 not yet written")
                      .arg(count == 1 ? tr("1 record") : tr("%1 records").arg(count),
                           fileCount == 1 ? tr("1 file") : tr("%1 files").arg(fileCount))
                : tr("Everything is written"));
    setFocusPolicy(any ? Qt::TabFocus : Qt::NoFocus);
    setCursor(any ? Qt::PointingHandCursor : Qt::ArrowCursor);
    QFont underlined = font();
    underlined.setUnderline(any);
    setFont(underlined);
}

void UnwrittenFooter::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
        emit Pressed();
}

void UnwrittenFooter::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space)
        emit Pressed();
    else
        QLabel::keyPressEvent(event);
}

} // namespace velmora
