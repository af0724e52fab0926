"""The examples of docstrings and of the package's page."""

import doctest
import importlib
import pathlib

import pytest

from kurvo import _kurvo

PAGE = pathlib.Path(__file__).parents[1] / "README.md"
MODULES = ["kurvo"] + ["kurvo." + name for name in (
    "batch", "cluster", "dxf", "errors", "fonts", "picture", "plotting", "polygons", "svg")]


def extension_examples():
    """Functions of an extension have docstrings, but doctest does not find them by their code."""
    for name, value in sorted(vars(_kurvo).items()):
        if isinstance(value, type):
            yield name, value.__doc__
            yield from ((f"{name}.{m}", getattr(value, m).__doc__) for m in vars(value))


def examples():
    parser = doctest.DocTestParser()
    for name, text in [("README", PAGE.read_text()), *extension_examples()]:
        yield parser.get_doctest(text or "", {}, name, name, 0)


@pytest.mark.parametrize("test", [t for t in examples() if t.examples], ids=lambda t: t.name)
def test_texts(test):
    assert doctest.DocTestRunner().run(test).failed == 0


@pytest.mark.parametrize("name", MODULES)
def test_modules(name):
    try:
        module = importlib.import_module(name)
    except ImportError as error:
        pytest.skip(str(error))
    assert doctest.testmod(module).failed == 0
