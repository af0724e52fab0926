"""The stubs say what the extension has, and the package is clean under mypy --strict."""

import ast
import importlib.util
import pathlib
import subprocess
import sys
import tempfile
import unittest

import kurvo
from kurvo import _kurvo

FLAGS = ["--enable-incomplete-feature=Unpack"]  # what mypy needs before 1.7

HERE = pathlib.Path(kurvo.__file__).parent


class Stubs(unittest.TestCase):
    def test_they_name_what_there_is(self):
        tree = ast.parse((HERE / "_kurvo.pyi").read_text())
        told = {}
        for node in tree.body:
            if isinstance(node, ast.ClassDef) and "total" not in [k.arg for k in node.keywords]:
                told[node.name] = {n.name for n in node.body if isinstance(n, ast.FunctionDef)}
                told[node.name] |= {n.target.id for n in node.body if isinstance(n, ast.AnnAssign)}
        told.pop("_Pictures")
        there = {n: v for n, v in vars(_kurvo).items() if isinstance(v, type)}
        self.assertEqual(set(told), set(there))
        for name, value in there.items():
            public = {member for member in vars(value) if not member.startswith("_")}
            self.assertEqual(
                {n for n in told[name] if not n.startswith("_")}, public - {"plot"}, name
            )
        functions = {n.name for n in tree.body if isinstance(n, ast.FunctionDef)}
        self.assertEqual(functions, {n for n, v in vars(_kurvo).items()
                                     if callable(v) and not isinstance(v, type)})

    def test_mypy(self):
        if not importlib.util.find_spec("mypy"):
            self.skipTest("mypy is not installed")
        with tempfile.TemporaryDirectory() as cache:
            done = subprocess.run(
                [sys.executable, "-m", "mypy", "--strict", "--cache-dir", cache,
                 *FLAGS, "-p", "kurvo"],
                cwd=HERE.parent, capture_output=True, text=True, check=False)
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
