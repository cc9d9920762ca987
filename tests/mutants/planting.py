"""Copies of the sources in which departures are planted, built and tried out."""

import collections
import hashlib
import json
import os
import pathlib
import re
import shutil
import signal
import subprocess
import threading
import time
from typing import NamedTuple

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
WORK = ROOT / "build" / "mutants"

# The random comparisons notice early or not at all.
ENVIRONMENT = dict(os.environ, LC_ALL="C.UTF-8", QT_QPA_PLATFORM="offscreen", QT_FONT_DPI="96",
                   PELMARK_RANDOM_CASES="400")

# A test may take this many times as long as without a departure, and at least so many seconds.
PATIENCE = 5
LEAST_SECONDS = 60
LEAST_CPU_SECONDS = 10

# How much cheaper another test must be to go before one of the room's own.
FARTHER = 4

NOTICED, UNNOTICED = "noticed", "NOT NOTICED"
SAME_CODE, IS_LISTED, NO_BUILD = "same code", "listed", "does not compile"


class Test(NamedTuple):
    name: str
    program: str  # relative to the build folder
    command: list
    environment: dict
    folder: str
    inputs: frozenset  # all that the program and those that it starts are built from
    seconds: float = 0


class Verdict(NamedTuple):
    verdict: str
    by: str = ""
    seconds: float = 0


class Stop(Exception):
    """The user ended the run."""


