"""Draws a run with gnuplot: time and memory of an object against the size of its project."""

import subprocess

from measure import BenchError
from report import memory_of, nanoseconds

# For each picture: its file, what it shows, and its lines. Dashed lines are those of others.
TIME = "nanoseconds per object"
MEMORY = "bytes per object over the model"
PICTURES = (
    ("performance-export.svg", "Objects to documents", TIME,
     (("text", "GetJsonString"), ("text-narrow", "narrow text into a sink"), ("node", "GetJson and freeing it"),
      ("ask", "asking alone"), ("writer-by-hand", "RapidJSON's Writer"),
      ("writer-by-hand-wide", "RapidJSON's Writer, widened"), ("node-rapidjson", "RapidJSON's document"))),
    ("performance-import.svg", "Documents to objects", TIME,
     (("parse", "parse"), ("write", "write"), ("import", "import"), ("answer", "answer"),
      ("parse-rapidjson", "RapidJSON's parse"), ("parse-simdjson", "simdjson's parse"),
      ("write-rapidjson", "RapidJSON's write"), ("import-by-hand", "import by hand"),
      ("answer-by-hand", "setDBKey by hand"))),
    ("performance-memory.svg", "Memory", MEMORY,
     (("text", "GetJsonString"), ("text-narrow", "narrow text into a sink"), ("node", "GetJson"),
      ("parse", "parse"), ("writer-by-hand-wide", "RapidJSON's Writer, widened"),
      ("node-rapidjson", "RapidJSON's document"), ("parse-rapidjson", "RapidJSON's parse"),
      ("parse-simdjson", "simdjson's parse"))),
)
OURS = ("text", "text-narrow", "node", "parse", "write", "import", "answer")
COLOURS = ("#0072b2", "#d55e00", "#009e73", "#cc79a7", "#e69f00", "#56b4e9", "#000000", "#7f7f7f", "#8c564b")


def value_of(results, name, objects, unit):
    if unit == TIME:
        return nanoseconds(results, name, objects)
    memory = memory_of(results, name, objects)
    return memory["bytes"] / objects if memory else None


def script_of(results, path, title, unit, lines):
    blocks, plots = [], []
    for number, (name, label) in enumerate(lines):
        points = [(size, value_of(results, name, size, unit)) for size in results["sizes"]]
        data = "\n".join(f"{size} {value:.6g}" for size, value in points if value is not None)
        if not data:
            raise BenchError(f"there are no numbers of {name} to draw")
        blocks.append(f"$line{number} << END\n{data}\nEND")
        plots.append(f'$line{number} using 1:2 with linespoints lw 2 pt 7 ps 0.5 dt {1 if name in OURS else 2} '
                     f'lc rgb "{COLOURS[number]}" title "{label}"')
    settings = [
        'set terminal svg size 900,480 font "sans-serif,13" background rgb "white"',
        f'set output "{path}"', f'set title "{title}"', 'set xlabel "objects"', f'set ylabel "{unit}"',
        "set logscale x", 'set format x "%.0s%c"', "set yrange [0:*]", "set grid ytics lc rgb \"#dddddd\"",
        "set key outside right top samplen 3", "set border 3", "set tics nomirror",
    ]
    return "\n".join([*settings, *blocks, "plot " + ", ".join(plots), ""])


def draw_plots(results, folder):
    for file, title, unit, lines in PICTURES:
        subprocess.run(["gnuplot"], input=script_of(results, folder / file, title, unit, lines), text=True, check=True)
