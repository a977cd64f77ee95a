#!/usr/bin/env python3
"""Compares what a plug-in exports with plugin/exports.txt: scripts/check_exports.py LIBRARY."""
import pathlib
import subprocess
import sys

LIST = pathlib.Path(__file__).resolve().parent.parent / "plugin/exports.txt"


def exported(plugin):
    """The names of a library's symbols, demangled; one that the loader keeps unique is marked."""
    lines = subprocess.run(("nm", "--dynamic", "--defined-only", "--demangle",
                            "--without-symbol-versions", str(plugin)),
                           check=True, capture_output=True, text=True).stdout.splitlines()
    split = [line.split(" ", 2) for line in lines]
    return {name + (" (unique)" if kind == "u" else "") for _, kind, name in split}


def export_faults(plugin):
    listed = set(LIST.read_text(encoding="utf-8").splitlines())
    found = exported(plugin)
    faults = [f"{plugin}: it exports {name}" for name in sorted(found - listed)]
    return faults + [f"{plugin}: it does not export {name}" for name in sorted(listed - found)]


if __name__ == "__main__":
    problems = export_faults(sys.argv[1])
    print("\n".join(problems))
    sys.exit(1 if problems else 0)
