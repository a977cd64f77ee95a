#!/usr/bin/env python3
"""Writes a test of CTest for each suite of a test program; lamp_add_suites() runs it after linking.

    tests/main/list_suites.py PROGRAM OUT SLOW_SUITES PROPERTY VALUE [PROPERTY VALUE]...

SLOW_SUITES are names with commas between: these get the label "slow" instead of their own, and half
an hour.
"""
import pathlib
import subprocess
import sys


def suites(program):
    """The names of the program's suites, in its order."""
    listed = subprocess.run([program, "--gtest_list_tests"], check=True, stdout=subprocess.PIPE,
                            text=True, timeout=120).stdout
    # A suite stands at the beginning of a line and ends with a dot; what is behind it is a remark.
    names = [line.split()[0].rstrip(".") for line in listed.splitlines()
             if line and not line.startswith((" ", "Running main"))]
    if not names:
        sys.exit(f"FAULT: {program} lists no tests")
    return names


def quoted(text):
    return f"[==[{text}]==]"


def main():
    program, out, slow, *rest = sys.argv[1:]
    properties = dict(zip(rest[::2], rest[1::2]))
    slow_suites = set(filter(None, slow.split(",")))
    names = suites(program)
    missing = slow_suites - set(names)
    if missing:
        sys.exit(f"FAULT: {program} has no suite {', '.join(sorted(missing))}")
    lines = []
    for name in names:
        own = properties | {"LABELS": "slow", "TIMEOUT": "1800"} if name in slow_suites else properties
        lines.append(f"add_test({quoted(name)} {quoted(program)} {quoted(f'--gtest_filter={name}.*')})")
        lines.append(f"set_tests_properties({quoted(name)} PROPERTIES "
                     + " ".join(f"{key} {quoted(value)}" for key, value in own.items()) + ")")
    pathlib.Path(out).write_text("\n".join(lines) + "\n", encoding="utf-8")


main()
