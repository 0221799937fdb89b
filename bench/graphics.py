#!/usr/bin/env python3
"""The graphics test's rates against bare Xlib loops and x11perf.

On one X server (a private Xvfb unless --display is given), in one sitting:
  - `quickstep-cli run graphics --json`: the program's thirteen rates;
  - `graphics_bare`: the same thirteen loops written straight on Xlib/Xft;
  - x11perf for the nearest of its own primitives (a yardstick of the
    server: fixed sizes, batched requests, so not the same shapes).
The program and the bare loops alternate, run after run; the script prints
the median rate of each and the ratio program / bare per test. See
bench/README.md.
"""

import argparse
import json
import os
import re
import shutil
import statistics
import subprocess
import sys

HERE = os.path.dirname(os.path.abspath(__file__))

# index, short name, x11perf test nearest to it (None: none close)
TESTS = [
    (1010, "Lines Flushed", None),
    (1011, "Lines Unflushed", "-line100"),
    (1050, "Strings Flushed", None),
    (1051, "Strings Unflushed", "-aa10text"),
    (1020, "Ellipses Flushed", None),
    (1021, "Ellipses Unflushed", "-ellipse100"),
    (1022, "Ellipses Unflushed Filled", "-fellipse100"),
    (1030, "Rectangles Flushed", None),
    (1031, "Rectangles Unflushed", "-rect100"),
    (1032, "Rectangles Unflushed Filled", "-fillrect100"),
    (1040, "Polygons Flushed", None),
    (1041, "Polygons Unflushed", None),
    (1042, "Polygons Unflushed Filled", "-triangle100"),
]


def start_xvfb():
    read_end, write_end = os.pipe()
    server = subprocess.Popen(
        ["Xvfb", "-displayfd", str(write_end), "-screen", "0", "1280x1024x24",
         "-nolisten", "tcp", "-noreset"],
        pass_fds=(write_end,), stderr=subprocess.DEVNULL)
    os.close(write_end)
    with os.fdopen(read_end) as reader:
        number = reader.readline().strip()
    if not number:
        server.kill()
        sys.exit("graphics.py: Xvfb did not start")
    return server, ":" + number


def program_rates(binary, env):
    out = subprocess.run([binary, "run", "graphics", "--json"], env=env, check=True,
                         stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True).stdout
    record = json.loads(out)
    return {m["index"]: m["rates"][0] for m in record["metrics"]}


def bare_rates(binary, env):
    out = subprocess.run([binary], env=env, check=True, stdout=subprocess.PIPE,
                         text=True).stdout
    return {m["index"]: m["rate"] for m in json.loads(out)["metrics"]}


def x11perf_rates(env):
    if shutil.which("x11perf") is None:
        return {}
    rates = {}
    for index, _, test in TESTS:
        if test is None:
            continue
        out = subprocess.run(["x11perf", "-repeat", "2", "-time", "1", test], env=env,
                             stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True).stdout
        found = re.findall(r"\(\s*([0-9.]+)/sec\)", out)
        if found:
            rates[index] = float(found[-1])
    return rates


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("-n", type=int, default=5, help="runs of each (default 5)")
    parser.add_argument("--build", default=os.path.join(HERE, "..", "build"),
                        help="build directory (default ../build)")
    parser.add_argument("--display", help="an X server to use instead of a private Xvfb")
    args = parser.parse_args()

    program = os.path.join(args.build, "bin", "quickstep-cli")
    bare = os.path.join(args.build, "bin", "graphics_bare")
    for path in (program, bare):
        if not os.access(path, os.X_OK):
            sys.exit(f"graphics.py: {path} is missing; build the targets quickstep-cli and "
                     "graphics_bare")

    server = None
    display = args.display
    if display is None:
        server, display = start_xvfb()
    env = dict(os.environ, DISPLAY=display)
    try:
        measured = {"program": {}, "bare": {}}
        for run in range(args.n):
            # Alternating, so that drift of the machine falls on both.
            order = [("program", program_rates, program), ("bare", bare_rates, bare)]
            if run % 2:
                order.reverse()
            for name, measure, binary in order:
                for index, rate in measure(binary, env).items():
                    measured[name].setdefault(index, []).append(rate)
        reference = x11perf_rates(env)
    finally:
        if server is not None:
            server.kill()
            server.wait()

    print(f"display {display}, {args.n} runs each, median rates (per second)")
    print(f"{'test':28} {'program':>12} {'bare Xlib':>12} {'ratio':>6} {'spread':>7} "
          f"{'x11perf':>12}")
    for index, name, test in TESTS:
        ours = measured["program"].get(index, [])
        theirs = measured["bare"].get(index, [])
        if not ours or not theirs:
            print(f"{name:28} (missing)")
            continue
        mine, base = statistics.median(ours), statistics.median(theirs)
        ratios = [a / b for a, b in zip(ours, theirs) if b > 0]
        spread = (max(ratios) - min(ratios)) if ratios else 0
        perf = f"{reference[index]:12.0f} {test}" if index in reference else ""
        print(f"{name:28} {mine:12.0f} {base:12.0f} {mine / base:6.2f} {spread:7.2f} {perf}")


if __name__ == "__main__":
    main()
