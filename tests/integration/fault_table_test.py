"""Every page through every fault of the controller."""

import json
import pathlib
import shutil
import sys
import tempfile
import unittest
import urllib.request

from fault_table import FAULTS, REASON
from harness import Controller
from page_faults import table_of_tests
from page_table import PAGES

WORKERS = 6  # most of the time is waiting


FaultTable, load_tests = table_of_tests("FaultTable", PAGES, lambda page: FAULTS, WORKERS)


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


if __name__ == "__main__":
    sys.exit(unittest.main())
