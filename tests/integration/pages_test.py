"""Every page with rows of nodes, from the user's keys to the controller's state, read with curl."""

import hashlib
import io
import tarfile
import unittest

from harness import StreetTest

NOW = "01/01/2020 00:00:00"  # an activation date in the past takes effect at once


class NodePower(StreetTest):
    def test_time_and_power_of_many_nodes_take_effect(self):
        self.open_page(6528)
        self.script.do("select", id="nodes", rows=[0, 1, 2])
        self.script.do("type", id="time", text="45")
        self.script.do("type", id="power", text="60")
        self.script.do("type", id="activation", text=NOW)
        self.assertEqual(self.script.do("click", id="ok")["closed"]["result"], "ok")
        rows = list(self.controller.read("L05"))
        self.assertEqual([(r.get("time"), r.get("power")) for r in rows[:3]], [("45", "60")] * 3)

    def test_a_power_beyond_100_is_refused_by_the_page(self):
        self.open_page(6528)
        self.script.do("type", id="power", text="101")
        self.assertEqual(self.script.do("click", id="ok")["top"]["text"], "[38265]([24534] (%),0,100)")
        self.script.do("answer", button="ok")
        self.assertEqual(self.script.do("look")["focus"], 6526)


class Alarms(StreetTest):
    NODES = 60

    def test_thresholds_of_both_generations_take_effect(self):
        self.open_page(6581)
        controls = self.script.controls()
        self.assertTrue(controls["oldNodes"]["rows"] and controls["newNodes"]["rows"])
        old = controls["oldNodes"]["rows"][0]["cells"][0]
        new = controls["newNodes"]["rows"][0]["cells"][0]
        self.script.do("type", id="capacitorTime", text="77")
        self.script.do("type", id="factorPower", text="0.85")
        self.script.do("type", id="activation", text=NOW)
        self.assertEqual(self.script.do("click", id="ok")["closed"]["result"], "ok")
        nodes = {node.get("Id"): node for node in self.controller.read("L07")}
        self.assertEqual(nodes[old].get("capacitorTime"), "77")
        self.assertEqual(nodes[new].get("factorPower"), "0.85")


class Removal(StreetTest):
    def test_removed_nodes_lose_reference_and_position(self):
        self.open_page(6587)
        gone = [row[0] for row in self.script.rows("nodes")[:2]]
        self.script.do("select", id="nodes", rows=[0, 1])
        self.script.do("press", id="nodes", key="Delete")
        self.script.do("type", id="activation", text=NOW)
        self.assertEqual(self.script.do("click", id="ok")["closed"]["result"], "ok")
        for node in self.controller.read("L04").findall("Node"):
            if node.get("nodeId") in gone:
                self.assertFalse(node.get("Reference"))
                self.assertFalse(node.get("latitude"))
            else:
                self.assertTrue(node.get("Reference"))


class Blacklist(StreetTest):
    def test_nodes_move_to_the_blacklist_and_back(self):
        self.open_page(6616)
        moved = [row[0] for row in self.script.rows("nodes")[1:3]]
        self.script.do("select", id="nodes", rows=[1, 2])
        self.script.do("click", id="moveRight")
        self.script.do("type", id="activation", text=NOW)
        self.assertEqual(self.script.do("click", id="ok")["closed"]["result"], "ok")
        table = self.controller.read("L04")
        self.assertEqual([n.get("nodeId") for n in table.findall("BlackList/Node")][-2:], moved)
        self.assertFalse(set(moved) & {n.get("nodeId") for n in table.findall("Node")})

        self.script.do("click", id=6616)
        rows = self.script.rows("blacklist")
        self.script.do("select", id="blacklist", rows=list(range(len(rows))))
        self.script.do("click", id="moveLeft")
        self.script.do("type", id="activation", text=NOW)
        self.assertEqual(self.script.do("click", id="ok")["closed"]["result"], "ok")
        table = self.controller.read("L04")
        self.assertEqual(table.findall("BlackList/Node"), [])
        self.assertTrue(set(moved) <= {n.get("nodeId") for n in table.findall("Node")})


class NodeCommand(StreetTest):
    def test_the_chosen_nodes_are_named(self):
        self.open_page(6623)
        self.assertFalse(self.script.controls()["ok"]["enabled"])
        self.script.do("select", id="nodes", rows=[3, 4])
        self.script.do("type", id="activation", text=NOW)
        self.assertEqual(self.script.do("click", id="ok")["closed"]["result"], "ok")
        sent = self.script.exchanges()[-1]["request"]
        self.assertEqual(sent.count("<Node nodeId="), 2)
        self.assertNotIn("Reference", sent)


