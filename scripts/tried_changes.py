"""What the scripts that try changes to the library have in common: a copy of the sources to build
from, so that the repository is never touched, and programs that are stopped in time."""
import os
import pathlib
import re
import resource
import shutil
import signal
import subprocess

ROOT = pathlib.Path(__file__).resolve().parent.parent
FLOORS = ("foundation", "records", "calc", "control", "eval", "build", "query", "relate")
REALS = ("double",)
INTEGERS = ("int", "int32_t", "int64_t", "uint32_t", "uint64_t", "size_t")
DEFINITION = re.compile(
    r"constexpr\s+(?:std::)?(" + "|".join(REALS + INTEGERS) + r")\s+(k[A-Z]\w*)\s*=\s*([^;\[\]{}]+);"
)
LARGEST_PROGRAM = 8 << 30  # bytes: what a changed loop may take before it fails


def prepare_program():
    signal.signal(signal.SIGINT, signal.SIG_DFL)  # off where the script runs in the background
    resource.setrlimit(resource.RLIMIT_AS, (LARGEST_PROGRAM, LARGEST_PROGRAM))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


def run(command, seconds, where, output=subprocess.DEVNULL, environment=None):
    """'' on success, 'failure', 'crash' or 'timeout' otherwise. What it started ends with it."""
    process = subprocess.Popen(command, cwd=where, stdout=output, stderr=output, env=environment,
                               preexec_fn=prepare_program, start_new_session=True)
    try:
        code = process.wait(seconds)
        return "" if code == 0 else "failure" if code > 0 else "crash"
    except subprocess.TimeoutExpired:
        return "timeout"
    finally:
        if process.poll() is None:
            os.killpg(process.pid, 9)
            process.wait()


def copy_sources(copy_root):
    """Copies the repository; a file that is there already and the same keeps its time, since it may
    be newer than what was built from a change to it."""
    for path in ROOT.rglob("*"):
        below = path.relative_to(ROOT)
        # src/build is a folder of the library, build at the top is not.
        if below.parts[0] in ("build", ".git") or not path.is_file():
            continue
        copy = copy_root / below
        if copy.exists() and copy.read_bytes() == path.read_bytes():
            continue
        copy.parent.mkdir(parents=True, exist_ok=True)
        shutil.copyfile(path, copy)
        shutil.copymode(path, copy)


def configure(source, build, *options):
    subprocess.run(
        ["cmake", "-G", "Ninja", "-S", source, "-B", build, "-DCMAKE_BUILD_TYPE=Debug",
         "-DCMAKE_CXX_FLAGS_DEBUG=-O1", "-DCMAKE_C_FLAGS_DEBUG=-O1",
         "-DCMAKE_LINK_DEPENDS_NO_SHARED=ON", *options], check=True, stdout=subprocess.DEVNULL)
