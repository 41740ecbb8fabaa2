"""Imports every truncation and thousands of mutations of small sound files of all formats.

Each must end by itself in time, with a sound or with one sentence, and within its memory. What does not is
kept in the folder "faults". Usage:

    break_imports.py SONAVEL_BATCH FOLDER [--mutations N] [--cuts N] [--seed N] [--only PATTERN]
                     [--without-ffmpeg] [--no-memory]

--without-ffmpeg hides that program, which is asked about every file that the codec program does not know and
takes a fifth of a second to start. --no-memory is for programs with sanitizers, which need memory of their own.
"""

import argparse
import collections
import os
import pathlib
import random
import re
import select
import shutil
import subprocess
import sys
import time

from foreign_corpus import write_corpus

MOST_SECONDS = 10
SKIPPED = 77
SPARE_KILOBYTES = 64 * 1024
EDGES = (0, 1, 2, 0x7F, 0x80, 0xFE, 0xFF)
WORDS = (b"\0\0\0\0", b"\xff\xff\xff\xff", b"\x7f\xff\xff\xff", b"\xff\xff\xff\x7f", b"\x80\0\0\0", b"\0\0\0\x80",
         b"\1\0\0\0", b"\0\0\0\1", b"%s%n", b"\xff\xff\xff\xfe", b"\xfe\xff\xff\xff")


