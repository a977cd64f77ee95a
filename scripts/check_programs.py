#!/usr/bin/env python3
"""Looks at released programs: scripts/check_programs.py OUT.

Every program and library is hardened as cmake/options.cmake asks, and the plug-in exports its entry and the
classes that the host constructs by name, and nothing else.
"""
import pathlib
import platform
import re
import subprocess
import sys

PROGRAMS = ("bin/lamp-script", "bin/lamp-editor", "bin/lamp-controller")
LIBRARIES = ("lib/liblamphost.so", "lib/zellampmanager.so")
ENTRY = "InitializeUsrDriver_ZelLampManager"
EXPORTED = ("CDlgOptionsZelLampManager", "XCDlgNewModifyZelLampManager",
            "XCDlgAdvancedCfgZelLampManager")
# What the compiler makes once for all libraries that need it: weak functions of templates, and the
# names and types of classes.
SHARED_KINDS = "WVuv"


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
            all(folder.startswith("$ORIGIN")
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


def export_faults(plugin):
    found = False
    for line in shown("nm", "--dynamic", "--defined-only", "--demangle", str(plugin)).splitlines():
        _, kind, name = line.split(" ", 2)
        found |= name == ENTRY
        ours = re.search(rf"\b({'|'.join(EXPORTED)})\b", name)
        if kind not in SHARED_KINDS and name != ENTRY and not ours:
            yield f"{plugin}: it exports {name}"
    if not found:
        yield f"{plugin}: it does not export {ENTRY}"


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
