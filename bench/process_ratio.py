#!/usr/bin/env python3
"""Times `hourfold-cli check` against the bare SAX2 pass (hourfold-sax), both as whole processes.

    bench/process_ratio.py BIN_DIR REPETITIONS FILE...

For each file the two programs run in turns, REPETITIONS times each after one unmeasured run of
each (program and file in the page cache), with a fresh HOME. Prints the medians of the wall time
and of the processor time (user and system; on a machine shared with other work the wall time
mostly measures the waiting), their ratios and the peak memory of the check, which should stay
within twice the file's size. Exits with 3 when the 100,000-entry file misses a target (processor
time ratio at most 2, peak at most twice the file).
"""
import os
import statistics
import subprocess
import sys
import tempfile
import time

RATIO_TARGET = 2.0
MEMORY_TARGET = 2.0


def run(line, env):
    """Wall time and processor time in seconds and peak resident memory in bytes of a process."""
    start = time.perf_counter()
    child = subprocess.Popen(line, env=env, stdout=subprocess.DEVNULL)
    _, status, usage = os.wait4(child.pid, 0)
    elapsed = time.perf_counter() - start
    if status != 0:
        sys.exit(f"process_ratio: {' '.join(line)} failed")
    return elapsed, usage.ru_utime + usage.ru_stime, usage.ru_maxrss * 1024


def main():
    if len(sys.argv) < 4:
        sys.exit(__doc__)
    bin_dir, repetitions, files = sys.argv[1], int(sys.argv[2]), sys.argv[3:]
    cli = os.path.join(bin_dir, "hourfold-cli")
    sax = os.path.join(bin_dir, "hourfold-sax")
    missed = 0
    judged = 0
    print("hourfold-cli check against the bare SAX2 pass, whole processes "
          f"(medians of {repetitions}; ms, MB = 10^6 bytes):")
    print(f"{'file':>24}{'size':>8}{'check':>9}{'bare':>9}{'ratio':>8}{'check cpu':>11}"
          f"{'bare cpu':>10}{'ratio':>8}{'peak':>8}{'peak/size':>11}")
    with tempfile.TemporaryDirectory() as home:
        env = dict(os.environ, HOME=home, XDG_CONFIG_HOME=os.path.join(home, "config"),
                   XDG_DATA_HOME=os.path.join(home, "data"))
        for document in files:
            check_line = [cli, "--file", document, "check"]
            sax_line = [sax, document]
            run(check_line, env)
            run(sax_line, env)
            checks, bares = [], []
            for _ in range(repetitions):
                checks.append(run(check_line, env))
                bares.append(run(sax_line, env))
            size = os.path.getsize(document)
            check, check_cpu = (statistics.median(c[i] for c in checks) for i in (0, 1))
            bare, bare_cpu = (statistics.median(b[i] for b in bares) for i in (0, 1))
            peak = max(c[2] for c in checks)
            ratio = check_cpu / bare_cpu
            print(f"{os.path.basename(document):>24}{size / 1e6:8.1f}{check * 1e3:9.0f}"
                  f"{bare * 1e3:9.0f}{check / bare:7.2f}x{check_cpu * 1e3:11.0f}"
                  f"{bare_cpu * 1e3:10.0f}{ratio:7.2f}x{peak / 1e6:8.0f}{peak / size:10.2f}x")
            if "-100000." in document:
                judged += 1
                missed += ratio > RATIO_TARGET or peak > MEMORY_TARGET * size
    print(f"Targets at 100,000 entries: processor time ratio <= {RATIO_TARGET:g}, "
          f"peak <= {MEMORY_TARGET:g} x size"
          f"  {'MISSED' if missed else 'met' if judged else 'not judged (no entries-100000 file)'}")
    sys.exit(3 if missed else 0)


if __name__ == "__main__":
    main()
