#!/usr/bin/env python3
"""Every relative link, picture and named document of the README, the changelog and docs/ is there. Links to other hosts
are not followed."""
import pathlib
import re
import sys

documents = [pathlib.Path("README.md"), pathlib.Path("CHANGELOG.md"), *sorted(pathlib.Path("docs").glob("*.md"))]
wrong = []
for document in documents:
    text = re.sub(r"```.*?```|^    .*?$", "", document.read_text(encoding="utf-8"), flags=re.DOTALL | re.MULTILINE)
    links = re.findall(r"(?:\]\(|^\[[^\]]+\]: *)(?![a-z]+:)([^)\s#]+)", re.sub(r"`[^`]*`", "", text), re.MULTILINE)
    wrong += [f"{document}: {link} leads nowhere" for link in links if not (document.parent / link).exists()]
    wrong += [f"{document}: names {name}, which is not there" for name in re.findall(r"`([\w./-]+\.md)`", text)
              if not (document.parent / name).exists() and not pathlib.Path(name).exists()]
print("\n".join(wrong) or f"{len(documents)} documents")
sys.exit(bool(wrong) or len(documents) < 5)
