"""Groups of lamps: made by a person's gestures, kept through a node update, and picked on the group
schedules page, whose programs then reach the controller's lamps."""

import unittest

from harness import Script, StreetTest


class Groups(StreetTest):
    OPTIONS = ("--with-inputs",)

    def setUp(self):
        super().setUp()
        self.update_nodes()
        references = {n.get("nodeId"): n.get("Reference") for n in self.controller.read("L04").findall("Node")}
        self.references = references
        self.street = next(iter(references.values())).split()[0]
        self.on_street = [node for node, text in references.items() if self.street in text]

    def update_nodes(self):
        self.script.do("editor.updateNodes", device="Main street")
        self.script.do("click", id=6593)
        self.script.do("answer", button="ok")
        self.script.do("click", id="cancel")

    def make_group(self, name, text):
        self.script.do("editor.newGroup", device="Main street")
        self.script.do("type", id="name", text=name)
        self.script.do("type", id="reference", text=text)
        shown = [row[0] for row in self.script.rows("others")]
        if shown:
            self.script.do("click", id="addMatching")
        self.script.do("click", id="ok")
        return shown

    def members(self, name):
        """The names of the lamps of a group, by the ids of the child devices."""
        configuration = self.script.configuration()
        names = {c.findtext("id"): c.findtext("name") for c in configuration.iter("childDevice")}
        group = next(g for g in configuration.findall("deviceGroups/groups/group/groups/group")
                     if g.findtext("id") == name)
        return [names[d.findtext("id")] for d in group.findall("devices/device")]

    def test_a_group_filled_by_reference_holds_the_lamps_that_match(self):
        self.assertEqual(self.make_group("Street", self.street.upper()), self.on_street)
        self.assertEqual(self.members("Street"), self.on_street)

    def test_a_group_survives_a_node_update_and_its_controllers_new_name(self):
        self.make_group("Street", self.street)
        before = self.members("Street")
        self.update_nodes()
        self.assertEqual(self.members("Street"), before)
        self.script.do("editor.modifyDevice", device="Main street")
        self.script.do("type", id="name", text="High street")
        answer = self.script.do("click", id="ok")
        self.assertEqual(answer["closed"]["result"], "ok")
        self.assertEqual(self.members("Street"), before)
        groups = self.script.configuration().findall("deviceGroups/groups/group")
        self.assertEqual([g.findtext("id") for g in groups], ["High street"])

    def test_a_group_is_saved_and_there_again(self):
        self.make_group("Street", self.street)
        shown = self.script.do("editor.config")["xml"]
        self.script.end()
        self.script = Script(self.folder / "configuration")
        self.addCleanup(self.script.end)
        self.assertEqual(self.script.do("editor.config")["xml"], shown)

    def test_the_group_schedules_page_dims_the_lamps_of_a_group(self):
        self.make_group("Street", self.street)
        self.make_group("Nobody", "no lamp has this reference")
        self.open_page("groupSchedules")
        self.assertEqual([row[0] for row in self.script.rows("groups")], ["Street", "Nobody"])
        self.script.do("select", id="groups", rows=[0])
        nodes = self.script.controls()["nodes"]["rows"]
        self.assertEqual([row["cells"][0] for row in nodes if row["selected"]], self.on_street)
        self.script.do("type", id="power2", text="13")
        self.script.do("click", id="ok")
        powers = {n.get("Id"): n.get("power2") for n in self.controller.read("L17").findall("Node")}
        self.assertEqual({node for node, power in powers.items() if power == "13"},
                         set(self.on_street))


if __name__ == "__main__":
    unittest.main()
