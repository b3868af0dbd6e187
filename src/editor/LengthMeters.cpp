#include "editor/LengthMeters.h"

#include "editor/LineBox.h"
#include "editor/QtText.h"
#include "editor/RecordWindow.h"
#include "editor/TextBox.h"
#include "services/GameText.h"

#include <QGridLayout>
#include <QLabel>

namespace velmora {

namespace {

/// The layout below `from` that holds a control itself.
QLayout* LayoutOf(const QWidget* control, QLayout* from) {
    if (from->indexOf(control) >= 0)
        return from;
    for (int i = 0; i < from->count(); ++i)
        if (QLayout* below = from->itemAt(i)->layout())
            if (QLayout* found = LayoutOf(control, below))
                return found;
    return nullptr;
}

/// Puts a label below a control, both into its place.
void PutBelow(QWidget* control, QLabel* label) {
    QLayout* layout = LayoutOf(control, control->parentWidget()->layout());
    const int at = layout->indexOf(control);
    auto* both = new QVBoxLayout;
    both->setSpacing(0);
    if (auto* grid = qobject_cast<QGridLayout*>(layout)) {
        int row = 0;
        int column = 0;
        int rows = 0;
        int columns = 0;
        grid->getItemPosition(at, &row, &column, &rows, &columns);
        grid->removeWidget(control);
        grid->addLayout(both, row, column, rows, columns);
    } else if (auto* box = qobject_cast<QBoxLayout*>(layout)) {
        const int stretch = box->stretch(at);
        box->removeWidget(control);
        box->insertLayout(at, both, stretch);
    }
    both->addWidget(control, 1);
    both->addWidget(label);
}

} // namespace

LengthMeters::LengthMeters(RecordWindow& window) : QObject(&window) {
    for (const Binding& binding : window.Fields().Bindings()) {
        if (binding.Rule.Limit == 0)
            continue;
        if (auto* line = qobject_cast<LineBox*>(binding.Controls.front()))
            Add(line, binding);
        else if (auto* text = qobject_cast<TextBox*>(binding.Controls.front()))
            Add(text, binding);
    }
}

template <class Box>
void LengthMeters::Add(Box* box, const Binding& binding) {
    auto* label = new QLabel(box->parentWidget());
    label->setObjectName(QStringLiteral("lblMeter_%1").arg(count++));
    QFont small = label->font();
    small.setPointSizeF(small.pointSizeF() * 0.85);
    label->setFont(small);
    label->setAlignment(Qt::AlignRight);
    PutBelow(box, label);
    const auto tell = [box, label, limit = binding.Rule.Limit] {
        const std::string text = box->Bytes();
        const std::size_t length = LengthInGame(text);
        label->setText(ToQt(LengthOfLimit(length, limit)));
        QFont font = label->font();
        font.setBold(length > limit);
        label->setFont(font);
        const qsizetype fits = ToQt(std::string_view(text).substr(0, FittingLength(text, limit))).size();
        const qsizetype beyond = ToQt(text).size() - fits;
        box->SetMarked(TextMark::TooLong,
                       beyond > 0 ? std::vector{TextRange{fits, beyond}} : std::vector<TextRange>());
    };
    connect(box, &Box::textChanged, label, tell);
    tell();
}

} // namespace velmora
