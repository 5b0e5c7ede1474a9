// Registers the pictures and style sheets, which the linker would otherwise drop from the static library.
#include <QtGlobal>

extern "C" void qor_form_resources();

void qor_form_resources() {
    Q_INIT_RESOURCE(toobar);
    Q_INIT_RESOURCE(left);
    Q_INIT_RESOURCE(right);
    Q_INIT_RESOURCE(page4);
    Q_INIT_RESOURCE(dlg);
    Q_INIT_RESOURCE(demo);
    Q_INIT_RESOURCE(styles);
}
