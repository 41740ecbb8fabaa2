"""The play meter moves while a sound plays, and comes to rest with it."""

import array

import sounds
from editor_driver import Editor, key, pixels_of, place_of, settled_pixels, wait_for, xdotool

METER_WIDTH = 132
LEAST_PICTURES = 3


def noise_of_several_loudnesses():
    noise = array.array("h", sounds.noise(sounds.RATE // 2, seed=13))
    return b"".join(array.array("h", (sample // divisor for sample in noise)).tobytes()
                    for divisor in (16, 2, 1, 8, 4))


def main():
    sound = noise_of_several_loudnesses()
    with Editor(sounds.write_wav("metered.wav", sound)) as editor:
        editor.wait_title("Sonavel - metered.wav")
        x, y, width, height = place_of(editor.window)
        xdotool("mousemove", x + width // 2, y + height // 2)
        area = f"{METER_WIDTH}x{height // 2}+{width - METER_WIDTH}+{height // 4}"
        rest = settled_pixels(editor.window, area)
        seen = set()
        key("space")

        def moved():
            seen.add(pixels_of(editor.window, area))
            return len(seen - {rest}) >= LEAST_PICTURES

        wait_for("the meter to move", moved)
        wait_for("the meter to come to rest", lambda: pixels_of(editor.window, area) == rest)
        assert settled_pixels(editor.window, area) == rest
        assert editor.quit() == 0
    print(f"the meter showed {len(seen)} pictures")


main()
