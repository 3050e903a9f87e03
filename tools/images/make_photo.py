#!/usr/bin/env python3
"""Writes examples/photo.png: fruit and a painted ball on a table by a window, as a camera would see them.

Run by hand, where the scene has changed: tools/images/make_photo.py [OUT]. It is drawn, nobody's photograph: sky and
skin-like tones, neutrals and wood that any press prints, and reds, oranges, greens and blues that no press does. Light
is added up in linear sRGB and stored as sRGB, 8 bits, in a PNG that says so.
"""

import math
import os
import struct
import sys
import zlib

ROOT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..")
WIDTH, HEIGHT = 480, 320
TABLE = 0.60  # the height of its far edge
LIGHT = (-0.52, -0.62, 0.59)  # towards the window

# Linear sRGB.
SKY_TOP, SKY_LOW = (0.05, 0.20, 0.62), (0.52, 0.72, 0.86)
WALL, WOOD_DARK, WOOD_LIGHT = (0.62, 0.56, 0.48), (0.16, 0.065, 0.022), (0.36, 0.17, 0.07)

# x, y and radius in heights of the picture; colour; gloss; what is drawn on it.
SPHERES = (
    (0.50, 0.60, 0.135, (0.86, 0.55, 0.40), 0.10, "clay"),  # a clay pot's skin-like tones
    (0.27, 0.74, 0.120, (0.80, 0.010, 0.015), 0.75, "apple"),
    (0.80, 0.70, 0.150, (1.00, 0.30, 0.000), 0.35, "orange"),
    (0.56, 0.83, 0.095, (0.13, 0.62, 0.010), 0.55, "apple"),
    (1.12, 0.76, 0.130, (0.00, 0.06, 0.80), 0.95, "ball"),
    (0.98, 0.88, 0.070, (0.98, 0.80, 0.000), 0.45, "plain"),
    (1.31, 0.88, 0.075, (0.60, 0.00, 0.42), 0.80, "plain"),
)


def mix(a, b, t):
    return tuple(x + (y - x) * t for x, y in zip(a, b))


def smooth(low, high, value):
    t = min(max((value - low) / (high - low), 0.0), 1.0)
    return t * t * (3 - 2 * t)


def noise(x, y, seed=0):
    """0 to 1, smooth, the same everywhere it is run: whole numbers are hashed."""

    def corner(i, j):
        h = (i * 374761393 + j * 668265263 + seed * 974634961) & 0xFFFFFFFF
        h = ((h ^ (h >> 13)) * 1274126177) & 0xFFFFFFFF
        return ((h ^ (h >> 16)) & 0xFFFF) / 65535

    i, j = math.floor(x), math.floor(y)
    u, v = smooth(0, 1, x - i), smooth(0, 1, y - j)
    top = corner(i, j) * (1 - u) + corner(i + 1, j) * u
    low = corner(i, j + 1) * (1 - u) + corner(i + 1, j + 1) * u
    return top * (1 - v) + low * v


def clouds(x, y):
    return sum(noise(x * 2**k, y * 2**k, k) / 2**k for k in range(4)) / 1.875


def window(x, y):
    """The wall, and the sky, a meadow and a sunset's edge in the window of it."""
    frame = min(x - 0.12, 0.66 - x, y - 0.06, 0.50 - y)
    bar = min(abs(x - 0.39), abs(y - 0.25))
    if frame < 0:
        shade = 0.55 + 0.45 * math.exp(-max(-frame, 0) * 3.0)
        return tuple(c * shade * (1 - 0.25 * smooth(0.6, 1.5, x)) for c in WALL)
    if frame < 0.018 or bar < 0.008:
        return (0.80, 0.79, 0.76)
    sky = mix(SKY_TOP, SKY_LOW, smooth(0.05, 0.40, y))
    cloud = smooth(0.50, 0.72, clouds(x * 6 + 3, y * 11 + 1))
    sky = mix(sky, (0.95, 0.93, 0.92), 0.9 * cloud)
    sky = mix(sky, (1.0, 0.55, 0.22), 0.75 * smooth(0.30, 0.41, y))
    hill = 0.405 + 0.022 * math.sin(x * 9) + 0.008 * noise(x * 40, 2)
    if y < hill:
        return sky
    return mix((0.06, 0.20, 0.02), (0.16, 0.46, 0.03), smooth(0.40, 0.50, y) * noise(x * 60, y * 160))


