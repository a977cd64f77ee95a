"""The controller's live page in a real browser: what the user sees, clicks, types and taps there."""

import json
import re
import shutil
import sys
import tempfile
import unittest

from browser import Browser
from fault_table import FAULTS
from harness import Controller, StreetTest

PAST = "01/01/2020 00:00:00"
NIGHT = "20250315220000"
# The modules of the page are shared with whoever imports them again.
STREET = "(await import('/street.js')).street"
SLOWEST_FRAME = 250  # milliseconds; on two cores without a graphics card it takes a tenth of that


def script(text):
    return f"(async () => {{ {text} }})()"


class LivePageTest(StreetTest):
    OPTIONS = ("--with-inputs",)

    @classmethod
    def setUpClass(cls):
        cls.browser = Browser()

    @classmethod
    def tearDownClass(cls):
        cls.browser.close()

    def setUp(self):
        super().setUp()
        self.controller.control(f"clock?set={NIGHT}")
        self.browser.resize(1280, 800)
        self.browser.scheme("light")
        self.show()
        self.addCleanup(self.expect_no_fault)

    def show(self, controller=None):
        """Opens the page anew and waits until it lives."""
        self.browser.faults.clear()
        port = (controller or self.controller).port
        self.browser.open(f"http://127.0.0.1:{port}/")
        self.browser.until("document.querySelector('#connection').textContent === 'live'"
                           " && document.querySelector('#lit').textContent !== '-'")

    def expect_no_fault(self):
        self.assertEqual(self.browser.faults, [], "the page complains")

    def node(self, old=False):
        """A lamp that is well, of the one or the other generation; its identity and its row."""
        for number, row in enumerate(self.controller.read("L07")):
            lamp = self.browser.run(script(
                f"return (await fetch('lamp.json?node={row.get('Id')}')).json()"))
            if (row.get("brokenActive") is not None) == old and lamp["condition"] == "good":
                return row.get("Id"), number
        raise AssertionError("the street has no such lamp")

    def choose(self, node):
        self.browser.click("#find")
        self.browser.run("document.querySelector('#find').select()")
        self.browser.type(node)
        self.browser.until(f"document.querySelector('#lampTitle').textContent.startsWith('{node}')")

    def light_at(self, index):
        """How much light there is on the map around a lamp, 0 to 255."""
        return self.browser.run(script(f"""
            const {{ placeOf, paint }} = await import('/map.js');
            paint();
            const map = document.querySelector('#map'), box = map.getBoundingClientRect();
            const [x, y] = placeOf({index}), ratio = window.devicePixelRatio, around = 4;
            const pixels = map.getContext('2d').getImageData((x - box.x - around) * ratio,
              (y - box.y - around) * ratio, 2 * around * ratio, 2 * around * ratio).data;
            let sum = 0;
            for (let i = 0; i < pixels.length; i += 4) sum += pixels[i];
            return sum / (pixels.length / 4);"""))


