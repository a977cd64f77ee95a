#!/usr/bin/env python3
"""How long the programs take to start: bench/start.py LAMP_SCRIPT LAMP_EDITOR BARE_EDITOR.

Prints, as JSON, the medians in seconds of runs in turn: until lamp-script has answered its first command,
and until a window stands on a virtual display, of the editor and of a bare Qt program.
"""
import ctypes
import json
import os
import statistics
import subprocess
import sys
import tempfile
import time

RUNS = 9
IS_VIEWABLE = 2


class Attributes(ctypes.Structure):
    """XWindowAttributes up to the member that is needed; the rest is room."""
    _fields_ = [("x", ctypes.c_int), ("y", ctypes.c_int), ("width", ctypes.c_int),
                ("height", ctypes.c_int), ("border", ctypes.c_int), ("depth", ctypes.c_int),
                ("visual", ctypes.c_void_p), ("root", ctypes.c_ulong), ("kind", ctypes.c_int),
                ("bit_gravity", ctypes.c_int), ("win_gravity", ctypes.c_int),
                ("backing_store", ctypes.c_int), ("backing_planes", ctypes.c_ulong),
                ("backing_pixel", ctypes.c_ulong), ("save_under", ctypes.c_int),
                ("colormap", ctypes.c_ulong), ("map_installed", ctypes.c_int),
                ("map_state", ctypes.c_int), ("room", ctypes.c_char * 256)]


class Display:
    """A virtual display of its own, on which windows can be counted."""

    def __init__(self):
        read, write = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write), "-screen", "0", "1600x1000x24", "-nolisten", "tcp"],
            pass_fds=[write], stderr=subprocess.DEVNULL)
        os.close(write)
        with os.fdopen(read) as number:
            self.name = ":" + number.readline().strip()
        self.xlib = ctypes.CDLL("libX11.so.6")
        self.xlib.XOpenDisplay.restype = ctypes.c_void_p
        self.xlib.XDefaultRootWindow.restype = ctypes.c_ulong
        self.display = ctypes.c_void_p(self.xlib.XOpenDisplay(self.name.encode()))
        self.root = self.xlib.XDefaultRootWindow(self.display)
        # A window that goes between being listed and being asked is no error.
        self.handler = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)(
            lambda display, event: 0)
        self.xlib.XSetErrorHandler(self.handler)

    def has_window(self):
        root, parent = ctypes.c_ulong(), ctypes.c_ulong()
        children, count = ctypes.POINTER(ctypes.c_ulong)(), ctypes.c_uint()
        self.xlib.XQueryTree(self.display, ctypes.c_ulong(self.root), ctypes.byref(root),
                             ctypes.byref(parent), ctypes.byref(children), ctypes.byref(count))
        found = False
        for at in range(count.value):
            attributes = Attributes()
            self.xlib.XGetWindowAttributes(self.display, ctypes.c_ulong(children[at]),
                                           ctypes.byref(attributes))
            found |= attributes.map_state == IS_VIEWABLE and attributes.width > 200
        if children:
            self.xlib.XFree(children)
        return found

    def close(self):
        self.server.terminate()
        self.server.wait()


def until_window(display, command):
    start = time.monotonic()
    program = subprocess.Popen(command, env={**os.environ, "DISPLAY": display.name,
                                             "QT_QPA_PLATFORM": "xcb"},
                               stderr=subprocess.DEVNULL)
    while not display.has_window():
        if program.poll() is not None:
            sys.exit(f"FAULT: {command[0]} ended before its window stood")
        if time.monotonic() - start > 30:
            program.kill()
            sys.exit(f"FAULT: {command[0]} showed no window")
        time.sleep(0.001)
    took = time.monotonic() - start
    program.kill()
    program.wait()
    while display.has_window():
        time.sleep(0.001)
    return took


def until_answer(script, folder):
    start = time.monotonic()
    program = subprocess.Popen([script, "--config", folder], stdin=subprocess.PIPE,
                               stdout=subprocess.PIPE, text=True)
    program.stdin.write('{"do":"look"}\n')
    program.stdin.flush()
    answer = program.stdout.readline()
    took = time.monotonic() - start
    program.stdin.close()
    program.wait()
    json.loads(answer)
    return took


def main():
    script, editor, bare = sys.argv[1:4]
    display = Display()
    times = {"script": [], "editor": [], "bareEditor": []}
    try:
        with tempfile.TemporaryDirectory() as folder:
            for _ in range(RUNS):
                times["script"].append(until_answer(script, folder))
                times["bareEditor"].append(until_window(display, [bare]))
                times["editor"].append(until_window(display, [editor, "--config", folder]))
    finally:
        display.close()
    print(json.dumps({name: statistics.median(taken) for name, taken in times.items()}))


if __name__ == "__main__":
    main()
