#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes the part lists and model files of examples/. Run once by hand (needs python3-openpyxl);
the results are committed. Makers and part numbers are invented; the network files are computed from
series R-L-C models in closed form."""

import cmath
import datetime
import math
import pathlib

from openpyxl import Workbook
from openpyxl.styles import Font

HERE = pathlib.Path(__file__).resolve().parent.parent / "examples"
MODELS = HERE / "models"
STAMP = datetime.datetime(2024, 3, 1, 9, 0, 0)

NORVIK = "Norvik Components"
KESTREL = "Kestrel Passives"
TAMARACK = "Tamarack Electronics"

# case, metric name, inductance of the case in nH
CASES = [("0201", 0.22), ("0402", 0.34), ("0603", 0.52), ("0805", 0.64), ("1206", 0.92), ("1210", 0.84)]
E6 = [10, 15, 22, 33, 47, 68]
E12 = [10, 12, 15, 18, 22, 27, 33, 39, 47, 56, 68, 82]


def save(book, name):
    book.properties.creator = "examples"
    book.properties.created = STAMP
    book.properties.modified = STAMP
    book.save(HERE / name)


def code3(nf):
    """104 for 100 nF: two digits and the power of ten, in pF."""
    pf = nf * 1000
    exponent = math.floor(math.log10(pf) + 1e-9) - 1
    return f"{round(pf / 10 ** exponent):02d}{max(exponent, 0)}"


def esr_mohm(nf, dielectric):
    base = 2.4 if dielectric == "C0G" else 3.1
    return round(base + 95.0 / (nf ** 0.45 + 1.0), 2)


def two_port(path, title, r_ohm, l_henry, c_farad, shunt, points=121):
    """S-parameters of a series R-L-C, as a shunt to ground or in series between the ports."""
    z0 = 50.0
    lines = [f"! {title}", f"! {'shunt to ground' if shunt else 'in series'}, computed from a series R-L-C model",
             "# Hz S RI R 50"]
    for i in range(points):
        f = 10 ** (4 + 6 * i / (points - 1))
        w = 2 * math.pi * f
        skin = math.sqrt(1 + f / 1e8)
        z = complex(r_ohm * skin, w * l_henry - (1 / (w * c_farad) if c_farad else 0))
        if shunt:
            s11, s21 = -z0 / (z0 + 2 * z), 2 * z / (z0 + 2 * z)
        else:
            s11, s21 = z / (z + 2 * z0), 2 * z0 / (z + 2 * z0)
        cells = [s11, s21, s21, s11]
        lines.append(f"{f:.6e} " + " ".join(f"{s.real:.6e} {s.imag:.6e}" for s in cells))
    path.write_text("\n".join(lines) + "\n", newline="\n")


def circuit(path, name, r_ohm, l_nh, c_nf):
    """A ladder of three branches, as makers publish them: the ESR falls and rises with frequency."""
    c = c_nf * 1e-9
    path.write_text(
        f"* {name}: small-signal model, 0 V bias, 25 degC\n"
        f".SUBCKT {name} a b\n"
        f"C1 a n1 {c:.4e}\n"
        f"R1 n1 n2 {r_ohm * 0.6:.4e}\n"
        f"L1 n2 n3 {l_nh * 0.35e-9:.4e}\n"
        f"L2 n3 b {l_nh * 0.65e-9:.4e}\n"
        f"R2 n3 b {r_ohm * 9.0:.4e}\n"
        f"R3 n1 n2 {r_ohm * 4.0:.4e}\n"
        f"C2 n1 n2 {c * 0.02:.4e}\n"
        f".ENDS {name}\n", newline="\n")


def capacitor_rows():
    """(row dict) for each part of the three makers."""
    plans = [
        # maker, prefix, dielectric, letter, (case index, first nF, last nF, volts)...
        (NORVIK, "NVC", "X7R", [(1, 1, 100, 16), (2, 10, 470, 25), (3, 47, 1000, 25), (4, 100, 2200, 50)]),
        (NORVIK, "NVC", "X5R", [(0, 10, 100, 6.3), (1, 100, 1000, 6.3), (2, 1000, 10000, 6.3), (3, 2200, 22000, 6.3)]),
        (KESTREL, "KP", "X7R", [(1, 10, 100, 16), (2, 10, 330, 16), (3, 100, 680, 25), (5, 1000, 10000, 25)]),
        (KESTREL, "KP", "C0G", [(0, 0.01, 0.1, 25), (1, 0.01, 1, 50), (2, 0.1, 4.7, 50)]),
        (TAMARACK, "TME", "X7R", [(2, 22, 220, 50), (3, 100, 1000, 50), (4, 470, 4700, 25)]),
        (TAMARACK, "TME", "X6S", [(1, 100, 2200, 4), (2, 1000, 22000, 4), (5, 10000, 100000, 6.3)]),
    ]
    tolerances = {"X7R": 0.10, "X5R": 0.20, "X6S": 0.20, "C0G": 0.05}
    letters = {0.05: "J", 0.10: "K", 0.20: "M"}
    left = {"X7R": 0.92, "X5R": 0.78, "X6S": 0.74, "C0G": 1.0}
    for maker, prefix, dielectric, ranges in plans:
        for case, first, last, volts in ranges:
            size, esl = CASES[case]
            for decade in range(-2, 6):
                for step in E12 if maker == NORVIK else E6:
                    nf = round(step * 10 ** (decade - 1), 6)
                    if not first * 0.999 <= nf <= last * 1.001:
                        continue
                    tolerance = tolerances[dielectric]
                    low = 0.20 if dielectric in ("X5R", "X6S") else tolerance
                    number = f"{prefix}{size}{dielectric}{code3(nf)}{letters[tolerance]}{str(volts).replace('.', 'R')}"
                    yield dict(maker=maker, size=size, tcc=dielectric, nf=nf, up=tolerance, low=low, volts=volts,
                               number=number, esr=esr_mohm(nf, dielectric), esl=round(esl + 0.02 * case, 3),
                               act=round(nf * left[dielectric], 6), cost=round(0.4 + case * 0.35 + nf / 9000, 3))


def capacitors():
    book = Workbook()
    notes = book.active
    notes.title = "Notes"
    for line in ["Capacitors approved for new designs", "Values at 25 degC and half the rated voltage",
                 "The list is on the next sheet; its titles are in row 3"]:
        notes.append([line])
    sheet = book.create_sheet("Capacitors")
    sheet["A1"] = "Approved capacitors"
    sheet["A1"].font = Font(bold=True)
    titles = ["Part Number", "Maker", "Maker's No.", "Case", "Inch/Metric", "C (nF)", "Tol. +", "Tol. -", "Rated V", "Dielectric",
              "Model", "ESR (mOhm)", "ESL (nH)", "C in use (nF)", "Model File", "Model Folder", "Ports", "Unit Cost",
              "Placement", "BOM Penalty", "Class", "Remarks", "Reel"]
    for column, title in enumerate(titles, 1):
        sheet.cell(row=3, column=column, value=title).font = Font(bold=True)
    network = circuits = 0
    for index, part in enumerate(capacitor_rows()):
        kind, name, folder, ports = "RLC", None, None, None
        if part["maker"] == KESTREL and part["tcc"] == "X7R" and index % 2 == 0:
            kind, folder = "Sparameter", "models/"
            ports = "Series" if network % 4 == 3 else "Shunt"
            name = part["number"] + ".s2p"
            two_port(MODELS / name, part["number"], part["esr"] * 1e-3, part["esl"] * 1e-9, part["act"] * 1e-9, ports == "Shunt")
            network += 1
        elif part["maker"] == TAMARACK and part["tcc"] == "X7R" and index % 3 == 0:
            kind, folder = "Circuit", "models/"
            name = part["number"] + (".mod" if circuits % 2 else ".ckt")
            circuit(MODELS / name, part["number"], part["esr"] * 1e-3, part["esl"], part["act"])
            circuits += 1
        rlc = kind == "RLC"
        row = ["CAP-" + f"{index + 1:04d}", part["maker"], part["number"], int(part["size"]), "English", part["nf"], part["up"],
               part["low"], part["volts"], part["tcc"], kind, part["esr"] if rlc else None, part["esl"] if rlc else None,
               part["act"] if rlc else None, name, folder, ports, part["cost"], 0.35, 0.1,
               "A" if index % 5 else "B", "replaces an older part" if index % 29 == 7 else None, 4000 if int(part["size"]) > 1000 else 10000]
        sheet.append(row)
        last = sheet.max_row
        sheet.cell(row=last, column=4).number_format = "0000"
        for column in (7, 8):
            sheet.cell(row=last, column=column).number_format = "0%"
    # What real lists have at their end: a part entered twice, and one whose model is not known yet.
    sheet.append(["CAP-0002", NORVIK, "NVC0402X7R122K16", "0402", "English", 1.2, "10%", "10%", 16, "X7R", "RLC", 48.4, 0.36, 1.1])
    sheet.append(["CAP-0990", TAMARACK, "TME0603X7R474K50", "0603", "English", 470, "10%", "10%", 50, "X7R", "TBD"])
    sheet.append(["CAP-0991", TAMARACK, "TME0805X7R225K50", "0805", "English", 2200, "10%", "10%", 50, "X7R", "RLC", 5.2, 0.7, "n/a"])
    save(book, "capacitors.xlsx")


def inductors():
    book = Workbook()
    sheet = book.active
    sheet.title = "Inductors"
    sheet.append(["Part Number", "Model Type", "MPN", "Manufacturer", "Keywords", "Inductance", "DCR (mOhm)", "Isat (A)",
                  "File Name", "File Path", "External Node Assignment"])
    network = index = 0
    for maker, prefix, family, dcr, amps in [(NORVIK, "NVL", 4020, 3.4, 12.0), (KESTREL, "KPL", 2520, 11.0, 4.2),
                                             (TAMARACK, "TMI", 1608, 60.0, 1.1), (TAMARACK, "TMI", 6045, 2.1, 21.0)]:
        for decade in (0.1, 1.0, 10.0):
            for step in (1.0, 1.5, 2.2, 3.3, 4.7, 6.8):
                uh = round(step * decade, 3)
                index += 1
                number = f"{prefix}{family}-{uh:g}".replace(".", "R")
                scale = uh ** 0.6
                kind, name, folder, ports = "RLC", None, None, None
                if maker == KESTREL and index % 3 == 0:
                    kind, folder, ports = "Sparameter", "models/", "Series"
                    name = number + ".s2p"
                    two_port(MODELS / name, number, dcr * scale * 1e-3, uh * 1e-6, 0, False, points=101)
                    network += 1
                value = f"{uh * 1000:g}nH" if uh < 1 else f"{uh:g}uH"
                sheet.append([f"IND-{index:04d}", kind, number, maker, "power;shielded" if family > 2000 else "signal", value,
                              round(dcr * scale, 2), round(amps / uh ** 0.45, 2), name, folder, ports])
    save(book, "inductors.xlsx")


def resistors():
    book = Workbook()
    sheet = book.active
    sheet.title = "Resistors"
    sheet.append(["Part Number", "Manufacturer", "Mfr. Part No.", "Model Type", "Value", "Tolerance", "Max Current (mA)", "Size", "Keywords"])
    e12 = ["10", "12", "15", "18", "22", "27", "33", "39", "47", "56", "68", "82"]
    index = 1
    sheet.append(["RES-0001", NORVIK, "NVR0402-0R0", "RLC", "0R", None, 1000, "0402", "jumper"])
    for maker, prefix, size, watts in [(NORVIK, "NVR", 402, 0.063), (KESTREL, "KPR", 603, 0.1), (TAMARACK, "TMR", 805, 0.125)]:
        for decade, letter in ((0, "R"), (1, "R"), (2, "R"), (3, "k"), (4, "k")):
            for digits in e12:
                ohms = int(digits) * 10 ** (decade - 1)
                text = {0: f"{digits[0]}{letter}{digits[1]}", 1: digits + letter, 2: digits + "0" + letter,
                        3: f"{digits[0]}{letter}{digits[1]}", 4: digits + letter}[decade]
                index += 1
                sheet.append([f"RES-{index:04d}", maker, f"{prefix}{size:04d}-{text.upper()}", "RLC", text, 0.01,
                              round(min(1000.0, 1000 * math.sqrt(watts / ohms)), 1), size, None])
                sheet.cell(row=sheet.max_row, column=6).number_format = "0%"
                sheet.cell(row=sheet.max_row, column=8).number_format = "0000"
    save(book, "resistors.xlsx")


def vendor():
    """A decap list of one maker, and a part list that holds no more than part numbers and prices."""
    folder = HERE / "vendor"
    folder.mkdir(exist_ok=True)
    items = []
    book = Workbook()
    sheet = book.active
    sheet.title = "Order"
    sheet.append(["Part Number", "Manufacturer", "MPN", "Unit Cost"])
    parts = [p for p in capacitor_rows() if (MODELS / (p["number"] + ".s2p")).exists()]
    for index, part in enumerate(parts):
        items.append(
            f'  <DecapLibItem Manuf="{KESTREL}" PartNo="{part["number"]}" MfgPartNumber="{part["number"]}" Size="{part["size"]}"'
            f' SizeUnit="0" UpTolerance="{part["up"] * 100:g}%" LowTolerance="{part["low"] * 100:g}%" Volt="{part["volts"]}V"'
            f' TCC="{part["tcc"]}" ModelType="0" CktDef="../models/{part["number"]}.s2p" Cnom="{part["nf"]:g}nF"'
            f' PriceA="{part["cost"]}" PriceB="0.35" PriceC="0.1" Comment="two-port data, shunt"/>')
        if index % 4 != 2:
            sheet.append([f"VC-{len(items):03d}", KESTREL, part["number"], part["cost"]])
    sheet.append(["VC-900", KESTREL, "KP0402X7R999K16", 1.2])
    save(book, "order.xlsx")
    (folder / "kestrel-x7r.xml").write_text(
        '<?xml version="1.0" encoding="UTF-8"?>\n<DecapLib>\n' + "\n".join(items) + "\n</DecapLib>\n", newline="\n")
    (folder / "Manufacturer_Decap_Library.txt").write_text("# decap libraries of the makers, one a line\nkestrel-x7r.xml\n", newline="\n")


def stock():
    """What a purchasing department has: no model column, values as people write them."""
    rows = ["MPN;Manufacturer;Capacitance;Rated Voltage;Tolerance;Package;Stock"]
    values = ["100nF", "100 nF", "0.1uF", "4u7", "4.7uF", "1000pF", "10n", "2,2 uF", "22uF", "470p", "tbd"]
    tolerances = ["10%", "±10%", "±20%", "-20%/+80%", "5%"]
    for index, value in enumerate(values):
        rows.append(f"SX{index + 101};{TAMARACK};{value};{[16, 25, '6.3V', 50][index % 4]};{tolerances[index % 5]};"
                    f"{['0402', '0603', '0805'][index % 3]};{4000 - 311 * index}")
    (HERE / "stock.csv").write_text("\n".join(rows) + "\n", encoding="utf-8", newline="\n")


def mappings():
    (HERE / "capacitor-columns.txt").write_text("""# property,column title
Model Name,Part Number
Mfg.Part No.,Maker's No.
Manufacturer,Maker
Size,Case
Unit of Size,Inch/Metric
Cnom,C (nF)
Upper Tolerance,Tol. +
Lower Tolerance,Tol. -
VOLT,Rated V
TCC,Dielectric
Model Type,Model
Resistance,ESR (mOhm)
Inductance,ESL (nH)
Cact,C in use (nF)
File Name,Model File
File Path,Model Folder
External Node Assignment,Ports
Component Cost,Unit Cost
Mounting Cost,Placement
BOM Penalty Cost,BOM Penalty
Preference,Class
Comment,Remarks
""", newline="\n")
    (HERE / "inductor-columns.txt").write_text("""# property,column title
Part NO.,Part Number
Model Type,Model Type
Mfg.Part No.,MPN
Manufacturer,Manufacturer
Lookup Keyword,Keywords
Max Current,Isat (A)
Resistance,DCR (mOhm)
Inductance,Inductance
File Name,File Name
File Path,File Path
External Node Assignment,External Node Assignment
""", newline="\n")


MODELS.mkdir(parents=True, exist_ok=True)
capacitors()
inductors()
resistors()
vendor()
stock()
mappings()
