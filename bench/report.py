#!/usr/bin/env python3
"""Runs the benchmarks and makes one table of ratios: bench/report.py FOLDER_OF_PROGRAMS OUT [--quick].

Writes OUT/bench.md and OUT/bench.json and ends with status 1 when a bar is missed. Every figure is the
median of repetitions that are interleaved at random in one run, so that what else the machine does
falls on all alike; only ratios between figures of one run mean something.
"""
import collections
import json
import pathlib
import statistics
import subprocess
import sys

PROGRAMS = ("xml_bench", "pages_bench", "steps_bench", "http_bench", "editor_bench")
SIZES = (1000, 10000, 100000)
MOST_GROWTH = 13.0  # from a size to ten times as many nodes
FAR_TOO_MANY = 400000
# From the largest size to four times as many: between what grows with the rows (4) and what grows
# with their square (16).
MOST_FAR_GROWTH = 8.0
# A step, the variant measured, the one beside it, and the most of it that is allowed.
BARS = (
    ("xml/whole", "host", "header", 0.85),
    ("xml/whole", "host", "shared", 0.60),
    ("page/*", "page", "xml", 1.30),
    ("http/read", "host", "curl", 1.20),
    ("editor/open", "host", "bare", 2.00),
    ("editor/selectAll", "host", "bare", 1.50),
    ("editor/typeIntoAll", "host", "bare", 1.50),
    ("editor/sort", "host", "bare", 1.50),
    ("editor/filter", "host", "bare", 1.50),
)
MOST_MEMORY = 0.65  # of the XML model, of the bare library's
LATEST_ANSWER = 0.050  # seconds from the start of lamp-script to its first answer
LATEST_WINDOW = 0.300  # seconds that the editor's window may stand later than a bare one
OURS = ("host", "page")


