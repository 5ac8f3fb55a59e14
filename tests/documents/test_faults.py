#!/usr/bin/env python3
"""Each fault in a document is detected:   test_faults.py HOME"""
import contextlib
import io
import pathlib
import sys
import tempfile

from run_document import DocumentError, run_document

FAULTS = {
    "a failing command": "```sh\nfalse\ntrue\n```\n",
    "a failing part of a pipe": "```sh\nfalse | cat\n```\n",
    "a failing part of a list": "```sh\nfalse && true\n```\n",
    "other output": "```console\n$ echo one\ntwo\n```\n",
    "more output": "```console\n$ echo one; echo two\none\n```\n",
    "another result": "```python\n>>> 1 + 1\n3\n```\n",
    "code that does not compile": "```cpp\nint x = nothing;\n```\n",
    "a C program with a warning": "```c\nint main(void) { int unused; return 0; }\n```\n",
    "a CMake file without its package": "```cmake\nfind_package(NoSuchPackage REQUIRED)\n```\n",
    "malformed JSON": "```json\n{,}\n```\n",
    "an unknown language": "```fish\ntrue\n```\n",
    "an unknown mark": "<!-- note: this -->\n```sh\ntrue\n```\n",
    "a mark without its block": "<!-- not run: no block -->\n\nWords\n",
    "an indented block": "Words\n\n    false\n",
}


def passes(text, home):
    with tempfile.TemporaryDirectory() as folder, contextlib.redirect_stdout(io.StringIO()):
        document = pathlib.Path(folder, "document.md")
        document.write_text(text)
        try:
            return run_document(document, home) == 0
        except DocumentError:
            return False


if __name__ == "__main__":
    home = pathlib.Path(sys.argv[1]).resolve()
    sys.exit("\n".join(fault for fault, text in FAULTS.items() if passes(text, home)) or 0)
