#!/usr/bin/env python3
"""Writes the colour settings that ship: data/color/Settings/*.xml and data/config/ColorManagementRegions.xml.

Run by hand, where a table below has changed: tools/settings/build.py. Gives the same bytes every time. The countries
are checked against tzdata's list of ISO 3166-1, the profiles against data/color/profiles.
"""

import os
import sys
import xml.etree.ElementTree as ET

ROOT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..")
DATA = os.path.join(ROOT, "data")
PROFILES = os.path.join(DATA, "color", "profiles")
ISO_3166 = "/usr/share/zoneinfo/iso3166.tab"

# --- Profiles ---------------------------------------------------------------------------------------------------------

SRGB = "sRGB_IEC61966-2-1_no_black_scaling.icc"
ADOBE_RGB = "CompatibleWithAdobeRGB1998.icc"
SWOP = "USWebCoatedSWOP.icc"
GRACOL = "GRACoL Coated TR006.icc"
FOGRA39 = "ISO Coated FOGRA39.icc"
FOGRA29 = "ISO Uncoated FOGRA29.icc"
SNAP = "Newsprint SNAP TR002.icc"
DOT_GAIN_15 = "Dot Gain 15%.icc"
DOT_GAIN_20 = "Dot Gain 20%.icc"
GRAY_GAMMA_22 = "Gray Gamma 22.icc"

# --- Policies: what happens to the embedded profiles of RGB, CMYK and gray --------------------------------------------

KEEP = "ConvertToEmbeddedProfile"  # the file's profile is kept; a file without one gets the document's
CONVERT = "ConvertToBaselineProfile"  # the look is kept, numbers change
NUMBERS = "AssignBaselineProfile"  # the numbers are kept, whatever the file says of them


def policy(rgb, cmyk, gray, warn=False):
    return {"actions": (rgb, cmyk, gray), "warn": warn}


KEEP_ALL = policy(KEEP, KEEP, KEEP)
CONVERT_ALL = policy(CONVERT, CONVERT, CONVERT)
NUMBERS_ALL = policy(NUMBERS, NUMBERS, NUMBERS)

# --- The presets ------------------------------------------------------------------------------------------------------


def general_purpose(cmyk, gray):
    """Looks survive, nobody is asked. With the North American profiles it is what the library has built in."""
    return {"profiles": (SRGB, cmyk, gray), "open": KEEP_ALL, "import": CONVERT_ALL}


def prepress(cmyk, gray):
    """Files keep what they bring, inks keep their numbers on import, every doubt is told; black text stays black."""
    return {
        "profiles": (ADOBE_RGB, cmyk, gray),
        "blending": "Cmyk",
        "pure_black": True,
        "open": policy(KEEP, KEEP, KEEP, warn=True),
        "import": policy(CONVERT, NUMBERS, NUMBERS, warn=True),
    }


def web(cmyk):
    """All RGB becomes sRGB; gray is that of a screen."""
    return {"profiles": (SRGB, cmyk, GRAY_GAMMA_22), "open": policy(CONVERT, KEEP, KEEP), "import": CONVERT_ALL}


# Gray: a gain of 20 % is customary in North America, 15 % where ISO 12647-2 is printed. Japan prints on coated paper
# with ISO 12647-2's inks and gains, too: FOGRA39 stands in for Japan Color 2011 Coated, which does not ship.
PRESETS = {
    "North America General Purpose": general_purpose(SWOP, DOT_GAIN_20),
    "North America Prepress": prepress(GRACOL, DOT_GAIN_20),
    "North America Web": web(SWOP),
    "Europe General Purpose": general_purpose(FOGRA39, DOT_GAIN_15),
    "Europe Prepress": prepress(FOGRA39, DOT_GAIN_15),
    "Europe Web": web(FOGRA39),
    "Japan General Purpose": general_purpose(FOGRA39, DOT_GAIN_15),
    "Japan Prepress": prepress(FOGRA39, DOT_GAIN_15),
    "Japan Web": web(FOGRA39),
    # Numbers are never changed unless the user converts.
    "Minimal Color Management": {
        "profiles": (SRGB, SWOP, DOT_GAIN_20),
        "pure_black": True,
        "open": NUMBERS_ALL,
        "import": NUMBERS_ALL,
    },
    # Formulas instead of profiles; spot colours by their process builds, since Lab needs a profile to be inks.
    "Simulate Color Management Off": {
        "profiles": (SRGB, SWOP, GRAY_GAMMA_22),
        "module": "Linear",
        "spot": "Cmyk",
        "open": NUMBERS_ALL,
        "import": NUMBERS_ALL,
    },
    # Documents of inks, embedded profiles ignored, spot colours by their process builds, pictures rendered as photos.
    "Simulate Kestrel": {
        "profiles": (SRGB, SWOP, DOT_GAIN_20),
        "blending": "Cmyk",
        "intent": "Perceptual",
        "pure_black": True,
        "spot": "Cmyk",
        "open": NUMBERS_ALL,
        "import": NUMBERS_ALL,
    },
}

