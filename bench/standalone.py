#!/usr/bin/env python3
"""Each processor kernel inside quickstep-cli against the same kernel code timed
on its own (build/bench/quickstep-standalone), alternated in one session.

Per metric: the median rate of each, their ratio (Quickstep / standalone) and
both coefficients of variation. Quickstep's rate is that of its first
configuration (every CPU on), which is also how the standalone program runs.
"""
import argparse
import json
import os
import statistics
import subprocess

KERNELS = ["Strings", "Memory", "Savage", "Ackerman", "Fourier", "Whetstone"]


def cv_percent(values):
    if len(values) < 2 or statistics.mean(values) == 0:
        return 0.0
    return 100.0 * statistics.stdev(values) / abs(statistics.mean(values))


def rate(cycles, seconds):
    if seconds == 0:
        return 0.0
    return cycles / seconds if cycles else seconds


def quickstep_rates(binary, kernel, extra):
    done = subprocess.run([binary, "run", kernel, "--json"] + extra, stdout=subprocess.PIPE,
                          stderr=subprocess.DEVNULL, check=True, text=True)
    record = json.loads(done.stdout)
    return {metric["name"]: metric["rates"][0] for metric in record["metrics"]}


def standalone_rates(binary, kernel):
    done = subprocess.run([binary, kernel, "1"], stdout=subprocess.PIPE,
                          stderr=subprocess.DEVNULL, check=True, text=True)
    rates = {}
    for line in done.stdout.splitlines():
        metric = json.loads(line)
        rates[metric["name"]] = rate(metric["cycles"], metric["seconds"][0])
    return rates


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    build = os.path.join(here, "..", "build")
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--rounds", "-n", type=int, default=7,
                        help="alternations per kernel (default 7)")
    parser.add_argument("--cli", default=os.path.join(build, "bin", "quickstep-cli"))
    parser.add_argument("--standalone", default=os.path.join(build, "bench",
                                                             "quickstep-standalone"))
    parser.add_argument("--cli-option", action="append", default=[],
                        help="extra option for quickstep-cli run (repeatable)")
    parser.add_argument("kernels", nargs="*", default=KERNELS)
    options = parser.parse_args()

    with open("/proc/loadavg") as loadavg:
        print(f"load average at start: {loadavg.read().split()[0]}")
    print(f"{'metric':<28} {'quickstep':>12} {'standalone':>12} {'ratio':>7} "
          f"{'cv q %':>7} {'cv s %':>7}")
    for kernel in options.kernels:
        inside = {}
        alone = {}
        for _ in range(options.rounds):
            for name, value in quickstep_rates(options.cli, kernel, options.cli_option).items():
                inside.setdefault(name, []).append(value)
            for name, value in standalone_rates(options.standalone, kernel).items():
                alone.setdefault(name, []).append(value)
        for name, values in inside.items():
            if name not in alone:
                continue
            q = statistics.median(values)
            s = statistics.median(alone[name])
            ratio = q / s if s else 0.0
            # For a time in seconds, a larger value is slower: invert.
            if name.startswith("Ten "):
                ratio = s / q if q else 0.0
            print(f"{name:<28} {q:>12.1f} {s:>12.1f} {ratio:>7.3f} {cv_percent(values):>7.2f} "
                  f"{cv_percent(alone[name]):>7.2f}", flush=True)
    with open("/proc/loadavg") as loadavg:
        print(f"load average at end: {loadavg.read().split()[0]}")


if __name__ == "__main__":
    main()
