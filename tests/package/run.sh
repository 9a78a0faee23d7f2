#!/usr/bin/env bash
# Installs a package and uses the programs as somebody who may write to his own home only.
#   tests/package/run.sh PACKAGE.deb
# It is unpacked into a scratch folder. On an integration machine (CI=true, as root) it is installed besides, and
# removed at the end.
set -euo pipefail
deb=$(readlink -f "$1")
work=$(mktemp -d /tmp/vorlant-package.XXXXXX)
chmod 755 "$work"
cd "$work" # the user may not reach the folder that this was started in
root=$work/root
started=()
installed=no

clean_up() {
  for pid in "${started[@]}"; do kill "$pid" 2> /dev/null || true; done
  mountpoint -q "$work/small" && umount "$work/small"
  [ $installed = yes ] && dpkg --purge vorlant > /dev/null
  chmod -R u+w "$work"
  rm -rf "$work"
}
trap clean_up EXIT

fail() { echo "package: $*" >&2; exit 1; }
expect() { [ "$2" = "$3" ] || fail "$1: \"$3\" in place of \"$2\""; }
await() { # what, command...
  local what=$1; shift
  for _ in $(seq 300); do "$@" > /dev/null 2>&1 && return; sleep 0.1; done
  fail "$what did not happen within 30 s"
}

# Runs a command as the user, in the home that is named. In the background become_user alone: it is the command then.
become_user() { # home, variable=value..., command...
  local home=$1; shift
  local who=()
  [ "$(id -u)" -eq 0 ] && who=(setpriv --reuid=65534 --regid=65534 --clear-groups)
  exec "${who[@]}" env -i HOME="$home" PATH="$bin:/usr/bin:/bin" LANG=C.UTF-8 QT_QPA_PLATFORM=offscreen "$@"
}
user() { (become_user "$@"); }
make_home() {
  mkdir -p "$1"
  [ "$(id -u)" -ne 0 ] || chown 65534:65534 "$1"
}

check_desktop() {
  desktop-file-validate "$root/usr/share/applications/vorlant.desktop"
  appstreamcli validate --no-net "$root/usr/share/metainfo/vorlant.metainfo.xml" > "$work/appstream.txt" ||
    { cat "$work/appstream.txt"; fail "the description for software centres is not valid"; }
  local program
  program=$(sed -n 's/^Exec=\([^ ]*\) %f$/\1/p' "$root/usr/share/applications/vorlant.desktop")
  [ -n "$program" ] && [ -x "$root/usr/bin/$program" ] || fail "the desktop entry starts $program, which is not installed"
  [ -s "$root/usr/share/icons/hicolor/scalable/apps/$(sed -n 's/^Icon=//p' \
    "$root/usr/share/applications/vorlant.desktop").svg" ] || fail "the icon of the desktop entry is missing"
}

# The compiler's and the linker's guards are in the programs, and the bitmaps of the icons in the package.
check_build() {
  local program size
  for program in vorlant vorlantctl vorlant-sim; do
    readelf -hldW --dyn-syms "$root/usr/bin/$program" > "$work/elf.txt"
    for guard in '__stack_chk_fail' '__[a-z]*_chk@' 'GNU_RELRO' 'Flags:.* NOW .*PIE|FLAGS.*BIND_NOW' 'Type: +DYN'; do
      grep -qE "$guard" "$work/elf.txt" || fail "$program was built without $guard"
    done
    [ "$(dpkg --print-architecture)" != amd64 ] ||
      [ "$(objdump -d "$root/usr/bin/$program" | grep -c endbr64)" -gt 100 ] || fail "$program: no marked jump targets"
  done
  for size in 48 128 256; do
    [ -s "$root/usr/share/icons/hicolor/${size}x$size/apps/vorlant.png" ] || fail "no icon of $size pixels"
  done
}

# Man pages render without a warning and tell of every option that a program knows.
check_man_pages() {
  local program option options
  for program in vorlant vorlantctl vorlant-sim; do
    LC_ALL=C.UTF-8 MANWIDTH=100 man --warnings -l "$root/usr/share/man/man1/$program.1.gz" 2> "$work/man.txt" |
      col -b > "$work/page.txt"
    [ ! -s "$work/man.txt" ] || fail "man page of $program: $(cat "$work/man.txt")"
    options=$(user "$work/home" "$program" --help | grep -oE -- '--[a-z-]+' | sort -u)
    for option in $options; do
      grep -qE "^ +(-., )?$option( |\$)" "$work/page.txt" || fail "man page of $program does not tell of $option"
    done
    grep -q '^EXIT STATUS' "$work/page.txt" || fail "man page of $program: no exit status"
  done
}

