"""Holds the sizes of files and functions: headers, sources, and how long functions are.

Relies on the format that scripts/format gives: a function's closing brace stands alone at the indent of
the line that began its definition.
"""

import pathlib
import re
import subprocess
import sys

MAX_HEADER_LINES = 250
MAX_SOURCE_LINES = 500
MAX_FUNCTION_LINES = 60
SHORT_FUNCTION_LINES = 20
SHARE_OF_SHORT_FUNCTIONS = 0.9

# Exceptions, each with its reason.
LONG_FILES = {}
LONG_FUNCTIONS = {}

NOT_A_FUNCTION = re.compile(r"^\s*(namespace|class|struct|enum|union|extern|if|for|while|switch|do|else|try|catch)\b")
OPENS = re.compile(r"^( *)[^\s#/].*[^=]\{$|^( *)\S.*\) \{$")


def functions(lines):
    """Yields (first line number, length) of each function definition."""
    index = 0
    while index < len(lines):
        line = lines[index]
        match = OPENS.match(line)
        if match and not NOT_A_FUNCTION.match(line) and (")" in line or "noexcept" in line):
            indent = len(line) - len(line.lstrip())
            start = index
            if indent not in (0, 4) or line.lstrip().startswith(("}", ":")):
                index += 1
                continue
            end = next(
                (i for i in range(index + 1, len(lines)) if re.match(rf"^ {{{indent}}}\}}", lines[i])),
                index,
            )
            yield start + 1, end - start + 1
            index = end
        index += 1


def main():
    files = subprocess.run(
        ["git", "ls-files", "src/*.cpp", "src/*.h"], capture_output=True, text=True, check=True
    ).stdout.split()
    faults, lengths = [], []
    for name in files:
        if re.search(r"_data\.(cpp|inc)$", name):
            continue
        lines = pathlib.Path(name).read_text(encoding="utf-8").splitlines()
        limit = MAX_HEADER_LINES if name.endswith(".h") else MAX_SOURCE_LINES
        if len(lines) > limit and name not in LONG_FILES:
            faults.append(f"{name}: {len(lines)} lines, at most {limit}")
        for start, length in functions(lines):
            lengths.append(length)
            if length > MAX_FUNCTION_LINES and f"{name}:{lines[start - 1]}" not in LONG_FUNCTIONS:
                faults.append(f"{name}:{start}: a function of {length} lines, at most {MAX_FUNCTION_LINES}")
    short = sum(1 for length in lengths if length < SHORT_FUNCTION_LINES)
    if lengths and short < SHARE_OF_SHORT_FUNCTIONS * len(lengths):
        faults.append(f"only {short} of {len(lengths)} functions are under {SHORT_FUNCTION_LINES} lines")
    print("\n".join(faults), end="\n" if faults else "")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
