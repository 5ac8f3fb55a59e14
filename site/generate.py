#!/usr/bin/env python3
"""Generates parts of the site: drawings, tables of names, help texts, contact sheets.

generate.py KVX-DEMOSAIC FOLDER
"""
import pathlib
import re
import sys
import tempfile

from drawings.formats import Tool
from drawings.layouts import draw_layouts
from drawings.methods import draw_methods
from drawings.patterns import draw_bayer, draw_truesense


def write_help(tool, folder):
    """The help of each command in a section."""
    commands = re.findall(r"^  (\w+)  +", tool.run("--help").partition("Subcommands:")[2], re.MULTILINE)
    text = "".join(f"## {command}\n\n```text\n{tool.run(command, '--help')}```\n\n" for command in commands)
    (folder / "commands.md").write_text(text)


def make_sheets(tool, folder):
    """The drawn scene, converted by every algorithm of both families."""
    with tempfile.TemporaryDirectory() as work:
        tool.run("demo", work)
        for family, frame in (("bayer", "BayerRG12"), ("truesense", "TrueSense_RGGB_WRRW_0_12")):
            tool.run("compare", f"{work}/scene_768x512_{frame}.raw", "--output", str(folder / f"{family}-sheet.png"))


if __name__ == "__main__":
    tool, folder = Tool(sys.argv[1]), pathlib.Path(sys.argv[2])
    folder.mkdir(parents=True, exist_ok=True)
    for draw in (draw_bayer, draw_truesense, draw_layouts, draw_methods, write_help, make_sheets):
        draw(tool, folder)