# What the shell offers behind a word that was begun, as bash-completion asks for it.
offered() { # words...
  become_user "$work/home" bash -c '. /usr/share/bash-completion/bash_completion; . "$1/usr/share/bash-completion/completions/$2"
    shift; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); COMP_LINE=$*; COMP_POINT=${#COMP_LINE}
    "_${1//-/_}"; printf "%s\n" "${COMPREPLY[@]}"' bash "$root" "$@"
}

# Every option and command that a program knows is offered, and the files that belong there.
check_completion() {
  local program option
  for program in vorlant vorlantctl vorlant-sim; do
    (offered $program -) > "$work/offered.txt"
    for option in $(user "$work/home" "$program" --help | grep -oE -- ' --?[a-zA-Z-]+\b' | sort -u); do
      grep -qxe "$option" "$work/offered.txt" || fail "the completion of $program does not offer $option"
    done
  done
  (offered vorlantctl "") > "$work/offered.txt"
  for option in $(user "$work/home" vorlantctl --help | sed -n '/^Commands/,/^$/s/^  \([a-z-]*\) .*/\1/p'); do
    grep -qx "$option" "$work/offered.txt" || fail "the completion of vorlantctl does not offer $option"
  done
  mkdir -p "$work/files"
  touch "$work/files/a.kx410" "$work/files/b.txt"
  expect "files for vorlant" "$work/files/a.kx410" "$(offered vorlant "$work/files/")"
  expect "classes" calibration "$(offered vorlantctl write --class ca)"
}

# A parameter file is known by its name and, whatever its name, by its first lines.
check_mime_type() { # a parameter file
  mkdir -p "$work/data/mime/packages"
  cp /usr/share/mime/packages/freedesktop.org.xml "$root"/usr/share/mime/packages/*.xml "$work/data/mime/packages"
  XDG_DATA_DIRS=$work/data update-mime-database "$work/data/mime"
  type_of() { XDG_DATA_DIRS=$work/data XDG_DATA_HOME=$work/none gio info -a standard::content-type "$1" |
    sed -n 's/.*content-type: //p'; }
  cp "$1" "$work/renamed"
  echo "of no known form" > "$work/named.kx910"
  printf '[Info]\r\nName=Japanese\r\n' > "$work/other.txt"
  expect "type by content" application/x-vorlant-parameters "$(type_of "$work/renamed")"
  expect "type by name" application/x-vorlant-parameters "$(type_of "$work/named.kx910")"
  expect "type of a language file" text/plain "$(type_of "$work/other.txt")"
  local file
  for file in "$root"/usr/share/vorlant/ini/KX*Screen.ini; do
    grep -qF "<glob pattern=\"*.$(sed -n 's/^ExtName=\([a-z0-9]*\).*/\1/p' "$file")\"/>" \
      "$root/usr/share/mime/packages/vorlant-parameters.xml" || fail "$file: its extension has no MIME type"
  done
}

# On a terminal that no other user's program has left a lock of.
start_simulator() { # home
  local attempt
  for attempt in 1 2 3 4 5 6 7 8; do
    become_user "$1" "$bin/vorlant-sim" --model KX410 > "$work/sim$attempt.txt" &
    started+=($!)
    await "a simulated controller" grep -q ready "$work/sim$attempt.txt"
    terminal=$(sed -n 's/^ready //p' "$work/sim$attempt.txt")
    [ -e "/var/lock/LCK..pts_$(basename "$terminal")" ] || return 0
  done
  fail "the terminals are locked by others"
}

check_programs() { # home
  local home=$1
  local own=$home/.local/share/vorlant
  make_home "$home"
  start_simulator "$home"
  ctl() { user "$home" "$bin/vorlantctl" --port "$terminal" --model KX410 --quiet "$@"; }
  expect "set" accepted,,25.8,°C "$(ctl set VQSV1=25.8 --as csv | tr -d '\r' | tail -n 1 | cut -d , -f 8-)"
  expect "get" VQSV1=25.8 "$(ctl get VQSV1)"
  ctl read --as set -o "$home/set.kx410"
  ctl compare "$home/set.kx410" > /dev/null || fail "the controller differs from what was just read of it"
  diff -r "$data" "$own" > "$work/diff.txt" || true
  expect "the user's program folder" "Only in $own: .shipped,Only in $own: Backup," "$(tr '\n' , < "$work/diff.txt")"
  check_window "$home" "$own"
}

