# The installed program under wine: the step `program` of packaging/windows/check, which sources this file. It works in a
# world of its own, with a home and a display of its own.
. tools/screen.sh

scene=$target/check
work=$scene/home/Documents/Orvanexe # the user's folder
baud=19200                          # of an upload
bits=10                             # of a character
characters=267                      # of a block: wake-up, header, data, two answers

wine() { "$here/cmake/run-under-wine" "$@"; }

# Ends what runs in the world.
end_world() {
  WINEPREFIX=$scene/world wineserver -k 2>/dev/null || true
  WINEPREFIX=$scene/world timeout 20 wineserver -w 2>/dev/null || true
}

leave() {
  local status=$?
  trap - EXIT
  end_world
  stop_all
  [ $status -eq 0 ] && rm -rf "$scene"
  exit $status
}

# A new world, in which COM1 is whatever stands under the name COM1 in the scene.
make_world() {
  rm -rf "$scene"
  mkdir -p "$scene/home/Documents"
  export HOME=$scene/home WINEPREFIX=$scene/world
  unset XDG_CACHE_HOME XDG_CONFIG_HOME XDG_DATA_HOME XDG_RUNTIME_DIR
  # Else the toolkit takes any font it finds, one with serifs.
  local fonts='HKLM\Software\Microsoft\Windows NT\CurrentVersion\FontSubstitutes' name
  {
    wine cmd /c ver &&
      wine reg delete 'HKCU\Software\Wine\Drivers' /v Graphics /f && # here it draws
      wine reg add 'HKLM\Software\Wine\Ports' /v COM1 /d "$scene/COM1" /f &&
      for name in 'MS Shell Dlg' 'MS Shell Dlg 2' Tahoma; do wine reg add "$fonts" /v "$name" /d 'DejaVu Sans' /f; done &&
      for name in Courier 'Courier New'; do wine reg add 'HKCU\Software\Wine\Fonts\Replacements' /v "$name" /d 'DejaVu Sans Mono' /f; done
  } >"$scene/world.log" 2>&1 || { cat "$scene/world.log" >&2; fail "there is no wine"; }
  open_display "$scene"
  end_world
}

# What each user has on Windows, and not in a new world of wine.
make_folder_of_programs() { mkdir "$(echo "$WINEPREFIX"/drive_c/users/*/AppData/Local)/Programs"; }

