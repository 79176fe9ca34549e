#!/usr/bin/env python3
"""What a question from Python costs, and what Python's own finder of modules takes for the same: names in N
folders of 100 files, all asked before. The floor is a dictionary from each name to its path. Writes rows as the
programs beside it do, to --benchmark_out=FILE; --benchmark_filter=REGEX chooses among them."""

import json
import os
import random
import re
import sys
import tempfile
import time
from importlib.machinery import FileFinder, PathFinder, SourceFileLoader

import searchpath

FILES = 100
QUESTIONS = 2000


def make_tree(root, count):
    paths = {}
    for at in range(count):
        folder = os.path.join(root, f"folder{at}")
        os.mkdir(folder)
        for name in (f"name{at * FILES + file}" for file in range(FILES)):
            paths[name] = os.path.join(folder, name + ".zt")
            open(paths[name], "w").close()
    return paths


def nanoseconds(ask, names):
    """Of a question, the best of five rounds of at least a tenth of a second behind one that warms up."""
    for name in names:
        ask(name)
    rounds = []
    for _ in range(5):
        asked, begin = 0, time.process_time_ns()
        while time.process_time_ns() - begin < 1e8:
            for name in names:
                ask(name)
            asked += len(names)
        rounds.append((time.process_time_ns() - begin) / asked)
    return min(rounds)


def finders(paths):
    folders = list(dict.fromkeys(map(os.path.dirname, paths.values())))
    environment = searchpath.Environment(folders)
    yield "floor", paths.__getitem__
    yield "find", lambda name: environment.find(name, extensions=("zt",))
    yield "find_whole_name", lambda name: environment.find(name + ".zt")
    yield "importlib", lambda name: PathFinder.find_spec(name, folders)


def main(arguments):
    options = dict(each.partition("=")[::2] for each in arguments)
    rows = []
    sys.path_hooks.insert(0, FileFinder.path_hook((SourceFileLoader, [".zt"])))
    for count in (10, 1000):
        with tempfile.TemporaryDirectory() as root:
            paths = make_tree(root, count)
            names = random.Random(19).sample(sorted(paths), min(QUESTIONS, len(paths)))
            for case, ask in finders(paths):
                row = f"python_find:{case}/{count}"
                if re.search(options.get("--benchmark_filter", ""), row):
                    time_ns = nanoseconds(ask, names)
                    rows.append(dict(name=row, cpu_time=time_ns, real_time=time_ns, time_unit="ns"))
    with open(options.get("--benchmark_out", "/dev/stdout"), "w") as file:
        json.dump({"benchmarks": rows}, file, indent=1)


if __name__ == "__main__":
    main(sys.argv[1:])
