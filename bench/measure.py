"""Runs the programs that measure, and keeps what they say."""

import collections
import contextlib
import json
import pathlib
import platform
import statistics
import subprocess
import sys

from targets import SMALL


class BenchError(Exception):
    pass


def run(command, **where):
    result = subprocess.run(command, stdout=subprocess.PIPE, text=True, check=False, **where)
    if result.returncode != 0:
        raise BenchError(f"{pathlib.Path(command[0]).name} failed: {' '.join(map(str, command))}")
    return result.stdout


def say(text):
    """Progress is for people who wait: what is asked for goes to the standard output."""
    print(text, file=sys.stderr, flush=True)


class Stopwatch:
    """A process that times cases, each once for every round that it is asked for."""

    def __init__(self, binaries, labels, *switches):
        self.labels = labels
        self.process = subprocess.Popen([binaries / "bench-time", *switches, *labels], stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, text=True)
        self.read_line()

    def read_line(self):
        line = self.process.stdout.readline()
        if not line:
            raise BenchError(f"bench-time could not measure {' '.join(self.labels)}")
        return line

    def round(self):
        self.process.stdin.write("\n")
        self.process.stdin.flush()
        return dict(zip(self.labels, map(float, self.read_line().split())))

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.stdin.close()
        self.process.wait()


def cases_of(binaries):
    return run([binaries / "bench-time", "--list"]).split()


def rounds_of(stopwatches, rounds):
    """The rounds of several processes that take turns: a list of seconds for each label of each."""
    seconds = [{label: [] for label in stopwatch.labels} for stopwatch in stopwatches]
    for _ in range(rounds):
        for stopwatch, kept in zip(stopwatches, seconds):
            for label, value in stopwatch.round().items():
                kept[label].append(value)
    return seconds


def measure_times(binaries, comparison, objects, rounds, *switches):
    """The two cases in turns. For the growth of the time per object a second process takes turns with the first: in
    the same one the small project would get the memory that the large one has left scattered."""
    sizes = dict.fromkeys((objects, SMALL))
    with contextlib.ExitStack() as open_ones:
        stopwatches = [open_ones.enter_context(
            Stopwatch(binaries, [f"{name}@{size}" for name in (comparison.ours, comparison.peer)], *switches))
            for size in sizes]
        return collections.ChainMap(*rounds_of(stopwatches, rounds))


def measure_memory(binaries, name, objects):
    numbers = map(int, run([binaries / "bench-memory", name, str(objects)]).split())
    return dict(zip(("bytes", "allocations", "held", "project"), numbers))


# Projects of that many objects are measured at most so often: a round of all commands takes minutes.
LARGE = 1_000_000
ROUNDS_OF_LARGE = 3


def measure_program(binaries, objects, rounds):
    """The commands of the program beside their floors; nothing where they are not built."""
    program = binaries / "measure-program"
    if not program.exists():
        return []
    say(f"{objects:>9,} objects: the commands of the program")
    runs = min(rounds, ROUNDS_OF_LARGE) if objects >= LARGE else rounds
    report = binaries.parent / "measure-program.json"
    # The commands say on their standard error what they did.
    with open(report.with_suffix(".log"), "w", encoding="utf-8") as log:
        run([program, binaries / "korvane-json", "--objects", str(objects), "--runs", str(runs), "--json", report],
            cwd=report.parent, stderr=log)
    return json.loads(report.read_text(encoding="utf-8"))


def machine():
    """The machine in general words."""
    cores = sum(line.startswith("processor") for line in open("/proc/cpuinfo", encoding="utf-8"))
    memory = int(next(line for line in open("/proc/meminfo", encoding="utf-8")).split()[1]) / 1024 ** 2
    compiler = run(["g++", "--version"]).splitlines()[0]
    return {"cores": cores, "memory": f"{memory:.0f} GiB", "system": f"{platform.system()} {platform.machine()}",
            "compiler": compiler}


def ratios(ours, peer):
    """Round by round: what disturbs the machine disturbs both."""
    return [one / other for one, other in zip(ours, peer)]


def middle(values):
    """The median, and the bounds of the middle half."""
    low, _, high = statistics.quantiles(values, n=4, method="inclusive") if len(values) > 1 else values * 3
    return statistics.median(values), low, high
