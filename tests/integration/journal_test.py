"""Every send of lamp-script is on record, and a record that can't be written stops nothing."""

import getpass
import json
import pathlib
import shutil
import stat
import subprocess
import tempfile
import unittest

from harness import BIN, Controller, Script, declare


class Journal(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="lamp-test-"))
        self.addCleanup(shutil.rmtree, self.folder)
        (self.folder / "controller").mkdir()
        self.controller = Controller(self.folder / "controller", "--nodes", "5", "--seed", "7")
        self.addCleanup(self.controller.stop)
        declare(self.folder / "configuration", self.controller.port)

    def choose_time_zone(self, state):
        """Presses OK on another time zone; answers the user and what came back."""
        script = Script(self.folder / "configuration", "--state", str(state))
        self.addCleanup(script.end)
        script.do("editor.configure", device="Main street")
        script.do("click", id="device")
        script.do("click", id=6358)
        chosen = script.controls()["TimeZone"]["selected"]
        script.do("choose", id="TimeZone", item=0 if chosen != 0 else 1)
        return script, script.do("click", id="ok")

    def change_time_zone(self, state):
        """Sends one change of the general settings; answers what every command was answered."""
        script, _ = self.choose_time_zone(state)
        exchanges = script.exchanges()
        script.close_all()
        self.assertEqual(script.end(), 0)
        return exchanges

    def test_a_write_is_on_record_and_reads_are_not(self):
        exchanges = self.change_time_zone(self.folder / "state")
        sent = [exchange for exchange in exchanges if exchange["kind"] == "put"]
        journal = self.folder / "state" / "journal"
        lines = (journal / "sends.jsonl").read_text(encoding="utf-8").splitlines()
        self.assertEqual(len(lines), len(sent))
        entry = json.loads(lines[0])
        self.assertEqual(entry["who"], getpass.getuser())
        self.assertEqual(entry["program"], "lamp-script")
        self.assertEqual(entry["deviceName"], "Main street")
        self.assertEqual(entry["deviceId"], "{00000000-0000-4000-8000-000000000001}")
        self.assertEqual(entry["address"], f"127.0.0.1:{self.controller.port}")
        self.assertEqual(entry["section"], "E01")
        self.assertEqual(entry["document"], sent[0]["request"])
        self.assertIn("<L01", entry["before"])
        self.assertIs(entry["ok"], True)
        self.assertNotIn("hunter2", lines[0])
        self.assertEqual(stat.S_IMODE(journal.stat().st_mode), 0o700)
        self.assertEqual(stat.S_IMODE((journal / "sends.jsonl").stat().st_mode), 0o600)

    def test_a_refused_write_is_on_record_with_its_text(self):
        self.controller.order("refuse:The lamps are asleep.@2")
        script, answer = self.choose_time_zone(self.folder / "state")
        self.assertEqual(answer["top"]["kind"], "message")
        script.close_all()
        text = (self.folder / "state" / "journal" / "sends.jsonl").read_text(encoding="utf-8")
        entry = json.loads(text)
        self.assertIs(entry["ok"], False)
        self.assertIn("The lamps are asleep.", entry["error"])

    def test_a_state_folder_that_cant_be_written_is_told_once_and_stops_nothing(self):
        blocked = self.folder / "file"
        blocked.write_text("", encoding="utf-8")
        lines = "".join(json.dumps(line) + "\n" for line in (
            {"do": "editor.configure", "device": "Main street"}, {"do": "click", "id": "device"},
            {"do": "click", "id": 6358}, {"do": "choose", "id": "TimeZone", "item": 0},
            {"do": "click", "id": "ok"},
            {"do": "click", "id": 6358}, {"do": "choose", "id": "TimeZone", "item": 1},
            {"do": "click", "id": "ok"}))
        outputs = []
        for state in (blocked / "state", self.folder / "state"):
            done = subprocess.run(
                [BIN / "lamp-script", "--config", self.folder / "configuration", "--language",
                 "numbers", "--now", "2025-03-15T10:00:00", "--state", state],
                input=lines, capture_output=True, text=True, timeout=60, check=False)
            self.assertEqual(done.returncode, 0)
            outputs.append(done)
        self.assertEqual(outputs[0].stdout, outputs[1].stdout)
        self.assertEqual(outputs[0].stderr.count("not put on record"), 1, outputs[0].stderr)
        self.assertEqual(outputs[1].stderr, "")


if __name__ == "__main__":
    unittest.main()
