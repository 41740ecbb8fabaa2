"""The sound device goes away, its server is killed and restarted, or hangs, while the editor plays,
pauses or records: one message, a live window, the sound as it was and the take kept; afterwards
everything goes on as if nothing had been. A server that starts after the editor is found."""

import pathlib
import time

import sounds
from editor_driver import Editor, key, pixels_of, place_of, repeat_until, settled_pixels, wait_for
from sound_server import SoundServer

LEAST_SECONDS_KEPT = 0.5
# Two seconds without an answer, two more while a device wakes up, and as much as a busy machine needs.
MOST_SECONDS_UNTIL_TOLD = 20.0
MOST_SECONDS_TO_END = 8.0


def unplug(server):
    server.unplug()
    return server.plug_in


def restart(server):
    server.kill()
    server.start()
    return lambda: None


def hang(server):
    server.stop()
    return server.go_on


def play(editor, server):
    key("space")
    wait_for("the editor to play", server.plays)


def wait_until_time_goes_on(editor):
    x, y, width, height = place_of(editor.window)
    area = f"{width}x24+0+{height - 24}"
    before = pixels_of(editor.window, area)
    wait_for("the time to go on", lambda: pixels_of(editor.window, area) != before)


def pause(editor, server):
    play(editor, server)
    key("Return")
    x, y, width, height = place_of(editor.window)
    settled_pixels(editor.window, f"{width}x24+0+{height - 24}")  # nothing counts on any more


def take_message(editor):
    """Waits for the one message, and sees that no second one follows."""
    box = wait_for("the message", lambda: [window for window in editor.windows("^Sonavel$")
                                           if window != editor.window], MOST_SECONDS_UNTIL_TOLD)
    assert len(box) == 1, box
    editor.activate(box[0])
    key("Return")
    editor.wait_dialog_gone(box[0])


def saved(editor, name):
    """The document's bytes, saved by keys, which only a live window takes."""
    editor.save_as(pathlib.Path(name).absolute())
    return sounds.read_data(name)


def lose_while_heard(editor, server, fault, begin, sound):
    begin(editor, server)
    mend = fault(server)
    take_message(editor)
    assert saved(editor, f"{fault.__name__}-{begin.__name__}.wav") == sound, "losing the device changed the sound"
    mend()


def lose_while_recording(editor, server, fault, sound, spoken):
    key("ctrl+r")
    dialog = editor.wait_dialog("^Record$")
    key("Return")
    editor.wait_dialog_gone(dialog)
    wait_for("the editor to record", server.records)
    server.play(spoken)
    mend = fault(server)
    take_message(editor)
    wait_for("the take in the document", lambda: editor.title().endswith("*"))
    both = saved(editor, f"{fault.__name__}-take.wav")
    assert both.endswith(sound), "the take is not where the cursor was"
    seconds, _, _ = sounds.longest_run(both[:-len(sound)], sounds.read_data(spoken))
    print(f"{fault.__name__}: {seconds:.3f} s of the take kept in a row")
    assert seconds >= LEAST_SECONDS_KEPT, "the take is lost"
    mend()


def end_while_it_hangs(editor, server):
    play(editor, server)
    wait_until_time_goes_on(editor)
    server.stop()
    begun = time.monotonic()

    def end():
        # A message that comes first takes the key.
        asks = any(window != editor.window for window in editor.windows("^Sonavel$"))
        key("Return" if asks else "ctrl+q")

    repeat_until("the program to end", end, lambda: editor.process.poll() is not None,
                 MOST_SECONDS_TO_END)
    assert editor.process.returncode == 0
    print(f"ended {time.monotonic() - begun:.1f} s after the key")


def try_fault(fault, sound, spoken):
    with SoundServer(f"server-{fault.__name__}") as server:
        path = sounds.write_wav("own.wav", sound)
        with Editor(path, environment=server.environment()) as editor:
            editor.wait_title("Sonavel - own.wav")
            for begin in (play, pause):
                lose_while_heard(editor, server, fault, begin, sound)
            lose_while_recording(editor, server, fault, sound, spoken)
            if fault is hang:
                end_while_it_hangs(editor, server)
            else:
                play(editor, server)
                assert editor.quit() == 0


def find_a_server_that_comes_late(sound):
    server = SoundServer("server-late")
    path = sounds.write_wav("late.wav", sound)
    with Editor(path, environment=server.environment()) as editor:
        editor.wait_title("Sonavel - late.wav")
        key("space")
        take_message(editor)
        with server:
            play(editor, server)
        take_message(editor)
        assert editor.quit() == 0


def main():
    sound = sounds.noise(20 * sounds.RATE, seed=21)
    spoken = sounds.write_wav("spoken.wav", sounds.noise(sounds.RATE, seed=22))
    find_a_server_that_comes_late(sound)
    for fault in (unplug, restart, hang):
        begun = time.monotonic()
        try_fault(fault, sound, spoken)
        print(f"{fault.__name__}: {time.monotonic() - begun:.1f} s")


main()
