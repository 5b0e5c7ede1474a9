#include "pages/equalizer/FileDrop.h"

#include "helpers/UniqueResource.h"

#include <ole2.h>
#include <QCoreApplication>
#include <QEvent>
#include <shellapi.h>

namespace {

struct DropTraits {
    using Type = HDROP;
    static Type empty() noexcept { return nullptr; }
    static void release(Type drop) noexcept { DragFinish(drop); }
};
using UniqueDrop = UniqueResource<DropTraits>;

constexpr UINT kCopyGlobalData = 0x0049; // brings the names along, without a name of its own in the headers

void acceptFiles(HWND window) {
    RevokeDragDrop(window); // set up by Qt for every window, and preferred to the message by Windows
    for (const UINT message : {UINT{WM_DROPFILES}, UINT{WM_COPYDATA}, kCopyGlobalData})
        ChangeWindowMessageFilterEx(window, message, MSGFLT_ALLOW, nullptr);
    DragAcceptFiles(window, TRUE);
}

QString firstFile(HDROP drop) {
    const UINT length = DragQueryFileW(drop, 0, nullptr, 0);
    std::wstring path(length, L'\0');
    DragQueryFileW(drop, 0, path.data(), length + 1);
    return QString::fromStdWString(path);
}

} // namespace

FileDrop::FileDrop(QWidget &window) : window_(window) {
    window_.installEventFilter(this);
    QCoreApplication::instance()->installNativeEventFilter(this);
}

FileDrop::~FileDrop() {
    QCoreApplication::instance()->removeNativeEventFilter(this);
}

// The native window is made when the widget is first shown.
bool FileDrop::eventFilter(QObject *object, QEvent *event) {
    if (event->type() == QEvent::Show && object == &window_) {
        const HWND window = reinterpret_cast<HWND>(window_.winId());
        if (window != accepting_)
            acceptFiles(window);
        accepting_ = window;
    }
    return QObject::eventFilter(object, event);
}

bool FileDrop::nativeEventFilter(const QByteArray &, void *message, long *) {
    const MSG &received = *static_cast<const MSG *>(message);
    if (received.message != WM_DROPFILES || received.hwnd != accepting_)
        return false;
    const UniqueDrop drop(reinterpret_cast<HDROP>(received.wParam));
    POINT place{};
    DragQueryPoint(drop.get(), &place);
    emit dropped(firstFile(drop.get()), QPoint(place.x, place.y) / window_.devicePixelRatioF());
    return true;
}
