#!/usr/bin/env python3
"""Draws bar96.bmp and bar192.bmp beside itself: the pictures of the bar's buttons, for displays of 96 and of 192 dpi.

A column holds one button, in the order of Command (scene.h); of the sixteen that there may be, those with a button are
drawn. The rows are its states. A cell is measured in 24 units, one or two pixels each, and all straight edges lie on
units, so that they are sharp.
"""
import os
import struct

UNITS = 24
SAMPLES = 4  # in each direction of a pixel

PANEL = (30, 37, 47)  # colourPanel (look.cpp)
# ground, border and ink, and whether the ink is pressed in: disabled; disabled and down; at rest; down; under the pointer;
# under the pointer and down
STATES = (
    (PANEL, PANEL, (74, 88, 102), False),
    ((24, 30, 38), (52, 64, 78), (74, 88, 102), True),
    (PANEL, PANEL, (206, 216, 226), False),
    ((16, 52, 80), (46, 132, 192), (206, 216, 226), True),
    ((44, 55, 69), (70, 88, 106), (232, 244, 252), False),
    ((20, 66, 100), (126, 200, 240), (255, 255, 255), True),
)


def rect(left, top, right, bottom):
    return lambda x, y: left <= x < right and top <= y < bottom


def outline(left, top, right, bottom, width=2):
    outer, inner = rect(left, top, right, bottom), rect(left + width, top + width, right - width, bottom - width)
    return lambda x, y: outer(x, y) and not inner(x, y)


def ring(cx, cy, outer, inner):
    return lambda x, y: inner * inner <= (x - cx) ** 2 + (y - cy) ** 2 < outer * outer


def diagonal(start, end, width):
    """A stroke that falls to the right at 45 degrees."""
    return lambda x, y: 2 * start <= x + y < 2 * end and abs(x - y) < width * 0.7


def arrow(tip, base, middle, half):
    """A triangle whose tip looks to the left or to the right."""
    return lambda x, y: 0 <= (x - tip) / (base - tip) < 1 and abs(y - middle) <= half * (x - tip) / (base - tip)


def peak(middle, top, bottom, half):
    """A triangle that stands on its base."""
    return lambda x, y: top <= y < bottom and abs(x - middle) <= half * (y - top) / (bottom - top)


def any_of(*shapes):
    return lambda x, y: any(shape(x, y) for shape in shapes)


def without(shape, hole):
    return lambda x, y: shape(x, y) and not hole(x, y)


LENS = any_of(ring(10, 10, 6.5, 4.6), diagonal(14.4, 20, 2))
ICONS = (
    any_of(rect(3, 5, 10, 8), outline(3, 7, 21, 19)),  # open
    any_of(LENS, rect(7, 9, 13, 11), rect(9, 7, 11, 13)),  # zoom in
    any_of(LENS, rect(7, 9, 13, 11)),  # zoom out
    any_of(
        rect(3, 6, 5, 18), rect(19, 6, 21, 18), rect(9, 11, 15, 13), arrow(6, 10, 12, 4), arrow(18, 14, 12, 4)
    ),  # all
    any_of(rect(5, 6, 7, 18), arrow(8, 18, 12, 6)),  # start
    any_of(rect(17, 6, 19, 18), arrow(16, 6, 12, 6)),  # end
    any_of(without(outline(4, 3, 15, 16), rect(8, 7, 20, 21)), outline(9, 8, 20, 21)),  # copy
    any_of(outline(3, 4, 21, 20), ring(8, 9, 2, 0), peak(14, 9, 18, 8), peak(8, 13, 18, 5)),  # picture
    any_of(rect(7, 3, 17, 7), without(rect(3, 8, 21, 17), rect(7, 13, 17, 17)), outline(7, 13, 17, 21)),  # print
)


def mix(ground, ink, part):
    return tuple(round(low + (high - low) * part) for low, high in zip(ground, ink))


def pixel(icon, state, px, py, scale):
    """The colour of a pixel of a cell."""
    ground, border, ink, pressed = state
    last = UNITS * scale - scale
    if not (scale <= px < last and scale <= py < last):
        return border
    hits = 0
    for i in range(SAMPLES * SAMPLES):
        x = (px + (i % SAMPLES + 0.5) / SAMPLES) / scale
        y = (py + (i // SAMPLES + 0.5) / SAMPLES) / scale
        hits += icon(x, y - pressed)
    return mix(ground, ink, hits / SAMPLES**2)


def sheet(scale):
    """Rows of colours."""
    cell = UNITS * scale
    return [
        [pixel(ICONS[x // cell], STATES[y // cell], x % cell, y % cell, scale) for x in range(cell * len(ICONS))]
        for y in range(cell * len(STATES))
    ]


def bitmap(rows, dpi):
    """A file with a table of colours and 8 bits a pixel."""
    table = sorted({colour for row in rows for colour in row})
    number = {colour: index for index, colour in enumerate(table)}
    assert len(table) <= 256
    width, height = len(rows[0]), len(rows)
    padding = b"\0" * (-width % 4)
    pixels = b"".join(bytes(number[colour] for colour in row) + padding for row in reversed(rows))
    colours = b"".join(bytes((blue, green, red, 0)) for red, green, blue in table)
    ahead = 14 + 40 + len(colours)
    metre = round(dpi / 0.0254)
    return (
        struct.pack("<2sIHHI", b"BM", ahead + len(pixels), 0, 0, ahead)
        + struct.pack("<IiiHHIIiiII", 40, width, height, 1, 8, 0, len(pixels), metre, metre, len(table), 0)
        + colours
        + pixels
    )


def main():
    folder = os.path.dirname(os.path.abspath(__file__))
    for dpi in (96, 192):
        with open(os.path.join(folder, f"bar{dpi}.bmp"), "wb") as file:
            file.write(bitmap(sheet(dpi // 96), dpi))


if __name__ == "__main__":
    main()