class WhatHappensInTheStreet(LivePageTest):
    def test_a_program_from_the_plug_in_changes_the_light_at_its_hour(self):
        self.open_page(6552)
        self.script.do("select", id="nodes", rows=[0])
        for control, text in (("power1", "100"), ("time2", "23:30"), ("power2", "10"),
                              ("time3", "01:00"), ("power3", "0")):
            self.script.do("type", id=control, text=text)
        self.script.do("type", id="activation", text=PAST)
        self.assertEqual(self.script.do("click", id="ok")["closed"]["result"], "ok")
        self.choose(self.controller.read("L04")[0].get("nodeId"))
        self.browser.until("document.querySelector('#lampTonight').innerText.includes('23:30\\u00a010')")
        steps = self.browser.text("#lampTonight .legend").replace("\u00a0", " ")
        self.assertIn("100 %, 23:30 10 %, 01:00 0 %", steps)

        lights = []
        for time, power in (("232955", "100"), ("233005", "10"), ("000005", "10")):
            day = "20250316" if time < "12" else "20250315"
            self.controller.control(f"clock?set={day}{time}")
            self.browser.until(f"document.querySelector('#lampNow').innerText.startsWith('{power} %')")
            lights.append(self.light_at(0))
        self.assertGreater(lights[0], 1.5 * lights[1], lights)
        self.assertAlmostEqual(lights[1], lights[2], delta=3)
        self.controller.control("clock?set=20250316010005")
        self.browser.until("document.querySelector('#lampNow').innerText.startsWith('0 %')")
        self.assertLess(self.light_at(0), 0.7 * lights[2], lights)

    def test_a_program_shows_with_its_number_of_lamps(self):
        self.browser.until("document.querySelectorAll('#programs li .bar').length === 2")
        words = self.browser.text("#programs").replace("\u00a0", " ")
        self.assertIn("19:13 100 %, 22:30 70 %, 00:30 40 %, 05:30 80 %", words)
        shown = [int(number) for number in re.findall(r"(\d+) lamps", words)]
        self.assertEqual(sum(shown), self.NODES)

    def test_an_input_switched_by_a_click_switches_what_follows_it(self):
        def value(kind, number):
            return self.controller.read("L13").find(f"{kind}[@Dir='{number}']").get("Value")

        self.assertEqual((value("Input", 1), value("Output", 4)), ("0", "0"))
        self.browser.click("#inputs button:nth-child(1)")
        self.browser.until("document.querySelector('#inputs button').ariaPressed === 'true'"
                           " && document.querySelector('#outputs li:nth-child(4)').className === 'on'")
        self.assertEqual((value("Input", 1), value("Output", 4)), ("1", "1"))
        self.browser.press(" ", 32, " ")  # the key does the same on the focused button
        self.browser.until("document.querySelector('#inputs button').ariaPressed === 'false'")
        self.assertEqual((value("Input", 1), value("Output", 4)), ("0", "0"))

    def break_lamp(self, node, condition):
        self.choose(node)
        self.browser.click(f"[data-condition={condition}]")
        self.browser.until(f"document.querySelector('[data-condition={condition}]').ariaPressed === 'true'")

    def alarms(self):
        return {alarm.get("nodeId"): alarm.get("type") for alarm in self.controller.read("L09")}

    def test_a_lamp_made_faulty_raises_the_alarm_of_its_generation_after_its_time(self):
        for old, kind, wait in ((True, "lamp", "brokenTime"), (False, "power", "timeAlarm")):
            node, row = self.node(old)
            self.break_lamp(node, "broken")
            seconds = int(list(self.controller.read("L07"))[row].get(wait))
            self.controller.control(f"clock?jump={seconds - 30}")
            self.assertNotIn(node, self.alarms())
            self.controller.control("clock?jump=31")
            self.browser.until(f"document.querySelector('#alarms').innerText.includes('{node}: {kind}')")
            self.assertEqual(self.alarms()[node], kind)
            self.browser.until(f"document.querySelector('#lampNow strong').innerText === 'Alarm: {kind}'")
            self.browser.click("[data-condition=good]")
            self.browser.until(f"!document.querySelector('#alarms').innerText.includes('{node}')")
            self.assertNotIn(node, self.alarms())

    def test_a_broken_lamp_is_still_broken_after_a_restart(self):
        node, _ = self.node()
        self.break_lamp(node, "broken")
        self.browser.open("about:blank")
        self.controller.kill()
        self.controller.start()
        self.show()
        self.choose(node)
        self.browser.until("document.querySelector('[data-condition=broken]').ariaPressed === 'true'")


class LastCommands(LivePageTest):
    def test_documents_are_shown_and_passwords_are_not(self):
        self.open_page(6358)
        for control in ("FTPPwd", "mailUser", "mailPassword"):
            self.script.do("type", id=control, text="opensesame")
        self.script.do("type", id="name", text="Ringstraße")
        self.assertEqual(self.script.do("click", id="ok")["closed"]["result"], "ok")
        self.browser.until("document.querySelector('#log summary')?.innerText.includes('Write E01')")
        self.browser.click("#log summary")
        shown = self.browser.text("#log details[open]")
        self.assertIn('name="Ringstraße"', shown)
        for masked in ('FTPPwd="***"', 'mailPassword="***"', "ftpPassword=***"):
            self.assertIn(masked, shown)
        everything = self.browser.run("document.documentElement.textContent")
        for secret in ("opensesame", "hunter2"):
            self.assertNotIn(secret, everything)

    def test_a_refused_command_is_shown_as_such(self):
        self.controller.curl(2, '<deviceCfg><E01 hourIni="77"/></deviceCfg>')
        self.browser.until("document.querySelector('#log .status')?.innerText === '422'")
        self.browser.click("#log summary")
        self.assertIn("hourIni is \"77\"", self.browser.text("#log details[open]"))