# Restarts the world, as a PC is started anew, and notes what it holds: files, and what is in its registry.
# inventory NAME
inventory() {
  wine wineboot >/dev/null 2>&1
  end_world
  (cd "$scene" && find home world/drive_c -path home/.cache -prune -o -print | LC_ALL=C sort >"$1.files")
  LC_ALL=C sort "$WINEPREFIX"/*.reg >"$scene/$1.registry"
}

# --- The device -----------------------------------------------------------------------------------------------------

# plug NAME OPTION...: a device in the place of the last one; its pseudo-terminal stands under that name in the scene.
plug() {
  unplug
  local name=$1
  shift
  "$native/src/simulator/program/oxsim" --link "$scene/$name" --dump "$scene" "$@" >"$scene/oxsim.log" 2>&1 &
  device=$!
  started+=("$device")
  until_true 10 grep -q " an $scene/$name" "$scene/oxsim.log" || fail "no device: $(cat "$scene/oxsim.log")"
}

# The device goes, and leaves what it holds as tables.bin and program.bin.
unplug() {
  [ -n "${device:-}" ] || return 0
  rm -f "$scene"/tables.bin "$scene"/program.bin
  kill "$device"
  wait "$device" 2>/dev/null || true
  device=
}

# differs FILE FILE: true for two files that are there and are not the same.
differs() { [ -s "$1" ] && [ -s "$2" ] && ! cmp -s "$1" "$2"; }

# --- The program ----------------------------------------------------------------------------------------------------

# Everything that follows in the log is new. What the program has done stands there.
mark() { marked=$(wc -l <"$log"); }
news() { tail -n "+$((marked + 1))" "$log"; }
logged() { news | grep -qE "$1"; }

# expect SECONDS REGEX: waits until the log says so.
expect() {
  until_true "$1" logged "$2" || fail "the log does not say within $1 s: $2"
}

shown() { xdotool search --onlyvisible --name '.*' 2>/dev/null | grep -qx "$1"; }
hidden() { ! shown "$1"; }

# dismiss KEY WINDOW: closes the current window by the key and goes back to another.
dismiss() {
  local gone=$window
  key "$1"
  until_true 20 hidden "$gone" || fail "a window does not close"
  window=$2
  xdotool windowfocus --sync "$window"
}

start_program() {
  wine start /wait /unix "$link" >"$scene/program.log" 2>&1 &
  program=$!
  patience=600 await "Orvanexe Service"
  main=$window
  until_true 20 test -e "$(echo "$work"/Protokoll/*.log)" || fail "there is no log"
  log=$(echo "$work"/Protokoll/*.log)
  marked=0
  expect 10 'Fenster auf "Start"'
}

# With the focus on a control that opens the file chooser.
load() {
  local owner=$window
  key space
  await "Datei wählen"
  write "$1"
  dismiss Return "$owner"
}

# message TEXT: waits for the message box that begins so, and closes it.
message() {
  expect "${2:-20}" "Meldung \"$1"
  await_message
  dismiss Return "${3:-$main}"
}

# --- What is tried --------------------------------------------------------------------------------------------------

try_program() {
  step "The installed program under wine"
  setup=$(ls "$target"/oxservice-*-setup.exe 2>/dev/null | tail -n 1)
  [ -n "$setup" ] || fail "there is no installer: packaging/windows/build makes it"
  trap leave EXIT
  trap 'exit 130' INT TERM HUP
  make_world
  make_folder_of_programs
  inventory before
  install
  start_program
  picture hauptfenster
  exchange_data
  update_tables
  update_program
  close_program
  uninstall
}

install() {
  timeout 300 cmake/run-under-wine "$setup" /S >"$scene/setup.log" 2>&1 || fail "the installer ends with status $?"
  installed=$(dirname "$(find "$WINEPREFIX/drive_c/users" -name oxservice.exe)")
  link=$(find "$WINEPREFIX/drive_c/users" -name 'Orvanexe Service.lnk')
  [ -n "$link" ] || fail "there is no shortcut"
  [ -d "$work/Protokoll" ] || fail "there is no folder for the user's files"
  cp "$demo"/netz.* "$demo"/ox3.pr3 "$work"
  tried "installed for one user: $(find "$installed" -type f | wc -l) files, $(du -sm "$installed" | cut -f 1) MB"
}

# The device's line is not the one that the program begins with.
device_line=(--baud 4800 --parity E)

# With a tap in the line.
exchange_data() {
  plug device "${device_line[@]}" --tables "$demo"
  packaging/windows/tap "$(readlink "$scene/device")" "$scene/COM1" "$scene/turns" 2>"$scene/tap.log" &
  local tap=$!
  started+=("$tap")
  until_true 10 test -e "$scene/turns" || fail "no tap in the line: $(cat "$scene/tap.log")"
  mark
  choose 3
  message 'Verbindung ist hergestellt!'
  logged 'Gerätetyp: OX 3.*Baudrate: 4800.*Parität: gerade' || fail "the connection message tells another device"
  tried "started by its shortcut; the connection test finds the device"

  choose 4
  await "Datenaustausch mit Orvanexe"
  tab Datenaustausch AKZ duemstwal Abbruch
  load netz.mes
  mark
  tab Datenaustausch AKZ Sammelabruf
  key space
  expect 60 'COM1 zu'
  picture datenaustausch
  save_values
  measure_turn_around
  dismiss Escape "$main"
  kill "$tap"
  "$native/src/tool/oxtool" poll --port "$scene/device" --line 4800,E --table "$demo/netz.mes" --csv >"$scene/poll.csv"
  unplug
  rm "$scene/COM1"
  # Values are others each time.
  local seen expected
  seen=$(tail -c +4 "$work/Messwerte.csv" | cut -d ';' -f 1-3,6)
  expected=$(cut -d ';' -f 1-3,6 "$scene/poll.csv")
  [ "$seen" = "$expected" ] || { diff <(echo "$expected") <(echo "$seen") >&2; fail "the poll has other points or names"; }
  grep -q ';Pegel;' "$work/Messwerte.csv" || fail "the poll has no names"
  tried "a poll with names: $(($(wc -l <"$work/Messwerte.csv") - 1)) values saved as a table, points and names as oxtool has them"
}

# With the focus where it is after a poll.
save_values() {
  local owner=$window
  tab Datenaustausch AKZ mewanz Abbruch
  key shift+F10 s
  await "Speichern unter"
  key ctrl+a
  write Messwerte.csv
  dismiss Return "$owner"
  until_true 10 test -s "$work/Messwerte.csv" || fail "the values are not saved"
  tab Datenaustausch mewanz Verlassen
  key Tab
}

turns() { [ "$(wc -l <"$scene/turns")" -ge "$1" ]; }
# poll_until COUNT: the return key polls, where no poll is under way.
poll_until() { key Return && until_true 1 turns "$1"; }

# Polls of one value.
measure_turn_around() {
  local wanted=25 turn
  : >"$scene/turns"
  key Tab
  write 12345678
  key Tab
  write 0012
  for turn in $(seq $wanted); do
    until_true 10 poll_until "$turn" || fail "no acknowledgement of a reply"
  done
  echo "  turn-around, last character of a reply to its acknowledgement, of $wanted: median $(sort -n "$scene/turns" |
    sed -n "$((wanted / 2 + 1))p") ms, longest $(sort -n "$scene/turns" | tail -n 1) ms"
}

# ratio BLOCKS: of an upload in the log, from the wake-up of its first block to the answer to its last.
ratio() {
  news | LC_ALL=C awk -v blocks="$1" -v line="$(awk "BEGIN { print $1 * $characters * $bits / $baud }")" '
    $2 == "COM1" && $3 == ">" {
      bytes = $0
      sub(/^[^"]*"/, "", bytes); sub(/".*/, "", bytes)
      gsub(/<[0-9A-F][0-9A-F]>/, ".", bytes)
      if ($4 == "\"S\"") wake = $1
      inBlock = length(bytes) == 264
      if (inBlock && seen++ == 0) start = wake
    }
    $2 == "COM1" && $3 == "<" && inBlock { end = $1 + (substr($NF, 1, 1) == "+" ? substr($NF, 2) : 0) }
    END {
      if (seen != blocks) { print "the log shows " seen + 0 " of " blocks " blocks"; exit 1 }
      printf "%d blocks: %.2f s on the line, %.2f s in all, ratio %.3f\n", seen, line, (end - start) / 1000,
        (end - start) / 1000 / line
    }'
}

