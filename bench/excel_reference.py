#!/usr/bin/python3
"""Reads a workbook with an independent reader and prints the seconds it took and the cells
it saw: openpyxl in read-only mode for .xlsx, xlrd for .xls. Used by bench_excel_read."""
import sys
import time

path = sys.argv[1]
start = time.perf_counter()
cells = 0
if path.endswith(".xlsx"):
    import openpyxl
    book = openpyxl.load_workbook(path, read_only=True)
    for sheet in book.worksheets:
        for row in sheet.iter_rows(values_only=True):
            cells += sum(1 for value in row if value is not None)
    book.close()
else:
    import xlrd
    book = xlrd.open_workbook(path)
    for sheet in book.sheets():
        for r in range(sheet.nrows):
            cells += sum(1 for value in sheet.row_values(r) if value != "")
print(f"{time.perf_counter() - start:.6f} {cells}")
