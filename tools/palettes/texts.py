"""Names of colours in the languages that the core palettes speak."""

from collections import namedtuple

LANGUAGES = ("en", "de", "fr")
Text = namedtuple("Text", LANGUAGES)

# The twelve colours of the wheel of inks and of that of light, 30 degrees apart.
HUES = (
    Text("Red", "Rot", "Rouge"),
    Text("Orange", "Orange", "Orange"),
    Text("Yellow", "Gelb", "Jaune"),
    Text("Lime", "Limettengrün", "Vert citron"),
    Text("Green", "Grün", "Vert"),
    Text("Turquoise", "Türkis", "Turquoise"),
    Text("Cyan", "Cyan", "Cyan"),
    Text("Azure", "Azurblau", "Azur"),
    Text("Blue", "Blau", "Bleu"),
    Text("Violet", "Violett", "Violet"),
    Text("Magenta", "Magenta", "Magenta"),
    Text("Crimson", "Karmesinrot", "Cramoisi"),
)
NATURALS = (
    Text("Ivory", "Elfenbein", "Ivoire"),
    Text("Cream", "Creme", "Crème"),
    Text("Sand", "Sand", "Sable"),
    Text("Apricot", "Aprikose", "Abricot"),
    Text("Terracotta", "Terrakotta", "Terre cuite"),
    Text("Rust", "Rost", "Rouille"),
    Text("Sienna", "Siena", "Sienne"),
    Text("Chestnut", "Kastanie", "Châtaigne"),
    Text("Chocolate", "Schokolade", "Chocolat"),
    Text("Olive", "Olive", "Olive"),
    Text("Moss", "Moos", "Mousse"),
    Text("Slate", "Schiefer", "Ardoise"),
)
RICH_BLACK = Text("Rich Black", "Tiefschwarz", "Noir soutenu")

# How each language says a tone. All German names of hues are neuter, all French ones masculine.
TONES = {
    "very pale": Text("Very Pale {}", "Sehr blasses {}", "{} très pâle"),
    "pale": Text("Pale {}", "Blasses {}", "{} pâle"),
    "light": Text("Light {}", "Helles {}", "{} clair"),
    "soft": Text("Soft {}", "Sanftes {}", "{} doux"),
    "full": Text("{}", "{}", "{}"),
    "muted": Text("Muted {}", "Gedecktes {}", "{} grisé"),
    "deep": Text("Deep {}", "Tiefes {}", "{} profond"),
    "dark": Text("Dark {}", "Dunkles {}", "{} foncé"),
    "very dark": Text("Very Dark {}", "Sehr dunkles {}", "{} très foncé"),
}


def toned(tone, hue):
    return Text(*(pattern.format(name) for pattern, name in zip(TONES[tone], hue)))


def percent_black(percent):
    if percent == 0:
        return Text("White", "Weiß", "Blanc")
    if percent == 100:
        return Text("Black", "Schwarz", "Noir")
    return Text(f"{percent}% Black", f"{percent} % Schwarz", f"Noir {percent} %")


# The sixteen colours of HTML 4, whose names all languages of the suite have words for.
HTML_COLOURS = {
    "black": ("Schwarz", "Noir"),
    "silver": ("Silber", "Argent"),
    "gray": ("Grau", "Gris"),
    "white": ("Weiß", "Blanc"),
    "maroon": ("Kastanienbraun", "Bordeaux"),
    "red": ("Rot", "Rouge"),
    "purple": ("Purpur", "Pourpre"),
    "fuchsia": ("Fuchsia", "Fuchsia"),
    "green": ("Grün", "Vert"),
    "lime": ("Limettengrün", "Vert citron"),
    "olive": ("Oliv", "Olive"),
    "yellow": ("Gelb", "Jaune"),
    "navy": ("Marineblau", "Bleu marine"),
    "blue": ("Blau", "Bleu"),
    "teal": ("Blaugrün", "Sarcelle"),
    "aqua": ("Wasserblau", "Aqua"),
}
