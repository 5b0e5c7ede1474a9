#!/usr/bin/env python3
"""palette.py PICTURE.png: the LED palette, 256 x 256 pixels. Hue runs from left to right; each column goes from
white at the top to the full colour at three quarters of the height, and on to its dark shade below."""
import colorsys
import struct
import sys
import zlib

SIZE = 256
FULL_COLOUR_ROW = 192
DARKEST = 0.35


def pixel(x, y):
    saturation = min(y / FULL_COLOUR_ROW, 1.0)
    darkness = max(y - FULL_COLOUR_ROW, 0) / (SIZE - 1 - FULL_COLOUR_ROW)
    value = 1.0 - darkness * (1.0 - DARKEST)
    return bytes(round(255 * c) for c in colorsys.hsv_to_rgb(x / SIZE, saturation, value))


def chunk(kind, data):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))


rows = b"".join(b"\0" + b"".join(pixel(x, y) for x in range(SIZE)) for y in range(SIZE))
header = struct.pack(">IIBBBBB", SIZE, SIZE, 8, 2, 0, 0, 0)
with open(sys.argv[1], "wb") as picture:
    picture.write(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(rows, 9))
                  + chunk(b"IEND", b""))
