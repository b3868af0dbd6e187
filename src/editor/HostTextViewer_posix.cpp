#include "editor/HostTextViewer.h"

#include "editor/QtText.h"
#include "platform/Files.h"

#include <QDesktopServices>
#include <QGuiApplication>
#include <QUrl>

namespace velmora {

bool OpenInHostTextViewer(const std::string& path) {
    // The offscreen platform has no desktop behind it; opening would only reach for one that nobody sees.
    if (QGuiApplication::platformName() == QLatin1String("offscreen") || !Files::FileExists(path))
        return false;
    return QDesktopServices::openUrl(QUrl::fromLocalFile(PathToQt(path)));
}

} // namespace velmora
