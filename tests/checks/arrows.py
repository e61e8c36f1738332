#!/usr/bin/env python3
"""The folders of src/ include each other one way only: what a folder may include stands in ALLOWED. Among the files of
one folder no two headers include each other, however far around."""
import pathlib
import re
import sys

ROOT = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else "src")
ALLOWED = {
    "core": set(),
    "win32": {"core"},
    "ui": {"win32", "core"},
    "transfer": {"win32", "core"},
    "app": {"ui", "transfer", "win32", "core"},
}
GENERATED = {"win32/version.h"}


def includes(file):
    return re.findall(r'^\s*#\s*include\s+"([^"]+)"', file.read_text(encoding="utf-8"), re.M)


def cycle(graph):
    """A way around in the graph, or nothing."""
    done, way = set(), []

    def visit(node):
        if node in way:
            return way[way.index(node):] + [node]
        if node in done:
            return None
        way.append(node)
        for following in graph.get(node, ()):
            if found := visit(following):
                return found
        done.add(way.pop())
        return None

    return next((found for node in graph if (found := visit(node))), None)


def main():
    wrong, graph = [], {}
    files = sorted(f for f in ROOT.rglob("*") if f.suffix in (".h", ".cpp"))
    if len(files) < 10:
        sys.exit(f"{ROOT}: hardly a source file; is this the right folder?")
    for file in files:
        name = file.relative_to(ROOT).as_posix()
        folder = name.split("/")[0]
        for target in includes(file):
            other = target.split("/")[0]
            if folder not in ALLOWED or (other != folder and other not in ALLOWED[folder]):
                wrong.append(f"src/{name} includes src/{target}: {folder}/ may not know {other}/")
            elif target not in GENERATED and not (ROOT / target).exists():
                wrong.append(f"src/{name} includes {target}, which is not there")
        # A class is its pair of files; what the one or the other includes, it knows.
        unit = name.rsplit(".", 1)[0]
        graph.setdefault(unit, set()).update(t.rsplit(".", 1)[0] for t in includes(file))
        graph[unit].discard(unit)
    if found := cycle(graph):
        wrong.append("these know each other in a circle: " + " -> ".join(found))
    print("\n".join(wrong) or f"{len(files)} files, no include against the arrows, no circle")
    sys.exit(1 if wrong else 0)


if __name__ == "__main__":
    main()
