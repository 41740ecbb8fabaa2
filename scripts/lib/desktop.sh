# Sourced: a private X display with a window manager and a PulseAudio null sink, for scripts and tests
# that drive the real program. start_desktop sets DISPLAY and PULSE_SERVER; stop_desktop ends it all.

start_desktop() {
  desktop_dir=$(mktemp -d)
  export XDG_RUNTIME_DIR="$desktop_dir/runtime" HOME="$desktop_dir/home"
  mkdir -p "$XDG_RUNTIME_DIR" "$HOME"
  chmod 700 "$XDG_RUNTIME_DIR"
  Xvfb -displayfd 3 -screen 0 "${DESKTOP_SCREEN:-1600x1000x24}" -nolisten tcp \
    3>"$desktop_dir/display" >/dev/null 2>&1 &
  xvfb_pid=$!
  for _ in $(seq 100); do [ -s "$desktop_dir/display" ] && break; sleep 0.1; done
  DISPLAY=":$(cat "$desktop_dir/display")"
  export DISPLAY
  openbox >/dev/null 2>&1 &
  openbox_pid=$!
  start_null_sink
}

start_null_sink() {
  cat >"$HOME/.asoundrc" <<'ASOUND'
pcm.!default { type pulse }
ctl.!default { type pulse }
ASOUND
  export PULSE_SERVER="unix:$desktop_dir/pulse"
  pulseaudio -n --daemonize=no --exit-idle-time=-1 --use-pid-file=no --log-target="file:$desktop_dir/pulse.log" \
    -L "module-native-protocol-unix socket=$desktop_dir/pulse auth-anonymous=1" \
    -L "module-null-sink sink_name=sonavel" >/dev/null 2>&1 &
  pulse_pid=$!
  for _ in $(seq 100); do pactl info >/dev/null 2>&1 && break; sleep 0.1; done
  pactl set-default-sink sonavel
  pactl set-default-source sonavel.monitor
}

stop_desktop() {
  for pid in "${openbox_pid:-}" "${pulse_pid:-}" "${xvfb_pid:-}"; do
    [ -n "$pid" ] && kill "$pid" 2>/dev/null
  done
  wait 2>/dev/null || true
  rm -rf "$desktop_dir"
}

# wait_for_window NAME-PATTERN: the id of the first visible window of that name.
wait_for_window() {
  timeout 20 xdotool search --sync --onlyvisible --name "$1" | head -n 1
}
