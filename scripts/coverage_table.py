"""Prints gcovr's JSON summary as a table with a row per folder: coverage_table.py SUMMARY"""
import json
import sys
from pathlib import PurePath

with open(sys.argv[1], encoding="utf-8") as summary:
    files = json.load(summary)["files"]

folders = {}
for file in files:
    parts = PurePath(file["filename"]).parts[:-1]
    for folder in ("/".join(parts[:2]), "total"):
        sums = folders.setdefault(folder, [0, 0, 0, 0])
        for index, figure in enumerate(("line_covered", "line_total", "branch_covered", "branch_total")):
            sums[index] += file[figure]


def share(reached, total):
    return f"{reached:,} of {total:,}, {100 * reached / total:.1f} %" if total else "-"


print("| folder | lines | branches |\n|---|---|---|")
for folder in sorted(folders, key=lambda name: (name == "total", name)):
    lines, all_lines, branches, all_branches = folders[folder]
    print(f"| {folder} | {share(lines, all_lines)} | {share(branches, all_branches)} |")
