#!/usr/bin/env python3
"""Runs clang-tidy over our sources, as .clang-tidy says.

Left out are the files with GoogleTest's cases: that header alone takes several seconds, and tables of cases give
little to find. Core files are read with the flags of the host build, the others with those of the Windows build. A file that was
found clean is not looked at again until it, a header of ours that it includes, its flags or the rules change: the
verdicts are kept in build/tidy under the hash of all of these.

usage: tidy.py [FILE...]   without files: all that both builds compile, but for the cases
"""
import hashlib
import json
import os
import pathlib
import shlex
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
VERDICTS = ROOT / "build/tidy"
MINGW = "x86_64-w64-mingw32"


def run(*command):
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)


def mingw_include_flags():
    """The folders of the cross-compiler's library, in its order, but without its own built-in headers: those are
    written for GCC, and clang has its own."""
    out = run(f"{MINGW}-g++-posix", "-E", "-x", "c++", "/dev/null", "-v").stdout
    listed = out.split("search starts here:\n")[-1].split("End of search list.")[0].split("\n")
    folders = [os.path.normpath(line.strip()) for line in listed if line.startswith(" ")]
    kept = [f for f in folders if "/c++" in f or f.endswith(f"{MINGW}/include")]
    return [f"--target={MINGW}", "-nostdinc++"] + [flag for f in kept for flag in ("-isystem", f)]


def clang_flags(entry, extra):
    """The compiler's flags that mean something for reading the source: definitions, include folders, the standard."""
    flags, arguments = [], iter(shlex.split(entry["command"])[1:])
    for argument in arguments:
        if argument in ("-isystem", "-include"):
            flags += [argument, next(arguments)]
        elif argument.startswith(("-D", "-I", "-std=")):
            flags.append(argument)
    return flags + ["-Wall", "-Wextra"] + extra


def headers_of_objects(build):
    """Per object file what it was last compiled from, as ninja recorded it."""
    found, current = {}, None
    for line in run("ninja", "-C", str(build), "-t", "deps").stdout.splitlines():
        if line.startswith("    "):
            found[current].append(line.strip())
        elif line:
            current = line.split(":")[0]
            found[current] = []
    return found


def jobs(wanted):
    """(file, flags, files it depends on) for every source file of ours, each once; the host build goes first."""
    seen, result = set(), []
    for preset in ("host", "win64"):
        build = ROOT / "build/obj" / preset
        extra = mingw_include_flags() if preset == "win64" else []
        dependencies = headers_of_objects(build)
        for entry in json.loads((build / "compile_commands.json").read_text()):
            file = pathlib.Path(entry["file"])
            if file in seen or ROOT not in file.parents or ROOT / "build" in file.parents or file.suffix != ".cpp":
                continue
            seen.add(file)
            if file not in wanted if wanted else file.name.endswith(("Test.cpp", "TestMain.cpp")):
                continue
            arguments = shlex.split(entry["command"])
            uses = dependencies.get(arguments[arguments.index("-o") + 1])
            result.append((file, clang_flags(entry, extra), uses))
    return result


def fingerprint(flags, uses, rules):
    """Hash of all that the verdict depends on; None if the file's headers are not known. System headers count by
    name: a package update that changes them changes clang-tidy's version or the compiler's folder, too."""
    if uses is None:
        return None
    digest = hashlib.sha256(rules + "\0".join(flags).encode())
    for name in sorted(set(uses)):
        digest.update(name.encode() + b"\0")
        if pathlib.Path(name).is_relative_to(ROOT):
            digest.update(pathlib.Path(name).read_bytes() + b"\0")
    return digest.hexdigest()


def examine(job, rules):
    """Returns (file, verdict): '' is clean, None is clean and known from before."""
    file, flags, uses = job
    key = fingerprint(flags, uses, rules)
    if key and (VERDICTS / key).exists():
        return file, None
    done = run("clang-tidy", "--quiet", str(file), "--", *flags)
    if done.returncode != 0:
        lines = done.stdout.splitlines(keepends=True)
        return file, "".join(line for line in lines if not line.endswith("warnings generated.\n"))
    if key:
        (VERDICTS / key).touch()
    return file, ""


def main():
    tool = run("bash", str(ROOT / "tests/checks/llvm.sh"), "clang-tidy")
    if tool.returncode != 0:
        print(tool.stdout, end="")
        sys.exit(tool.returncode)
    rules = (ROOT / ".clang-tidy").read_bytes() + (ROOT / "tests/.clang-tidy").read_bytes()
    rules += run("clang-tidy", "--version").stdout.encode()
    VERDICTS.mkdir(parents=True, exist_ok=True)
    todo = jobs({pathlib.Path(name).resolve() for name in sys.argv[1:]})
    if not todo:
        sys.exit("nothing to look at: has it been built?")
    bad = known = 0
    for job in todo:
        file, verdict = examine(job, rules)
        known += verdict is None
        if verdict:
            bad += 1
            print(f"--- {file.relative_to(ROOT)}\n{verdict}")
    print(f"{len(todo)} files, {known} of them unchanged since they were found clean, {bad} with findings")
    sys.exit(1 if bad else 0)


if __name__ == "__main__":
    main()
