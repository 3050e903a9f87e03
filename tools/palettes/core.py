"""The palettes that are no themes. Each function gives one and says by which rule."""

import itertools

import colour
from palette_file import Colour, Ink, Palette
from svg_colours import SVG_COLOURS
from texts import HTML_COLOURS, HUES, NATURALS, RICH_BLACK, Text, percent_black, toned


def from_hex(text):
    return tuple(int(text[i : i + 2], 16) for i in (0, 2, 4))


# --- Where people start -----------------------------------------------------------------------------------------------

DEFAULT_CMYK = Text("Default CMYK Palette", "CMYK-Standardpalette", "Palette CMJN par défaut")
DEFAULT_RGB = Text("Default RGB Palette", "RGB-Standardpalette", "Palette RVB par défaut")
WHEEL_INKS = (  # C, M, Y of HUES
    (0, 100, 100), (0, 50, 100), (0, 0, 100), (50, 0, 100), (100, 0, 100), (100, 0, 50),
    (100, 0, 0), (100, 50, 0), (100, 100, 0), (50, 100, 0), (0, 100, 0), (0, 100, 50),
)  # fmt: skip
WHEEL_LIGHT = (
    (255, 0, 0), (255, 128, 0), (255, 255, 0), (128, 255, 0), (0, 255, 0), (0, 255, 128),
    (0, 255, 255), (0, 128, 255), (0, 0, 255), (128, 0, 255), (255, 0, 255), (255, 0, 128),
)  # fmt: skip
# A row of the wheel to a tone: percents of its inks, and of black over them.
INK_TONES = {
    "pale": (15, 0), "light": (35, 0), "soft": (65, 0), "full": (100, 0),
    "muted": (50, 30), "deep": (100, 30), "dark": (100, 60),
}  # fmt: skip
# Percents of the light of the wheel, over a gray of so many.
LIGHT_TONES = {
    "pale": (20, 80), "light": (40, 60), "soft": (70, 30), "full": (100, 0),
    "muted": (40, 30), "deep": (75, 0), "dark": (45, 0),
}  # fmt: skip
NATURAL_INKS = (
    (0, 2, 10, 0), (0, 5, 20, 0), (10, 20, 40, 0), (0, 35, 45, 0), (10, 65, 70, 5), (15, 75, 100, 10),
    (25, 65, 85, 20), (30, 75, 75, 40), (40, 70, 80, 60), (40, 30, 90, 20), (55, 30, 80, 40), (60, 40, 30, 30),
)  # fmt: skip
NATURAL_LIGHT = "fffceb fff2cc e3cba0 f9b78a d0714f b5482a a0602f 7a3b2e 4a2c20 7f7a2e 5a6635 5f7180".split()


def percent(part, value):
    return int(part * value / 100 + 0.5)


def over(rgb, light, gray):
    return tuple(percent(1, light * v + gray * 255) for v in rgb)


def rgb_grays(*percents):
    return [Colour(percent_black(p), "RGB", (percent(100 - p, 255),) * 3) for p in percents]


def dynamic():
    """What the application starts with, in CMYK: grays, the wheel of inks in seven tones, natural colours.

    Clean builds: two inks, and black alone for what is darker or duller.
    """
    colours = [Colour(percent_black(p), "CMYK", (0, 0, 0, p)) for p in range(0, 101, 10)]
    colours.append(Colour(RICH_BLACK, "CMYK", (60, 40, 40, 100)))
    for tone, (tint, black) in INK_TONES.items():
        for hue, inks in zip(HUES, WHEEL_INKS):
            colours.append(Colour(toned(tone, hue), "CMYK", (*(percent(tint, ink) for ink in inks), black)))
    colours += [Colour(name, "CMYK", inks) for name, inks in zip(NATURALS, NATURAL_INKS)]
    return Palette(DEFAULT_CMYK, colours, 12, locked=False)


def default_rgb():
    """The same for the screen, by the wheel of light: what there is when the palette above cannot be had."""
    colours = rgb_grays(0, 10, 20, 30, 40, 50, 60, 70, 80, 90, 95, 100)
    for tone, (light, gray) in LIGHT_TONES.items():
        for hue, rgb in zip(HUES, WHEEL_LIGHT):
            colours.append(Colour(toned(tone, hue), "RGB", over(rgb, light, gray)))
    colours += [Colour(name, "RGB", from_hex(code)) for name, code in zip(NATURALS, NATURAL_LIGHT)]
    return Palette(DEFAULT_RGB, colours, 12, locked=False)


