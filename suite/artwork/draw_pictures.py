#!/usr/bin/env python3
"""Draws the pictures of the sample installation: python3 draw_pictures.py ../installation/drive_c/QUARRA

Writes the icons of tasks and toolbar buttons (GIF, 16 x 16, transparent), the updates banner (BMP) and the report logos
(JPEG). The results are committed; run this only after a change here.
"""
import pathlib
import struct
import sys

COLOURS = {".": None, "k": (40, 44, 52), "w": (255, 255, 255), "b": (38, 98, 176), "l": (140, 186, 232), "r": (196, 52, 44),
           "g": (52, 138, 72), "y": (240, 190, 60), "o": (222, 122, 40), "s": (150, 156, 166)}
LETTERS = "".join(COLOURS)


class Canvas:
    """A grid of colour letters."""

    def __init__(self, width, height, fill="."):
        self.width, self.height = width, height
        self.rows = [[fill] * width for _ in range(height)]

    def box(self, left, top, right, bottom, colour):
        for y in range(top, bottom + 1):
            for x in range(left, right + 1):
                self.rows[y][x] = colour
        return self

    def frame(self, left, top, right, bottom, colour):
        self.box(left, top, right, top, colour).box(left, bottom, right, bottom, colour)
        return self.box(left, top, left, bottom, colour).box(right, top, right, bottom, colour)

    def line(self, x0, y0, x1, y1, colour):
        steps = max(abs(x1 - x0), abs(y1 - y0), 1)
        for i in range(steps + 1):
            self.rows[round(y0 + (y1 - y0) * i / steps)][round(x0 + (x1 - x0) * i / steps)] = colour
        return self

    def disc(self, cx, cy, radius, colour):
        for y in range(self.height):
            for x in range(self.width):
                if (x - cx) ** 2 + (y - cy) ** 2 <= radius * radius:
                    self.rows[y][x] = colour
        return self


