"""The blocks of a Markdown document, and the marks in front of them: comments that a reader of the page does not see.

<!-- not run: REASON -->     the block is not run, for this reason
<!-- before: COMMANDS -->    what the shell does first, to have the files that the block speaks of
<!-- given: DECLARATIONS --> what a fragment of C, C++ or Python finds
<!-- file: NAME -->          the block is the content of this file
"""
import re
import textwrap
from dataclasses import dataclass, field

KEYS = ("not run", "before", "given", "file")


class DocumentError(Exception):
    """A document that breaks a rule of this folder."""


@dataclass
class Block:
    line: int
    language: str
    text: str
    marks: dict = field(default_factory=dict)


def read_mark(comment, line):
    key, colon, value = comment.partition(":")
    if key.strip() not in KEYS or not colon:
        raise DocumentError(f"line {line}: a comment is one of the marks {', '.join(KEYS)}, each with a colon")
    return key.strip(), textwrap.dedent(value).strip()


def read_blocks(text):
    """All fenced blocks but MyST's directives, in order."""
    blocks, marks = [], {}
    lines = iter(enumerate(text.splitlines(), 1))
    blank_before = True
    for number, line in lines:
        if line.startswith("<!--"):
            comment = line
            while "-->" not in comment:
                comment += "\n" + next(lines, (0, "-->"))[1]
            key, value = read_mark(comment[4:comment.index("-->")], number)
            marks[key] = value
        elif fence := re.match(r"( *)(```+)\s*(.*)$", line):
            content = []
            for _, inner in lines:
                if inner.strip() == fence[2]:
                    break
                content.append(inner[len(fence[1]):] if inner.startswith(fence[1]) else inner)
            if not fence[3].startswith("{"):
                blocks.append(Block(number, fence[3], "\n".join(content) + "\n", marks))
                marks = {}
        elif line.strip():
            if marks:
                raise DocumentError(f"line {number}: a mark stands directly in front of its block")
            if blank_before and line.startswith("    ") and not in_list(text, number):
                raise DocumentError(f"line {number}: an indented block has no language: fence it and name one")
        blank_before = not line.strip()
    return blocks


def in_list(text, number):
    """Whether the nearest line above that is not indented belongs to a list."""
    for line in reversed(text.splitlines()[:number - 1]):
        if line.strip() and not line.startswith(" "):
            return re.match(r"([-*+]|\d+\.)\s", line) is not None
    return False
