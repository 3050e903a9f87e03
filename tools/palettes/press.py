"""Separates colours for a press: whole percents of CMYK that print as a colour looks, as clean as they can be.

The press is that of an ICC profile, read by its table from inks to Lab (ICC.1:2001-04, 6.5.7). Black and white of the
screen become those of the press. Of the builds that come near a colour one is preferred that has few inks, no trace of
a third one, no black in light tints, and round numbers.
"""

import functools
import itertools
import struct

import colour

INK_LIMIT = 300


class Press:
    def __init__(self, path):
        with open(path, "rb") as file:
            data = file.read()
        tags = {}
        for i in range(struct.unpack_from(">I", data, 128)[0]):
            name, offset, _ = struct.unpack_from(">4sII", data, 132 + 12 * i)
            tags[name] = offset
        start = tags[b"A2B1"]
        kind, _, inks, outputs, self.grid = struct.unpack_from(">4sIBBB", data, start)
        if (kind, inks, outputs) != (b"mft2", 4, 3):
            raise ValueError(f"{path} has no table of 16 bits from four inks to Lab")
        entries, out_entries = struct.unpack_from(">HH", data, start + 48)
        position = start + 52

        def table(count):
            nonlocal position
            values = struct.unpack_from(f">{count}H", data, position)
            position += 2 * count
            return values

        curves = [table(entries) for _ in range(4)]
        self.nodes = table(self.grid**4 * 3)
        self.outputs = [table(out_entries) for _ in range(3)]
        # Where each whole percent of each ink falls in the grid: node and the part of the way to the next.
        self.places = [[self.place(curve, percent) for percent in range(101)] for curve in curves]
        self.black = min(self.lab((60, 50, 50, 100))[0], self.lab((0, 0, 0, 100))[0])

    def place(self, curve, percent):
        value = sample(curve, percent / 100) / 65535 * (self.grid - 1)
        node = min(int(value), self.grid - 2)
        return node, value - node

    @functools.lru_cache(maxsize=None)
    def lab(self, inks):
        """The Lab, on paper white, of whole percents of C, M, Y and K."""
        places = [places[percent] for places, percent in zip(self.places, inks)]
        sums = [0.0, 0.0, 0.0]
        for corner in itertools.product((0, 1), repeat=4):
            weight, index = 1.0, 0
            for (node, part), far in zip(places, corner):
                weight *= part if far else 1 - part
                index = index * self.grid + node + far
            if weight > 0:
                for channel in range(3):
                    sums[channel] += weight * self.nodes[3 * index + channel]
        l, a, b = (sample(curve, value / 65535) for curve, value in zip(self.outputs, sums))
        return l * 100 / 65280, a / 256 - 128, b / 256 - 128

    def wanted(self, rgb):
        """The Lab that a colour of the screen has on this press, its black being the press's."""
        floor = ((self.black + 16) / 116) ** 3
        xyz = colour.xyz_from_rgb_bytes(rgb)
        return colour.lab_from_xyz([v * (1 - floor) + white * floor for v, white in zip(xyz, colour.D50)])

    def separate(self, rgb, taken):
        """The build of a colour of the screen that is none of those taken."""
        target = self.wanted(rgb)

        def cost(inks):
            if inks in taken or sum(inks) > INK_LIMIT:
                return 1e9
            return difference(target, self.lab(inks)) + effort(inks, target[0])

        ends = []
        for removal in (0.0, 0.5, 1.0):
            inks = start(rgb, removal)
            for step in (20, 10, 5, 2, 1):
                inks = descend(inks, step, cost)
            ends.append(inks)
        best = min(ends, key=cost)
        if best in taken:
            raise ValueError(f"no build is left for {rgb}")
        return best


def sample(curve, value):
    position = value * (len(curve) - 1)
    node = min(int(position), len(curve) - 2)
    return curve[node] + (position - node) * (curve[node + 1] - curve[node])


def start(rgb, removal):
    """The complement, with a part of its gray made of black."""
    inks = [1 - v / 255 for v in rgb]
    black = removal * min(inks)
    return tuple(5 * round(20 * v) for v in [v - black for v in inks] + [black])


MOVES = [move for move in itertools.product((-1, 0, 1), repeat=4) if 1 <= sum(map(abs, move)) <= 2]


def descend(inks, step, cost):
    """The best that no move of one or two inks by so many percent betters."""
    here = cost(inks)
    while True:
        neighbours = {tuple(min(max(v + step * m, 0), 100) for v, m in zip(inks, move)) for move in MOVES}
        there, best = min((cost(neighbour), neighbour) for neighbour in neighbours)
        if there >= here:
            return inks
        inks, here = best, there


def difference(lab, other):
    """CIE94 for graphic arts, weighed by the duller of both: where a colour is out of reach, chroma counts for more."""
    c1, c2 = (lab[1] ** 2 + lab[2] ** 2) ** 0.5, (other[1] ** 2 + other[2] ** 2) ** 0.5
    dl, dc = lab[0] - other[0], c1 - c2
    dh2 = max((lab[1] - other[1]) ** 2 + (lab[2] - other[2]) ** 2 - dc * dc, 0.0)
    duller = min(c1, c2)
    return (dl * dl + (dc / (1 + 0.045 * duller)) ** 2 + dh2 / (1 + 0.015 * duller) ** 2) ** 0.5


def effort(inks, lightness):
    """What a build costs beside its error, in Delta E: third inks, black in light tints, traces, odd numbers."""
    third = min(inks[:3])
    odd = sum(1 for v in inks if v % 5)
    traces = sum(1 for v in inks if 0 < v < 3)
    speckle = min(max((lightness - 40) / 55, 0.0), 1.0) ** 2
    return 0.08 * third + 0.12 * speckle * inks[3] + 0.002 * sum(inks) + 0.35 * odd + 0.5 * traces
