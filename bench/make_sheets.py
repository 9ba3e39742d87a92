#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Makes the spreadsheets that bench/run measures: sheet.xlsx (100,000 x 20), sheet.xls (60,000 x 20) and
sheet.csv (1,000,000 x 20), each a capacitor list.    make_sheets.py FOLDER"""
import csv
import os
import sys

folder = sys.argv[1]
titles = ["Model Name", "Mfg.Part No.", "Manufacturer", "Size", "Cnom(nF)", "Tolerance(upper)", "Tolerance(lower)",
          "Rated Voltage", "TCC", "Model Type", "Resistance", "Inductance", "Cact", "Component Cost", "Mounting Cost",
          "BOM Penalty Cost", "Preference", "Comment", "Stock", "Datasheet"]


def row(i):
    nf = (i % 900 + 1) / 10
    return ["C%07d" % i, "AUR%08dKT" % i, "Maker %d" % (i % 5), ["0402", "0603", "0805", "1206"][i % 4], nf, 10, 10,
            [6.3, 10, 16, 25, 50][i % 5], ["X5R", "X7R", "C0G"][i % 3], "RLC", 3 + i % 17 / 10, 0.3 + i % 7 / 100, nf,
            0.0012 + i % 100 / 1e4, 0.5, 0.25, ["Yes", "No"][i % 2], "reel %d of lot %d" % (i % 1000, i // 1000),
            i * 7 % 100000, "datasheet-%d.pdf" % (i % 300)]


def xlsx(path, rows):
    import xlsxwriter
    book = xlsxwriter.Workbook(path, {"constant_memory": False})
    sheet = book.add_worksheet("Parts")
    sheet.write_row(0, 0, titles)
    for i in range(rows):
        sheet.write_row(i + 1, 0, row(i))
    book.close()


def xls(path, rows):
    try:
        import xlwt
    except ImportError:
        print("no xlwt: sheet.xls is left out", file=sys.stderr)
        return
    book = xlwt.Workbook()
    sheet = book.add_sheet("Parts")
    for i in range(rows):
        for column, value in enumerate(titles if i == 0 else row(i)):
            sheet.write(i, column, value)
    book.save(path)


def text(path, rows):
    with open(path, "w", newline="") as out:
        writer = csv.writer(out)
        writer.writerow(titles)
        for i in range(rows):
            writer.writerow(row(i))


xlsx(os.path.join(folder, "sheet.xlsx"), 100000)
xls(os.path.join(folder, "sheet.xls"), 60000)
text(os.path.join(folder, "sheet.csv"), 1000000)