def standard_rgb():
    """The wheel of light, a row of eight to a colour: four mixtures with white, itself, three with black."""
    colours = rgb_grays(0, 10, 25, 40, 55, 70, 85, 100)
    tones = {
        "very pale": (20, 80), "pale": (40, 60), "light": (60, 40), "soft": (80, 20),
        "full": (100, 0), "deep": (80, 0), "dark": (60, 0), "very dark": (40, 0),
    }  # fmt: skip
    for hue, rgb in zip(HUES, WHEEL_LIGHT):
        for tone, (light, white) in tones.items():
            colours.append(Colour(toned(tone, hue), "RGB", over(rgb, light, white)))
    return Palette(Text("RGB", "RGB", "RVB"), colours)


def gray_100():
    """Every whole percent of black, ten to a row."""
    colours = [Colour(percent_black(p), "Gray", (100 - p,)) for p in range(101)]
    return Palette(Text("100 Grays", "100 Graustufen", "100 gris"), colours, 10)


# --- Names and devices ------------------------------------------------------------------------------------------------


def svg_colours():
    """The 148 keywords of CSS Color 4, SVG's 147 among them, with their nine pairs of synonyms: grays, then by hue."""

    def place(item):
        lightness, chroma, hue = colour.oklch_from_bytes(from_hex(item[1]))
        gray = chroma < 0.008
        return (-1 if gray else int((hue - 350) % 360 / 30), -lightness, item[0])

    colours = []
    for name, code in sorted(SVG_COLOURS.items(), key=place):
        text = Text(name, *HTML_COLOURS[name]) if name in HTML_COLOURS else name
        colours.append(Colour(text, "RGB", from_hex(code)))
    return Palette(Text("SVG Colors", "SVG-Farben", "Couleurs SVG"), colours)


def laser_drivers():
    """The pure colours that a driver of laser cutters tells its tools by: they must arrive to the last bit."""
    codes = {
        "Black": "000000", "Red": "ff0000", "Green": "00ff00", "Yellow": "ffff00",
        "Blue": "0000ff", "Magenta": "ff00ff", "Cyan": "00ffff", "Orange": "ff6600",
    }  # fmt: skip
    colours = [Colour(name, "RGB", from_hex(code)) for name, code in codes.items()]
    return Palette(Text(*["Universal Laser Systems"] * 3), colours)


def web_safe():
    """The cube of six levels of red, green and blue: six squares of green down and blue across, one to a red."""
    colours = []
    for half, green, red, blue in itertools.product(range(2), range(6), range(3), range(6)):
        rgb = (51 * (3 * half + red), 51 * green, 51 * blue)
        colours.append(Colour("#%02X%02X%02X" % rgb, "RGB", rgb))
    return Palette(Text("Web Safe Colors", "Websichere Farben", "Couleurs sûres pour le Web"), colours, 18)


# --- Palettes of displays of 256 colours ------------------------------------------------------------------------------


def system_256():
    """The web-safe cube, and ramps of red, green, blue and gray through the levels that it leaves out."""
    ramp = [17 * level for level in range(15, -1, -1) if level % 3]
    colours = list(web_safe().colours)
    for channels in ((1, 0, 0), (0, 1, 0), (0, 0, 1), (1, 1, 1)):
        for level in ramp:
            rgb = tuple(level * channel for channel in channels)
            colours.append(Colour("#%02X%02X%02X" % rgb, "RGB", rgb))
    return Palette(Text("System Colors", "Systemfarben", "Couleurs système"), colours, 18)


def gray_256():
    colours = [Colour(f"Gray {level}", "RGB", (level,) * 3) for level in range(255, -1, -1)]
    return Palette(Text("256 Grays", "256 Graustufen", "256 gris"), colours, 16)


def vga_256():
    """What a VGA starts with in mode 13h, in levels of 6 bits: the 16 colours of text, 16 grays, then 24 hues in three
    brightnesses and three saturations, which come first here to be a row each. Two of the grays are colours of text
    already, and its last eight entries are black."""
    text_names = (
        "Black, Blue, Green, Cyan, Red, Magenta, Brown, Light Gray, "
        "Dark Gray, Light Blue, Light Green, Light Cyan, Light Red, Light Magenta, Yellow, White"
    ).split(", ")
    entries = []
    for i in range(16):
        bright = 21 * (i >> 3)
        rgb = [42 * (i >> bit & 1) + bright for bit in (2, 1, 0)]
        entries.append((42, 21, 0) if i == 6 else tuple(rgb))
    entries += [(level,) * 3 for level in (0, 5, 8, 11, 14, 17, 20, 24, 28, 32, 36, 40, 45, 50, 56, 63)]
    for steps in (
        (0, 16, 31, 47, 63), (31, 39, 47, 55, 63), (45, 49, 54, 58, 63),
        (0, 7, 14, 21, 28), (14, 17, 21, 24, 28), (20, 22, 24, 26, 28),
        (0, 4, 8, 12, 16), (8, 10, 12, 14, 16), (11, 12, 13, 15, 16),
    ):  # fmt: skip
        low, high = steps[0], steps[4]
        # From blue by magenta to red, yellow, green, cyan and back: one channel moves at a time.
        for start, moving, end in (
            ((0, 0, 1), 0, 1), ((1, 0, 1), 2, 0), ((1, 0, 0), 1, 1),
            ((1, 1, 0), 0, 0), ((0, 1, 0), 2, 1), ((0, 1, 1), 1, 0),
        ):  # fmt: skip
            for step in range(4):
                rgb = [high if on else low for on in start]
                rgb[moving] = steps[step] if end else steps[4 - step]
                entries.append(tuple(rgb))
    colours, seen = [], set()
    for index, levels in enumerate(entries):
        if levels not in seen:
            seen.add(levels)
            name = text_names[index] if index < 16 else f"VGA {index}"
            colours.append(Colour(name, "RGB", tuple(4 * v | v >> 4 for v in levels)))
    neutral = len(colours) - 9 * 24
    colours = colours[neutral:] + colours[:neutral]
    return Palette(Text("VGA Colors", "VGA-Farben", "Couleurs VGA"), colours, 24)


