#!/usr/bin/env python3
"""What docs/security.md marks untested has a name in brackets, and these are the claims of the kit (tests/kit) and the
rows of docs/windows.md, each of which is shown by a test that exists, or by hand."""
import pathlib
import re
import sys

security = pathlib.Path("docs/security.md").read_text(encoding="utf-8")
named = re.findall(r"`\[([A-Z][a-z]+[A-Z]\w+)\]`", security)
rows = re.findall(r"^\| (\w+) \|", pathlib.Path("docs/windows.md").read_text(encoding="utf-8").split("What was seen")[1], re.M)
kit = re.findall(r'\{"(\w+)", (?:"([\w.]+)"|nullptr), (?:"|nullptr)', pathlib.Path("tests/kit/Claims.h").read_text(encoding="utf-8"))
tests = [".".join(test) for file in pathlib.Path("tests").rglob("*Test.cpp")
         for test in re.findall(r"^TEST\w*\((\w+), (\w+)\)", file.read_text(encoding="utf-8"), re.M)]

wrong = [f"{name} stands twice in docs/security.md" for name in set(named) if named.count(name) > 1]
for where, names in (("tests/kit/Claims.h", [name for name, _ in kit]), ("docs/windows.md", [name for name in rows if name != "claim"])):
    wrong += [f"{name}: in docs/security.md, not in {where}" for name in sorted(set(named) - set(names))]
    wrong += [f"{name}: in {where}, not in docs/security.md" for name in sorted(set(names) - set(named))]
wrong += [f"{name}: no test begins with {test}" for name, test in kit if test and not any(t.startswith(test) for t in tests)]
wrong += [f"{test}: shows no claim of tests/kit/Claims.h" for test in tests
          if test.startswith("Claims.") and test not in [shown for _, shown in kit]]

# No mark without a name: each sentence in italics, and each row of the table of faults that was not, or not wholly, tried.
for sentence in re.findall(r"\*Untested[^*]*\*", security):
    for part in sentence.split(";"):
        if "`[" not in part:
            wrong.append(f"without a name: {part.strip()}")
faults = security.split("What goes wrong around it")[1].split("\n## ")[0]
for row in re.findall(r"^\|.*\|$", faults, re.M)[2:]:
    if re.search(r"\b(no|not|only)\b", row.split("|")[-2]) and "`[" not in row:
        wrong.append(f"without a name: {row.split('|')[1].strip()}")
if re.search(r"\buntried\b", security):
    wrong.append("docs/security.md calls something untried without a mark")

print("\n".join(wrong) or f"{len(named)} claims")
sys.exit(bool(wrong) or len(named) < 10)
