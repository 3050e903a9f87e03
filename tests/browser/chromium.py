"""A headless Chromium, driven through its pipe of the DevTools protocol; needs nothing but Python's own library."""

import base64
import json
import os
import select
import shutil
import subprocess
import tempfile
import time

PATIENCE = 60  # seconds for one answer


class Chromium:
    """One page. What it writes to the console is kept in `messages`, the addresses that it asks for in `requests`."""

    def __init__(self, program):
        self._home = tempfile.mkdtemp(prefix="zelclr-browser-")
        to_browser, self._out = os.pipe()
        self._in, from_browser = os.pipe()
        words = [program, "--headless", "--disable-gpu", "--hide-scrollbars", "--force-color-profile=srgb",
                 "--no-first-run", "--remote-debugging-pipe", "--user-data-dir=" + self._home]
        if os.geteuid() == 0:
            words.append("--no-sandbox")
        # The browser reads commands from descriptor 3 and answers to 4, each message ended by a null byte.
        shell = f'exec "$@" 3<&{to_browser} 4>&{from_browser}'
        self._process = subprocess.Popen(["bash", "-c", shell, "bash", *words], pass_fds=(to_browser, from_browser),
                                         stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                         stderr=subprocess.DEVNULL)
        os.close(to_browser)
        os.close(from_browser)
        self._received = b""
        self._number = 0
        self._session = None
        self._loaded = False
        self.messages = []
        self.requests = []
        target = self.ask("Target.createTarget", url="about:blank")["targetId"]
        self._session = self.ask("Target.attachToTarget", targetId=target, flatten=True)["sessionId"]
        for domain in ("Page", "Runtime", "Log", "Network"):
            self.ask(domain + ".enable")

    def close(self):
        self._process.kill()
        self._process.wait()
        os.close(self._in)
        os.close(self._out)
        shutil.rmtree(self._home, ignore_errors=True)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def ask(self, method, **parameters):
        self._number += 1
        message = {"id": self._number, "method": method, "params": parameters}
        if self._session:
            message["sessionId"] = self._session
        os.write(self._out, json.dumps(message).encode() + b"\0")
        while True:
            answer = self._next()
            if answer.get("id") == self._number:
                if "error" in answer:
                    raise RuntimeError(f"{method}: {answer['error']['message']}")
                return answer["result"]

    def open(self, path, width, height=800):
        """Shows a file as on a device that is `width` CSS pixels wide, and waits until it is loaded."""
        self.ask("Emulation.setDeviceMetricsOverride", width=width, height=height, deviceScaleFactor=1,
                 mobile=width < 600)
        self._loaded = False
        self.ask("Page.navigate", url="file://" + os.path.abspath(path))
        while not self._loaded:
            self._next()

    def evaluate(self, expression):
        result = self.ask("Runtime.evaluate", expression=expression, returnByValue=True)
        if "exceptionDetails" in result:
            raise RuntimeError(result["exceptionDetails"]["exception"]["description"])
        return result["result"]["value"]

    def column(self, x, height):
        """A PNG of the page's pixels at one x, from its top down to `height`."""
        clip = {"x": x, "y": 0, "width": 1, "height": height, "scale": 1}
        return base64.b64decode(self.ask("Page.captureScreenshot", format="png", clip=clip,
                                         captureBeyondViewport=True)["data"])

    def pdf(self):
        return base64.b64decode(self.ask("Page.printToPDF", printBackground=True, paperWidth=8.27,
                                         paperHeight=11.69, preferCSSPageSize=True)["data"])

    def _next(self):
        """One message of the browser; those that are no answers are kept by their kind."""
        deadline = time.monotonic() + PATIENCE
        while b"\0" not in self._received:
            if not select.select([self._in], [], [], max(0, deadline - time.monotonic()))[0]:
                raise RuntimeError("the browser does not answer")
            part = os.read(self._in, 1 << 20)
            if not part:
                raise RuntimeError("the browser has ended")
            self._received += part
        text, self._received = self._received.split(b"\0", 1)
        message = json.loads(text)
        method, parameters = message.get("method"), message.get("params", {})
        if method == "Page.loadEventFired":
            self._loaded = True
        elif method == "Network.requestWillBeSent":
            self.requests.append(parameters["request"]["url"])
        elif method in ("Runtime.consoleAPICalled", "Runtime.exceptionThrown", "Log.entryAdded"):
            self.messages.append(parameters)
        return message
