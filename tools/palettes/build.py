#!/usr/bin/env python3
"""Writes the palettes that ship: data/color/Palettes and data/config/ColorPaletteManager.xml.

Run by hand, where a table here has changed: tools/palettes/build.py. Gives the same bytes every time, within a minute.
Identifiers come from the library's own tables. The inks of CMYK palettes are those of a press that ships: press.py.
"""

import os
import re
import sys

sys.dont_write_bytecode = True

import colour
from core import PALETTES
from palette_file import Colour, Palette, as_xml
from press import Press
from texts import Text
from themes import STEPS, THEMES

ROOT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..")
DATA = os.path.join(ROOT, "data")
PRESS = os.path.join(DATA, "color", "profiles", "ISO Coated FOGRA39.icc")

# The fallback where even the application's first palette is missing. It is no row of the fixed table.
DEFAULT_RGB_IDENTIFIER = "{40750EA5-A410-4F1A-A82D-147EB03E947B}"
PANTONE_SPOT = 3  # the palette type

# --- Identifiers ------------------------------------------------------------------------------------------------------


def source(*path):
    with open(os.path.join(ROOT, "zelclr", *path), encoding="utf-8") as file:
        return file.read()


def identifiers_of_types():
    rows = re.findall(r'\{(\d+), "\w+", "(\{[^"]+\})"_guid\}', source("colour", "palette_types.cpp"))
    return {int(number): identifier for number, identifier in rows}


def fixed_palettes():
    """Identifier by path, as zelclr/palettes/fixed_palettes.cpp has them."""
    text = source("palettes", "fixed_palettes.cpp")
    types = identifiers_of_types()
    rows = {path: types[int(number)] for number, path in re.findall(r'\{(\d+), "([^"]+)"\}', text)}
    rows |= {path: identifier for identifier, path in re.findall(r'"(\{[^"]+\})"_guid,\s*"([^"]+)"', text)}
    if len(rows) != 173:
        sys.exit(f"{len(rows)} rows of fixed palettes instead of 173")
    return rows | {"defrgb.xml": DEFAULT_RGB_IDENTIFIER}


# --- Themes -----------------------------------------------------------------------------------------------------------

BASE = 3  # where a ramp has its own colour


def between(a, b, part):
    return a + (b - a) * part


def toward(hue, goal, degrees):
    """By so many degrees the shorter way, and never past the goal."""
    way = (goal - hue + 180) % 360 - 180
    return hue + max(-degrees, min(degrees, way))


def ramp(lightness, chroma, hue, light=None, dark=None):
    """Lightness in even steps on either side. Tints lose most of their chroma and turn to yellow as if in sunlight;
    shades keep more and turn to blue as if out of it, but those of yellow and orange to brown, lest they be green."""
    light = between(lightness, 0.975, 0.85) if light is None else light
    dark = 0.42 * lightness if dark is None else dark
    colours = []
    for i in range(len(STEPS)):
        if i <= BASE:
            part = (BASE - i) / BASE
            step = between(lightness, light, part), chroma * (1 - 0.78 * part**1.4), toward(hue, 95, 8 * part)
        else:
            part = (i - BASE) / (len(STEPS) - 1 - BASE)
            goal, turn = (35, 24) if 35 < hue < 115 else (275, 10)
            step = between(lightness, dark, part), chroma * (1 - 0.5 * part), toward(hue, goal, turn * part)
        colours.append(colour.bytes_from_oklch(*step))
    return colours


def names_of_row(text):
    names = text.split(", ")
    return names if len(names) > 1 else [f"{step} {text}".strip() for step in STEPS]


def named_colours(theme):
    return [pair for row in theme.rows for pair in zip(names_of_row(row[0]), ramp(*row[1:]))]


def theme_in_rgb(theme):
    return theme_palette(theme, [Colour(name, "RGB", rgb) for name, rgb in named_colours(theme)])


def theme_in_cmyk(theme, press):
    colours, taken = [], set()
    for name, rgb in named_colours(theme):
        inks = press.separate(rgb, taken)
        taken.add(inks)
        colours.append(Colour(name, "CMYK", inks))
    return theme_palette(theme, colours)


def theme_palette(theme, colours):
    if len({c.values for c in colours}) != len(colours):
        sys.exit(f"{theme.english} has a colour twice")
    return Palette(Text(theme.english, theme.german, theme.french), colours)


# --- Files ------------------------------------------------------------------------------------------------------------


def write(content, *path):
    path = os.path.join(DATA, *path)
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "wb") as file:
        file.write(content)


# The default spot palette is that of the solid inks that documents without a palette of their own refer to. Where it is
# not installed that is what callers are told, and the ink keeps the name that every printer knows. All that is always
# installed are cutting inks, and a colour that is matched with those would become a path of the knife.
MANAGER_SETTINGS = """<?xml version="1.0" encoding="UTF-8"?>
<!-- Where spot colours are looked for, installed or not. Never the cutting inks, although those always are: a colour
     that is matched with them becomes a path of the knife. -->
<ColorPaletteManager>
  <defaultSpotColorPalette guid="{}"/>
</ColorPaletteManager>
"""


def main():
    identifiers = fixed_palettes()

    def write_palette(path, palette):
        write(as_xml(palette, identifiers[path + ".xml"]), "color", "Palettes", *(path + ".xml").split("/"))

    for path, make in PALETTES.items():
        write_palette(path, make())
    press = Press(PRESS)
    for theme in THEMES:
        write_palette(f"Process/RGB/{theme.folder}/r{theme.file}", theme_in_rgb(theme))
        write_palette(f"Process/CMYK/{theme.folder}/c{theme.file}", theme_in_cmyk(theme, press))
    settings = MANAGER_SETTINGS.format(identifiers_of_types()[PANTONE_SPOT])
    write(settings.encode(), "config", "ColorPaletteManager.xml")


if __name__ == "__main__":
    main()
