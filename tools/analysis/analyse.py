#!/usr/bin/env python3
"""Reads the sources of the project with clang-tidy and clazy; see scripts/analyse.sh.

Sources of one folder are read in groups, as one text that includes them: nine tenths of the time goes into the headers of Qt,
which are then read once a group. Sources that do not compile together (two helpers of one name) come into different groups.

A source without findings is not read again until it, a header of the project that it includes, its compiler flags, the
wanted checks or the tools have changed; the stamps lie in the build folder.
"""

import argparse
import concurrent.futures
import hashlib
import json
import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys
import tempfile
import threading

ROOT = pathlib.Path(__file__).resolve().parents[2]
FOLDERS = ["src", "platform", "terminal", "bench", "fuzz", "tests", "docs/minimalhost"]

# Not part of the analysed build: the reason stands beside each.
UNREAD = {
    "fuzz/engine.cpp": "needs the fuzzing engine's build",
    "tests/tools/toy.cpp": "the patient of the mutation tool's own tests",
    "tests/tools/toytest.cpp": "the patient of the mutation tool's own tests",
}

# clazy's checks of levels 0 and 1, which its makers hold to be nearly free of false alarms, and two of level 2: an event
# handler that forgets its base class, and a virtual call before the object is whole. Left out:
#   non-pod-global-static   the records' field names are static strings by their interface
CLAZY_CHECKS = "level0,level1,base-class-event,virtual-call-ctor,no-non-pod-global-static"
# Left out besides, by folder:
#   range-loop-detach       a loop over what a function returns may copy that list. The plugin's and the platform's lists
#                           have thousands of documents; those of the others have a screen's rows at most.
#   detaching-temporary     the same for first() and last() of such a list; only tests say it that way.
CLAZY_LEFT_OUT = {
    "terminal": ",no-range-loop-detach",
    "bench": ",no-range-loop-detach",
    "fuzz": ",no-range-loop-detach",
    "docs": ",no-range-loop-detach",
    "tests": ",no-range-loop-detach,no-detaching-temporary",
}

FINDING = re.compile(r"^(?P<file>/[^:]+):(?P<line>\d+):\d+: (?:warning|error): (?P<text>.*)$")

NAMES = "[readability-inconsistent-declaration-parameter-name]"


class Source:
    def __init__(self, entry):
        self.path = pathlib.Path(entry["file"])
        self.name = self.path.relative_to(ROOT).as_posix()
        self.directory = entry["directory"]
        # The sources were built by gcc, whose warnings are its own affair; what is left says how the text is to be read.
        self.flags = []
        words = iter(shlex.split(entry["command"]))
        for word in words:
            if word in ("-o", "-c"):
                next(words)
            elif word[0] == "-" and not word.startswith("-W"):
                self.flags.append(word)
                if word == "-isystem":
                    self.flags.append(next(words))
        self.clazy_checks = CLAZY_CHECKS + CLAZY_LEFT_OUT.get(self.name.partition("/")[0], "")

    def defines(self):
        return {flag[2:].partition("=")[0]: flag for flag in self.flags if flag.startswith("-D")}


def joined_flags(sources):
    """The flags of all; each once, in order."""
    words = []
    for source in sources:
        flags = iter(source.flags)
        for flag in flags:
            word = (flag, next(flags)) if flag == "-isystem" else (flag,)
            if word not in words:
                words.append(word)
    return [part for word in words for part in word]


