#!/usr/bin/env python3
"""What quickstep-cli costs beyond its work: `system`, `devices` and the harness
of a run of one short kernel, measured alternately against `--help` (start-up
alone) in one session, so that a busy machine weighs on all of them alike.

For a run, the cost is the process's wall time minus the timed regions (the
metrics' times) minus the one-second pause after each processor is switched
off. Beside it, the overshoot of a one-second sleep of this script in the same
rounds: a run's pause overshoots alike, so that much of the harness figure (per
pause) is the machine's wake-up latency, not the program. Each figure is
printed as the median over the runs with its spread (the first and third
quartiles). With --baseline, a second binary is measured in
the same alternation, for figures before and after a change.
"""
import argparse
import json
import os
import statistics
import subprocess
import time

PAUSE_SECONDS = 1.0


def wall_ms(command):
    start = time.perf_counter()
    subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=True)
    return (time.perf_counter() - start) * 1000.0


def run_overhead_ms(binary, kernel):
    start = time.perf_counter()
    done = subprocess.run([binary, "run", kernel, "--json"], stdout=subprocess.PIPE,
                          stderr=subprocess.DEVNULL, check=True, text=True)
    process = time.perf_counter() - start
    record = json.loads(done.stdout)
    timed = sum(sum(metric["times"]) for metric in record["metrics"])
    pauses = PAUSE_SECONDS * (record["configurations"] - 1)
    return (process - timed - pauses) * 1000.0, process * 1000.0


def spread(values):
    if len(values) < 2:
        return values[0], values[0], values[0]
    low, median, high = statistics.quantiles(values, n=4)
    return low, statistics.median(values), high


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--binary", default=os.path.join(here, "..", "build", "bin",
                                                         "quickstep-cli"))
    parser.add_argument("--baseline", help="a second quickstep-cli measured alongside")
    parser.add_argument("--repetitions", "-n", type=int, default=30,
                        help="rounds of the short commands (default 30)")
    parser.add_argument("--runs", type=int, default=5, help="runs of the kernel (default 5)")
    parser.add_argument("--kernel", default="Savage", help="the short kernel (default Savage)")
    options = parser.parse_args()

    binaries = {"": options.binary}
    if options.baseline:
        binaries = {"baseline ": options.baseline, "": options.binary}
    samples = {}
    for round_ in range(options.repetitions):
        for label, binary in binaries.items():
            for command in ("--help", "system", "devices"):
                samples.setdefault(label + command, []).append(wall_ms([binary, command]))
            if round_ < options.runs:
                overhead, total = run_overhead_ms(binary, options.kernel)
                # How late the machine wakes a sleeper: a run's pause overshoots
                # as much, and that lands in the harness figure without being
                # the program's.
                start = time.perf_counter()
                time.sleep(PAUSE_SECONDS)
                samples.setdefault(label + "sleep(1) overshoot", []).append(
                    (time.perf_counter() - start - PAUSE_SECONDS) * 1000.0)
                samples.setdefault(label + "run " + options.kernel + " harness", []).append(
                    overhead)
                samples.setdefault(label + "run " + options.kernel + " whole", []).append(total)

    print(f"{'what':<34} {'median ms':>10} {'q1':>8} {'q3':>8} {'runs':>5}")
    for name, values in samples.items():
        low, median, high = spread(values)
        print(f"{name:<34} {median:>10.1f} {low:>8.1f} {high:>8.1f} {len(values):>5}")


if __name__ == "__main__":
    main()