class WhoMayChange(LivePageTest):
    def status(self, request, headers):
        return self.browser.run(script(
            f"return (await fetch({json.dumps('control/' + request)},"
            f" {{ method: 'POST', headers: {json.dumps(headers)} }})).status"))

    def test_changes_without_the_token_are_refused(self):
        before = self.controller.read("L13").find("Input").get("Value")
        for request in ("clock?jump=86400", "input?number=1&active=1", "fault?set=garbage",
                        "lamp?node=4100007&condition=broken"):
            for headers in ({}, {"X-Control-Token": "guessed"}, {"X-Control-Token": ""}):
                self.assertEqual(self.status(request, headers), 403, request)
        self.assertEqual(self.controller.read("L13").find("Input").get("Value"), before)
        self.assertTrue(self.controller.read("L01").get("Fh").startswith("2025031522"))
        self.browser.faults.clear()  # which are the refusals

    def test_a_page_of_another_origin_can_neither_change_nor_read(self):
        origin = f"http://127.0.0.1:{self.controller.port}"
        self.browser.open("about:blank")
        for attempt in (f"fetch('{origin}/control/clock?jump=86400', {{ method: 'POST',"
                        f" headers: {{ 'X-Control-Token': '{self.controller.token}' }} }})",
                        f"fetch('{origin}/')", f"fetch('{origin}/street.json')"):
            answer = self.browser.run(f"{attempt}.then(() => 'answered', () => 'refused')")
            self.assertEqual(answer, "refused", attempt)
        self.assertTrue(self.controller.read("L01").get("Fh").startswith("2025031522"))
        self.browser.faults.clear()

    def test_a_page_that_outlives_its_controller_works_on(self):
        self.controller.restart()
        self.controller.control(f"clock?set={NIGHT}")
        self.browser.until("document.querySelector('#connection').textContent === 'live'")
        self.browser.click("#inputs button:nth-child(2)")
        self.browser.until("document.querySelector('#inputs button:nth-child(2)').ariaPressed === 'true'")
        self.browser.faults.clear()  # the line was down, and the old token refused