# --- The proofs: model, profile, intent, whether numbers of that model stay -------------------------------------------
# Newsprint and uncoated paper are so much smaller than what comes in that clipping would tell little: perceptual.

KEPT = ", CMYK numbers kept"
PROOFS = {
    name + suffix: ("Cmyk", profile, intent, suffix == KEPT)
    for name, profile, intent in (
        ("US Web Coated SWOP (TR003)", SWOP, "RelativeColorimetric"),
        ("GRACoL Coated (TR006)", GRACOL, "RelativeColorimetric"),
        ("ISO Coated (FOGRA39)", FOGRA39, "RelativeColorimetric"),
        ("ISO Uncoated (FOGRA29)", FOGRA29, "Perceptual"),
        ("Newsprint SNAP (TR002)", SNAP, "Perceptual"),
    )
    for suffix in ("", KEPT)
} | {
    "Black Ink (dot gain 15%)": ("Grayscale", DOT_GAIN_15, "RelativeColorimetric", False),
    "Black Ink (dot gain 20%)": ("Grayscale", DOT_GAIN_20, "RelativeColorimetric", False),
    "Gray Display (gamma 2.2)": ("Grayscale", GRAY_GAMMA_22, "RelativeColorimetric", False),
    "Web Display (sRGB)": ("Rgb", SRGB, "RelativeColorimetric", False),
}

# --- The regions ------------------------------------------------------------------------------------------------------
# By the regions of the United Nations (M49), but for printing that follows its home: the territories of the United
# States in the Pacific. Iran, the Caucasus and Central Asia buy their print and paper in the west. Antarctica prints
# nothing and gets what unknown countries get.

REGIONS = {
    "NorthAmerica": """
        BM CA GL PM US
        AG AI AW BB BL BQ BS CU CW DM DO GD GP HT JM KN KY LC MF MQ MS PR SX TC TT VC VG VI
        BZ CR GT HN MX NI PA SV
        AR BO BR BV CL CO EC FK GF GS GY PE PY SR UY VE
        AS GU MP UM
        AQ""",
    "EuropeMiddleEast": """
        AD AL AT AX BA BE BG BY CH CZ DE DK EE ES FI FO FR GB GG GI GR HR HU IE IM IS IT JE LI LT LU LV MC MD ME MK MT
        NL NO PL PT RO RS RU SE SI SJ SK SM UA VA
        AE AM AZ BH CY GE IL IQ IR JO KW LB OM PS QA SA SY TR YE
        KG KZ TJ TM UZ
        AO BF BI BJ BW CD CF CG CI CM CV DJ DZ EG EH ER ET GA GH GM GN GQ GW IO KE KM LR LS LY MA MG ML MR MU MW MZ NA
        NE NG RE RW SC SD SH SL SN SO SS ST SZ TD TF TG TN TZ UG YT ZA ZM ZW""",
    "Asia": """
        CN HK JP KP KR MN MO TW
        BN ID KH LA MM MY PH SG TH TL VN
        AF BD BT IN LK MV NP PK
        AU CC CX HM NF NZ
        CK FJ FM KI MH NC NR NU PF PG PN PW SB TK TO TV VU WF WS""",
}

# --- Writing ----------------------------------------------------------------------------------------------------------


