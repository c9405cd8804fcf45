"""The mutation script against a toy: what must be noticed is, what must survive does, nothing is made up.

    tst_mutation.py TOOLS SOURCES WORK COMPILER [COMPILER ARGUMENTS ...]
"""
import os
import subprocess
import sys

tools, sources, work, *compiler = sys.argv[1:]
sys.path.insert(0, tools)

import campaign
import rewrite
import sites
import testbed

EXPECTED = {
    ("toyAbove", "comparison", "a > b", ">="): "killed",
    ("toyAbove", "comparison", "a > b", "<="): "killed",
    ("toyEither", "logic", "a || b", "&&"): "killed",
    ("toyEither", "logic", "a || b", "without the left side"): "killed",
    ("toyEither", "logic", "a || b", "without the right side"): "killed",
    ("toyEither", "condition", "a || b", "true"): "killed",
    ("toyEither", "condition", "a || b", "false"): "killed",
    ("toyCapped", "condition", "value > 10", "true"): "killed",
    ("toyCapped", "condition", "value > 10", "false"): "killed",
    ("toyCapped", "comparison", "value > 10", ">="): "survived",
    ("toyCapped", "comparison", "value > 10", "<="): "killed",
    ("toyCapped", "number", "10", "one more"): "survived",
    ("toyCapped", "number", "10", "one less"): "survived",
    ("toyCapped", "return", "return 10", "return {}"): "killed",
    ("toyCapped", "number", "10", "one more", 2): "killed",
    ("toyCapped", "number", "10", "one less", 2): "killed",
    ("toyCapped", "return", "return value", "return {}"): "killed",
    ("toyDouble", "call", "toyNote()", "removed"): "survived",
    ("toyDouble", "arithmetic", "value + value", "-"): "killed",
    ("toyDouble", "return", "return value + value", "return {}"): "killed",
    ("toyUnused", "number", "7", "one more"): "survived",
    ("toyUnused", "number", "7", "one less"): "survived",
    ("toyUnused", "return", "return 7", "return {}"): "survived",
    ("toyNote", "call", "++toyCalls", "removed"): "survived",
    ("toyNote", "arithmetic", "++toyCalls", "--"): "survived",
    ("", "number", "0", "one more"): "survived",
    ("toyInline", "number", "5", "one more"): "killed",
    ("toyInline", "number", "5", "one less"): "killed",
    ("toyInline", "return", "return 5", "return {}"): "killed",
    ("toyOnce", "number", "4", "one more"): "killed",
    ("toyOnce", "number", "4", "one less"): "killed",
    ("toyOnce", "return", "return kept.front()", "return {}"): "killed",
    ("toyRoom", "return", "return values.size()", "return {}"): "killed",
}


def main():
    os.makedirs(work, exist_ok=True)
    toy = os.path.join(sources, "toy.cpp")
    finder = sites.Finder(sources)
    finder.read(toy, ["-std=c++17", "-x", "c++"])
    found, ids, seen = [], {}, {}
    for site in finder.all():
        numbers = []
        for index, change in enumerate(site.mutants):
            name = (site.function, site.kind, site.text, change)
            seen[name] = seen.get(name, 0) + 1
            key = name if seen[name] == 1 else (*name, seen[name])
            numbers.append(len(found) + 1)
            found.append(testbed.Mutant(numbers[-1], site, index, "toy.cpp", " | ".join(map(str, key))))
        ids[id(site)] = numbers
    expected = {" | ".join(map(str, key)): verdict for key, verdict in EXPECTED.items()}
    keys = {mutant.key for mutant in found}
    assert keys == set(expected), "made up: %s, overlooked: %s" % (keys - set(expected), set(expected) - keys)

    runtime = os.path.join(tools, "runtime")

    def changed_copy(name):
        with open(os.path.join(sources, name), "rb") as stream:
            of_file = [site for site in finder.all() if site.file == os.path.join(os.path.realpath(sources), name)]
            text = rewrite.Rewritten(stream.read(), of_file, lambda s: ids[id(s)], b'#include "mutation.h"\n')
        with open(os.path.join(work, name), "wb") as stream:
            stream.write(text.text)
        return text

    # The copy of the source takes the header beside it, the test program the one that nobody changed.
    changed_copy("toy.h")
    written = changed_copy("toy.cpp")
    changed, program = os.path.join(work, "toy.cpp"), os.path.join(work, "toy")
    subprocess.run([*compiler, "-std=c++17", "-fPIC", "-I", runtime, "-DSELMAR_MUTANT_COUNT=100", changed,
                    os.path.join(runtime, "mutation.cpp"), os.path.join(sources, "toytest.cpp"), "-lQt5Core", "-ldl", "-o", program],
                   check=True)
    # A compiler's complaint about an operand belongs to the innermost site around it.
    lines = written.text.split(b"\n")
    line = next(i for i, text in enumerate(lines, 1) if b"value" in text and b"if (mutation::cond" in text)
    assert written.site_at(line, lines[line - 1].index(b"value") + 1).kind == "comparison"
    assert written.site_at(1, 1) is None

    runner = campaign.Runner({"toy": ([program], {}, ["unit"])})
    recorded = campaign.record(runner, 1, lambda text: None, {m.id for m in found if m.site.once})
    assert set(recorded["toy"][1]) == {"above", "either", "capped", "doubled", "inlined", "room", "onceMade", "onceUsed"}, recorded
    results = os.path.join(work, "results.jsonl")
    if os.path.exists(results):
        os.remove(results)
    campaign.Campaign(runner, recorded, results, lambda text: None).run(found, 1)
    verdicts = {key: entry["verdict"] for key, entry in campaign.latest(results).items()}
    wrong = {key: verdicts.get(key) for key in expected if verdicts.get(key) != expected[key]}
    assert not wrong, "wrong verdicts: %s" % wrong
    print("%d mutants, %d survive as they must" % (len(expected), list(expected.values()).count("survived")))


if __name__ == "__main__":
    main()
