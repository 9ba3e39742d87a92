#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# play.sh ZOVRA RECORDS NAME EXAMPLES: plays one record in a folder of its own, with settings of its
# own, at any size that the platform gives. ZOV_RECORD_KEEP=1 keeps the folder.
set -u
zovra=$1 records=$2 name=$3 examples=$4
work=$(mktemp -d "${TMPDIR:-/tmp}/zov-record-XXXXXX")
[ -n "${ZOV_RECORD_KEEP:-}" ] && echo "in $work" || trap 'rm -rf "$work"' EXIT
mkdir -p "$work/home" "$work/rec"
cp "$records"/GUIReplay_"$name".* "$records"/GUIReplay_"${name}"_CheckPoint* "$work/rec/"
cp -r "$examples" "$work/files"
cp "$records"/files/* "$work/files/"
export HOME=$work/home XDG_CONFIG_HOME=$work/home XDG_RUNTIME_DIR=$work/home RECPATH=$work/files
export QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen} LC_ALL=C.UTF-8
chmod 700 "$work/home"
cd "$work/files" || exit 1
"$zovra" -replay "$work/rec/GUIReplay_$name.xml" -speed "${ZOV_RECORD_SPEED:-0}" 2> >(grep -v "This plugin does not support" >&2)
