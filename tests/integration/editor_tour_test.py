"""The desktop editor's journey through its real widgets, offscreen, against a real controller."""

import os
import subprocess
import unittest
import xml.etree.ElementTree as ElementTree

from harness import BIN, StreetTest


class Tour(StreetTest):
    OPTIONS = ("--with-inputs",)  # the journey visits every page

    def test_the_journey_changes_the_time_zone_and_three_nodes_and_leaves_screenshots(self):
        if not (BIN / "lamp-editor").exists():
            self.skipTest("the editor is not built")
        self.script.do("editor.updateNodes", device="Main street")
        self.script.do("click", id=6593)
        self.script.do("answer", button="ok")
        self.script.end()
        before = {n.get("nodeId"): n.get("Reference") for n in self.controller.read("L04").findall("Node")}
        pictures = self.folder / "tour"
        done = subprocess.run(
            [BIN / "lamp-editor", "--config", self.folder / "configuration", "--tour", pictures,
             "--tour-address", f"127.0.0.1:{self.controller.port}"],
            env={**os.environ, "QT_QPA_PLATFORM": "offscreen"}, capture_output=True, text=True,
            timeout=240, check=False)
        self.assertEqual(done.returncode, 0, done.stderr[-2000:])
        self.assertIn('<E01 TimeZone="4"/>', done.stdout)
        self.assertEqual(self.controller.read("L01").get("TimeZone"), "4")
        after = {n.get("nodeId"): n.get("Reference") for n in self.controller.read("L04").findall("Node")}
        changed = [node for node in before if before[node] != after[node]]
        self.assertEqual(len(changed), 3)
        self.assertEqual(len({after[node] for node in changed}), 1)
        self.assertGreaterEqual(len(list(pictures.glob("*.png"))), 5)
        saved = ElementTree.parse(self.folder / "configuration" / "configuration.xml")
        groups = {g.findtext("id"): len(g.findall("devices/device"))
                  for g in saved.findall("deviceGroups/groups/group/groups/group")}
        harbour = [text for text in before.values() if "harbour" in text.lower()]
        self.assertEqual(groups, {"Entrance": 4, "Harbour": len(harbour)})


if __name__ == "__main__":
    unittest.main()
