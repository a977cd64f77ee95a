#!/usr/bin/env python3
"""Runs the fuzz targets, one a processor at a time, and prints what they did; see ./fuzz.sh."""
import argparse
import concurrent.futures
import os
import pathlib
import re
import subprocess
import sys
import tempfile

ROOM = pathlib.Path(__file__).resolve().parent
SLOWEST_INPUT = 20  # seconds; an input that takes longer is a finding
MEMORY_MIB = 2048
LONGEST_INPUT = 16384  # bytes

EXECUTED = re.compile(r"stat::number_of_executed_units:\s*(\d+)")
COVERED = re.compile(r"\bcov: (\d+)")
KEPT = re.compile(r"Test unit written to (\S+)")


def arguments():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("programs", type=pathlib.Path, help="folder of the targets")
    parser.add_argument("out", type=pathlib.Path, help="folder for what is found and learned")
    parser.add_argument("--seconds", type=int, default=60, help="for each target")
    parser.add_argument("--target", action="append", help="only this one")
    return parser.parse_args()


def environment():
    given = dict(os.environ)
    given["ASAN_OPTIONS"] = "detect_stack_use_after_return=1:strict_string_checks=1"
    given["UBSAN_OPTIONS"] = "print_stacktrace=1:halt_on_error=1"
    symbolizer = "/usr/lib/llvm-14/bin/llvm-symbolizer"
    if os.path.exists(symbolizer):
        given.setdefault("ASAN_SYMBOLIZER_PATH", symbolizer)
    return given


def files_in(folder):
    return sorted(path for path in folder.glob("*") if path.is_file())


def run(command, log):
    """The output of a run and whether it ended well; the output stays in the file `log` too."""
    # A target that ends in the middle leaves its files behind.
    with tempfile.TemporaryDirectory() as scratch:
        ended = subprocess.run(command, env=environment() | {"TMPDIR": scratch},
                               stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                               errors="replace")
    log.write_text(ended.stdout, encoding="utf-8")
    return ended.stdout, ended.returncode == 0


def fuzz(name, options):
    """Executions, edges, and what was found: None when nothing was."""
    program = options.programs / f"fuzz_{name}"
    kept = options.out / name
    learned = kept / "corpus"
    learned.mkdir(parents=True, exist_ok=True)
    seeds = ROOM / "corpus" / name
    findings = ROOM / "findings" / name
    limits = [f"-timeout={SLOWEST_INPUT}", f"-rss_limit_mb={MEMORY_MIB}", f"-artifact_prefix={kept}/"]

    for known in files_in(findings):
        _, good = run([program, *limits, known], kept / "finding.log")
        if not good:
            return 0, 0, f"{known} is found again; see {kept / 'finding.log'}"

    dictionary = ROOM / name / f"{name}.dict"
    if dictionary.exists():
        limits.append(f"-dict={dictionary}")
    output, good = run([program, *limits, f"-max_total_time={options.seconds}",
                        f"-max_len={LONGEST_INPUT}", "-print_final_stats=1",
                        learned, seeds, *([findings] if findings.is_dir() else [])],
                       kept / "run.log")
    executed = EXECUTED.findall(output)
    covered = COVERED.findall(output)
    found = None
    if not good:
        written = KEPT.findall(output)
        found = f"{written[0] if written else 'the target ended'}; see {kept / 'run.log'}"
    return int(executed[-1]) if executed else 0, int(covered[-1]) if covered else 0, found


def main():
    options = arguments()
    names = options.target or [path.name for path in sorted((ROOM / "corpus").iterdir())]
    status = 0
    print(f"{'target':<14} {'executions':>12} {'edges':>8}  found")
    # As many at once as there are processors; told in their order.
    pool = concurrent.futures.ThreadPoolExecutor(os.cpu_count())
    outcomes = pool.map(lambda name: fuzz(name, options), names)
    for name, (executed, covered, found) in zip(names, outcomes):
        print(f"{name:<14} {executed:>12,} {covered:>8,}  {found or 'nothing'}", flush=True)
        if found:
            status = 1
    return status


sys.exit(main())
