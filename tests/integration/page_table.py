"""Every page that talks to a controller: how it is opened, filled in, confirmed and checked.

A page is one line of PAGES. `change` makes an entry that differs with every number it is given,
`arrived` tells whether the controller (or the configuration) holds exactly that entry.
"""

import io
import tarfile
from dataclasses import dataclass, field

from fault_table import FINE, bare, failing

PAST = "01/01/2020 00:00:00"  # an activation date in the past takes effect at once
DEVICE = "Main street"

RETRY = "retry"      # error text, blank line, text 329; Retry and Cancel
ONCE = "once"        # the same with OK alone
READ = "read"        # the error text alone
QUESTION = "question"  # the error text alone, then whether to go on all the same


@dataclass(frozen=True)
class Page:
    name: str
    dialog: str           # the class of its dialog
    opened_from: str      # the class of the dialog below, none at the top
    reach: callable       # (script) makes everything ready for `opening`
    opening: callable     # (script) the one step that opens the page; answers what came back
    reads: int = None     # the command that opening sends
    shows: str = ""       # a control that is empty where the section is missing
    change: callable = None   # (street, number)
    confirm: callable = None  # (script) presses what sends; answers what came back
    sends: int = 2        # the command that confirming sends
    before: int = 0       # commands that confirming sends before that one
    failure: str = RETRY  # how a failure is told
    arrived: callable = None  # (street, number)
    revisits: bool = False    # its check makes the last row the selection
    stays: bool = False   # it stays open after success
    asked: str = ""       # the text of the question behind a failure
    options: tuple = ()   # of the controller
    special: dict = field(default_factory=dict)  # Outcomes that are this page's own, by fault


# ---------------------------------------------------------------- ways to a page

def panel(script):
    script.do("editor.configure", device=DEVICE)


def menu(script):
    panel(script)
    script.do("click", id="device")


def definition(script):
    return script.do("editor.modifyDevice", device=DEVICE)


def update(script):
    return script.do("editor.updateNodes", device=DEVICE)


def nothing(_):
    pass


def empty_definition(script):
    """Opens the definition of the only device: two can't have one address and port."""
    for device in script.configuration().findall("commSystem/device/name"):
        script.do("editor.removeDevice", device=device.text)
    return script.do("editor.newDevice")


def press(control):
    return lambda script: script.do("click", id=control)


ok = press("ok")


# ---------------------------------------------------------------- entries

def typing(*entries):
    """Types into controls, by name; `{n}` is the number."""
    def change(street, number):
        for control, text in entries:
            street.script.do("type", id=control, text=text.format(n=number))
    return change


def with_rows(rows, *steps):
    """Selects rows of the list of nodes and takes further steps."""
    def change(street, number):
        street.script.do("select", id="nodes", rows=rows(number))
        for step in steps:
            step(street, number)
    return change


def at_once(street, _):
    street.script.do("type", id="activation", text=PAST)


def first_node(street):
    return street.script.controls()["nodes"]["rows"][0]["cells"][0]


def delete_key(street, _):
    street.gone = first_node(street)
    street.script.do("press", id="nodes", key="Delete")


def move_right(street, _):
    street.gone = first_node(street)
    street.script.do("click", id="moveRight")


def new_task(street, number):
    street.script.do("click", id="newTask")
    street.task = street.script.controls()["number"]["text"]
    street.script.do("type", id="start", text=f"05/06/2024 10:{number % 60:02}:00")


def firmware(street, number):
    path = street.folder / f"firmware-3.1.{number}.tar"
    with tarfile.open(path, mode="w") as archive:
        entry = tarfile.TarInfo("image.bin")
        entry.size = 2000
        archive.addfile(entry, io.BytesIO(b"lamp firmware " * 150))
    street.script.do("click", id="load")
    street.script.do("pick", path=str(path))
    at_once(street, number)


def new_device(street, number):
    """Fills in the definition of a device that is not there yet; its identity is asked for."""
    for control, text in (("name", f"North {number}"), ("address", "127.0.0.1"),
                          ("socket", str(street.controller.port)), ("ftpAddress", "192.0.2.1")):
        street.script.do("type", id=control, text=text)