def table(x, y):
    depth = (y - TABLE) / (1 - TABLE)
    across = (x - 0.75) / (0.6 + 0.7 * depth)
    grain = noise(across * 5 + 7, depth * 3) + 0.5 * noise(across * 90, depth * 4, 5)
    colour = mix(WOOD_DARK, WOOD_LIGHT, 0.5 + 0.32 * math.sin(grain * 11 + across * 12))
    light = 0.55 + 0.75 * math.exp(-((x - 0.45) ** 2 * 2.2 + (y - 0.62) ** 2 * 6))
    for cx, cy, r, *_ in SPHERES:  # shadows fall away from the window
        sx, sy = cx + 0.45 * r, cy + 0.80 * r
        light *= 1 - 0.78 * math.exp(-(((x - sx) / (1.15 * r)) ** 2 + ((y - sy) / (0.33 * r)) ** 2) * 1.3)
    return tuple(c * light for c in colour)


def painted(kind, colour, n, x, y):
    if kind == "apple":  # streaks, and yellow where the sun has not been
        streak = noise(math.atan2(n[0], n[2] + 0.2) * 14, n[1] * 2, 3)
        return mix(colour, (0.86, 0.52, 0.05), 0.55 * smooth(0.55, 1.0, streak) * smooth(0.3, -0.9, n[1]))
    if kind == "orange":
        return tuple(c * (0.86 + 0.22 * noise(x * 130, y * 130, 4)) for c in colour)
    if kind == "ball":  # a band of white, and one of cyan
        if abs(n[1] + 0.35 * n[0]) < 0.13:
            return (0.88, 0.88, 0.88)
        return (0.0, 0.62, 0.80) if n[1] + 0.35 * n[0] > 0.13 else colour
    if kind == "clay":
        return mix(colour, (0.42, 0.20, 0.12), 0.6 * noise(x * 7, y * 30, 6))
    return colour


def sphere(x, y, cx, cy, r, colour, gloss, kind):
    nx, ny = (x - cx) / r, (y - cy) / r
    n = (nx, ny, math.sqrt(max(1 - nx * nx - ny * ny, 0)))
    facing = sum(a * b for a, b in zip(n, LIGHT))
    light = 0.10 + 0.95 * smooth(-0.25, 1.0, facing) + 0.10 * max(n[1], 0)  # the last: from the table
    base = painted(kind, colour, n, x, y)
    reflected = 2 * facing * n[2] - LIGHT[2]
    shine = gloss * (max(reflected, 0) ** 40 * 0.9 + 0.05 * (1 - n[2]) ** 3)
    return tuple(c * light + shine for c in base)


def light_at(x, y):
    colour = window(x, y) if y < TABLE else table(x, y)
    for cx, cy, r, *look in SPHERES:
        if (x - cx) ** 2 + (y - cy) ** 2 < r * r:
            colour = sphere(x, y, cx, cy, r, *look)
    return colour


def stored(linear):
    linear = min(max(linear, 0.0), 1.0)
    return 12.92 * linear if linear <= 0.0031308 else 1.055 * linear ** (1 / 2.4) - 0.055


def pixel(column, row):
    around = [light_at((column + dx) / HEIGHT, (row + dy) / HEIGHT) for dx in (0.25, 0.75) for dy in (0.25, 0.75)]
    grain = (noise(column * 1.7, row * 1.7, 9) - 0.5) * 0.012
    return bytes(round(255 * min(max(stored(sum(c) / 4) + grain, 0), 1)) for c in zip(*around))


def paeth(left, above, corner):
    guess = left + above - corner
    return min((left, above, corner), key=lambda value: abs(guess - value))


def filtered(row, above):
    """By PNG's filter 4: each byte less the best guess of its neighbours."""
    left = [0, 0, 0, *row]
    corner = [0, 0, 0, *above]
    return b"\x04" + bytes((v - paeth(left[i], above[i], corner[i])) & 255 for i, v in enumerate(row))


def chunk(name, content):
    return struct.pack(">I", len(content)) + name + content + struct.pack(">I", zlib.crc32(name + content))


def main():
    rows = [b"".join(pixel(column, row) for column in range(WIDTH)) for row in range(HEIGHT)]
    data = b"".join(filtered(row, above) for row, above in zip(rows, [bytes(3 * WIDTH), *rows]))
    out = sys.argv[1] if len(sys.argv) > 1 else os.path.join(ROOT, "examples", "photo.png")
    with open(out, "wb") as file:
        file.write(b"\x89PNG\r\n\x1a\n")
        file.write(chunk(b"IHDR", struct.pack(">IIBBBBB", WIDTH, HEIGHT, 8, 2, 0, 0, 0)))
        file.write(chunk(b"sRGB", b"\0"))
        file.write(chunk(b"IDAT", zlib.compress(data, 9)))
        file.write(chunk(b"IEND", b""))


if __name__ == "__main__":
    main()
