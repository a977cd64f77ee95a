"""Every page through every fault of the controller."""

import concurrent.futures
import json
import pathlib
import re
import shutil
import sys
import tempfile
import unittest
import urllib.request

from fault_table import FAULTS, REASON
from harness import Controller
from page_faults import pass_through
from page_table import PAGES

WORKERS = 6  # most of the time is waiting


class FaultTable(unittest.TestCase):
    maxDiff = None
    running = {}

    def check(self, page):
        future = self.running.get(page.name)
        wrong = future.result() if future else pass_through(page, FAULTS)
        self.assertEqual("", "\n".join(wrong))


class CommandLine(unittest.TestCase):
    """Every fault can be ordered when the controller is started."""

    def test_faults_are_taken_by_their_names(self):
        folder = pathlib.Path(tempfile.mkdtemp(prefix="lamp-test-"))
        self.addCleanup(shutil.rmtree, folder)
        orders = [f"{fault.order}@2#1" for fault in FAULTS]
        controller = Controller(folder, "--nodes", "2",
                                *(option for order in orders for option in ("--fault", order)))
        self.addCleanup(controller.stop)
        with urllib.request.urlopen(f"http://127.0.0.1:{controller.port}/control/state") as state:
            self.assertEqual(json.load(state)["faults"], orders)
        self.assertEqual(controller.curl(1, "<deviceCfg><L01/></deviceCfg>")[0], 200)

    def test_a_fault_from_the_command_line_is_suffered(self):
        folder = pathlib.Path(tempfile.mkdtemp(prefix="lamp-test-"))
        self.addCleanup(shutil.rmtree, folder)
        controller = Controller(folder, "--nodes", "2", "--fault", f"refuse:{REASON}#1")
        self.addCleanup(controller.stop)
        self.assertEqual(controller.curl(1, "<deviceCfg><L01/></deviceCfg>"), (422, REASON))
        self.assertEqual(controller.curl(1, "<deviceCfg><L01/></deviceCfg>")[0], 200)


def add_test(page):
    name = "test_" + re.sub(r"\W+", "_", page.name)
    setattr(FaultTable, name, lambda self: self.check(page))


for each in PAGES:
    add_test(each)


def load_tests(_loader, tests, _pattern):
    """The whole table is wanted: the pages go through it side by side."""
    pool = concurrent.futures.ThreadPoolExecutor(WORKERS)
    FaultTable.running = {page.name: pool.submit(pass_through, page, FAULTS) for page in PAGES}
    return tests


if __name__ == "__main__":
    sys.exit(unittest.main())
