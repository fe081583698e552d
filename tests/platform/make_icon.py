#!/usr/bin/env python3
"""Makes gdi_icon.ico and gdi_cursor.cur beside itself: images whose pixels tell which one of them a test got.

Every image is filled with a colour of its own, black where there is one bit. Three pixels at the left of its top row
differ: a white one, a transparent one, and one that turns what is below it, or is half transparent where there is alpha.
The left pixel of the last row is green, or black again.
"""
import os
import struct
import zlib

GREEN = (0, 255, 0)


def picture(size, fill):
    """Rows of (red, green, blue), and of marks: ' ' opaque, 't' transparent, 'x' turning or half transparent."""
    colors = [[fill] * size for _ in range(size)]
    marks = [[" "] * size for _ in range(size)]
    colors[0][:3] = [(255, 255, 255), (0, 0, 0), (255, 255, 255)]
    marks[0][:3] = [" ", "t", "x"]
    colors[-1][0] = GREEN
    return colors, marks


def padded(bits, width):
    """A row of numbers of `width` bits, as bytes filled up to words of 32 bits."""
    number = "".join(format(value, "0%db" % width) for value in bits)
    number += "0" * (-len(number) % 32)
    return int(number, 2).to_bytes(len(number) // 8, "big")


def plain(size, bits, fill, alpha=True):
    """An image as a header, colours, rows from the bottom up, and rows of the mask."""
    colors, marks = picture(size, fill)
    table = [(0, 0, 0), fill, GREEN, (255, 255, 255)] if bits > 1 else [(0, 0, 0), (255, 255, 255)]
    nearest = lambda color: table.index(color) if color in table else int(sum(color) > 380)
    rows, mask = b"", b""
    for row, line in zip(reversed(colors), reversed(marks)):
        if bits <= 8:
            rows += padded([nearest(color) for color in row], bits)
        elif bits == 24:
            data = b"".join(bytes(reversed(color)) for color in row)
            rows += data + bytes(-len(data) % 4)
        else:
            opacity = {" ": 255, "t": 0, "x": 128} if alpha else {" ": 0, "t": 0, "x": 0}
            rows += b"".join(bytes(reversed(color)) + bytes([opacity[mark]]) for color, mark in zip(row, line))
        mask += padded([int(mark != " ") for mark in line], 1)
    header = struct.pack("<IiiHHIIiiII", 40, size, 2 * size, 1, bits, 0, len(rows) + len(mask), 0, 0, 0, 0)
    palette = b""
    if bits <= 8:
        for i in range(1 << bits):
            red, green, blue = table[i] if i < len(table) else (0, 0, 0)
            palette += bytes([blue, green, red, 0])
    return header + palette + rows + mask


def png(size, fill):
    colors, marks = picture(size, fill)
    opacity = {" ": 255, "t": 0, "x": 128}
    raw = b"".join(
        b"\0" + b"".join(bytes(color) + bytes([opacity[mark]]) for color, mark in zip(row, line))
        for row, line in zip(colors, marks)
    )

    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    header = struct.pack(">IIBBBBB", size, size, 8, 6, 0, 0, 0)
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(raw, 9)) + chunk(b"IEND", b"")


def write(name, kind, images):
    """kind: 1 for an icon, 2 for a cursor, whose entries have a hot spot instead of planes and bits."""
    place = 6 + 16 * len(images)
    head, body = struct.pack("<HHH", 0, kind, len(images)), b""
    for size, first, second, colors, data in images:
        head += struct.pack("<BBBBHHII", size % 256, size % 256, colors, 0, first, second, len(data), place + len(body))
        body += data
    with open(os.path.join(os.path.dirname(os.path.abspath(__file__)), name), "wb") as file:
        file.write(head + body)


write("gdi_icon.ico", 1, [
    (32, 1, 1, 2, plain(32, 1, (0, 0, 0))),
    (32, 1, 32, 0, plain(32, 32, (255, 0, 0))),
    (16, 1, 8, 0, plain(16, 8, (0, 0, 255))),
    (16, 1, 4, 16, plain(16, 4, (255, 0, 255))),
    (20, 1, 1, 2, plain(20, 1, (0, 0, 0))),
    (24, 1, 4, 16, plain(24, 4, (128, 0, 0))),
    (28, 1, 24, 0, plain(28, 24, (0, 0, 128))),
    (40, 1, 32, 0, plain(40, 32, (128, 128, 0), alpha=False)),
    (48, 1, 32, 0, png(48, (255, 128, 0))),
])
write("gdi_cursor.cur", 2, [
    (32, 3, 4, 2, plain(32, 1, (0, 0, 0))),
    (48, 7, 9, 0, plain(48, 32, (255, 0, 0))),
])
