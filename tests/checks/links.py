#!/usr/bin/env python3
"""Every relative link, picture and named document of the README, the changelog and docs/ is there, and so is every
heading that a link leads to. Links to other hosts are not followed."""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]


def without_code(text):
    return re.sub(r"```.*?```|^    .*?$", "", text, flags=re.DOTALL | re.MULTILINE)


def anchors(document):
    """The names that headings get where such documents are shown: lower case, blanks as hyphens, no punctuation."""
    seen = {}
    names = set()
    for heading in re.findall(r"^#+ +(.+?) *#*$", without_code(document.read_text(encoding="utf-8")), re.MULTILINE):
        name = re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-")
        names.add(name if name not in seen else f"{name}-{seen[name]}")
        seen[name] = seen.get(name, 0) + 1
    return names


def faults(document):
    text = without_code(document.read_text(encoding="utf-8"))
    plain = re.sub(r"`[^`]*`", "", text)
    links = re.findall(r"\]\(([^)\s]+)(?: \"[^\"]*\")?\)", plain) + re.findall(r"^\[[^\]]+\]: *(\S+)", plain, re.MULTILINE)
    for link in links:
        if re.match(r"[a-z]+:", link):
            continue
        path, _, anchor = link.partition("#")
        target = (document.parent / path).resolve() if path else document
        if not target.exists():
            yield f"{link} leads nowhere"
        elif anchor and (target.suffix != ".md" or anchor not in anchors(target)):
            yield f"{link}: there is no such heading"
    for name in re.findall(r"`([\w./-]+\.md)`", text):
        if not ((document.parent / name).exists() or (ROOT / name).exists()):
            yield f"it names {name}, which is not there"


def main():
    documents = [ROOT / "README.md", ROOT / "CHANGELOG.md", *sorted((ROOT / "docs").glob("*.md"))]
    found = [f"{document.relative_to(ROOT)}: {fault}" for document in documents for fault in faults(document)]
    print("\n".join(found) or f"{len(documents)} documents")
    return bool(found)


sys.exit(main())
