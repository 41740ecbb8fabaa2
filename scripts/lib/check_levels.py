"""Holds the levels of the source folders: a folder includes only from levels below its own."""

import pathlib
import re
import sys

LEVELS = {
    "platform": 0,
    "libraries": 0,
    "sound": 1,
    "codec": 2,
    "exchange": 2,
    "audio": 2,
    "document": 3,
    "recovery": 4,
    "view": 4,
    "catalogue": 4,
    "workspace": 5,
    "meter": 5,
    "properties": 5,
    "effects": 5,
    "spatial": 5,
    "view/ui": 6,
    "effects/ui": 6,
    "spatial/ui": 6,
    "catalogue/ui": 6,
    "meter/ui": 6,
    "properties/ui": 6,
    "platform/qt": 6,
    "platform/portaudio": 6,
    "platform/headless": 6,
    "codec/client": 6,
    "script": 6,
    "app": 7,
    "batch": 7,
    "codec/main": 7,
}
# The catalogue links to the toolkit's core alone, so the build keeps widgets out of it.
TOOLKIT_FOLDERS = {
    "catalogue", "view/ui", "effects/ui", "spatial/ui", "catalogue/ui", "meter/ui", "properties/ui",
    "platform/qt", "app",
}
# Adapters stand on the toolkit adapters beside them.
SAME_LEVEL_ALLOWED = {
    ("view/ui", "platform/qt"),
    ("effects/ui", "view/ui"),
    ("effects/ui", "platform/qt"),
    ("spatial/ui", "view/ui"),
    ("spatial/ui", "platform/qt"),
    ("spatial/ui", "effects/ui"),
    ("catalogue/ui", "platform/qt"),
    ("catalogue/ui", "platform/headless"),
    ("meter/ui", "view/ui"),
    ("meter/ui", "platform/qt"),
    ("properties/ui", "view/ui"),
    ("properties/ui", "platform/qt"),
    ("script", "platform/headless"),
    ("script", "codec/client"),
}
LIBRARY_HEADERS = {"soxr.h", "ebur128.h", "SoundTouch.h", "soundtouch/SoundTouch.h"}
INCLUDE = re.compile(r'#include\s+([<"])([^>"]+)[>"]')


def folder_of(path):
    """The longest known folder that a path below src/ lies in."""
    parts = pathlib.PurePosixPath(path).parts[:-1]
    for length in range(len(parts), 0, -1):
        name = "/".join(parts[:length])
        if name in LEVELS:
            return name
    return None


def faults(file, root):
    own = folder_of(file.relative_to(root))
    for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
        match = INCLUDE.match(line)
        if not match:
            continue
        kind, target = match.groups()
        if kind == "<":
            if own not in TOOLKIT_FOLDERS and re.match(r"Q[A-Z]", target):
                yield f"{file}:{number}: the toolkit stays out of {own}"
            if own != "platform/portaudio" and target == "portaudio.h":
                yield f"{file}:{number}: the device library stays out of {own}"
            if own != "codec/main" and target in {"sndfile.h", "mysofa.h"}:
                yield f"{file}:{number}: decoders stay out of {own}"
            if own != "libraries" and target in LIBRARY_HEADERS:
                yield f"{file}:{number}: libraries show in no other folder than libraries"
            continue
        other = folder_of(target)
        if other is None or other == own or (own, other) in SAME_LEVEL_ALLOWED:
            continue
        if LEVELS[other] >= LEVELS[own]:
            yield f"{file}:{number}: {own} (level {LEVELS[own]}) includes {other} (level {LEVELS[other]})"


def main():
    root = pathlib.Path("src")
    found = [
        fault
        for file in sorted(root.rglob("*"))
        if file.suffix in {".h", ".cpp"}
        for fault in faults(file, root)
    ]
    print("\n".join(found), end="\n" if found else "")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
