"""A colour chosen in the preferences is that of the waveform, at once and after a restart."""

import sounds
from editor_driver import Editor, count_pixels, key, place_of, settled_pixels, type_text, wait_for, pixels_of

CHOSEN = (0xFF, 0x20, 0x90)


def waveform_area(editor):
    """A part of the window that the waveform fills."""
    _, _, width, height = place_of(editor.window)
    return f"200x200+{width // 3}+{height // 4}"


def choose_waveform_colour(editor):
    key("ctrl+comma")
    sheet = editor.wait_dialog("^Preference Setting$")
    key("Tab", "space")  # from the tabs to the first colour
    chooser = editor.wait_dialog("^Waveform$")
    key("alt+h", "ctrl+a")  # the field "HTML"
    type_text("#%02x%02x%02x" % CHOSEN)
    key("Return")
    wait_for("the colour chooser to close", lambda: chooser not in editor.windows())
    editor.activate(sheet)
    return sheet


def main():
    path = sounds.write_wav("colours.wav", sounds.noise(sounds.RATE, seed=12))
    with Editor(path) as editor:
        editor.wait_title("Sonavel - colours.wav")
        area = waveform_area(editor)
        assert count_pixels(settled_pixels(editor.window, area), CHOSEN) == 0
        sheet = choose_waveform_colour(editor)
        key("Return")
        editor.wait_dialog_gone(sheet)
        wait_for("the waveform in its new colour",
                 lambda: count_pixels(pixels_of(editor.window, area), CHOSEN) > 1000)
        assert editor.title() == "Sonavel - colours.wav", "a colour changed the document"
        assert editor.quit() == 0
    with Editor(path) as editor:
        editor.wait_title("Sonavel - colours.wav")
        assert count_pixels(settled_pixels(editor.window, area), CHOSEN) > 1000, "the colour was not kept"
        assert editor.quit() == 0
    print("the waveform has the colour that was chosen")


main()
