"""A controller is declared from an empty configuration, verified, and its lamps become child devices."""

import pathlib
import shutil
import subprocess
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree

from harness import BIN, Controller, Script

NODES = 25


class Declaring(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="lamp-test-"))
        self.addCleanup(shutil.rmtree, self.folder)
        state = self.folder / "controller"
        state.mkdir()
        self.controller = Controller(state, "--nodes", str(NODES), "--seed", "3", "--id", "LM-000042")
        self.addCleanup(self.controller.stop)
        self.configuration = self.folder / "configuration"
        self.script = Script(self.configuration)
        self.addCleanup(self.script.end)

    def fill(self, **texts):
        for name, text in texts.items():
            self.script.do("type", id=name, text=text)

    def declare(self, name="North"):
        self.script.do("editor.newDevice")
        self.fill(name=name, address="127.0.0.1", socket=str(self.controller.port),
                  ftpAddress="192.0.2.1", ftpUser="u", ftpPassword="hunter2")
        return self.script.do("click", id="ok")

    def device(self):
        return self.script.configuration().find("commSystem/device")

    def test_a_declared_device_carries_the_controllers_identity_and_its_nodes(self):
        answer = self.declare()
        self.assertEqual(answer["closed"]["result"], "ok")
        device = self.device()
        self.assertEqual(device.findtext("identifier"), "LM-000042")
        self.assertEqual(device.findtext("driver"), "ZELLAMPMANAGER")
        self.assertEqual(device.findtext("type"), "ZELLAMPMANAGER")
        children = device.findall("childDevices/childDevice")
        wanted = [(n.get("nodeId"), n.get("Reference")) for n in self.controller.read("L04").findall("Node")]
        self.assertEqual([(c.findtext("name"), c.findtext("description")) for c in children], wanted)
        self.assertEqual({c.findtext("driver") for c in children}, {"ZELLAMP"})
        group = self.script.configuration().find("deviceGroups/groups/group")
        self.assertEqual(group.findtext("id"), "North")
        self.assertEqual([d.findtext("id") for d in group.findall("devices/device")],
                         [c.findtext("id") for c in children])
        self.assertEqual([e["command"] for e in self.script.exchanges()], [29, 58])

    def test_what_was_saved_loads_again_and_is_equal(self):
        self.declare()
        shown = self.script.do("editor.config")["xml"]
        self.assertEqual(self.script.end(), 0)
        saved = self.configuration.joinpath("configuration.xml").read_text(encoding="utf-8")
        self.assertEqual(ElementTree.canonicalize(saved, strip_text=True),
                         ElementTree.canonicalize(shown, strip_text=True))
        again = Script(self.configuration)
        self.addCleanup(again.end)
        self.assertEqual(again.do("editor.config")["xml"], shown)

    def test_a_node_update_keeps_the_ids_of_the_nodes_that_stay(self):
        self.declare()
        before = [c.findtext("id") for c in self.device().findall("childDevices/childDevice")]
        self.script.do("editor.updateNodes", device="North")
        self.assertEqual(self.script.do("click", id=6593)["top"]["text"], "[38476]")
        self.script.do("answer", button="ok")
        self.assertEqual(self.script.do("editor.posted")["posted"],
                         [{"message": 1025, "wParam": 0, "lParam": 0}])
        self.script.do("click", id="cancel")
        after = [c.findtext("id") for c in self.device().findall("childDevices/childDevice")]
        self.assertEqual(after, before)
        self.assertIn('<L03 type="Sync"/>', self.script.exchanges()[-1]["request"])

    def test_an_unreachable_controller_asks_whether_to_go_on(self):
        port = self.controller.port
        self.controller.stop()
        answer = self.declare()
        self.assertEqual(answer["top"]["buttons"], ["ok"])
        question = self.script.do("answer", button="ok")["top"]
        self.assertEqual((question["text"], question["buttons"], question["icon"]),
                         ("[375]", ["yes", "no"], "question"))
        self.assertEqual(self.script.do("answer", button="no")["top"]["template"], 4530)
        self.assertEqual(self.script.controls()["socket"]["text"], str(port))
        self.controller.start()

    def test_texts_come_back_as_typed(self):
        names = ["quote's", "Straße 5", "Ñandú-1_2.3", "街灯", "a" * 64]
        for name in names:
            self.script.do("editor.newDevice")
            self.fill(name=name, description='<&> "é" 😀  two blanks ', address="fe80::1%eth0",
                      socket="00080", ftpAddress="ftp.example", ftpPassword="<p&w>")
            answer = self.script.do("click", id="ok")
            if answer["top"]["kind"] == "message":  # refused names and unreachable controllers
                self.assertEqual(answer["top"]["text"], "[32764]") if "'" in name else None
                while answer["top"]["kind"] == "message":
                    buttons = answer["top"]["buttons"]
                    answer = self.script.do("answer", button="yes" if "yes" in buttons else "ok")
            if answer["top"]["kind"] == "dialog":
                self.script.do("click", id="cancel")
                continue
            device = self.script.configuration().findall("commSystem/device")[-1]
            self.assertEqual(device.findtext("name"), name)
            self.assertEqual(device.findtext("description"), '<&> "é" 😀  two blanks ')
            self.assertEqual(device.findtext("address"), "fe80::1%eth0")
            self.assertEqual(device.findtext("socket"), "00080")
            self.assertEqual(device.findtext("ftpPassword"), "<p&w>")

    def test_removing_a_device_takes_its_group_along_and_leaves_open_dialogs_alive(self):
        self.declare()
        self.script.do("editor.configure", device="North")
        self.script.do("click", id="device")
        self.script.do("editor.removeDevice", device="North")
        self.assertIsNone(self.device())
        self.assertIsNone(self.script.configuration().find("deviceGroups/groups/group"))
        self.script.do("click", id=6512)
        self.script.do("click", id="cancel")
        self.script.do("click", id="ok")
        self.assertEqual(self.script.do("click", id="ok")["top"]["kind"], "none")

    def test_a_device_removed_under_its_dialogs_leaves_no_group(self):
        for word, press in (("editor.updateNodes", "sync"), ("editor.modifyDevice", "ok")):
            self.declare()
            self.script.do(word, device="North")
            self.script.do("editor.removeDevice", device="North")
            answer = self.script.do("click", id=press)
            while answer["top"]["kind"] == "message":
                answer = self.script.do("answer", button=answer["top"]["buttons"][0])
            if answer["top"]["kind"] == "dialog":
                self.script.do("click", id="cancel")
            self.assertIsNone(self.device())
            self.assertIsNone(self.script.configuration().find("deviceGroups/groups/group"), word)

    def test_a_configuration_that_does_not_parse_is_refused_and_kept(self):
        self.script.end()
        self.configuration.mkdir(exist_ok=True)
        file = self.configuration / "configuration.xml"
        file.write_text("<configuration>\n  <commSystem>\n</configuration>", encoding="utf-8")
        result = subprocess.run([BIN / "lamp-script", "--config", self.configuration], input="",
                                capture_output=True, text=True, check=False)
        self.assertNotEqual(result.returncode, 0)
        self.assertIn("configuration.xml", result.stderr)
        self.assertIn("line 3", result.stderr)
        self.assertEqual(file.read_text(encoding="utf-8"),
                         "<configuration>\n  <commSystem>\n</configuration>")

    def test_files_with_passwords_are_readable_by_their_owner_alone(self):
        self.declare()
        self.script.end()
        mode = self.configuration.joinpath("configuration.xml").stat().st_mode & 0o777
        self.assertEqual(mode, 0o600)


if __name__ == "__main__":
    unittest.main()
