#!/usr/bin/env python3
"""Runs every block of a Markdown document, in order, in a scratch folder:   run_document.py DOCUMENT HOME

HOME has an installation of this project in kvx/. What a block is, its language says:
- sh: commands; folder and variables stay from block to block
- console: commands behind "$ " and what they print; a line "..." stands for any number of lines
- python: one session for the whole document; with ">>>" a doctest
- c, cpp: compiled, a fragment inside a function with all headers; cmake: lines for a program `app`; json: is read
- text: nothing to run
"""
import doctest
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import time

from blocks import DocumentError, read_blocks

HEADERS = {
    "c": "#include <KvxDemosaicing/KvxDemosaicing.h>\n#include <stdio.h>\n#include <stdlib.h>\n",
    "cpp": "#include <KvxDemosaicing/KvxDemosaicing.h>\n#include <KvxFrame/KvxFrame.h>\n"
           "#include <cstdio>\n#include <cstdlib>\n#include <vector>\n",
}
COMPILERS = {"c": ["cc", "-std=c11", "-xc"], "cpp": ["c++", "-std=c++17", "-xc++"]}


class Runner:
    def __init__(self, folder, home):
        self.folder = folder
        self.kvx = home / "kvx"
        self.session = {"__name__": "__main__"}
        below = {"PATH": "bin", "LD_LIBRARY_PATH": "lib", "PKG_CONFIG_PATH": "lib/pkgconfig", "CMAKE_PREFIX_PATH": "",
                 "GST_PLUGIN_PATH": "lib/gstreamer-1.0", "PYTHONPATH": "lib/python3/dist-packages"}
        for name, place in below.items():
            os.environ[name] = os.pathsep.join(filter(None, [str(self.kvx / place), os.environ.get(name)]))
        sys.path.insert(0, str(self.kvx / below["PYTHONPATH"]))
        os.environ["HOME"] = str(home)
        os.environ.pop("CDPATH", None)

    def run(self, block):
        if "before" in block.marks:
            self.shell(block.marks["before"])
        if "file" in block.marks:
            path = self.folder / block.marks["file"]
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(block.text)
            return
        action = {"sh": lambda: self.shell(block.text), "console": lambda: self.console(block.text),
                  "python": lambda: self.python(block), "c": lambda: self.compile(block),
                  "cpp": lambda: self.compile(block), "cmake": lambda: self.configure(block.text),
                  "json": lambda: json.loads(block.text), "text": lambda: None}.get(block.language)
        if action is None:
            raise DocumentError(f"nobody knows how to run '{block.language}': see run_document.py")
        action()

    def shell(self, commands):
        """What is printed. Folder and variables go through a file to the next commands."""
        state = self.folder / ".state"
        resume = f'. "{state}"\n' if state.exists() else ""
        succeeded = "[ $? -eq 0 ]\n"  # set -e takes no notice of "false && true"
        keep = f'{{ export -p; printf "cd %q\\n" "$PWD"; }} > "{state}"\n'
        script = resume + commands + "\n" + succeeded + keep
        done = subprocess.run(["bash", "-euo", "pipefail", "-c", script], cwd=self.folder, stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        if done.returncode != 0:
            raise DocumentError(f"exit code {done.returncode}\n{done.stdout[-4000:]}")
        return done.stdout

    def console(self, text):
        for part in re.split(r"^\$ ", text, flags=re.MULTILINE)[1:]:
            command, *expected = part.splitlines()
            while command.endswith("\\"):
                command += "\n" + expected.pop(0)
            output = self.shell(command)
            pattern = "".join(r"(.*\n)*?" if line.strip() == "..." else re.escape(line.rstrip()) + r"[ \t]*\n"
                              for line in expected)
            if not re.fullmatch(pattern + r"\n*", output):
                raise DocumentError(f"'{command}' printed\n{output}")

    def python(self, block):
        exec(block.marks.get("given", ""), self.session)
        if ">>>" not in block.text:
            exec(compile(block.text, "block", "exec"), self.session)
            return
        test = doctest.DocTestParser().get_doctest(block.text, self.session, "block", None, 0)
        report = []
        options = doctest.ELLIPSIS | doctest.NORMALIZE_WHITESPACE
        doctest.DocTestRunner(optionflags=options).run(test, out=report.append, clear_globs=False)
        self.session.update(test.globs)
        if report:
            raise DocumentError("".join(report))

    def compile(self, block):
        lines = block.text.splitlines(keepends=True)
        source = HEADERS[block.language] + "".join(line for line in lines if line.startswith("#include"))
        body = "".join(line for line in lines if not line.startswith("#include"))
        if re.search(r"\bmain\(", body):
            source += body
        else:
            source += f"void Fragment(void);\nvoid Fragment(void) {{\n{block.marks.get('given', '')}\n{body}}}\n"
        command = COMPILERS[block.language] + ["-fsyntax-only", "-Wall", "-Werror", f"-I{self.kvx}/include", "-"]
        done = subprocess.run(command, input=source, stderr=subprocess.PIPE, text=True)
        if done.returncode != 0:
            raise DocumentError(done.stderr)

    def configure(self, lines):
        project = pathlib.Path(tempfile.mkdtemp(dir=self.folder))
        (project / "main.c").write_text("int main(void) { return 0; }\n")
        (project / "CMakeLists.txt").write_text(
            f"cmake_minimum_required(VERSION 3.16)\nproject(Document C CXX)\nadd_executable(app main.c)\n{lines}")
        self.shell(f'cmake -G Ninja -S "{project}" -B "{project}/build"\ncmake --build "{project}/build"')


def run_document(document, home):
    failures = 0
    with tempfile.TemporaryDirectory() as folder:
        runner = Runner(pathlib.Path(folder), home)
        os.chdir(folder)
        for block in read_blocks(document.read_text()):
            place = f"{document.name}:{block.line}: {block.language}"
            if "not run" in block.marks:
                print(f"{place}: not run: {block.marks['not run']}")
                continue
            start = time.monotonic()
            try:
                runner.run(block)
                print(f"{place}: {time.monotonic() - start:.1f} s")
            except Exception as error:  # whatever a block raises is its failure, and the next one is tried, too
                failures += 1
                print(f"{place}: FAILED: {error if isinstance(error, DocumentError) else repr(error)}")
        os.chdir("/")
    return failures


if __name__ == "__main__":
    try:
        sys.exit(1 if run_document(pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]).resolve()) else 0)
    except DocumentError as problem:
        sys.exit(f"{sys.argv[1]}: {problem}")
