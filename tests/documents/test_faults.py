#!/usr/bin/env python3
"""Faults in a document are seen, each of them alone:   test_faults.py HOME"""
import pathlib
import subprocess
import sys
import tempfile

GOOD = """
```sh
cd / && export GREETING=hello
```

```console
$ echo $GREETING $PWD; echo more; echo end
hello /
...
end
```

    >>> x = 1

```python
>>> x + 1
2
```

<!-- given: int x = 1; -->
```c
#include <math.h>
printf("%d %f\\n", x, fabs(-1.0));
```

<!-- not run: would fail -->
```sh
false
```

<!-- before: echo 3 > three -->
    grep 3 three

```text
No command, and no code.
```

1. A list

    whose paragraphs are no blocks
"""
FAULTS = {
    "a failing command": "```sh\nfalse\ntrue\n```\n",
    "a failing indented command": "Words\n\n    false\n",
    "a failing part of a pipe": "```sh\nfalse | cat\n```\n",
    "a failing part of a list": "```sh\nfalse && true\n```\n",
    "other output": "```console\n$ echo one\ntwo\n```\n",
    "more output": "```console\n$ echo one; echo two\none\n```\n",
    "another result": "```python\n>>> 1 + 1\n3\n```\n",
    "an exception": "```python\nraise ValueError\n```\n",
    "code that does not compile": "```cpp\nint x = nothing;\n```\n",
    "a C program with a warning": "```c\nint main(void) { int unused; return 0; }\n```\n",
    "a CMake file without its package": "```cmake\nfind_package(NoSuchPackage REQUIRED)\n```\n",
    "no JSON": "```json\n{,}\n```\n",
    "no language": "```\ntrue\n```\n",
    "an unknown language": "```fish\ntrue\n```\n",
    "an unknown mark": "<!-- note: this -->\n```sh\ntrue\n```\n",
    "a mark without its block": "<!-- not run: for no block -->\n\nWords\n",
    "a mark at the end": "<!-- not run: for no block -->\n",
}


def passes(text, home):
    with tempfile.TemporaryDirectory() as folder:
        document = pathlib.Path(folder, "document.md")
        document.write_text(text)
        runner = pathlib.Path(__file__).with_name("run_document.py")
        return subprocess.run([sys.executable, "-B", runner, document, home], stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL).returncode == 0


if __name__ == "__main__":
    unseen = [fault for fault, text in FAULTS.items() if passes(text, sys.argv[1])]
    if not passes(GOOD, sys.argv[1]):
        unseen.append("a document without a fault fails")
    sys.exit("\n".join(unseen) or 0)