# The device has held something else before, so only the program can have written what it holds then.
update_tables() {
  cp -r "$demo" "$scene/older"
  sed -i 's/"Steg2"/"Steg9"/' "$scene/older/netz.mes"
  device_line+=(--tables "$scene/older" --memory "$scene/memory")
  quietly image "$native/src/tool/oxtool" image --generation 3 "$demo"/netz.{mes,par,zuo} -o "$scene/expected.tables"
  quietly unpack "$native/src/tool/oxtool" unpack "$demo/ox3.pr3" -o "$scene/expected.program"
  plug COM1 "${device_line[@]}"
  unplug
  differs "$scene/tables.bin" "$scene/expected.tables" || fail "the device holds the tables already"
  differs "$scene/program.bin" "$scene/expected.program" || fail "the device holds the program already"

  plug COM1 "${device_line[@]}"
  choose 2 1
  await "Update Tabellen"
  load netz
  tab updatetab ChMes ChPar
  load netz
  tab updatetab ChPar ChZuo
  load netz
  tab updatetab ChZuo TabStart
  finish_update 'Tabellenupdate erfolgreich abgeschlossen!' update-tabellen
  holds tables
  tried "a table update: $(stat -c %s "$scene/tables.bin") bytes in the device's memory, each as it must be"
  echo "  table update, $(ratio 64)"
}

