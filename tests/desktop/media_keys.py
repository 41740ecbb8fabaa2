"""The desktop's player control has the editor while it plays or is paused, and only then."""

import os
import re
import subprocess

import sounds
from editor_driver import Editor, bounded, key, wait_for

OBJECT = "/org/mpris/MediaPlayer2"
PLAYER = "org.mpris.MediaPlayer2.Player"


def send(target, path, method, *words):
    done = subprocess.run(["dbus-send", "--session", "--print-reply", f"--dest={target}", path, method,
                           *words], capture_output=True, text=True, check=False, timeout=20)
    return done.stdout


def player():
    names = send("org.freedesktop.DBus", "/", "org.freedesktop.DBus.ListNames")
    found = re.findall(r'"(org\.mpris\.MediaPlayer2\.sonavel[^"]*)"', names)
    return found[0] if found else None


def status(name):
    shown = send(name, OBJECT, "org.freedesktop.DBus.Properties.Get", f"string:{PLAYER}",
                 "string:PlaybackStatus")
    found = re.search(r'variant +string "(\w+)"', shown)
    return found[1] if found else None


def main():
    daemon = subprocess.Popen(bounded("dbus-daemon", "--session", "--nofork", "--print-address"),
                              stdout=subprocess.PIPE, text=True)
    os.environ["DBUS_SESSION_BUS_ADDRESS"] = daemon.stdout.readline().strip()
    path = sounds.write_wav("long.wav", sounds.noise(60 * sounds.RATE, seed=4))
    with Editor(path) as editor:
        assert player() is None, "the media keys are taken while nothing is played"
        key("space")
        name = wait_for("the player on the bus", player)
        assert status(name) == "Playing", status(name)
        send(name, OBJECT, f"{PLAYER}.PlayPause")
        wait_for("the pause", lambda: status(name) == "Paused")
        send(name, OBJECT, f"{PLAYER}.Play")
        wait_for("playing", lambda: status(name) == "Playing")
        send(name, OBJECT, f"{PLAYER}.Stop")
        wait_for("the player to leave the bus", lambda: player() is None)
        assert editor.quit() == 0
    daemon.terminate()


main()
