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
    """Builds the extension with its libraries inside, and nothing else."""

    def build_extension(self, ext):
        build = pathlib.Path(self.build_temp).resolve()
        options = {
            "CMAKE_BUILD_TYPE": "Release",
            "CMAKE_MODULE_LINKER_FLAGS": "-s",
            "Python3_EXECUTABLE": sys.executable,
            "KVX_STATIC": "ON",
            "KVX_INSTALL": "OFF",
            "KVX_BUILD_PYTHON": "ON",
            **{f"KVX_BUILD_{part}": "OFF" for part in ("TOOLS", "GSTREAMER", "BENCH")},
        }
        generator = ["-G", "Ninja"] if shutil.which("ninja") else []
        subprocess.run(["cmake", "-S", ROOT, "-B", build, *generator,
                        *(f"-D{name}={value}" for name, value in options.items())], check=True)
        subprocess.run(["cmake", "--build", build, "--target", "kvx_python", "--parallel"], check=True)
        made, = (build / "python/kvxdemosaicing").glob("_native.*.so")
        target = pathlib.Path(self.get_ext_fullpath(ext.name))
        target.parent.mkdir(parents=True, exist_ok=True)
        shutil.copyfile(made, target)


setup(version=version(), ext_modules=[Extension("kvxdemosaicing._native", [])], cmdclass={"build_ext": CMakeExtension})
