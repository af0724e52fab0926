"""What calls raise.

>>> import kurvo
>>> try:
...     kurvo.Curve.line((0, 0), (1, 0)).scaled(-1)
... except kurvo.Error as error:
...     print(error)
...     error.name, error.function
KurvocvScale: a scale factor that is not positive (KURVO_ERR_SCALE)
('KURVO_ERR_SCALE', 'KurvocvScale')
"""

from __future__ import annotations

__all__ = ["Error", "Stopped", "OutOfMemory"]


class Error(ValueError):
    """A refusal of the library: its code, the constant's name, the function and the cause."""

    def __init__(self, code: int, name: str, function: str, cause: str) -> None:
        super().__init__(f"{function}: {cause} ({name})" if name else f"{function}: {cause}")
        self.code = code
        self.name = name
        self.function = function
        self.cause = cause

    def __reduce__(self) -> tuple[type[Error], tuple[int, str, str, str]]:
        return type(self), (self.code, self.name, self.function, self.cause)


class Stopped(Error):
    """The caller's `proceed` said no."""


class OutOfMemory(Error, MemoryError):
    """Memory could not be obtained."""


_KINDS = {"KURVO_ERR_STOPPED": Stopped, "KURVO_ERR_MEMORY": OutOfMemory}


def of(code: int, name: str, function: str, cause: str) -> Error:
    """The exception for a code."""
    return _KINDS.get(name, Error)(code, name, function, cause)
