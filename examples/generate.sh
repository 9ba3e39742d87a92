#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# generate.sh FOLDER: a library of each example part list, in batch mode, with its log beside it.
# zovra is taken from the path.
set -euo pipefail
lists=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
mkdir -p "$1"
cd "$1"

generate() {
    local name=$1
    shift
    zovra -b "-SourceFile=$lists/$name.xlsx" "-DestinationLibrary=$name.zov" \
        -OptionFromDupPartNumber=KeepTheFirst -OptionAppendDupPartNumber=KeepTheFirst "$@" ||
        { cat ZVLibGen.log >&2 && exit 1; }
    mv ZVLibGen.log "$name.log"
}

generate capacitors -ComponentType=Capacitor -WorkSheet=Capacitors -HeaderRow=3 \
    "-ColumnMapping=$lists/capacitor-columns.txt" -RUnit=mOhm -LUnit=nH -CUnit=nF -CnomUnit=nF
generate inductors -ComponentType=Inductor -WorkSheet=Inductors -HeaderRow=1 \
    "-ColumnMapping=$lists/inductor-columns.txt" -RUnit=mOhm -MaxCurrentUnit=A
generate resistors -ComponentType=Resistor -WorkSheet=Resistors -HeaderRow=1 -RUnit=Ohm