# The window comes up with the last model, and stores its state when the process is asked to end.
check_window() { # home, own folder
  local settings=$1/.config/Vorlan/Vorlant.ini window status=0
  user "$1" sed -i 's/^LastModelNo=.*/LastModelNo=1/; s/^LastModelString=.*/LastModelString=KX41000000-10A/
                    s/^UseCommunicate=.*/UseCommunicate=True/; s/^LastModebusMode=.*/LastModebusMode=none/' "$settings"
  grep -q '^UseCommunicate=True' "$settings" || fail "$settings holds no settings"
  become_user "$1" "$bin/vorlant" 2> "$work/window.txt" &
  window=$!
  started+=($window)
  await "the window" grep -qa 'loadKXInfo1-KX41000000-10A' "$1/.local/state/vorlant/Log/Vorlant.log"
  kill "$window"
  wait "$window" || status=$?
  expect "end of the window" 0 "$status"
  tr -d '\r' < "$settings" | grep -qx 'LastModebusMode=0' || fail "the window did not store its state"
  [ -s "$1/.config/Vorlan/VorlantPos.ini" ] || fail "the window did not store its place"
}

# A newer package: what was edited stays and is told of once, the rest follows.
check_upgrade() { # home
  local own=$1/.local/share/vorlant
  chmod -R u+w "$root"
  sed -i '1s/^/; newer\r\n/' "$root"/usr/share/vorlant/ini/KX62{0,3}Comm.ini "$root/usr/share/vorlant/Lang/EN.txt"
  chmod -R a-w "$root"
  user "$1" sed -i '1s/^/; mine\r\n/' "$own/ini/KX620Comm.ini"
  user "$1" "$bin/vorlantctl" models 2> "$work/told.txt" > /dev/null
  expect "notices of an upgrade" 1 "$(wc -l < "$work/told.txt")"
  grep -qF "$own/ini/KX620Comm.ini was edited here" "$work/told.txt" || fail "an edited file was not told of"
  expect "edited file" '; mine' "$(head -n 1 "$own/ini/KX620Comm.ini" | tr -d '\r')"
  expect "untouched file" '; newer' "$(head -n 1 "$own/ini/KX623Comm.ini" | tr -d '\r')"
  expect "language file" '; newer' "$(head -n 1 "$own/Lang/EN.txt" | tr -d '\r')"
  user "$1" "$bin/vorlantctl" models 2>&1 > /dev/null | grep . && fail "told of twice"
  return 0
}

# No room, or no right to write: a line that says where, no crash; the installed definitions do for reading.
check_no_room() {
  local status=0 lines
  make_home "$work/settings"
  user /nonexistent XDG_CONFIG_HOME="$work/settings" "$bin/vorlantctl" models > "$work/models.txt" 2> "$work/told.txt"
  grep -q KX910 "$work/models.txt" || fail "no models without a home"
  grep -qF '/nonexistent/.local/share/vorlant cannot be filled: ' "$work/told.txt" || fail "not told of a missing home"
  user /nonexistent "$bin/vorlantctl" models > "$work/models.txt" 2> "$work/told.txt" || status=$?
  expect "status without a home" 0 "$status"
  grep -q KX910 "$work/models.txt" || fail "no models without a settings folder"
  expect "lines without a home" 1 "$(grep -c 'Nothing can be kept in the home folder /nonexistent' "$work/told.txt")"
  expect "lines in all without a home" 1 "$(wc -l < "$work/told.txt")"
  [ "$(id -u)" -eq 0 ] && mkdir "$work/small" && mount -t tmpfs -o size=128k,mode=777 none "$work/small" 2> /dev/null ||
    return 0
  user "$work/small" "$bin/vorlantctl" models > /dev/null 2> "$work/told.txt" || true
  grep -qF "$work/small/.local/share/vorlant cannot be filled: No space left on device" "$work/told.txt" ||
    fail "not told of a full disk: $(cat "$work/told.txt")"
  mount -o remount,size=8m "$work/small"
  user "$work/small" "$bin/vorlantctl" models 2>&1 > /dev/null | grep . && fail "the fill was not completed"
  lines=$(diff -rq "$data" "$work/small/.local/share/vorlant" | grep -cv '^Only in .*: \(.shipped\|Log\)$' || true)
  expect "files that differ after the completed fill" 0 "$lines"
}

use() { # folder that the package is installed below
  bin=$1/usr/bin
  data=$1/usr/share/vorlant
}

dpkg-deb -x "$deb" "$root"
chmod -R a-w "$root"
use "$root"
make_home "$work/home"
check_desktop
check_build
check_man_pages
check_completion
check_programs "$work/home"
check_mime_type "$work/home/set.kx410"
check_no_room
check_upgrade "$work/home"

if [ "${CI:-}" = true ] && [ "$(id -u)" -eq 0 ] && ! dpkg-query -W vorlant > /dev/null 2>&1; then
  DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "$deb" > "$work/apt.txt" 2>&1 ||
    { cat "$work/apt.txt"; fail "the package cannot be installed"; }
  installed=yes
  use ""
  check_programs "$work/second"
fi
echo "package: $(basename "$deb") works"