def uniform_256():
    """Eight levels of red and green, four of blue: a square of red down and green across to each blue."""
    colours = []
    for red, blue, green in itertools.product(range(8), range(4), range(8)):
        rgb = (percent(red * 100 / 7, 255), percent(green * 100 / 7, 255), 85 * blue)
        colours.append(Colour(f"R{red} G{green} B{blue}", "RGB", rgb))
    return Palette(Text("Uniform Colors", "Gleichverteilte Farben", "Couleurs uniformes"), colours, 32)


def black_bodies():
    """From embers to a blue sky. The steps grow with the temperature, as differences do that can be seen."""
    kelvins = [*range(1000, 3000, 100), *range(3000, 5000, 200), *range(5000, 8000, 300), *range(8000, 12001, 500)]
    colours = [Colour(f"{kelvin} K", "RGB", colour.black_body_bytes(kelvin)) for kelvin in kelvins]
    return Palette(Text("Black Body", "Schwarzer Strahler", "Corps noir"), colours, 7)


# --- Cutting inks -----------------------------------------------------------------------------------------------------
# Inks that are not printed: the name tells a cutter which tool follows the path, so it is never translated. Their looks
# are for the screen only: plain full inks, far from each other. The numbers are frozen: documents hold them.

CUTTING_INKS = (
    Ink("CutContour", 1, (0, 100, 0, 0), (255, 0, 255)),
    Ink("ThruCut", 2, (100, 0, 0, 0), (0, 255, 255)),
    Ink("KissCut", 3, (0, 100, 100, 0), (255, 0, 0)),
    Ink("PerfCut", 4, (100, 0, 100, 0), (0, 255, 0)),
    Ink("Crease", 5, (100, 100, 0, 0), (0, 0, 255)),
    Ink("VCut", 6, (0, 50, 100, 0), (255, 128, 0)),
    Ink("Rout", 7, (50, 100, 0, 0), (128, 0, 255)),
    Ink("Pen", 8, (0, 0, 100, 0), (255, 255, 0)),
    Ink("Regmark", 9, (0, 0, 0, 100), (0, 0, 0)),
)
SHEET_CUTTER = "CutContour ThruCut KissCut PerfCut Crease Pen Regmark"
FLATBED = "CutContour ThruCut KissCut PerfCut Crease VCut Rout Pen Regmark"
CUTTERS = {
    "Colex_Cutting": ("Colex", FLATBED),
    "Graphtec_Cutting": ("Graphtec", SHEET_CUTTER),
    "HP_Cutting": ("HP", "CutContour ThruCut KissCut PerfCut Regmark"),
    "ONYX_Default_Cutting": ("ONYX", "CutContour ThruCut KissCut PerfCut Crease Regmark"),
    "Summa_Cutting": ("Summa", FLATBED),
}


def cutting(maker, names):
    inks = [ink for ink in CUTTING_INKS if ink.name in names.split()]
    name = Text(f"{maker} Cutting", f"{maker} Schneiden", f"{maker} Découpe")
    return Palette(name, [Colour(ink.name, ink.name) for ink in inks], len(inks), inks)


PALETTES = {
    "Gray100": gray_100,
    "dynamic": dynamic,
    "defrgb": default_rgb,
    "Process/rgbstd": standard_rgb,
    "Process/SVGColor": svg_colours,
    "Process/UniversalLaserSystems": laser_drivers,
    "Process/RGB/WebSafe": web_safe,
    "Process/RGB/256 Colors/system": system_256,
    "Process/RGB/256 Colors/gray": gray_256,
    "Process/RGB/256 Colors/vga": vga_256,
    "Process/RGB/256 Colors/Uniform": uniform_256,
    "Process/RGB/Misc/blkbody": black_bodies,
} | {f"Spot/ONYX Graphics/{file}": lambda c=cutter: cutting(*c) for file, cutter in CUTTERS.items()}
