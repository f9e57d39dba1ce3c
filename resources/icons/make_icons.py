#!/usr/bin/env python3
"""Draws Tavrel's status bitmaps and tax icon as 64 x 64 PNG files.

A one-off generator, not part of the build: the PNG files it writes are committed beside it and
compiled in through resources/icons.qrc. Run it again only to change a picture:

    python3 resources/icons/make_icons.py                # rewrites the PNG files here
    python3 resources/icons/make_icons.py --sheet x.png  # also a 4x contact sheet to look at

Needs nothing beyond the Python standard library. Shapes are described in a 64-unit square and
anti-aliased by 4 x 4 supersampling, so the output is the same on every run. The files carry a
resolution of 384 dpi: their natural size is then 1/6 inch (240 twips), the size of the 16-pixel
screen bitmaps they replace, and the report's "75%" prints them 1/8 inch high.

Status values of the "Complete" column and their bitmaps:
  0 -> 103 not started   grey empty circle
  1 -> 104 ordered       blue circle, a quarter filled
  2 -> 105 acknowledged  blue circle, half filled
  4 -> 106 shipped       blue circle, three quarters filled
  6 -> 107 received      blue disc, full
  7 -> 108 installed     green circle with a green check mark
  8 -> 109 back-ordered  orange clock
  9 -> 110 damaged       red cross
  10 -> 112 complete     green disc with a white check mark
  any other -> 111       grey circle with a question mark
"""

import math
import os
import struct
import sys
import zlib

SIZE = 64
SAMPLES = 4
DOTS_PER_METER = 15118  # 384 dpi

GREY = (120, 120, 120)
BLUE = (30, 90, 200)
GREEN = (20, 150, 60)
ORANGE = (230, 130, 0)
RED = (210, 30, 30)
DARK = (40, 40, 40)
WHITE = (255, 255, 255)

CENTRE = 32.0
RADIUS = 27.0  # outer edge of the circles
RING = 5.0  # stroke width of the circles


# ---- shapes: functions of a point that say whether it is inside ---------------------------------

def disc(cx, cy, r):
    return lambda x, y: (x - cx) ** 2 + (y - cy) ** 2 <= r * r


def ring(cx, cy, r, width):
    inner, outer = r - width / 2, r + width / 2
    return lambda x, y: inner * inner <= (x - cx) ** 2 + (y - cy) ** 2 <= outer * outer


def clock_angle(cx, cy, x, y):
    """Angle of a point seen from the centre, clockwise from 12 o'clock, 0..360."""
    return math.degrees(math.atan2(x - cx, cy - y)) % 360.0


def pie(cx, cy, r, sweep):
    """A slice from 12 o'clock clockwise over sweep degrees."""
    inside = disc(cx, cy, r)
    return lambda x, y: inside(x, y) and clock_angle(cx, cy, x, y) <= sweep


def segment(x1, y1, x2, y2, width):
    """A straight stroke with round ends."""
    dx, dy = x2 - x1, y2 - y1
    length2 = dx * dx + dy * dy
    half2 = (width / 2) ** 2

    def inside(x, y):
        t = 0.0 if length2 == 0 else max(0.0, min(1.0, ((x - x1) * dx + (y - y1) * dy) / length2))
        px, py = x1 + t * dx - x, y1 + t * dy - y
        return px * px + py * py <= half2
    return inside


def polyline(points, width):
    parts = [segment(*points[i], *points[i + 1], width) for i in range(len(points) - 1)]
    return lambda x, y: any(part(x, y) for part in parts)


def arc(cx, cy, r, start, sweep, width):
    """A stroke along a circle from start clockwise over sweep degrees, with round ends."""
    band = ring(cx, cy, r, width)

    def end(angle):
        a = math.radians(angle)
        return disc(cx + r * math.sin(a), cy - r * math.cos(a), width / 2)
    first, last = end(start), end(start + sweep)

    def inside(x, y):
        if first(x, y) or last(x, y):
            return True
        return band(x, y) and (clock_angle(cx, cy, x, y) - start) % 360.0 <= sweep
    return inside


def rounded_rect(left, top, right, bottom, radius):
    def inside(x, y):
        nx = min(max(x, left + radius), right - radius)
        ny = min(max(y, top + radius), bottom - radius)
        return (x - nx) ** 2 + (y - ny) ** 2 <= radius * radius
    return inside


def frame(left, top, right, bottom, radius, width):
    outer = rounded_rect(left, top, right, bottom, radius)
    inner = rounded_rect(left + width, top + width, right - width, bottom - width,
                         max(0.0, radius - width))
    return lambda x, y: outer(x, y) and not inner(x, y)


# ---- the pictures: lists of (shape, colour) painted in order ------------------------------------

def circle(colour):
    return (ring(CENTRE, CENTRE, RADIUS - RING / 2, RING), colour)


def progress(sweep):
    return [circle(BLUE), (pie(CENTRE, CENTRE, RADIUS - RING - 3, sweep), BLUE)]


CHECK = [(18, 33), (28, 43), (45, 23)]

