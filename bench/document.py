"""Writes the tables of a run into docs/performance.md, between the comments that are there for them."""

import re

from measure import BenchError
from report import case_table, command_table, program_table, table, target_table


def machine_table(results):
    machine = results["machine"]
    return table(["", ""], [
        ["processor cores", str(machine["cores"])],
        ["memory", machine["memory"]],
        ["system", machine["system"]],
        ["compiler", f"{machine['compiler']}, Release"],
        ["rounds", str(results["rounds"])],
    ])


def tables_of(results):
    """Those of what was measured; the others stay as they are."""
    tables = {}
    if results["times"]:
        tables |= {"machine": machine_table(results), "targets": target_table(results), "cases": case_table(results)}
    if results["program"]:
        tables |= {"program": program_table(results), "commands": command_table(results)}
    return tables


def write_tables(results, path):
    text = path.read_text(encoding="utf-8")
    for name, content in tables_of(results).items():
        pattern = rf"(<!-- table: {name} -->\n).*?(\n<!-- end of table -->)"
        text, count = re.subn(pattern, lambda found: found[1] + content + found[2], text, flags=re.DOTALL)
        if count != 1:
            raise BenchError(f"{path} does not have one place for the table \"{name}\"")
    path.write_text(text, encoding="utf-8")
