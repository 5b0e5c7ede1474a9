// libFuzzer entry: an equalizer curve in a file that the user imports.
#include "fuzz/Require.h"
#include "ui/pages/EqCurveText.h"

#include <algorithm>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const EqCurveText::Parsed parsed = EqCurveText::parse({reinterpret_cast<const char *>(data), size});
    if (!parsed.gains)
        return 0;
    ExtBlock block{};
    std::copy(parsed.gains->begin(), parsed.gains->end(), block.gain);
    for (const int gain : *parsed.gains)
        require(gain >= -20 && gain <= 20);
    require(EqCurveText::parse(EqCurveText::graphicEq(block)).gains == parsed.gains);
    return 0;
}
