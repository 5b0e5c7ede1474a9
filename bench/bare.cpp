// The least that a Qt program can do: loads the DLLs that the panel loads and shows a white window of the
// panel's size (pixels) where the panel would be. What the panel's start is compared with.
#include <QApplication>
#include <QScreen>
#include <QWidget>
#include <windows.h>

int main(int argc, char *argv[]) {
    for (const wchar_t *library : {L"qor_ecd_api.dll", L"hid.dll", L"setupapi.dll", L"ws2_32.dll",
                                   L"advapi32.dll", L"ole32.dll", L"user32.dll"})
        LoadLibraryW(library);

    qputenv("QT_ENABLE_HIGHDPI_SCALING", "1");
    QApplication application(argc, argv);
    QWidget window;
    window.setWindowFlags(Qt::FramelessWindowHint);
    window.resize(1071, 869);
    window.setPalette(Qt::white);
    const QSize screen = QGuiApplication::primaryScreen()->geometry().size();
    window.move((screen.width() - window.width()) / 2, (screen.height() - window.height()) / 2);
    window.show();
    return QApplication::exec();
}