ICONS = {
    103: [circle(GREY)],
    104: progress(90),
    105: progress(180),
    106: progress(270),
    107: [circle(BLUE), (disc(CENTRE, CENTRE, RADIUS - RING - 3), BLUE)],
    108: [circle(GREEN), (polyline(CHECK, 7), GREEN)],
    109: [circle(ORANGE),
          (segment(CENTRE, CENTRE, CENTRE, 15, 5.5), ORANGE),
          (segment(CENTRE, CENTRE, 44, 38, 5.5), ORANGE)],
    110: [(segment(12, 12, 52, 52, 10), RED), (segment(52, 12, 12, 52, 10), RED)],
    111: [circle(GREY),
          (arc(CENTRE, 24, 8, 270, 240, 5.5), GREY),
          (segment(CENTRE + 8 * math.sin(math.radians(150)), 24 + 8 * math.cos(math.radians(30)),
                   CENTRE, 38, 5.5), GREY),
          (disc(CENTRE, 46, 3.5), GREY)],
    112: [(disc(CENTRE, CENTRE, RADIUS), GREEN), (polyline(CHECK, 7), WHITE)],
    'tax': [(frame(2, 13, 62, 51, 6, 3.5), DARK),
            # T
            (segment(10, 21, 22, 21, 4), DARK), (segment(16, 21, 16, 43, 4), DARK),
            # A
            (polyline([(24.5, 43), (30, 21), (35.5, 43)], 4), DARK),
            (segment(27, 36, 33, 36, 3.5), DARK),
            # X
            (segment(41, 21, 53, 43, 4), DARK), (segment(53, 21, 41, 43, 4), DARK)],
}


# ---- rasterising and PNG writing ----------------------------------------------------------------

def render(layers):
    """Returns rows of (r, g, b, a) pixels, each layer painted over the ones before."""
    rows = []
    offsets = [(i + 0.5) / SAMPLES for i in range(SAMPLES)]
    for py in range(SIZE):
        row = []
        for px in range(SIZE):
            r = g = b = a = 0.0  # premultiplied
            for shape, colour in layers:
                hits = sum(1 for oy in offsets for ox in offsets if shape(px + ox, py + oy))
                if not hits:
                    continue
                cover = hits / (SAMPLES * SAMPLES)
                r = colour[0] * cover + r * (1 - cover)
                g = colour[1] * cover + g * (1 - cover)
                b = colour[2] * cover + b * (1 - cover)
                a = cover + a * (1 - cover)
            if a > 0:
                row.append((round(r / a), round(g / a), round(b / a), round(a * 255)))
            else:
                row.append((0, 0, 0, 0))
        rows.append(row)
    return rows


def chunk(kind, data):
    body = kind + data
    return struct.pack('>I', len(data)) + body + struct.pack('>I', zlib.crc32(body) & 0xFFFFFFFF)


def png(rows, dots_per_meter=DOTS_PER_METER):
    height, width = len(rows), len(rows[0])
    raw = b''.join(b'\x00' + bytes(v for pixel in row for v in pixel) for row in rows)
    return (b'\x89PNG\r\n\x1a\n'
            + chunk(b'IHDR', struct.pack('>IIBBBBB', width, height, 8, 6, 0, 0, 0))
            + chunk(b'pHYs', struct.pack('>IIB', dots_per_meter, dots_per_meter, 1))
            + chunk(b'IDAT', zlib.compress(raw, 9))
            + chunk(b'IEND', b''))


def contact_sheet(images, scale=4, gap=8):
    """The icons side by side on white, enlarged by pixel repetition, then once at 16 pixels."""
    cell = SIZE * scale
    width = len(images) * (cell + gap) + gap
    small = SIZE // 4
    height = cell + 2 * gap + small + gap
    sheet = [[(255, 255, 255, 255)] * width for _ in range(height)]

    def put(x, y, pixel):
        r, g, b, a = pixel
        back = sheet[y][x]
        sheet[y][x] = tuple(round(c * a / 255 + bc * (255 - a) / 255)
                            for c, bc in zip((r, g, b), back[:3])) + (255,)
    for n, rows in enumerate(images):
        left = gap + n * (cell + gap)
        for y in range(cell):
            for x in range(cell):
                put(left + x, gap + y, rows[y // scale][x // scale])
        for y in range(small):  # a box filter down to 16 pixels, about the screen size
            for x in range(small):
                block = [rows[y * 4 + j][x * 4 + i] for j in range(4) for i in range(4)]
                alpha = sum(p[3] for p in block)
                if alpha:
                    pixel = tuple(round(sum(p[c] * p[3] for p in block) / alpha) for c in range(3))
                    put(left + x, cell + 2 * gap + y, pixel + (round(alpha / 16),))
    return sheet


def main():
    folder = os.path.dirname(os.path.abspath(__file__))
    images = []
    for key, layers in ICONS.items():
        rows = render(layers)
        images.append(rows)
        name = 'tax.png' if key == 'tax' else 'status%d.png' % key
        with open(os.path.join(folder, name), 'wb') as out:
            out.write(png(rows))
    if len(sys.argv) == 3 and sys.argv[1] == '--sheet':
        with open(sys.argv[2], 'wb') as out:
            out.write(png(contact_sheet(images), 3780))


if __name__ == '__main__':
    main()
