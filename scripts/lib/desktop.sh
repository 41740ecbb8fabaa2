# Sourced: a private X display with a window manager, a sound server with a null sink, and a home folder,
# for scripts and tests that drive the real program. start_desktop sets the environment, copy_program the
# program to drive; stop_desktop, called from an EXIT trap that was set before, ends and removes it all.

desktop_pids=()

start_desktop() {
  desktop_dir=$(mktemp -d "${TMPDIR:-/tmp}/sonavel-desktop-XXXXXX")
  set_private_environment
  start_display
  start_window_manager
  start_null_sink
}

# Likewise, with a Wayland compositor in place of the window manager: it fills the display, and gets keys and
# mouse from it.
start_wayland_desktop() {
  desktop_dir=$(mktemp -d "${TMPDIR:-/tmp}/sonavel-desktop-XXXXXX")
  set_private_environment
  start_display
  start_compositor
  start_null_sink
}

start_compositor() {
  # Neither the screen keyboard, which would lie over the program, nor anything that takes its time.
  cat >"$desktop_dir/weston.ini" <<'WESTON'
[core]
idle-time=0
[shell]
panel-position=none
animation=none
startup-animation=none
close-animation=none
locking=false
[input-method]
path=
WESTON
  in_background weston --config="$desktop_dir/weston.ini" --backend=x11-backend.so --use-pixman \
    --width=1600 --height=1000 --socket=sonavel-wayland
  poll 30 test -S "$XDG_RUNTIME_DIR/sonavel-wayland" || desktop_failed "no compositor came up"
  poll 30 compositor_window || desktop_failed "the compositor has no window"
  export SONAVEL_COMPOSITOR=$(compositor_window) SONAVEL_DESKTOP=wayland
  export WAYLAND_DISPLAY=sonavel-wayland QT_QPA_PLATFORM=wayland
}

compositor_window() { xwininfo -root -children | grep -o '0x[0-9a-f]* .*1600x1000+0+0' | grep -o '^0x[0-9a-f]*'; }

set_private_environment() {
  unset WAYLAND_DISPLAY XAUTHORITY DBUS_SESSION_BUS_ADDRESS SESSION_MANAGER PULSE_SINK PULSE_SOURCE
  unset "${!QT_@}"
  export HOME="$desktop_dir/home" XDG_RUNTIME_DIR="$desktop_dir/runtime" TMPDIR="$desktop_dir/tmp"
  export XDG_CONFIG_HOME="$HOME/.config" XDG_CACHE_HOME="$HOME/.cache" XDG_DATA_HOME="$HOME/.local/share"
  export LC_ALL=C.UTF-8 QT_QPA_PLATFORM=xcb
  mkdir -p "$XDG_CONFIG_HOME" "$XDG_CACHE_HOME" "$XDG_DATA_HOME" "$XDG_RUNTIME_DIR" "$TMPDIR"
  chmod 700 "$XDG_RUNTIME_DIR"
}

# in_background COMMAND...: also ends when this shell is killed and no trap runs.
in_background() {
  setpriv --pdeathsig TERM "$@" >>"$desktop_dir/log" 2>&1 &
  desktop_pids+=("$!")
}

# poll SECONDS COMMAND...: until the command succeeds.
poll() {
  local tries=$(($1 * 20))
  shift
  while ! "$@" >/dev/null 2>&1; do
    tries=$((tries - 1))
    [ "$tries" -gt 0 ] || return 1
    sleep 0.05
  done
}

desktop_failed() {
  echo "desktop: $1" >&2
  cat "$desktop_dir/log" >&2
  return 1
}

start_display() {
  local number=$desktop_dir/display
  in_background Xvfb -displayfd 3 -screen 0 "${DESKTOP_SCREEN:-1600x1000x24}" -nolisten tcp -noreset \
    3>"$number"
  poll 30 has_a_line "$number" || desktop_failed "no X display came up"
  export DISPLAY=":$(cat "$number")"
}

start_window_manager() {
  in_background openbox --sm-disable
  poll 30 window_manager_runs || desktop_failed "no window manager came up"
}

has_a_line() { [ "$(wc -l <"$1")" -gt 0 ]; }

window_manager_runs() { xprop -root _NET_SUPPORTING_WM_CHECK | grep -q 'window id'; }

# Every sound of the session goes there, 16-bit stereo at 44.1 kHz, and comes from its monitor.
start_null_sink() {
  cat >"$HOME/.asoundrc" <<'ASOUND'
pcm.!default { type pulse }
ctl.!default { type pulse }
ASOUND
  local socket=$desktop_dir/pulse
  export PULSE_SERVER="unix:$socket" PULSE_COOKIE="$HOME/pulse-cookie"
  in_background pulseaudio -n --daemonize=no --exit-idle-time=-1 --use-pid-file=no --high-priority=no \
    --realtime=no --disallow-exit --log-level=error \
    -L "module-native-protocol-unix socket=$socket auth-anonymous=1" \
    -L "module-null-sink sink_name=sonavel rate=44100 format=s16le channels=2"
  poll 30 pactl info || desktop_failed "no sound server came up"
  pactl set-default-sink sonavel
  pactl set-default-source sonavel.monitor
}

# copy_program BIN-FOLDER: a program folder of the session's own, with the settings as delivered. Without
# logo.wav, so that nothing sounds but what the session plays.
copy_program() {
  export SONAVEL_BIN="$desktop_dir/program"
  mkdir "$SONAVEL_BIN"
  cp -- "$1/sonavel" "$1/sonavel-batch" "$SONAVEL_BIN/"
  if [ -x "$1/sonavel-codec" ]; then cp -- "$1/sonavel-codec" "$SONAVEL_BIN/"; fi
  cp -- "$(dirname "${BASH_SOURCE[0]}")"/../../packaging/defaults/*.ini "$SONAVEL_BIN/"
}

stop_desktop() {
  local i pid
  for ((i = ${#desktop_pids[@]} - 1; i >= 0; i--)); do
    pid=${desktop_pids[i]}
    kill "$pid" 2>/dev/null || continue
    poll 5 sh -c "! kill -0 $pid" || kill -KILL "$pid" 2>/dev/null || true
    wait "$pid" 2>/dev/null || true
  done
  desktop_pids=()
  [ -z "${desktop_dir:-}" ] || rm -rf "$desktop_dir"
}