def run(programs, quick, out):
    """Seconds by (step, variant, nodes)."""
    seconds = collections.defaultdict(list)
    for name in PROGRAMS:
        if not (programs / name).exists():
            print(f"{name} was not built: its figures are missing")
            continue
        raw = out / f"{name}.json"
        command = [str(programs / name), f"--benchmark_out={raw}", "--benchmark_out_format=json",
                   "--benchmark_enable_random_interleaving=true"]
        if quick:
            command += ["--benchmark_repetitions=7", "--benchmark_min_time=0.01",
                        "--benchmark_filter=/(1000|10000)(/|$)"]
        else:
            command += ["--benchmark_repetitions=7", "--benchmark_min_time=0.05"]
        print(f"{name} ...", flush=True)
        subprocess.run(command, check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        for result in json.loads(raw.read_text())["benchmarks"]:
            if result.get("error_occurred"):
                sys.exit(f"FAULT: {result['name']}: {result['error_message']}")
            if result["run_type"] != "iteration":
                continue
            group, step, variant, nodes = result["run_name"].split("/")[:4]
            scale = {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1.0}[result["time_unit"]]
            # Time of the processor: what others do at the same time is not in it. Over the network
            # waiting counts too, and in a window the benchmark takes the time itself.
            wall = result["run_name"].endswith(("real_time", "manual_time"))
            seconds[(f"{group}/{step}", variant, int(nodes))].append(
                result["real_time" if wall else "cpu_time"] * scale)
        raw.unlink()
    return {key: statistics.median(values) for key, values in seconds.items()}


def peak(program, *what):
    """Bytes that one run took at its most, None where the variant was not built."""
    done = subprocess.run([str(program), "--once", *map(str, what)], capture_output=True, text=True)
    if done.returncode == 3:
        return None
    done.check_returncode()
    return int(done.stdout)


def memory(programs):
    """Peak bytes of each variant at the largest size."""
    found = {v: peak(programs / "xml_bench", v, SIZES[-1]) for v in ("shared", "header", "host")}
    found["page"] = peak(programs / "pages_bench", "nodeTable", SIZES[-1])
    return {variant: size for variant, size in found.items() if size is not None}


def start(programs):
    """Seconds until the programs have started, none where they were not built."""
    names = ("lamp-script", "lamp-editor", "bare_editor")
    if not all((programs / name).exists() for name in names):
        print("the programs were not built: how they start is missing")
        return {}
    print("start ...", flush=True)
    here = pathlib.Path(__file__).parent
    done = subprocess.run([str(here / "start.py"), *(str(programs / name) for name in names)],
                          check=True, capture_output=True, text=True)
    return json.loads(done.stdout)


def bar_of(step, variant):
    for pattern, ours, other, most in BARS:
        same = step == pattern or (pattern.endswith("*") and step.startswith(pattern[:-1]))
        if same and ours == variant:
            yield other, most


def growth_of(seconds, step, variant, nodes):
    """How many times as long as with the size before, None at the smallest."""
    smaller = SIZES[-1] if nodes == FAR_TOO_MANY else nodes // 10
    before = seconds.get((step, variant, smaller))
    return seconds[(step, variant, nodes)] / before if before else None


def faults_of(seconds, peaks, starts):
    if starts and starts["script"] > LATEST_ANSWER:
        yield f"lamp-script answers after {starts['script'] * 1e3:.0f} ms"
    if starts and starts["editor"] - starts["bareEditor"] > LATEST_WINDOW:
        yield (f"the editor's window stands {(starts['editor'] - starts['bareEditor']) * 1e3:.0f} ms "
               "after a bare one")
    for (step, variant, nodes), took in sorted(seconds.items()):
        for other, most in bar_of(step, variant):
            beside = seconds.get((step, other, nodes))
            if beside and took / beside > most:
                yield (f"{step} at {nodes:,} nodes takes {took / beside:.2f} of {other}, "
                       f"over {most:.2f}")
        growth = growth_of(seconds, step, variant, nodes)
        most = {SIZES[-1]: MOST_GROWTH, FAR_TOO_MANY: MOST_FAR_GROWTH}.get(nodes)
        if variant in OURS and most and growth and growth > most:
            yield f"{step} grows {growth:.1f} times up to {nodes:,} nodes, over {most:.0f}"
    for library in ("shared", "header"):
        if library in peaks and peaks["host"] / peaks[library] > MOST_MEMORY:
            yield (f"the XML model holds {peaks['host'] / peaks[library]:.2f} of the memory of "
                   f"{library}, over {MOST_MEMORY:.2f}")


def table(seconds):
    yield "| step | nodes | variant | time | of | ratio | bar | growth |"
    yield "|---|---:|---|---:|---|---:|---:|---:|"
    for step, variant, nodes in sorted(seconds, key=lambda key: (key[0], key[1], key[2])):
        took = seconds[(step, variant, nodes)]
        factor = growth_of(seconds, step, variant, nodes)
        growth = f"{factor:.1f}" if factor else ""
        others = sorted({other for (s, other, n) in seconds
                         if s == step and n == nodes and other not in OURS})
        if variant not in OURS or not others:
            yield f"| {step} | {nodes:,} | {variant} | {took * 1e3:.3f} ms | | | | {growth} |"
            continue
        bars = dict(bar_of(step, variant))
        for other in others:
            ratio = took / seconds[(step, other, nodes)]
            bar = f"{bars[other]:.2f}" if other in bars else ""
            yield (f"| {step} | {nodes:,} | {variant} | {took * 1e3:.3f} ms | {other} | {ratio:.2f} |"
                   f" {bar} | {growth} |")


def main():
    programs, out = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    out.mkdir(parents=True, exist_ok=True)
    quick = "--quick" in sys.argv[3:]
    seconds = run(programs, quick, out)
    peaks = memory(programs)
    starts = start(programs)
    faults = list(faults_of(seconds, peaks, starts))
    lines = ["# Measured in one run", "", *table(seconds), "",
             f"Peak memory at {SIZES[-1]:,} nodes, bytes a node:", "",
             *(f"- {variant}: {size / SIZES[-1]:.0f}" for variant, size in peaks.items()), ""]
    lines += ["Until started:", "",
              *(f"- {name}: {took * 1e3:.0f} ms" for name, took in starts.items()), ""]
    lines += [f"- FAULT: {fault}" for fault in faults] or ["Every bar is held."]
    (out / "bench.md").write_text("\n".join(lines) + "\n")
    (out / "bench.json").write_text(json.dumps(
        {"seconds": [{"step": s, "variant": v, "nodes": n, "median": took}
                     for (s, v, n), took in sorted(seconds.items())],
         "peakBytes": peaks, "startSeconds": starts, "faults": faults}, indent=1) + "\n")
    print((out / "bench.md").read_text())
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
