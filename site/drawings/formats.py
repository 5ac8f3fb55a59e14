"""Pixel formats as kvx-demosaic describes them, so that the drawings agree with the library."""
import json
import re
import subprocess
from dataclasses import dataclass


@dataclass
class Explained:
    description: str
    tile: list   # rows of filters: "RG", "GB"
    memory: list  # bytes, each eight bits from 7 to 0: "a11", "-"
    names: dict  # by scheme


class Tool:
    def __init__(self, path):
        self.path = path

    def run(self, *arguments):
        return subprocess.run([self.path, *arguments], check=True, stdout=subprocess.PIPE, text=True).stdout

    def formats(self):
        return json.loads(self.run("formats", "--json"))

    def explain(self, name):
        text = self.run("explain", name)
        names = {}
        table = text[text.index("scheme "):]
        code_column, name_column = table.index("code"), table.index("names")
        for line in table.splitlines()[1:]:
            if not line:
                break
            names[line[:code_column].strip()] = line[name_column:].strip()
        return Explained(
            description=text.splitlines()[0].partition(": ")[2],
            tile=["".join(line.split()) for line in re.findall(r"^ +((?:[RGBW] +)*[RGBW])$", text, re.MULTILINE)],
            memory=[line.split() for line in re.findall(r"^  byte \d+ (.*)$", text, re.MULTILINE)],
            names=names)
