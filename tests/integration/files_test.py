"""Programs that are started among odd files, streams, limits and variables."""

import os
import pathlib
import resource
import shutil
import socket
import ssl
import stat
import subprocess
import tempfile
import threading
import unittest

from harness import BIN, Script, declare

LONGEST = 60  # seconds, also under a sanitizer
NEW_DEVICE = (b'{"do":"editor.newDevice"}\n{"do":"type","id":"name","text":"N"}\n'
              b'{"do":"type","id":"address","text":"127.0.0.1"}\n'
              b'{"do":"type","id":"ftpAddress","text":"127.0.0.1"}\n{"do":"click","id":"ok"}\n')


class Folder(unittest.TestCase):
    """A folder for each test."""

    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="lamp-test-"))
        self.addCleanup(shutil.rmtree, self.folder)
        self.configuration = self.folder / "configuration"



class Files(Folder):
    """What lies in the folder of the configuration, and how the program is started."""

    def arguments(self):
        return [BIN / "lamp-script", "--config", self.configuration, "--verify-connection", "none"]

    def run_script(self, words=b"", **options):
        """Runs lamp-script over some lines; it must end by itself."""
        return subprocess.run(self.arguments(), input=words, capture_output=True, timeout=LONGEST,
                              **options)

    def mode(self, path):
        return stat.S_IMODE(os.lstat(path).st_mode)

    # --- streams

    def test_no_file_gets_what_is_written_to_a_missing_stream(self):
        for closed in ((0,), (1,), (2,), (0, 1), (1, 2), (0, 1, 2)):
            with self.subTest(closed=closed):
                shutil.rmtree(self.configuration, ignore_errors=True)
                read, write = os.pipe()
                os.write(write, NEW_DEVICE)
                os.close(write)
                program = subprocess.Popen(
                    ["sh", "-c", 'exec "$@" ' + " ".join(f"{number}>&-" for number in closed), "sh",
                     *self.arguments()],
                    stdin=read, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
                os.close(read)
                self.assertEqual(program.wait(timeout=LONGEST), 0)
                lock = (self.configuration / "configuration.lock").read_text()
                self.assertRegex(lock, r"\A[0-9]+\n\Z")

    # --- limits

    def test_a_file_over_the_size_that_the_shell_allows_is_told(self):
        self.run_script()
        result = self.run_script(
            NEW_DEVICE,
            preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (100, 100)))
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertIn(b"File too large", result.stdout)
        self.assertIn(b"configuration.xml", result.stdout)
        self.assertEqual(sorted(os.listdir(self.configuration)), ["configuration.lock"])

    def test_what_is_made_is_its_owners_alone_whatever_the_mask(self):
        self.configuration = self.folder / "a" / "b"
        state = self.folder / "state"
        self.run_script(NEW_DEVICE, umask=0, env={**os.environ, "XDG_STATE_HOME": str(state)})
        made = [self.folder / "a", *(self.folder / "a").rglob("*"), *state.rglob("*")]
        self.assertIn(self.configuration / "configuration.xml", made)
        for path in made:
            self.assertEqual(self.mode(path), 0o700 if path.is_dir() else 0o600, path)

    # --- odd files

    def test_a_pipe_keeps_nobody_waiting(self):
        for name in ("configuration.xml", "configuration.lock"):
            with self.subTest(name):
                shutil.rmtree(self.configuration, ignore_errors=True)
                self.configuration.mkdir()
                os.mkfifo(self.configuration / name)
                result = self.run_script(NEW_DEVICE)
                self.assertIn(b"It is a pipe, not a file", result.stderr)
                self.assertIn(name.encode(), result.stderr)
                self.assertTrue(stat.S_ISFIFO(os.lstat(self.configuration / name).st_mode))

    def test_links_that_lead_nowhere_or_to_themselves_are_no_empty_configuration(self):
        for target in ("nothing", "configuration.xml"):
            with self.subTest(target):
                shutil.rmtree(self.configuration, ignore_errors=True)
                self.configuration.mkdir()
                (self.configuration / "configuration.xml").symlink_to(target)
                result = self.run_script(NEW_DEVICE)
                self.assertEqual(result.returncode, 2)
                self.assertIn(b"configuration.xml", result.stderr)
                self.assertEqual(os.readlink(self.configuration / "configuration.xml"), target)

    def test_a_lock_that_is_a_link_empties_no_other_file(self):
        for link in (os.symlink, os.link):
            with self.subTest(link.__name__):
                shutil.rmtree(self.configuration, ignore_errors=True)
                self.configuration.mkdir()
                stranger = self.folder / "stranger"
                stranger.write_text("12\n")
                link(stranger, self.configuration / "configuration.lock")
                result = self.run_script(NEW_DEVICE)
                self.assertIn(b"configuration.lock", result.stderr)
                self.assertIn(b"can only be read", result.stdout)
                self.assertEqual(stranger.read_text(), "12\n")

    def test_the_version_before_is_private_from_the_first_save_on(self):
        declare(self.configuration, 1)
        os.chmod(self.configuration / "configuration.xml", 0o644)
        self.run_script(NEW_DEVICE)
        self.assertIn("hunter2", (self.configuration / "configuration.xml.previous").read_text())
        self.assertEqual(self.mode(self.configuration / "configuration.xml.previous"), 0o600)


