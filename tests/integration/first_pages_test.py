"""The general settings and the node table, from the user's keys to the controller and back."""

import unittest

from harness import StreetTest


class GeneralSettings(StreetTest):
    def test_a_changed_time_zone_reaches_the_controller_alone(self):
        before = self.controller.read("L01").attrib
        self.assertEqual(self.open_page(6358)["class"], "CDlgE01CfgZelLampManager")
        self.script.do("choose", id="TimeZone", text="Brasil")
        answer = self.script.do("click", id="ok")
        self.assertEqual(answer["closed"], {"class": "CDlgE01CfgZelLampManager", "result": "ok"})
        self.assertIn('<deviceCfg><E01 TimeZone="4"/></deviceCfg>', self.script.exchanges()[-1]["request"])
        after = dict(self.controller.read("L01").attrib)
        self.assertEqual(after["TimeZone"], "4")
        for name, value in before.items():
            if name not in ("TimeZone", "Fh"):
                self.assertEqual(after[name], value, name)

    def test_what_was_sent_shows_when_the_page_opens_again(self):
        self.open_page(6358)
        self.script.do("type", id="name", text="Plaza de España")
        self.script.do("click", id="ok")
        self.script.do("click", id=6358)
        self.assertEqual(self.script.controls()["name"]["text"], "Plaza de España")

    def test_the_clock_is_set_at_once(self):
        self.open_page(6358)
        self.script.do("type", id="clock", text="15/07/2024 10:30:00")
        self.script.do("click", id="setClock")
        self.script.do("click", id="cancel")
        self.assertTrue(self.controller.read("L01").attrib["Fh"].startswith("2024071510300"))

    def test_a_refused_value_shows_the_controllers_reason_and_keeps_the_entries(self):
        self.open_page(6358)
        self.script.do("type", id="hourIni", text="99")
        answer = self.script.do("click", id="ok")
        self.assertEqual(answer["top"]["kind"], "message")
        self.assertEqual(answer["top"]["buttons"], ["retry", "cancel"])
        self.assertTrue(answer["top"]["text"].endswith("\r\n\r\n[329]"), answer["top"]["text"])
        self.script.do("answer", button="cancel")
        self.assertEqual(self.script.controls()["hourIni"]["text"], "99")
        self.script.do("type", id="hourIni", text="9")
        self.assertEqual(self.script.do("click", id="ok")["closed"]["result"], "ok")
        self.assertEqual(self.controller.read("L01").attrib["hourIni"], "9")

    def test_passwords_are_masked_in_the_record(self):
        self.open_page(6358)
        self.script.do("type", id="mailPassword", text="topsecret")
        self.assertEqual(self.script.controls()["mailPassword"]["text"], "*" * 9)
        self.script.do("click", id="ok")
        record = str(self.script.exchanges())
        self.assertNotIn("topsecret", record)
        self.assertNotIn("hunter2", record)


class NodeTable(StreetTest):
    def test_three_nodes_renamed_at_once_arrive_and_survive_a_restart(self):
        before = [dict(node.attrib) for node in self.controller.read("L04").findall("Node")]
        self.open_page(6512)
        self.assertEqual(len(self.script.rows("nodes")), self.NODES)
        self.script.do("select", id="nodes", rows=[0, 2, 5])
        self.script.do("type", id="reference", text="Park \"north\" & south")
        self.assertEqual(self.script.do("click", id="ok")["closed"]["result"], "ok")
        for row in (0, 2, 5):
            before[row]["Reference"] = "Park \"north\" & south"
        after = [dict(node.attrib) for node in self.controller.read("L04").findall("Node")]
        self.assertEqual(after, before)
        self.controller.restart()
        again = [dict(node.attrib) for node in self.controller.read("L04").findall("Node")]
        self.assertEqual(again, before)

    def test_the_document_sent_holds_the_whole_table_in_its_order(self):
        self.open_page(6512)
        self.script.do("type", id="reference", text="First")
        self.script.do("click", id="ok")
        request = self.script.exchanges()[-1]["request"]
        self.assertEqual(request.count("<Node "), self.NODES)
        self.assertNotIn("Fh=", request)

    def test_a_controller_that_went_away_loses_no_entry(self):
        self.open_page(6512)
        self.script.do("type", id="reference", text="Kept")
        self.controller.stop()
        answer = self.script.do("click", id="ok")
        self.assertEqual(answer["top"]["kind"], "message")
        self.script.do("answer", button="retry")
        self.script.do("answer", button="cancel")
        self.assertEqual(self.script.controls()["reference"]["text"], "Kept")
        self.assertEqual(self.script.rows("nodes")[0][1], "Kept")


if __name__ == "__main__":
    unittest.main()
