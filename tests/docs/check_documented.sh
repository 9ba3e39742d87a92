#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# check_documented.sh DOCUMENT.md FOLDER BIN...
# Runs every command of the document's ```console blocks ("$ command", its output below) in a copy of
# FOLDER with the BIN folders on the path, and fails when the output is not what the document shows.
# With ZOV_UPDATE_EXPECTED=1 the document is rewritten instead, for review.
set -euo pipefail
document=$1
folder=$2
shift 2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp -r "$folder" "$work/here"
for bin in "$@"; do
    PATH=$bin:$PATH
done
export PATH LC_ALL=C

commands=0
in_block=
command=
# Runs what was collected and writes its output; a command may go on behind a backslash.
flush() {
    if [ -n "$command" ]; then
        (cd "$work/here" && bash -c "$command") </dev/null 2>&1 || true
        commands=$((commands + 1))
        command=
    fi
}
{
    while IFS= read -r line || [ -n "$line" ]; do
        if [ "$line" = '```console' ]; then
            in_block=1
            printf '%s\n' "$line"
        elif [ -n "$in_block" ] && [ "$line" = '```' ]; then
            flush
            in_block=
            printf '%s\n' "$line"
        elif [ -z "$in_block" ]; then
            printf '%s\n' "$line"
        elif [ "${line#\$ }" != "$line" ]; then
            flush
            command=${line#\$ }
            printf '%s\n' "$line"
        elif [ -n "$command" ] && [ "${command%\\}" != "$command" ]; then
            command+=$'\n'$line
            printf '%s\n' "$line"
        fi
    done <"$document"
    printf '%s\n' "$commands" >"$work/count"
} >"$work/new.md"

if [ "$(cat "$work/count")" -eq 0 ]; then
    echo "$document holds no command" >&2
    exit 1
fi
if [ -n "${ZOV_UPDATE_EXPECTED:-}" ]; then
    cp "$work/new.md" "$document"
    exit 0
fi
diff -u "$document" "$work/new.md" && echo "$(cat "$work/count") commands give what $document shows"
