"""Tasks of every day by keys alone, each within the steps that it may take. Names that are typed are no
steps. Usage: daily_steps.py TASK"""

import array
import pathlib
import re
import struct
import sys
import time

import sounds
from editor_driver import Editor, key, pixels_of, place_of, settled_pixels, type_text, wait_for

LOW_RATE = 8000
CHAPTERS = 40


class Steps:
    """Keys that count."""

    def __init__(self):
        self.taken = 0

    def press(self, name):
        key(name)
        self.taken += 1


def low_rate_wav(path, seconds):
    """8-bit mono at 8000 Hz, so that long sounds are small."""
    content = bytearray(sounds.wav(bytes(range(64, 192)) * (seconds * LOW_RATE // 128), channels=1, bits=8))
    content[24:32] = struct.pack("<II", LOW_RATE, LOW_RATE)
    path = pathlib.Path(path)
    path.write_bytes(content)
    return path


def saved_markers(editor):
    """Position and name of each marker, as a save keeps them."""
    editor.save_as(pathlib.Path("saved.wav").absolute())
    lines = sounds.batch('open "saved.wav"; markers').splitlines()
    return [(int(re.search(r"position=(\d+)", line)[1]), re.search(r'name="(.*)"', line)[1])
            for line in lines]


def saved_samples(editor):
    editor.save_as(pathlib.Path("saved.wav").absolute())
    return array.array("h", sounds.read_data("saved.wav"))


def go_to_a_time(steps):
    with Editor(low_rate_wav("long.wav", 1100)) as editor:
        editor.wait_title("Sonavel - long.wav")
        steps.press("ctrl+g")
        dialog = editor.wait_dialog("^Go to Cursor$")
        type_text("17:21.5")
        steps.press("Return")
        editor.wait_dialog_gone(dialog)
        key("m")
        assert [place for place, _ in saved_markers(editor)] == [int(1041.5 * LOW_RATE)]
    return 2


def undo_and_be_back(steps):
    """The cut is the person's; Undo and the way back are what is counted."""
    with Editor(sounds.write_wav("take.wav", sounds.noise(4 * sounds.RATE, seed=3))) as editor:
        editor.wait_title("Sonavel - take.wav")
        key("Up", "Up", "Up")
        _, _, width, height = place_of(editor.window)
        # Waveform and ruler, without bars and cursor.
        area = f"{width // 2}x{height * 3 // 4}+{width // 4}+{height * 3 // 20}"
        before = settled_pixels(editor.window, area)
        key(*["shift+Right"] * 4)
        wait_for("a selection", lambda: pixels_of(editor.window) != before)
        key("ctrl+x")
        editor.wait_title("Sonavel - take.wav*")
        steps.press("ctrl+z")
        wait_for("Undo's own zoom", lambda: settled_pixels(editor.window, area) != before)
        steps.press("alt+Left")
        wait_for("the place from before", lambda: pixels_of(editor.window, area) == before)
    return 2


def fade_in(steps):
    level = 8000
    sound = array.array("h", [level] * 2 * sounds.RATE).tobytes()
    with Editor(sounds.write_wav("level.wav", sound)) as editor:
        editor.wait_title("Sonavel - level.wav")
        steps.press("ctrl+a")
        steps.press("ctrl+alt+i")
        editor.wait_title("Sonavel - level.wav*")
        faded = saved_samples(editor)
        middle = len(faded) // 2
        assert abs(faded[0]) <= 1 and faded[-1] >= level - 1, (faded[0], faded[-1])
        assert abs(faded[middle] - level // 2) <= 2, faded[middle]
    return 2


def normalise(steps):
    with Editor(sounds.write_wav("quiet.wav", sounds.noise(sounds.RATE, seed=4))) as editor:
        editor.wait_title("Sonavel - quiet.wav")
        steps.press("ctrl+alt+n")
        dialog = editor.wait_dialog("^Normalise$")
        steps.press("Return")
        editor.wait_dialog_gone(dialog)
        editor.wait_title("Sonavel - quiet.wav*")
        peak = max(map(abs, saved_samples(editor)))
        assert abs(peak - 32768 * 10 ** (-1 / 20)) <= 2, f"the peak is {peak}"
    return 2


def chapter_while_playing(steps):
    with Editor(sounds.write_wav("talk.wav", sounds.noise(6 * sounds.RATE, seed=5))) as editor:
        editor.wait_title("Sonavel - talk.wav")
        key("space")
        time.sleep(0.5)
        steps.press("shift+m")
        type_text("The first one")
        steps.press("Return")
        key("space")
        (place, name), = saved_markers(editor)
        assert name == "The first one", name
        assert 0 < place < 6 * sounds.RATE, f"the marker stands at {place}"
    return 2


def export_chapters(steps):
    low_rate_wav("book.wav", CHAPTERS)
    adds = "; ".join(f'marker-add {number * LOW_RATE} name="Part"' for number in range(CHAPTERS))
    sounds.batch(f'open "book.wav"; {adds}; save')
    with Editor(pathlib.Path("book.wav").absolute()) as editor:
        editor.wait_title("Sonavel - book.wav")
        steps.press("ctrl+shift+e")
        dialog = editor.wait_dialog("^Export Regions$")
        steps.press("alt+f")
        steps.press("o")
        steps.press("Return")
        editor.wait_dialog_gone(dialog)
        wait_for("all files", lambda: len(list(pathlib.Path().glob("*_Part.ogg"))) == CHAPTERS)
    return 4


def main():
    task = globals()[sys.argv[1]]
    steps = Steps()
    start = time.monotonic()
    most = task(steps)
    seconds = time.monotonic() - start
    print(f"{sys.argv[1]}: {steps.taken} steps of {most}, {seconds:.1f} s")
    assert steps.taken <= most, "too many steps"


main()
