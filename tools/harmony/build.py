#!/usr/bin/env python3
"""Writes the two tables of the artist's wheel: zelclr/harmony/internal/wheel_tables.h.

Run by hand, where a row below has changed: tools/harmony/build.py. Gives the same bytes every time.

Both tables come from one curve, so that they are each other's inverse as far as whole degrees allow: it goes through
the rows of both, as cubics between neighbours whose slopes keep it monotone (F. N. Fritsch, R. E. Carlson: Monotone
Piecewise Cubic Interpolation, SIAM J. Numer. Anal. 17, 1980). Entries are rounded to the nearest degree.
"""

import math
import os

ROOT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..")
TABLES = os.path.join(ROOT, "zelclr", "harmony", "internal", "wheel_tables.h")

# Frozen: documents hold hues of the wheel. HSB hue: wheel hue.
FORWARD = {0: 0, 30: 53, 60: 108, 90: 145, 120: 168, 150: 192, 180: 220, 210: 247, 240: 275, 270: 302, 300: 324,
           330: 342, 359: 359}
# Wheel hue: HSB hue.
INVERSE = {0: 0, 30: 17, 60: 33, 90: 47, 120: 67, 150: 97, 180: 137, 210: 169, 240: 202, 270: 235, 300: 268, 330: 310,
           359: 357}


def points():
    rows = dict(FORWARD)
    for wheel, hsb in INVERSE.items():
        assert rows.get(hsb, wheel) == wheel
        rows[hsb] = wheel
    return sorted(rows.items())


def slopes(xs, ys):
    """The harmonic mean of the slopes at both sides, weighted by the lengths of the pieces; 0 where one is flat."""
    length = [b - a for a, b in zip(xs, xs[1:])]
    secant = [(b - a) / h for a, b, h in zip(ys, ys[1:], length)]
    assert min(secant) >= 0
    inner = []
    for i in range(1, len(xs) - 1):
        if secant[i - 1] == 0 or secant[i] == 0:
            inner.append(0.0)
            continue
        before, after = length[i - 1] + 2 * length[i], 2 * length[i - 1] + length[i]
        inner.append((before + after) / (before / secant[i] + after / secant[i - 1]))
    return [secant[0]] + inner + [secant[-1]]


def curve():
    xs, ys = zip(*points())
    ms = slopes(xs, ys)

    def at(x):
        i = max(0, min(len(xs) - 2, sum(1 for known in xs if known <= x) - 1))
        h = xs[i + 1] - xs[i]
        t = (x - xs[i]) / h
        return (ys[i] * (1 + 2 * t) * (1 - t) ** 2 + ms[i] * h * t * (1 - t) ** 2 + ys[i + 1] * t * t * (3 - 2 * t) +
                ms[i + 1] * h * t * t * (t - 1))

    return at


def inverse_of(at, y, high):
    """The least x of 0 to `high` at which the curve is y."""
    low = 0.0
    for _ in range(60):
        middle = (low + high) / 2
        low, high = (middle, high) if at(middle) < y - 1e-9 else (low, middle)
    return high


def rounded(value):
    return math.floor(value + 0.5)


def lines(table):
    return "".join("  " + ", ".join(f"{entry:3d}" for entry in table[i:i + 20]) + ",\n" for i in range(0, 360, 20))


def main():
    at = curve()
    forward = [rounded(at(hue)) for hue in range(360)]
    inverse = [rounded(inverse_of(at, hue, 359.0)) for hue in range(360)]
    assert all(forward[hsb] == wheel for hsb, wheel in FORWARD.items())
    assert all(inverse[wheel] == hsb for wheel, hsb in INVERSE.items())
    with open(TABLES, "w", encoding="utf-8") as file:
        file.write(f"""// The artist's wheel in whole degrees, both ways. Written by tools/harmony/build.py.
//
// Threads and errors: constants. Frozen: documents hold hues of the wheel.
#pragma once

#include <array>
#include <cstdint>

namespace ZelClr::Internal {{

// clang-format off

/// The hue on the wheel of each HSB hue.
inline constexpr std::array<std::int16_t, 360> kWheelFromHsb = {{
{lines(forward)}}};

/// The HSB hue of each hue on the wheel.
inline constexpr std::array<std::int16_t, 360> kHsbFromWheel = {{
{lines(inverse)}}};

// clang-format on

}} // namespace ZelClr::Internal
""")
    missed = [hue for hue in range(360) if abs(inverse[forward[hue]] - hue) > 1]
    print(f"HSB hues that come back by more than a degree: {missed}")


if __name__ == "__main__":
    main()
