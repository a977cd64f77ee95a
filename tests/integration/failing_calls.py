"""Lets the system's calls fail under a program that runs: see calls/failing_calls.cpp."""

import mmap
import os
import struct

from harness import BIN

CALLS = ["socket", "connect", "send", "recv", "poll", "open", "write", "fsync", "link", "rename",
         "mkdir"]
HEAD = struct.Struct("=6i")
COUNTS = struct.Struct(f"={len(CALLS) + 1}q")  # the last one counts requests
NOBODY = HEAD.pack(-1, 0, 0, 0, -1, 0)
NOTHING_MADE = bytes(COUNTS.size)
FOREVER = 2**31 - 1


class FailingCalls:
    """The plan that a program follows whose environment this gave."""

    def __init__(self, file):
        file.write_bytes(NOBODY + NOTHING_MADE)
        self.file = file
        with open(file, "r+b") as opened:
            self.memory = mmap.mmap(opened.fileno(), 0)

    def environment(self):
        library = BIN.parent / "lib" / "failing_calls.so"
        if not library.exists():
            raise RuntimeError(f"{library} is missing")
        # The sanitizer's own library comes behind this one, and is content.
        sanitizer = os.environ.get("ASAN_OPTIONS", "") + ":verify_asan_link_order=0"
        return {**os.environ, "LD_PRELOAD": str(library), "FAILING_CALLS": str(self.file),
                "ASAN_OPTIONS": sanitizer.lstrip(":")}

    def order(self, call, error=0, first=1, last=FOREVER, moved=-1, spared=0):
        """From now on the call fails, `moved` bytes being moved first, `spared` requests left
        alone; counts begin anew."""
        self.memory[:] = NOBODY + NOTHING_MADE
        self.memory[:HEAD.size] = HEAD.pack(CALLS.index(call), first, last, error, moved, spared)

    def clear(self):
        """Nothing fails, and counts begin anew."""
        self.memory[:] = NOBODY + NOTHING_MADE

    def made(self):
        """How often each call was made since the plan was changed."""
        return dict(zip(CALLS, COUNTS.unpack(self.memory[HEAD.size:])))
