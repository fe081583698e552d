#!/usr/bin/env python3
"""Draws levelview.ico beside itself: three level meters on a dark tile, at 16, 24, 32, 48 and 256 pixels.

Everything is measured in sixteenths of the picture, so that at 16 pixels each edge falls between two of them.
"""
import os
import struct
import zlib

SAMPLES = 4  # in each direction of a pixel
METERS = ((3, 7), (7, 3), (11, 5))  # the left edge and the top of each
BOTTOM, WIDTH = 13, 2
ZONES = ((4, (255, 90, 79)), (6, (255, 210, 63)), (BOTTOM, (61, 220, 132)))  # down to where a colour goes
UNLIT = (52, 68, 86)


def in_tile(x, y, inset):
    """Whether a point lies in the tile, whose corners are round."""
    radius = 3 - inset
    dx, dy = max(abs(x - 8) - (8 - inset - radius), 0), max(abs(y - 8) - (8 - inset - radius), 0)
    return dx * dx + dy * dy <= radius * radius


def color_at(x, y, segments):
    """The colour of a point, or None outside the tile."""
    if not in_tile(x, y, 0):
        return None
    if not in_tile(x, y, 0.4):
        return 70, 92, 118
    for left, top in METERS:
        if left <= x < left + WIDTH and 3 <= y < BOTTOM and not (segments and y % 1 < 0.16):
            return next(color for down, color in ZONES if y < down) if y >= top else UNLIT
    shade = y / 16
    return tuple(round(light + (dark - light) * shade) for light, dark in ((38, 18), (54, 26), (74, 36)))


def picture(size):
    """Rows of (red, green, blue, alpha)."""
    segments = size >= 32
    rows = []
    for py in range(size):
        row = []
        for px in range(size):
            found = [
                color_at((px + (i + 0.5) / SAMPLES) * 16 / size, (py + (k + 0.5) / SAMPLES) * 16 / size, segments)
                for i in range(SAMPLES)
                for k in range(SAMPLES)
            ]
            seen = [color for color in found if color]
            mean = [round(sum(color[part] for color in seen) / len(seen)) if seen else 0 for part in range(3)]
            row.append((*mean, round(255 * len(seen) / len(found))))
        rows.append(row)
    return rows


def bitmap(rows):
    """A header that counts the mask's rows too, the rows from the bottom up, and the rows of the mask."""
    size = len(rows)
    pixels = b"".join(bytes((blue, green, red, alpha)) for row in reversed(rows) for red, green, blue, alpha in row)
    mask = b""
    for row in reversed(rows):
        bits = "".join("0" if alpha >= 128 else "1" for _, _, _, alpha in row)
        bits += "0" * (-size % 32)
        mask += int(bits, 2).to_bytes(len(bits) // 8, "big")
    return struct.pack("<IiiHHIIiiII", 40, size, 2 * size, 1, 32, 0, len(pixels) + len(mask), 0, 0, 0, 0) + pixels + mask


def png(rows):
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    size = len(rows)
    raw = b"".join(b"\0" + b"".join(bytes(pixel) for pixel in row) for row in rows)
    header = chunk(b"IHDR", struct.pack(">IIBBBBB", size, size, 8, 6, 0, 0, 0))
    return b"\x89PNG\r\n\x1a\n" + header + chunk(b"IDAT", zlib.compress(raw, 9)) + chunk(b"IEND", b"")


images = [(size, (bitmap if size < 256 else png)(picture(size))) for size in (16, 24, 32, 48, 256)]
place = 6 + 16 * len(images)
head, body = struct.pack("<HHH", 0, 1, len(images)), b""
for size, data in images:
    head += struct.pack("<BBBBHHII", size % 256, size % 256, 0, 0, 1, 32, len(data), place + len(body))
    body += data
with open(os.path.join(os.path.dirname(os.path.abspath(__file__)), "levelview.ico"), "wb") as file:
    file.write(head + body)
