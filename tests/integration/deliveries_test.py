"""Reports and the time over real servers: what the user sets on the pages is what the controller does.

The clock of the controller is moved, not waited for: the pause between two tries passes by a jump.
"""

import unittest
import xml.etree.ElementTree as ElementTree
from datetime import datetime, timedelta, timezone

from harness import StreetTest
from servers import FtpServer, MailSink, TimeServer, await_condition, certificate, free_port

PAUSE = 600  # seconds between two tries
FOLDER = "reports/main street"


class Networked(StreetTest):
    """A controller that does nothing on the network before it is let."""

    def deliver(self, *options):
        self.controller.stop()
        self.controller.options += ("--deliver", *options)
        self.controller.start()

    def on_page(self, button, fill):
        self.open_page(button)
        fill()
        self.assertEqual(self.script.do("click", id="ok")["closed"]["result"], "ok")
        self.script.close_all()

    def set_general(self, **values):
        """Types texts; chooses an entry of a list where the value is a number."""
        def fill():
            for name, value in values.items():
                if isinstance(value, int):
                    self.script.do("choose", id=name, item=value)
                else:
                    self.script.do("type", id=name, text=value)
        self.on_page(6358, fill)


class Delivering(Networked):
    def setUp(self):
        super().setUp()
        self.outbox = self.controller.folder / "outbox"
        self.set_general(IPNTP="", FtpServer=0, mailHost="")
        self.set_task()
        self.deliver()

    # ------------------------------------------------------------ at the pages

    def send_by_ftp(self, server, retries, **more):
        self.set_general(IPftp=server.host, FTPUser="ftp", FTPPwd=server.PASSWORD,
                         PathReports=FOLDER, RetryFtp=str(retries), TimeBetwFtp=str(PAUSE),
                         FtpServer=1, **more)

    def set_task(self):
        """One task: the usage report, sent and not stored, every day from 12:30."""
        def fill():
            for _ in self.script.rows("tasks"):
                self.script.do("select", id="tasks", rows=[0])
                self.script.do("press", id="tasks", key="Delete")
            self.script.do("click", id="newTask")
            self.task = self.script.controls()["number"]["text"]
            self.script.do("type", id="start", text="15/03/2025 12:30:00")
            self.script.do("select", id="actions", rows=[0])
            self.script.do("choose", id="request", item=2)
            self.script.do("choose", id="send", item=1)
            self.script.do("choose", id="store", item=0)
        self.on_page(6461, fill)

    # ------------------------------------------------------------ at the controller

    def pass_time(self, seconds):
        self.controller.control(f"clock?jump={seconds}")

    def waiting(self):
        return sorted(file.name for file in self.outbox.glob("*.*")) if self.outbox.exists() else []

    def given_up(self):
        return sorted(file.name for file in (self.outbox / "failed").glob("*"))

    def complaints(self):
        return [line for line in self.controller.errors if "not delivered" in line]

    def complain_until(self, count):
        await_condition(lambda: len(self.complaints()) >= count, f"{count} tries fail")
        self.assertEqual(len(self.complaints()), count)

    def make_report(self):
        """Lets the task run once, at its time; answers the name of its file."""
        self.run_past("12:30:00")
        return self.report("20250315123000")

    def run_past(self, time, day="20250315"):
        """Two minutes go by in a second: a minute before a time of day and one after it."""
        hour, minute, _ = time.split(":")
        before = int(hour) * 60 + int(minute) - 1
        self.controller.control(f"clock?set={day}{before // 60:02}{before % 60:02}00&speed=120")
        await_condition(lambda: self.clock() > time, f"the clock passes {time}")
        self.controller.control("clock?speed=1")

    def clock(self):
        return self.controller.control("clock?jump=0")["date"][11:]

    def report(self, moment, ending="xml"):
        return f"{moment}-task{self.task}-L15.{ending}"

    def check_report(self, content):
        root = ElementTree.fromstring(content)
        self.assertEqual(len(root.findall(".//Node")), self.NODES)


