"""Builds the extension with the library's own build files, and puts the library's sources into
source distributions. The version is that of the CMake project."""

import os
import re
import shutil
import subprocess
import sys
from pathlib import Path

import pybind11
from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext
from setuptools.command.sdist import sdist

HERE = Path(__file__).resolve().parent
# In a source distribution the library comes along; in the repository it is further up.
ROOT = HERE / "library" if (HERE / "library").is_dir() else HERE.parent.parent
SOURCES = ["CMakeLists.txt", "LICENSE", "cmake", "include", "platform", "core", "frames",
           "ephemeris", "solsys", "events", "io", "sky", "draw", "data", "tools/csv_table.cmake",
           "tools/csv_text.cmake", "bindings/python/CMakeLists.txt", "bindings/python/src"]


class BuildWithCMake(build_ext):
    def build_extension(self, ext):
        build = Path(os.environ.get("SOLSYS_PYTHON_BUILD", Path(self.build_temp) / "cmake"))
        target = Path(self.get_ext_fullpath(ext.name)).resolve()
        subprocess.run(["cmake", "-S", ROOT, "-B", build, "-DSOLSYS_BUILD_PYTHON=ON",
                        "-DBUILD_SHARED_LIBS=OFF", "-DSOLSYS_BUILD_APPS=OFF",
                        "-DSOLSYS_BUILD_TESTS=OFF", "-DSOLSYS_INSTALL=OFF",
                        "-DSOLSYS_WERROR=OFF", "-DCMAKE_BUILD_TYPE=Release",
                        f"-Dpybind11_DIR={pybind11.get_cmake_dir()}",
                        f"-DPython3_EXECUTABLE={sys.executable}",
                        f"-DPYTHON_EXECUTABLE={sys.executable}"], check=True)
        subprocess.run(["cmake", "--build", build, "--target", "solsys_python", "--parallel",
                        str(os.cpu_count())], check=True)
        (module,) = (build / "python").glob("_core.*")
        target.parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(module, target)
        shutil.copy(ROOT / "data" / "sky" / "cities.csv", target.parent)


class WithLibrary(sdist):
    def make_release_tree(self, base_dir, files):
        super().make_release_tree(base_dir, files)
        for name in SOURCES:
            source, target = ROOT / name, Path(base_dir) / "library" / name
            if source.is_dir():
                shutil.copytree(source, target, dirs_exist_ok=True)
            else:
                target.parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(source, target)
        shutil.copy(ROOT / "LICENSE", base_dir)


version = re.search(r"project\(solsys VERSION ([0-9.]+)", (ROOT / "CMakeLists.txt").read_text())
setup(version=version[1], ext_modules=[Extension("solsys._core", [])],
      cmdclass={"build_ext": BuildWithCMake, "sdist": WithLibrary})
