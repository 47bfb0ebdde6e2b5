#!/usr/bin/env python3
"""Paints tiles.png and oak.png into the folder of this file. Same bytes on each run; needs Python only."""
import math
import pathlib
import struct
import zlib

SIDE = 64


def noise(*numbers):
    """A value from 0 to 1 that looks random and belongs to the numbers."""
    return zlib.crc32(repr(numbers).encode()) / 0xFFFFFFFF


def tiles(x, y):
    """Two by two tiles, two light and two dark, with a joint around each."""
    tile = (x // 32, y // 32)
    if x % 32 in (0, 31) or y % 32 in (0, 31):
        return (112, 106, 98)
    grey = (206 if sum(tile) % 2 == 0 else 158) + int(6 * noise(x // 4, y // 4, tile)) + int(3 * noise(x, y))
    return (grey, grey - 10, grey - 26)


def oak(x, y):
    """Grain that runs upwards and fits together at the borders."""
    turn = 2 * math.pi / SIDE
    bent = x + 2.5 * math.sin(turn * y + 1) + 1.2 * math.sin(turn * 2 * y)
    grain = 0.5 + 0.5 * math.sin(turn * 7 * bent + 2 * math.sin(turn * 2 * bent))
    light = 0.82 + 0.14 * grain + 0.04 * noise(x, y // 6)
    return tuple(int(channel * light) for channel in (186, 132, 78))


def chunk(kind, data):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))


def write_png(path, paint):
    rows = (bytes([0]) + bytes(c for x in range(SIDE) for c in paint(x, y)) for y in range(SIDE))
    header = struct.pack(">IIBBBBB", SIDE, SIDE, 8, 2, 0, 0, 0)  # 8 bits a channel, RGB
    chunks = (b"IHDR", header), (b"IDAT", zlib.compress(b"".join(rows), 9)), (b"IEND", b"")
    path.write_bytes(b"\x89PNG\r\n\x1a\n" + b"".join(chunk(*c) for c in chunks))


if __name__ == "__main__":
    for paint in (tiles, oak):
        write_png(pathlib.Path(__file__).with_name(paint.__name__ + ".png"), paint)
