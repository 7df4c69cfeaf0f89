"""How the sources of a build are compiled."""

import json
import re

INCLUDED = re.compile(r'#include "(.+)"')


def commands_of(build):
    """The commands of the compile database in the build's folder. Where CMake has several sources compiled as one, each
    of them has that command."""
    for entry in json.loads((build / "compile_commands.json").read_text()):
        name = entry["file"]
        if "/Unity/unity_" not in name:
            yield entry
            continue
        with open(name, encoding="utf-8") as whole:
            for source in INCLUDED.findall(whole.read()):
                yield entry | {"file": source, "command": entry["command"].replace(name, source)}
