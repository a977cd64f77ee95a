"""A program that ends by a fault leaves nothing of its memory, which holds passwords."""

import os
import pathlib
import resource
import shutil
import signal
import subprocess
import tempfile
import time
import unittest

from harness import BIN, declare


def allow_dumps():
    most = resource.getrlimit(resource.RLIMIT_CORE)[1]
    resource.setrlimit(resource.RLIMIT_CORE, (most, most))


class CoreDumps(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="lamp-test-"))
        self.addCleanup(shutil.rmtree, self.folder)
        if not self.leaves_dump(["sleep", "60"]):
            self.skipTest("this machine keeps nobody's core dump")
        for dump in self.folder.glob("core*"):
            dump.unlink()

    def leaves_dump(self, command, started=lambda process: None):
        """Aborts the program when `started(process)` returns; answers whether it was dumped."""
        process = subprocess.Popen(command, cwd=self.folder, stdin=subprocess.PIPE,
                                   stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                                   env={**os.environ, "QT_QPA_PLATFORM": "offscreen"},
                                   preexec_fn=allow_dumps, text=True)
        started(process)
        process.send_signal(signal.SIGABRT)
        _, status = os.waitpid(process.pid, 0)
        process.returncode = status  # it has been waited for
        process.stdin.close()
        process.stdout.close()
        self.assertTrue(os.WIFSIGNALED(status), status)
        return os.WCOREDUMP(status)

    def expect_no_dump(self, command, started):
        self.assertFalse(self.leaves_dump(command, started))
        self.assertEqual(list(self.folder.glob("core*")), [])

    def test_the_scripted_user_leaves_none(self):
        declare(self.folder / "configuration", 1)

        def started(process):
            process.stdin.write('{"do":"editor.config"}\n')
            process.stdin.flush()
            self.assertIn("hunter2", process.stdout.readline())

        self.expect_no_dump([BIN / "lamp-script", "--config", "configuration"], started)

    def test_the_editor_leaves_none(self):
        declare(self.folder / "configuration", 1)
        lock = self.folder / "configuration" / "configuration.lock"

        def started(process):
            while not lock.exists() and process.poll() is None:
                time.sleep(0.02)

        self.expect_no_dump([BIN / "lamp-editor", "--config", "configuration"], started)

    def test_the_controller_leaves_none(self):
        self.expect_no_dump([BIN / "lamp-controller", "--port", "0"],
                            lambda process: process.stdout.readline())


if __name__ == "__main__":
    unittest.main()
