"""The fenced blocks of a Markdown document, and the marks before them: comments that a reader of the page does not see.

<!-- not run: REASON -->     the block is not run, for this reason
<!-- before: COMMANDS -->    commands that create what the block needs
<!-- given: DECLARATIONS --> what a fragment of C, C++ or Python needs
<!-- file: NAME -->          the block is the content of this file
"""
import re
import textwrap
from dataclasses import dataclass

KEYS = ("not run", "before", "given", "file")
BLOCK = re.compile(r"^(?P<marks>(?:<!--(?s:.*?)-->\n)*)"
                   r"(?P<fence> *```+)(?P<language>.*)\n(?P<text>(?:.*\n)*?)(?P=fence)$", re.MULTILINE)


class DocumentError(Exception):
    """A document that breaks a rule of this folder."""


@dataclass
class Block:
    line: int
    language: str
    text: str
    marks: dict


def read_marks(comments):
    marks = {}
    for comment in re.findall(r"<!--(.*?)-->", comments, re.DOTALL):
        key, colon, value = comment.partition(":")
        if key.strip() not in KEYS or not colon:
            raise DocumentError(f"'{comment.strip()}' is not a mark: {', '.join(KEYS)}, each with a colon")
        marks[key.strip()] = textwrap.dedent(value).strip()
    return marks


def read_blocks(text):
    """All blocks except MyST's directives, in order."""
    rest = BLOCK.sub("", text)
    if "<!--" in rest:
        raise DocumentError("a mark must precede its block directly")
    if re.search(r"\n\n {4}", rest):
        raise DocumentError("indented blocks are not run: use a fence")
    return [Block(text.count("\n", 0, match.start("fence")) + 1, match["language"].strip(),
                  textwrap.dedent(match["text"]), read_marks(match["marks"]))
            for match in BLOCK.finditer(text) if not match["language"].startswith("{")]
