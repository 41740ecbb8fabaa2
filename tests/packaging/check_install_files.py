"""What is installed beside the programs says what they say. Usage: check_install_files.py BUILD SOURCE"""

import pathlib
import re
import shutil
import subprocess
import sys

BUILD, SOURCE = map(pathlib.Path, sys.argv[1:])
MADE = BUILD / "install-files"


def output(*command):
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout


def check(name, *command):
    """Runs one who judges such files, where this machine has one."""
    if shutil.which(command[0]):
        done = subprocess.run(command, capture_output=True, text=True, check=False)
        assert done.returncode == 0 and not done.stderr.strip(), f"{name}: {done.stdout}{done.stderr}"
    else:
        print(f"not checked, no {command[0]}: {name}")


def check_man_pages():
    for program, indent in (("sonavel", r"^ +(?:-\w, +)?(--[a-z]+)"), ("sonavel-batch", r"^  ([a-z0-9][a-z0-9-]*)")):
        words = re.findall(indent, output(BUILD / "bin" / program, "--help"), re.M)
        page = MADE / f"{program}.1"
        text = page.read_text(encoding="utf-8").replace("\\-", "-")
        missing = [word for word in words if not re.search(rf"\\fB(-\w, )?{word}\b", text)]
        assert len(words) >= 5 and not missing, f"{page} is silent on {missing}"
        check(page, "man", "--warnings", "--local-file", page)


def check_versions():
    version = output(BUILD / "bin/sonavel", "--version").split()[1]
    assert output(BUILD / "bin/sonavel-batch", "--version").split()[1] == version
    changes = (SOURCE / "CHANGELOG.md").read_text(encoding="utf-8")
    assert re.search(r"^## (\S+)", changes, re.M)[1] == version, "CHANGELOG.md begins with another version"
    debian = (SOURCE / "packaging/debian/changelog").read_text(encoding="utf-8")
    assert debian.startswith(f"sonavel ({version}) "), "the package's changelog has another version"


def check_desktop_files():
    for file in (SOURCE / "packaging/desktop").glob("*.desktop"):
        check(file, "desktop-file-validate", file)
    for file in MADE.glob("*.metainfo.xml"):
        check(file, "appstreamcli", "validate", "--no-net", file)


check_man_pages()
check_versions()
check_desktop_files()
print("what is installed agrees with the programs")
