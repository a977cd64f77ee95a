"""Takes a page through faults: on opening and on OK.

Whatever happens on the wire, the user reads the message that belongs to it, the page keeps its
entries, the controller holds all of a change or nothing of it, and a second OK succeeds.
"""

import concurrent.futures
import pathlib
import re
import shutil
import tempfile
import traceback
import unittest
import xml.etree.ElementTree as ElementTree
from datetime import datetime

from harness import THREADS_SANITIZED, Controller, Script, declare
from page_table import DEVICE, ONCE, QUESTION, READ, RETRY

PATIENCE = "20" if THREADS_SANITIZED else "6"  # seconds that the user waits for an answer
SECTIONS = [f"L{n:02}" for n in range(1, 18) if n not in (9, 15)]  # reports follow the clock
READING = (1, 29, 58)
BUTTONS = {RETRY: ["retry", "cancel"], ONCE: ["ok"], READ: ["ok"], QUESTION: ["ok"]}
SUFFIX = {RETRY: "\r\n\r\n[329]", ONCE: "\r\n\r\n[329]", READ: "", QUESTION: ""}


class Failed(AssertionError):
    pass


def expect(condition, what, shown=""):
    if not condition:
        raise Failed(f"{what}{': ' if shown != '' else ''}{str(shown)[:1500]}")


class Street:
    """A controller, and a user whose configuration declares it."""

    NODES = 60

    def __init__(self, page):
        self.page = page
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="lamp-test-"))
        (self.folder / "controller").mkdir()
        self.controller = Controller(self.folder / "controller", "--nodes", str(self.NODES),
                                     "--seed", "7", *page.options)
        self.identifier = "LM00000007"
        declare(self.folder / "configuration", self.controller.port, DEVICE)
        self.script = self.make_script(self.folder / "configuration", "--answer-within", PATIENCE)
        self.number = 0
        self.restarting = False

    def make_script(self, *options):
        return Script(*options)

    def end(self):
        self.script.end()
        self.controller.stop()
        shutil.rmtree(self.folder)

    def order(self, fault, command):
        self.restarting = fault.name == "restart-mid-command"
        self.controller.order(f"{fault.order}@{command}" if command else fault.order)

    def settle(self):
        """Takes the faults back; a controller that restarts is waited for."""
        if self.restarting:
            self.restarting = False
            self.controller.await_restart()
        self.controller.control("fault?clear=1")

    def state(self):
        """All that must not change unless a command changes it, and the controller's clock."""
        texts = self.controller.sections(SECTIONS)
        clock = ElementTree.fromstring(texts["L01"]).find("ZelLamp/L01").get("Fh")
        kept = {name: re.sub(r' (Fh|Value)="[^"]*"', "", text) for name, text in texts.items()}
        return kept, self.script.do("editor.config")["xml"], datetime.strptime(clock, "%Y%m%d%H%M%S")


def same(before, after, fault):
    """Nothing changed, the clock neither but by the time that passed."""
    for name, text in before[0].items():
        expect(after[0][name] == text, f"{name} changed on the controller", after[0][name])
    expect(after[1] == before[1], "the configuration changed", after[1])
    jump = 7200 if fault.name == "clock-jump" else 0
    expect(abs((after[2] - before[2]).total_seconds() - jump) < 60, "the controller's clock", after[2])


def front(answer, dialog):
    top = answer["top"]
    expect(top["class"] == dialog, f"{dialog or 'nothing'} is to be in front", top)


def told(answer, outcome, failure):
    """The message that an outcome is told by."""
    top = answer["top"]
    expect(top["kind"] == "message", f"{outcome.message} is to be shown", answer)
    expect(top["buttons"] == BUTTONS[failure], "the buttons", top)
    suffix = SUFFIX[failure]
    expect(top["text"].endswith(suffix), "the end of the message", top["text"])
    text = top["text"][:len(top["text"]) - len(suffix)]
    expect(re.fullmatch(outcome.message, text, re.S), f"{outcome.message} is to be shown", text)


def is_empty(control):
    return not control["rows"] if control["kind"] == "list" else control["text"] == ""


def control_of(script, name):
    return next(c for c in script.do("look")["controls"] if name in (c["name"], str(c["id"])))


# ---------------------------------------------------------------- on opening

def open_page(street):
    street.page.reach(street.script)
    front(street.page.opening(street.script), street.page.dialog)


def opening_fails(street, fault, outcome):
    page, script = street.page, street.script
    told(page.opening(script), outcome, READ)
    front(script.do("answer", button="ok"), page.opened_from)


def opening_works(street, outcome):
    page, script = street.page, street.script
    front(page.opening(script), page.dialog)
    expect(is_empty(control_of(script, page.shows)) == outcome.empty,
           f"{page.shows} is to be {'empty' if outcome.empty else 'filled'}")
    script.do("close")


def on_opening(street, fault):
    page = street.page
    outcome = page.special.get(fault.name, fault.read)
    page.reach(street.script)
    before = street.state()
    street.order(fault, page.reads)
    if outcome.message:
        opening_fails(street, fault, outcome)
    else:
        opening_works(street, outcome)
    street.settle()
    same(before, street.state(), fault)
    front(page.opening(street.script), page.dialog)
    expect(not is_empty(control_of(street.script, page.shows)), f"{page.shows} is empty afterwards")


# ---------------------------------------------------------------- on OK