def cuts(size, most):
    """Every length of a small file; of a larger one those of its head and tail, and steps between."""
    if size <= most:
        return range(size)
    ends = most // 4
    step = max((size - 2 * ends) // (most - 2 * ends), 1)
    return [*range(ends), *range(ends, size - ends, step), *range(size - ends, size)]


def place(data, dice):
    """Heads and chunk names at the end are where most goes wrong."""
    reach = dice.choice((64, 256, len(data), len(data)))
    at = dice.randrange(max(min(reach, len(data)), 1))
    return at if dice.random() < 0.8 else max(len(data) - 1 - at, 0)


def change_once(data, dice):
    at, kind = place(data, dice), dice.randrange(6)
    if kind == 0:
        data[at:at + 1] = bytes([dice.choice(EDGES)])
    elif kind == 1:
        data[at:at + 1] = bytes([dice.randrange(256)])
    elif kind == 2:
        word = dice.choice(WORDS)
        data[at:at + len(word)] = word
    elif kind == 3:
        del data[at:at + dice.randrange(1, 40)]
    elif kind == 4:
        data[at:at] = bytes(dice.randrange(256) for _ in range(dice.randrange(1, 20)))
    else:
        start = place(data, dice)
        data[at:at] = data[start:start + dice.randrange(1, 200)]


def mutated(whole, dice):
    data = bytearray(whole)
    for _ in range(dice.randrange(1, 4)):
        change_once(data, dice)
    return bytes(data)


class Importer:
    """Runs the batch tool on one file after the other and keeps those with which it goes wrong."""

    def __init__(self, asked):
        self.batch, self.folder, self.checks_memory = asked.batch, asked.folder, not asked.no_memory
        self.environment = {**os.environ, "PATH": "/nonexistent"} if asked.without_ffmpeg else None
        self.faults = asked.folder / "faults"
        self.faults.mkdir(parents=True, exist_ok=True)
        self.ends = collections.Counter()
        self.reasons = collections.Counter()
        self.slowest, self.largest, self.with_decoders = 0.0, 0, 0

    def run(self, name, data):
        path = self.folder / f"broken{pathlib.Path(name).suffix}"
        path.write_bytes(data)
        began = time.monotonic()
        child = subprocess.Popen([self.batch, "-c", f'import "{path}"; info; markers; tags'],
                                 stdout=subprocess.PIPE, stderr=subprocess.STDOUT, env=self.environment)
        output, peak, hung = self.watch(child, began)
        taken = time.monotonic() - began
        self.slowest, self.largest = max(self.slowest, taken), max(self.largest, peak)
        self.ends[child.returncode] += 1
        fault = self.fault_of(child.returncode, output, hung, peak)
        if fault:
            self.keep(name, data, fault, output)
        elif child.returncode == 1:
            self.reasons[output.strip().rsplit(": ", 1)[-1]] += 1
        path.unlink()

    def watch(self, child, began):
        """Its output, the greatest memory that was seen of it alone, and whether it had to be killed."""
        process, output, peak, hung = f"/proc/{child.pid}/status", b"", 0, False
        while True:
            # What it prints last comes when all is in its memory, and it waits for the pipe to be read.
            ready = select.select([child.stdout], [], [], 0.005)[0]
            peak = max(peak, peak_kilobytes(process))
            if ready:
                piece = os.read(child.stdout.fileno(), 65536)
                output += piece
                if not piece:
                    break
            if not hung and time.monotonic() - began > MOST_SECONDS:
                hung = True
                child.kill()
        _, status, usage = os.wait4(child.pid, 0)
        child.returncode = os.waitstatus_to_exitcode(status)
        child.stdout.close()
        # What the system counted is the greatest of the tool and its decoders: never less than the tool's own.
        self.with_decoders = max(self.with_decoders, usage.ru_maxrss)
        return output.decode("utf-8", "replace"), peak, hung

    def fault_of(self, status, output, hung, peak):
        if hung:
            return "took too long"
        if status not in (0, 1):
            return f"ended with {status}"
        if "Sanitizer" in output or "runtime error" in output:
            return "was caught by a sanitizer"
        sound = re.search(r" bytes=(\d+) ", output)
        kilobytes = int(sound.group(1)) // 1024 if sound else 0
        if self.checks_memory and peak > kilobytes + SPARE_KILOBYTES:
            return f"took {peak} KB for a sound of {kilobytes} KB"
        if status == 1 and not output.rstrip().endswith("."):
            return "gave no sentence"
        if "makes no sense" in output:
            return "had a decoder that did not keep to its protocol"
        return None

    def keep(self, name, data, fault, output):
        self.ends["faults"] += 1
        kept = self.faults / f"{self.ends['faults']:04}-{name}"
        kept.write_bytes(data)
        print(f"{kept}: {fault}: {output.strip()[-300:]}", flush=True)


def peak_kilobytes(process):
    try:
        with open(process, encoding="ascii", errors="replace") as file:
            found = re.search(r"VmHWM:\s+(\d+)", file.read())
    except OSError:
        return 0
    return int(found.group(1)) if found else 0


def main():
    words = argparse.ArgumentParser()
    words.add_argument("batch", type=lambda text: pathlib.Path(text).resolve())
    words.add_argument("folder", type=lambda text: pathlib.Path(text).resolve())
    words.add_argument("--mutations", type=int, default=20000)
    words.add_argument("--cuts", type=int, default=400)
    words.add_argument("--seed", type=int, default=1)
    words.add_argument("--only", default="")
    words.add_argument("--without-ffmpeg", action="store_true")
    words.add_argument("--no-memory", action="store_true")
    asked = words.parse_args()
    for program in ("sox", "ffmpeg"):
        if not shutil.which(program):
            print(f"{program}, which writes the sound files, is not installed")
            sys.exit(SKIPPED)
    files = [path for path in write_corpus(asked.folder / "corpus") if re.search(asked.only, path.name)]
    importer = Importer(asked)
    dice = random.Random(asked.seed)
    for index, path in enumerate(files):
        whole = path.read_bytes()
        for size in cuts(len(whole), asked.cuts):
            importer.run(path.name, whole[:size])
        share = asked.mutations * (index + 1) // len(files) - asked.mutations * index // len(files)
        for _ in range(share):
            importer.run(path.name, mutated(whole, dice))
        print(f"{path.name}: {dict(importer.ends)}, slowest {importer.slowest:.1f} s, "
              f"largest {importer.largest // 1024} MB, with decoders {importer.with_decoders // 1024} MB", flush=True)
    for reason, count in importer.reasons.most_common(30):
        print(f"{count:7} {reason}")
    sys.exit(1 if importer.ends["faults"] else 0)


if __name__ == "__main__":
    main()