update_program() {
  plug COM1 "${device_line[@]}"
  mark
  choose 2 2
  message ''
  await "Update Programm OX I*"
  load ox3
  tab updatepro ChPro ProStart
  finish_update '.*erfolgreich' update-programm
  holds program
  holds tables
  tried "a program update: $(stat -c %s "$scene/program.bin") bytes in the device's memory, each as it must be; its tables are kept"
  echo "  program update, $(ratio 256)"
}

# finish_update MESSAGE PICTURE: with the focus on the button that starts it.
finish_update() {
  local update=$window
  mark
  key space
  expect 300 'Meldung'
  logged "Meldung \"$1" || fail "the update is not successful"
  await_message
  dismiss Return "$update"
  picture "$2"
  dismiss Escape "$main"
  unplug
}

# holds tables|program
holds() {
  cmp "$scene/$1.bin" "$scene/expected.$1" || fail "the device's memory is not what was sent: $1"
}

close_program() {
  mark
  xdotool windowfocus --sync "$main"
  key alt+F4 # the close box; the menu saves nothing
  expect 20 '^ *[0-9]+ Ende$'
  until_true 30 ended || fail "the program does not end"
  wait "$program" || fail "the program ends with status $?"
  local settings
  settings=$(tr -d '\r' <"$work/OX.CFG" | tr '\n' ' ')
  [[ $settings == '\C\1 \B\4800 \P\E '* ]] || fail "the settings are not saved: $settings"
  tried "closed by its close box: settings saved, a whole log of $(wc -l <"$log") lines"
}

ended() { ! kill -0 "$program" 2>/dev/null; }
uninstalled() { [ ! -e "$installed" ]; }

uninstall() {
  wine "$installed/Deinstallieren.exe" /S >>"$scene/setup.log" 2>&1 || fail "the uninstaller ends with status $?"
  until_true 60 uninstalled || fail "left in the program's folder: $(ls "$installed")"
  inventory after
  local users left
  users=$(cd "$scene" && find "${work#"$scene/"}" | LC_ALL=C sort)
  # The uninstaller's own empty folder goes with the system's other temporary files.
  left=$(comm -13 "$scene/before.files" "$scene/after.files" | grep -vxF "$users" |
    grep -v '/Temp/~nsu[0-9A-Z]*\.tmp$') || true
  [ -z "$left" ] || fail "uninstalled, but left are: $left"
  # The toolkit notes the last folder of a "Speichern unter" in a key that all programs with it share.
  left=$(comm -13 "$scene/before.registry" "$scene/after.registry" | grep -iE 'orvanexe|oxservice' |
    grep -vE '^"(history|lastVisited)"=.*"file:///C:/users/[^/]*/Documents/Orvanexe(\\0)?"$') || true
  [ -z "$left" ] || fail "uninstalled, but the registry has: $left"
  local name
  for name in netz.mes netz.par netz.zuo ox3.pr3 OX.CFG Messwerte.csv "${log#"$work/"}"; do
    [ -s "$work/$name" ] || fail "the uninstaller has taken the user's file $name"
  done
  [ "$(wc -l <<<"$users")" -eq 9 ] || fail "not all of these are the user's: $users"
  tried "uninstalled: nothing is left but the user's files; in the registry the toolkit's note of the last folder"
}
