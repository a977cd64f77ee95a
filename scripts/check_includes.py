#!/usr/bin/env python3
"""Holds the arrows between the rooms: who may include whom.

The plug-in sees the standard library and host/, and nothing else; host/ sees nothing above it; the
controller is the other side of the wire and shares no header with anybody.
"""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.M)

PLUGIN = ("exchange", "driver", "device", "pages", "programs")
# Room -> rooms, or folders of one, whose headers it may include besides its own.
MAY_SEE = {
    "host": (),
    "exchange": ("host",),
    "device": ("host", "exchange"),
    "pages": ("host", "exchange"),
    "programs": ("host", "exchange", "pages/binding"),
    "driver": ("host", "exchange", "device", "pages", "programs"),
    "workbench": ("host",),
    "editor": ("host", "workbench"),
    "automation": ("host", "workbench"),
    "controller": (),
}
THIRD_PARTY = {
    "host": ("pugixml.hpp",),
    "controller": ("pugixml.hpp", "microhttpd.h", "nlohmann/", "curl/curl.h", "expat.h", "zlib.h"),
    "workbench": ("curl/curl.h", "nlohmann/", "openssl/", "pcre2.h"),
    "automation": ("nlohmann/",),
}
# Headers of the C++ standard library and of POSIX have no folder and no upper case.
STANDARD = re.compile(r"^[a-z0-9_]+(\.h)?$")
POSIX_FOLDERS = ("sys/", "netinet/", "arpa/", "net/")


def allowed(room, name, quoted):
    if quoted:
        return any(name.startswith(seen + "/") for seen in (room, *MAY_SEE[room]))
    if any(name == t or (t.endswith("/") and name.startswith(t)) for t in THIRD_PARTY.get(room, ())):
        return True
    if room == "editor" and (name.startswith("Q") or name.startswith("Qt")):
        return True
    if room in PLUGIN:
        return bool(re.match(r"^[a-z0-9_]+$", name))
    return bool(STANDARD.match(name)) or name.startswith(POSIX_FOLDERS)


def main():
    faults = []
    for room in MAY_SEE:
        for path in sorted((ROOT / room).rglob("*")):
            if path.suffix not in (".h", ".cpp"):
                continue
            text = path.read_text(encoding="utf-8")
            for match in INCLUDE.finditer(text):
                if not allowed(room, match.group(2), match.group(1) == '"'):
                    line = text.count("\n", 0, match.start(2)) + 1
                    faults.append(f"{path.relative_to(ROOT)}:{line}: {room} must not include {match.group(2)}")
    for fault in faults:
        print(fault, file=sys.stderr)
    if not faults:
        print("includes hold the arrows between the rooms")
    return 1 if faults else 0


sys.exit(main())
