#!/usr/bin/env python3
"""What the tests are made of is at most a third of all that we wrote for the program and them. The suites, without what
drives the program, have a limit of their own."""
import pathlib
import re
import subprocess
import sys

SUITES = 4500
listed = subprocess.run(["git", "-c", "safe.directory=*", "ls-files"], capture_output=True, text=True, check=True).stdout
lines = {name: pathlib.Path(name).read_bytes().count(b"\n") for name in listed.splitlines() if pathlib.Path(name).exists()
         and re.search(r"\.(cpp|h|py|sh)$|(^|/)run$|CMakeLists\.txt$|^(test|bench)$", name)}


def count(pattern):
    return sum(number for name, number in lines.items() if re.match(pattern, name))


program, tests = count("src/"), count("tests/|test$|bench$")
suites = count("tests/core/|tests/shell/|tests/ui/(?!driver/|target/|soak/)")
print(f"tests: {tests} lines, at most {program // 2}, since src has {program}; suites: {suites}, at most {SUITES}")
sys.exit(tests > program // 2 or suites > SUITES)