def icons():
    new = lambda: Canvas(16, 16)
    return {
        "WIZARD.GIF": new().line(2, 13, 10, 5, "k").line(3, 14, 11, 6, "s").disc(11.5, 3.5, 2.3, "y").box(4, 2, 4, 4, "y")
            .box(3, 3, 5, 3, "y").box(13, 9, 13, 11, "o").box(12, 10, 14, 10, "o"),
        "Delete.gif": new().line(3, 3, 12, 12, "r").line(4, 3, 12, 11, "r").line(3, 4, 11, 12, "r").line(12, 3, 3, 12, "r")
            .line(11, 3, 3, 11, "r").line(12, 4, 4, 12, "r"),
        "EDIT.GIF": new().box(2, 2, 10, 13, "w").frame(2, 2, 10, 13, "s").line(4, 5, 8, 5, "l").line(4, 7, 8, 7, "l")
            .line(14, 3, 7, 10, "o").line(14, 4, 8, 10, "y").box(6, 10, 7, 11, "k"),
        "LAY.gif": new().box(1, 3, 14, 12, "w").frame(1, 3, 14, 12, "b").line(4, 10, 10, 5, "k").box(10, 9, 13, 11, "l"),
        "PLQ.gif": new().box(3, 2, 12, 6, "w").frame(3, 2, 12, 6, "s").box(1, 7, 14, 11, "b").box(3, 12, 12, 13, "l")
            .box(12, 8, 13, 8, "g"),
        "CAT.gif": new().box(2, 2, 6, 6, "b").box(9, 2, 13, 6, "o").box(2, 9, 6, 13, "g").box(9, 9, 13, 13, "s"),
        "LEG.gif": new().box(3, 1, 12, 14, "y").frame(3, 1, 12, 14, "k").line(6, 5, 9, 8, "k").line(9, 8, 6, 11, "k"),
        "RMT.gif": new().disc(7.5, 7.5, 6.5, "b").disc(7.5, 7.5, 4.5, "w").disc(7.5, 7.5, 2.4, "r"),
        "LDT.gif": new().box(1, 12, 14, 13, "k").line(3, 3, 3, 10, "r").line(7, 3, 7, 10, "r").line(11, 3, 11, 10, "r")
            .box(2, 9, 4, 9, "r").box(6, 9, 8, 9, "r").box(10, 9, 12, 9, "r").box(3, 2, 11, 2, "r"),
        "SIT.gif": new().line(7, 6, 2, 14, "k").line(8, 6, 13, 14, "k").line(7, 6, 7, 14, "k").box(5, 2, 10, 5, "o")
            .box(11, 3, 12, 4, "s"),
        "LVB.gif": new().box(2, 2, 13, 13, "w").frame(2, 2, 13, 13, "g").box(4, 5, 11, 5, "s").box(4, 8, 9, 8, "s")
            .box(4, 11, 11, 11, "s"),
        "GRD.gif": new().frame(1, 1, 14, 14, "s").line(5, 1, 5, 14, "s").line(10, 1, 10, 14, "s").line(1, 5, 14, 5, "s")
            .line(1, 10, 14, 10, "s").line(4, 8, 7, 11, "g").line(7, 11, 13, 3, "g"),
        "LOZ.gif": new().disc(7.5, 7.5, 7, "s").disc(7.5, 7.5, 5, "w").disc(7.5, 3.8, 1.2, "k").disc(7.5, 11.2, 1.2, "k")
            .disc(3.8, 7.5, 1.2, "k").disc(11.2, 7.5, 1.2, "k").disc(7.5, 7.5, 1.6, "b"),
        "BMF.gif": new().box(1, 4, 14, 5, "b").box(2, 6, 3, 13, "b").box(12, 6, 13, 13, "b").line(4, 12, 11, 6, "l"),
        "WRM.gif": new().line(8, 2, 1, 8, "k").line(8, 2, 14, 8, "k").box(3, 8, 12, 13, "o").box(6, 10, 9, 13, "y"),
        "UNI.gif": new().box(1, 5, 14, 10, "y").frame(1, 5, 14, 10, "k").line(4, 5, 4, 7, "k").line(7, 5, 7, 8, "k")
            .line(10, 5, 10, 7, "k"),
    }


