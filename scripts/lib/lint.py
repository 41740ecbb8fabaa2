"""Runs clang-tidy on sources, all cores at once, and passes by what has not changed since it last passed.

Usage: lint.py BUILD-FOLDER [--changed-since COMMIT PATTERN] SOURCE...
Sources that the build joins are read together, which spares reading the same headers for each of them.
Of the sources whose path matches the pattern, those are left out that read nothing that the commit did not
have: neither the source nor a header of the project, however deep.
"""

import argparse
import concurrent.futures
import functools
import hashlib
import json
import os
import pathlib
import re
import subprocess
import sys

INCLUDE = re.compile(r'^#include "([^"]+)"', re.MULTILINE)
# A joined source includes sources, and what is found in those counts.
JOINED = ["--checks=-bugprone-suspicious-include", r"--header-filter=/src/.*\.(h|cpp)$"]


@functools.cache
def text_of(file):
    return pathlib.Path(file).read_text(encoding="utf-8")


@functools.cache
def read_by(file):
    """The file and the headers of the project that it reads."""
    found, waiting = set(), [file]
    while waiting:
        path = waiting.pop()
        if path in found:
            continue
        found.add(path)
        for name in INCLUDE.findall(text_of(path)):
            beside = str(pathlib.Path(path).parent / name)
            waiting += [place for place in (f"src/{name}", beside) if pathlib.Path(place).exists()][:1]
    return frozenset(found)


def changed_since(commit):
    names = subprocess.run(["git", "diff", "--name-only", commit, "--", "src"], capture_output=True,
                           text=True, check=True).stdout
    return set(names.split())


class Unit:
    """What is compiled, and so read, in one go: a source, or several that the build joins."""

    def __init__(self, row):
        self.file = os.path.relpath(row["file"])
        self.command = row["command"]
        self.joined = "/Unity/" in self.file
        self.sources = [self.file]
        if self.joined:
            self.sources = [os.path.relpath(name) for name in INCLUDE.findall(text_of(self.file))]

    def read(self):
        return frozenset().union(*(read_by(source) for source in self.sources))

    def fingerprint(self, linter):
        digest = hashlib.sha256()
        for part in (linter, text_of(".clang-tidy"), self.command, *map(text_of, sorted(self.read()))):
            digest.update(part.encode())
            digest.update(b"\0")
        return digest.hexdigest()


def units(folder):
    rows = json.loads((folder / "compile_commands.json").read_text(encoding="utf-8"))
    return [Unit(row) for row in rows]


def lint(folder, unit, linter):
    """What clang-tidy says, empty when nothing; then it need not look again before something changes."""
    mark = unit.fingerprint(linter)
    passed = folder / "passed" / unit.file.replace("/", "__")
    if passed.exists() and passed.read_text(encoding="utf-8") == mark:
        return ""
    done = subprocess.run(["clang-tidy", "--quiet", "-p", str(folder), *(JOINED if unit.joined else []), unit.file],
                          capture_output=True, text=True, check=False)
    if done.returncode == 0:
        passed.write_text(mark, encoding="utf-8")
        return ""
    return done.stdout or done.stderr


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("folder", type=pathlib.Path)
    parser.add_argument("--changed-since", nargs=2, metavar=("COMMIT", "PATTERN"))
    parser.add_argument("sources", nargs="+")
    words = parser.parse_args()
    sources = set(words.sources)
    if words.changed_since:
        commit, pattern = words.changed_since
        changed = changed_since(commit)
        sources = {s for s in sources if not re.search(pattern, s) or read_by(s) & changed}
    (words.folder / "passed").mkdir(exist_ok=True)
    linter = subprocess.run(["clang-tidy", "--version"], capture_output=True, text=True, check=True).stdout
    chosen = [unit for unit in units(words.folder) if not sources.isdisjoint(unit.sources)]
    with concurrent.futures.ThreadPoolExecutor(len(os.sched_getaffinity(0))) as workers:
        runs = [workers.submit(lint, words.folder, unit, linter) for unit in chosen]
        findings = [run.result() for run in runs]
    print("".join(findings), end="")
    return 1 if any(findings) else 0


if __name__ == "__main__":
    sys.exit(main())
