"""Starts the real programs and talks to them: a controller, the scripted user, and curl."""

import json
import os
import pathlib
import re
import select
import shutil
import socket
import subprocess
import sys
import tempfile
import threading
import unittest
import urllib.parse
import urllib.request
import xml.etree.ElementTree as ElementTree
from http.client import HTTPConnection

BIN = pathlib.Path(os.environ["LAMP_BIN"])
_SCRIPT = (BIN / "lamp-script").read_bytes()
# Under a sanitizer everything is slow and takes memory; under the one for threads even more so.
THREADS_SANITIZED = b"__tsan_init" in _SCRIPT
SANITIZED = THREADS_SANITIZED or b"__asan_init" in _SCRIPT


class Controller:
    """A lamp-controller process on a free port."""

    def __init__(self, folder, *options):
        self.folder = pathlib.Path(folder)
        self.options = options
        self.errors = []  # the lines of its standard error
        self.port = 0     # the one that it found stays its own
        self.start()

    def start(self):
        self.process = subprocess.Popen(
            [BIN / "lamp-controller", "--port", str(self.port), "--state", self.folder, *self.options],
            stdout=subprocess.PIPE,
            stderr=subprocess.PIPE,
            text=True,
        )
        self.listener = threading.Thread(target=self.heed_errors, args=(self.process.stderr,),
                                         daemon=True)
        self.listener.start()
        self.heed_start()

    def heed_errors(self, stream):
        with stream:
            for line in stream:
                self.errors.append(line.rstrip("\n"))
                if not line.startswith("going on with "):
                    sys.stderr.write(line)

    def heed_start(self):
        """Reads what it prints when it begins to serve."""
        line = self.process.stdout.readline()
        found = re.match(r"listening on http://127\.0\.0\.1:(\d+)", line)
        if not found:
            raise RuntimeError(f"the controller did not start: {line!r}")
        self.port = int(found.group(1))
        self.token = self.process.stdout.readline().split()[-1]

    def stop(self):
        self.process.terminate()
        return self.ended()

    def kill(self):
        """Ends it as a loss of power would."""
        self.process.kill()
        return self.ended()

    def ended(self):
        status = self.process.wait(timeout=60)
        self.listener.join(timeout=10)
        self.process.stdout.close()
        return status

    def restart(self):
        self.stop()
        self.start()

    def curl(self, command, body):
        """Posts a document with curl; answers status and body."""
        answer = subprocess.run(
            ["curl", "-sS", "--noproxy", "*", "-X", "POST", "-H", "Content-Type: application/xml",
             "--data-binary", "@-", "-w", "\n%{http_code}",
             f"http://127.0.0.1:{self.port}/lampmanager/command/{command}"],
            input=body.encode(), capture_output=True, check=True)
        text, _, status = answer.stdout.decode().rpartition("\n")
        return int(status), text

    def control(self, request, token=None):
        """Posts to /control/; answers the state as JSON. Raises HTTPError when it is refused."""
        ordered = urllib.request.Request(
            f"http://127.0.0.1:{self.port}/control/{request}", method="POST",
            headers={"X-Control-Token": self.token if token is None else token})
        with urllib.request.urlopen(ordered, timeout=10) as answer:
            return json.load(answer)

    def order(self, fault):
        self.control("fault?set=" + urllib.parse.quote(fault))

    def await_restart(self, seconds=30):
        """Waits until it has begun again by itself and serves."""
        if not select.select([self.process.stdout], [], [], seconds)[0]:
            raise RuntimeError("the controller did not restart")
        self.heed_start()

    def sections(self, names):
        """The text of each section, read over one connection."""
        connection = HTTPConnection("127.0.0.1", self.port, timeout=30)
        texts = {}
        for name in names:
            connection.request("POST", "/lampmanager/command/1",
                               f"<deviceCfg><{name}/></deviceCfg>",
                               {"Content-Type": "application/xml"})
            answer = connection.getresponse()
            texts[name] = answer.read().decode()
            if answer.status != 200:
                raise RuntimeError(f"{name}: {answer.status} {texts[name]}")
        connection.close()
        return texts

    def read(self, section):
        """The section's element, read with curl."""
        status, text = self.curl(1, f"<deviceCfg><{section}/></deviceCfg>")
        if status != 200:
            raise RuntimeError(f"{section}: {status} {text}")
        return ElementTree.fromstring(text).find(f"ZelLamp/{section}")


