"""Volume by the keyboard alone: the preview sounds scaled, OK scales the sound, Undo brings it back."""

import array
import pathlib

import sounds
from editor_driver import Editor, Monitor, key, wait_for

PERCENT = 50
# The slider starts at 100 % and moves by 10 % a page.
PAGES_DOWN = (100 - PERCENT) // 10
LEAST_SECONDS_IN_A_ROW = 1.0
SILENCE_BYTES = sounds.SECOND_BYTES // 4


def scaled(sound):
    """What the effect makes of positive samples: the part below one is dropped."""
    samples = array.array("h", sound)
    return array.array("h", (sample * PERCENT // 100 for sample in samples)).tobytes()


def saved(editor, name):
    editor.save_as(pathlib.Path(name).absolute())
    return sounds.read_data(name)


def open_volume(editor):
    key("alt+t")
    key("v")
    return editor.wait_dialog("^Volume$")


def preview(monitor, length):
    """Presses Preview and waits until that much could have sounded and all is silent again."""
    pressed = monitor.size()
    key("alt+p")
    wait_for("the preview", lambda: any(monitor.heard()[pressed:]))
    wait_for("its length to pass", lambda: monitor.size() > pressed + length)
    wait_for("silence", lambda: not any(monitor.heard()[-SILENCE_BYTES:]))
    return monitor.heard()[pressed // sounds.FRAME_BYTES * sounds.FRAME_BYTES:]


def stop_in_the_middle(monitor):
    """Preview, and the same key again, which now means Stop, well before the end."""
    pressed = monitor.size()
    key("alt+p")
    wait_for("the second preview", lambda: any(monitor.heard()[pressed:]))
    started = monitor.size()
    key("alt+s")
    wait_for("silence after Stop", lambda: not any(monitor.heard()[-SILENCE_BYTES:]))
    return (monitor.size() - started) / sounds.SECOND_BYTES


def main():
    sound = sounds.noise(3 * sounds.RATE, seed=6)
    wanted = scaled(sound)
    with Editor(sounds.write_wav("loud.wav", sound)) as editor, Monitor("heard.raw") as monitor:
        editor.wait_title("Sonavel - loud.wav")
        dialog = open_volume(editor)
        key(*["Next"] * PAGES_DOWN)
        heard = preview(monitor, len(sound))
        seconds, _, start = sounds.longest_run(heard, wanted)
        print(f"{seconds:.3f} s of 3 s of the scaled sound heard in a row, from"
              f" {start / sounds.SECOND_BYTES:.3f} s on")
        assert seconds >= LEAST_SECONDS_IN_A_ROW, "the preview was not heard scaled"
        assert sounds.longest_run(heard, sound)[0] == 0, "the sound itself was heard"
        stopped = stop_in_the_middle(monitor)
        print(f"silent {stopped:.3f} s after Stop")
        assert stopped < 1.5, "Stop did not stop the preview"

        assert editor.title() == "Sonavel - loud.wav", "the preview changed the document"
        key("Return")
        editor.wait_dialog_gone(dialog)
        editor.wait_title("Sonavel - loud.wav*")
        assert saved(editor, "scaled.wav") == wanted, "OK did not scale the sound"
        key("ctrl+z")
        editor.wait_title("Sonavel - scaled.wav*")
        assert saved(editor, "undone.wav") == sound, "Undo did not bring the sound back"
        assert editor.quit() == 0


main()
