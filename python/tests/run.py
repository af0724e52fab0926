"""Runs all tests of the package: doctests, then the test modules beside this file.

With the name of a module: that one alone. Needs nothing but the standard library and numpy; doors
whose package is missing are skipped and named.
"""

import doctest
import importlib
import pathlib
import sys
import unittest

import kurvo
from kurvo import _kurvo

MODULES = ["kurvo", "kurvo.batch", "kurvo.errors", "kurvo.svg", "kurvo.picture", "kurvo.polygons"]
MODULES += ["kurvo.fonts", "kurvo.dxf", "kurvo.plotting"]


class _Finder(doctest.DocTestFinder):
    """Functions of an extension have docstrings, but are not found by their code."""

    def find(self, obj, name=None, module=None, globs=None, extraglobs=None):
        if obj is not _kurvo:
            return super().find(obj, name, module, globs, extraglobs)
        classes = {n: value for n, value in vars(_kurvo).items() if isinstance(value, type)}
        texts = {n: value.__doc__ for n, value in classes.items()}
        for n, value in classes.items():
            texts.update({f"{n}.{member}": getattr(value, member).__doc__ for member in vars(value)})
        parser = doctest.DocTestParser()
        tests = [parser.get_doctest(t or "", {}, n, n, 0) for n, t in sorted(texts.items())]
        return [test for test in tests if test.examples]


def load_tests(loader, only):
    suite = unittest.TestSuite()
    if not only:
        suite.addTests(doctest.DocTestSuite(_kurvo, test_finder=_Finder()))
        suite.addTests(doctest.DocFileSuite(str(pathlib.Path(__file__).parents[1] / "README.md"), module_relative=False))
        for name in MODULES:
            module = importlib.import_module(name)
            suite.addTests(doctest.DocTestSuite(module, test_finder=doctest.DocTestFinder(exclude_empty=False)))
    here = pathlib.Path(__file__).parent
    sys.path.insert(0, str(here))
    for file in sorted(here.glob("test_*.py")):
        if not only or file.stem in only:
            suite.addTests(loader.loadTestsFromName(file.stem))
    return suite


if __name__ == "__main__":
    print(f"kurvo from {pathlib.Path(kurvo.__file__).parent}, Python {sys.version.split()[0]}")
    found = load_tests(unittest.TestLoader(), sys.argv[1:])
    result = unittest.TextTestRunner(verbosity=1).run(found)
    for test, why in result.skipped:
        print(f"skipped {test}: {why}")
    sys.exit(not (result.wasSuccessful() and result.testsRun))
