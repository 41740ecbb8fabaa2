"""By keys alone: four directions of a sound in at most six, a smooth path around the head, and a scene of two sounds."""

import array
import math
import pathlib
import random

import sounds
from editor_driver import Editor, key, wait_for

SECONDS = 2
MOST_KEYS = 6
LEAST_LOUDER = 1.5  # of noise at the ear beside the source over noise at the other


def loudness(data):
    """Root mean square of the left and the right channel of 16-bit stereo."""
    samples = array.array("h", data)
    channels = samples[0::2], samples[1::2]
    return [math.sqrt(sum(value * value for value in one) / len(one)) for one in channels]


def write_noise(name, seed):
    source = random.Random(seed)
    samples = array.array("h", (source.randrange(-9000, 9000) for _ in range(SECONDS * sounds.RATE)))
    return sounds.write_wav(name, samples.tobytes(), channels=1, bits=16).absolute()


def place_in_four_directions(editor):
    keys = ["alt+d", "m", "Return"]
    key(*keys[:2])
    dialog = editor.wait_dialog("^Place Many$")
    editor.activate(dialog)
    key(*keys[2:])
    editor.wait_dialog_gone(dialog)
    paths = [pathlib.Path(f"one_{azimuth}_0.wav").absolute() for azimuth in (0, 90, 180, 270)]
    wait_for("four files", lambda: all(path.exists() for path in paths))
    levels = [loudness(sounds.read_data(path)) for path in paths]
    assert levels[1][1] > LEAST_LOUDER * levels[1][0], "the second file is not at the right"
    assert levels[3][0] > LEAST_LOUDER * levels[3][1], "the fourth file is not at the left"
    assert len(keys) <= MOST_KEYS
    print(f"four directions in {len(keys)} keys")


def move_smoothly(editor):
    key("alt+d", "e")
    dialog = editor.wait_dialog("^User-Defined Moving Sound$")
    editor.activate(dialog)
    key("alt+n")
    shape = editor.wait_dialog("^Shape$")
    editor.activate(shape)
    key("Return")
    editor.wait_dialog_gone(shape, over=dialog)
    key("alt+h", "alt+o")
    editor.wait_dialog_gone(dialog)
    editor.wait_title("Sonavel - one.wav*")
    path = pathlib.Path("around.wav").absolute()
    editor.save_as(path)
    data = sounds.read_data(path)
    quarter = len(data) // 4 // sounds.FRAME_BYTES * sounds.FRAME_BYTES
    # Clockwise from straight ahead: the first half of the circle lies at the right.
    right = loudness(data[quarter // 2:quarter * 3 // 2 // 4 * 4])
    left = loudness(data[quarter * 5 // 2 // 4 * 4:quarter * 7 // 2 // 4 * 4])
    assert right[1] > LEAST_LOUDER * right[0], "the sound did not pass at the right"
    assert left[0] > LEAST_LOUDER * left[1], "the sound did not pass at the left"


def mix_scene(editor):
    key("alt+d", "n")
    dialog = editor.wait_dialog("^Scene$")
    editor.activate(dialog)
    key("alt+o")
    editor.wait_dialog_gone(dialog)
    wait_for("the scene's sound", lambda: "Scene_1" in editor.title())
    path = pathlib.Path("scene.wav").absolute()
    editor.save_as(path)
    assert sounds.read_format(path) == (2, 16)
    assert len(sounds.read_data(path)) == sounds.FRAME_BYTES * SECONDS * sounds.RATE
    # The first of the two sounds stands at the left, the second at the right.
    left, right = loudness(sounds.read_data(path))
    assert 1 / LEAST_LOUDER < left / right < LEAST_LOUDER


def main():
    first = write_noise("one.wav", 1)
    with Editor(first) as editor:
        editor.wait_title("Sonavel - one.wav")
        place_in_four_directions(editor)
        move_smoothly(editor)
        editor.open(write_noise("two.wav", 2))
        editor.wait_title("Sonavel - two.wav")
        mix_scene(editor)
        assert editor.quit() == 0


main()