class ClockAndFaults(LivePageTest):
    def date(self):
        return self.controller.control("clock?jump=0")

    def test_the_clock_runs_faster_stands_still_and_jumps(self):
        self.browser.click("[data-clock='speed=3600']")
        self.browser.until("document.querySelector('[data-clock=\"speed=3600\"]').ariaPressed === 'true'")
        self.assertEqual(self.date()["speed"], 3600)
        self.browser.click("#pause")
        self.browser.until("document.querySelector('#pause').ariaPressed === 'true'")
        stands = self.date()
        self.assertTrue(stands["paused"])
        hour = int(stands["date"][11:13])
        self.browser.click("[data-clock='jump=3600']")
        self.browser.until(f"document.querySelector('#clock').innerText.startsWith('{(hour + 1) % 24:02}')")
        self.assertEqual(self.date()["date"][14:], stands["date"][14:])
        self.browser.click("[data-clock='speed=1']")
        self.browser.until("document.querySelector('#pause').ariaPressed === 'false'")
        self.assertEqual((self.date()["paused"], self.date()["speed"]), (False, 1))

    def test_dusk_and_dawn_are_a_click_away(self):
        self.controller.control("clock?set=20250315120000")
        self.browser.until("document.querySelector('#clock').innerText.startsWith('12:00')")
        for button, day, element in (("#toDusk", "2025-03-15", 0), ("#toDawn", "2025-03-16", 1)):
            wanted = self.browser.text("#night").split(" to ")[element]
            hour, minute = int(wanted[:2]), int(wanted[3:])
            before = f"{hour - (minute == 0):02}:{(minute - 1) % 60:02}"
            self.browser.click(button)
            self.browser.until(f"document.querySelector('#clock').innerText.startsWith('{before}')")
            self.assertEqual(self.browser.text("#day"), day)
        self.controller.control("clock?jump=121")
        self.browser.until("document.querySelector('#lit').innerText.startsWith('0 of')")

    def order_by_form(self, fault):
        name, _, argument = fault.partition(":")
        self.browser.run(f"""(() => {{
            const name = document.querySelector('#faultName');
            name.value = {json.dumps(name)};
            name.dispatchEvent(new Event('change'));
            document.querySelector('#faultCommand').value = '2';
        }})()""")
        shown = not self.browser.run("document.querySelector('#faultArgumentLabel').hidden")
        if argument:
            self.assertTrue(shown, name)
            self.browser.click("#faultArgument")
            self.browser.type(argument)
        self.browser.click("#faultCount")
        self.browser.run("document.querySelector('#faultCount').select()")
        self.browser.type("3")
        self.browser.press("Enter", 13, "\r")

    def test_every_fault_is_ordered_by_its_name_and_taken_back(self):
        names = self.browser.run("[...document.querySelectorAll('#faultName option')].map((o) => o.value)")
        self.assertEqual(set(names), {fault.name for fault in FAULTS})
        wanted = []
        for fault in FAULTS:
            self.order_by_form(fault.order)
            wanted.append(f"{fault.order}@2#3")
            self.browser.until(f"document.querySelectorAll('#faults li').length === {len(wanted)}"
                               " && !document.querySelector('#faults .none')")
        self.assertEqual(self.date()["faults"], wanted)
        self.assertEqual(self.browser.text("#faults").split("\n"), wanted)
        self.browser.click("#faultClear")
        self.browser.until("document.querySelector('#faults .none')")
        self.assertEqual(self.date()["faults"], [])

    def test_a_fault_ordered_on_the_page_is_suffered_and_shown_as_text(self):
        self.order_by_form("refuse:<img src=x onerror=boom()> & later")
        self.browser.until("document.querySelector('#faults').innerText.includes('onerror=boom()')")
        self.assertEqual(self.controller.curl(2, '<deviceCfg><E01 name="x"/></deviceCfg>'),
                         (422, "<img src=x onerror=boom()> & later"))
        self.browser.until("document.querySelector('#log .status')?.innerText === '422'")
        self.assertEqual(self.browser.run("document.images.length"), 0)

    def test_a_fault_that_is_wrong_is_told_at_the_form(self):
        self.order_by_form("delay:soon")
        self.browser.until("!document.querySelector('#faultProblem').hidden")
        self.assertIn("delay takes a number", self.browser.text("#faultProblem"))
        self.assertEqual(self.date()["faults"], [])
        self.browser.faults.clear()  # the refusal


