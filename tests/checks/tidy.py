#!/usr/bin/env python3
"""tidy.py [--all | FILE...]: runs clang-tidy over our sources, as .clang-tidy says. Without arguments over those that
differ from the last commit, or include what does; with --all, or VEXTREL_CHECK_ALL in the environment, over all.

Left out are the files with GoogleTest's cases: that header alone takes several seconds, and tables of cases give
little to find. Core files are read with the flags of the host build, the others with those of the Windows build. A file
that was found clean is not looked at again until it, a header of ours that it includes, its flags or the rules change:
the verdicts are kept in build/tidy under the hash of all of these."""
import concurrent.futures
import hashlib
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
VERDICTS = ROOT / "build/tidy"
RULES = [ROOT / ".clang-tidy", ROOT / "tests/.clang-tidy"]
MINGW = "x86_64-w64-mingw32"


def run(*command):
    return subprocess.run(command, cwd=ROOT, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)


def mingw_include_flags():
    """The folders of the cross-compiler's library, in its order, but without its own built-in headers: those are
    written for GCC, and clang has its own."""
    listed = run(f"{MINGW}-g++-posix", "-E", "-x", "c++", "/dev/null", "-v").stdout.split("search starts here:\n")[-1]
    folders = [os.path.normpath(folder) for folder in re.findall(r"^ (\S+)$", listed, re.M)]
    kept = [f for f in folders if "/c++" in f or f.endswith(f"{MINGW}/include")]
    return [f"--target={MINGW}", "-nostdinc++"] + [flag for f in kept for flag in ("-isystem", f)]


def jobs():
    """(file, flags, files it depends on) for every source file of ours, each once."""
    seen = set()
    for preset, extra in (("host", []), ("win64", mingw_include_flags())):
        build = ROOT / "build/obj" / preset
        # Per object file what it was last compiled from, as ninja recorded it.
        recorded = run("ninja", "-C", str(build), "-t", "deps").stdout.split("\n\n")
        uses = {part.split(":")[0].strip(): re.findall(r"^    (.+)$", part, re.M) for part in recorded}
        for entry in json.loads((build / "compile_commands.json").read_text()):
            file, command = pathlib.Path(entry["file"]), entry["command"]
            if file not in seen and ROOT in file.parents and ROOT / "build" not in file.parents and file.suffix == ".cpp":
                seen.add(file)
                flags = shlex.split(" ".join(re.findall(r"-(?:isystem|include) \S+|-(?:D|I|std=)\S+", command)))
                used = uses.get(re.search(r" -o (\S+)", command)[1], [])
                yield file, flags + ["-Wall", "-Wextra"] + extra, {os.path.normpath(build / name) for name in [file, *used]}


def examine(job, rules):
    """What was found, or None if the file is known to be clean."""
    file, flags, uses = job
    digest = hashlib.sha256(rules + "\0".join(flags).encode())
    for name in sorted(uses):
        digest.update(name.encode() + b"\0")
        # System headers count by name: an update that changes them changes clang-tidy's version or the folder, too.
        digest.update(pathlib.Path(name).read_bytes() if pathlib.Path(name).is_relative_to(ROOT) else b"")
    verdict = VERDICTS / digest.hexdigest()
    if verdict.exists():
        return None
    done = run("nice", "clang-tidy", "--quiet", str(file), "--", *flags)
    if done.returncode == 0:
        if len(uses) > 1: # otherwise it was not built yet, and what it includes is not known
            verdict.touch()
        return ""
    return f"--- {file.relative_to(ROOT)}\n" + re.sub(r".*warnings generated\.\n", "", done.stdout)


tool = run("bash", "tests/checks/llvm.sh", "clang-tidy")
if tool.returncode != 0:
    print(tool.stdout, end="")
    sys.exit(tool.returncode)
rules = b"".join(file.read_bytes() for file in RULES) + run("clang-tidy", "--version").stdout.encode()
VERDICTS.mkdir(parents=True, exist_ok=True)
everything = [job for job in jobs() if not job[0].name.endswith(("Test.cpp", "TestMain.cpp"))]
todo, which = everything, "all"
if sys.argv[1:] not in ([], ["--all"]):
    named = [pathlib.Path(name).resolve() for name in sys.argv[1:]]
    todo, which = [job for job in jobs() if job[0] in named], "named"
elif not sys.argv[1:] and "VEXTREL_CHECK_ALL" not in os.environ:
    status = run("git", "-c", "safe.directory=*", "status", "--porcelain", "--untracked-files=all").stdout
    changed = {str(ROOT / line[3:]) for line in status.splitlines()}
    todo, which = [job for job in everything if changed & {*job[2], *map(str, RULES)}], "differing from the last commit"
with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
    verdicts = list(pool.map(examine, todo, [rules] * len(todo)))
bad = [verdict for verdict in verdicts if verdict]
print("".join(bad) + f"{len(todo)} files ({which}) of {len(everything)}, {verdicts.count(None)} of them known to be clean, "
      f"{len(bad)} with findings")
sys.exit(bool(bad) or not (todo or which.startswith("differing")))
