"""Uploads of firmware of many megabytes: whole, measured, and broken off midway."""

import hashlib
import io
import os
import pathlib
import socket
import tarfile
import threading
import unittest

from harness import SANITIZED, Script, StreetTest, declare

MEBIBYTES = 8 if SANITIZED else 64
SECTIONS = [f"L{number:02}" for number in range(1, 18)]


def memory(process):
    """Resident memory and its peak, in bytes."""
    status = pathlib.Path(f"/proc/{process.pid}/status").read_text()
    fields = dict(line.split(":", 1) for line in status.splitlines())
    return tuple(int(fields[name].split()[0]) * 1024 for name in ("VmRSS", "VmHWM"))


def digest(path):
    return hashlib.sha256(path.read_bytes()).hexdigest()


class Halfway:
    """Passes connections on to a port, but stops in the middle of a client that sends more than
    `most` bytes: nothing more goes on until that client is gone."""

    def __init__(self, port, most):
        self.target = port
        self.most = most
        self.stopped = threading.Event()
        self.listener = socket.create_server(("127.0.0.1", 0))
        self.port = self.listener.getsockname()[1]
        threading.Thread(target=self.serve, daemon=True).start()

    def serve(self):
        while True:
            try:
                client, _ = self.listener.accept()
            except OSError:
                return
            threading.Thread(target=self.talk, args=(client,), daemon=True).start()

    def talk(self, client):
        with client, socket.create_connection(("127.0.0.1", self.target)) as server:
            threading.Thread(target=self.carry_back, args=(server, client), daemon=True).start()
            left = self.most
            while left > 0:
                piece = client.recv(min(left, 1 << 20))
                if not piece:
                    return
                server.sendall(piece)
                left -= len(piece)
            self.stopped.set()
            try:
                while client.recv(1 << 20):
                    pass
            except OSError:
                pass

    @staticmethod
    def carry_back(server, client):
        try:
            while piece := server.recv(1 << 16):
                client.sendall(piece)
            client.shutdown(socket.SHUT_WR)
        except OSError:
            pass

    def stop(self):
        self.listener.shutdown(socket.SHUT_RDWR)
        self.listener.close()


class Upload(StreetTest):
    NODES = 5

    def archive(self, mebibytes=MEBIBYTES):
        """A firmware of bytes that repeat nowhere."""
        path = self.folder / "lamp-9.1.0.tar"
        content = os.urandom(mebibytes << 20)
        with tarfile.open(path, "w", format=tarfile.USTAR_FORMAT) as tar:
            entry = tarfile.TarInfo("image.bin")
            entry.size = len(content)
            tar.addfile(entry, io.BytesIO(content))
        return path

    def open_upload(self, path):
        self.open_page(6510)
        self.script.do("click", id="load")
        self.script.do("pick", path=str(path))

    def upload(self, path):
        self.open_upload(path)
        return self.script.do("click", id="ok")

    def state(self):
        """Everything that the controller shows and keeps, but its date."""
        shown = {}
        for section in SECTIONS:
            element = self.controller.read(section)
            element.attrib.pop("Fh", None)
            shown[section] = [(e.tag, sorted(e.attrib.items())) for e in element.iter()]
        files = {str(f): digest(f) for f in self.controller.folder.rglob("*") if f.is_file()}
        return shown, files

    def test_it_arrives_byte_for_byte_and_needs_less_than_four_times_its_size(self):
        path = self.archive()
        self.open_upload(path)
        before = [memory(process)[0] for process in (self.script.process, self.controller.process)]
        self.assertEqual(self.script.do("click", id="ok")["closed"]["result"], "ok")
        after = [memory(process)[1] for process in (self.script.process, self.controller.process)]
        self.assertEqual(digest(self.controller.folder / "firmware" / path.name), digest(path))
        self.assertEqual(self.controller.read("L01").get("Vf"), "9.1.0")
        for who, rest, peak in zip(("sender", "controller"), before, after):
            times = (peak - rest) / path.stat().st_size
            print(f"{who}: {times:.2f} times the file", flush=True)
            if not SANITIZED:
                self.assertLess(times, 4)

    def test_it_replaces_the_one_before_and_outlives_the_end_of_the_program(self):
        self.upload(self.archive(1))
        self.script.do("click", id="ok")
        path = self.archive(1)
        self.assertEqual(self.upload(path)["closed"]["result"], "ok")
        self.controller.process.kill()
        self.controller.process.wait()
        self.controller.process.stdout.close()
        self.controller.start()
        self.assertEqual(digest(self.controller.folder / "firmware" / path.name), digest(path))

    def test_a_sender_that_dies_midway_leaves_the_controller_as_it_was(self):
        wire = Halfway(self.controller.port, 4 << 20)
        self.addCleanup(wire.stop)
        declare(self.folder / "second", wire.port)
        self.upload(self.archive(1))  # the image that is there before
        self.script.end()
        before = self.state()
        self.script = Script(self.folder / "second")
        self.open_upload(self.archive(8))
        self.script.process.stdin.write('{"do":"click","id":"ok"}\n')
        self.script.process.stdin.flush()
        self.assertTrue(wire.stopped.wait(60))
        self.assertEqual(self.state(), before, "while it comes")
        self.script.process.kill()
        self.script.process.wait()
        self.script.process.stdin.close()
        self.script.process.stdout.close()
        self.assertEqual(self.state(), before)

    def test_a_client_that_goes_away_midway_leaves_the_controller_as_it_was(self):
        self.upload(self.archive(1))
        before = self.state()
        for body in (b"", b"<deviceCfg><firmwareFile>" + b"QUJD" * 500000):
            with socket.create_connection(("127.0.0.1", self.controller.port)) as client:
                client.sendall(b"POST /lampmanager/command/52 HTTP/1.1\r\nHost: 127.0.0.1\r\n"
                               b"Content-Type: application/xml\r\nContent-Length: 90000000\r\n\r\n")
                client.sendall(body)
            self.assertEqual(self.state(), before)


if __name__ == "__main__":
    unittest.main()
