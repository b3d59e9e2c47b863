#!/usr/bin/env python3
"""Changes one place of a source, builds only what that touches, and runs its unit tests: what they do
not notice survives, and says what no test looks at.

    mutate.py --build FOLDER [--seed N] [--count N] [--minutes N] [--all] [FILE...]

FOLDER is a built tree with tests. Without FILE a sample is drawn from the core and the keystroke
driver. Nothing is written but to a folder that goes at the end. survivors.txt lists survivors that
nobody could hear or read. Ends with 1 when fewer than 95 of 100 die of what is not listed there.
"""

import argparse
import collections
import json
import os
import random
import resource
import shlex
import signal
import subprocess
import sys
import tempfile
import time
from pathlib import Path

from mutations import mutations_of

ROOT = Path(__file__).resolve().parents[2]
LISTED = Path(__file__).with_name("survivors.txt")
SAMPLED = ["VornicCore/*.cpp", "VornicCore/*.h", "Vornic/typing/KeystrokeDriver.cpp",
           "Vornic/typing/TypingDynamics.cpp"]
MOST_OBJECTS = 6  # A header that more files include takes too long to change.
LEAST_KILLED = 0.95


def run(command, folder, seconds, **more):
    """The exit status, or None when it took too long; its children end with it."""
    def limits():
        resource.setrlimit(resource.RLIMIT_AS, (6 << 30, 6 << 30))
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    process = subprocess.Popen(command, cwd=folder, stdin=subprocess.DEVNULL, start_new_session=True,
                               stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, preexec_fn=limits, **more)
    try:
        return process.wait(timeout=seconds)
    except subprocess.TimeoutExpired:
        return None
    finally:
        try:
            os.killpg(process.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass
        process.wait()


class Tree:
    """What the build folder knows: how objects are compiled, which file needs which, how test
    programs are linked."""

    def __init__(self, build, scratch):
        self.build, self.scratch = build, scratch
        self.compile = {}
        for entry in json.loads((build / "compile_commands.json").read_text()):
            words = shlex.split(entry["command"])
            self.compile[words[words.index("-o") + 1]] = words
        self.needed_by = collections.defaultdict(set)
        target = None
        for line in self._ninja("-t", "deps").splitlines():
            if line and not line.startswith(" "):
                target = line.split(":")[0]
            elif line:
                path = os.path.normpath(build / line.strip())
                if path.startswith(f"{ROOT}/"):
                    self.needed_by[os.path.relpath(path, ROOT)].add(target)
        self._links, self._seconds, self._plain = {}, {}, {}

    def _ninja(self, *arguments):
        return subprocess.run(["ninja", "-C", self.build, *arguments], check=True, text=True,
                              capture_output=True).stdout

    def link(self, program):
        if program not in self._links:
            last = self._ninja("-t", "commands", program).strip().splitlines()[-1]
            command = last.split("&&")[1] if last.startswith(": &&") else last
            self._links[program] = shlex.split(command)
        return self._links[program]

    def programs(self, path):
        """The test programs beside the file's place under tests/ that are made of it."""
        own = [o for o in self.needed_by[path] if o.startswith(os.path.dirname(path) + "/")]
        libraries = {part for o in own for part in Path(o).parts if part.endswith(".dir")}
        for folder in [Path("tests") / path, *(Path("tests") / path).parents][1:]:
            found = [str(p.relative_to(self.build)) for p in sorted((self.build / folder).glob("*_tests"))]
            found = [p for p in found if any(f"/lib{lib[:-4]}.a" in word for lib in libraries
                                             for word in self.link(p))]
            if found or str(folder) == "tests":
                return found
        return []

    def objects(self, path, program):
        """Those of the program and of the file's own library that are compiled from it."""
        own = os.path.dirname(program) + "/", os.path.dirname(path) + "/"
        return sorted(o for o in self.needed_by[path] if o in self.compile and o.startswith(own))

    def compiled(self, name, text_path, path, output):
        """Compiles one object with `path` read from below `text_path`; whether that worked."""
        words = list(self.compile[name])
        words[words.index("-o") + 1] = str(output)
        source = words.index("-c") + 1
        if os.path.relpath(words[source], ROOT) == path:
            words[source] = str(text_path / path)
        words[1:1] = ["-I", str(text_path)]
        options = [w for w in words if not w.startswith("-g") and w != "-Werror"] + ["-g0", "-w"]
        return run(options, self.build, 300) == 0

    def linked(self, program, objects, output):
        words = list(self.link(program))
        own = [w for w in words if not any(w.endswith(name) for name in objects)]
        place = own.index("-o")
        own[place:place + 2] = ["-o", str(output), "-Wl,-S", *map(str, objects.values())]
        return run(own, self.build, 300) == 0

    def tests_pass(self, program, seconds):
        """Whether the tests pass, in a home of their own, which they may litter."""
        with tempfile.TemporaryDirectory(dir=self.scratch) as home:
            environment = dict(os.environ, HOME=home, TMPDIR=home, XDG_CONFIG_HOME=home, XDG_DATA_HOME=home,
                               XDG_CACHE_HOME=home, XDG_STATE_HOME=home, GTEST_FAIL_FAST="1", GTEST_BRIEF="1")
            return run([program], home, seconds, env=environment) == 0

    def patience(self, program):
        """Ten times what the tests need when nothing is changed."""
        if program not in self._seconds:
            began = time.monotonic()
            if not self.tests_pass(self.build / program, 600):
                sys.exit(f"mutate: {program} fails before anything is changed")
            self._seconds[program] = 10 * (time.monotonic() - began) + 5
        return self._seconds[program]

    def unchanged(self, name, path):
        """The object of the file as it is, to compare with: some changes are none to the compiler."""
        if name not in self._plain:
            output = self.scratch / "plain.o"
            place = self.scratch / "text" / path
            place.write_text((ROOT / path).read_text())
            self._plain[name] = output.read_bytes() if self.compiled(
                name, self.scratch / "text", path, output) else None
        return self._plain[name]


def judged(tree, mutation):
    """killed, survived, untested (no test program), or what does not count: same (the compiler makes
    the same of it), none (does not compile), shared (a header of many files)."""
    text = tree.scratch / "text"
    place = text / mutation.path
    place.parent.mkdir(parents=True, exist_ok=True)
    programs = tree.programs(mutation.path)
    if not programs:
        return "untested"
    same = True
    try:
        for program in programs:
            objects = {}
            names = tree.objects(mutation.path, program)
            if not names or len(names) > MOST_OBJECTS:
                return "shared"
            patience = tree.patience(program)
            for index, name in enumerate(names):
                before = tree.unchanged(name, mutation.path)
                place.write_text(mutation.applied((ROOT / mutation.path).read_text()))
                output = objects[name] = tree.scratch / f"changed{index}.o"
                if not tree.compiled(name, text, mutation.path, output):
                    return "none"
                same = same and before == output.read_bytes()
            if same:
                return "same"
            changed = tree.scratch / "changed_tests"
            if not tree.linked(program, objects, changed):
                return "none"
            if not tree.tests_pass(changed, patience):
                return "killed"
        return "survived"
    finally:
        place.unlink(missing_ok=True)


def description(mutation):
    """path: line -> changed line, without its number, so that it holds when others move."""
    text = (ROOT / mutation.path).read_text()
    def line(of, end):
        first = of.rfind("\n", 0, mutation.start) + 1
        last = of.find("\n", end)
        return " ".join(of[first:last].split())
    changed = mutation.applied(text)
    return (f"{mutation.path}: {line(text, mutation.end)} -> "
            f"{line(changed, mutation.start + len(mutation.replacement))}")


def listed():
    lines = [line for line in LISTED.read_text().splitlines() if line and not line.startswith("#")]
    return dict(line.split(" || ") for line in lines)


def arguments():
    parser = argparse.ArgumentParser(prog="./dev mutate")
    parser.add_argument("--build", required=True, type=lambda f: Path(f).resolve())
    parser.add_argument("--seed", type=int, default=random.randrange(1 << 32))
    parser.add_argument("--count", type=int, default=400)
    parser.add_argument("--minutes", type=float, default=180)
    parser.add_argument("--all", action="store_true", help="every change instead of a sample")
    parser.add_argument("files", nargs="*")
    return parser.parse_args()


def main():
    options = arguments()
    files = [os.path.relpath(f, ROOT) for f in options.files] or subprocess.run(
        ["git", "ls-files", *SAMPLED], cwd=ROOT, check=True, text=True, capture_output=True).stdout.split()
    mutations = [m for f in files for m in mutations_of(f, (ROOT / f).read_text())]
    random.Random(options.seed).shuffle(mutations)
    wanted = len(mutations) if options.all else options.count
    print(f"seed {options.seed}: {wanted} of {len(mutations)} changes in {len(files)} files", flush=True)
    end = time.monotonic() + 60 * options.minutes
    known, counts = listed(), collections.Counter()
    with tempfile.TemporaryDirectory(prefix="vornic-mutate.") as scratch:
        tree = Tree(options.build, Path(scratch))
        for mutation in mutations:
            tried = counts["killed"] + counts["survived"] + counts["listed"]
            if tried >= wanted or time.monotonic() > end:
                break
            verdict, what = judged(tree, mutation), description(mutation)
            if verdict == "survived" and what in known:
                verdict = "listed"
            elif verdict == "killed" and what in known:
                print(f"listed, but dies: {what}", flush=True)
            elif verdict in ("survived", "untested"):
                line = (ROOT / mutation.path).read_text().count("\n", 0, mutation.start) + 1
                print(f"{verdict}: line {line}, {mutation.kind}: {what}", flush=True)
            counts[verdict] += 1
    tried = counts["killed"] + counts["survived"]
    share = counts["killed"] / tried if tried else 1.0
    print(f"seed {options.seed}: {tried + counts['listed']} changes tried, {counts['killed']} killed, "
          f"{counts['survived']} survived ({100 * share:.1f} % die), {counts['listed']} listed with a reason; "
          f"not counted: {counts['none']} do not compile, {counts['same']} compile to the same, "
          f"{counts['shared']} in a header of many files, {counts['untested']} without a test program")
    sys.exit(0 if share >= LEAST_KILLED else 1)


def stop(*_):
    sys.exit(130)


if __name__ == "__main__":
    signal.signal(signal.SIGTERM, stop)
    signal.signal(signal.SIGINT, stop)
    main()
