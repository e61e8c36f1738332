#!/usr/bin/env python3
"""Every relative link, picture and named document of the README, the changelog and docs/ is there, and so is every
heading that a link leads to. Links to other hosts are not followed."""
import pathlib
import re
import sys


def text_of(document):
    return re.sub(r"```.*?```|^    .*?$", "", document.read_text(encoding="utf-8"), flags=re.DOTALL | re.MULTILINE)


def anchors(document):
    """The names that headings get where such documents are shown: lower case, blanks as hyphens, no punctuation."""
    headings = re.findall(r"^#+ +(.+?) *#*$", text_of(document), re.MULTILINE)
    return [re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-") for heading in headings]


def faults(document):
    plain = re.sub(r"`[^`]*`", "", text_of(document))
    for path, anchor in re.findall(r"(?:\]\(|^\[[^\]]+\]: *)(?![a-z]+:)([^)\s#]*)#?([^)\s]*)", plain, re.MULTILINE):
        target = document.parent / path if path else document
        if not target.exists() or (anchor and anchor not in anchors(target)):
            yield f"{path}#{anchor} leads nowhere"
    for name in re.findall(r"`([\w./-]+\.md)`", text_of(document)):
        if not ((document.parent / name).exists() or pathlib.Path(name).exists()):
            yield f"it names {name}, which is not there"


documents = [pathlib.Path("README.md"), pathlib.Path("CHANGELOG.md"), *sorted(pathlib.Path("docs").glob("*.md"))]
found = [f"{document}: {fault}" for document in documents for fault in faults(document)]
print("\n".join(found) or f"{len(documents)} documents")
sys.exit(bool(found))
