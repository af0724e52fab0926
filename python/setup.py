"""Builds the extension by CMake, against the installed libraries.

CMAKE_PREFIX_PATH says where they are, when they are not where CMake looks anyway.
"""

import os
import pathlib
import subprocess
import sys

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

HERE = pathlib.Path(__file__).resolve().parent


class BuildByCMake(build_ext):
    def build_extension(self, extension):
        target = pathlib.Path(self.get_ext_fullpath(extension.name)).resolve().parent
        build = pathlib.Path(self.build_temp).resolve()
        build.mkdir(parents=True, exist_ok=True)
        os.environ.setdefault("CMAKE_BUILD_TYPE", "Release")
        subprocess.check_call(
            ["cmake", "-S", HERE, "-B", build, f"-DPython3_EXECUTABLE={sys.executable}"]
        )
        subprocess.check_call(["cmake", "--build", build])
        subprocess.check_call(
            ["cmake", "--install", build, "--component", "python", "--prefix", target.parent]
        )


setup(ext_modules=[Extension("kurvo._kurvo", [])], cmdclass={"build_ext": BuildByCMake})