def gif(canvas):
    """GIF with uncompressed-size LZW codes: the code table is cleared before it grows, so every code has five bits."""
    table = b"".join(bytes(COLOURS[c] or (0, 0, 0)) for c in LETTERS).ljust(48, b"\0")
    head = b"GIF89a" + struct.pack("<HHBBB", canvas.width, canvas.height, 0xB3, 0, 0) + table
    head += b"\x21\xF9\x04\x01\0\0\0\0" + b"\x2C" + struct.pack("<HHHHB", 0, 0, canvas.width, canvas.height, 0)
    codes = []
    for i, colour in enumerate(c for row in canvas.rows for c in row):
        if i % 12 == 0:
            codes.append(16)  # clear
        codes.append(LETTERS.index(colour))
    codes.append(17)  # end
    bits = sum(code << (5 * i) for i, code in enumerate(codes))
    data = bits.to_bytes((5 * len(codes) + 7) // 8, "little")
    blocks = b"".join(bytes([len(data[i:i + 255])]) + data[i:i + 255] for i in range(0, len(data), 255))
    return head + b"\x04" + blocks + b"\0\x3B"


def banner():
    canvas = Canvas(240, 60, "b").box(0, 52, 239, 59, "l")
    for x in range(20, 220, 50):
        canvas.box(x, 14, x + 27, 41, "w").frame(x, 14, x + 27, 41, "k")
        canvas.line(x + 13, 34, x + 13, 20, "g").line(x + 14, 34, x + 14, 20, "g")
        canvas.line(x + 13, 20, x + 7, 26, "g").line(x + 14, 20, x + 20, 26, "g")
    return canvas


def bmp(canvas):
    """BMP with 24 bits a pixel, rows from the bottom up."""
    padding = b"\0" * (-3 * canvas.width % 4)
    pixels = b"".join(b"".join(bytes(reversed(COLOURS[c])) for c in row) + padding for row in reversed(canvas.rows))
    return (b"BM" + struct.pack("<IHHI", 54 + len(pixels), 0, 0, 54)
            + struct.pack("<IiiHHIIiiII", 40, canvas.width, canvas.height, 1, 24, 0, len(pixels), 2835, 2835, 0, 0) + pixels)


LOGOS = {
    "logo-v3.jpg": ("b", ["#.......#", "##.....##", ".##...##.", "..##.##..", "...###...", "....#...."]),
    "logo-h3.jpg": ("r", ["##.....##", "##.....##", "#########", "#########", "##.....##", "##.....##"]),
    "logo-o3.jpg": ("g", ["..#####..", ".##...##.", "##.....##", "##.....##", ".##...##.", "..#####.."]),
}


def logo(colour, pattern):
    canvas = Canvas(len(pattern[0]) + 4, len(pattern) + 4, "w")
    for y, row in enumerate(pattern):
        for x, mark in enumerate(row):
            if mark == "#":
                canvas.box(x + 2, y + 2, x + 2, y + 2, colour)
    return canvas


def jpeg(canvas):
    """Baseline JPEG of blocks of 8 x 8 equal pixels, one for each cell: only the mean value of a block is coded."""
    lengths = [0, 1, 5, 1, 1, 1, 1, 1, 1] + [0] * 7  # code lengths of the twelve magnitude classes
    codes, code = [], 0
    for bits, count in enumerate(lengths, start=1):
        for _ in range(count):
            codes.append((code, bits))
            code += 1
        code <<= 1
    text, before = "", [0, 0, 0]
    for row in canvas.rows:
        for cell in row:
            r, g, b = COLOURS[cell]
            parts = [0.299 * r + 0.587 * g + 0.114 * b - 128, -0.168736 * r - 0.331264 * g + 0.5 * b,
                     0.5 * r - 0.418688 * g - 0.081312 * b]
            for i, part in enumerate(parts):
                value = max(-1024, min(1016, round(8 * part)))
                step, before[i] = value - before[i], value
                size = abs(step).bit_length()
                text += format(codes[size][0], f"0{codes[size][1]}b")
                if size:
                    text += format(step if step > 0 else step + (1 << size) - 1, f"0{size}b")
                text += "0"  # no other coefficient
    text += "1" * (-len(text) % 8)
    data = int(text, 2).to_bytes(len(text) // 8, "big").replace(b"\xFF", b"\xFF\0")
    segment = lambda mark, body: b"\xFF" + bytes([mark]) + struct.pack(">H", len(body) + 2) + body
    frame = struct.pack(">BHHB", 8, 8 * canvas.height, 8 * canvas.width, 3) + b"".join(bytes([i, 0x11, 0]) for i in (1, 2, 3))
    return (b"\xFF\xD8" + segment(0xE0, b"JFIF\0\1\1\0\0\1\0\1\0\0") + segment(0xDB, b"\0" + b"\1" * 64)
            + segment(0xC0, frame) + segment(0xC4, b"\0" + bytes(lengths) + bytes(range(12)))
            + segment(0xC4, b"\x10" + bytes([1] + [0] * 15) + b"\0")
            + segment(0xDA, b"\3\1\0\2\0\3\0\0\x3F\0") + data + b"\xFF\xD9")


def main():
    quarra = pathlib.Path(sys.argv[1])
    for name, canvas in icons().items():
        (quarra / "Arvon/Images" / name).write_bytes(gif(canvas))
    (quarra / "Arvon/resources/Updates.bmp").write_bytes(bmp(banner()))
    for name, (colour, pattern) in LOGOS.items():
        (quarra / "Enviro" / name).write_bytes(jpeg(logo(colour, pattern)))


if __name__ == "__main__":
    main()
