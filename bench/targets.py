"""What is measured, what it is compared with, and how much of that it may take."""

import dataclasses

SMALL = 10_000
SIZES = (100_000, 1_000_000)
PLOT_SIZES = (10_000, 30_000, 100_000, 300_000, 1_000_000)

# How much more time an object may take in the largest project than in one of SMALL objects.
GROWTH_AT_MOST = 1.25
# How much of the change of a case between two revisions is worth a mark.
WORTH_A_MARK = 0.1

CASES = {
    "ask": "asking the object model for everything, narrow texts",
    "text-narrow": "narrow text into a sink that drops it",
    "writer-by-hand": "RapidJSON's Writer by hand",
    "text": "`GetJsonString`",
    "writer-by-hand-wide": "RapidJSON's Writer by hand, widened to an `OuString`",
    "node": "`GetJson` and freeing it",
    "node-rapidjson": "RapidJSON's document by hand and freeing it",
    "copy": "`JSONNode::duplicate`",
    "copy-rapidjson": "RapidJSON's `CopyFrom`",
    "parse": "`libjson::parse`",
    "parse-rapidjson": "RapidJSON's document with numbers as text",
    "parse-simdjson": "simdjson's document",
    "parse-nlohmann": "nlohmann's document",
    "write": "`JSONNode::write`",
    "write-rapidjson": "RapidJSON's Writer on its document",
    "import": "import",
    "import-by-hand": "the same calls by hand",
    "answer": "answer",
    "answer-by-hand": "`setDBKey` by hand",
}


@dataclasses.dataclass(frozen=True)
class Comparison:
    """Two cases that run in turns in one process. Without a target the other one is a mark on the wall."""
    ours: str
    peer: str
    at_most: float | None = None
    largest: int = SIZES[-1]

    @property
    def title(self):
        return f"{CASES[self.ours]} / {CASES[self.peer]}"


TIMES = (
    Comparison("text", "writer-by-hand-wide", 0.5),
    Comparison("text-narrow", "ask", 1.5),
    Comparison("node", "node-rapidjson", 0.8),
    Comparison("parse", "parse-rapidjson", 0.8),
    Comparison("write", "write-rapidjson", 0.3),
    Comparison("import", "import-by-hand", 1.4),
    Comparison("answer", "answer-by-hand", 1.5),
    Comparison("text-narrow", "writer-by-hand"),
    Comparison("copy", "copy-rapidjson"),
    Comparison("parse", "parse-simdjson"),
    # A tree of the largest project would take several gigabytes.
    Comparison("parse", "parse-nlohmann", largest=100_000),
)

# The peak of memory above what there was before, in proportion to the peer's.
MEMORY = (
    Comparison("node", "node-rapidjson", 1 / 3),
)
# The same in bytes, whatever the size.
BYTES = {"text-narrow": 1_000_000}


@dataclasses.dataclass(frozen=True)
class Command:
    """A command of the program beside its floor: the least that SQLite or the JSON layer needs for the same rows.
    Without a target the floor is a mark on the wall: it makes no objects, and the texts that it writes are there."""
    ours: str
    floor: str
    at_most: float | None = None
    largest: int = SIZES[-1]

    @property
    def title(self):
        return f"{self.ours} / {self.floor}"


PROGRAM = {
    "new": Command("`new` from a project file", "reading its rows and writing them to a new one", 3),
    "import": Command("`import`", "writing the rows", 3),
    "store": Command("`store`", "writing the rows", 3),
    "fetch": Command("`fetch`", "reading the rows of nodes and objects", 3),
    "apply": Command("`apply`", "reading the rows and updating the keys", 3),
    "compare project files": Command("`compare` of project files", "reading the rows of both", 3),
    "compare documents": Command("`compare` of documents", "parsing both", 3),
    "export": Command("`export`", "reading the rows and writing the document"),
    "find": Command("`find` with two conditions", "reading the rows and writing the list"),
    "tree": Command("`tree`", "reading the rows and writing the tree"),
    "plot": Command("`plot` of all objects", "reading the rows and writing the picture"),
    "page": Command("`page`", "reading the rows and writing the page"),
    # Each file of a directory takes a block of the disk (kMostObjectsOfDirectory).
    "update": Command("`update` of a directory without changes", "reading the rows and the beginnings of the files",
                      largest=100_000),
}
