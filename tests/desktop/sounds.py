"""Sounds for the tests of the real program, and the search for them in what was heard."""

import array
import pathlib
import random
import struct
import subprocess
import os

RATE = 44100
FRAME_BYTES = 4
SECOND_BYTES = RATE * FRAME_BYTES


def noise(frames, seed, peak=4000):
    """Interleaved 16-bit stereo that occurs nowhere else and has no silent frame."""
    source = random.Random(seed)
    samples = array.array("h", (source.randrange(1, peak) for _ in range(2 * frames)))
    return samples.tobytes()


def wav(data, channels=2, bits=16):
    """A WAV file as the editor writes one without markers."""
    frame = channels * bits // 8
    head = struct.pack("<4sI4s4sIHHIIHH4sI", b"RIFF", 36 + len(data), b"WAVE", b"fmt ", 16, 1, channels,
                       RATE, RATE * frame, frame, bits, b"data", len(data))
    return head + data


def write_wav(path, data, channels=2, bits=16):
    path = pathlib.Path(path)
    path.write_bytes(wav(data, channels, bits))
    return path


def read_format(path):
    """Channels and bits of a WAV file."""
    channels, bits = struct.unpack_from("<H10xH", pathlib.Path(path).read_bytes(), 22)
    return channels, bits


def read_data(path):
    """The bytes of a WAV file's data chunk."""
    content = pathlib.Path(path).read_bytes()
    place = 12
    while place + 8 <= len(content):
        name, size = struct.unpack_from("<4sI", content, place)
        if name == b"data":
            return content[place + 8:place + 8 + size]
        place += 8 + size + size % 2
    raise AssertionError(f"{path} has no data chunk")


def batch(script):
    """What sonavel-batch prints for a script."""
    program = pathlib.Path(os.environ["SONAVEL_BIN"]) / "sonavel-batch"
    return subprocess.run([program, "-c", script], capture_output=True, text=True, check=True).stdout


def longest_run(heard, sound):
    """Seconds of the longest stretch of the sound that was heard sample for sample, and its first byte
    in both: (seconds, place in heard, place in the sound)."""
    best = (0.0, -1, -1)
    step = SECOND_BYTES // 4
    for start in range(0, len(sound) - step + 1, step):
        found = heard.find(sound[start:start + step])
        if found < 0 or found % FRAME_BYTES:
            continue
        first, last = start, start + step
        shift = found - start
        while first >= FRAME_BYTES and first + shift >= FRAME_BYTES and (
                sound[first - FRAME_BYTES:first] == heard[first + shift - FRAME_BYTES:first + shift]):
            first -= FRAME_BYTES
        while last < len(sound) and (
                sound[last:last + FRAME_BYTES] == heard[last + shift:last + shift + FRAME_BYTES]):
            last += FRAME_BYTES
        best = max(best, ((last - first) / SECOND_BYTES, first + shift, first))
    return best
