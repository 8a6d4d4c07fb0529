# SPDX-License-Identifier: Apache-2.0
"""Puts the built library, which VASTRELLINE_LIBRARY names, into the wheel. Without one the wheel is for any system, and
finds the library as the module's first lines tell."""

import os
import pathlib
import shutil

from setuptools import setup
from setuptools.command.build_py import build_py
from setuptools.dist import Distribution
from wheel.bdist_wheel import bdist_wheel

LIBRARY = os.environ.get("VASTRELLINE_LIBRARY")


class BuildWithLibrary(build_py):
    def run(self):
        super().run()
        if LIBRARY:
            name = "Vastrelline.dll" if LIBRARY.lower().endswith(".dll") else "libvastrelline.so.1"
            folder = pathlib.Path(self.build_lib) / "vastrelline"
            folder.mkdir(parents=True, exist_ok=True)
            shutil.copyfile(LIBRARY, folder / name)


class WheelOfPlatform(bdist_wheel):
    """For one system, but any Python: the library knows nothing of Python."""

    def finalize_options(self):
        super().finalize_options()
        self.root_is_pure = LIBRARY is None

    def get_tag(self):
        _, _, platform = super().get_tag()
        return "py3", "none", platform


class DistributionWithLibrary(Distribution):
    def has_ext_modules(self):
        return LIBRARY is not None


setup(cmdclass={"build_py": BuildWithLibrary, "bdist_wheel": WheelOfPlatform}, distclass=DistributionWithLibrary)
