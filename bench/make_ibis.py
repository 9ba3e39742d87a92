#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""A large IBIS file of one component whose models are as vendors write them: I-V tables of about 100
rows, waveforms of 100, numbers with and without exponent and suffix.

    bench/make_ibis.py OUT.ibs [MEGABYTES]      42.8 by default
"""
import math
import sys

SUPPLY = 3.3


def table(rows):
    return "".join(rows)


def iv(keyword, sign, scale, start, end):
    rows = [f"[{keyword}]\n"]
    steps = 99
    for i in range(steps + 1):
        v = start + (end - start) * i / steps
        amps = sign * scale * math.tanh(v / 0.8)
        rows.append(f"  {v:+9.4f}   {amps:+.6e}   {0.8 * amps:+.6e}   {1.2 * amps:+.6e}\n")
    return table(rows)


def clamp(keyword, sign, start, end):
    rows = [f"[{keyword}]\n"]
    steps = 60
    for i in range(steps + 1):
        v = start + (end - start) * i / steps
        amps = sign * 0.02 * max(0.0, -v - 0.5)
        rows.append(f"{v:.3f}V  {amps * 1e3:.4f}mA  {0.8 * amps * 1e3:.4f}mA  {1.2 * amps * 1e3:.4f}mA\n")
    return table(rows)


def level(high, volts, column):
    """Where the 50 ohm fixture meets the tables above, by bisection."""
    scale = (1.0, 0.8, 1.2)[column]

    def current(v):
        if high:
            drive = -0.05 * math.tanh((SUPPLY - v) / 0.8)
        else:
            drive = 0.06 * math.tanh(v / 0.8)
        return scale * drive + (v - volts) / 50.0

    low, top = -2.0, 6.0
    for _ in range(60):
        middle = 0.5 * (low + top)
        if current(middle) > 0:
            top = middle
        else:
            low = middle
    return 0.5 * (low + top)


def waveform(rising, volts):
    ends = [(level(False, volts, c), level(True, volts, c)) for c in range(3)]
    rows = [f"[{'Rising' if rising else 'Falling'} Waveform]\n",
            "R_fixture = 50.0\n", f"V_fixture = {volts}\n", "| time  V(typ)  V(min)  V(max)\n"]
    steps = 99
    for i in range(steps + 1):
        part = min(1.0, max(0.0, (i - 10) / 70.0))
        part = part * part * (3 - 2 * part)
        values = []
        for low, high in ends:
            a, b = (low, high) if rising else (high, low)
            values.append(a + (b - a) * part)
        rows.append(f"{i * 0.05:.3f}ns   {values[0]:.6f}   {values[1]:.6f}   {values[2]:.6f}\n")
    return table(rows)


def body():
    parts = ["""Model_type I/O
Polarity Non-Inverting
Enable Active-Low
Vinl = 0.8V
Vinh = 2.0V
Vmeas = 1.5V
Cref = 15pF
Rref = 500
Vref = 0
C_comp 5.0pF 4.5pF 5.5pF
[Temperature Range] 25 85 0
[Voltage Range] 3.3V 3.3V 3.3V
"""]
    parts.append(iv("Pulldown", 1, 0.06, -SUPPLY, 2 * SUPPLY))
    parts.append(iv("Pullup", -1, 0.05, -SUPPLY, 2 * SUPPLY))
    parts.append(clamp("GND Clamp", -1, -SUPPLY, SUPPLY))
    parts.append(clamp("POWER Clamp", 1, -SUPPLY, 0.0))
    span = 0.6 * (level(True, 0.0, 0) - level(False, 0.0, 0))
    fall = 0.6 * (level(True, SUPPLY, 0) - level(False, SUPPLY, 0))
    parts.append(f"[Ramp]\ndV/dt_r {span:.4f}/1.5n {0.9 * span:.4f}/1.7n {1.05 * span:.4f}/1.3n\n"
                 f"dV/dt_f {fall:.4f}/1.5n {0.9 * fall:.4f}/1.7n {1.05 * fall:.4f}/1.3n\n")
    for rising in (True, False):
        for volts in (0.0, SUPPLY):
            parts.append(waveform(rising, volts))
    return "".join(parts)


def main():
    path = sys.argv[1]
    wanted = int(float(sys.argv[2] if len(sys.argv) > 2 else 42.8) * 1e6)
    name = path.rsplit("/", 1)[-1]
    model = body()
    count = max(1, (wanted - 300) // (len(model) + 60))
    with open(path, "w", encoding="ascii", newline="\n") as out:
        out.write(f"[IBIS Ver] 5.1\n[File Name] {name}\n[File Rev] 1.0\n"
                  "[Component] Bench\n[Manufacturer] Bench\n[Package]\n"
                  "R_pkg 0.1 0.05 0.2\nL_pkg 2nH 1nH 3nH\nC_pkg 1pF 0.5pF 2pF\n"
                  "[Pin] signal_name model_name R_pin L_pin C_pin\nV1 VCC POWER\nG1 GND GND\n")
        for i in range(count):
            out.write(f"{i + 1} s{i + 1} m{i + 1} NA NA NA\n")
        for i in range(count):
            out.write(f"|\n[Model] m{i + 1}\n")
            out.write(model)
        out.write("[End]\n")


main()
