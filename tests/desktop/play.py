"""Space plays the sound that was opened, sample for sample, and Space again stops it."""

import sounds
from editor_driver import Editor, Monitor, key, settled_pixels, wait_for

MOST_SECONDS_UNTIL_HEARD = 2.0
LEAST_SECONDS_IN_A_ROW = 1.0
# A null sink swallows the part of a stream that comes before its own next block.
MOST_SECONDS_SWALLOWED = 0.1


def play_once(monitor, sound):
    """Plays for as long as the sound takes; the bytes heard from the press of the key on."""
    pressed = monitor.size()
    key("space")
    wait_for("the sound's length to pass", lambda: monitor.size() > pressed + len(sound)
             + MOST_SECONDS_UNTIL_HEARD * sounds.SECOND_BYTES)
    return monitor.heard()[pressed // 4 * 4:]


def main():
    sound = sounds.noise(3 * sounds.RATE, seed=1)
    with Editor(sounds.write_wav("played.wav", sound)) as editor, Monitor("heard.raw") as monitor:
        editor.wait_title("Sonavel - played.wav")
        heard = play_once(monitor, sound)
        seconds, place, start = sounds.longest_run(heard, sound)
        silence = place / sounds.SECOND_BYTES - start / sounds.SECOND_BYTES
        print(f"{seconds:.3f} s of 3 s heard in a row, from {start / sounds.SECOND_BYTES:.3f} s of the"
              f" sound, {silence:.3f} s after the key")
        assert seconds >= LEAST_SECONDS_IN_A_ROW, "the sound was not heard sample for sample"
        assert start <= MOST_SECONDS_SWALLOWED * sounds.SECOND_BYTES, "the beginning was not heard"
        assert silence <= MOST_SECONDS_UNTIL_HEARD, "the sound came late"

        key("space")
        wait_for("sound", lambda: any(monitor.heard()[-4410:]))
        key("space")
        wait_for("silence", lambda: not any(monitor.heard()[-44100:]), seconds=1.5)
        settled_pixels(editor.window)
        assert editor.title() == "Sonavel - played.wav", "playing changed the document"
        assert editor.quit() == 0


main()
