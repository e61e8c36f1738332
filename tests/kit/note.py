#!/usr/bin/env python3
"""What the last run of the kit's tests left in report.json can be noted in docs/windows.md, were it from Windows."""
import json
import pathlib
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
DOCUMENT = (ROOT / "docs/windows.md").read_text(encoding="utf-8")
report = json.loads(next((ROOT / "build/tests/kit").glob("*/*/report.json")).read_text(encoding="utf-8"))


def noted():
    """The exit code, and the rows that are not as they were."""
    with tempfile.TemporaryDirectory() as folder:
        source, copy = pathlib.Path(folder) / "report.json", pathlib.Path(folder) / "windows.md"
        source.write_text(json.dumps(report), encoding="utf-8")
        copy.write_text(DOCUMENT, encoding="utf-8")
        code = subprocess.run([sys.executable, ROOT / "tools/note-report", source, copy], check=False).returncode
        lines = zip(DOCUMENT.split("\n"), copy.read_text(encoding="utf-8").split("\n"), strict=True)
        return code, [new for old, new in lines if old != new]


assert noted() == (1, []), "a report from Wine was noted"
report["system"].update(Wine="no", Windows="11 24H2 (26100.1)", Date="2001-02-03")
code, rows = noted()
shown = {claim["name"] for claim in report["claims"] if claim["outcome"] == "as claimed"}
assert code == 0 and shown and {row.split("|")[1].strip() for row in rows} == shown, rows
assert all(f"| Windows 11 24H2 (26100.1), 2001-02-03 | {report['version']} | as claimed: " in row for row in rows), rows
print(f"{len(rows)} rows")
