"""Colour arithmetic of the palette builder: OKLCH, sRGB, Lab on D50, black bodies. RGB is 0 to 1."""

import math

# --- sRGB (IEC 61966-2-1) ---------------------------------------------------------------------------------------------

SRGB_FROM_XYZ = (
    (3.2404542, -1.5371385, -0.4985314),
    (-0.9692660, 1.8760108, 0.0415560),
    (0.0556434, -0.2040259, 1.0572252),
)
# XYZ adapted to D50 by Bradford, as ICC profiles of sRGB have it.
XYZ_D50_FROM_SRGB = (
    (0.4360747, 0.3850649, 0.1430804),
    (0.2225045, 0.7168786, 0.0606169),
    (0.0139322, 0.0971045, 0.7141733),
)
D50 = (0.96422, 1.0, 0.82521)


def product(matrix, vector):
    return [sum(m * v for m, v in zip(row, vector)) for row in matrix]


def encoded(linear):
    return 12.92 * linear if linear <= 0.0031308 else 1.055 * linear ** (1 / 2.4) - 0.055


def linear(encoded_value):
    return encoded_value / 12.92 if encoded_value <= 0.04045 else ((encoded_value + 0.055) / 1.055) ** 2.4


def rgb_bytes(rgb):
    return tuple(math.floor(255 * min(max(v, 0.0), 1.0) + 0.5) for v in rgb)


# --- OKLCH (Ottosson 2020) --------------------------------------------------------------------------------------------


def linear_rgb_from_oklch(lightness, chroma, hue):
    a, b = chroma * math.cos(math.radians(hue)), chroma * math.sin(math.radians(hue))
    l = (lightness + 0.3963377774 * a + 0.2158037573 * b) ** 3
    m = (lightness - 0.1055613458 * a - 0.0638541728 * b) ** 3
    s = (lightness - 0.0894841775 * a - 1.2914855480 * b) ** 3
    return (
        4.0767416621 * l - 3.3077115913 * m + 0.2309699292 * s,
        -1.2684380046 * l + 2.6097574011 * m - 0.3413193965 * s,
        -0.0041960863 * l - 0.7034186147 * m + 1.7076147010 * s,
    )


def oklch_from_bytes(rgb):
    r, g, b = (linear(v / 255) for v in rgb)
    l = (0.4122214708 * r + 0.5363325363 * g + 0.0514459929 * b) ** (1 / 3)
    m = (0.2119034982 * r + 0.6806995451 * g + 0.1073969566 * b) ** (1 / 3)
    s = (0.0883024619 * r + 0.2817188376 * g + 0.6299787005 * b) ** (1 / 3)
    a = 1.9779984951 * l - 2.4285922050 * m + 0.4505937099 * s
    b = 0.0259040371 * l + 0.7827717662 * m - 0.8086757660 * s
    lightness = 0.2104542553 * l + 0.7936177850 * m - 0.0040720468 * s
    return lightness, math.hypot(a, b), math.degrees(math.atan2(b, a)) % 360


def bytes_from_oklch(lightness, chroma, hue):
    """What sRGB does not hold keeps its lightness and hue and loses chroma."""

    def holds(c):
        return all(-1e-4 <= v <= 1.0001 for v in linear_rgb_from_oklch(lightness, c, hue))

    if not holds(chroma):
        low, high = 0.0, chroma
        for _ in range(30):
            middle = (low + high) / 2
            low, high = (middle, high) if holds(middle) else (low, middle)
        chroma = low
    return rgb_bytes(encoded(max(v, 0.0)) for v in linear_rgb_from_oklch(lightness, chroma, hue))


# --- Lab on D50 -------------------------------------------------------------------------------------------------------


def lab_from_xyz(xyz):
    def f(t):
        return t ** (1 / 3) if t > 216 / 24389 else (24389 / 27 * t + 16) / 116

    x, y, z = (f(v / w) for v, w in zip(xyz, D50))
    return 116 * y - 16, 500 * (x - y), 200 * (y - z)


def xyz_from_rgb_bytes(rgb):
    return product(XYZ_D50_FROM_SRGB, [linear(v / 255) for v in rgb])


# --- Black bodies -----------------------------------------------------------------------------------------------------


def lobe(wavelength, middle, left, right):
    return math.exp(-0.5 * ((wavelength - middle) / (left if wavelength < middle else right)) ** 2)


def matching(wavelength):
    """The CIE 1931 colour matching functions at so many nanometres: Wyman, Sloan and Shirley 2013, multi-lobe fit."""
    x = 1.056 * lobe(wavelength, 599.8, 37.9, 31.0) + 0.362 * lobe(wavelength, 442.0, 16.0, 26.7)
    y = 0.821 * lobe(wavelength, 568.8, 46.9, 40.5) + 0.286 * lobe(wavelength, 530.9, 16.3, 31.1)
    z = 1.217 * lobe(wavelength, 437.0, 11.8, 36.0) + 0.681 * lobe(wavelength, 459.0, 26.0, 13.8)
    return x - 0.065 * lobe(wavelength, 501.1, 20.4, 26.2), y, z


def black_body_bytes(kelvin):
    """As bright as sRGB can show it. Below 1900 K it lies outside: the blue that would be less than none is none."""
    xyz = [0.0, 0.0, 0.0]
    for nanometres in range(380, 781):
        metres = nanometres * 1e-9
        planck = metres**-5 / math.expm1(1.4387769e-2 / (metres * kelvin))
        xyz = [sum_ + planck * m for sum_, m in zip(xyz, matching(nanometres))]
    rgb = [max(v, 0.0) for v in product(SRGB_FROM_XYZ, xyz)]
    return rgb_bytes(encoded(v / max(rgb)) for v in rgb)
