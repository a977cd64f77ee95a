#!/usr/bin/env python3
"""Sees to it that each program opens files and makes folders in one place.

  scripts/check_files.py        looks at the sources
  scripts/check_files.py OUT    looks at what was built, too: what the programs call, and which
                                libraries they bring along

What is opened elsewhere is listed here with what guards it, and so are the libraries that open files
by themselves. An entry that nothing needs any more is a fault, too.
"""
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent

# The one place of each side of the wire.
HOST = "host/services/open_file.cpp"
CONTROLLER = "controller/storage/disk.cpp"
PLACES = {
    **dict.fromkeys(("host", "driver", "device", "exchange", "pages", "programs", "workbench",
                     "automation", "editor", "fleet"), HOST),
    "controller": CONTROLLER,
}

# Functions of the system, written plain, with "::" or with "std::", but not members of something.
SYSTEM = ("open64", "openat", "openat64", "openat2", "creat", "fopen", "fopen64", "freopen",
          "freopen64", "tmpfile", "tmpnam", "mkstemp", "mkostemp", "mkdtemp", "mkdir", "mkdirat",
          "mkfifo", "mknod", "opendir", "scandir", "ftw", "nftw", "truncate", "chmod", "fchmodat",
          "chown", "lchown", "fchownat", "utimes", "utimensat", "symlink", "dlopen", "dlmopen",
          "popen", "shm_open", "memfd_create", "posix_spawn", "execv", "execve", "execvp", "execl",
          "execlp", "sqlite3_open", "sqlite3_open_v2", "BIO_new_file", "RAND_load_file",
          "SSL_CTX_load_verify_locations", "SSL_CTX_use_certificate_file",
          "SSL_CTX_use_PrivateKey_file")
# "open" is a good name for a member: only the system's is written so, or needs this header.
RULES = {
    "open": r"(?<![\w>])::\s*open\b(?=\s*\()",
    "<fcntl.h>": r"#\s*include\s*<fcntl\.h>",
    **{name: rf"(?:(?<![\w:.>])|(?<![\w>])::\s*|\bstd::\s*){name}\b(?=\s*\()" for name in SYSTEM},
    "file stream": r"\b(?:basic_)?[io]?fstream\b|\b(?:basic_)?filebuf\b",
    "std::filesystem that makes or changes": r"\b(?:create_director(?:y|ies)|copy_file|"
                                             r"create_(?:hard_link|symlink|directory_symlink)|"
                                             r"resize_file)\b|"
                                             r"\b(?:fs|filesystem)::(?:copy|permissions)\b",
    "std::filesystem that lists": r"\b(?:recursive_)?directory_iterator\b",
    "Qt's files": r"\bQ(?:File|SaveFile|TemporaryFile|TemporaryDir|Dir|DirIterator|Settings|LockFile|"
                  r"ImageReader|ImageWriter|PdfWriter|Printer|MimeDatabase|FileSystemWatcher|"
                  r"FileSystemModel)\b",
    "Qt's choice of files": r"\bQFileDialog\b",
    "Qt's own loading": r"\baddFile\s*\(|\baddApplicationFont\s*\(|\bQTranslator\b|\bQPluginLoader\b",
    "files of libcurl": r"\bCURLOPT_(?:CAINFO|CAPATH|COOKIEFILE|COOKIEJAR|SSLCERT|SSLKEY|CRLFILE|"
                        r"NETRC_FILE|ALTSVC|HSTS|PROXY_CAINFO|ISSUERCERT|SSH_\w*KEY\w*)\b",
    "files of the XML library": r"\b(?:load_file|save_file)\b",
}
RULES = {name: re.compile(rule) for name, rule in RULES.items()}

# (file, rule): what guards it.
ALLOWED = {
    ("host/services/files.cpp", "std::filesystem that lists"):
        "the system opens a folder there and nothing else, and waits for nothing",
    ("host/services/files.cpp", "chmod"):
        "of a name that was given a moment ago, and found to be a file of this person without others",
    ("workbench/plugin_loader.cpp", "dlopen"):
        "the file was opened in the one place and measured before the system's loader sees it",
    ("workbench/http_transfer.cpp", "files of libcurl"):
        "a file of authorities that only tests give; the programs rely on the system's",
    ("editor/front_end/qt_front_end.cpp", "Qt's choice of files"):
        "lists folders and looks at names; of a file it reads nothing but its kind, without opening "
        "pipes and devices",
    ("editor/tour/tour_screen.cpp", "Qt's files"):
        "a temporary file under a name that did not exist, for its owner alone, on a tour without a "
        "screen",
    # The controller's folder of state is its own.
    ("controller/delivery/courier.cpp", "fopen"):
        "a report that the controller has just written into its own folder",
    ("controller/delivery/courier.cpp", "files of libcurl"):
        "the file of authorities of the command line, which is the person's to choose",
    ("controller/options.cpp", "file stream"):
        "the file of the command line with the token of the control page, before anything is served",
    ("controller/main.cpp", "execv"):
        "the program itself, when the simulation is told to restart",
    ("controller/delivery/outbox.cpp", "std::filesystem that lists"):
        "the controller's own folder",
    ("controller/delivery/outbox.cpp", "std::filesystem that makes or changes"):
        "a folder inside of the controller's own",
}

