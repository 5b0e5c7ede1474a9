#include "app/StartUp.h"
#include "window/demo.h"
#include "window/dialogs/StartTip.h"
#include "window/InstanceOrder.h"
#include "window/screens/Screens.h"
#include "window/screens/SmoothPictures.h"

#include "helpers/ProductSettings.h"

#include <QApplication>
#include <QFont>
#include <QPixmapCache>
#include <QScreen>

#include <memory>

namespace {

// Kilobytes. The pictures of all pages, which the style sheet asks for when the window is first shown, do not
// fit into Qt's 10 MB: shared ones would be decoded again for every page and kept several times.
constexpr int kPictureCache = 32 * 1024;

void centreOnPrimaryScreen(QWidget &window) {
    const QScreen *screen = QGuiApplication::primaryScreen();
    const QSize size = screen->geometry().size();
    const QPoint centred((size.width() - window.width()) / 2, (size.height() - window.height()) / 2);
    // A window that is as high as the work area would stand behind the taskbar there.
    const QRect room = screen->availableGeometry();
    const int right = qMax(room.left(), room.left() + room.width() - window.width());
    const int bottom = qMax(room.top(), room.top() + room.height() - window.height());
    window.move(qBound(room.left(), centred.x(), right), qBound(room.top(), centred.y(), bottom));
}

int runPanel(QApplication &application, bool takesOver) {
    QPixmapCache::setCacheLimit(kPictureCache);
    SmoothPictures::installWhereNeeded();
    // A dialog may close while the panel is hidden behind its tray icon.
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setFont(QFont(QStringLiteral("Microsoft YaHei")));
    application.setStyleSheet(QStringLiteral("QPushButton:focus { outline: none; }"));

    // On the heap: the paths that end the process from within destroy the window themselves.
    const auto window = std::make_unique<demo>();
    // An older instance that hangs has not followed the request, and this one must not.
    if (takesOver && !InstanceOrder::newerAsked())
        ProductSettings::takeExitRequest();
    centreOnPrimaryScreen(*window);
    window->setWindowTitle(QString::fromStdWString(ProductSettings::productDisplayName()));
    window->show();
    if (ProductSettings::readDword(ProductSettings::kStartTipShown).value_or(0) != 0)
        ShowStartTip(window.get());
    return QApplication::exec();
}

} // namespace

int main(int argc, char *argv[]) {
    if (const StartUp::Ending ending = StartUp::ensureElevated())
        return *ending;
    StartUp::logVersions();
    const bool takesOver = StartUp::takeOverFromRunningInstance();
    if (const StartUp::Ending ending = StartUp::requireDevice())
        return *ending;

    qputenv("QT_ENABLE_HIGHDPI_SCALING", "1");
    Screens::chooseScales();
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps); // icons as sharp as the display is
    QApplication application(argc, argv);
    return runPanel(application, takesOver);
}
