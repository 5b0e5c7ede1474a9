// From a click on the palette widget to a pixel of the palette image, on plain values.
#pragma once

#include <optional>

struct PalettePoint {
    int x, y;
};

struct PaletteSize {
    int width, height;
};

// point: in the widget's coordinates, device-independent pixels. The image is shown scaled to the whole
// widget. Nothing when the point lies outside, or when one of the sizes is empty.
inline std::optional<PalettePoint> toPalettePixel(PalettePoint point, PaletteSize widget, PaletteSize image) {
    if (point.x < 0 || point.y < 0 || point.x >= widget.width || point.y >= widget.height ||
        image.width <= 0 || image.height <= 0)
        return std::nullopt;
    return PalettePoint{point.x * image.width / widget.width, point.y * image.height / widget.height};
}