def succeeded(street, answer):
    page = street.page
    if page.stays:
        while answer["top"]["kind"] == "message":
            expect(answer["top"]["text"] == "[38476]", "the message of success", answer)
            answer = street.script.do("answer", button="ok")
        front(answer, page.dialog)
    else:
        expect(answer.get("closed") == {"class": page.dialog, "result": "ok"}, "OK is to close", answer)
    expect(page.arrived(street, street.number), "the change is to arrive whole")


def enter(street):
    street.number += 1
    street.page.change(street, street.number)


def selected(control):
    return [i for i, row in enumerate(control["rows"]) if row["selected"]]


def entries_stay(street, entries):
    """Every control is as it was."""
    script = street.script
    if street.page.revisits:
        rows = next(c for c in entries if c["name"] == "nodes")
        script.do("select", id="nodes", rows=selected(rows))
    for was, now in zip(entries, script.do("look")["controls"], strict=True):
        if street.page.revisits:
            was, now = ({**control, "selection": None} for control in (was, now))  # of the caret
        expect(was == now, f"{was['name']} is to stay {was}", now)


def ok_fails(street, fault, outcome, before):
    """Told, nothing lost, nothing half done; then it succeeds with the very same document."""
    page, script = street.page, street.script
    entries = script.do("look")["controls"]
    sent = len(script.exchanges())
    told(page.confirm(script), outcome, page.failure)
    first = next(e for e in script.exchanges(sent) if e["command"] == page.sends)
    button = "cancel" if page.failure == RETRY else "ok"
    answer = script.do("answer", button=button)
    if page.failure == QUESTION:
        expect((answer["top"]["text"], answer["top"]["buttons"]) == (page.asked, ["yes", "no"]),
               "the question", answer)
        answer = script.do("answer", button="no")
    front(answer, page.dialog)
    entries_stay(street, entries)
    street.settle()
    if outcome.applied:
        expect(page.stays or page.failure == QUESTION or page.arrived(street, street.number),
               "what was carried out is to be whole")
    else:
        same(before, street.state(), fault)
    after = street.state()
    sent = len(script.exchanges())
    succeeded(street, page.confirm(script))
    second = next(e for e in script.exchanges(sent) if e["command"] == page.sends)
    expect(second["request"] == first["request"], "the second document", second["request"])
    if outcome.applied:
        expect(street.state()[0] == after[0], "carried out twice is to be carried out once")


def ok_goes_on(street, outcome):
    """A message, and the dialog goes on without what was missing; a node update makes up for it."""
    page, script = street.page, street.script
    top = page.confirm(script)["top"]
    expect((top["kind"], top["buttons"]) == ("message", ["ok"]), "a message", top)
    expect(re.fullmatch(outcome.message, top["text"]), "the message", top)
    answer = script.do("answer", button="ok")
    if page.stays:
        front(answer, page.dialog)
    else:
        expect(answer.get("closed") == {"class": page.dialog, "result": "ok"}, "OK is to close", answer)
    street.settle()
    if not page.stays:
        name = street.script.configuration().findall("commSystem/device/name")[-1].text
        answer = script.do("editor.updateNodes", device=name)
    script.do("click", id=6593)
    script.do("answer", button="ok")
    expect(page.arrived(street, street.number), "a node update is to bring the lamps")


def on_ok(street, fault):
    page = street.page
    writes = page.sends not in READING
    outcome = page.special.get(fault.name, fault.write if writes else fault.read)
    open_page(street)
    if fault.every_second and writes:
        street.order(fault, page.sends)
        enter(street)
        succeeded(street, page.confirm(street.script))
        street.script.close_all()
        open_page(street)
    enter(street)
    before = street.state()
    if not (fault.every_second and writes):
        street.order(fault, page.sends)
    if outcome.goes_on:
        ok_goes_on(street, outcome)
    elif outcome.message:
        ok_fails(street, fault, outcome, before)
    else:
        succeeded(street, page.confirm(street.script))
        street.settle()


def pass_through(page, faults, make_street=Street):
    """Takes a page through all faults; answers what went wrong."""
    street = make_street(page)
    wrong = []
    moments = [("on opening", on_opening)] if page.reads else []
    moments += [("on OK", on_ok)] if page.confirm else []
    try:
        for fault in faults:
            for moment, run in moments:
                try:
                    run(street, fault)
                except Exception as error:  # every other case is still to be seen
                    text = str(error) if isinstance(error, Failed) else traceback.format_exc()
                    wrong.append(f"{page.name}, {fault.name}, {moment}: {text}")
                street.settle()
                street.script.close_all()
    finally:
        street.end()
    return wrong


def table_of_tests(name, pages, faults_of, workers, make_street=Street):
    """A test case with a test for every page, and load_tests for its module: the whole table is
    wanted, so the pages go through it side by side."""
    running = {}

    class Table(unittest.TestCase):
        maxDiff = None

        def check(self, page):
            future = running.get(page.name)
            wrong = future.result() if future else pass_through(page, faults_of(page), make_street)
            self.assertEqual("", "\n".join(wrong))

    for page in pages:
        setattr(Table, "test_" + re.sub(r"\W+", "_", page.name),
                lambda self, page=page: self.check(page))
    Table.__name__ = Table.__qualname__ = name

    def load_tests(_loader, tests, _pattern):
        pool = concurrent.futures.ThreadPoolExecutor(workers)
        for page in pages:
            running[page.name] = pool.submit(pass_through, page, faults_of(page), make_street)
        return tests

    return Table, load_tests