class Script:
    """A lamp-script process: the user at the dialogs."""

    def __init__(self, folder, *options, environment=None):
        self.process = subprocess.Popen(
            [BIN / "lamp-script", "--config", folder, "--language", "numbers",
             "--now", "2025-03-15T10:00:00", *options],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True, encoding="utf-8",
            env=environment)

    def raw(self, line):
        self.process.stdin.write(line + "\n")
        self.process.stdin.flush()
        answer = self.process.stdout.readline()
        if not answer:
            raise RuntimeError(f"lamp-script ended after {line!r}")
        return json.loads(answer)

    def tell(self, do, **words):
        """Sends a command; answers whatever comes back."""
        return self.raw(json.dumps({"do": do, **words}))

    def do(self, do, **words):
        """Sends a command that must succeed."""
        answer = self.tell(do, **words)
        if not answer["ok"]:
            raise AssertionError(f"{do} {words}: {answer['error']}")
        return answer

    def top(self):
        return self.tell("look")["top"]

    def controls(self):
        return {control["name"]: control for control in self.do("look")["controls"]}

    def rows(self, name):
        return [row["cells"] for row in self.controls()[name]["rows"]]

    def configuration(self):
        return ElementTree.fromstring(self.do("editor.config")["xml"])

    def exchanges(self, since=0):
        return self.do("editor.exchanges", since=since)["exchanges"]

    def close_all(self):
        """Closes every window, from the front to the back."""
        while (top := self.top())["kind"] != "none":
            if top["kind"] == "message":
                wanted = [b for b in ("cancel", "no", "ok") if b in top["buttons"]]
                self.do("answer", button=wanted[0])
            else:
                self.do("close")

    def end(self):
        """Ends the input; answers the exit status."""
        if self.process.stdin.closed:
            return self.process.returncode
        self.process.stdin.close()
        status = self.process.wait(timeout=60)
        self.process.stdout.close()
        return status


def declare(folder, port, name="Main street", address="127.0.0.1"):
    """Writes a configuration with one lamp manager."""
    folder = pathlib.Path(folder)
    folder.mkdir(parents=True, exist_ok=True)
    folder.joinpath("configuration.xml").write_text(
        "<configuration><commSystem><device><id>{00000000-0000-4000-8000-000000000001}</id>"
        "<driver>ZELLAMPMANAGER</driver><type>ZELLAMPMANAGER</type>"
        f"<name>{name}</name><description/><identifier/><address>{address}</address>"
        f"<socket>{port}</socket><ftpAddress>192.0.2.1</ftpAddress><ftpPort>21</ftpPort>"
        "<ftpUser>u</ftpUser><ftpPassword>hunter2</ftpPassword></device></commSystem>"
        "<deviceGroups/><viewSetups/></configuration>", encoding="utf-8")


class Misbehaving:
    """A server that answers every request by `answer(connection, request body)`."""

    def __init__(self, answer):
        self.answer = answer
        self.listener = socket.create_server(("127.0.0.1", 0))
        self.port = self.listener.getsockname()[1]
        self.thread = threading.Thread(target=self.serve, daemon=True)
        self.thread.start()

    def serve(self):
        while True:
            try:
                connection, _ = self.listener.accept()
            except OSError:
                return
            with connection:
                try:
                    body = self.request(connection)
                    self.answer(connection, body)
                except OSError:
                    pass

    @staticmethod
    def request(connection):
        data = b""
        while b"\r\n\r\n" not in data:
            piece = connection.recv(65536)
            if not piece:
                return b""
            data += piece
        head, _, body = data.partition(b"\r\n\r\n")
        length = re.search(rb"content-length: *(\d+)", head, re.I)
        wanted = int(length.group(1)) if length else 0
        while len(body) < wanted:
            piece = connection.recv(65536)
            if not piece:
                break
            body += piece
        return body

    def stop(self):
        if self.listener.fileno() < 0:
            return
        self.listener.shutdown(socket.SHUT_RDWR)
        self.listener.close()
        self.thread.join(timeout=10)


def http(status, body, kind="application/xml", length=None):
    """The bytes of an HTTP answer."""
    if isinstance(body, str):
        body = body.encode()
    head = (f"HTTP/1.1 {status} X\r\nContent-Type: {kind}\r\n"
            f"Content-Length: {len(body) if length is None else length}\r\nConnection: close\r\n\r\n")
    return head.encode() + body


class StreetTest(unittest.TestCase):
    """A controller with a small street and a scripted user whose configuration declares it."""

    NODES = 20
    OPTIONS = ()

    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="lamp-test-"))
        self.addCleanup(shutil.rmtree, self.folder)
        state = self.folder / "controller"
        state.mkdir()
        self.controller = Controller(state, "--nodes", str(self.NODES), "--seed", "7", *self.OPTIONS)
        self.addCleanup(self.stop_controller)
        declare(self.folder / "configuration", self.controller.port)
        self.script = Script(self.folder / "configuration")
        self.addCleanup(self.script.end)

    def stop_controller(self):
        if self.controller.process.poll() is None:
            self.controller.stop()

    def open_menu(self):
        self.script.do("editor.configure", device="Main street")
        self.assertEqual(self.script.do("click", id="device")["top"]["template"], 4528)

    def open_page(self, button):
        self.open_menu()
        return self.script.do("click", id=button)["top"]
