"""Debian's Chromium without a window, driven over its DevTools protocol."""

import base64
import json
import os
import pathlib
import shutil
import socket
import struct
import subprocess
import tempfile
import time
import urllib.request

PROGRAM = "chromium"
START_SECONDS = 60


class WebSocket:
    """The client's side of a WebSocket, as far as DevTools needs it."""

    def __init__(self, port, path):
        self.connection = socket.create_connection(("127.0.0.1", port), timeout=120)
        key = base64.b64encode(os.urandom(16)).decode()
        self.connection.sendall(
            f"GET {path} HTTP/1.1\r\nHost: 127.0.0.1:{port}\r\nUpgrade: websocket\r\n"
            f"Connection: Upgrade\r\nSec-WebSocket-Key: {key}\r\nSec-WebSocket-Version: 13\r\n\r\n"
            .encode())
        self.stream = self.connection.makefile("rb")
        if b" 101 " not in self.stream.readline():
            raise RuntimeError("the browser does not talk")
        while self.stream.readline() != b"\r\n":
            pass

    def send(self, text):
        data, mask = text.encode(), os.urandom(4)
        if len(data) < 126:
            head = bytes([0x81, 0x80 | len(data)])
        elif len(data) < 65536:
            head = b"\x81\xfe" + struct.pack(">H", len(data))
        else:
            head = b"\x81\xff" + struct.pack(">Q", len(data))
        self.connection.sendall(head + mask + bytes(c ^ mask[i % 4] for i, c in enumerate(data)))

    def receive(self):
        data = b""
        while True:
            first, second = self.stream.read(2)
            length = second & 127
            if length == 126:
                length = struct.unpack(">H", self.stream.read(2))[0]
            elif length == 127:
                length = struct.unpack(">Q", self.stream.read(8))[0]
            data += self.stream.read(length)
            if first & 128:
                return data.decode()

    def close(self):
        self.stream.close()
        self.connection.close()


