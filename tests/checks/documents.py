#!/usr/bin/env python3
"""Every relative link, picture and named document of the README, the changelog and docs/ is there. What docs/security.md
marks untested has a name in brackets, and these are the rows of docs/windows.md, each of which is shown by hand, or by
tests of that name or of the suite that the row quotes."""
import pathlib
import re
import sys

texts = {file: file.read_text(encoding="utf-8") for file in [*pathlib.Path().glob("*.md"), *pathlib.Path("docs").glob("*.md")]}
wrong = []
for file, text in texts.items():
    prose = re.sub(r"```.*?```|^    .*?$", "", text, flags=re.DOTALL | re.MULTILINE)
    links = re.findall(r"(?:\]\(|^\[[^\]]+\]: *)(?![a-z]+:)([^)\s#]+)", re.sub(r"`[^`]*`", "", prose), re.MULTILINE)
    wrong += [f"{file}: {name} is not there" for name in links + re.findall(r"`([\w./-]+\.md)`", prose)
              if not (file.parent / name).exists() and not pathlib.Path(name).exists()]

security, windows = (texts[pathlib.Path("docs") / name] for name in ("security.md", "windows.md"))
named = re.findall(r"`\[([A-Z][a-z]+[A-Z]\w+)\]`", security)
rows = re.findall(r"^\| (\w+) \| (the kit|by hand: )(.*?) \| ", windows, re.M)
tests = [test for file in pathlib.Path("tests").rglob("*Test.cpp")
         for test in re.findall(r"^TEST\w*\((\w+), (\w+)\)", file.read_text(encoding="utf-8"), re.M)]
wrong += [f"{name} stands twice in docs/security.md" for name in set(named) if named.count(name) > 1]
wrong += [f"{name}: in one of docs/security.md and docs/windows.md" for name in set(named) ^ {row[0] for row in rows}]
wrong += [f"without a name: {part}" for sentence in re.findall(r"\*Untested[^*]*\*", security)
          for part in sentence.split(";") if "`[" not in part]
wrong += [f"{claim}: there is no such test" for claim, how, what in rows if how == "the kit"
          and not any(name == claim or f"`{suite}`" in what for suite, name in tests)]
wrong += [f"Claims.{name}: shows no claim" for suite, name in tests if suite == "Claims" and name not in named]
print("\n".join(wrong) or f"{len(texts)} documents, {len(named)} claims")
sys.exit(bool(wrong) or len(texts) < 5 or len(named) < 10)
