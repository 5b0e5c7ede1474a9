// Registers the pictures and style sheets, which the linker would otherwise drop from the static library.
#include <QtGlobal>

extern "C" void qor_form_resources();

void qor_form_resources() {
    Q_INIT_RESOURCE(pictures);
    Q_INIT_RESOURCE(styles);
}
