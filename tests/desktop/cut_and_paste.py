"""A selection dragged with the mouse is cut, taken back, pasted elsewhere: by real keys, seen in files."""

import pathlib

import sounds
import spoken
from editor_driver import Editor, key, place_of

FRAME = sounds.FRAME_BYTES


def save(editor, name):
    path = pathlib.Path(name).absolute()
    editor.save_as(path)
    return sounds.read_data(path)


def removed_range(sound, rest):
    """Where a stretch was cut out of the sound: its first and last byte."""
    size = len(sound) - len(rest)
    start = 0
    while start < len(rest) and sound[start:start + FRAME] == rest[start:start + FRAME]:
        start += FRAME
    assert sound[start + size:] == rest[start:], "what is left is not the sound without one stretch"
    return start, start + size


def main():
    sound = sounds.noise(2 * sounds.RATE, seed=3)
    with Editor(sounds.write_wav("whole.wav", sound)) as editor:
        editor.wait_title("Sonavel - whole.wav")
        x, y, width, height = place_of(editor.window)
        # The child window fills four fifths of the area from its left top corner on.
        spoken.select_by_drag(spoken.waveform(editor, "whole.wav"), (x + width // 4, y + height // 2),
                              (x + width // 2, y + height // 2))
        key("ctrl+x")
        editor.wait_title("Sonavel - whole.wav*")
        rest = save(editor, "rest.wav")
        start, end = removed_range(sound, rest)
        fraction = (start / len(sound), end / len(sound))
        print(f"the drag selected {fraction[0]:.3f} to {fraction[1]:.3f} of the sound")
        assert 0.2 < fraction[0] < 0.45 and 0.5 < fraction[1] < 0.75, "the drag took another place"

        key("ctrl+z")
        editor.wait_title("Sonavel - rest.wav*")
        assert save(editor, "undone.wav") == sound, "Undo did not bring the sound back"

        key("ctrl+Home", "ctrl+v")
        editor.wait_title("Sonavel - undone.wav*")
        pasted = save(editor, "pasted.wav")
        assert pasted == sound[start:end] + sound, "the cut stretch was not pasted at the start"

        key("ctrl+z")
        editor.wait_title("Sonavel - pasted.wav*")
        key("ctrl+y")
        assert save(editor, "redone.wav") == pasted, "Redo did not bring the paste back"
        assert editor.quit() == 0
    frames = len(pasted) // FRAME
    assert f"frames={frames} " in sounds.batch('open "pasted.wav"; info')
    first = sounds.batch('open "whole.wav"; samples %d 100' % (start // FRAME)).splitlines()
    again = sounds.batch('open "pasted.wav"; samples 0 100').splitlines()
    assert [line.split()[1:] for line in first] == [line.split()[1:] for line in again]


main()
