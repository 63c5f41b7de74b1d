#!/usr/bin/env bash
# with_display.sh PROGRAM [ARGUMENT ...]: runs the program on a display of its own, with a window manager.
# Status 77 (skipped) if there is no display server to be had.
set -euo pipefail

for needed in Xvfb openbox setxkbmap xdotool xdpyinfo import; do
    command -v "$needed" >/dev/null || { echo "skipped: $needed is missing, ./test installs it"; exit 77; }
done

XDG_RUNTIME_DIR=$(mktemp -d)
export XDG_RUNTIME_DIR HOME=$XDG_RUNTIME_DIR XDG_CONFIG_HOME=$XDG_RUNTIME_DIR/config LC_ALL=C.UTF-8
children=()
trap 'kill "${children[@]}" 2>/dev/null || true; wait || true; rm -rf "$XDG_RUNTIME_DIR"' EXIT

Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp 3>"$XDG_RUNTIME_DIR/display" 2>"$XDG_RUNTIME_DIR/Xvfb.log" &
children+=($!)
for _ in $(seq 300); do
    [ -s "$XDG_RUNTIME_DIR/display" ] && break
    sleep 0.1
done
[ -s "$XDG_RUNTIME_DIR/display" ] || { cat "$XDG_RUNTIME_DIR/Xvfb.log"; echo "the display server does not start"; exit 1; }
DISPLAY=:$(cat "$XDG_RUNTIME_DIR/display")
export DISPLAY QT_QPA_PLATFORM=xcb
unset WAYLAND_DISPLAY
setxkbmap de # a key that no layout has would be put on some key for a moment, which a busy program may miss
LSAN_OPTIONS=suppressions=$(dirname "${BASH_SOURCE[0]}")/leaks.supp:print_suppressions=0
export LSAN_OPTIONS
openbox >"$XDG_RUNTIME_DIR/openbox.log" 2>&1 &
children+=($!)
for _ in $(seq 300); do
    xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 0x && break
    sleep 0.1
done
"$@"
