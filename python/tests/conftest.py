"""Says which package is tested, and fixes the seeds; --hypothesis-seed sets another."""

import sys

import kurvo

try:
    import hypothesis

    # Times of a busy machine say nothing.
    hypothesis.settings.register_profile("kurvo", deadline=None, derandomize=True, database=None)
    if not any(argument.startswith("--hypothesis-seed") for argument in sys.argv):
        hypothesis.settings.load_profile("kurvo")
except ImportError:
    pass


def pytest_report_header():
    return f"kurvo from {kurvo.__path__[0]}"
