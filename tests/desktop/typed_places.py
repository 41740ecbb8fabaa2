"""What a person types at the edges of the window: places into the status bar, markers into and out of
files, and Ctrl+S where it means to save."""

import pathlib

import sounds
from editor_driver import Editor, key, pixels_of, place_of, settled_pixels, type_text, wait_for, xdotool

SECONDS = 4
# Of the status bar: the middle of the selection's pane, from the window's right end and bottom.
PANE_FROM_RIGHT = 330
PANE_FROM_BOTTOM = 12
BAR_HEIGHT = 24


def status_bar(editor):
    _, _, width, height = place_of(editor.window)
    return f"{width}x{BAR_HEIGHT}+0+{height - BAR_HEIGHT}"


def type_place(editor, text):
    x, y, width, height = place_of(editor.window)
    before = settled_pixels(editor.window, status_bar(editor))
    xdotool("mousemove", x + width - PANE_FROM_RIGHT, y + height - PANE_FROM_BOTTOM,
            "click", "--repeat", 2, "--delay", 60, 1)
    wait_for("the field in the status bar",
             lambda: pixels_of(editor.window, status_bar(editor)) != before)
    settled_pixels(editor.window, status_bar(editor))
    key("ctrl+a")
    type_text(text)
    key("Return")


def run(editor, name, title):
    key("ctrl+k")
    editor.activate(editor.wait_dialog("^Find Command"))
    type_text(name)
    key("Return")
    return editor.wait_dialog(title)


def markers_of(path):
    return sounds.batch(f'open "{path}"; markers')


def main():
    sound = sounds.noise(SECONDS * sounds.RATE, seed=23)
    path = sounds.write_wav("typed.wav", sound)
    labels = pathlib.Path("in.txt").absolute()
    # A WAV file as the editor writes it loses lengths, and names behind one of odd length.
    labels.write_text("0.500000\t0.500000\thead\n1.500000\t2.000000\tsecond\n")
    with Editor(path) as editor:
        editor.wait_title("Sonavel - typed.wav")
        dialog = run(editor, "import markers", "^Import Markers")
        type_text(str(labels))
        key("Return")
        editor.wait_dialog_gone(dialog)
        type_place(editor, "0:03 - +0.5s")
        key("Delete")
        type_place(editor, "0:01.25")
        key("m")
        dialog = run(editor, "export markers", "^Export Markers")
        key("ctrl+a")
        type_text(str(pathlib.Path("out.txt").absolute()))
        key("Return")
        editor.wait_dialog_gone(dialog)
        wait_for("the file of labels", lambda: pathlib.Path("out.txt").exists())
        before = settled_pixels(editor.window, status_bar(editor))
        key("ctrl+s")
        wait_for("the hint", lambda: pixels_of(editor.window, status_bar(editor)) != before)
        assert path.read_bytes() == sounds.wav(sound), "Ctrl+S saved before its key was changed"
        use_usual_keys(editor)
        key("ctrl+s")
        wait_for("the save", lambda: path.read_bytes() != sounds.wav(sound))
        assert editor.quit() == 0
    frames = (SECONDS - 0.5) * sounds.RATE
    assert len(sounds.read_data(path)) == frames * sounds.FRAME_BYTES, "other frames were deleted"
    saved = markers_of(path)
    for wanted in ('position=22050 length=0 name="head"', 'position=66150 length=0 name="second"',
                   'position=55125 length=0 name="Marker 3"'):
        assert wanted in saved, f"{wanted} is missing: {saved}"
    lines = pathlib.Path("out.txt").read_text().splitlines()
    assert sorted(lines) == ["0.500000\t0.500000\thead", "1.250000\t1.250000\tMarker 3",
                             "1.500000\t2.000000\tsecond"], lines
    print("typed places, markers from and into files, and Ctrl+S do what they say")


def use_usual_keys(editor):
    """By the page of the preferences."""
    key("ctrl+comma")
    dialog = editor.wait_dialog("^Preference")
    key("Right", "Right", "Right", "Right", "Right", "alt+s")
    type_text("Usual")
    key("Return")
    editor.wait_dialog_gone(dialog)


main()
