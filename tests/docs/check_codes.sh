#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# check_codes.sh DOCUMENT.md BIN
# The table at the end of DOCUMENT, below its line "## All messages", must be what `zov check --list-codes`
# prints. With ZOV_UPDATE_EXPECTED=1 the document is rewritten instead, for review.
set -euo pipefail
document=$1
bin=$2
made=$(mktemp)
trap 'rm -f "$made"' EXIT
sed '/^## All messages$/q' "$document" >"$made"
{ echo; "$bin/zov" check --list-codes; } >>"$made"
if [ "${ZOV_UPDATE_EXPECTED:-}" = 1 ]; then
    cat "$made" >"$document"
else
    diff "$document" "$made" || { echo "run: ZOV_UPDATE_EXPECTED=1 ./test -R docs.Codes" >&2; exit 1; }
fi