class ByFtp(Delivering):
    def setUp(self):
        super().setUp()
        self.server = FtpServer(self.folder / "ftp")
        self.addCleanup(lambda: self.server.stop())

    def arrived(self):
        return self.server.received(FOLDER)

    def test_a_report_arrives_whole_in_its_folder_and_leaves_the_outbox(self):
        self.send_by_ftp(self.server, retries=0)
        name = self.make_report()
        await_condition(lambda: self.arrived() and not self.waiting(), "the report arrives")
        self.assertEqual(self.arrived(), [name])
        self.check_report((self.server.files / FOLDER / name).read_bytes())
        self.assertEqual(self.given_up(), [])

    def test_a_server_that_comes_back_gets_what_waited(self):
        self.send_by_ftp(self.server, retries=3)
        self.server.stop()
        name = self.make_report()
        self.complain_until(1)
        self.pass_time(PAUSE - 60)
        self.server.start()
        self.pass_time(50)
        self.assertEqual((self.arrived(), self.waiting()), ([], [name]))
        self.pass_time(10)
        await_condition(self.arrived, "the report arrives at the second try")
        await_condition(lambda: not self.waiting(), "the outbox empties")
        self.assertEqual(self.given_up(), [])

    def test_the_tries_are_as_many_and_as_far_apart_as_set(self):
        self.send_by_ftp(self.server, retries=2)
        self.server.stop()
        name = self.make_report()
        for tries in (1, 2, 3):
            self.complain_until(tries)
            self.assertEqual(self.waiting() if tries < 3 else self.given_up(), [name])
            self.pass_time(PAUSE)
        self.server.start()
        self.pass_time(10 * PAUSE)
        self.make_report_of_tomorrow()
        await_condition(lambda: self.arrived(), "the next report arrives")
        self.assertEqual(self.arrived(), [self.report("20250316123000")])
        self.assertEqual(self.given_up(), [name])
        self.complain_until(3)

    def make_report_of_tomorrow(self):
        self.run_past("12:30:00", day="20250316")

    def test_a_wrong_password_is_told_and_nothing_arrives(self):
        self.send_by_ftp(self.server, retries=0)
        self.set_general(FTPPwd="opensesame")
        name = self.make_report()
        self.complain_until(1)
        await_condition(self.given_up, "it is given up")
        self.assertEqual((self.given_up(), self.arrived()), ([name], []))
        self.assertIn("FAIL LOGIN", self.server.log())
        self.assertRegex(self.complaints()[0], "denied|530")
        self.assertNotIn("opensesame", "".join(self.controller.errors))

    def test_what_waited_is_sent_after_a_loss_of_power(self):
        self.send_by_ftp(self.server, retries=3)
        self.server.stop()
        name = self.make_report()
        self.complain_until(1)
        self.controller.kill()
        self.server.start()
        self.controller.start()
        await_condition(self.arrived, "the report arrives after the restart")
        self.assertEqual(self.arrived(), [name])

    def test_without_the_server_switched_on_nothing_leaves(self):
        self.send_by_ftp(self.server, retries=0)
        self.set_general(FtpServer=0)
        name = self.make_report()
        await_condition(self.waiting, "the report is made")
        self.pass_time(PAUSE)
        self.set_general(FtpServer=1)
        await_condition(self.arrived, "it leaves when the server is switched on")
        self.assertEqual(self.arrived(), [name])
        self.assertEqual(self.complaints(), [])

    def test_reports_as_comma_separated_values_are_sent_as_such(self):
        self.send_by_ftp(self.server, retries=0)
        self.set_general(ReportFormat=1)
        self.make_report()
        await_condition(self.arrived, "the report arrives")
        self.assertEqual(self.arrived(), [self.report("20250315123000", "csv")])
        lines = (self.server.files / FOLDER / self.arrived()[0]).read_text().splitlines()
        self.assertEqual(len(lines), self.NODES + 1)


class Encrypted(Delivering):
    """FTP and mail over TLS with a certificate of a private authority."""

    def setUp(self):
        super().setUp()
        self.certificate = certificate(self.folder)

    def trust(self):
        self.deliver("--authorities", str(self.certificate.with_suffix(".crt")))

    def ftp(self, **options):
        server = FtpServer(self.folder / "ftp", **options)
        self.addCleanup(server.stop)
        return server

    def test_a_trusted_server_gets_the_report(self):
        server = self.ftp(certificate=self.certificate)
        self.send_by_ftp(server, retries=0, FtpsServer=1)
        self.trust()
        name = self.make_report()
        await_condition(lambda: server.received(FOLDER), "the report arrives")
        self.assertEqual(server.received(FOLDER), [name])

    def test_a_server_that_is_not_trusted_gets_nothing(self):
        server = self.ftp(certificate=self.certificate)
        self.send_by_ftp(server, retries=0, FtpsServer=1)
        self.make_report()
        self.complain_until(1)
        self.assertRegex(self.complaints()[0], "certificate")
        self.assertEqual(server.received(FOLDER), [])

    def test_a_server_that_can_not_encrypt_gets_nothing(self):
        server = self.ftp()
        self.send_by_ftp(server, retries=0, FtpsServer=1)
        self.make_report()
        self.complain_until(1)
        self.assertEqual(server.received(FOLDER), [])
        self.assertNotIn("OK LOGIN", server.log())

    def test_mail_is_encrypted_where_the_server_can(self):
        sink = MailSink(certificate=self.certificate, login=("lamps", "secret"))
        self.addCleanup(sink.stop)
        self.set_general(mailHost=sink.host, mailUser="lamps", mailPassword="secret",
                         mainMail="lamps@town.example", destinationMail="one@town.example")
        self.trust()
        self.make_report()
        await_condition(lambda: sink.messages, "the mail arrives")
        self.assertTrue(sink.messages[0][3])


