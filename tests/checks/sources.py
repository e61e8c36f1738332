#!/usr/bin/env python3
"""The folders of src/ include each other one way only, as ALLOWED says; among the files of one folder no two headers
include each other, however far around. Every guard of an event handler has a name, and no two handlers share one: an
error report says with it where it happened."""
import graphlib
import pathlib
import re
import sys

ROOT = pathlib.Path("src")
ALLOWED = {"core": "core", "win32": "win32 core", "ui": "ui win32 core", "transfer": "transfer win32 core",
           "app": "app ui transfer win32 core"}
# Guards whose names come from a table or from the class; and names of two steps of one event, or of one of two windows.
ELSEWHERE = ("handler->name", "Handle(), handler,", "window, className")
SHARED = {"Form_MouseMove", "Resize", "Timer1_Timer", "Transfer", "tbToolbar_ButtonMenuClick"}

wrong, graph, guards, names = [], {}, [], []
for file in sorted([*ROOT.rglob("*.h"), *ROOT.rglob("*.cpp")]):
    text = file.read_text(encoding="utf-8")
    name = file.relative_to(ROOT).with_suffix("").as_posix()
    for target in re.findall(r'^\s*#\s*include\s+"([^"]+)\.h"', text, re.M):
        if target.split("/")[0] not in ALLOWED[name.split("/")[0]].split():
            wrong.append(f"{file} includes {target}.h: its folder may not know it")
        # A class is its pair of files; what the one or the other includes, it knows.
        graph.setdefault(name, set()).update({target} - {name})
    if file.suffix == ".cpp":
        guards += re.findall(r"\b(?:GuardEvent|guarded)\([^\[;]*", text)
        names += re.findall(r'L"([A-Za-z]+_Click)"', text)
try:
    graphlib.TopologicalSorter(graph).prepare()
except graphlib.CycleError as error:
    wrong.append("these know each other in a circle: " + " -> ".join(error.args[1]))
names += re.findall(r'L"([^"]+)"', "".join(guards))
wrong += [f"no name to be found: {guard}" for guard in guards if 'L"' not in guard and not any(e in guard for e in ELSEWHERE)]
wrong += [f"two handlers are called {name}" for name in set(names) - SHARED if names.count(name) > 1]
print("\n".join(wrong) or f"{len(graph)} classes, {len(set(names))} handlers")
sys.exit(bool(wrong) or len(graph) < 10 or len(set(names)) < 40)
