"""What the program shows at its start, with and without a file, and how it bears files that are none."""

import os
import pathlib
import subprocess

import sounds
from editor_driver import Editor, bounded, key, pixels_of, place_of, settled_pixels, wait_for

STATUS_BAR_PIXELS = 24


def status_bar(editor):
    x, y, width, height = place_of(editor.window)
    return f"{width // 3}x{STATUS_BAR_PIXELS}+0+{height - STATUS_BAR_PIXELS}"


def start_without_a_file():
    with Editor() as editor:
        assert editor.title() == "Sonavel", editor.title()
        key("ctrl+w")  # nothing to close
        assert editor.title() == "Sonavel", editor.title()
        assert editor.quit() == 0


def start_with_a_file():
    os.makedirs("elsewhere", exist_ok=True)
    path = sounds.write_wav("elsewhere/one.wav", sounds.noise(1000, seed=7))
    with Editor("./elsewhere/one.wav") as editor:
        assert editor.title() == "Sonavel - one.wav", editor.title()
        key("ctrl+w")
        editor.wait_title("Sonavel")
        assert editor.quit() == 0
    assert path.exists()


def start_with_a_name_in_another_encoding():
    path = pathlib.Path(os.fsdecode(b"\xb8\xb6\xc4\xbf \xe9.wav"))
    sounds.write_wav(path, sounds.noise(1000, seed=7))
    with Editor(path) as editor:
        assert editor.title().startswith("Sonavel - "), editor.title()
        key("ctrl+w")
        editor.wait_title("Sonavel")
        assert editor.quit() == 0


def fail_on(path):
    program = pathlib.Path(os.environ["SONAVEL_BIN"]) / "sonavel"
    done = subprocess.run(bounded(program, path), capture_output=True, text=True, check=False,
                          timeout=20)
    assert done.returncode != 0, f"{path} let the program start"
    assert str(path) in done.stderr and done.stderr.strip()[-1] != ":", done.stderr
    print(done.stderr.strip())


def keep_documents_when_a_file_fails(name, content, has_box):
    sound = sounds.noise(1000, seed=8)
    bad = pathlib.Path(name).absolute()
    bad.write_bytes(content)
    with Editor(sounds.write_wav("good.wav", sound)) as editor:
        area = status_bar(editor)
        before = settled_pixels(editor.window, area)
        editor.open(bad)
        if has_box:
            box = editor.wait_dialog("^Sonavel$")
            key("Return")
            editor.wait_dialog_gone(box)
        wait_for("a note in the status bar", lambda: pixels_of(editor.window, area) != before)
        assert editor.title() == "Sonavel - good.wav", editor.title()
        saved = pathlib.Path(f"kept-{name}").absolute()
        editor.save_as(saved)
        assert sounds.read_data(saved) == sound, "the open document changed"
        key("ctrl+w")
        editor.wait_title("Sonavel")
        assert editor.quit() == 0


def main():
    start_without_a_file()
    start_with_a_file()
    start_with_a_name_in_another_encoding()
    fail_on(pathlib.Path("missing.wav").absolute())
    good = sounds.wav(sounds.noise(1000, seed=9))
    no_channels = good[:22] + b"\0\0" + good[24:]
    keep_documents_when_a_file_fails("text.wav", b"not a sound\n" * 50, has_box=False)
    keep_documents_when_a_file_fails("cut.wav", good[:30], has_box=True)
    keep_documents_when_a_file_fails("no-channels.wav", no_channels, has_box=True)


if __name__ == "__main__":
    main()
