"""Saves of the configuration and of calendars while the file system's calls fail.

The file holds the old state or the new one, whole; nothing else is left beside it but the version
before; the user reads what failed and why, goes on, and saves again.
"""

import errno
import pathlib
import shutil
import tempfile
import unittest
from dataclasses import dataclass

from failing_calls import FOREVER, FailingCalls
from harness import Controller, Script, declare

DEVICE = "Main street"
CALENDAR = "lamps"


@dataclass(frozen=True)
class SaveFault:
    name: str
    call: str
    error: int
    cause: str = ""  # in the message; none where the save is to succeed
    first: int = 1
    last: int = FOREVER
    moved: int = -1


FAULTS = [
    SaveFault("a full disk at the first byte", "write", errno.ENOSPC, "No space left on device"),
    SaveFault("a full disk in the middle", "write", errno.ENOSPC, "No space left on device", moved=50),
    SaveFault("a quota that ends", "write", errno.EDQUOT, "Disk quota exceeded", moved=50),
    SaveFault("a broken disk", "write", errno.EIO, "Input/output error"),
    SaveFault("an interrupted write", "write", errno.EINTR, last=1),
    SaveFault("13 bytes written at a time", "write", 0, moved=13),
    SaveFault("a flush that fails", "fsync", errno.EIO, "Input/output error"),
    SaveFault("a flush that finds the disk full", "fsync", errno.ENOSPC, "No space left on device"),
    SaveFault("an interrupted flush", "fsync", errno.EINTR, last=1),
    SaveFault("a read-only file system", "open", errno.EROFS, "Read-only file system"),
    SaveFault("no permission", "open", errno.EACCES, "Permission denied"),
    SaveFault("no descriptor left", "open", errno.EMFILE, "Too many open files"),
    SaveFault("an interrupted open", "open", errno.EINTR, last=1),
    SaveFault("a rename that fails", "rename", errno.EIO, "Input/output error"),
    SaveFault("the last rename that fails", "rename", errno.EIO, "Input/output error", first=2),
    SaveFault("a rename across devices", "rename", errno.EXDEV, "Invalid cross-device link"),
]


class Saves(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="lamp-test-"))
        self.addCleanup(shutil.rmtree, self.folder)
        self.configuration = self.folder / "configuration"

    def temporary_files(self):
        return [file.name for file in self.configuration.rglob("*.new-*")]

    def run_through(self, file, save, again):
        """`save(n)` saves state n and answers the message, if any; `again()` only saves again."""
        kept = file.with_name(file.name + ".previous")
        self.assertEqual(save(0), "")
        for number, fault in enumerate(FAULTS, 1):
            with self.subTest(fault.name):
                old, before = file.read_bytes(), kept.read_bytes() if kept.exists() else None
                self.calls.order(fault.call, fault.error, first=fault.first, last=fault.last,
                                 moved=fault.moved)
                message = save(number)
                self.assertGreater(self.calls.made()[fault.call], 0, "the call is not made")
                self.calls.clear()
                self.assertEqual(self.temporary_files(), [])
                if fault.cause:
                    self.expect_told(message, fault.cause, file)
                    self.assertEqual(file.read_bytes(), old)
                    if before is not None:
                        self.assertIn(kept.read_bytes(), (old, before))
                    self.assertEqual(again(), "")
                else:
                    self.assertEqual(message, "")
                self.assertNotEqual(file.read_bytes(), old)
                self.assertEqual(kept.read_bytes(), old)

    def run_without_folder(self, file, save, again):
        """The folder is away during a save and comes back as it was."""
        self.assertEqual(save(0), "")
        old = file.read_bytes()
        away = self.folder / "away"
        self.configuration.rename(away)
        message = save(1)
        self.assertFalse(self.configuration.exists(), "a folder is not made in its place")
        away.rename(self.configuration)
        self.expect_told(message, "No such file or directory", file)
        self.assertEqual(file.read_bytes(), old)
        self.assertEqual(again(), "")
        self.assertNotEqual(file.read_bytes(), old)

    def answered(self, answer):
        """Says yes to questions and takes messages away; answers the last message's text."""
        text = ""
        while (top := answer["top"])["kind"] == "message":
            if top["buttons"] == ["ok"]:
                text = top["text"]
            answer = self.script.do("answer", button=top["buttons"][0])
        return text

    def start(self):
        self.calls = FailingCalls(self.folder / "plan")
        self.script = Script(self.configuration, "--verify-connection", "none",
                             environment=self.calls.environment())
        self.addCleanup(self.script.end)


class Configurations(Saves):
    def setUp(self):
        super().setUp()
        declare(self.configuration, 1, DEVICE)
        self.start()
        self.file = self.configuration / "configuration.xml"

    def expect_told(self, message, cause, file):
        self.assertEqual(message, f"[60033]({file},{cause})")

    def save(self, number):
        self.script.do("editor.modifyDevice", device=DEVICE)
        self.script.do("type", id="description", text=f"{number} lamps")
        return self.answered(self.script.do("click", id="ok"))

    def again(self):
        self.script.do("editor.modifyDevice", device=DEVICE)
        return self.answered(self.script.do("click", id="ok"))

    def test_a_configuration_is_saved_whole_or_not_at_all(self):
        self.run_through(self.file, self.save, self.again)

    def test_a_configuration_without_its_folder_is_saved_when_it_is_back(self):
        self.run_without_folder(self.file, self.save, self.again)


class Calendars(Saves):
    def setUp(self):
        super().setUp()
        state = self.folder / "controller"
        state.mkdir()
        controller = Controller(state, "--nodes", "2")
        self.addCleanup(controller.stop)
        declare(self.configuration, controller.port, DEVICE)
        self.start()
        self.script.do("editor.configure", device=DEVICE)
        for button in ("device", "calendar", "dayType3"):
            self.script.do("click", id=button)
        self.file = self.configuration / "Lamp manager Calendar" / f"{CALENDAR}.xclmc"

    def expect_told(self, message, cause, file):
        self.assertEqual(message, "[34190]")

    def save(self, number):
        self.script.do("paint", id="year", date=f"2025-06-{number + 1:02}")
        return self.again()

    def again(self):
        self.script.do("click", id="save")
        self.script.do("type", id="identification", text=CALENDAR)
        return self.answered(self.script.do("click", id="ok"))

    def test_a_calendar_is_saved_whole_or_not_at_all(self):
        self.run_through(self.file, self.save, self.again)

    def test_a_calendar_without_its_folder_is_saved_when_it_is_back(self):
        self.run_without_folder(self.file, self.save, self.again)


if __name__ == "__main__":
    unittest.main()