class Tasks(StreetTest):
    def test_a_task_is_added_changed_and_deleted(self):
        self.open_page(6461)
        before = len(self.script.rows("tasks"))
        self.script.do("click", id="newTask")
        number = self.script.controls()["number"]["text"]
        self.script.do("type", id="start", text="05/06/2024 10:00:00")
        self.script.do("choose", id="hours", item=2)
        self.script.do("click", id="newAction")
        self.assertEqual(self.script.do("click", id="ok")["closed"]["result"], "ok")
        task = self.controller.read("L02").find(f"TP[@TpTar='{number}']")
        self.assertEqual(task.get("TpHi"), "20240605100000S")
        self.assertEqual(task.get("TpPer"), "00000001020000")
        self.assertEqual(len(task), 2)

        self.script.do("click", id=6461)
        self.script.do("select", id="tasks", rows=[before])
        self.script.do("press", id="tasks", key="Delete")
        self.assertEqual(self.script.do("click", id="ok")["closed"]["result"], "ok")
        self.assertIsNone(self.controller.read("L02").find(f"TP[@TpTar='{number}']"))


class InputsAndOutputs(StreetTest):
    OPTIONS = ("--with-inputs",)

    def test_switches_modes_and_offsets_take_effect(self):
        self.open_page(6630)
        self.script.do("check", id="input2.SponEnable",
                       on=not self.script.controls()["input2.SponEnable"]["on"])
        spontaneous = self.script.controls()["input2.SponEnable"]["on"]
        self.script.do("choose", id="output1.mode", item=1)
        self.script.do("type", id="offsetSunSet", text="17")
        self.script.do("type", id="activation", text=NOW)
        self.assertEqual(self.script.do("click", id="ok")["closed"]["result"], "ok")
        section = self.controller.read("L13")
        self.assertEqual(section.get("offsetSunSet"), "17")
        self.assertEqual(section.find("Output[@Dir='1']").get("On"), "Y")
        self.assertEqual(section.find("Input[@Dir='2']").get("SponEnable"), "Y" if spontaneous else "N")


class WithoutInputs(StreetTest):
    def test_the_inputs_page_can_not_be_opened(self):
        self.open_menu()
        answer = self.script.tell("click", id=6630)
        self.assertFalse(answer["ok"])
        self.assertIn("disabled", answer["error"])


class Firmware(StreetTest):
    def archive(self, size):
        content = (b"lamp firmware " * (size // 14 + 1))[:size]
        buffer = io.BytesIO()
        with tarfile.open(fileobj=buffer, mode="w") as tar:
            entry = tarfile.TarInfo("image.bin")
            entry.size = len(content)
            tar.addfile(entry, io.BytesIO(content))
        path = self.folder / "firmware-3.1.0.tar"
        path.write_bytes(buffer.getvalue())
        return path

    def upload(self, path):
        self.open_page(6510)
        self.assertEqual(self.script.do("click", id="load")["top"]["kind"], "file")
        self.script.do("pick", path=str(path))
        self.assertEqual(self.script.controls()["file"]["text"], str(path))
        self.script.do("type", id="activation", text=NOW)
        return self.script.do("click", id="ok")

    def test_a_firmware_of_a_mebibyte_arrives_byte_for_byte(self):
        path = self.archive(1024 * 1024)
        self.assertEqual(self.upload(path)["closed"]["result"], "ok")
        wanted = hashlib.sha256(path.read_bytes()).hexdigest()
        kept = [f for f in self.controller.folder.rglob("*") if f.is_file()]
        self.assertIn(wanted, [hashlib.sha256(f.read_bytes()).hexdigest() for f in kept])

    def test_what_is_no_archive_is_refused_with_the_controllers_reason(self):
        path = self.folder / "not.tar"
        path.write_bytes(b"hello")
        top = self.upload(path)["top"]
        self.assertEqual((top["kind"], top["buttons"]), ("message", ["ok"]))
        self.assertTrue(top["text"].endswith("[329]"))
        self.assertGreater(len(top["text"]), len("[329]"))

    def test_a_file_that_vanishes_opens_the_choice_again(self):
        path = self.archive(100)
        self.open_page(6510)
        self.script.do("click", id="load")
        self.script.do("pick", path=str(path))
        path.unlink()
        self.assertEqual(self.script.do("click", id="ok")["top"]["kind"], "file")
        self.assertEqual(self.script.do("pick", path="")["top"]["class"], "CDlgE03CfgZelLampManager")


class IntervalPrograms(StreetTest):
    SECTION = "L06"
    FIELDS = {"time2": "30", "power2": "40"}
    WANTED = {"time2": "30", "power2": "40"}

    def test_a_program_of_many_nodes_takes_effect(self):
        self.open_page(6552)
        self.script.do("select", id="nodes", rows=[0, 1, 2, 3])
        for name, text in self.FIELDS.items():
            self.script.do("type", id=name, text=text)
        self.script.do("type", id="activation", text=NOW)
        answer = self.script.do("click", id="ok")
        self.assertEqual(answer.get("closed", answer), {"class": "CDlgE06CfgZelLampManager", "result": "ok"})
        for node in list(self.controller.read(self.SECTION))[:4]:
            self.assertEqual({name: node.get(name) for name in self.WANTED}, self.WANTED)


class ClockPrograms(IntervalPrograms):
    OPTIONS = ("--with-inputs",)
    SECTION = "L17"
    FIELDS = {"time2": "23:45", "power2": "40"}
    WANTED = {"hour2": "23", "min2": "45", "power2": "40"}


if __name__ == "__main__":
    unittest.main()
