#!/usr/bin/env python3
"""What the kit's test left in report.json names every claim, and tools/note-report notes it, were it from Windows."""
import json
import pathlib
import subprocess

document = pathlib.Path("docs/windows.md").read_text(encoding="utf-8")
report = next(pathlib.Path("build/tests/package").glob("*/*/report.json")).read_text(encoding="utf-8")
claims = {claim["name"]: claim["outcome"] for claim in json.loads(report)["claims"]}
assert all(f"| {claim} |" in document for claim in claims) and len(claims) == document.count("\n| ") - 1, claims
source, copy = pathlib.Path("build/tests/report.json"), pathlib.Path("build/tests/windows.md")
for wine in ("yes", "no"):
    source.write_text(report.replace('"Wine", "value": "yes"', f'"Wine", "value": "{wine}"'), encoding="utf-8")
    copy.write_text(document, encoding="utf-8")
    subprocess.run(["tools/note-report", source, copy], check=wine == "no")
    rows = {row.split("|")[1].strip() for row in copy.read_text(encoding="utf-8").split("\n") if "| passed: " in row}
    assert rows == {claim for claim, outcome in claims.items() if wine == "no" and outcome == "passed"}, rows
