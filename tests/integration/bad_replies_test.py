"""What a broken controller or network does to the editor: a message, nothing lost, and on it goes."""

import pathlib
import shutil
import tempfile
import unittest

from harness import Misbehaving, Script, declare, http

LIMIT = 64 * 1024 * 1024


def deep(levels):
    return "<deviceCfg>" + "<a>" * levels + "</a>" * levels + "</deviceCfg>"


def huge(connection, _):
    connection.sendall(http(200, "<deviceCfg><!--", length=70 * 1024 * 1024))
    block = b"x" * (1024 * 1024)
    for _ in range(70):
        connection.sendall(block)


def closed_in_mid_reply(connection, _):
    connection.sendall(http(200, "<deviceCfg><ZelLamp>", length=1000))


GOOD = "<deviceCfg><ZelLamp Id='X'><L01 Mod='m' InputsDetected='N'/></ZelLamp></deviceCfg>"

# Name of the fault -> the raw answer to every request.
FAULTS = {
    "no XML": http(200, "Hello"),
    "truncated": http(200, GOOD[:-20]),
    "nested 10,000 deep": http(200, deep(10000)),
    "a document type": http(200, "<!DOCTYPE deviceCfg [<!ENTITY a 'b'>]>" + GOOD),
    "two roots": http(200, GOOD + GOOD),
    "text behind the root": http(200, GOOD + "tail"),
    "a redirect": b"HTTP/1.1 302 Found\r\nLocation: http://127.0.0.1:1/\r\nContent-Length: 0\r\n"
                  b"Connection: close\r\n\r\n",
    "204 without content": b"HTTP/1.1 204 No Content\r\nConnection: close\r\n\r\n",
    "no HTTP": b"garbage\r\n\r\n",
    "nothing": b"",
}


class BadReplies(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="lamp-test-"))
        self.addCleanup(shutil.rmtree, self.folder)
        self.answer = lambda connection, body: None
        self.server = Misbehaving(lambda connection, body: self.answer(connection, body))
        self.addCleanup(self.server.stop)
        declare(self.folder, self.server.port)
        self.script = Script(self.folder)
        self.addCleanup(self.script.end)
        self.script.do("editor.configure", device="Main street")

    def reply(self, raw):
        self.answer = raw if callable(raw) else lambda connection, body: connection.sendall(raw)

    def expect_read_message(self, fault):
        top = self.script.do("click", id="device")["top"]
        self.assertEqual(top["kind"], "message", fault)
        self.assertEqual(top["buttons"], ["ok"], fault)
        self.assertTrue(top["text"], fault)
        answer = self.script.do("answer", button="ok")
        self.assertEqual(answer["top"]["class"], "CDlgOptionsZelLampManager", fault)
        return top["text"]

    def test_every_fault_ends_in_a_message_and_the_editor_goes_on(self):
        for fault, raw in FAULTS.items():
            with self.subTest(fault):
                self.reply(raw)
                self.expect_read_message(fault)
                self.reply(http(200, GOOD))
                self.assertEqual(self.script.do("click", id="device")["top"]["template"], 4528)
                self.script.do("click", id="ok")

    def test_a_reply_over_the_limit_is_refused(self):
        self.reply(huge)
        self.expect_read_message("70 MiB")

    def test_a_reply_closed_in_the_middle_is_refused(self):
        self.reply(closed_in_mid_reply)
        self.expect_read_message("closed")

    def test_a_failure_with_a_text_shows_exactly_the_text(self):
        self.reply(http(500, "The lamps are asleep.", kind="text/plain"))
        self.assertEqual(self.expect_read_message("500"), "The lamps are asleep.")

    def test_a_long_failure_text_is_cut_at_2000_characters(self):
        self.reply(http(500, "ñ" * 3000, kind="text/plain; charset=utf-8"))
        self.assertEqual(self.expect_read_message("500"), "ñ" * 2000)

    def test_a_failure_of_another_kind_is_named_by_its_status(self):
        self.reply(http(503, "<html/>", kind="text/html"))
        self.assertIn("60066", self.expect_read_message("503"))

    def test_a_controller_that_is_not_there_is_named(self):
        self.server.stop()
        self.assertIn("127.0.0.1", self.expect_read_message("refused"))

    def test_a_wrong_root_or_a_missing_section_opens_an_empty_page(self):
        self.reply(http(200, GOOD))
        self.script.do("click", id="device")
        for body in ("<other/>", "<deviceCfg/>", "<deviceCfg><ZelLamp/></deviceCfg>", ""):
            with self.subTest(body):
                self.reply(http(200, body))
                self.assertEqual(self.script.do("click", id=6512)["top"]["template"], 4538)
                self.assertEqual(self.script.rows("nodes"), [])
                self.assertEqual(self.script.do("click", id="ok")["closed"]["result"], "ok")

    def test_unknown_elements_and_attributes_come_back_unchanged(self):
        self.reply(http(200, GOOD))
        self.script.do("click", id="device")
        inside = ('<x:y xmlns:x="urn:x" z="&lt;&#10;&amp;">text</x:y>'
                  '<Node nodeId="1" Reference="a" latitude="1" longitude="2" new="é"><k/></Node>')
        self.reply(http(200, f'<deviceCfg><ZelLamp><L04 v="1">{inside}</L04></ZelLamp></deviceCfg>'))
        self.script.do("click", id=6512)
        self.script.do("type", id="reference", text="b")
        self.reply(http(200, ""))
        self.assertEqual(self.script.do("click", id="ok")["closed"]["result"], "ok")
        sent = self.script.exchanges()[-1]["request"]
        expected = inside.replace('Reference="a"', 'Reference="b"')
        self.assertIn(f'<E04 v="1">{expected}</E04>', sent)

    def test_a_lost_answer_to_a_write_keeps_the_page_and_a_second_ok_succeeds(self):
        self.reply(http(200, GOOD))
        self.script.do("click", id="device")
        self.reply(http(200, GOOD))
        self.script.do("click", id=6358)
        self.script.do("type", id="name", text="New")
        self.reply(b"")
        self.assertEqual(self.script.do("click", id="ok")["top"]["buttons"], ["retry", "cancel"])
        self.script.do("answer", button="cancel")
        self.assertEqual(self.script.controls()["name"]["text"], "New")
        self.reply(http(200, "ignored, no XML"))
        self.assertEqual(self.script.do("click", id="ok")["closed"]["result"], "ok")

    def test_a_cancelled_read_shows_nothing(self):
        self.script.do("editor.cancelNextExchange")
        self.assertEqual(self.script.do("click", id="device")["top"]["class"],
                         "CDlgOptionsZelLampManager")


if __name__ == "__main__":
    unittest.main()