class WithoutAMouse(LivePageTest):
    def focused(self):
        return self.browser.run("document.activeElement.id || document.activeElement.innerText"
                                " || document.activeElement.tagName")

    def test_everything_is_reached_by_the_tabulator_in_the_order_of_the_page(self):
        self.browser.run("document.activeElement.blur(); scrollTo(0, 0)")
        reached = []
        for _ in range(80):
            self.browser.tab()
            if self.browser.run("document.activeElement === document.body"):
                break
            reached.append(self.focused())
        wanted = self.browser.run("""[...document.querySelectorAll(
            'a[href], button:not(:disabled), input, select, canvas, summary')]
            .filter((e) => e.checkVisibility()).map((e) => e.id || e.innerText || e.tagName)""")
        self.assertEqual(reached, wanted)

    def test_the_map_is_skipped_on_demand(self):
        self.browser.run("document.activeElement.blur()")
        self.browser.tab()
        self.assertEqual(self.focused(), "Skip the map")
        self.browser.press("Enter", 13, "\r")
        self.browser.until("document.activeElement.id === 'details'")

    def view(self):
        return self.browser.run(script("return (await import('/map.js')).placeOf(0)"))

    def test_the_map_is_moved_zoomed_and_walked_by_keys(self):
        self.browser.run("document.querySelector('#map').focus()")
        home = self.view()
        for key, code in (("ArrowRight", 39), ("ArrowDown", 40)):
            self.browser.press(key, code)
        moved = self.view()
        self.assertAlmostEqual(moved[0], home[0] - 60, delta=1)
        self.assertAlmostEqual(moved[1], home[1] - 60, delta=1)
        self.browser.press("+", 187, "+")
        self.assertNotEqual(self.view(), moved)
        self.browser.press("Home", 36)
        self.assertEqual(self.view(), home)
        ids = self.browser.run(script(f"return {STREET}.plan.ids"))
        for key, node in (("n", ids[0]), ("n", ids[1]), ("p", ids[0]), ("p", ids[-1])):
            self.browser.press(key, ord(key.upper()), key)
            self.browser.until(f"document.querySelector('#lampTitle').innerText.startsWith('{node}')")
        self.browser.press("Escape", 27)
        self.browser.until("document.querySelector('#lamp').hidden")

    def test_a_lamp_is_chosen_by_a_click_on_the_map(self):
        x, y = self.browser.run(script("return (await import('/map.js')).placeOf(5)"))
        node = self.browser.run(script(f"return {STREET}.plan.ids[5]"))
        self.browser.click_at(x, y)
        self.browser.until(f"document.querySelector('#lampTitle').innerText.startsWith('{node}')")

    def test_every_control_has_a_name(self):
        self.choose(self.node()[0])
        tree = self.browser.command("Accessibility.getFullAXTree")["nodes"]
        roles = {"button", "textbox", "searchbox", "combobox", "link", "Canvas", "application"}
        controls = [node for node in tree if not node["ignored"] and node["role"]["value"] in roles]
        self.assertGreater(len(controls), 30)
        nameless = [node["role"] for node in controls if not node.get("name", {}).get("value")]
        self.assertEqual(nameless, [])


# Contrast of two colours by WCAG 2: 4.5 is the least for text.
CONTRAST = """(selector) => {
  const luminance = (colour) => {
    const [r, g, b] = colour.match(/[\\d.]+/g).map((c) => c / 255)
      .map((c) => c <= 0.04045 ? c / 12.92 : ((c + 0.055) / 1.055) ** 2.4);
    return 0.2126 * r + 0.7152 * g + 0.0722 * b;
  };
  const behind = (element) => {
    for (let e = element; e; e = e.parentElement) {
      const colour = getComputedStyle(e).backgroundColor;
      if (!/, 0\\)$/.test(colour)) return colour;
    }
    return 'rgb(255, 255, 255)';
  };
  const element = document.querySelector(selector);
  const [a, b] = [luminance(getComputedStyle(element).color), luminance(behind(element))];
  return (Math.max(a, b) + 0.05) / (Math.min(a, b) + 0.05);
}"""