class Reader:
    def __init__(self, build):
        self.build = build
        self.work = build / "analysis"
        self.work.mkdir(parents=True, exist_ok=True)
        # Inside the tree, where the tools find the .clang-tidy above; runs beside each other have a folder each.
        self.groups = pathlib.Path(tempfile.mkdtemp(prefix="groups", dir=self.work))
        self.print_lock = threading.Lock()
        self.seen = set()
        versions = [subprocess.run([tool, "--version"], capture_output=True, text=True, check=True).stdout
                    for tool in ("clang-tidy", "clazy-standalone", "qmake")]
        self.versions = "\n".join(versions)

    # What a source's findings depend on.

    @staticmethod
    def configurations(source):
        """The .clang-tidy files above the source, the nearest first; each may refer to the next one."""
        return [place / ".clang-tidy" for place in source.path.parents if (place / ".clang-tidy").exists()]

    def stamp_file(self, source):
        return self.work / (source.name.replace("/", "__") + ".stamp")

    def stamp(self, source, files):
        digest = hashlib.sha256((source.clazy_checks + self.versions + shlex.join(source.flags)).encode())
        for file in [*self.configurations(source), *map(pathlib.Path, files)]:
            digest.update(str(file).encode() + b"\0" + file.read_bytes())
        return digest.hexdigest()

    def is_known(self, source):
        try:
            stamp, *files = self.stamp_file(source).read_text().splitlines()
            return stamp == self.stamp(source, files)
        except (OSError, ValueError):
            return False

    def remember(self, source):
        rule = subprocess.run(["clang++", *source.flags, "-MM", str(source.path)], cwd=source.directory,
                              capture_output=True, text=True, check=True).stdout
        files = sorted(set(rule.replace("\\\n", " ").split()[1:]))
        self.stamp_file(source).write_text("\n".join([self.stamp(source, files), *files]) + "\n")

    # Groups.

    def write_group(self, number, sources):
        folder = self.groups / str(number)
        folder.mkdir(exist_ok=True)
        text = folder / "group.cpp"
        # Each program's main() gets a name of its own.
        text.write_text("".join(f"#define main main_of_{place}\n#include \"{source.path}\"\n#undef main\n"
                                for place, source in enumerate(sources)))
        command = ["clang++", *joined_flags(sources), "-c", str(text), "-o", "group.o"]
        (folder / "compile_commands.json").write_text(json.dumps(
            [{"directory": sources[0].directory, "file": str(text), "command": shlex.join(command)}]))
        return text, command

    def together(self, number, sources):
        """Those of the sources that compile together with the first one, and the others."""
        left = []
        defines = {}
        for source in list(sources):
            if any(defines.setdefault(name, flag) != flag for name, flag in source.defines().items()):
                sources.remove(source)
                left.append(source)
        while len(sources) > 1:
            text, command = self.write_group(number, sources)
            compiled = subprocess.run([*command, "-fsyntax-only", "-w", "-ferror-limit=0"], cwd=sources[0].directory,
                                      capture_output=True, text=True)
            if compiled.returncode == 0:
                break
            wrong = {match["file"] for match in map(FINDING.match, compiled.stderr.splitlines()) if match}
            unfit = [source for source in sources[1:] if str(source.path) in wrong] or sources[1:]
            sources = [source for source in sources if source not in unfit]
            left.extend(unfit)
        return sources, left

    def read(self, number, sources):
        """Prints what is found in the sources and their headers; returns the files with findings."""
        text, _ = self.write_group(number, sources)
        place = str(text.parent)
        ours = "/(src|platform|terminal|bench|fuzz|tests|docs)/[^_]*\\.(h|cpp)$"
        configuration = self.configurations(sources[0])[0]
        found = self.findings(["clang-tidy", "-p", place, "--quiet", f"--config-file={configuration}",
                               "--warnings-as-errors=-*", f"--header-filter={ours}", str(text)])
        found |= self.findings(["clazy-standalone", "-p", place, f"-checks={sources[0].clazy_checks}",
                                f"-header-filter={ours}", str(text)])
        if any(not file.endswith(".cpp") for file in found):
            return found
        for source in sources:
            if str(source.path) not in found:
                self.remember(source)
        return found

    def findings(self, command):
        process = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        if process.returncode != 0:  # findings are not errors here: it has not read the text
            self.show(f"{shlex.join(command)} ended with {process.returncode}:\n{process.stdout}")
            return {command[0]}
        found = set()
        for remark in self.remarks(process.stdout):
            match = FINDING.match(remark[0])
            # What is said about a group's own text, which includes sources, concerns nobody; nor that moc, which writes
            # the signals' definitions, calls their parameters _t1 and _t2.
            generated = any(line.startswith(str(self.build)) and ".moc:" in line for line in remark[1:])
            if match["file"].startswith((str(self.build), "/usr/")) or (NAMES in match["text"] and generated):
                continue
            found.add(match["file"])
            key = (match["file"], match["line"], match["text"])
            if key not in self.seen:
                self.seen.add(key)
                self.show("\n".join(remark))
        return found

    @staticmethod
    def remarks(output):
        """The lines of each finding: its own, then its notes and the places they show."""
        result = []
        inside = False
        for line in output.splitlines():
            if FINDING.match(line):
                result.append([line])
                inside = True
                continue
            inside = inside and (line.startswith(" ") or ": note: " in line)
            if inside:
                result[-1].append(line)
        return result

    def show(self, text):
        with self.print_lock:
            print(text, flush=True)


def wanted_sources(build, paths):
    commands = json.loads((build / "compile_commands.json").read_text())
    wanted = [ROOT / path for path in paths]
    sources = {}
    for entry in commands:
        path = pathlib.Path(entry["file"])
        if not path.is_relative_to(build) and any(path == place or place in path.parents for place in wanted):
            sources.setdefault(path, Source(entry))
    tracked = subprocess.run(["git", "-C", str(ROOT), "ls-files", "*.cpp"], capture_output=True, text=True).stdout.split()
    missing = [name for name in tracked if name not in UNREAD and ROOT / name not in sources
               and any(ROOT / name == place or place in (ROOT / name).parents for place in wanted)]
    return [sources[path] for path in sorted(sources)], missing


def main():
    arguments = argparse.ArgumentParser()
    arguments.add_argument("--build", type=pathlib.Path, required=True)
    arguments.add_argument("--jobs", type=int, default=os.cpu_count())
    arguments.add_argument("--group", type=int, default=24)
    arguments.add_argument("--again", action="store_true")
    arguments.add_argument("paths", nargs="*", default=FOLDERS)
    given = arguments.parse_args()
    sources, missing = wanted_sources(given.build, given.paths or FOLDERS)
    if not sources:
        print(f"No sources of the build below: {' '.join(given.paths)}", file=sys.stderr)
        return 2
    reader = Reader(given.build)
    unread = [source for source in sources if given.again or not reader.is_known(source)]
    found = set()
    numbers = iter(range(len(sources) + 1))
    number_lock = threading.Lock()

    def read_folder(folder_sources):
        rest = folder_sources
        while rest:
            with number_lock:
                number = next(numbers)
            group, left = reader.together(number, rest[:given.group])
            found.update(reader.read(number, group))
            rest = left + rest[given.group:]

    folders = {}
    for source in unread:
        folders.setdefault(source.path.parent, []).append(source)
    try:
        with concurrent.futures.ThreadPoolExecutor(given.jobs) as pool:
            list(pool.map(read_folder, folders.values()))
    finally:
        shutil.rmtree(reader.groups)
    for name in missing:
        print(f"{name}: part of no target, not read")
    print(f"{len(sources)} sources, {len(unread)} of them read now; files with findings: {len(found)}")
    return 1 if found or missing else 0


if __name__ == "__main__":
    sys.exit(main())
