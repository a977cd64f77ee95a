#!/usr/bin/env python3
"""Holds the cost of documents of all shapes: bench/check_shapes.py PROGRAM [--table] [SHAPE].

Runs PROGRAM (shape_costs) under valgrind, which counts instructions whatever else the machine does,
and finds fault where, for a step and a shape,
- instructions or memory grow faster than n log n of the size,
- the heap takes more than 40 bytes for a byte of the document,
- the instructions are more than 20 times those of ordinary rows of the same size.
--table prints what was counted.
"""
import collections
import glob
import math
import os
import re
import subprocess
import sys
import tempfile

from count_instructions import TUNABLES

MOST_BYTES = 40
MOST_TIMES = 20
# Above n log n: what rounding of tables to powers of two adds.
GROWTH_ALLOWANCE = 1.15
ORDINARY = "rows"

Cost = collections.namedtuple("Cost", "size instructions peak")


def run(program, shapes):
    """The costs of each (step, shape), by size."""
    with tempfile.TemporaryDirectory() as folder:
        done = subprocess.run(
            ["valgrind", "--tool=callgrind", f"--callgrind-out-file={folder}/out",
             "--collect-atstart=no", program, folder, *shapes],
            env={**os.environ, "GLIBC_TUNABLES": TUNABLES}, capture_output=True, text=True)
        if done.returncode != 0:
            sys.exit(f"FAULT: the shapes could not be run:\n{done.stderr}")
        instructions = {}
        for file in glob.glob(f"{folder}/out.*"):
            with open(file) as dump:
                text = dump.read()
            label = re.search(r"Client Request: (.*)", text)
            if label:
                instructions[label.group(1)] = int(re.search(r"^(?:totals|summary): (\d+)", text,
                                                             re.M).group(1))
    costs = collections.defaultdict(list)
    for line in done.stdout.splitlines():
        label, peak = line.rsplit(" ", 1)
        step, shape, size = label.split()
        costs[step, shape].append(Cost(int(size), instructions[label], int(peak)))
    return costs


def grows_too_fast(small, large, what):
    allowed = large.size * math.log(large.size) / (small.size * math.log(small.size))
    return getattr(large, what) > getattr(small, what) * allowed * GROWTH_ALLOWANCE


def faults_of(costs, step, shape):
    small, large = costs[step, shape][0], costs[step, shape][-1]
    for what in ("instructions", "peak"):
        if grows_too_fast(small, large, what):
            yield (f"{what} grow from {getattr(small, what):,} to {getattr(large, what):,} when "
                   f"the size grows from {small.size:,} to {large.size:,} bytes")
    if large.peak > MOST_BYTES * large.size:
        yield f"takes {large.peak / large.size:.1f} bytes of memory a byte"
    ordinary = costs[step, ORDINARY][-1]
    times = large.instructions / large.size / (ordinary.instructions / ordinary.size)
    if times > MOST_TIMES:
        yield f"takes {times:.1f} times the instructions of ordinary rows"


def main():
    shapes = [argument for argument in sys.argv[2:] if argument != "--table"]
    costs = run(sys.argv[1], shapes)
    if "--table" in sys.argv[2:]:
        for (step, shape), counted in costs.items():
            print(f"{step:14} {shape:22}" + "".join(
                f" {cost.instructions / cost.size:9.1f} i/B {cost.peak / cost.size:7.1f} B/B |"
                for cost in counted))
    if shapes:
        return 0
    faults = [f"FAULT: {step} of {shape}: {fault}"
              for step, shape in costs for fault in faults_of(costs, step, shape)]
    print("\n".join(faults) or f"{len(costs)} costs of shapes grow no faster than their size.")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
