"""Holds that sources which may be compiled together do not use one name for two things.

Sources are compiled several at a time (see cmake/SonavelModules.cmake), so a name in an unnamed
namespace belongs to all sources of the program or library. Two may share one where all but one of
them stand under ALONE in the CMakeLists.txt.

Relies on the format that scripts/format gives: what a namespace holds begins at the start of a line.
"""

import collections
import pathlib
import re
import subprocess
import sys

JOINED = re.compile(r"^\s*sonavel_(module|ui_module|tests|join_sources)\(", re.MULTILINE)
ALONE = re.compile(r"\bALONE\b([^)A-Z]*)")
# Types, names of types, values and functions; a line that is indented belongs to one of them.
DECLARED = re.compile(
    r"^(?:template <.*> )?(?:"
    r"(?:class|struct|enum(?: class)?|union) (?P<type>\w+)(?=[ ;:{])(?!.*\()"
    r"|using (?P<alias>\w+) ="
    r"|(?!namespace|using|template|return|TEST|INSTANTIATE|static_assert)\w[\w:<>,*& ]*[\w>*&] [*&]?(?P<name>\w+)"
    r"(?P<mark>\[|\(| =|\{|;)(?P<rest>.*))"
)
PARAMETER_NAME = re.compile(r"[\w\]]+(?: = [^,)]*)?(?=[,)])")


def local_names(text):
    """Yields (name, meaning) of what the unnamed namespaces of a source declare: functions with the types
    that they take, and the meaning of an alias, since two that mean the same do not disturb each other.
    """
    depth = 0
    lines = text.splitlines()
    for number, line in enumerate(lines):
        if re.match(r"namespace \{", line):
            depth += 1
        elif depth and re.match(r"\}  // namespace$", line):
            depth -= 1
        elif depth:
            match = DECLARED.match(line)
            if match and match["mark"] == "(" and not re.match("k[A-Z]", match["name"]):
                yield f"{match['name']}({parameter_types(match['rest'], lines[number + 1:number + 9])})", None
            elif match:
                yield match["type"] or match["alias"] or match["name"], match["alias"] and line


def parameter_types(rest, lines_below):
    text = " ".join([rest, *(line.strip() for line in lines_below)])
    end = next((i for i in range(len(text)) if text[:i + 1].count(")") > text[:i + 1].count("(")), len(text))
    return PARAMETER_NAME.sub("", text[:end + 1])[:-1].strip()


def groups():
    """Yields (folder, sources, those that are alone) of each library and program that is joined."""
    files = subprocess.run(["git", "ls-files", "src", "tests"], capture_output=True, text=True,
                           check=True).stdout.split()
    lists = {str(pathlib.Path(f).parent): pathlib.Path(f).read_text(encoding="utf-8")
             for f in files if f.endswith("/CMakeLists.txt")}
    for folder, text in lists.items():
        if not JOINED.search(text):
            continue
        sources = [f for f in files if f.endswith(".cpp") and owner(f, lists) == folder]
        alone = {f"{folder}/{name}" for words in ALONE.findall(text) for name in words.split()}
        yield folder, sources, alone


def owner(file, lists):
    return next(str(parent) for parent in pathlib.Path(file).parents if str(parent) in lists)


def faults():
    for folder, sources, alone in groups():
        yield from (f"{folder}/CMakeLists.txt: there is no {name}" for name in sorted(alone - set(sources)))
        users = collections.defaultdict(dict)
        for source in set(sources) - alone:
            for name, meaning in local_names(pathlib.Path(source).read_text(encoding="utf-8")):
                users[name][source] = meaning or source
        for name, meanings in sorted(users.items()):
            if len(set(meanings.values())) > 1:
                yield f"{name} means something else in each of {', '.join(sorted(meanings))}"


def main():
    found = list(faults())
    print("\n".join(found), end="\n" if found else "")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
