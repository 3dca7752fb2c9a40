"""A copy of the checkout in which the mutations are built and tested."""

import json
import os
import pathlib
import re
import shutil
import signal
import subprocess
import tempfile
import threading
import time

from covering_tests import COVERING_TESTS, in_order_of_promise, is_among, target_of

# A mutation may run forever, fill the memory or fill the disk.
TIMES_NORMAL, MARGIN_SECONDS, LONGEST_SECONDS = 10, 10, 600
LIMITS = ["prlimit", "--as=3000000000", "--fsize=1000000000", "--core=0"]

INCLUDE = re.compile(r'^#include (<.+>|".+")$', re.MULTILINE)
CAUGHT, SURVIVED, NOT_BUILT = "caught", "survived", "did not build"


class BrokenTree(Exception):
    """The checkout does not build, or a test fails without a mutation."""


def copy_checkout(checkout, tree):
    """Copies what git does not ignore. Unchanged files keep their time, so they are not rebuilt."""
    listed = subprocess.run(
        ["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
        cwd=checkout, capture_output=True, check=True).stdout.decode().split("\0")
    names = {name for name in listed if name and (checkout / name).is_file()}
    for old in [path for path in tree.rglob("*") if path.is_file()]:
        if str(old.relative_to(tree)) not in names:
            old.unlink()
    for name in names:
        source, copy = checkout / name, tree / name
        if not copy.exists() or copy.read_bytes() != source.read_bytes():
            copy.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(source, copy)


class MutationTree:
    """A copy of the checkout with a build of its tests, in the folder `place`."""

    def __init__(self, checkout, place):
        self._place = place
        self._tree = place / "tree"
        self._build = place / "build"
        self._tests = {}
        self._tree.mkdir(parents=True, exist_ok=True)
        copy_checkout(checkout, self._tree)

    def prepare(self, folders):
        """Configures, and builds all tests that cover the folders.

        Without the tests' precompiled headers and with paths relative to `place`, all trees share
        what the compiler cache has.
        """
        precompiled = self._place / "precompiled.cmake"
        precompiled.write_text("".join(self._precompiling(folder) for folder in folders),
                               encoding="utf-8")
        linker = ["-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=mold"] if shutil.which("mold") else []
        self._require(["cmake", "-S", self._tree, "-B", self._build, "-G", "Ninja",
                       "-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=-O0",
                       "-DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON",
                       f"-DCMAKE_PROJECT_CartonPick_INCLUDE={precompiled}", *linker])
        groups = {tests for folder in folders for tests in COVERING_TESTS[folder]}
        targets = sorted({target_of(tests) for tests in groups})
        self._require(["cmake", "--build", self._build, "--parallel", str(os.cpu_count() or 1),
                       "--target", *targets])
        listed = json.loads(self._require(["ctest", "--test-dir", self._build,
                                           "--show-only=json-v1"]))
        self._tests = {test["name"]: test for test in listed["tests"]
                       if any(is_among(test["name"], tests) for tests in groups)}

    def _precompiling(self, folder):
        """The CMake commands to precompile what the folder includes from outside.

        Each mutation compiles a file of the folder, and most of that time goes to these headers.
        """
        included = {include for file in (self._tree / "src" / folder).iterdir()
                    for include in INCLUDE.findall(file.read_text(encoding="utf-8"))
                    if not include.startswith(f'"{folder}/')}
        headers = " ".join(f"[=[{include}]=]" for include in sorted(included))
        target = f"cartonpick_{folder}"
        return (f"cmake_language(DEFER CALL set_target_properties {target} PROPERTIES"
                f" DISABLE_PRECOMPILE_HEADERS OFF)\n"
                f"cmake_language(DEFER CALL target_precompile_headers {target} PRIVATE {headers})\n")

    def durations(self):
        """Runs each test without a mutation. Returns the seconds that it takes, by its name."""
        durations = {}
        for name in self._tests:
            started = time.monotonic()
            if not self._passes(name, LONGEST_SECONDS):
                raise BrokenTree(f"{name} fails without a mutation")
            durations[name] = time.monotonic() - started
        return durations

    def outcome(self, mutation, durations):
        """Builds and tests a mutation. Returns its outcome, and the name of the test that caught it.

        The file stays mutated until `restore`: mutations of one file after the other build it once
        each.
        """
        (self._tree / mutation.path).write_text(mutation.mutated, encoding="utf-8")
        for tests in COVERING_TESTS[mutation.folder]:
            if not self._builds(target_of(tests)):
                return NOT_BUILT, None
            names = [name for name in self._tests if is_among(name, tests)]
            for name in in_order_of_promise(names, mutation.path, durations):
                if self._fails(name, TIMES_NORMAL * durations[name] + MARGIN_SECONDS):
                    return CAUGHT, name
        return SURVIVED, None

    def restore(self, path, text):
        (self._tree / path).write_text(text, encoding="utf-8")

    def _require(self, command):
        """Runs a command and returns its output."""
        environment = {**os.environ, "CCACHE_BASEDIR": str(self._place),
                       "CCACHE_NOHASHDIR": "1"}
        run = subprocess.run(command, env=environment, text=True, check=False,
                             stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        if run.returncode != 0:
            raise BrokenTree(run.stdout[-4000:])
        return run.stdout

    def _builds(self, target):
        # A mutation is compiled once: the cache would only grow.
        environment = {**os.environ, "CCACHE_DISABLE": "1"}
        return subprocess.run(["cmake", "--build", self._build, "--parallel", "1",
                               "--target", target], env=environment, check=False,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode == 0

    def _fails(self, name, limit):
        """Whether a test fails twice: on a busy machine it can fail once by chance."""
        return not self._passes(name, limit) and not self._passes(name, limit)

    def _passes(self, name, limit):
        """Runs a test until its first failure, for at most `limit` seconds."""
        test = self._tests[name]
        properties = {entry["name"]: entry["value"] for entry in test["properties"]}
        settings = dict(entry.split("=", 1) for entry in properties.get("ENVIRONMENT", []))
        with tempfile.TemporaryDirectory(dir=self._place,
                                         ignore_cleanup_errors=True) as temporary:
            # Qt Test writes each line at once to any file but its own standard output.
            process = subprocess.Popen([*LIMITS, *test["command"], "-o", "/dev/stdout,txt"],
                                       env={**os.environ, "TMPDIR": temporary, **settings},
                                       cwd=properties["WORKING_DIRECTORY"], start_new_session=True,
                                       stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                       stderr=subprocess.DEVNULL)
            timer = threading.Timer(limit, _end_session, [process])
            timer.start()
            try:
                return not any(line.startswith(b"FAIL!") for line in process.stdout) \
                    and process.wait() == 0
            finally:
                timer.cancel()
                _end_session(process)
                process.stdout.close()


def _end_session(process):
    """Ends a test and what it has started."""
    try:
        os.killpg(process.pid, signal.SIGKILL)
    except ProcessLookupError:
        pass
    process.wait()


def checkout_of(file):
    """The checkout that contains `file`."""
    return next(folder for folder in pathlib.Path(file).resolve().parents
                if (folder / "CMakePresets.json").exists())
