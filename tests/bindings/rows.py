"""Prints what a till has stored: rows.py JOURNAL."""

import sqlite3
import sys

journal = sqlite3.connect(sys.argv[1])
for table in "movements", "requests":
    for row in journal.execute(f"SELECT * FROM {table} ORDER BY rowid"):
        print("row", table, *row)
