#!/usr/bin/env python3
"""Holds the cost of a page's cycle: bench/count_instructions.py PROGRAM [--update].

Counts the instructions of one cycle under valgrind, which does not depend on what else the machine does, and
compares them with the figure beside this file. More than the allowance above it is a fault: make it
faster again, or write the new figure with --update and say in the commit why it is worth it.
"""
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile

FIGURE = pathlib.Path(__file__).with_name("instructions.json")
ALLOWANCE = 0.05
# The C library picks its string functions by the processor; these are what every one has.
TUNABLES = "glibc.cpu.hwcaps=-AVX2,-AVX512F,-AVX512VL,-AVX512BW,-EVEX,-ERMS,-FSRM"


def count(program):
    with tempfile.TemporaryDirectory() as folder:
        done = subprocess.run(
            ["valgrind", "--tool=callgrind", f"--callgrind-out-file={folder}/out",
             "--collect-atstart=no", "--toggle-collect=countedCycle", program],
            env={**os.environ, "GLIBC_TUNABLES": TUNABLES}, capture_output=True, text=True)
    found = re.search(r"Collected : (\d+)", done.stderr)
    if done.returncode != 0 or not found:
        sys.exit(f"FAULT: the cycle could not be counted:\n{done.stderr}")
    return int(found.group(1))


def main():
    counted = count(sys.argv[1])
    if "--update" in sys.argv[2:]:
        FIGURE.write_text(json.dumps({"pageCycle10000": counted}) + "\n")
        print(f"The page cycle's figure is now {counted:,} instructions.")
        return 0
    allowed = json.loads(FIGURE.read_text())["pageCycle10000"]
    ratio = counted / allowed
    print(f"The page cycle takes {counted:,} instructions, {ratio:.3f} of the figure.")
    if ratio > 1 + ALLOWANCE:
        print(f"FAULT: over {1 + ALLOWANCE:.2f}: make it faster again, or write the new figure with "
              "--update in a commit of its own that says why.")
        return 1
    if ratio < 1 - ALLOWANCE:
        print("It is faster: write the new figure with --update, so that it stays so.")
    return 0


if __name__ == "__main__":
    sys.exit(main())
