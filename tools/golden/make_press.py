#!/usr/bin/env python3
"""Writes tests/data/golden/press.csv: colours through press profiles, by two engines that share no code.

Run by hand, where a profile or a colour below has changed. Needs Debian's argyll and liblcms2-utils. What the columns
mean, and how far the engines agree, stands in tests/data/golden/README.md; the figures that it gives are printed here.
"""

import csv
import itertools
import math
import os
import subprocess
import sys

ROOT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..")
PROFILES = os.path.join(ROOT, "data", "color", "profiles")
SRGB = "sRGB_IEC61966-2-1_no_black_scaling.icc"
FOGRA39 = "ISO Coated FOGRA39.icc"
SWOP = "USWebCoatedSWOP.icc"

# Intent, as Little CMS and as Argyll name it: perceptual, relative colorimetric, saturation, absolute colorimetric.
INTENTS = {0: "p", 1: "r", 2: "s", 3: "a"}
RUNS = [(FOGRA39, intent) for intent in INTENTS] + [(SWOP, 1)]

SCREEN_SCALE, INK_SCALE = 255, 100  # what transicc calls 1


def screen_colours():
    """RGB, 0 to 1: a cube; neutrals; skin; and the edges of the cube between its saturated corners."""
    colours = list(itertools.product((0, 51, 102, 153, 204, 255), repeat=3))
    colours += [(n, n, n) for n in (5, 10, 15, 20, 30, 40, 64, 80, 96, 118, 128, 144, 160, 176, 192, 224, 240, 250)]
    colours += [(255, 224, 196), (241, 194, 167), (224, 172, 137), (198, 134, 99), (168, 112, 84), (141, 85, 56),
                (115, 72, 54), (87, 50, 41), (59, 34, 25), (194, 150, 130), (236, 188, 180), (209, 163, 164)]
    corners = [(255, 0, 0), (255, 255, 0), (0, 255, 0), (0, 255, 255), (0, 0, 255), (255, 0, 255)]
    for one, next_one in zip(corners, corners[1:] + corners[:1]):
        colours += [tuple(round(a + (b - a) * t) for a, b in zip(one, next_one)) for t in (0.1, 0.3, 0.5, 0.7, 0.9)]
    return distinct(colours, 255)


def ink_colours():
    """CMYK, 0 to 1: a cube; ramps of each ink, of gray in three inks, and of black under them; rich blacks."""
    colours = list(itertools.product((0, 35, 70, 100), repeat=3))
    colours = [(*cmy, k) for cmy in colours for k in (0, 25, 60)]
    for ink in range(4):
        colours += [tuple(tone if i == ink else 0 for i in range(4)) for tone in (1, 3, 5, 10, 20, 30, 50, 75, 90, 100)]
    colours += [(tone, tone * 0.8, tone * 0.8, 0) for tone in (5, 15, 25, 50, 75, 90)]
    colours += [(60, 40, 40, 100), (40, 0, 0, 100), (0, 40, 0, 100), (50, 50, 50, 100), (75, 68, 67, 90),
                (91, 79, 62, 97), (100, 100, 100, 100), (20, 20, 20, 100), (70, 60, 60, 50)]
    return distinct(colours, 100)


def distinct(colours, scale):
    return list(dict.fromkeys(tuple(round(channel / scale, 6) for channel in colour) for colour in colours))


def lookup(command, rows):
    """The rows of numbers that a program answers to rows of numbers."""
    text = "".join(" ".join(f"{value:.10f}" for value in row) + "\n" for row in rows)
    answer = subprocess.run(command, input=text, capture_output=True, text=True, check=True, cwd=PROFILES).stdout
    answers = [tuple(float(word) for word in line.split()) for line in answer.splitlines() if line.strip()]
    if len(answers) != len(rows):
        sys.exit(f"{command[0]} answered {len(answers)} of {len(rows)} rows")
    return answers


def by_argyll(source, destination, intent, rows):
    """Device to Lab and Lab to device, by hand. The screen has no intents: it is always relative colorimetric."""
    of = lambda profile: "r" if profile == SRGB else INTENTS[intent]
    lab = lookup(["icclu", "-v0", "-ff", f"-i{of(source)}", "-pl", source], rows)
    return lookup(["icclu", "-v0", "-fb", f"-i{of(destination)}", "-pl", destination], lab)


def by_little_cms(source, destination, intent, rows):
    scale_in, scale_out = (SCREEN_SCALE, INK_SCALE) if source == SRGB else (INK_SCALE, SCREEN_SCALE)
    scaled = [tuple(value * scale_in for value in row) for row in rows]
    answers = lookup(["transicc", "-n", "-c0", f"-t{intent}", f"-i{source}", f"-o{destination}"], scaled)
    return [tuple(value / scale_out for value in row) for row in answers]


def text_of(values):
    return " ".join(f"{value:.6f}" for value in values)


def differences(destination, one, other):
    """Between two answers: percent of ink, or Delta E*ab of what the screen shows."""
    if destination != SRGB:
        return [100 * max(abs(a - b) for a, b in zip(*pair)) for pair in zip(one, other)]
    show = lambda rows: lookup(["icclu", "-v0", "-ff", "-ir", "-pl", SRGB], rows)
    return [math.dist(a, b) for a, b in zip(show(one), show(other))]


def main():
    with open(os.path.join(ROOT, "tests", "data", "golden", "press.csv"), "w", newline="", encoding="ascii") as file:
        table = csv.writer(file, lineterminator="\n")
        table.writerow(["source", "destination", "intent", "in", "argyll", "littlecms"])
        for (press, intent), to_press in itertools.product(RUNS, (True, False)):
            source, destination = (SRGB, press) if to_press else (press, SRGB)
            rows = screen_colours() if to_press else ink_colours()
            argyll = by_argyll(source, destination, intent, rows)
            little_cms = by_little_cms(source, destination, intent, rows)
            for row in zip(rows, argyll, little_cms):
                table.writerow([source, destination, intent, *map(text_of, row)])
            apart = sorted(differences(destination, argyll, little_cms))
            mean, high, most = sum(apart) / len(apart), apart[len(apart) * 95 // 100], apart[-1]
            print(f"{source} > {destination}, intent {intent}: {len(rows)} colours, apart by {mean:.4f} in the mean, "
                  f"{high:.4f} at the 95th percentile, {most:.4f} at most")


if __name__ == "__main__":
    main()
