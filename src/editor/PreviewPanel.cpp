#include "editor/PreviewPanel.h"

#include "editor/PictureViewer.h"
#include "editor/QtText.h"
#include "editor/RecordList.h"
#include "editor/RecordWindow.h"
#include "editor/Workbench.h"
#include "services/Settings.h"

#include <QCheckBox>
#include <QDockWidget>
#include <QFormLayout>
#include <QLineEdit>
#include <QScrollBar>
#include <QSettings>
#include <QTextEdit>
#include <QVBoxLayout>

namespace velmora {

namespace {

const QString SampleGroup = QStringLiteral("SampleNames");
const QString UseKey = QStringLiteral("Shown");

/// What stands in until the author sets other names. The value of an answer is its own sample.
QString FirstSample(std::string_view substitution) {
    return substitution == "Player Name"     ? QStringLiteral("Ansa Tarn")
           : substitution == "Empire Name"   ? QStringLiteral("Halden League")
           : substitution == "Planet Name"   ? QStringLiteral("Brightwater IV")
           : substitution == "Selected Race" ? QStringLiteral("Orlan")
                                             : QString();
}

QString Escaped(const std::string& bytes) {
    return LinesToQt(bytes).toHtmlEscaped().replace(QLatin1Char('\n'), QLatin1String("<br>"));
}

/// Something that the author is to look at.
QString Marked(const QString& html) {
    return QStringLiteral("<b><u>\u26A0 %1</u></b>").arg(html);
}

QString ToHtml(const TextPiece& piece) {
    QString shown = Escaped(piece.Text);
    switch (piece.Is) {
    case TextPiece::Sort::Unset:
        return Marked(PreviewPanel::tr("%1 not set").arg(shown));
    case TextPiece::Sort::Surplus:
        return Marked(PreviewPanel::tr("%1 one wild card too many").arg(shown));
    case TextPiece::Sort::Filled:
        return QStringLiteral("<i>%1</i>").arg(shown);
    case TextPiece::Sort::Plain:
        break;
    }
    return shown;
}

QString ToHtml(const PreviewPart& part) {
    QString html;
    if (!part.Heading.empty())
        html += QStringLiteral("<h4>%1</h4>").arg(Escaped(part.Heading));
    html += QStringLiteral("<p>");
    for (const TextPiece& piece : part.Text)
        html += ToHtml(piece);
    html += QStringLiteral("</p>");
    if (!part.Effect.empty())
        html += QStringLiteral("<p>\u2192 %1</p>").arg(Escaped(part.Effect));
    for (const std::string& note : part.Notes)
        html += QStringLiteral("<p>%1</p>").arg(Marked(Escaped(note)));
    return html;
}

} // namespace

PreviewPanel::PreviewPanel(RecordWindow& recordWindow, Workbench& workbench, RecordList& list)
    : QWidget(&recordWindow), window(recordWindow) {
    BuildPanel();
    const QDockWidget* dock =
        workbench.AddDock("dckPreview", tr("Preview"), this, Qt::RightDockWidgetArea, "mnuShowPreview");
    connect(dock, &QDockWidget::visibilityChanged, this, &PreviewPanel::Later);
    later.setSingleShot(true);
    later.setInterval(0);
    connect(&later, &QTimer::timeout, this, &PreviewPanel::Refresh);
    Follow(list);
}

void PreviewPanel::BuildPanel() {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    picture = new PictureViewer(this);
    picture->setFixedHeight(100);
    picture->setAccessibleName(tr("Picture"));
    picture->hide();
    layout->addWidget(picture);
    text = new QTextEdit(this);
    text->setObjectName(QStringLiteral("txtPreview"));
    text->setAccessibleName(tr("Preview"));
    text->setReadOnly(true);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    text->setTabChangesFocus(true);
    layout->addWidget(text, 1);
    if (window.Records().Kind.Substitutions)
        layout->addWidget(BuildSamples());
}

QWidget* PreviewPanel::BuildSamples() {
    auto* panel = new QWidget(this);
    auto* layout = new QFormLayout(panel);
    layout->setContentsMargins({});
    useSamples = new QCheckBox(tr("&Sample names for wild cards"), panel);
    useSamples->setObjectName(QStringLiteral("chkSampleNames"));
    useSamples->setToolTip(tr("Fills wild cards with names of yours instead of [PLANET NAME] and the like."));
    layout->addRow(useSamples);
    const auto store = Workbench::Store(SampleGroup);
    for (const auto& [name, code] : window.Records().Kind.Substitutions()) {
        if (code == 0)
            continue;
        auto* box = new QLineEdit(store->value(ToQt(name), FirstSample(name)).toString(), panel);
        box->setObjectName(QStringLiteral("txtSample_%1").arg(samples.size()));
        box->setAccessibleName(tr("Sample for %1").arg(ToQt(name)));
        connect(box, &QLineEdit::textEdited, this, &PreviewPanel::Later);
        connect(box, &QLineEdit::editingFinished, this, &PreviewPanel::KeepSamples);
        layout->addRow(ToQt(name), box);
        samples.push_back({name, box});
    }
    const auto show = [this, layout](bool on) {
        for (const Sample& sample : samples) {
            layout->labelForField(sample.Box)->setVisible(on);
            sample.Box->setVisible(on);
        }
        Later();
    };
    useSamples->setChecked(store->value(UseKey).toBool());
    show(useSamples->isChecked());
    connect(useSamples, &QCheckBox::toggled, this, show);
    connect(useSamples, &QCheckBox::clicked, this, &PreviewPanel::KeepSamples);
    return panel;
}

void PreviewPanel::KeepSamples() const {
    const auto store = Workbench::Store(SampleGroup);
    store->setValue(UseKey, useSamples->isChecked());
    for (const Sample& sample : samples)
        store->setValue(ToQt(sample.Name), sample.Box->text());
}

SampleNames PreviewPanel::Samples() const {
    SampleNames names;
    if (useSamples && useSamples->isChecked())
        for (const Sample& sample : samples)
            names[sample.Name] = FromQt(sample.Box->text());
    return names;
}

void PreviewPanel::Follow(RecordList& list) {
    connect(&list, &RecordList::Pointed, this, [this](const std::string& name) {
        pointed = name;
        Later();
    });
    connect(&window, &RecordWindow::RecordShown, this, [this] {
        pointed.clear();
        Later();
    });
    connect(&window, &RecordWindow::LibraryRead, this, [this] {
        shownPicture.clear(); // the file may be another one
        Later();
    });
    connect(&window, &RecordWindow::ModeChanged, this, &PreviewPanel::Later);
    connect(&window, &RecordWindow::Closed, this, &PreviewPanel::Later);
    connect(&window.Fields(), &Form::Changed, this, &PreviewPanel::Later);
    window.Changes().OnChange([this](const Edits::Change& /*change*/) { Later(); });
}

std::unique_ptr<Record> PreviewPanel::Wanted() const {
    const Library& library = window.Records();
    const bool browsing = window.Mode() == EditMode::Browsing;
    const Record* live = browsing ? library.Find(pointed) : nullptr;
    if (!live)
        live = library.Find(window.ShownRecordName());
    if (!live)
        return nullptr;
    auto wanted = library.Kind.Copy(*live);
    if (!browsing)
        window.Fields().ReadWhatConverts(*wanted);
    return wanted;
}

void PreviewPanel::Refresh() {
    if (!isVisible())
        return;
    const RecordKind& kind = window.Records().Kind;
    const auto record = window.Records().Empty() ? nullptr : Wanted();
    const Preview preview = record ? kind.PreviewOf(*record, Samples()) : Preview();
    if (const std::string path = preview.Picture.empty() ? "" : Settings.GamePath + preview.Picture;
        path != shownPicture) {
        shownPicture = path;
        picture->ShowFile(path);
        picture->setVisible(picture->HasPicture());
    }
    QString html = QStringLiteral("<h3>%1</h3>").arg(Escaped(preview.Title));
    if (!preview.Picture.empty() && !picture->HasPicture())
        html += QStringLiteral("<p>%1</p>").arg(Marked(tr("The picture cannot be shown")));
    for (const PreviewPart& part : preview.Parts)
        html += ToHtml(part);
    const std::string name = record ? kind.NameOf(*record) : std::string();
    const int place = name == shownName ? text->verticalScrollBar()->value() : 0;
    shownName = name;
    text->setHtml(html);
    text->verticalScrollBar()->setValue(place);
}

} // namespace velmora
