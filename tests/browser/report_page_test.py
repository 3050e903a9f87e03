#!/usr/bin/env python3
"""The report's page in a real browser: report_page_test.py TOOL CHROMIUM EXAMPLES"""

import json
import math
import os
import re
import struct
import subprocess
import sys
import tempfile
import unittest
import zlib

from chromium import Chromium

TOOL, CHROMIUM, EXAMPLES = sys.argv[1:4]
PHONE, DESK = 360, 1280

# Names that break layouts, all kinds of colours, an ink without an appearance, too much ink.
HARD = """#000000 <script>console.error('from a name')</script><img src=http://example.invalid/x.png>
#00d68f ADonaudampfschifffahrtselektrizitaetenhauptbetriebswerkbauunterbeamtengesellschaftsnamewithoutanyblank
CMYK100(90,90,90,90) Heavy
CMYK100(0,100,100,0)
GRAY255(127) \u05d0\u05e4\u05d5\u05e8 \u7070\u8272
LAB(50,20,20) Lab
#ffffff White
SPOT(1,100)@{00000000-0000-0000-0000-000000000001} Ink
"""

# Each swatch as the browser has it: its colours, and where its halves are.
SWATCHES = """[...document.querySelectorAll('svg.swatch')].map(svg => {
  const fill = name => getComputedStyle(svg.querySelector('rect.' + name)).fill;
  const box = svg.getBoundingClientRect();
  return {screen: fill('screen'), paper: fill('paper'), visible: svg.checkVisibility(), x: box.x + scrollX,
          y: box.y + scrollY, width: box.width, height: box.height};
})"""
TEXTS = """[...document.querySelectorAll('tbody tr')].map(row =>
  [...row.querySelectorAll('td.who, td.build text, td.number, td.says')].map(cell => cell.textContent).join(' '))"""


def rgb(hexadecimal):
    return tuple(int(hexadecimal[i:i + 2], 16) for i in (1, 3, 5))


