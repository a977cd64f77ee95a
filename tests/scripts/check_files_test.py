"""What the check of opened files finds in a source, and what it passes over."""

import pathlib
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "scripts"))

import check_files  # noqa: E402

FOUND = {
    "open": ["int f = ::open(path, 0);", "x = :: open (path);", "return !::open(p);"],
    "<fcntl.h>": ["#include <fcntl.h>", "#  include  <fcntl.h>"],
    "fopen": ["std::fopen(path, mode)", "::fopen(p, m)", "FILE* f = fopen(p, m);"],
    "mkdir": ["mkdir(path, 0777)", "::mkdir(p, m)", "if (mkdir (p, m) != 0)"],
    "creat": ["creat(path, 0666)"],
    "dlopen": ["handle = ::dlopen(p, 1)"],
    "file stream": ["std::ifstream in(path);", "std::ofstream(path) << x;", "std::fstream f;",
                    "std::basic_ofstream<char> f;", "#include <fstream>", "std::filebuf b;"],
    "std::filesystem that makes or changes": [
        "std::filesystem::create_directories(p)", "fs::create_directory(p)", "fs::copy_file(a, b)",
        "std::filesystem::copy(a, b)", "fs::permissions(p, m)", "fs::resize_file(p, 1)"],
    "std::filesystem that lists": ["fs::directory_iterator at(p)",
                                   "std::filesystem::recursive_directory_iterator(p)"],
    "Qt's files": ["QFile file(path);", "QSettings s(path);", "#include <QtCore/QSaveFile>",
                   "QDir().mkpath(p)", "QTemporaryFile f;"],
    "Qt's own loading": ["icon.addFile(path)"],
    "files of libcurl": ["curl_easy_setopt(e, CURLOPT_COOKIEFILE, p)"],
    "files of the XML library": ["document.load_file(p)"],
}
PASSED_OVER = [
    "store.open(cause)", "workspace->open(frontEnd)", "bool Workspace::open(std::string& cause) {",
    "bool open(std::string& cause);", "return open('{');", "// std::ofstream(path)",
    "/* mkdir(p, m)\n */", 'text("std::ifstream, fopen(p)")', "character = '\"'; // ::open(p)",
    "host::openFile(p)", "reopen(p)", "isOpen(p)", "folder.mkdir(p)", "files->truncate(p)",
    "support::mkdir(p)", "QFileInfo(path).exists()", "int thousands = 10'000; int more = 1'000;",
    'R"(std::ofstream(path))"', "openFileDialog(x)",
]


class CheckFiles(unittest.TestCase):
    def test_finds_every_way_of_opening(self):
        for rule, sources in FOUND.items():
            for source in sources:
                with self.subTest(source):
                    found = {name for name, _ in check_files.found_in(f"int a;\n{source}\n")}
                    self.assertEqual(found, {rule})
                    self.assertIn((rule, 2), check_files.found_in(f"int a;\n{source}\n"))

    def test_passes_over_what_opens_nothing(self):
        for source in PASSED_OVER:
            with self.subTest(source):
                self.assertEqual([*check_files.found_in(source)], [])

    def test_finds_what_stands_behind_a_comment_or_a_text(self):
        self.assertIn(("mkdir", 3), check_files.found_in('/* a\n*/ f("x // y");\nmkdir(p, 1);'))
        self.assertIn(("mkdir", 1), check_files.found_in("int a = 1'000; mkdir(p, '\\'');"))


if __name__ == "__main__":
    unittest.main()
