#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Style checks of the whole tree: format, licence lines, leftovers. With --fix the format is put
# right.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
status=0
fail() {
    printf '%s\n' "$@" >&2
    status=1
}

sources=$(find src tests bench fuzz \( -name '*.h' -o -name '*.cpp' \) 2>/dev/null | sort)

for tool in clang-format-14 clang-format; do
    if command -v "$tool" >/dev/null; then
        if [ "${1:-}" = --fix ]; then
            "$tool" -i $sources
        elif ! "$tool" --dry-run --Werror $sources; then
            fail "format: run tools/stylecheck.sh --fix"
        fi
        break
    fi
    [ "$tool" = clang-format ] && echo "format: not checked, clang-format is not installed"
done

unlicensed=$(head -qn1 $sources /dev/null | grep -vc 'SPDX-License-Identifier: Apache-2.0' || true)
if [ "$unlicensed" -ne 0 ]; then
    fail "these do not begin with the licence line:" \
        "$(grep -L 'SPDX-License-Identifier: Apache-2.0' $sources)"
fi

# The desktop alone sets a locale: the toolkit took the user's, numbers go back to the plain one.
if grep -nE '\b(strtod|atof|stod|stof|sscanf|setlocale)\(' $(printf '%s\n' $sources | grep '^src/') |
    grep -v 'setlocale(LC_NUMERIC, "C")'; then
    fail "numbers depend on the locale above; use base/Number.h"
fi

if grep -nE '[[:space:]]+$' $sources; then
    fail "white space at the end of the lines above"
fi
exit "$status"