def child(parent, tag, text=None, identifier=None):
    element = ET.SubElement(parent, tag, {} if identifier is None else {"id": identifier})
    if isinstance(text, bool):
        element.text = "true" if text else "false"
    else:
        element.text = text
    return element


def profile_of(parent, model, profile):
    if not os.path.isfile(os.path.join(PROFILES, profile)):
        sys.exit(f"{profile} does not ship")
    child(parent, "ColorProfile", profile, model)


def color_context(parent, profiles, blending, intent, identifier=None):
    context = child(parent, "ColorContext", identifier=identifier)
    for model, profile in profiles:
        profile_of(context, model, profile)
    child(context, "ColorModel", blending)
    child(context, "RenderingIntent", intent)


def color_policy(parent, identifier, rules):
    element = child(parent, "ColorPolicy", identifier=identifier)
    for model, action in zip(("Rgb", "Cmyk", "Grayscale"), rules["actions"]):
        child(element, "ColorPolicyAction", action, model + "PolicyAction")
    child(element, "WarnOnProfileMismatch", rules["warn"])
    child(element, "WarnOnMissingProfile", rules["warn"])


def color_settings():
    root = ET.Element("ColorManagementSettingsCollection")
    presets = child(root, "ColorSettingsPresets", identifier="Factory")
    for name, preset in PRESETS.items():
        settings = child(presets, "ColorSettings", identifier=name)
        child(settings, "Name", name)
        child(settings, "ColorModel", preset.get("spot", "Lab"), "SpotAltColorModel")
        child(settings, "PreservePureBlack", preset.get("pure_black", False))
        child(settings, "MapGrayToCmykBlackChannel", True)
        color_context(
            settings,
            zip(("Rgb", "Cmyk", "Grayscale"), preset["profiles"]),
            preset.get("blending", "Rgb"),
            preset.get("intent", "RelativeColorimetric"),
        )
        child(settings, "ColorManagementModule", preset.get("module", "Icm"), "ColorManagementModule")
        color_policy(settings, "ColorPolicyForOpen", preset["open"])
        color_policy(settings, "ColorPolicyForImport", preset["import"])
    return root


def proof_settings():
    root = ET.Element("ProofColorSettingsCollection")
    presets = child(root, "ProofColorSettingsPresets", identifier="Factory")
    for name, (model, profile, intent, numbers) in PROOFS.items():
        settings = child(presets, "ProofColorSettings", identifier=name)
        child(settings, "Name", name)
        warning = child(settings, "Color", identifier="GamutWarningLabelColor")
        space = child(warning, "ColorSpace")
        child(space, "ColorModel", "Rgb")
        profile_of(space, "Rgb", SRGB)
        for channel in ("0", "1", "0"):
            child(warning, "ColorChannel", channel)
        child(settings, "WarningLabelTransparency", "0")
        child(settings, "DisplayGamutWarning", False)
        child(settings, "PreserveNumbers", numbers)
        color_context(settings, [(model, profile)], model, intent, "ProofColorContext")
    return root


def regions():
    countries = sorted(" ".join(REGIONS.values()).split())
    with open(ISO_3166, encoding="utf-8") as table:
        known = sorted(line.split("\t")[0] for line in table if not line.startswith("#"))
    if countries != known:
        sys.exit(f"countries missing: {set(known) - set(countries)}; unknown: {set(countries) - set(known)}; or twice")
    root = ET.Element("ColorManagementRegions")
    for name, codes in REGIONS.items():
        region = ET.SubElement(root, "region", {"name": name})
        for code in sorted(codes.split()):
            ET.SubElement(region, "geoID", {"ID": code})
    return root


def write(root, *path):
    ET.indent(root)
    with open(os.path.join(DATA, *path), "w", encoding="utf-8", newline="\n") as file:
        file.write('<?xml version="1.0" encoding="UTF-8"?>\n' + ET.tostring(root, encoding="unicode") + "\n")


def main():
    write(color_settings(), "color", "Settings", "ColorSettings.xml")
    write(proof_settings(), "color", "Settings", "ProofColorSettings.xml")
    write(regions(), "config", "ColorManagementRegions.xml")


if __name__ == "__main__":
    main()
