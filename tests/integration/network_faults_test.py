"""Every exchange over a network whose calls fail, are interrupted, or move a few bytes at a time."""

import errno
import sys
import unittest
from dataclasses import dataclass

from failing_calls import FOREVER, FailingCalls
from fault_table import ADDRESS, CLOSED, FINE, TIMED_OUT, Outcome, failing, lost
from harness import Script
from page_faults import Street, table_of_tests
from page_table import PAGES

WORKERS = 2
REFUSED = rf"\[60060\]{ADDRESS}\)"
FAILED = rf"\[60069\]{ADDRESS},.+\)"


@dataclass(frozen=True)
class CallFault:
    """A network call that fails, and what the user is to see."""

    name: str
    call: str
    error: int
    read: Outcome
    write: Outcome
    last: int = FOREVER
    moved: int = -1  # bytes that pass before, or at a time where nothing fails
    every_second: bool = False


def always(name, call, error, outcome, **more):
    return CallFault(name, call, error, outcome, outcome, **more)


FAULTS = [
    always("no descriptor is left", "socket", errno.EMFILE, failing(FAILED)),
    always("no buffer is left", "socket", errno.ENOBUFS, failing(FAILED)),
    always("nobody listens", "connect", errno.ECONNREFUSED, failing(REFUSED)),
    always("no way to the network", "connect", errno.ENETUNREACH, failing(FAILED)),
    always("no answer to the call", "connect", errno.ETIMEDOUT, failing(TIMED_OUT)),
    always("not permitted", "connect", errno.EACCES, failing(FAILED)),
    always("broken before the request", "send", errno.EPIPE, failing(CLOSED)),
    always("reset before the request", "send", errno.ECONNRESET, failing(CLOSED)),
    always("reset in the request", "send", errno.ECONNRESET, failing(CLOSED), moved=100),
    always("not ready to send", "send", errno.EAGAIN, FINE, last=1),
    always("interrupted sending", "send", errno.EINTR, FINE, last=1),
    always("17 bytes sent at a time", "send", 0, FINE, moved=17),
    CallFault("reset before the answer", "recv", errno.ECONNRESET, failing(CLOSED), lost(CLOSED)),
    CallFault("ended before the answer", "recv", 0, failing(CLOSED), lost(CLOSED)),
    CallFault("reset in the answer", "recv", errno.ECONNRESET, failing(CLOSED), lost(CLOSED), moved=30),
    CallFault("no memory for the answer", "recv", errno.ENOMEM, failing(CLOSED), lost(CLOSED)),
    always("interrupted receiving", "recv", errno.EINTR, FINE, last=1),
    always("5 bytes received at a time", "recv", 0, FINE, moved=5),
    always("interrupted waiting", "poll", errno.EINTR, FINE, last=3),
    always("no memory to wait", "poll", errno.ENOMEM, failing(FAILED)),
]


def faults_of(page):
    """Whether one still waits when a request is out depends on the moment."""
    return [fault for fault in FAULTS if not page.before or fault.name != "no memory to wait"]


class BrokenNetwork(Street):
    """The controller is well; the calls of the user's program fail."""

    def make_script(self, *options):
        self.calls = FailingCalls(self.folder / "plan")
        return Script(*options, environment=self.calls.environment())

    def order(self, fault, command):
        self.calls.order(fault.call, fault.error, last=fault.last, moved=fault.moved,
                         spared=self.page.before if command == self.page.sends else 0)

    def settle(self):
        self.calls.clear()


NetworkFaults, load_tests = table_of_tests("NetworkFaults", PAGES, faults_of, WORKERS,
                                           BrokenNetwork)


if __name__ == "__main__":
    sys.exit(unittest.main())
