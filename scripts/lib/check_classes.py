"""Holds how broad a class may be: the public functions that it declares."""

import pathlib
import re
import subprocess
import sys

MAX_PUBLIC_FUNCTIONS = 30

# Exceptions, each with its reason.
BROAD_CLASSES = {
    "CSoundDoc": "still forwards the edits, the history and the preview of its sound",
}

# What is read over: comments, texts and characters, lines of the preprocessor.
NOISE = re.compile(r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])+\'|^[ \t]*#(?:\\\n|[^\n])*',
                   re.DOTALL | re.MULTILINE)
TYPE = re.compile(r"\b(class|struct|union)\s+(?:\[\[[^]]*\]\]\s*)?(\w+)(?:\s+final)?\s*(?::[^;{()]*)?$")
ACCESS = re.compile(r"^\s*(?:(public|protected|private)(?:\s+\w+)?|Q_SIGNALS)\s*:(?!:)")
TEMPLATE_ARGUMENTS = re.compile(r"<[^<>]*>")
NOT_A_FUNCTION = re.compile(r"^\s*(using|typedef|friend|static_assert|enum|Q_[A-Z]+)\b")
FUNCTION = re.compile(r"\boperator\b|^[^=(]*\(")
NOT_OFFERED = re.compile(r"=\s*(delete|default)\s*$")


def statements(text):
    """Yields (head, body) of what stands in a text side by side; the body of what has none is None."""
    start = place = 0
    while place < len(text):
        if text[place] == ";":
            yield text[start:place], None
            start = place + 1
        elif text[place] == "{":
            end = closing_brace(text, place)
            yield text[start:place], text[place + 1:end]
            place = end
            start = place + 1
        place += 1


def closing_brace(text, place):
    depth = 0
    for end in range(place, len(text)):
        depth += {"{": 1, "}": -1}.get(text[end], 0)
        if depth == 0:
            return end
    return len(text)


def is_function(head):
    while TEMPLATE_ARGUMENTS.search(head):
        head = TEMPLATE_ARGUMENTS.sub("", head)
    return bool(FUNCTION.search(head)) and not NOT_A_FUNCTION.match(head) and not NOT_OFFERED.search(head)


def classes(text):
    """Yields (name, number of public functions) of each class that is defined in a text."""
    for head, body in statements(text):
        if body is None:
            continue
        match = TYPE.search(head)
        if match:
            kind, name = match.groups()
            yield name, public_functions(body, kind != "class")
            yield from ((f"{name}::{inner}", count) for inner, count in classes(body))
        elif re.search(r"\b(namespace|extern)\b", head):
            yield from classes(body)


def public_functions(body, public):
    count = 0
    for head, _ in statements(body):
        label = ACCESS.match(head)
        while label:
            public = label[1] in ("public", None)
            head = head[label.end():]
            label = ACCESS.match(head)
        count += public and is_function(head)
    return count


def main():
    files = subprocess.run(
        ["git", "ls-files", "src/*.h", "src/*.cpp"], capture_output=True, text=True, check=True
    ).stdout.split()
    faults, broad = [], set()
    for file in files:
        for name, count in classes(NOISE.sub(" ", pathlib.Path(file).read_text(encoding="utf-8"))):
            if count > MAX_PUBLIC_FUNCTIONS:
                broad.add(name)
                if name not in BROAD_CLASSES:
                    faults.append(f"{file}: {name} has {count} public functions, at most"
                                  f" {MAX_PUBLIC_FUNCTIONS}")
    faults += [f"scripts/lib/check_classes.py: {name} needs no exception" for name in BROAD_CLASSES
               if name not in broad]
    print("\n".join(faults), end="\n" if faults else "")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
