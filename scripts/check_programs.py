#!/usr/bin/env python3
"""Looks at released programs: scripts/check_programs.py OUT.

Every program and library is hardened as cmake/options.cmake asks, and the plug-in exports what
plugin/exports.txt lists and nothing else.
"""
import pathlib
import platform
import re
import subprocess
import sys

from check_exports import export_faults

PROGRAMS = ("bin/lamp-script", "bin/lamp-editor", "bin/lamp-controller")
# Searched before LD_LIBRARY_PATH, so that nobody plants a library of the system by it.
MACHINE = platform.machine() + "-linux-gnu"
SYSTEM_FOLDERS = (f"/usr/lib/{MACHINE}", f"/lib/{MACHINE}", "/usr/lib", "/lib")
LIBRARIES = ("lib/liblamphost.so", "lib/zellampmanager.so")


def shown(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def faults_of(file, program):
    headers = shown("readelf", "--wide", "--program-headers", "--dynamic", str(file))
    symbols = shown("nm", "--dynamic", str(file))
    code = shown("objdump", "--disassemble", "--no-show-raw-insn", str(file))
    checks = {
        "its relocations can be written at run time": "GNU_RELRO" in headers and
                                                      "BIND_NOW" in headers,
        "its stack is executable": re.search(r"GNU_STACK.* RW ", headers),
        "its stack is not protected": "__stack_chk_fail" in symbols,
        "it looks for its libraries outside its own folders":
            all(folder.startswith("$ORIGIN") or folder in SYSTEM_FOLDERS
                for path in re.findall(r"R(?:UN)?PATH.*\[(.*)\]", headers)
                for folder in path.split(":") if folder),
    }
    if program:
        checks["it is not position-independent"] = "PIE" in headers
        # The libraries call no function of C that would be replaced by a checking one.
        checks["its buffers are not checked"] = re.search(r"__\w*printf_chk\b", symbols)
    if platform.machine() == "x86_64":
        checks["its jumps are not protected"] = "endbr64" in code
    return [f"{file}: {fault}" for fault, good in checks.items() if not good]


def main():
    out = pathlib.Path(sys.argv[1])
    faults = []
    for names, program in ((PROGRAMS, True), (LIBRARIES, False)):
        for name in names:
            faults += faults_of(out / name, program)
    faults += export_faults(out / "lib/zellampmanager.so")
    for fault in faults:
        print(f"FAULT: {fault}")
    if not faults:
        print("the programs are hardened; the plug-in exports what it should")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
