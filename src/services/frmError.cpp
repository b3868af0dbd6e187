#include "services/frmError.h"

#include "platform/CodePage.h"
#include "platform/Failure.h"
#include "platform/PathTexts.h"
#include "ui_frmError.h"

#include <QLayout>
#include <QScreen>

namespace velmora {

namespace {

/// Heights in twips, of which an inch has 1440: whatever the screen's resolution, as much is seen.
constexpr int CollapsedHeight = 2710;
constexpr int CollapsedHeightWithoutNote = 1650;
constexpr int ExpandedHeight = 5985;
constexpr int TwipsOfInch = 1440;
constexpr int LongestReason = 500;
constexpr int LongestText = 10'000; // the log has it whole

QString ToQt(const std::string& text) {
    return QString::fromStdString(PathTexts::ToHostText(text)).left(LongestText);
}

} // namespace

frmError::frmError(const ErrorDetails& error, QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui::frmError>()) {
    ui->setupUi(this);
    ui->lblStatus->setText(
        error.CollectUserInput
            ? QStringLiteral(
                  "An unexpected error has occured in this application.  Please note what you were doing "
                  "just prior to this error. I apologize for any inconvenience this error may cause.  "
                  "Thank you.")
            : QStringLiteral("An unexpected error has occured in this application.  I apologize for any "
                             "inconvenience this error may cause.  Thank you."));
    // What the person can mend is said at once.
    ui->lblReason->setText(ToQt(error.Description).left(LongestReason));
    ui->lblReason->setVisible(error.Number == FailurePermissionDenied ||
                              error.Number == FailurePathFileAccess || error.Number == FailureDiskFull);
    ui->txtUserMessage->setVisible(error.CollectUserInput);
    ui->cmdDetails->setVisible(error.OfferDetails);
    ui->lblErrNum->setText(QString::number(error.Number));
    ui->lblErrLine->setText(QString::number(error.Line));
    ui->lblErrDescription->setText(ToQt(error.Description));
    ui->lblErrSource->setText(ToQt(error.Source));
    ui->lblNow->setText(ToQt(error.Time));
    ui->lblCallStack->setText(ToQt(error.CallStack).remove(QLatin1Char('\r')).trimmed());
    ui->lblPassedParameters->setText(ToQt(error.Parameters));
    ShowDetails(false);
    connect(ui->cmdClose, &QPushButton::clicked, this, &QWidget::hide);
    connect(ui->cmdDetails, &QPushButton::clicked, this, [this] { ToggleDetails(); });
}

frmError::~frmError() = default;

std::string frmError::UserMessage() const {
    QString note = ui->txtUserMessage->toPlainText();
    note.replace(QLatin1Char('\n'), QLatin1String("\r\n")); // as in all of a log
    return CodePage::FromUtf8Lossy(note.toStdString());
}

void frmError::ToggleDetails() {
    const bool shown = ui->cmdDetails->text() == QLatin1String("&Details >>");
    ui->cmdDetails->setText(shown ? QStringLiteral("No &Details") : QStringLiteral("&Details >>"));
    ShowDetails(shown);
    if (ui->txtUserMessage->isVisible())
        ui->txtUserMessage->setFocus(Qt::OtherFocusReason);
    HoldOnScreen();
}

void frmError::ShowDetails(bool shown) {
    ui->fraDetails->setVisible(shown);
    const int collapsed = ui->txtUserMessage->isHidden() ? CollapsedHeightWithoutNote : CollapsedHeight;
    const int wanted = (shown ? ExpandedHeight : collapsed) * logicalDpiY() / TwipsOfInch;
    layout()->activate();
    resize(width(), qMax(wanted, layout()->totalMinimumHeightForWidth(width())));
}

void frmError::HoldOnScreen() {
    const QRect room = screen()->geometry();
    const int limit = room.top() + qRound(room.height() * 0.96);
    if (frameGeometry().top() + frameGeometry().height() >= limit)
        move(x(), limit - frameGeometry().height());
}

} // namespace velmora
