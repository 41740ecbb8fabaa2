"""Files dropped on the frame and on a waveform open as documents of their own; others do no harm."""

import os
import pathlib

import sounds
from editor_driver import Editor, key, pixels_of, settled_pixels, wait_for
from start_up import status_bar
from x_drop import drop


# Of the Korean code page, not of UTF-8.
KOREAN_NAME = os.fsdecode(b"\xb8\xb6\xc4\xbf.wav")


def main():
    first = sounds.noise(1000, seed=20)
    for index, name in enumerate(("one.wav", "two.wav", "three.wav")):
        sounds.write_wav(name, first if index == 0 else sounds.noise(500, seed=20 + index))
    sounds.write_wav(KOREAN_NAME, first)
    pathlib.Path("hostile.wav").write_bytes(b"RIFF\xff\xff\xff\xffWAVEdata\xff\xff\xff\x7f")
    with Editor() as editor:
        drop(editor, "one.wav")
        editor.wait_title("Sonavel - one.wav")

        area = status_bar(editor)
        before = settled_pixels(editor.window, area)
        drop(editor, "hostile.wav")
        wait_for("a note in the status bar", lambda: pixels_of(editor.window, area) != before)
        assert editor.title() == "Sonavel - one.wav", editor.title()

        drop(editor, "two.wav", "three.wav")
        editor.wait_title("Sonavel - three.wav")
        drop(editor, KOREAN_NAME)
        editor.wait_title("Sonavel - 마커.wav")
        key("ctrl+w")
        editor.wait_title("Sonavel - three.wav")
        key("ctrl+w")
        editor.wait_title("Sonavel - two.wav")
        key("ctrl+w")
        editor.wait_title("Sonavel - one.wav")
        saved = pathlib.Path("kept.wav").absolute()
        editor.save_as(saved)
        assert sounds.read_data(saved) == first, "the first document changed"
        assert editor.quit() == 0
    print("dropped files opened, the hostile one did not")


main()
