# A display of its own, and a user's hands at the program on it; sourced by what drives the program there. Wants
# `forms`, the folder of the forms, `pictures`, where pictures go, and `fail TEXT`, which ends with a message. `window` is the
# current window, `main` the main window, `started` the processes that stop_all ends.

started=()
stop_all() {
  [ ${#started[@]} -eq 0 ] || kill "${started[@]}" 2>/dev/null || true
  wait 2>/dev/null || true
}

# open_display FOLDER: a display with a window manager, which stands in DISPLAY then.
open_display() {
  unset WAYLAND_DISPLAY
  mkfifo "$1/display"
  Xvfb -displayfd 3 -screen 0 1280x960x24 -nolisten tcp 3>"$1/display" 2>/dev/null &
  started+=($!)
  read -r number <"$1/display"
  export DISPLAY=:$number
  openbox >/dev/null 2>&1 &
  started+=($!)
  # A window that comes before it is ready stays unseen.
  for _ in $(seq 100); do
    xdotool get_desktop >/dev/null 2>&1 && return
    sleep 0.1
  done
  fail "there is no window manager"
}

# Waits until a window with this title is shown, makes it the current one. Not the one that is named behind it.
await() {
  local found
  for _ in $(seq "${patience:-150}"); do
    found=$(xdotool search --onlyvisible --name "^$1\$" 2>/dev/null | tail -n 1) || true
    if [ -n "$found" ] && [ "$found" != "${2:-}" ]; then
      window=$found
      xdotool windowfocus --sync "$window"
      sleep 0.4
      return
    fi
    sleep 0.1
  done
  fail "the window \"$1\" did not open"
}

# Message boxes have the main window's title.
await_message() { await "Orvanexe Service" "$main"; }

key() { xdotool key --delay 60 "$@"; }
write() { xdotool type --delay 25 "$1"; }

# Presses Tab from one control of a form to another, by the form's own tab order. Controls that cannot take the
# focus at that moment are named behind them.
tab() {
  local form=$1 from=$2 to=$3
  shift 3
  local order count=0 on=false control
  order=$(sed -n 's:.*<tabstop>\(.*\)</tabstop>.*:\1:p' "$forms/$form.ui")
  for control in $order; do
    if $on && [[ " $* " != *" $control "* ]]; then count=$((count + 1)); fi
    [ "$control" = "$from" ] && on=true
    [ "$control" = "$to" ] && break
  done
  for _ in $(seq "$count"); do key Tab; done
}

# Opens a menu: the first number says which on the menu bar, the second which entry in it (none: a command on the
# bar itself).
menu() {
  xdotool windowfocus --sync "$main"
  key alt+d
  local i
  for ((i = 1; i < $1; ++i)); do key Right; done
  # An opened menu stands with no entry marked, or with its first.
  if [ $# -gt 1 ]; then
    key Home
    for ((i = 1; i < $2; ++i)); do key Down; done
  fi
}

choose() {
  menu "$@"
  key Return
}

# The current window with its frame, in few colours, which keeps the files small.
picture() {
  import -window "$window" -frame -strip +dither -colors 64 "PNG8:$pictures/$1.png"
  echo "  $1.png"
}
