#!/usr/bin/python3
"""Compares what gcovr counted with the list of lines that may stay unrun.

    check.py COVERAGE.json EXCEPTIONS.txt

The list names a file, below it, indented by four, a source line, and below that, by eight, the reason. Source lines are
known by their text, so that they may move.
"""
import collections
import json
import os
import sys


def read_exceptions(path):
    entries, problems, file, waiting = collections.Counter(), [], None, None
    with open(path, encoding="utf-8") as stream:
        for number, line in enumerate(stream, 1):
            text = line.strip()
            if not text or line.startswith("#"):
                continue
            depth = len(line) - len(line.lstrip(" "))
            if depth < 8 and waiting:
                problems.append("%s:%d: no reason" % (path, waiting))
            waiting = None
            if depth == 0:
                file = text
            elif depth == 4:
                entries[file, text] += 1
                waiting = number
    if waiting:
        problems.append("%s:%d: no reason" % (path, waiting))
    return entries, problems


def percent(part, whole):
    return "%d of %d (%.1f %%)" % (part, whole, 100 * part / whole if whole else 100)


def main(coverage, exceptions):
    root = os.path.realpath(os.path.join(os.path.dirname(os.path.realpath(exceptions)), ".."))
    with open(coverage, encoding="utf-8") as stream:
        files = json.load(stream)["files"]
    listed, problems = read_exceptions(exceptions)
    unrun = collections.Counter()
    lines = lines_run = branches = branches_taken = 0
    print("%-44s %16s %16s" % ("", "lines", "branches"))
    for file in sorted(files, key=lambda f: f["file"]):
        with open(os.path.join(root, file["file"]), encoding="utf-8") as stream:
            source = stream.read().split("\n")
        # A template or an inline function is counted in every object that holds it.
        counts, taken = collections.Counter(), {}
        for line in file["lines"]:
            if line.get("gcovr/noncode"):
                continue
            counts[line["line_number"]] += line["count"]
            for index, branch in enumerate(line.get("branches", [])):
                key = line["line_number"], index
                taken[key] = taken.get(key, 0) + branch["count"]
        for number in sorted(counts):
            if not counts[number]:
                text = source[number - 1].strip()
                unrun[file["file"], text] += 1
                if unrun[file["file"], text] > listed[file["file"], text]:
                    problems.append("%s:%d is run by no test and has no reason: %s" % (file["file"], number, text))
        run = sum(1 for n in counts if counts[n])
        went = sum(1 for b in taken if taken[b])
        print("%-44s %16s %16s" % (file["file"], "%d/%d" % (run, len(counts)), "%d/%d" % (went, len(taken))))
        lines, lines_run = lines + len(counts), lines_run + run
        branches, branches_taken = branches + len(taken), branches_taken + went
    for (file, text), count in listed.items():
        if unrun[file, text] < count:
            problems.append("%s is run now; take it from the list: %s" % (file, text))
    print("lines run:      " + percent(lines_run, lines))
    print("branches taken: " + percent(branches_taken, branches))
    if not lines:
        problems.append("nothing was counted")
    for problem in problems:
        print(problem, file=sys.stderr)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
