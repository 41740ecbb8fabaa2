"""Record from the null sink's monitor while a known sound plays, and find it in the new document."""

import pathlib
import subprocess

import sounds
from editor_driver import Editor, bounded, key, wait_for

LEAST_SECONDS_IN_A_ROW = 1.0


def start_recording(editor, *choices):
    key("ctrl+r")
    dialog = editor.wait_dialog("^Record$")
    for choice in choices:
        key(choice)
    key("Return")
    editor.wait_dialog_gone(dialog)
    wait_for("the editor to record", lambda: "[sonavel]" in recording_programs())


def recording_programs():
    return subprocess.run(["pactl", "list", "source-outputs"], capture_output=True, text=True,
                          check=True).stdout


def save(editor, name):
    editor.save_as(pathlib.Path(name).absolute())
    return sounds.read_data(name)


def play(path):
    subprocess.run(bounded("paplay", path), check=True, timeout=20)


def stop_recording():
    key("space")
    wait_for("the recording to end", lambda: "[sonavel]" not in recording_programs())


def check_found(recorded, sound):
    seconds, _, _ = sounds.longest_run(recorded, sound)
    print(f"{seconds:.3f} s of 2 s found in a row in {len(recorded) / sounds.SECOND_BYTES:.3f} s")
    assert seconds >= LEAST_SECONDS_IN_A_ROW, "the sound is not in the recording"


def main():
    sound = sounds.noise(2 * sounds.RATE, seed=4)
    source = sounds.write_wav("source.wav", sound)
    with Editor() as editor:
        # Stereo and 16 bit instead of the choices that have the focus; the letters of the buttons would hold
        # them down for a moment.
        start_recording(editor, "Tab", "Down", "Tab", "Down")
        wait_for("the new document", lambda: editor.title().startswith("Sonavel - Recorder"))
        play(source)
        stop_recording()
        wait_for("the recording in the document", lambda: editor.title().endswith("*"))
        recorded = save(editor, "recorded.wav")
        check_found(recorded, sound)

        # A second one goes in at the cursor, as one step.
        start_recording(editor)
        play(source)
        stop_recording()
        editor.wait_title("Sonavel - recorded.wav*")
        both = save(editor, "both.wav")
        assert both.endswith(recorded), "the first recording is not behind the second"
        check_found(both[:-len(recorded)], sound)
        key("ctrl+z")
        editor.wait_title("Sonavel - both.wav*")
        assert save(editor, "undone.wav") == recorded, "Undo did not take the second one out"
        assert editor.quit() == 0


main()
