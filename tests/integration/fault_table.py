"""The ways in which a controller fails, by name, and what its user is to see of each."""

from dataclasses import dataclass


@dataclass(frozen=True)
class Outcome:
    """What becomes of one exchange."""

    message: str = ""      # a pattern for the whole text that is shown; none when all goes well
    applied: bool = False  # whether the controller carries the command out all the same
    empty: bool = False    # a read that succeeds and brings nothing
    goes_on: bool = False  # a message that keeps nothing from going on


@dataclass(frozen=True)
class Fault:
    order: str         # as it is ordered from the controller
    read: Outcome      # an exchange that asks for a document
    write: Outcome     # an exchange that changes the controller
    every_second: bool = False  # the first write after the order goes well

    @property
    def name(self):
        return self.order.split(":")[0]


ADDRESS = r"\((localhost|127\.0\.0\.1):\d+"
TIMED_OUT = rf"\[60062\]{ADDRESS}\)"
CLOSED = rf"\[60063\]{ADDRESS}\)"
NO_XML = rf"\[60064\]{ADDRESS},.+\)"
TOO_LARGE = rf"\[60065\]{ADDRESS},64\)"
REASON = "The lamps are asleep."

FINE = Outcome(applied=True)
NOTHING = Outcome(empty=True)


def failing(message):
    return Outcome(message=message)


def bare(message):
    """A read that succeeds and lacks what the dialog needs, which it says before it goes on."""
    return Outcome(message=message, empty=True, goes_on=True)


def lost(message):
    """The user is told of a failure, though the controller did what it was told."""
    return Outcome(message=message, applied=True)


# The body of an answer to a write does not matter: what spoils it, short of its size, spoils nothing.
FAULTS = [
    Fault("no-answer", failing(TIMED_OUT), failing(TIMED_OUT)),
    Fault("delay:1", FINE, FINE),
    Fault("close-mid-reply", failing(CLOSED), lost(CLOSED)),
    Fault("truncated-xml", failing(NO_XML), FINE),
    Fault("garbage", failing(NO_XML), FINE),
    Fault("wrong-section", NOTHING, FINE),
    Fault("no-section", NOTHING, FINE),
    Fault("empty", NOTHING, FINE),
    Fault("refuse:" + REASON, failing(REASON), failing(REASON)),
    Fault("refuse-every-second-write", FINE, failing("Every second write is refused on request.*"),
          every_second=True),
    Fault("apply-lose-reply", failing(CLOSED), lost(CLOSED)),
    Fault("restart-mid-command", failing(CLOSED), failing(CLOSED)),
    Fault("clock-jump:7200", FINE, FINE),
    Fault("oversize:65MiB", failing(TOO_LARGE), lost(TOO_LARGE)),
    Fault("deep:10000", failing(NO_XML), FINE),
    Fault("dtd", failing(NO_XML), FINE),
]
