"""A sound of 32-bit floats reaches the device as floats, bit for bit, and is heard so."""

import array
import pathlib
import random
import struct

import sounds
from editor_driver import Editor, Monitor, key, wait_for
from sound_server import SoundServer

SECONDS = 2
FRAME_BYTES = 8
LEAST_SHARE_IN_A_ROW = 0.5


def float_noise(frames, seed):
    """Interleaved stereo of numbers between the steps of 16 bits, no frame of it silent."""
    source = random.Random(seed)
    return array.array("f", (source.uniform(1e-4, 0.5) for _ in range(2 * frames))).tobytes()


def write_float_wav(path, data):
    head = struct.pack("<4sI4s4sIHHIIHHH4sI", b"RIFF", 38 + len(data), b"WAVE", b"fmt ", 18, 3, 2, sounds.RATE,
                       sounds.RATE * FRAME_BYTES, FRAME_BYTES, 32, 0, b"data", len(data))
    path.write_bytes(head + data)
    return path


def longest_share(heard, sound):
    """The share of the sound that was heard in one piece, from any of its tenths on."""
    best = 0
    step = len(sound) // 10 // FRAME_BYTES * FRAME_BYTES
    for start in range(0, len(sound) - step + 1, step):
        place = heard.find(sound[start:start + step])
        if place < 0:
            continue
        end = start
        while end + FRAME_BYTES <= len(sound) and (
                sound[end:end + FRAME_BYTES] == heard[place + end - start:place + end - start + FRAME_BYTES]):
            end += FRAME_BYTES
        best = max(best, end - start)
    return best / len(sound)


def main():
    sound = float_noise(SECONDS * sounds.RATE, seed=41)
    path = write_float_wav(pathlib.Path("float.wav").absolute(), sound)
    with SoundServer("floats", "float32le") as server, \
            Editor(environment=server.environment()) as editor:
        editor.open(path)
        box = editor.wait_dialog("^Sonavel$")
        key("Return")
        editor.wait_dialog_gone(box)
        editor.wait_title("Sonavel - float.wav")
        with Monitor("heard.raw", server.recording_command(), server.environment()) as monitor:
            key("space")
            formats = wait_for("the sound's stream", server.formats)
            wait_for("the sound to end", lambda: not server.plays())
            share = longest_share(monitor.heard(), sound)
        print(f"{formats[0]}: {share:.0%} of {SECONDS} s heard in a row, bit for bit")
        assert formats == ["float32le"], formats
        assert share >= LEAST_SHARE_IN_A_ROW, "the sound was not heard sample for sample"
        assert editor.quit() == 0


main()
