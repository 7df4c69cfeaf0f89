"""The tables of a run."""

import statistics

from measure import middle, ratios
from targets import BYTES, CASES, GROWTH_AT_MOST, MEMORY, PROGRAM, SIZES, SMALL, TIMES, WORTH_A_MARK


def table(head, rows):
    """A table for people and for Markdown."""
    cells = [head, *rows]
    widths = [max(len(row[column]) for row in cells) for column in range(len(head))]
    line = lambda row: "| " + " | ".join(cell.ljust(width) for cell, width in zip(row, widths)) + " |"
    return "\n".join([line(head), "|" + "|".join("-" * (width + 2) for width in widths) + "|",
                      *map(line, rows)])


def verdict(measured, at_most):
    return "met" if measured <= at_most else f"**missed by {measured - at_most:.2f}**"


def ratio_cell(values, at_most):
    median, low, high = middle(values)
    text = f"{median:.2f} ({low:.2f} to {high:.2f})"
    return text if at_most is None else f"{text}, {verdict(median, at_most)}"


def limit(at_most):
    return "" if at_most is None else f"{at_most:.3g}"


def times_of(results, comparison, objects):
    for kept in results["times"]:
        if (kept["ours"], kept["peer"], kept["objects"]) == (comparison.ours, comparison.peer, objects):
            return kept["seconds"]
    return None


def memory_of(results, name, objects):
    return results["memory"].get(name, {}).get(str(objects))


def sizes_of(results):
    """The sizes with targets; others are only for plots, and stand in the table when there is nothing else."""
    measured = results["sizes"]
    return [size for size in measured if size in SIZES] or measured


def ratio_row(results, comparison, sizes):
    cells = []
    for objects in sizes:
        seconds = times_of(results, comparison, objects)
        if seconds is None:
            cells.append("not measured")
            continue
        both = (seconds[f"{name}@{objects}"] for name in (comparison.ours, comparison.peer))
        cells.append(ratio_cell(ratios(*both), comparison.at_most))
    return [comparison.title, limit(comparison.at_most), *cells]


def memory_rows(results, sizes):
    rows = []
    for comparison in MEMORY:
        cells = []
        for objects in sizes:
            ours, peer = (memory_of(results, name, objects) for name in (comparison.ours, comparison.peer))
            share = ours["bytes"] / peer["bytes"] if ours and peer else None
            cells.append("" if share is None else f"{share:.2f}, {verdict(share, comparison.at_most)}")
        rows.append([f"the same in memory: {comparison.title}", limit(comparison.at_most), *cells])
    for name, at_most in BYTES.items():
        cells = []
        for objects in sizes:
            memory = memory_of(results, name, objects)
            cells.append("" if memory is None else
                         f"{memory['bytes'] / 1e6:.2f} MB, {verdict(memory['bytes'] / 1e6, at_most / 1e6)}")
        rows.append([f"{CASES[name]}: memory over the model", f"{at_most / 1e6:.0f} MB", *cells])
    return rows


def growth_rows(results, sizes):
    """The time per object in the largest project beside that in a small one, from one process."""
    rows, seen = [], set()
    largest = max(sizes)
    for comparison in TIMES:
        seconds = times_of(results, comparison, largest)
        if seconds is None or largest <= SMALL:
            continue
        for name in (comparison.ours, comparison.peer):
            values = [one * SMALL / largest
                      for one in ratios(seconds[f"{name}@{largest}"], seconds[f"{name}@{SMALL}"])]
            at_most = GROWTH_AT_MOST if name == comparison.ours else None
            if name not in seen and (at_most or comparison.at_most):
                rows.append([f"{CASES[name]}: {largest:,} objects / {SMALL:,}, each object", limit(at_most),
                             *[""] * (len(sizes) - 1), ratio_cell(values, at_most)])
            seen.add(name)
    return rows


def program_of(results, what, objects):
    for kept in results["program"]:
        if (kept["what"], kept["objects"]) == (what, objects):
            return kept
    return None


def program_sizes(results):
    measured = sorted({kept["objects"] for kept in results["program"]})
    return [size for size in measured if size != SMALL] or measured