class OnEveryScreen(LivePageTest):
    TEXTS = ("h1", "#connection", "#clock", "#day", "dt", "h2", "#pause", "[data-clock='speed=1']",
             "#outputs li.on", "#outputs li:not(.on)", "#inputs button", ".legend", "#faultEffect",
             "#faults li", "label", "#lampTitle", "#lampNow", "#log .status", "#log .when", "#log pre",
             ".bar span", ".bar span.dim", "#alarms li")

    def test_texts_are_readable_in_the_light_and_in_the_dark_scheme(self):
        self.controller.curl(1, "<deviceCfg><L01/></deviceCfg>")
        self.controller.order("garbage@58")
        self.choose(self.node()[0])
        self.browser.until("document.querySelector('#log summary')")
        grounds = set()
        for scheme in ("light", "dark"):
            self.browser.scheme(scheme)
            grounds.add(self.browser.run("getComputedStyle(document.body).backgroundColor"))
            for selector in self.TEXTS:
                contrast = self.browser.run(f"({CONTRAST})({json.dumps(selector)})")
                self.assertGreaterEqual(contrast, 4.5, f"{selector}, {scheme}")
        self.assertEqual(len(grounds), 2)

    def test_a_phone_shows_everything_without_scrolling_sideways(self):
        self.browser.resize(360, 740, phone=True)
        self.show()
        self.choose(self.node()[0])
        self.assertLessEqual(self.browser.run("document.documentElement.scrollWidth"), 360)
        outside = self.browser.run("""[...document.querySelectorAll('body *')].filter((e) => {
            const box = e.getBoundingClientRect();
            return e.checkVisibility() && box.width && (box.right > innerWidth + 1 || box.left < -1)
              && !e.classList.contains('skip');
        }).map((e) => e.id || e.className || e.tagName)""")
        self.assertEqual(outside, [])
        small = self.browser.run("""[...document.querySelectorAll('button, input, select')].filter((e) => {
            const box = e.getBoundingClientRect();
            return e.checkVisibility() && (box.height < 30 || box.width < 28);
        }).map((e) => e.id || e.innerText)""")
        self.assertEqual(small, [])

    def test_a_finger_switches_an_input_and_chooses_a_lamp(self):
        self.browser.resize(390, 844, phone=True)
        self.show()
        self.browser.tap("#inputs button:nth-child(3)")
        self.browser.until("document.querySelector('#inputs button:nth-child(3)').ariaPressed === 'true'")
        self.assertEqual(self.controller.read("L13").find("Input[@Dir='3']").get("Value"), "1")
        self.browser.run("scrollTo(0, 0)")
        inside = self.browser.run(script("""
            const { placeOf } = await import('/map.js');
            const box = document.querySelector('#map').getBoundingClientRect();
            return [0, 1, 2, 3, 4, 5].map(placeOf).every(([x, y]) =>
              x > box.left && x < box.right && y > box.top + 50 && y < box.bottom);"""))
        self.assertTrue(inside, "the whole street lies on the map")
        x, y = self.browser.run(script("return (await import('/map.js')).placeOf(2)"))
        for kind, points in (("touchStart", [{"x": x, "y": y}]), ("touchEnd", [])):
            self.browser.command("Input.dispatchTouchEvent", type=kind, touchPoints=points)
        self.browser.until("!document.querySelector('#lamp').hidden")

    def test_the_whole_street_stays_on_the_map_when_the_window_changes(self):
        for width, height in ((1600, 900), (700, 900), (1000, 500)):
            self.browser.resize(width, height)
            self.browser.until(script("""
                const { placeOf } = await import('/map.js');
                const box = document.querySelector('#map').getBoundingClientRect();
                return [...Array(20).keys()].map(placeOf).every(([x, y]) =>
                  x > box.left && x < box.right && y > box.top + 50 && y < box.bottom);"""))


class ManyLamps(unittest.TestCase):
    NODES = 10000

    def test_ten_thousand_lamps_are_drawn_in_time(self):
        folder = tempfile.mkdtemp(prefix="lamp-test-")
        self.addCleanup(shutil.rmtree, folder)
        controller = Controller(folder, "--nodes", str(self.NODES), "--with-inputs")
        self.addCleanup(controller.stop)
        controller.control(f"clock?set={NIGHT}")
        browser = Browser()
        self.addCleanup(browser.close)
        browser.open(f"http://127.0.0.1:{controller.port}/")
        browser.until(f"document.querySelector('#lit').innerText === '{self.NODES} of {self.NODES}'", 60)
        for name, zoom in (("the whole street", 1), ("near by", 12)):
            figures = browser.run(script(f"""
                const {{ paint, zoom, showAll, draw }} = await import('/map.js');
                showAll();
                zoom({zoom});
                paint();
                const begin = performance.now();
                for (let i = 0; i < 20; ++i) paint();
                const each = (performance.now() - begin) / 20;
                const frames = await new Promise((done) => {{
                  const start = performance.now();
                  let count = 0;
                  const step = (now) => {{
                    zoom(count % 2 ? 1.01 : 1 / 1.01);
                    if (now - start < 2000) {{ ++count; requestAnimationFrame(step); }}
                    else done(count * 1000 / (now - start));
                  }};
                  requestAnimationFrame(step);
                }});
                return [each, frames];"""))
            sys.stderr.write(f"{self.NODES} lamps, {name}: {figures[0]:.1f} ms a frame,"
                             f" {figures[1]:.1f} frames a second while it moves\n")
            self.assertLess(figures[0], SLOWEST_FRAME)
            self.assertGreater(figures[1], 1000 / SLOWEST_FRAME / 2)
        self.assertEqual(browser.faults, [])


if __name__ == "__main__":
    unittest.main()
