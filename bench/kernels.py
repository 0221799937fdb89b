#!/usr/bin/env python3
"""Run-to-run spread of the processor kernels and the harness overhead of a run.

Runs each kernel several times through `quickstep-cli run NAME --json` and
prints, per metric and CPU configuration, the median rate and its coefficient
of variation; then, per kernel, what a run costs beyond its timed regions.
"""
import argparse
import json
import os
import statistics
import subprocess
import sys
import time

KERNELS = ["Strings", "Memory", "Savage", "Ackerman", "Dhrystone", "Fourier", "Whetstone",
           "Sieve"]
# The worker sleeps one second after switching each processor off.
PAUSE_SECONDS = 1.0


def run_once(binary, name):
    start = time.monotonic()
    done = subprocess.run([binary, "run", name, "--json"], stdout=subprocess.PIPE,
                          stderr=subprocess.DEVNULL, check=True, text=True)
    process_seconds = time.monotonic() - start
    return json.loads(done.stdout), process_seconds


def overheads(record, process_seconds):
    """Seconds of a run outside its timed regions and the mandated pauses:
    in the worker (start to completion message) and for the whole process."""
    timed = sum(sum(metric["times"]) for metric in record["metrics"])
    pauses = PAUSE_SECONDS * (record["configurations"] - 1)
    return record["wall_seconds"] - timed - pauses, process_seconds - timed - pauses


def cv_percent(values):
    if len(values) < 2 or statistics.mean(values) == 0:
        return 0.0
    return 100.0 * statistics.stdev(values) / statistics.mean(values)


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--repetitions", "-n", type=int, default=5,
                        help="runs per kernel (default 5)")
    parser.add_argument("--binary", default=os.path.join(here, "..", "build", "bin",
                                                         "quickstep-cli"))
    parser.add_argument("--baseline", help="a second quickstep-cli (say, the build before a "
                        "change), run alternately with the first in the same rounds")
    parser.add_argument("kernels", nargs="*", default=KERNELS,
                        help="kernels to run (default: all processor kernels)")
    options = parser.parse_args()

    binaries = [("", options.binary)]
    if options.baseline:
        binaries = [("baseline ", options.baseline), ("", options.binary)]
    print(f"{'metric':<28} {'units':<14} {'config':>6} {'median':>14} {'cv %':>7}")
    harness = []
    for kernel in options.kernels:
        rates = {}
        units = {}
        worker_over = {}
        process_over = {}
        # Alternate the binaries within each round, so that a machine whose
        # speed drifts weighs on both alike.
        for _ in range(options.repetitions):
            for label, binary in binaries:
                record, process_seconds = run_once(binary, kernel)
                cpus = record["configurations"]
                for metric in record["metrics"]:
                    units[metric["name"]] = metric["units"]
                    for position, rate in enumerate(metric["rates"]):
                        key = (label + metric["name"], cpus - position)
                        rates.setdefault(key, []).append(rate)
                worker, process = overheads(record, process_seconds)
                worker_over.setdefault(label, []).append(worker)
                process_over.setdefault(label, []).append(process)
        for (name, config), values in sorted(rates.items(),
                                             key=lambda item: not item[0][0].startswith("baseline")):
            print(f"{name:<28} {units[name.replace('baseline ', '')]:<14} "
                  f"{str(config) + ' CPU':>6} "
                  f"{statistics.median(values):>14.1f} {cv_percent(values):>7.2f}")
        for label, _ in binaries:
            harness.append((label + kernel, statistics.median(worker_over[label]),
                            statistics.median(process_over[label])))
        sys.stdout.flush()

    print()
    print("harness overhead per run (wall time minus timed regions minus pauses), median:")
    print(f"{'kernel':<21} {'worker s':>10} {'process s':>10}")
    for kernel, worker, process in harness:
        print(f"{kernel:<21} {worker:>10.3f} {process:>10.3f}")


if __name__ == "__main__":
    main()
