"""A sound is placed at the right by keys: heard as a preview, stopped, applied, saved, taken back."""

import array
import math
import pathlib
import random

import sounds
from editor_driver import Editor, Monitor, key, type_text, wait_for

SECONDS = 6
RIGHT_LEVEL_NEAR = 10  # the number of the fixed point
# Of noise at the ear beside the source over noise at the ear behind the head.
LEAST_LOUDER = 2.0
LEAST_SECONDS_IN_A_ROW = 1.0


def loudness(data):
    """Root mean square of the left and the right channel of 16-bit stereo."""
    samples = array.array("h", data)
    channels = samples[0::2], samples[1::2]
    return [math.sqrt(sum(value * value for value in one) / len(one)) for one in channels]


def choose_point(editor, number):
    key("alt+d", "Return")
    dialog = editor.wait_dialog("^System Defined Positional Sound$")
    editor.activate(dialog)
    key("alt+n", "ctrl+a")
    type_text(number)
    key("Tab")
    return dialog


def preview_and_stop(monitor):
    """What the monitor took down from the key for Preview until it was silent after the one for Stop."""
    pressed = monitor.size() // sounds.FRAME_BYTES * sounds.FRAME_BYTES
    key("alt+p")
    wait_for("two seconds of the preview",
             lambda: len(monitor.heard()[pressed:].strip(b"\0")) > 2 * sounds.SECOND_BYTES)
    key("alt+s")
    wait_for("silence", lambda: not any(monitor.heard()[-sounds.SECOND_BYTES // 4:]), seconds=2)
    return monitor.heard()[pressed:]


def save(editor, name):
    path = pathlib.Path(name).absolute()
    editor.save_as(path)
    return sounds.read_format(path), sounds.read_data(path)


def main():
    source = random.Random(11)
    original = bytes(source.randrange(108, 149) for _ in range(SECONDS * sounds.RATE))
    path = sounds.write_wav("noise.wav", original, channels=1, bits=8)
    with Editor(path) as editor, Monitor("heard.raw") as monitor:
        editor.wait_title("Sonavel - noise.wav")
        dialog = choose_point(editor, RIGHT_LEVEL_NEAR)
        heard = preview_and_stop(monitor)
        assert editor.title() == "Sonavel - noise.wav", "the preview changed the document"
        key("alt+o")
        editor.wait_dialog_gone(dialog)
        editor.wait_title("Sonavel - noise.wav*")
        placed_format, placed = save(editor, "placed.wav")

        seconds, _, start = sounds.longest_run(heard, placed)
        left, right = loudness(placed)
        audible = len(heard.strip(b"\0")) / sounds.SECOND_BYTES
        print(f"{seconds:.3f} s of the placed sound previewed in a row, {audible:.2f} s of {SECONDS} s"
              f" before it was stopped; the right channel {right / left:.2f} times as loud")
        assert placed_format == (2, 16), "the placed sound is not 16-bit stereo"
        assert len(placed) == sounds.FRAME_BYTES * len(original), "the placed sound has another length"
        assert right >= LEAST_LOUDER * left, "the placed sound is not at the right"
        assert seconds >= LEAST_SECONDS_IN_A_ROW, "the preview was not what OK makes"
        assert start < sounds.SECOND_BYTES, "the preview did not begin at the beginning"
        assert audible < SECONDS - 1, "Stop did not stop the preview"

        key("ctrl+z")
        editor.wait_title("Sonavel - placed.wav*")
        assert save(editor, "undone.wav") == ((1, 8), original), "Undo did not bring the sound back"
        assert editor.quit() == 0


main()
