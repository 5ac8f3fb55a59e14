"""The part of pyproject.toml that setuptools cannot say: the version of the header, and the extension by CMake."""

import pathlib
import re
import shutil
import subprocess
import sys

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

ROOT = pathlib.Path(__file__).parent.resolve()


def version():
    header = (ROOT / "include/KvxDemosaicing/KvxVersion.h").read_text()
    return ".".join(re.findall(r"#define KVX_VERSION_(?:MAJOR|MINOR|PATCH) (\d+)", header))


class CMakeExtension(build_ext):
    """Builds the extension with everything that it needs inside, and nothing else."""

    def build_extension(self, ext):
        build = pathlib.Path(self.build_temp).resolve()
        options = {
            "CMAKE_BUILD_TYPE": "Release",
            "Python3_EXECUTABLE": sys.executable,
            "KVX_STATIC": "ON",
            "KVX_INSTALL": "OFF",
            "KVX_WHEEL": "ON",
            "KVX_BUILD_PYTHON": "ON",
            **{f"KVX_BUILD_{part}": "OFF" for part in ("TOOLS", "GSTREAMER", "BENCH")},
        }
        generator = ["-G", "Ninja"] if shutil.which("ninja") else []
        packages = pathlib.Path(self.get_ext_fullpath(ext.name)).resolve().parent.parent
        for command in (
            ["-S", ROOT, "-B", build, *generator, *(f"-D{name}={value}" for name, value in options.items())],
            ["--build", build, "--target", "kvx_python", "--parallel"],
            ["--install", build, "--component", "wheel", "--strip", "--prefix", packages],
        ):
            subprocess.run(["cmake", *command], check=True)
        for link in (packages / "kvxdemosaicing.libs").iterdir():
            if link.is_symlink():
                link.resolve().rename(link)  # a wheel would have both, as files


setup(version=version(), ext_modules=[Extension("kvxdemosaicing._native", [])], cmdclass={"build_ext": CMakeExtension})
