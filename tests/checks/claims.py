#!/usr/bin/env python3
"""What docs/security.md marks untested has a name in brackets, and these are the rows of docs/windows.md, each of which
is shown by hand, or by tests of that name or of the suite that the row quotes."""
import pathlib
import re
import sys

security = pathlib.Path("docs/security.md").read_text(encoding="utf-8")
named = re.findall(r"`\[([A-Z][a-z]+[A-Z]\w+)\]`", security)
rows = re.findall(r"^\| (\w+) \| (the kit|by hand: )(.*?) \| ", pathlib.Path("docs/windows.md").read_text(encoding="utf-8"), re.M)
tests = [test for file in pathlib.Path("tests").rglob("*Test.cpp")
         for test in re.findall(r"^TEST\w*\((\w+), (\w+)\)", file.read_text(encoding="utf-8"), re.M)]

wrong = [f"{name} stands twice in docs/security.md" for name in set(named) if named.count(name) > 1]
wrong += [f"{name}: in one of docs/security.md and docs/windows.md" for name in set(named) ^ {row[0] for row in rows}]
wrong += [f"{claim}: there is no such test" for claim, how, what in rows if how == "the kit"
          and not any(name == claim or f"`{suite}`" in what for suite, name in tests)]
wrong += [f"Claims.{name}: shows no claim" for suite, name in tests if suite == "Claims" and name not in named]

# No mark without a name: each sentence in italics, and each row of the table of faults that was not, or not wholly, tried.
faults = security.split("What goes wrong around it")[1].split("\n## ")[0]
marks = [part for sentence in re.findall(r"\*Untested[^*]*\*", security) for part in sentence.split(";")]
marks += [row for row in re.findall(r"^\|.*\|$", faults, re.M)[2:] if re.search(r"\b(no|not|only)\b", row.split("|")[-2])]
wrong += [f"without a name: {mark.strip()}" for mark in marks + re.findall(r".*\buntried\b.*", security) if "`[" not in mark]

print("\n".join(wrong) or f"{len(named)} claims")
sys.exit(bool(wrong) or len(named) < 10)
