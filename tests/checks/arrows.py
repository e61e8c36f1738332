#!/usr/bin/env python3
"""The folders of src/ include each other one way only: what a folder may include stands in ALLOWED. Among the files of
one folder no two headers include each other, however far around."""
import graphlib
import pathlib
import re
import sys

ROOT = pathlib.Path("src")
ALLOWED = {
    "core": set(),
    "win32": {"core"},
    "ui": {"win32", "core"},
    "transfer": {"win32", "core"},
    "app": {"ui", "transfer", "win32", "core"},
}

wrong, graph = [], {}
for file in (f for f in sorted(ROOT.rglob("*")) if f.suffix in (".h", ".cpp")):
    name = file.relative_to(ROOT).as_posix()
    folder = name.split("/")[0]
    # A class is its pair of files; what the one or the other includes, it knows.
    known = graph.setdefault(name.rsplit(".", 1)[0], set())
    for target in re.findall(r'^\s*#\s*include\s+"([^"]+)"', file.read_text(encoding="utf-8"), re.M):
        if target.split("/")[0] not in ALLOWED.get(folder, set()) | {folder}:
            wrong.append(f"src/{name} includes src/{target}: {folder}/ may not know it")
        elif target != "win32/version.h" and not (ROOT / target).exists():
            wrong.append(f"src/{name} includes {target}, which is not there")
        known.update({target.rsplit(".", 1)[0]} - {name.rsplit(".", 1)[0]})
try:
    graphlib.TopologicalSorter(graph).prepare()
except graphlib.CycleError as error:
    wrong.append("these know each other in a circle: " + " -> ".join(error.args[1]))
print("\n".join(wrong) or f"{len(graph)} classes, no include against the arrows, no circle")
sys.exit(bool(wrong) or len(graph) < 10)
