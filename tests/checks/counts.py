#!/usr/bin/env python3
"""The tests are at most a third of all that was written for the program and for them; the suites, without what drives the
program, have a limit of their own."""
import pathlib
import re
import subprocess
import sys

SUITES = 4500
files = subprocess.run(["git", "-c", "safe.directory=*", "ls-files"], capture_output=True, text=True, check=True).stdout.split("\n")


def count(folders):
    kind = re.compile(rf"(?:{folders})(.*(\.(cpp|h|py|sh)|\brun|CMakeLists\.txt))?$")
    return sum(pathlib.Path(name).read_bytes().count(b"\n") for name in files if kind.match(name) and pathlib.Path(name).exists())


program, tests = count("src/"), count("tests/|test|bench")
suites = count("tests/core/|tests/shell/|tests/ui/(?!driver/|target/|soak/)")
print(f"tests: {tests} lines, at most {program // 2}, since src has {program}; suites: {suites}, at most {SUITES}")
sys.exit(tests > program // 2 or suites > SUITES)
