#include "editor/TextViewer.h"

#include "editor/HostTextViewer.h"
#include "editor/QtText.h"
#include "platform/Failure.h"
#include "platform/Files.h"

#include <QClipboard>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace velmora {

QFont FixedWidthFont() {
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    // Not every system knows its own one.
    font.setFamilies({font.family(), QStringLiteral("Consolas"), QStringLiteral("Courier New"),
                      QStringLiteral("DejaVu Sans Mono")});
    font.setStyleHint(QFont::Monospace);
    return font;
}

TextViewer::TextViewer(const QString& title, const QString& text, QWidget* parent) : QDialog(parent) {
    setWindowTitle(title);
    auto* view = new QPlainTextEdit(text);
    view->setObjectName(QStringLiteral("txtText"));
    view->setAccessibleName(title);
    view->setReadOnly(true);
    view->setTabChangesFocus(true);
    view->setFont(FixedWidthFont());
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    auto* copy = buttons->addButton(QStringLiteral("&Copy All"), QDialogButtonBox::ActionRole);
    copy->setObjectName(QStringLiteral("cmdCopyAll"));
    connect(copy, &QPushButton::clicked, this, [text] { QGuiApplication::clipboard()->setText(text); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(view);
    layout->addWidget(buttons);
    buttons->button(QDialogButtonBox::Close)->setDefault(true); // or Enter copies, which nobody sees
    // Left to itself, the button box keeps Close out of the round.
    setTabOrder(view, copy);
    setTabOrder(copy, buttons->button(QDialogButtonBox::Close));
    resize(view->fontMetrics().averageCharWidth() * 90, view->fontMetrics().lineSpacing() * 32);
}

void TextViewer::ShowFile(const std::string& path) {
    if (!OpenInHostTextViewer(path, [path] { ShowOwn(path); }))
        ShowOwn(path);
}

void TextViewer::ShowOwn(const std::string& path) {
    QString text;
    try {
        text = ToQt(Files::ReadWhole(path)).remove(QLatin1Char('\r'));
    } catch (const Failure& failure) {
        text = ToQt(failure.Description());
    }
    auto* viewer = new TextViewer(ToQt(Files::NameOf(path)), text);
    viewer->setObjectName(QStringLiteral("frmTextViewer"));
    viewer->setAttribute(Qt::WA_DeleteOnClose);
    viewer->show();
}

} // namespace velmora
