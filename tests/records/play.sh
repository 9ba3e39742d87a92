#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# play.sh ZOVRA RECORDS NAME EXAMPLES: plays one record in a folder of its own, with
# settings of its own.
# ZOV_RECORD_KEEP=1 keeps the folder, ZOV_RECORD_LOCALE is another language, ZOV_RECORD_DARK=1 the
# dark theme, ZOV_RECORD_SMALL=1 a window of half the size.
set -u
zovra=$1 records=$2 name=$3 examples=$4
work=$(mktemp -d "${TMPDIR:-/tmp}/zov-record-XXXXXX")
[ -n "${ZOV_RECORD_KEEP:-}" ] && echo "in $work" || trap 'rm -rf "$work"' EXIT
mkdir -p "$work/home" "$work/rec"
cp "$records"/GUIReplay_"$name".* "$records"/GUIReplay_"${name}"_CheckPoint* "$work/rec/"
cp -r "$examples" "$work/files"
cp "$records"/files/* "$work/files/"
export HOME=$work/home XDG_CONFIG_HOME=$work/home XDG_RUNTIME_DIR=$work/home RECPATH=$work/files
export QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen} LC_ALL=${ZOV_RECORD_LOCALE:-C.UTF-8}
chmod 700 "$work/home"
mkdir -p "$work/home/Zovra"
{
    echo '[MainFrame]'
    [ -z "${ZOV_RECORD_DARK:-}" ] || echo 'DarkTheme=true'
    # 640 x 400 at 0,0 as the toolkit stores the place of a window.
    [ -z "${ZOV_RECORD_SMALL:-}" ] || echo 'Geometry="@ByteArray(\x1\xd9\xd0\xcb\x0\x3\x0\x0\x0\x0\x0\x0\x0\x0\x0\x0\x0\x0\x2\x7f\x0\x0\x1\x8f\x0\x0\x0\x0\x0\x0\x0\x0\x0\x0\x2\x7f\x0\x0\x1\x8f\x0\x0\x0\x0\x0\x0\x0\x0\x0\x0\x0\x0\x0\x0\x0\x0\x0\x0\x0\x0\x2\x7f\x0\x0\x1\x8f)"'
} >"$work/home/Zovra/Zovra.conf"
cd "$work/files" || exit 1
"$zovra" -replay "$work/rec/GUIReplay_$name.xml" -speed "${ZOV_RECORD_SPEED:-0}" 2> >(grep -v "This plugin does not support" >&2)