class Browser:
    """One page in a Chromium of its own."""

    def __init__(self, width=1280, height=800, phone=False, dark=False):
        if not shutil.which(PROGRAM):
            raise AssertionError(f"{PROGRAM} is missing; scripts/install.sh test brings it")
        self.profile = pathlib.Path(tempfile.mkdtemp(prefix="lamp-browser-"))
        options = ["--headless=new", "--disable-gpu", "--no-first-run", "--disable-sync",
                   "--disable-background-networking", "--disable-component-update",
                   "--disable-extensions", "--no-proxy-server", "--hide-scrollbars",
                   f"--user-data-dir={self.profile}", "--remote-debugging-port=0", "about:blank"]
        if os.getuid() == 0:
            options.insert(0, "--no-sandbox")  # which refuses to work for root
        self.log = open(self.profile / "log.txt", "wb")
        self.process = subprocess.Popen([PROGRAM, *options], stdin=subprocess.DEVNULL,
                                        stdout=self.log, stderr=self.log)
        try:
            self.socket = self.connect()
        except Exception:
            self.close()
            raise
        self.count = 0
        self.faults = []  # what the page complained of
        for domain in ("Runtime", "Log", "Page", "Network"):
            self.command(domain + ".enable")
        self.resize(width, height, phone)
        self.scheme("dark" if dark else "light")

    def connect(self):
        end = time.monotonic() + START_SECONDS
        while time.monotonic() < end:
            if self.process.poll() is not None:
                text = (self.profile / "log.txt").read_text(errors="replace")
                raise AssertionError(f"{PROGRAM} can't run here: {text[-500:]}")
            try:
                port = int((self.profile / "DevToolsActivePort").read_text().split()[0])
                with urllib.request.urlopen(f"http://127.0.0.1:{port}/json") as answer:
                    pages = [each for each in json.load(answer) if each["type"] == "page"]
                path = pages[0]["webSocketDebuggerUrl"].split(str(port), 1)[1]
                return WebSocket(port, path)
            except (OSError, IndexError, ValueError):
                time.sleep(0.05)
        raise AssertionError(f"{PROGRAM} did not start within {START_SECONDS} s")

    def close(self):
        if hasattr(self, "socket"):
            self.socket.close()
        if self.process.poll() is None:
            self.process.terminate()
            self.process.wait(timeout=30)
        self.log.close()
        shutil.rmtree(self.profile, ignore_errors=True)

    def command(self, method, **parameters):
        self.count += 1
        self.socket.send(json.dumps({"id": self.count, "method": method, "params": parameters}))
        while True:
            message = json.loads(self.socket.receive())
            if message.get("id") == self.count:
                if "error" in message:
                    raise RuntimeError(f"{method}: {message['error']}")
                return message["result"]
            self.heed(message)

    def heed(self, message):
        method, what = message.get("method"), message.get("params", {})
        if method == "Runtime.exceptionThrown":
            self.faults.append(json.dumps(what["exceptionDetails"])[:600])
        elif method == "Log.entryAdded" and what["entry"]["level"] == "error":
            self.faults.append(f"{what['entry']['text']} {what['entry'].get('url', '')}")
        elif method == "Runtime.consoleAPICalled" and what["type"] in ("error", "warning"):
            self.faults.append(json.dumps(what["args"])[:600])

    def resize(self, width, height, phone=False, ratio=None):
        self.command("Emulation.setDeviceMetricsOverride", width=width, height=height,
                     deviceScaleFactor=ratio or (2 if phone else 1), mobile=phone)
        self.command("Emulation.setTouchEmulationEnabled", enabled=phone)

    def scheme(self, name):
        """Light or dark; nothing fades on the way."""
        self.command("Emulation.setEmulatedMedia",
                     features=[{"name": "prefers-color-scheme", "value": name},
                               {"name": "prefers-reduced-motion", "value": "reduce"}])

    def open(self, address):
        self.command("Page.navigate", url=address)
        self.until("document.readyState === 'complete'")

    def run(self, expression):
        """Evaluates JavaScript; answers its value."""
        result = self.command("Runtime.evaluate", expression=expression, awaitPromise=True,
                              returnByValue=True)
        if "exceptionDetails" in result:
            raise AssertionError(f"{expression}: {json.dumps(result['exceptionDetails'])[:600]}")
        return result["result"].get("value")

    def until(self, expression, seconds=20):
        """Waits until an expression is true; answers its value."""
        end = time.monotonic() + seconds
        while (value := self.run(expression)) in (None, False, 0, ""):
            if time.monotonic() > end:
                raise AssertionError(f"waited {seconds} s in vain for {expression}")
            time.sleep(0.05)
        return value

    def text(self, selector):
        return self.run(f"document.querySelector({json.dumps(selector)})?.innerText ?? null")

    def place(self, selector):
        """The middle of an element on the screen, scrolled into view."""
        place = self.run(f"""(() => {{
            const element = document.querySelector({json.dumps(selector)});
            if (!element) return null;
            element.scrollIntoView({{ block: 'center' }});
            const box = element.getBoundingClientRect();
            return [box.x + box.width / 2, box.y + box.height / 2];
        }})()""")
        if place is None:
            raise AssertionError(f"the page has no {selector}")
        return place

    def click(self, selector):
        self.click_at(*self.place(selector))

    def click_at(self, x, y):
        for kind in ("mousePressed", "mouseReleased"):
            self.command("Input.dispatchMouseEvent", type=kind, x=x, y=y, button="left", clickCount=1)

    def tap(self, selector):
        x, y = self.place(selector)
        self.command("Input.dispatchTouchEvent", type="touchStart", touchPoints=[{"x": x, "y": y}])
        self.command("Input.dispatchTouchEvent", type="touchEnd", touchPoints=[])

    def press(self, key, code=0, text=None, shift=False):
        more = {"text": text} if text else {}
        modifiers = 8 if shift else 0
        self.command("Input.dispatchKeyEvent", type="keyDown", key=key, windowsVirtualKeyCode=code,
                     modifiers=modifiers, **more)
        self.command("Input.dispatchKeyEvent", type="keyUp", key=key, windowsVirtualKeyCode=code,
                     modifiers=modifiers)

    def tab(self, shift=False):
        self.press("Tab", 9, shift=shift)

    def type(self, text):
        self.command("Input.insertText", text=text)

    def shot(self, path):
        data = self.command("Page.captureScreenshot", format="png")["data"]
        pathlib.Path(path).write_bytes(base64.b64decode(data))
