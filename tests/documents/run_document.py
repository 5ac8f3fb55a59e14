#!/usr/bin/env python3
"""Runs every block of a Markdown document, in order, in a scratch folder:   run_document.py DOCUMENT HOME

HOME/kvx is an installation of this project, HOME/frames the output of `kvx-demosaic demo`. The languages:
- sh: commands; the folder and exported variables are kept for the next blocks
- console: commands after "$ " and their output; a line "..." stands for any number of lines
- python: one session for the whole document; with ">>>" a doctest
- c, cpp: compiled, a fragment inside a function with all headers; cmake: lines for a program `app`; json: parsed
- text: not run
"""
import doctest
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile

from blocks import DocumentError, read_blocks

COMPILERS = {
    "c": (["cc", "-std=c11", "-xc"],
          "#include <KvxDemosaicing/KvxDemosaicing.h>\n#include <stdio.h>\n#include <stdlib.h>\n"),
    "cpp": (["c++", "-std=c++17", "-xc++"],
            "#include <KvxDemosaicing/KvxDemosaicing.h>\n#include <KvxFrame/KvxFrame.h>\n"
            "#include <cstdio>\n#include <cstdlib>\n#include <vector>\n"),
}
PATHS = {"PATH": "bin", "LD_LIBRARY_PATH": "lib", "PKG_CONFIG_PATH": "lib/pkgconfig", "CMAKE_PREFIX_PATH": "",
         "GST_PLUGIN_PATH": "lib/gstreamer-1.0", "PYTHONPATH": "lib/python3/dist-packages"}


class Runner:
    def __init__(self, folder, home):
        self.folder = folder
        self.kvx = home / "kvx"
        self.session = {"__name__": "__main__"}
        for name, place in PATHS.items():
            os.environ[name] = os.pathsep.join(filter(None, [str(self.kvx / place), os.environ.get(name)]))
        sys.path.insert(0, str(self.kvx / PATHS["PYTHONPATH"]))
        os.environ["HOME"] = str(home)
        os.environ.pop("CDPATH", None)

    def run(self, block):
        if "before" in block.marks:
            self.sh(block.marks["before"])
        if "file" in block.marks:
            (self.folder / block.marks["file"]).write_text(block.text)
        elif block.language in COMPILERS:
            self.compile(block.text, block.marks.get("given", ""), *COMPILERS[block.language])
        elif block.language == "python":
            exec(block.marks.get("given", ""), self.session)
            self.python(block.text)
        elif block.language in ("sh", "console", "cmake"):
            getattr(self, block.language)(block.text)
        elif block.language == "json":
            json.loads(block.text)
        elif block.language != "text":
            raise DocumentError(f"no rule for the language '{block.language}': see run_document.py")

    def sh(self, commands):
        """Returns the output. A file passes the folder and the variables to the next commands."""
        state = self.folder / ".state"
        resume = f'. "{state}"\n' if state.exists() else ""
        succeeded = "[ $? -eq 0 ]\n"  # set -e ignores "false && true"
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
            output = self.sh(command)
            pattern = "".join(r"(.*\n)*?" if line.strip() == "..." else re.escape(line.rstrip()) + r"[ \t]*\n"
                              for line in expected)
            if not re.fullmatch(pattern + r"\n*", output):
                raise DocumentError(f"'{command}' printed\n{output}")

    def python(self, text):
        if ">>>" not in text:
            exec(compile(text, "block", "exec"), self.session)
            return
        test = doctest.DocTestParser().get_doctest(text, self.session, "block", None, 0)
        report = []
        doctest.DocTestRunner().run(test, out=report.append, clear_globs=False)
        self.session.update(test.globs)
        if report:
            raise DocumentError("".join(report))

    def compile(self, text, given, compiler, headers):
        includes, body = "".join(re.findall("^#include.*\n", text, re.M)), re.sub("^#include.*\n", "", text, flags=re.M)
        if not re.search(r"\bmain\(", body):
            body = f"void Fragment(void);\nvoid Fragment(void) {{\n{given}\n{body}}}\n"
        done = subprocess.run([*compiler, "-fsyntax-only", "-Wall", "-Werror", f"-I{self.kvx}/include", "-"],
                              input=headers + includes + body, stderr=subprocess.PIPE, text=True)
        if done.returncode != 0:
            raise DocumentError(done.stderr)

    def cmake(self, lines):
        project = pathlib.Path(tempfile.mkdtemp(dir=self.folder))
        (project / "main.c").write_text("int main(void) { return 0; }\n")
        (project / "CMakeLists.txt").write_text(
            f"cmake_minimum_required(VERSION 3.16)\nproject(Document C)\nadd_executable(app main.c)\n{lines}")
        self.sh(f'cmake -G Ninja -S "{project}" -B "{project}/build" && cmake --build "{project}/build"')


def run_document(document, home):
    """Returns the number of failures."""
    failures = 0
    with tempfile.TemporaryDirectory() as folder:
        runner = Runner(pathlib.Path(folder), home)
        os.chdir(folder)
        for block in read_blocks(document.read_text()):
            try:
                if "not run" not in block.marks:
                    runner.run(block)
            except Exception as error:  # report it and go on with the next block
                failures += 1
                print(f"{document.name}:{block.line}: {block.language}: {type(error).__name__}: {error}")
        os.chdir("/")
    return failures


if __name__ == "__main__":
    sys.exit(1 if run_document(pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]).resolve()) else 0)
