"""A PulseAudio server of a test's own, to be unplugged, killed and stopped: its null sink is heard by
nobody, and what is played into it can be recorded."""

import os
import pathlib
import re
import signal
import subprocess

from editor_driver import bounded, wait_for

SINK = "unplugged"


class SoundServer:
    """Runs while it is used in a with statement; environment() leads a program to it. Its sink takes samples
    as they are in `sample_format`, a name of the server's own."""

    def __init__(self, name, sample_format="s16le"):
        self._socket = pathlib.Path(name).absolute()
        self._format = sample_format
        self._process = None

    def __enter__(self):
        self.start()
        return self

    def __exit__(self, *_):
        self.kill()

    def environment(self):
        return {"PULSE_SERVER": f"unix:{self._socket}"}

    def start(self):
        self._socket.unlink(missing_ok=True)
        self._process = subprocess.Popen(
            bounded("pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no",
                    "--high-priority=no", "--realtime=no", "--disallow-exit", "--log-level=error",
                    "-L", f"module-native-protocol-unix socket={self._socket} auth-anonymous=1"))
        wait_for("the sound server", lambda: self._ask("info").returncode == 0)
        self.plug_in()

    def plug_in(self):
        """Gives the server its one sink, and that sink's monitor to record from."""
        for words in (["load-module", "module-null-sink", f"sink_name={SINK}", "rate=44100",
                       f"format={self._format}", "channels=2"],
                      ["set-default-sink", SINK], ["set-default-source", f"{SINK}.monitor"]):
            assert self._ask(*words).returncode == 0, words

    def unplug(self):
        assert self._ask("unload-module", "module-null-sink").returncode == 0

    def kill(self):
        self._process.kill()
        self._process.wait(timeout=10)

    def stop(self):
        self._process.send_signal(signal.SIGSTOP)

    def go_on(self):
        self._process.send_signal(signal.SIGCONT)

    def play(self, path):
        subprocess.run(bounded("paplay", path), check=True, timeout=20,
                       env={**os.environ, **self.environment()})

    def plays(self):
        """Whether the editor plays."""
        return "[sonavel]" in self._ask("list", "sink-inputs").stdout

    def formats(self):
        """The sample formats in which sounds are being played."""
        shown = self._ask("list", "sink-inputs").stdout
        return re.findall(r"Sample Specification: (\w+)", shown)

    def recording_command(self):
        """Writes what is played into the sink to its standard output, in the sink's own format."""
        return ["parec", "--raw", "--rate=44100", "--channels=2", f"--format={self._format}", "--latency-msec=20",
                f"--device={SINK}.monitor"]

    def records(self):
        return "[sonavel]" in self._ask("list", "source-outputs").stdout

    def _ask(self, *words):
        return subprocess.run(["pactl", *words], capture_output=True, text=True, check=False,
                              timeout=20, env={**os.environ, **self.environment()})
