#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Lists the messages of the checker that no test in tests/ibischk makes it give, but for those that
# docs/checker-coverage.md says can't be given: unfired-codes.sh [BUILD]. The status is 1 when there is one.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=${1:-$root/build}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
if ! ZOV_FIRED_CODES=$work/fired "$build/tests/zov_ibischk_tests" --gtest_brief=1 >tests.txt; then
    cat tests.txt
    exit 1
fi
"$build/src/cli/zov" check --list-codes | sed -n 's/^| \([0-9]*\) |.*/\1/p' | sort >all
# Rows "| 0904 | reason |" of its table.
sed -n 's/^| \([0-9][0-9, ]*\) |.*/\1/p' "$root/docs/checker-coverage.md" | tr -s ', ' '\n' | sort >never
sort -un fired | xargs printf '%04d\n' | sort >known
unfired=$(comm -23 all <(sort -u known never))
both=$(comm -12 known never)
[ -z "$unfired" ] || printf 'no test gives %s\n' $unfired
[ -z "$both" ] || printf 'said to be impossible, but given: %s\n' $both
[ -z "$unfired$both" ]
