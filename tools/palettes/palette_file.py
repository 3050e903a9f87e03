"""Palettes and their XML files. The same palette gives the same bytes."""

import xml.etree.ElementTree as ET
from collections import namedtuple

from texts import LANGUAGES, Text

# The name is a str or a Text, which goes into the resources too. The space is a model ("RGB": bytes; "CMYK", "Gray":
# percents) or the name of an ink (no values: full tint).
Colour = namedtuple("Colour", "name space values", defaults=((),))
Ink = namedtuple("Ink", "name number cmyk rgb")
# The palettes of the library are locked, those that people work in are not.
Palette = namedtuple("Palette", "name colours width inks locked", defaults=(8, (), True))

DEFAULT_WIDTH = 8
PLACES = {"RGB": (255, 3), "CMYK": (100, 2), "Gray": (100, 2)}


def tints(space, values):
    """Fractions with as many places as give the values back: one in 255 needs three, a percent two."""
    if space not in PLACES:
        return "1"
    whole, places = PLACES[space]
    texts = [f"{value / whole:.{places}f}".rstrip("0").rstrip(".") for value in values]
    inside = all(0 <= value <= whole for value in values)
    if not inside or [int(float(text) * whole + 0.5) for text in texts] != list(values):
        raise ValueError(f"{values} are none of {space}, or do not come back from {texts}")
    return ",".join(texts)


def english(name):
    return name.en if isinstance(name, Text) else name


def resource_of(name):
    return english(name).lower().replace("%", "").replace(" ", "-")


def check(palette):
    names = [english(colour.name) for colour in palette.colours]
    if len(set(names)) != len(names) or not all(names):
        raise ValueError(f"{english(palette.name)}: names missing or twice")
    resources = {resource_of(c.name) for c in palette.colours if isinstance(c.name, Text)}
    if len(resources) != sum(isinstance(c.name, Text) for c in palette.colours) or "palette" in resources:
        raise ValueError(f"{english(palette.name)}: two texts of one identifier")


def as_xml(palette, identifier):
    check(palette)
    localised = [(colour.name, resource_of(colour.name)) for colour in palette.colours if isinstance(colour.name, Text)]
    root = ET.Element("palette", {"guid": identifier, "name": english(palette.name), "resid": "palette"})
    if palette.locked:
        root.set("locked", "true")
    if palette.inks:
        spaces = ET.SubElement(root, "colorspaces")
        for ink in palette.inks:
            space = ET.SubElement(spaces, "cs", {"name": ink.name, "fixedID": str(ink.number)})
            for model, values in (("CMYK", ink.cmyk), ("RGB", ink.rgb)):
                ET.SubElement(space, "color", {"cs": model, "tints": tints(model, values)})
    page = ET.SubElement(ET.SubElement(root, "colors"), "page")
    if palette.width != DEFAULT_WIDTH:
        page.set("width", str(palette.width))
    for colour in palette.colours:
        element = ET.SubElement(page, "color", {"cs": colour.space})
        if isinstance(colour.name, Text):
            element.set("resid", resource_of(colour.name))
        element.set("name", english(colour.name))
        element.set("tints", tints(colour.space, colour.values))
    localization = ET.SubElement(root, "localization")
    for text, resource in [(palette.name, "palette")] + localised:
        element = ET.SubElement(localization, "resource", {"id": resource})
        for language in LANGUAGES:
            ET.SubElement(element, language).text = getattr(text, language)
    ET.indent(root)
    text = ET.tostring(root, encoding="unicode").replace(" />", "/>")
    return f'<?xml version="1.0" encoding="UTF-8"?>\n{text}\n'.encode()
