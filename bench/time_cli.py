#!/usr/bin/env python3
"""Times hourfold-cli as whole processes on a generated 100,000-entry project file.

    bench/time_cli.py BIN_DIR DATA_DIR [REPETITIONS]

Runs `check`, `projects` and `export --format csv` REPETITIONS times each (default 5, after one
unmeasured run that puts the program and the file in the page cache), with a fresh HOME so that
no preferences or support folder of the user take part. Prints the median and the best time of
each and exits with 3 when a median misses the target of 1.5 s. The file is generated with
hourfold-gen into DATA_DIR when it is not there yet.
"""
import os
import statistics
import subprocess
import sys
import tempfile
import time

ENTRIES = 100_000
PROJECTS = 50  # as scripts/run-bench generates this size
TARGET_S = 1.5


def main():
    if len(sys.argv) not in (3, 4):
        sys.exit(__doc__)
    bin_dir, data_dir = sys.argv[1], sys.argv[2]
    repetitions = int(sys.argv[3]) if len(sys.argv) == 4 else 5
    cli = os.path.join(bin_dir, "hourfold-cli")
    os.makedirs(data_dir, exist_ok=True)
    document = os.path.join(data_dir, f"entries-{ENTRIES}.xml")
    if not os.path.exists(document) or os.path.getsize(document) == 0:
        subprocess.run([os.path.join(bin_dir, "hourfold-gen"), str(ENTRIES), str(PROJECTS),
                        document], check=True)

    with tempfile.TemporaryDirectory() as home:
        env = dict(os.environ, HOME=home, XDG_CONFIG_HOME=os.path.join(home, "config"),
                   XDG_DATA_HOME=os.path.join(home, "data"))
        report = os.path.join(home, "report.csv")
        commands = {
            "check": ["check"],
            "projects": ["projects"],
            "export csv": ["export", "--format", "csv", "--output", report],
        }
        results = {}
        for name, arguments in commands.items():
            line = [cli, "--file", document] + arguments
            subprocess.run(line, env=env, check=True, stdout=subprocess.DEVNULL)
            times = []
            for _ in range(repetitions):
                start = time.perf_counter()
                subprocess.run(line, env=env, check=True, stdout=subprocess.DEVNULL)
                times.append(time.perf_counter() - start)
            results[name] = (statistics.median(times), min(times))
        report_mb = os.path.getsize(report) / 1e6

    print(f"hourfold-cli on {ENTRIES:,} entries ({os.path.getsize(document) / 1e6:.1f} MB; "
          f"CSV report {report_mb:.1f} MB), whole processes, {repetitions} runs each:")
    missed = 0
    for name, (median, best) in results.items():
        ok = median < TARGET_S
        missed += not ok
        print(f"  {name:<12} median {median:6.3f} s  best {best:6.3f} s  "
              f"(target < {TARGET_S} s)  {'met' if ok else 'MISSED'}")
    sys.exit(3 if missed else 0)


if __name__ == "__main__":
    main()