# Libraries that the programs are linked with, by the beginning of their names: what they open by
# themselves, and what guards that.
LIBRARIES = {
    "liblamphost": "only " + HOST,
    "libc": "the system's own settings of names, users, time zone and languages",
    "libm": "nothing",
    "libgcc_s": "nothing",
    "libstdc++": "only what a program asks for, which the rules above find",
    "ld-linux": "the libraries of the program, from its own folder and the system's first "
                "(lamp_program in cmake/options.cmake)",
    "libpugixml": "nothing: it is given texts",
    "libpcre2": "nothing: it is given texts",
    "libcurl": "the system's certificates and name servers; no netrc, no cookies, no proxy "
               "(workbench/http_transfer.cpp)",
    "libssl": "as libcrypto",
    "libcrypto": "the system's settings and certificates; the variables that would lead elsewhere, "
                 "and the one that writes keys down, are taken away (workbench/process_guard.cpp)",
    "libQt6": "the person's desktop: fonts, themes, plug-ins of the toolkit, the choice of files. "
              "Images are given to it as bytes (editor/images.cpp); settings it does not keep "
              "(editor/window/editor_preferences.cpp)",
}
PROGRAMS = ("bin/lamp-script", "bin/lamp-editor")
OPENERS = re.compile(
    r"^(?:open|open64|openat|openat64|creat|creat64|fopen|fopen64|freopen|freopen64|mkstemp|mkdtemp|"
    r"mkdir|mkdirat|mkfifo|opendir|truncate|chmod|dlopen|dlmopen|popen|system)$|"
    r"^std::basic_[io]?fstream<|^std::basic_filebuf<|"
    r"^std::filesystem::(?:create_|copy|resize_file|permissions|directory_iterator|"
    r"__cxx11::(?:recursive_)?directory_iterator)|"
    r"^Q(?:File|SaveFile|TemporaryFile|TemporaryDir|Dir|Settings|LockFile|ImageReader|ImageWriter)::|"
    r"^Q(?:Pixmap|Image|Icon|Movie)::(?:load|save|addFile|Q(?:Pixmap|Image|Icon|Movie))"
    r"\(QString const&")
# (file, beginning of the name): why it may.
CALLS = {
    ("lib/liblamphost.so", "open"): HOST,
    ("lib/liblamphost.so", "mkdir"): HOST,
    ("lib/liblamphost.so", "chmod"): "host/services/files.cpp",
    ("lib/liblamphost.so", "std::filesystem::__cxx11::directory_iterator"): "host/services/files.cpp",
    ("bin/lamp-script", "dlopen"): "workbench/plugin_loader.cpp",
    ("bin/lamp-editor", "dlopen"): "workbench/plugin_loader.cpp",
    ("bin/lamp-editor", "QTemporaryFile::"): "editor/tour/tour_screen.cpp",
    ("bin/lamp-editor", "QDir::"): "editor/tour/tour_screen.cpp",
}

# Comments, and texts that are no names of headers. A quote between digits separates them.
ASIDE = re.compile(r'//[^\n]*|/\*.*?\*/|R"([^(\s]*)\(.*?\)\1"|"(?:\\.|[^"\\\n])*"|'
                   r"(?<![0-9A-Fa-f])'(?:\\.|[^'\\\n])+'", re.S)


def code_of(text):
    """The text with its comments and texts blanked out; lines keep their numbers."""
    return ASIDE.sub(lambda aside: re.sub(r"[^\n]", " ", aside.group()), text)


def found_in(text):
    """The rules that a source breaks, with the lines."""
    code = code_of(text)
    for name, rule in RULES.items():
        for match in rule.finditer(code):
            yield name, code.count("\n", 0, match.start()) + 1


def source_faults():
    used = set()
    for room, place in PLACES.items():
        for path in sorted((ROOT / room).rglob("*")):
            file = path.relative_to(ROOT).as_posix()
            if path.suffix not in (".h", ".cpp") or file == place:
                continue
            for rule, line in found_in(path.read_text(encoding="utf-8")):
                used.add((file, rule))
                if (file, rule) not in ALLOWED:
                    yield f"{file}:{line}: {rule}: files are opened in {place} alone"
    for file, rule in ALLOWED.keys() - used:
        yield f"scripts/check_files.py: {file} needs no leave for {rule} any more"


def shown(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def built_faults(out):
    used = set()
    files = [*PROGRAMS, "lib/liblamphost.so", "lib/zellampmanager.so"]
    for file in (file for file in files if (out / file).exists()):
        for library in re.findall(r"NEEDED.*\[(.*)\]", shown("readelf", "--dynamic", out / file)):
            if not any(library.startswith(known) for known in LIBRARIES):
                yield f"{file}: it is not told what guards the files of {library}"
        symbols = shown("nm", "--dynamic", "--undefined-only", "--demangle", out / file)
        for line in symbols.splitlines():
            name = re.sub(r"@.*", "", line.split(maxsplit=1)[1])
            if not OPENERS.match(name):
                continue
            leave = [key for key in CALLS if key[0] == file and name.startswith(key[1])]
            used.update(leave)
            if not leave:
                yield f"{file}: it calls {name}"
    for file, name in CALLS.keys() - used:
        if (out / file).exists():
            yield f"scripts/check_files.py: {file} needs no leave for {name} any more"


def main():
    faults = [*source_faults()]
    if len(sys.argv) > 1:
        faults += built_faults(pathlib.Path(sys.argv[1]))
    for fault in faults:
        print(fault, file=sys.stderr)
    if not faults:
        print("files are opened in one place")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