def known_device(street, number):
    """The same with the identity, which then is not asked for."""
    new_device(street, number)
    street.script.do("type", id="identifier", text=street.identifier)


def another_address(street, number):
    """Another name of the same machine: there the controller is told of its new address."""
    shown = street.script.controls()["address"]["text"]
    other = "127.0.0.1" if shown == "localhost" else "localhost"
    street.moved = other
    street.script.do("type", id="address", text=other)


# ---------------------------------------------------------------- what arrived

def row_of(street, section, index):
    return list(street.controller.read(section))[index]


def row_holds(section, **values):
    """The first row has these values, `{n}` being the number."""
    def arrived(street, number):
        row = row_of(street, section, 0)
        return all(row.get(name) == text.format(n=number) for name, text in values.items())
    return arrived


def general_holds(**values):
    def arrived(street, number):
        general = street.controller.read("L01")
        return all(general.get(name) == text.format(n=number) for name, text in values.items())
    return arrived


def clock_is_set(street, number):
    return street.controller.read("L01").get("Fh").startswith(f"2024071510{number % 60:02}")


def task_is_there(street, number):
    task = street.controller.read("L02").find(f"TP[@TpTar='{street.task}']")
    return task is not None and task.get("TpHi") == f"202406051{number % 60:03}00S"


def node_is_removed(street, _):
    node = street.controller.read("L04").find(f"Node[@nodeId='{street.gone}']")
    return node.get("Reference") is None and node.get("latitude") is None


def node_is_blacklisted(street, _):
    table = street.controller.read("L04")
    listed = [node.get("nodeId") for node in table.findall("BlackList/Node")]
    return listed[-1:] == [street.gone] and table.find(f"Node[@nodeId='{street.gone}']") is None


def node_is_chosen(street, number):
    chosen = [node.get("nodeId") for node in street.controller.read("L11")]
    return chosen == [street.controller.read("L04").findall("Node")[number].get("nodeId")]


def devices(street):
    return street.script.configuration().findall("commSystem/device")


def device_is_there(street, number):
    for device in devices(street):
        if device.findtext("name") == f"North {number}":
            return (device.findtext("identifier") == street.identifier
                    and len(device.findall("childDevices/childDevice")) == street.NODES)
    return False


def address_is_told(street, _):
    return (street.controller.read("L01").get("ipCom") == street.moved
            and devices(street)[0].findtext("address") == street.moved)


def children_are_there(street, _):
    return len(devices(street)[0].findall("childDevices/childDevice")) == street.NODES


# ---------------------------------------------------------------- the table

def settings(name, button, dialog, shows, change, arrived, **more):
    """A page of the configuration menu."""
    return Page(name, dialog, "XCDeviceCfgZelLampManager", menu, press(button), reads=1,
                shows=shows, change=change, confirm=more.pop("confirm", ok), arrived=arrived, **more)


DEFINITION = "XCDlgNewModifyZelLampManager"
# An identity stands in no section.
IDENTITY = {"wrong-section": FINE, "no-section": FINE, "empty": failing(r"\[38436\]")}
# Old child devices are given up before the list is looked for; that order is deliberate.
NODE_LIST = {"wrong-section": bare(r"\[38278\]"), "no-section": bare(r"\[38278\]"),
             "empty": bare(r"\[38278\]")}
INPUTS = ("--with-inputs",)


def new_definition(name, command, asked, change, **more):
    return Page(name, DEFINITION, "", nothing, empty_definition, change=change, confirm=ok,
                sends=command, failure=QUESTION, asked=asked, arrived=device_is_there, **more)