def program_table(results):
    """The commands beside their floors, and the time per object in the largest project beside that in a small one."""
    sizes = program_sizes(results)
    ratio_rows, growth = [], []
    for what, command in PROGRAM.items():
        cells = []
        for objects in sizes:
            kept = program_of(results, what, objects)
            cells.append(("not measured" if objects <= command.largest else "") if kept is None else
                         ratio_cell(ratios(kept["command"]["seconds"], kept["floor"]["seconds"]), command.at_most))
        ratio_rows.append([command.title, limit(command.at_most), *cells])
        largest, small = program_of(results, what, sizes[-1]), program_of(results, what, SMALL)
        if largest and small and sizes[-1] > SMALL:
            grown = program_nanoseconds(largest, "command") / program_nanoseconds(small, "command")
            at_most = GROWTH_AT_MOST if command.at_most else None
            growth.append([f"{command.ours}: {sizes[-1]:,} objects / {SMALL:,}, each object",
                           limit(at_most), *[""] * (len(sizes) - 1),
                           f"{grown:.2f}" + (f", {verdict(grown, at_most)}" if at_most else "")])
    rounds = [str(min(len(kept["command"]["seconds"]) for kept in results["program"] if kept["objects"] == size))
              for size in sizes]
    return table(["", "at most", *[f"{size:,} objects" for size in sizes]],
                 [*ratio_rows, *growth, ["rounds", "", *rounds]])


def program_nanoseconds(kept, part):
    return statistics.median(kept[part]["seconds"]) / kept["objects"] * 1e9


def command_table(results):
    """Time per object of each command and its floor, and the most memory that their processes have."""
    sizes = sorted({kept["objects"] for kept in results["program"]})
    rows = []
    for what, command in PROGRAM.items():
        for part, name in (("command", command.ours), ("floor", command.floor)):
            kept = [program_of(results, what, objects) for objects in sizes]
            rows.append([name if part == "command" else f"... {name}",
                         *["" if one is None else f"{program_nanoseconds(one, part):,.0f}" for one in kept],
                         *["" if one is None else f"{one[part]['peak_mib']:,.0f}" for one in kept]])
    return table(["", *[f"ns, {size:,}" for size in sizes], *[f"MiB, {size:,}" for size in sizes]], rows)


def target_table(results):
    sizes = sizes_of(results)
    rows = [ratio_row(results, comparison, sizes) for comparison in TIMES
            if any(times_of(results, comparison, objects) for objects in sizes)]
    rows += [row for row in memory_rows(results, sizes) if any(row[2:])]
    rows += growth_rows(results, sizes)
    return table(["", "at most", *[f"{size:,} objects" for size in sizes]], rows)


def nanoseconds(results, name, objects):
    """Every run of the case with that many objects, whatever it was compared with."""
    values = [one for kept in results["times"] for one in kept["seconds"].get(f"{name}@{objects}", [])]
    return statistics.median(values) / objects * 1e9 if values else None


def case_table(results):
    sizes = sorted({SMALL, *sizes_of(results)})
    rows = []
    for name, title in CASES.items():
        times = [nanoseconds(results, name, objects) for objects in sizes]
        memory = [memory_of(results, name, objects) for objects in sizes_of(results)]
        if not any(times):
            continue
        rows.append([title, *["" if one is None else f"{one:,.0f}" for one in times],
                     *["" if one is None else f"{one['bytes'] / 1e6:,.1f}" for one in memory],
                     *bytes_and_allocations(results, name)])
    head = ["", *[f"ns, {size:,}" for size in sizes], *[f"MB, {size:,}" for size in sizes_of(results)],
            "bytes per object", "allocations per object"]
    return table(head, rows)


def bytes_and_allocations(results, name):
    largest = max((size for size in sizes_of(results) if memory_of(results, name, size)), default=None)
    if largest is None:
        return ["", ""]
    memory = memory_of(results, name, largest)
    return [f"{memory['bytes'] / largest:,.0f}", f"{memory['allocations'] / largest:.2f}"]


def change(values):
    median, low, high = middle(values)
    mark = "" if abs(median - 1) <= WORTH_A_MARK else " **slower**" if median > 1 else " **faster**"
    return f"{median:.2f} ({low:.2f} to {high:.2f}){mark}"


def count_change(old, new):
    if old == new:
        return "as before"
    mark = "" if abs(new - old) <= WORTH_A_MARK * max(old, 1) else " **more**" if new > old else " **less**"
    return f"{old:,} to {new:,}{mark}"