def pixels_of_column(png):
    """The colours of a PNG that is one pixel wide, 8 bits, RGB or RGBA."""
    position, data = 8, b""
    while position < len(png):
        length, kind = struct.unpack(">I4s", png[position:position + 8])
        body = png[position + 8:position + 8 + length]
        if kind == b"IHDR":
            width, height, depth, colour_type = struct.unpack(">IIBB", body[:10])
            assert width == 1 and depth == 8 and colour_type in (2, 6), (width, depth, colour_type)
        elif kind == b"IDAT":
            data += body
        position += length + 12
    size = 3 if colour_type == 2 else 4
    rows, above, colours = zlib.decompress(data), bytes(size), []
    for row in range(height):
        start = row * (size + 1)
        # In a column there is nothing to the left: Sub is None, Paeth is Up, and Average halves what is above.
        carried = {0: lambda up: 0, 1: lambda up: 0, 2: lambda up: up, 3: lambda up: up // 2, 4: lambda up: up}[rows[start]]
        above = bytes((value + carried(up)) & 255 for value, up in zip(rows[start + 1:start + 1 + size], above))
        colours.append(tuple(above[:3]))
    return colours


def lines_of(report):
    """The lines of the page's table: the screen's colour and a build; None for a colour without one."""
    lines = []
    for colour in report["colours"]:
        lines.append((colour["screen"], colour) if "screen" in colour else None)
        if "nearest" in colour:
            lines.append((colour["screen"], colour["nearest"]))
    return lines


class ReportPage(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.browser = Chromium(CHROMIUM)
        with open(cls.path("hard.txt"), "w", encoding="utf-8") as file:
            file.write(HARD)
        cls.reports = {"hard": cls.report("hard", cls.path("hard.txt"), "--ink-limit", "250"),
                       "paper": cls.report("paper", cls.path("hard.txt"), "--intent", "absolute", "--profile",
                                           "Newsprint SNAP TR002.icc"),
                       "brand": cls.report("brand", os.path.join(EXAMPLES, "brand.gpl")),
                       "svg": cls.report("svg", os.path.join(EXAMPLES, "svg-colours.txt"))}

    @classmethod
    def tearDownClass(cls):
        cls.browser.close()
        cls.folder.cleanup()

    @classmethod
    def path(cls, name):
        return os.path.join(cls.folder.name, name)

    @classmethod
    def report(cls, name, *words):
        run = subprocess.run([TOOL, "report", "--json", "-o", cls.path(name + ".html"), *words], capture_output=True,
                             check=False)
        assert run.returncode in (0, 1), run.stderr.decode()
        return json.loads(run.stdout)

    def on_each_page(self, check, *widths):
        for width in widths:
            for name, report in self.reports.items():
                with self.subTest(page=name, width=width):
                    self.browser.messages.clear()
                    self.browser.requests.clear()
                    self.browser.open(self.path(name + ".html"), width)
                    check(name, report, width)

    def test_stands_alone_and_is_silent(self):
        def check(name, _report, _width):
            self.browser.evaluate("0")  # what was said before has arrived then
            self.assertEqual(self.browser.messages, [])
            self.assertEqual(self.browser.requests, ["file://" + self.path(name + ".html")])
            self.assertEqual(self.browser.evaluate("document.scripts.length"), 0)

        self.on_each_page(check, PHONE, DESK)

    def test_draws_and_says_what_the_json_says(self):
        def check(_name, report, _width):
            texts = self.browser.evaluate(TEXTS)
            swatches = self.browser.evaluate(SWATCHES)
            lines = lines_of(report)
            self.assertEqual((len(texts), len(swatches)), (len(lines), sum(line is not None for line in lines)))
            shown = iter(swatches)
            for line, text in zip(lines, texts):
                if line is None:
                    continue
                swatch, (screen, build) = next(shown), line
                self.assertTrue(swatch["visible"])
                self.assertEqual(swatch["screen"], "rgb(%d, %d, %d)" % rgb(screen))
                self.assertEqual(swatch["paper"], "rgb(%d, %d, %d)" % rgb(build["paper"]))
                for value in (build["paper"], " ".join(map(str, build["cmyk"])), f"{build['ink']} %",
                              f"{build['deltaE2000']:.1f}", f"{build['libraryDistance']:.3f}"):
                    self.assertIn(value, text)

        self.on_each_page(check, PHONE, DESK)

    def test_puts_every_colour_on_the_wheel(self):
        def check(_name, report, _width):
            dots = self.browser.evaluate("""[...document.querySelectorAll('svg.wheel .dot')].map(dot => ({
              x: +dot.getAttribute('cx') - 50, y: 50 - dot.getAttribute('cy'), fill: getComputedStyle(dot).fill,
              neutral: dot.matches('.neutral'), visible: dot.checkVisibility()}))""")
            reach = float(self.browser.evaluate("[...document.querySelectorAll('.grid')].at(-1).getAttribute('r')"))
            self.assertTrue(all(dot["visible"] for dot in dots))
            places = {(dot["fill"], dot["neutral"], round(dot["x"], 1), round(dot["y"], 1)) for dot in dots}
            wanted = set()
            for colour in filter(lambda colour: "wheel" in colour, report["colours"]):
                angle, radius = math.radians(colour["wheel"]["hue"]), reach * colour["wheel"]["saturation"] / 255
                place = radius * math.sin(angle), radius * math.cos(angle)
                near = [spot for spot in places if spot[:2] == ("rgb(%d, %d, %d)" % rgb(colour["screen"]),
                        colour["wheel"]["nearlyNeutral"]) and math.dist(spot[2:], place) < 0.1]
                self.assertTrue(near, colour)
                wanted.update(near)
            self.assertEqual(places, wanted)
            rules = self.browser.evaluate("[...document.querySelectorAll('.rules li')].map(li => li.innerText)")
            self.assertEqual(len(rules), len(report["wheel"]["rules"]))
            for text, rule in zip(rules, report["wheel"]["rules"]):
                self.assertIn(rule["rule"].replace("-", " "), text.lower())
            arms = report["wheel"]["rules"][0]["arms"] if report["wheel"]["rules"][0]["near"] else []
            self.assertEqual(self.browser.evaluate("document.querySelectorAll('.wheel .arm').length"), len(arms))

        self.on_each_page(check, PHONE, DESK)

    def test_its_pixels_are_those_colours(self):
        def check(name, report, _width):
            if name == "svg":
                return  # longer than what the browser draws at once
            swatches = self.browser.evaluate(SWATCHES)
            height = int(max(swatch["y"] + swatch["height"] for swatch in swatches)) + 1
            left, right = (
                pixels_of_column(self.browser.column(round(swatches[0]["x"] + swatches[0]["width"] * part), height))
                for part in (0.25, 0.75))
            for swatch, (screen, build) in zip(swatches, filter(None, lines_of(report)), strict=True):
                middle = round(swatch["y"] + swatch["height"] / 2)
                self.assertEqual((left[middle], right[middle]), (rgb(screen), rgb(build["paper"])))

        self.on_each_page(check, DESK)

    def test_does_not_scroll_sideways(self):
        def check(_name, _report, width):
            self.assertEqual(self.browser.evaluate("document.documentElement.clientWidth"), width)
            self.assertLessEqual(self.browser.evaluate("document.documentElement.scrollWidth"), width)
            # Nor is anything cut off at the side.
            self.assertEqual(self.browser.evaluate(f"""[...document.querySelectorAll('main :not(svg, svg *)')].filter(e =>
              e.getBoundingClientRect().right > {width} || e.clientWidth > 0 && e.scrollWidth > e.clientWidth + 1
              ).map(e => e.outerHTML.slice(0, 100))"""), [])

        self.on_each_page(check, 320, PHONE, 768, DESK)

    def test_prints_on_a_sensible_number_of_pages(self):
        def check(_name, report, _width):
            pages = len(re.findall(rb"/Type\s*/Page\b", self.browser.pdf()))
            # The head takes half a page, the notes a quarter, and a page holds 16 lines at the least.
            self.assertIn(pages, range(1, 3 + len(lines_of(report)) // 16))

        self.on_each_page(check, DESK)


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], "-v"])
