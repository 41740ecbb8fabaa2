"""A long effect runs on one sound; meanwhile another one is brought to the front, zoomed and played without a
gap, nothing can be edited, and Cancel leaves all as it was."""

import pathlib

import sounds
from editor_driver import Editor, Monitor, key, pixels_of, title_of, type_text, wait_for

SECONDS = 6
MINUTES = 40
LEAST_SECONDS_IN_A_ROW = 3.0


def start_effect(editor):
    key("ctrl+k")
    dialog = editor.wait_dialog("^Find Command$")
    type_text("Pitch")
    key("Return")
    wait_for("the list of commands to close", lambda: dialog not in editor.windows())
    effect = editor.wait_dialog("^Pitch")
    key("Page_Up", "Page_Up", "Page_Up", "Return")  # two octaves, which takes longest
    wait_for("the dialog to close", lambda: effect not in editor.windows())
    return wait_for("the progress window", lambda: editor.windows("^Progress"))[0]


def main():
    music = sounds.noise(SECONDS * sounds.RATE, seed=8)
    long = sounds.noise(10 * sounds.RATE, seed=9) * (MINUTES * 6)
    files = [sounds.write_wav(pathlib.Path("music.wav").absolute(), music),
             sounds.write_wav(pathlib.Path("long.wav").absolute(), long)]
    with Editor(*files) as editor, Monitor("heard.raw") as monitor:
        editor.wait_title("Sonavel - long.wav")
        progress = start_effect(editor)
        editor.activate()
        key("ctrl+F6")
        editor.wait_title("Sonavel - music.wav")
        before = pixels_of(editor.window)
        key("Up", "Up")
        wait_for("the zoom to show", lambda: pixels_of(editor.window) != before)

        pressed = monitor.size()
        key("Home", "space")
        key("ctrl+a", "Delete", "ctrl+shift+s", "ctrl+w")

        def run():
            found = sounds.longest_run(monitor.heard()[pressed // 4 * 4:], music)
            return found if found[0] >= LEAST_SECONDS_IN_A_ROW else None

        seconds, _, start = wait_for("the sound without a gap", run)
        assert progress in editor.windows(), "the effect was over too soon to show anything"
        print(f"{seconds:.3f} s of {SECONDS} s heard in a row, from {start / sounds.SECOND_BYTES:.3f} s on")
        assert editor.title() == "Sonavel - music.wav", "something was edited, saved or closed"

        editor.activate(progress)
        assert title_of(progress).startswith("Progress")
        key("Escape")
        wait_for("the effect to end", lambda: progress not in editor.windows())
        editor.activate()
        key("ctrl+F6")
        editor.wait_title("Sonavel - long.wav")
        assert editor.quit() == 0
        assert sounds.read_data(files[1]) == long, "the file changed"


main()
