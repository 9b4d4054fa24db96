#!/usr/bin/env python3
"""Writes the three drag cursors of the property tree as 32x32 monochrome .cur files.

    scripts/make_cursors.py [OUTPUT_DIR]     (default: frame/res)

Each cursor is drawn on a character grid: 'B' black, 'W' white, '.' transparent.
  pt_nodrop.cur       a ring with a bar: no drop here            (hot spot in the middle)
  pt_drop.cur         an arrow with a box and a plus: drop into  (hot spot at the tip)
  pt_dropsibling.cur  an arrow with two boxes side by side       (hot spot at the tip)
"""
import os
import struct
import sys

SIZE = 32


def blank():
    return [['.'] * SIZE for _ in range(SIZE)]


def arrow(grid):
    # A left-leaning arrow with its tip at (0, 0): white inside a black edge.
    for r in range(17):
        for c in range(r + 1):
            if r == 16 or c == 0 or c == r:
                grid[r][c] = 'B'
            else:
                grid[r][c] = 'W'
    for r in range(11, 17):
        for c in range(7, r + 1):
            grid[r][c] = '.' if r >= 12 else grid[r][c]
    for c in range(7, 12):
        grid[11][c] = 'B'
    for r in range(11, 21):
        for c in range(3, 8):
            grid[r][c] = 'B' if c in (3, 7) or r == 20 else 'W'


def box(grid, left, top, width, height):
    for r in range(top, top + height):
        for c in range(left, left + width):
            edge = r in (top, top + height - 1) or c in (left, left + width - 1)
            grid[r][c] = 'B' if edge else 'W'


def plus(grid, cx, cy, arm):
    for d in range(-arm, arm + 1):
        grid[cy][cx + d] = 'B'
        grid[cy + d][cx] = 'B'


def nodrop():
    grid = blank()
    cx, cy = 15, 15
    for r in range(SIZE):
        for c in range(SIZE):
            d2 = (r - cy) ** 2 + (c - cx) ** 2
            if 81 <= d2 <= 144:
                grid[r][c] = 'B'
            elif 64 <= d2 < 81 or 144 < d2 <= 169:
                grid[r][c] = 'W'
    for i in range(-8, 9):
        for w in (-1, 0, 1):
            r, c = cy + i, cx + i + w
            grid[r][c] = 'B'
    return grid, (cx, cy)


def drop():
    grid = blank()
    arrow(grid)
    box(grid, 14, 18, 13, 11)
    plus(grid, 20, 23, 3)
    return grid, (0, 0)


def dropsibling():
    grid = blank()
    arrow(grid)
    box(grid, 12, 20, 9, 9)
    box(grid, 22, 20, 9, 9)
    return grid, (0, 0)


def cursor_bytes(grid, hotspot):
    row_bytes = SIZE // 8
    xor_rows, and_rows = [], []
    for r in range(SIZE):
        xor_bits = and_bits = 0
        for c in range(SIZE):
            ch = grid[r][c]
            bit = 1 << (SIZE - 1 - c)
            if ch == '.':
                and_bits |= bit
            elif ch == 'W':
                xor_bits |= bit
        xor_rows.append(struct.pack('>I', xor_bits))
        and_rows.append(struct.pack('>I', and_bits))
    # Bitmaps are stored bottom-up.
    xor_data = b''.join(reversed(xor_rows))
    and_data = b''.join(reversed(and_rows))
    header = struct.pack('<IiiHHIIiiII', 40, SIZE, SIZE * 2, 1, 1, 0, len(xor_data) + len(and_data), 0, 0, 2, 0)
    palette = struct.pack('<II', 0x000000, 0xFFFFFF)
    image = header + palette + xor_data + and_data
    assert len(xor_data) == SIZE * row_bytes
    directory = struct.pack('<HHH', 0, 2, 1)
    entry = struct.pack('<BBBBHHII', SIZE, SIZE, 2, 0, hotspot[0], hotspot[1], len(image), 6 + 16)
    return directory + entry + image


def main():
    out = sys.argv[1] if len(sys.argv) > 1 else os.path.join(os.path.dirname(__file__), '..', 'frame', 'res')
    os.makedirs(out, exist_ok=True)
    for name, make in (('pt_nodrop.cur', nodrop), ('pt_drop.cur', drop), ('pt_dropsibling.cur', dropsibling)):
        grid, hotspot = make()
        with open(os.path.join(out, name), 'wb') as f:
            f.write(cursor_bytes(grid, hotspot))


if __name__ == '__main__':
    main()
