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

PLUGIN = ("driver", "device", "pages", "programs")
# Room -> rooms whose headers it may include besides its own.
MAY_SEE = {
    "host": (),
    "driver": ("host", "pages", "programs", "device"),
    "device": ("host", "driver"),
    "pages": ("host", "driver"),
    "programs": ("host", "driver", "pages"),
    "workbench": ("host",),
    "editor": ("host", "workbench"),
    "automation": ("host", "workbench"),
    "controller": (),
}
# Headers that the plug-in's rooms may take from one another although they do not own them.
FRAME = {"driver/exchange_frame.h", "driver/sections.h", "driver/export.h"}
PAGES_FOR_OTHERS = re.compile(r"^pages/(binding/|page_templates\.h$)")
THIRD_PARTY = {
    "host": ("pugixml.hpp",),
    "controller": ("pugixml.hpp", "httplib.h", "curl/curl.h"),
    "workbench": ("curl/curl.h", "nlohmann/", "openssl/"),
    "automation": ("nlohmann/",),
}
# Headers of the C++ standard library and of POSIX have no folder and no upper case.
STANDARD = re.compile(r"^[a-z0-9_]+(\.h)?$")
POSIX_FOLDERS = ("sys/", "netinet/", "arpa/", "net/")


def allowed(room, name, quoted):
    if quoted:
        other = name.split("/")[0]
        if other == room:
            return True
        if other not in MAY_SEE.get(room, ()):
            return False
        if room in PLUGIN and other == "driver":
            return name in FRAME
        if room != "driver" and room in PLUGIN and other == "pages":
            return bool(PAGES_FOR_OTHERS.match(name))
        return True
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
