#include "editor/PictureViewer.h"

#include "platform/Files.h"
#include "platform/Pcx.h"

#include <QLabel>
#include <QPainter>
#include <exception>

namespace velmora {

namespace {

constexpr std::uint64_t LargestFile = 100'000'000; // a full-sized true-colour picture with room to spare

QImage ReadPicture(const std::string& path) {
    try {
        if (Files::SizeOf(path) > LargestFile)
            return {};
        const Picture decoded = DecodePcx(Files::ReadWhole(path));
        const QImage view(reinterpret_cast<const uchar*>(decoded.Pixels.data()), decoded.Width,
                          decoded.Height, static_cast<qsizetype>(decoded.Width) * 4, QImage::Format_RGB32);
        return view.copy();
    } catch (const std::exception&) {
        return {};
    }
}

} // namespace

PictureViewer::PictureViewer(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void PictureViewer::ShowFile(const std::string& path) {
    picture = ReadPicture(path);
    if (auto* instead = parentWidget()->findChild<QLabel*>(QStringLiteral("lblUnableToDisplay")))
        instead->setVisible(!HasPicture());
    update();
    emit Displayed(HasPicture());
}

void PictureViewer::paintEvent(QPaintEvent* /*event*/) {
    if (picture.isNull())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    QRect place(QPoint(), picture.size().scaled(size(), Qt::KeepAspectRatio));
    place.moveCenter(rect().center());
    painter.drawImage(place, picture);
}

} // namespace velmora
