#include "editor/UserGuide.h"

#include "editor/QtText.h"
#include "platform/Files.h"
#include "services/Settings.h"

#include <QAction>
#include <QApplication>
#include <QDialogButtonBox>
#include <QFile>
#include <QImage>
#include <QMenu>
#include <QPushButton>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace velmora {

namespace {

constexpr QLatin1String WindowName("frmUserGuide");

/// Pictures of whole windows are shrunk to the width of a line, for Markdown gives them no size.
class Pages : public QTextBrowser {
  public:
    using QTextBrowser::QTextBrowser;

    [[nodiscard]] int LineWidth() const { return fontMetrics().averageCharWidth() * 110; }

    QVariant loadResource(int type, const QUrl& name) override {
        QVariant resource = QTextBrowser::loadResource(type, name);
        if (type != QTextDocument::ImageResource)
            return resource;
        const QImage picture = QImage::fromData(resource.toByteArray());
        return picture.width() > LineWidth() ? picture.scaledToWidth(LineWidth(), Qt::SmoothTransformation)
                                             : picture;
    }
};

} // namespace

UserGuide::UserGuide(const QString& index) {
    setObjectName(WindowName);
    setWindowTitle(tr("User Guide"));
    setAttribute(Qt::WA_DeleteOnClose);
    auto* pages = new Pages(this);
    pages->setObjectName(QStringLiteral("txtPage"));
    pages->setAccessibleName(windowTitle());
    pages->setOpenExternalLinks(true);
    pages->document()->setDocumentMargin(12);
    new QVBoxLayout(this);
    const QUrl first = QUrl::fromLocalFile(index);
    AddButtons(pages, first);
    layout()->addWidget(pages);
    if (QFile::exists(index))
        pages->setSource(first);
    else
        pages->setPlainText(tr("The user guide is not installed:\n%1").arg(index));
    pages->setFocus();
    resize(pages->LineWidth() + 80, pages->fontMetrics().lineSpacing() * 42);
}

void UserGuide::AddButtons(QTextBrowser* pages, const QUrl& index) {
    auto* buttons = new QDialogButtonBox(this);
    const auto add = [&](const char* name, const QString& text) {
        auto* button = buttons->addButton(text, QDialogButtonBox::ActionRole);
        button->setObjectName(QString::fromLatin1(name));
        button->setAutoDefault(false); // Enter is for the links
        return button;
    };
    QPushButton* back = add("cmdBack", tr("&Back"));
    QPushButton* forward = add("cmdForward", tr("&Forward"));
    QPushButton* contents = add("cmdContents", tr("&Contents"));
    for (QPushButton* button : {back, forward})
        button->setEnabled(false);
    connect(pages, &QTextBrowser::backwardAvailable, back, &QWidget::setEnabled);
    connect(pages, &QTextBrowser::forwardAvailable, forward, &QWidget::setEnabled);
    connect(back, &QPushButton::clicked, pages, &QTextBrowser::backward);
    connect(forward, &QPushButton::clicked, pages, &QTextBrowser::forward);
    connect(contents, &QPushButton::clicked, pages, [pages, index] { pages->setSource(index); });
    layout()->addWidget(buttons);
}

void UserGuide::Open() {
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->objectName() == WindowName && window->isVisible()) {
            window->raise();
            window->activateWindow();
            return;
        }
    (new UserGuide(PathToQt(HelpFile(Files::Join("guide", "index.md")))))->show();
}

void UserGuide::AddTo(QMenu& help) {
    help.addSeparator();
    QAction* item = help.addAction(tr("&User Guide"), &UserGuide::Open);
    item->setObjectName(QStringLiteral("mnuUserGuide"));
}

} // namespace velmora
