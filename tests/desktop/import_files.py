"""Of five files that are dropped two open, and three that others wrote are imported after one question."""

import pathlib
import subprocess

import sounds
from editor_driver import Editor, key, settled_pixels, wait_for
from x_drop import drop


def sox(*words):
    subprocess.run(["sox", *map(str, words)], check=True, timeout=30)


def write_files():
    """The 16-bit sound that the FLAC file holds."""
    sound = sounds.noise(3000, seed=31)
    for index, name in enumerate(("one.wav", "two.wav")):
        sounds.write_wav(name, sounds.noise(500, seed=32 + index))
    sounds.write_wav("whole.wav", sound)
    sox("whole.wav", "take.ogg")
    sox("whole.wav", "-b", 24, "deep.wav")
    sox("whole.wav", "take.v2.flac")
    return sound


def main():
    sound = write_files()
    with Editor() as editor:
        drop(editor, "one.wav", "take.ogg", "two.wav", "deep.wav", "take.v2.flac")
        box = editor.wait_dialog("^Sonavel$")
        assert editor.title() == "Sonavel - two.wav", editor.title()
        settled_pixels(box)
        key("Return")
        editor.wait_dialog_gone(box)
        editor.wait_title("Sonavel - take.v2.flac")
        saved = pathlib.Path("saved.wav").absolute()
        editor.save_as(saved)
        assert sounds.read_data(saved) == sound, "the FLAC file came in with other samples"
        for title in ("saved.wav", "deep.wav", "take.ogg", "two.wav", "one.wav"):
            editor.wait_title(f"Sonavel - {title}")
            key("ctrl+w")
        wait_for("an empty frame", lambda: editor.title() == "Sonavel")
        assert editor.quit() == 0
    print("two dropped files opened, three were imported")


main()
