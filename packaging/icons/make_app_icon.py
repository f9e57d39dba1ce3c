#!/usr/bin/env python3
"""Draws Tavrel's application icon: hicolor PNG files in several sizes and a scalable SVG.

A one-off generator, not part of the build: the files it writes are committed beside it and
installed by the install rules (cmake/Install.cmake). Run it again only to change the picture:

    python3 packaging/icons/make_app_icon.py

Needs nothing beyond the Python standard library; it reuses the shapes and the PNG writer of
resources/icons/make_icons.py. The picture is a printed sheet: a blue header band, a caption
row, item lines in columns and a green totals line, drawn in a 64-unit square.
"""

import os
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, '..', '..', 'resources', 'icons'))
import make_icons as shapes  # noqa: E402

SIZES = (16, 24, 32, 48, 64, 128, 256)
SAMPLES = 4

PAPER = (250, 250, 247)
EDGE = (90, 96, 110)
BLUE = (30, 90, 200)
INK = (110, 116, 128)
GREEN = (20, 150, 60)

# (kind, geometry, colour) in the 64-unit square; the SVG and the PNGs are drawn from this list.
PICTURE = [
    ('rect', (10, 4, 54, 60, 4), EDGE),
    ('rect', (12, 6, 52, 58, 2.5), PAPER),
    ('rect', (12, 6, 52, 17, 2.5), BLUE),
    ('rect', (12, 13, 52, 17, 0), BLUE),
    ('rect', (16, 21, 48, 24, 0), EDGE),
    ('rect', (16, 28, 29, 30.5, 0), INK),
    ('rect', (32, 28, 48, 30.5, 0), INK),
    ('rect', (16, 34, 29, 36.5, 0), INK),
    ('rect', (32, 34, 48, 36.5, 0), INK),
    ('rect', (16, 40, 29, 42.5, 0), INK),
    ('rect', (32, 40, 48, 42.5, 0), INK),
    ('rect', (32, 48, 48, 52, 0), GREEN),
]


def shape(kind, geometry, scale):
    left, top, right, bottom, radius = (v * scale for v in geometry)
    if radius > 0:
        return shapes.rounded_rect(left, top, right, bottom, radius)
    return lambda x, y: left <= x <= right and top <= y <= bottom


def render(size):
    scale = size / 64.0
    layers = [(shape(kind, geometry, scale), colour) for kind, geometry, colour in PICTURE]
    offsets = [(i + 0.5) / SAMPLES for i in range(SAMPLES)]
    rows = []
    for py in range(size):
        row = []
        for px in range(size):
            r = g = b = a = 0.0
            for inside, colour in layers:
                hits = sum(1 for oy in offsets for ox in offsets if inside(px + ox, py + oy))
                if not hits:
                    continue
                cover = hits / (SAMPLES * SAMPLES)
                r = colour[0] * cover + r * (1 - cover)
                g = colour[1] * cover + g * (1 - cover)
                b = colour[2] * cover + b * (1 - cover)
                a = cover + a * (1 - cover)
            row.append((round(r / a), round(g / a), round(b / a), round(a * 255)) if a > 0
                       else (0, 0, 0, 0))
        rows.append(row)
    return rows


def svg():
    parts = ['<?xml version="1.0" encoding="UTF-8"?>',
             '<svg xmlns="http://www.w3.org/2000/svg" width="64" height="64" viewBox="0 0 64 64">']
    for _, (left, top, right, bottom, radius), colour in PICTURE:
        parts.append('  <rect x="%g" y="%g" width="%g" height="%g" rx="%g" fill="#%02x%02x%02x"/>'
                     % ((left, top, right - left, bottom - top, radius) + colour))
    parts.append('</svg>')
    return '\n'.join(parts) + '\n'


def main():
    for size in SIZES:
        path = os.path.join(HERE, 'tavrel-%d.png' % size)
        dpm = round(size / 64.0 * 3780)  # 96 dpi at 64 pixels
        with open(path, 'wb') as out:
            out.write(shapes.png(render(size), dpm))
    with open(os.path.join(HERE, 'tavrel.svg'), 'w') as out:
        out.write(svg())


if __name__ == '__main__':
    main()
