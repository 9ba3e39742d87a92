#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# make.sh BUILD [NAME...]: makes the records of tests/data/records anew from their scripts; look at
# what changed with git diff. Needs the target make_records.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
build=$(cd "$1" && pwd); shift
root=$here/../..
names=("$@")
[ $# -gt 0 ] || for script in "$here"/*.txt; do names+=("$(basename "$script" .txt)"); done
for name in "${names[@]}"; do
    work=$(mktemp -d)
    mkdir -p "$work/home" "$work/rec"; chmod 700 "$work/home"
    cp -r "$root/examples" "$work/files"
    cp "$root"/tests/data/records/files/* "$work/files/"
    (cd "$work/files" && HOME=$work/home XDG_CONFIG_HOME=$work/home XDG_RUNTIME_DIR=$work/home \
        RECPATH=$work/files QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8 \
        "$build/tests/records/make_records" "$here/$name.txt" "$work/rec/GUIReplay_$name.xml" 2>&1 |
        { grep -v "This plugin does not support" || true; })
    mkdir -p "$root/tests/data/records"
    rm -f "$root/tests/data/records/GUIReplay_$name".* "$root/tests/data/records/GUIReplay_${name}"_*
    cp "$work"/rec/*.xml "$work"/rec/*.brf "$work"/rec/*.ckp "$root/tests/data/records/"
    rm -rf "$work"
    echo "made $name"
done
