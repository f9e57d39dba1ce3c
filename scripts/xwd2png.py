#!/usr/bin/env python3
"""Converts an X window dump (xwd, TrueColor, 24 or 32 bits a pixel) to PNG.

    xwd -root -silent | python3 scripts/xwd2png.py - shot.png

Needs nothing beyond the Python standard library, so screenshots of the program under Xvfb need
no image tool besides xwd (x11-apps).
"""

import struct
import sys
import zlib


def read_xwd(data):
    fields = struct.unpack('>25I', data[:100])
    header_size, _version, _format, _depth, width, height = fields[:6]
    byte_order, bits_per_pixel, bytes_per_line = fields[7], fields[11], fields[12]
    red_mask, green_mask, blue_mask = fields[14:17]
    ncolors = fields[19]
    offset = header_size + ncolors * 12
    if bits_per_pixel not in (24, 32):
        raise SystemExit('xwd2png: %d bits a pixel is not supported' % bits_per_pixel)
    step = bits_per_pixel // 8
    endian = 'little' if byte_order == 0 else 'big'

    def channel(mask):
        shift = (mask & -mask).bit_length() - 1
        return shift, mask >> shift

    channels = [channel(m) for m in (red_mask, green_mask, blue_mask)]
    rows = []
    for y in range(height):
        line = data[offset + y * bytes_per_line: offset + y * bytes_per_line + width * step]
        row = bytearray()
        for x in range(0, width * step, step):
            pixel = int.from_bytes(line[x:x + step], endian)
            for shift, top in channels:
                row.append(((pixel >> shift) & top) * 255 // top)
        rows.append(bytes(row))
    return width, height, rows


def chunk(kind, body):
    return (struct.pack('>I', len(body)) + kind + body
            + struct.pack('>I', zlib.crc32(kind + body) & 0xFFFFFFFF))


def write_png(path, width, height, rows):
    raw = b''.join(b'\x00' + row for row in rows)
    with open(path, 'wb') as out:
        out.write(b'\x89PNG\r\n\x1a\n')
        out.write(chunk(b'IHDR', struct.pack('>IIBBBBB', width, height, 8, 2, 0, 0, 0)))
        out.write(chunk(b'IDAT', zlib.compress(raw, 6)))
        out.write(chunk(b'IEND', b''))


def main():
    if len(sys.argv) != 3:
        raise SystemExit('usage: xwd2png.py IN.xwd|- OUT.png')
    source = sys.stdin.buffer.read() if sys.argv[1] == '-' else open(sys.argv[1], 'rb').read()
    write_png(sys.argv[2], *read_xwd(source))


if __name__ == '__main__':
    main()