class Tree:
    """A copy of the sources with a build of its own, for one worker."""
    stopping = threading.Event()
    waits = collections.Counter()  # a test's name: how often it ran out of time

    def __init__(self, number):
        self.folder = WORK / str(number)
        self.sources = self.folder / "tree"
        self.build_folder = self.folder / "build"
        self.scratch = self.folder / "tmp"
        self.environment = dict(ENVIRONMENT, TMPDIR=str(self.scratch), CCACHE_BASEDIR=str(self.folder))
        self.objects = {}   # a source: the objects that it is compiled to, in part or whole
        self.hashes = {}    # each of the program's objects without any departure

    def run(self, *command):
        return subprocess.run(command, env=self.environment, stdin=subprocess.DEVNULL,
                              capture_output=True, text=True)

    def copy_sources(self):
        """Leaves alone what is the same, which need not be built again."""
        names = self.run("git", "-C", str(ROOT), "ls-files", "-z", "--cached", "--others",
                         "--exclude-standard").stdout.split("\0")
        names = {name for name in names if name and (ROOT / name).is_file()}
        for name in names:
            target = self.sources / name
            if not target.is_file() or target.read_bytes() != (ROOT / name).read_bytes():
                target.parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(ROOT / name, target)
        for old in [each for each in self.sources.rglob("*") if each.is_file()]:
            if str(old.relative_to(self.sources)) not in names:
                old.unlink()

    def configure(self):
        """As users get the program, but for the fall off a function's end, which no compiler should let
        pass as a dropped return."""
        arguments = ["cmake", "-S", str(self.sources), "-B", str(self.build_folder), "-G", "Ninja",
                     "-DCMAKE_BUILD_TYPE=Release", "-DPELMARK_JOIN_SOURCES=OFF",
                     "-DCMAKE_CXX_FLAGS=-Werror=return-type"]
        if shutil.which("ccache"):
            arguments.append("-DCMAKE_CXX_COMPILER_LAUNCHER=ccache")
        if shutil.which("ld.lld"):
            arguments += [f"-DCMAKE_{kind}_LINKER_FLAGS=-fuse-ld=lld" for kind in ("EXE", "MODULE")]
        result = self.run(*arguments)
        if result.returncode != 0:
            raise SystemExit(result.stdout + result.stderr)

    def ninja(self, *arguments):
        result = self.run("ninja", "-C", str(self.build_folder), *arguments)
        if self.stopping.is_set():
            raise Stop
        return result

    def prepare(self):
        self.copy_sources()
        self.configure()
        built = self.ninja()
        if built.returncode != 0:
            raise SystemExit(built.stdout)
        self.objects = self.objects_by_source()
        self.hashes = {each: self.hash_of(each) for each in set().union(*self.objects.values())
                       if each.startswith("src/")}

    def objects_by_source(self):
        objects = collections.defaultdict(set)
        for block in self.ninja("-t", "deps").stdout.split("\n\n"):
            name, *sources = block.split("\n")
            for source in sources:
                path = pathlib.Path(os.path.normpath(self.build_folder / source.strip()))
                if path.is_relative_to(self.sources):
                    objects[str(path.relative_to(self.sources))].add(name.split(":")[0])
        return objects

    def hash_of(self, name):
        return hashlib.sha256((self.build_folder / name).read_bytes()).hexdigest()

    def tests(self):
        """Those of programs that are built here; the others judge the package or the flags."""
        listed = self.run("ctest", "--test-dir", str(self.build_folder), "--show-only=json-v1")
        for each in json.loads(listed.stdout)["tests"]:
            path = pathlib.Path(each["command"][0])
            if not path.is_relative_to(self.build_folder):
                continue
            program = str(path.relative_to(self.build_folder))
            inputs = self.ninja("-t", "inputs", program).stdout.split("\n")
            properties = {item["name"]: item["value"] for item in each["properties"]}
            environment = dict(item.split("=", 1) for item in properties.get("ENVIRONMENT", []))
            folder = os.path.relpath(properties["WORKING_DIRECTORY"], self.build_folder)
            command = [os.path.relpath(part, self.build_folder) if part.startswith(str(self.folder))
                       else part for part in each["command"]]
            yield Test(each["name"], program, command, environment, folder, frozenset(inputs))

    def run_test(self, test, seconds, cpu_seconds):
        """What failed; nothing where all passed. A failure ends the test at once, and all that it
        started."""
        shutil.rmtree(self.scratch, ignore_errors=True)
        self.scratch.mkdir()
        # The limit of processor time ends a loop early, however busy the machine is.
        command = ["sh", "-c", 'ulimit -t "$0"; exec "$@"', str(cpu_seconds),
                   *(os.path.normpath(self.build_folder / part) if "/" in part else part
                     for part in test.command)]
        log = self.folder / "test.log"
        with open(log, "wb") as output:
            process = subprocess.Popen(command, cwd=self.build_folder / test.folder, stdout=output,
                                       stdin=subprocess.DEVNULL, stderr=subprocess.STDOUT,
                                       env=self.environment | test.environment,
                                       start_new_session=True)
            try:
                return self.failure_of(process, log, test.name, time.monotonic() + seconds)
            finally:
                try:
                    os.killpg(process.pid, signal.SIGKILL)
                except ProcessLookupError:
                    pass
                process.wait()

    def failure_of(self, process, log, name, deadline):
        while True:
            try:
                process.wait(0.1)
            except subprocess.TimeoutExpired:
                pass
            failed = re.search(rb"^FAIL!  : \w+::(\w+)", log.read_bytes(), flags=re.MULTILINE)
            if failed:
                return f"{name}::{failed.group(1).decode()}"
            if process.returncode is not None:
                return f"{name} ({process.returncode})" if process.returncode else ""
            if time.monotonic() > deadline:
                self.waits[name] += 1
                return f"{name} (out of time)"
            if self.stopping.is_set():
                raise Stop

    def try_out(self, departure, tests):
        path = self.sources / departure.file
        original = path.read_bytes()
        start = time.monotonic()
        path.write_text(departure.source)
        try:
            verdict = self.judge(departure.file, tests)
        finally:
            path.write_bytes(original)
        return verdict._replace(seconds=round(time.monotonic() - start, 1))

    def cost(self, test, room):
        """A room's own tests are the likeliest to notice, and go before others that are a little
        quicker. One that waited in vain before costs more than its time."""
        distance = 1 if test.folder == f"tests/{room}" else FARTHER
        return test.seconds * distance * (1 + FARTHER * self.waits[test.name])

    def judge(self, file, tests):
        concerned = self.objects[file]
        compiled = sorted(concerned & set(self.hashes))
        if compiled and self.ninja("-j", "2", *compiled).returncode != 0:
            return Verdict(NO_BUILD)
        same = {each for each in compiled if self.hash_of(each) == self.hashes[each]}
        if len(same) == len(compiled):
            return Verdict(SAME_CODE)
        room = pathlib.Path(file).parent.name
        able = [each for each in tests if not each.inputs.isdisjoint(concerned - same)]
        for test in sorted(able, key=lambda each: self.cost(each, room)):
            if self.ninja("-j", "2", test.program).returncode != 0:
                return Verdict(NO_BUILD)
            failure = self.run_test(test, max(LEAST_SECONDS, PATIENCE * test.seconds),
                                    round(LEAST_CPU_SECONDS + PATIENCE * test.seconds))
            if failure:
                return Verdict(NOTICED, failure)
        return Verdict(UNNOTICED)
