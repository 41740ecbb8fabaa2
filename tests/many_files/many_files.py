"""Runs the examples of the page on many files as they stand there: every file is placed, one that
fails stops no other, and the same lines again do what is missing and nothing else.

The array of Slurm is run as one job after the other, with the number that Slurm would give each.

usage: many_files.py xargs|parallel|slurm PAGE SONAVEL-BATCH
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import wave

SKIPPED = 77


def blocks_below(page, heading):
    """The indented blocks of a section, without their indentation."""
    section = re.search(rf"^## {re.escape(heading)}$(.*?)(?=^## |\Z)", page, re.M | re.S).group(1)
    blocks, lines = [], []
    for line in section.splitlines() + ["end"]:
        if line.startswith("    "):
            lines.append(line[4:])
        elif line.strip() and lines:
            blocks.append("\n".join(lines) + "\n")
            lines = []
        elif lines:
            lines.append("")
    return blocks


def write_sound(path):
    path.parent.mkdir(parents=True, exist_ok=True)
    with wave.open(str(path), "wb") as sound:
        sound.setnchannels(1)
        sound.setsampwidth(2)
        sound.setframerate(8000)
        sound.writeframes(b"".join((i * 37 % 9000).to_bytes(2, "little") for i in range(400)))


def run(commands, folder, program):
    environment = dict(os.environ, PATH=f"{program.parent}{os.pathsep}{os.environ['PATH']}")
    return subprocess.run(["sh", "-c", commands], cwd=folder, env=environment).returncode


def placed(folder):
    """The results' names with the time at which each was written."""
    out = folder / "out"
    names = {str(p.relative_to(out)): p.stat().st_mtime_ns for p in out.rglob("*.wav")}
    for name in names:
        with wave.open(str(out / name)) as sound:
            assert (sound.getnchannels(), sound.getnframes()) == (2, 400), name
    return names


def run_array(script, folder, program):
    """Every job of the array; the worst of their exit codes."""
    jobs = (folder / "names.txt").read_text().splitlines()
    (folder / "job").write_text(script)
    return max(run(f"SLURM_ARRAY_TASK_ID={number} sh job", folder, program)
               for number in range(1, len(jobs) + 1))


def check(example, page, folder, program):
    script = folder / "place-one"
    script.write_text(blocks_below(page, "A script for one file")[0])
    script.chmod(0o755)
    names = [f"{i}.wav" for i in range(4)] + ["with blanks/a b.wav"]
    for name in names:
        write_sound(folder / "in" / name)
    broken = folder / "in" / "broken.wav"
    broken.write_bytes(b"RIFF")
    title, carry_out = EXAMPLES[example]
    blocks = blocks_below(page, title)
    (folder / "names.txt").write_text("\n".join(names + ["broken.wav"]) + "\n")
    assert carry_out(blocks[0], folder, program) != 0
    first = placed(folder)
    assert sorted(first) == sorted(names), first
    write_sound(broken)
    assert carry_out(blocks[-1], folder, program) == 0
    again = placed(folder)
    assert sorted(again) == sorted(names + ["broken.wav"]), again
    assert all(again[name] == time for name, time in first.items())


EXAMPLES = {
    "xargs": ("One machine, with xargs", run),
    "parallel": ("One machine, with GNU parallel", run),
    "slurm": ("Many machines, with Slurm", run_array),
}


def main():
    example, page, program = sys.argv[1], sys.argv[2], pathlib.Path(sys.argv[3])
    if example != "slurm" and not shutil.which(example):
        print(f"{example} is not installed")
        return SKIPPED
    with tempfile.TemporaryDirectory() as folder:
        check(example, pathlib.Path(page).read_text(), pathlib.Path(folder), program)
    return 0


if __name__ == "__main__":
    sys.exit(main())