class ByMail(Delivering):
    def sink(self, **options):
        sink = MailSink(**options)
        self.addCleanup(sink.stop)
        return sink

    def send_by_mail(self, host, retries, **more):
        self.set_general(mailHost=host, mainMail="lamps@town.example",
                         destinationMail="one@town.example; two@town.example",
                         RetryFtp=str(retries), TimeBetwFtp=str(PAUSE), **more)

    def test_the_report_reaches_every_recipient_as_an_attachment(self):
        sink = self.sink(login=("lamps", "se cret"))
        self.send_by_mail(sink.host, 0, mailUser="lamps", mailPassword="se cret")
        name = self.make_report()
        await_condition(lambda: sink.messages and not self.waiting(), "the mail arrives")
        sender, recipients, message, _ = sink.messages[0]
        self.assertEqual(sender, "lamps@town.example")
        self.assertEqual(recipients, ["one@town.example", "two@town.example"])
        self.assertIn(name, message["Subject"])
        attachment = next(message.iter_attachments())
        self.assertEqual(attachment.get_filename(), name)
        self.check_report(attachment.get_payload(decode=True))

    def test_a_wrong_password_is_told(self):
        sink = self.sink(login=("lamps", "right"))
        self.send_by_mail(sink.host, 0, mailUser="lamps", mailPassword="wrong")
        name = self.make_report()
        await_condition(self.given_up, "it is given up")
        self.assertEqual((self.given_up(), sink.messages, sink.attempts), ([name], [], 1))

    def test_a_server_that_comes_back_gets_what_waited(self):
        port = free_port()
        self.send_by_mail(f"127.0.0.1:{port}", 2)
        self.make_report()
        self.complain_until(1)
        sink = self.sink(port=port)
        self.pass_time(PAUSE)
        await_condition(lambda: sink.messages and not self.waiting(), "the mail arrives")
        self.assertEqual(len(sink.messages), 1)

    def test_what_one_way_took_is_not_sent_again_because_the_other_failed(self):
        server = FtpServer(self.folder / "ftp")
        self.addCleanup(server.stop)
        sink = self.sink(refusals={"two@town.example": "451 not now"})
        self.send_by_mail(sink.host, 2)
        self.send_by_ftp(server, retries=2)
        name = self.make_report()
        self.complain_until(1)
        self.assertEqual(server.received(FOLDER), [name])
        (server.files / FOLDER / name).unlink()
        sink.refusals.clear()
        self.pass_time(PAUSE)
        await_condition(lambda: sink.messages and not self.waiting(), "the mail arrives")
        self.assertEqual(sink.messages[0][1], ["one@town.example", "two@town.example"])
        self.assertEqual(server.received(FOLDER), [], "the report was not uploaded again")


class Time(Networked):
    def setUp(self):
        super().setUp()
        self.set_general(IPNTP="")
        self.deliver()
        self.server = TimeServer(self.folder / "time")
        self.addCleanup(lambda: self.server.stop())

    def off_by(self):
        """How far the controller's clock is ahead of this machine's, in seconds."""
        answer = self.controller.control("clock?jump=0")["date"]
        shown = datetime.strptime(answer, "%Y-%m-%d %H:%M:%S")
        return (shown - self.wall_clock()).total_seconds()

    @staticmethod
    def wall_clock():
        """The wall clock in Madrid by the European rule, which holds in the controller's zone."""
        now = datetime.now(timezone.utc).replace(tzinfo=None)

        def last_sunday(month):
            last = datetime(now.year, month, 31, 1)
            return last.replace(day=31 - (last.weekday() + 1) % 7)

        summer = last_sunday(3) <= now < last_sunday(10)
        return now + timedelta(hours=2 if summer else 1)

    def follow(self, deviation):
        self.set_general(IPNTP=self.server.host, NTPMaxDeviation=str(deviation), TimeZone=0)

    def expect_right(self):
        await_condition(lambda: abs(self.off_by()) <= 2, "the clock is set right", seconds=30)

    def expect_told(self, text):
        await_condition(lambda: any(text in line for line in self.controller.errors),
                        f"it says {text!r}")

    def test_a_clock_that_is_hours_off_is_set_right(self):
        self.controller.control("clock?jump=-7200")
        self.assertLess(self.off_by(), -7100)
        self.follow(deviation=0)
        self.expect_right()
        self.expect_told("clock corrected by 7")

    def test_a_clock_within_the_deviation_is_left_alone_until_the_deviation_shrinks(self):
        self.controller.control("clock?jump=900")
        self.follow(deviation=1000)
        self.expect_told("up to 1000.000 s are tolerated")
        self.assertGreater(self.off_by(), 800)
        self.controller.stop()
        self.controller.errors.clear()
        self.controller.start()
        self.expect_told("up to 1000.000 s are tolerated")
        self.assertGreater(self.off_by(), 800)
        self.follow(deviation=10)
        self.expect_right()

    def test_a_server_that_comes_back_is_asked_again(self):
        self.server.stop()
        self.controller.control("clock?jump=7200")
        self.follow(deviation=0)
        self.expect_told("time server: no answer from " + self.server.host)
        self.assertGreater(self.off_by(), 7000)
        self.server.start()
        self.expect_right()


if __name__ == "__main__":
    unittest.main()