class Surroundings(Folder):
    """What the environment says about libraries."""

    def environment(self, **more):
        return {**os.environ, **{name: str(value) for name, value in more.items()}}

    def test_no_library_comes_from_the_working_folder(self):
        planted = self.folder / "planted"
        planted.mkdir()
        trace = self.folder / "trace"
        for program in ("lamp-script", "lamp-editor"):
            if not (BIN / program).exists():
                continue
            needed = subprocess.run(["ldd", BIN / program], capture_output=True, text=True,
                                    check=True).stdout
            for line in needed.splitlines():
                name = line.split()[0]
                if name.startswith("lib") and "=>" in line:
                    shutil.copy(BIN.parent / "lib" / "planted_library.so", planted / name)
            self.assertTrue((planted / "liblamphost.so.0").exists(), needed)
            for path in ("", ":", "/nowhere:", ":/nowhere", ".", "/nowhere::/none"):
                with self.subTest(program=program, path=path):
                    result = subprocess.run(
                        [BIN / program, "--help"], cwd=planted, capture_output=True,
                        timeout=LONGEST, env=self.environment(LD_LIBRARY_PATH=path, PLANTED=trace))
                    self.assertEqual(result.returncode, 0, result.stderr)
                    self.assertFalse(trace.exists(), "a planted library was loaded")

    def test_the_planted_library_tells_that_it_is_loaded(self):
        trace = self.folder / "trace"
        subprocess.run(["true"], timeout=LONGEST, check=True, env=self.environment(
            LD_PRELOAD=BIN.parent / "lib" / "planted_library.so", PLANTED=trace))
        self.assertTrue(trace.exists())

    def read_over_tls(self, environment):
        """Asks a controller whose certificate nobody vouches for; answers what lamp-script says."""
        key, certificate = self.folder / "key.pem", self.folder / "certificate.pem"
        subprocess.run(["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2",
                        "-subj", "/CN=127.0.0.1", "-keyout", key, "-out", certificate],
                       check=True, capture_output=True)
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(certificate, key)
        listener = socket.create_server(("127.0.0.1", 0))
        self.addCleanup(listener.close)

        def serve():
            connection, _ = listener.accept()
            try:
                context.wrap_socket(connection, server_side=True).close()
            except OSError:
                connection.close()

        threading.Thread(target=serve, daemon=True).start()
        declare(self.configuration, listener.getsockname()[1], address="https://127.0.0.1")
        script = Script(self.configuration, environment=environment)
        self.addCleanup(script.end)
        script.do("editor.configure", device="Main street")
        return script.do("click", id="device")["top"]["text"]

    def test_keys_are_written_nowhere(self):
        keys = self.folder / "keys"
        text = self.read_over_tls(self.environment(SSLKEYLOGFILE=keys))
        self.assertIn("ertificate", text)
        self.assertFalse(keys.exists(), "the keys of a connection were written down")

    def test_the_settings_of_the_library_for_encryption_come_from_the_system(self):
        pipe = self.folder / "openssl.cnf"
        os.mkfifo(pipe)  # whoever opens it waits for ever
        text = self.read_over_tls(self.environment(OPENSSL_CONF=pipe))
        self.assertIn("ertificate", text)


if __name__ == "__main__":
    unittest.main()