PAGES = [
    Page("configuration menu", "XCDeviceCfgZelLampManager", "CDlgOptionsZelLampManager", panel,
         press("device"), reads=1, shows="5007"),
    settings("general settings", 6358, "CDlgE01CfgZelLampManager", "name",
             typing(("name", "Street {n}"), ("mailPassword", "secret {n}")),
             general_holds(name="Street {n}")),
    settings("controller clock", 6358, "CDlgE01CfgZelLampManager", "name",
             lambda street, n: street.script.do("type", id="clock", text=f"15/07/2024 10:{n % 60:02}:30"),
             clock_is_set, confirm=press("setClock"), sends=9, failure=ONCE, stays=True),
    settings("scheduled tasks", 6461, "CDlgE02CfgZelLampManager", "tasks", new_task, task_is_there),
    Page("firmware", "CDlgE03CfgZelLampManager", "XCDeviceCfgZelLampManager", menu, press(6510),
         change=firmware, confirm=ok, sends=52, failure=ONCE, arrived=general_holds(Vf="3.1.{n}")),
    settings("node table", 6512, "CDlgE04CfgZelLampManager", "nodes",
             with_rows(lambda n: [0, 3], typing(("reference", "Park {n}"))),
             row_holds("L04", Reference="Park {n}")),
    settings("node power", 6528, "CDlgE05CfgZelLampManager", "nodes",
             with_rows(lambda n: [0, 1], typing(("time", "1{n}"), ("power", "{n}")), at_once),
             row_holds("L05", time="1{n}", power="{n}"), revisits=True),
    settings("interval programs", 6552, "CDlgE06CfgZelLampManager", "nodes",
             with_rows(lambda n: [0, 2], typing(("time2", "1{n}"), ("power2", "{n}")), at_once),
             row_holds("L06", time2="1{n}", power2="{n}"), revisits=True),
    settings("clock programs", 6552, "CDlgE06CfgZelLampManager", "nodes",
             with_rows(lambda n: [0, 2], typing(("time2", "23:{n:02}"), ("power2", "{n}")), at_once),
             row_holds("L17", hour2="23", min2="{n:02}", power2="{n}"), revisits=True, options=INPUTS),
    settings("alarm thresholds", 6581, "CDlgE07CfgZelLampManager", "newNodes",
             lambda street, n: (street.script.do("type", id="timeAlarm", text=f"1{n}"),
                                street.script.do("type", id="capacitorTime", text=f"1{n}"),
                                at_once(street, n)),
             lambda street, n: {node.get("timeAlarm", node.get("capacitorTime"))
                                for node in street.controller.read("L07")} >= {f"1{n}"}),
    settings("node removal", 6587, "CDlgE08CfgZelLampManager", "nodes",
             with_rows(lambda n: [0], delete_key, at_once), node_is_removed),
    settings("node blacklist", 6616, "CDlgE09CfgZelLampManager", "nodes",
             with_rows(lambda n: [0], move_right, at_once), node_is_blacklisted),
    settings("node selection", 6623, "CDlgE11CfgZelLampManager", "nodes",
             with_rows(lambda n: [n], at_once), node_is_chosen),
    settings("inputs and outputs", 6630, "CDlgE13CfgZelLampManager", "offsetSunSet",
             lambda street, n: (typing(("offsetSunSet", "{n}"))(street, n), at_once(street, n)),
             lambda street, n: street.controller.read("L13").get("offsetSunSet") == str(n),
             options=INPUTS),
    Page("search", "XCDlgAdvancedCfgZelLampManager", DEFINITION, definition, press(6328), reads=29,
         shows="ipCom", special=IDENTITY),
    Page("advanced communication settings", "XCDlgAdvancedCfgZelLampManager", DEFINITION, definition,
         press(6328), reads=1, shows="ipCom", change=typing(("PrimaryDns", "10.0.0.{n}")), confirm=ok,
         arrived=general_holds(PrimaryDns="10.0.0.{n}")),
    new_definition("definition, verification", 29, "[375]", new_device, special=IDENTITY),
    new_definition("definition, node file", 58, "[38263]", known_device, before=1,
                   special=NODE_LIST),
    Page("definition, changed address", DEFINITION, "", nothing, definition, change=another_address,
         confirm=ok, sends=30, before=1, failure=QUESTION, asked="[581]", arrived=address_is_told),
    Page("node update, synchronous", "XCUpdateNodesZelLampManager", "", nothing, update,
         change=lambda street, n: None, confirm=press(6593), sends=1, failure=ONCE, stays=True,
         arrived=children_are_there, special=NODE_LIST),
    Page("node update, asynchronous", "XCUpdateNodesZelLampManager", "", nothing, update,
         change=lambda street, n: None, confirm=press(6594), sends=1, failure=ONCE, stays=True,
         arrived=children_are_there, special=NODE_LIST),
]
