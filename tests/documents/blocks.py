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
    """All blocks but MyST's directives, in order. An indented one is for the shell, or Python's session with ">>>"."""
    blocks, marks = [], {}
    lines = text.splitlines()
    position = 0

    def take_while(wanted):
        nonlocal position
        start = position
        while position < len(lines) and wanted(lines[position]):
            position += 1
        return lines[start:position]

    while position < len(lines):
        line, number = lines[position], position + 1
        fence = re.match(r"( *)(```+)\s*(.*)$", line)
        if line.startswith("<!--"):
            comment = "\n".join(take_while(lambda inner: "-->" not in inner) + lines[position:position + 1])
            key, value = read_mark(comment[4:].partition("-->")[0], number)
            marks[key] = value
            position += 1
        elif fence:
            position += 1
            content = take_while(lambda inner: inner.strip() != fence[2])
            position += 1
            if not fence[3].startswith("{"):
                blocks.append(Block(number, fence[3], textwrap.dedent("\n".join(content)) + "\n", marks))
                marks = {}
        elif line.startswith("    ") and (marks or starts_block(lines[:position])):
            content = take_while(lambda inner: inner.startswith("    ") or not inner.strip())
            body = textwrap.dedent("\n".join(content)).rstrip() + "\n"
            blocks.append(Block(number, "python" if body.startswith(">>>") else "sh", body, marks))
            marks = {}
        else:
            if line.strip() and marks:
                raise DocumentError(f"line {number}: a mark stands directly in front of its block")
            position += 1
    if marks:
        raise DocumentError("the last mark stands in front of no block")
    return blocks


def starts_block(above):
    """Whether an indented line is a block: after an empty one, and not in a list, whose paragraphs are indented."""
    outermost = next((line for line in reversed(above) if line.strip() and not line.startswith(" ")), "")
    return bool(above) and not above[-1].strip() and not re.match(r"([-*+]|\d+\.)\s", outermost)
