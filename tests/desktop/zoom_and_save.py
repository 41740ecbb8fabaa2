"""Zoom keys change what is drawn and nothing else; Save As by keyboard writes the same file again."""

import pathlib

import sounds
from editor_driver import Editor, key, settled_pixels, wait_for, pixels_of


def change_by(editor, before, *keys):
    """Presses keys, and gives the picture that came of them once it has settled."""
    key(*keys)
    wait_for(f"a new picture after {keys}", lambda: pixels_of(editor.window) != before)
    return settled_pixels(editor.window)


def main():
    sound = sounds.noise(sounds.RATE, seed=2)
    # Half a second of silence makes every part of the sound look different.
    original = sounds.write_wav("original.wav", bytes(2 * sounds.RATE) + sound)
    with Editor(original) as editor:
        editor.wait_title("Sonavel - original.wav")
        fit = settled_pixels(editor.window)
        pictures = [fit]
        for keys in (["Up"], ["Up", "Up"], ["shift+Up"], ["Down"], ["shift+Down"]):
            pictures.append(change_by(editor, pictures[-1], *keys))
        assert len(set(pictures)) >= 4, "zooming in and out hardly changed the picture"
        assert change_by(editor, pictures[-1], "ctrl+0") == fit, "the first zoom did not come back"
        assert editor.title() == "Sonavel - original.wav", "zooming changed the document"

        editor.save_as(pathlib.Path("copy.wav").absolute())
        assert editor.quit() == 0
    assert pathlib.Path("copy.wav").read_bytes() == original.read_bytes(), "the copy differs"
    info = sounds.batch('open "copy.wav"; info')
    assert "rate=44100 channels=2 bits=16 frames=66150" in info, info
    print("the copy is the original, byte for byte")


main()
