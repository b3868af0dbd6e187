#include "editor/DialogPrompts.h"

#include "editor/InputRules.h"
#include "editor/QtText.h"
#include "editor/TextViewer.h"
#include "platform/Files.h"
#include "services/frmError.h"

#include <QApplication>
#include <QCheckBox>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QLayout>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProgressDialog>
#include <QRegularExpression>
#include <QScreen>
#include <QTextEdit>

namespace velmora {

namespace {

const QString ApplicationTitle = QStringLiteral("VelmoraWriter");

QWidget* Owner() {
    QWidget* modal = QApplication::activeModalWidget();
    return modal ? modal : QApplication::activeWindow();
}

QMessageBox::Icon BoxIcon(Icon icon) {
    switch (icon) {
    case Icon::Information:
        return QMessageBox::Information;
    case Icon::Exclamation:
        return QMessageBox::Warning;
    case Icon::Critical:
        return QMessageBox::Critical;
    case Icon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

/// A text of a length that a person reads in a box; lists hold the whole one.
QString Readable(const QString& text) {
    constexpr qsizetype longest = 10'000;
    if (text.size() <= longest)
        return text;
    return text.left(longest) + QStringLiteral(" ... (%1 more characters)").arg(text.size() - longest);
}

/// A message box whose text is shown as it is and can be selected. The toolkit wraps a long one; any width
/// set on its label would take that from it. A text that would outgrow the screen scrolls.
class Box : public QMessageBox {
  public:
    Box(const std::string& text, velmora::Icon icon, StandardButtons buttons)
        : QMessageBox(BoxIcon(icon), ApplicationTitle, Readable(LinesToQt(text)), buttons, Owner()) {
        setTextFormat(Qt::PlainText);
        setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    }

    int exec() override {
        constexpr int width = 480; // what the toolkit wraps at
        const int room = screen()->availableGeometry().height() / 2;
        const QFontMetrics font = fontMetrics();
        if (font.boundingRect(0, 0, width, 0, Qt::TextWordWrap | Qt::TextWrapAnywhere, text()).height() >
            room)
            Scroll(QSize(width + font.averageCharWidth() * 6, room));
        return QMessageBox::exec();
    }

  private:
    void Scroll(QSize size) {
        auto* label = findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
        auto* lines = new QPlainTextEdit(text());
        lines->setObjectName(QStringLiteral("txtLines"));
        lines->setReadOnly(true);
        lines->setTabChangesFocus(true);
        lines->setMinimumSize(size);
        label->hide();
        delete layout()->replaceWidget(label, lines);
    }
};

/// A progress dialog that appears only when the work takes longer than half a second.
class DialogProgress : public Progress {
  public:
    explicit DialogProgress(const std::string& title) : heading(ToQt(title)) { clock.start(); }

    void Working(const std::string& item, std::size_t done, std::size_t total) override {
        if (clock.elapsed() < 500 || (dialog && sinceShown.elapsed() < 40))
            return;
        if (!dialog) {
            dialog = std::make_unique<QProgressDialog>(Owner());
            dialog->setObjectName(QStringLiteral("frmProgress"));
            dialog->setWindowTitle(heading);
            label = new QLabel;
            label->setTextFormat(Qt::PlainText);
            dialog->setLabel(label);
            dialog->setWindowModality(Qt::ApplicationModal);
            dialog->setWindowFlag(Qt::WindowCloseButtonHint, false);
            dialog->setCancelButton(nullptr);
            dialog->setMinimumDuration(0);
            dialog->setMinimumWidth(dialog->fontMetrics().averageCharWidth() * 60);
        }
        dialog->setMaximum(static_cast<int>(total));
        // A long path shows its ends.
        label->setText(
            label->fontMetrics().elidedText(ToQt(item), Qt::ElideMiddle, dialog->minimumWidth() - 40));
        dialog->setValue(static_cast<int>(done));
        dialog->show();
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        sinceShown.start();
    }

  private:
    QString heading;
    QElapsedTimer clock;
    QElapsedTimer sinceShown;
    std::unique_ptr<QProgressDialog> dialog;
    QLabel* label = nullptr;
};

/// Lines are compared by eye: they need characters of one width, and room.
void ShowDetails(QMessageBox& box, const std::string& details) {
    if (details.empty())
        return;
    box.setDetailedText(LinesToQt(details));
    auto* text = box.findChild<QTextEdit*>();
    text->setFont(FixedWidthFont());
    text->setLineWrapMode(QTextEdit::NoWrap);
    const QFontMetrics metrics = text->fontMetrics();
    text->setMinimumWidth(metrics.averageCharWidth() * 90);
    text->setFixedHeight(qMin(metrics.lineSpacing() * 18, box.screen()->availableGeometry().height() / 4));
}

void OpenDetails(const QMessageBox& box) {
    for (QAbstractButton* button : box.buttons())
        if (box.buttonRole(button) == QMessageBox::ActionRole)
            button->click();
}

} // namespace

void DialogPrompts::Message(const std::string& text, Icon icon, const std::string& details) {
    Box box(text, icon, QMessageBox::Ok);
    ShowDetails(box, details);
    box.exec();
}

bool DialogPrompts::MessageInSeries(const std::string& text, Icon icon, const std::string& details) {
    Box box(text, icon, QMessageBox::Ok);
    ShowDetails(box, details);
    auto* rest = new QCheckBox(QStringLiteral("Show the remaining messages as one list"));
    rest->setObjectName(QStringLiteral("chkRestAsList"));
    box.setCheckBox(rest);
    box.exec();
    return rest->isChecked();
}

void DialogPrompts::MessageList(const std::vector<std::string>& texts) {
    QString all;
    for (const std::string& text : texts)
        all += LinesToQt(text) + QStringLiteral("\n\n");
    TextViewer viewer(ApplicationTitle, all.trimmed(), Owner());
    viewer.setObjectName(QStringLiteral("frmMessageList"));
    viewer.exec();
}

bool DialogPrompts::Ask(const Question& question) {
    Box box(question.Text, Icon::None, QMessageBox::Yes | QMessageBox::No);
    box.setDefaultButton(question.DefaultNo ? QMessageBox::No : QMessageBox::Yes);
    ShowDetails(box, question.Details);
    if (question.DetailsOpen)
        OpenDetails(box);
    return box.exec() == QMessageBox::Yes;
}

std::string DialogPrompts::Input(const std::string& prompt) {
    QInputDialog dialog(Owner());
    dialog.setWindowTitle(ApplicationTitle);
    // A name too long for a line may be broken where no blank is.
    static const QRegularExpression longWord(QStringLiteral("(\\S{60})(?=\\S)"));
    dialog.setLabelText(LinesToQt(prompt).replace(longWord, QStringLiteral("\\1\u200B")));
    dialog.setMinimumWidth(dialog.fontMetrics().averageCharWidth() * 60);
    for (auto* label : dialog.findChildren<QLabel*>()) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(label->sizeHint().width() > dialog.screen()->availableGeometry().width() / 2);
    }
    while (dialog.exec() == QDialog::Accepted) {
        const InputRules::Admitted answer = InputRules::KeepCodePage(dialog.textValue());
        if (answer.Hint.isEmpty())
            return FromQt(answer.Text);
        Message(FromQt(answer.Hint), Icon::Exclamation, {});
        dialog.setTextValue(answer.Text);
    }
    return {};
}

std::string DialogPrompts::PickFolder(const std::string& title, const std::string& start) {
    const QString folder = QFileDialog::getExistingDirectory(
        Owner(), ToQt(title), start.empty() ? QString() : PathToQt(start), QFileDialog::ShowDirsOnly);
    if (folder.isEmpty())
        return {};
    const std::string path = PathFromQt(folder);
    return path.ends_with(Files::Separator) || path.ends_with('/') ? path : path + Files::Separator;
}

std::string DialogPrompts::PickFile(const FileRequest& request) {
    QFileDialog dialog(Owner(), ToQt(request.Title), PathToQt(request.Folder), ToQt(request.FilterText));
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setDefaultSuffix(ToQt(request.Pattern).section(QLatin1Char('.'), -1));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {};
    return PathFromQt(dialog.selectedFiles().constFirst());
}

std::string DialogPrompts::ReportError(const ErrorDetails& error) {
    frmError dialog(error, Owner());
    dialog.exec();
    return dialog.UserMessage();
}

void DialogPrompts::ShowTextFile(const std::string& path) {
    TextViewer::ShowFile(path);
}

std::unique_ptr<Progress> DialogPrompts::StartProgress(const std::string& title) {
    return std::make_unique<DialogProgress>(title);
}

} // namespace velmora
