#!/usr/bin/python3
"""Changes src/ in one place at a time and looks whether a test notices; see README.md beside this file.

    tools/mutation/mutate.py                    all mutants; goes on where an earlier run was stopped
    tools/mutation/mutate.py --fresh            all mutants, forgetting earlier verdicts
    tools/mutation/mutate.py --sample 200       a sample, the same for the same --seed
    tools/mutation/mutate.py --survivors        only those that survived before, against the tests as they are now
    tools/mutation/mutate.py --only srreceipt   only files or mutants whose name holds the text
    tools/mutation/mutate.py --list             prints the mutants, builds nothing more
    tools/mutation/mutate.py --report           writes docs/mutation.md from the verdicts; fails below 90 % or with a
                                                survivor that nobody has judged
"""
import argparse
import json
import os
import random
import sys
import time

import campaign
import report
import testbed

ROOT = os.path.realpath(os.path.join(os.path.dirname(os.path.realpath(__file__)), "..", ".."))


def say(text):
    print(time.strftime("%H:%M:%S ") + text, flush=True)


def find(bed, state):
    bed.configure()
    bed.find()
    say("%d mutants in %d files" % (len(bed.mutants), len({m.file for m in bed.mutants})))
    # What the compiler refused before is not tried again as long as the place is the same.
    refused = set()
    if os.path.exists(state):
        with open(state) as stream:
            refused = set(json.load(stream))
    bed.dropped = [m.site for m in bed.mutants if m.index == 0 and m.key in refused]


def build(bed, state):
    find(bed, state)
    bed.build_without_refused(["selmar_records", "selmar_wizards"], say)
    bed.build_without_refused(["selmarrivenhold", *bed.tests()], say)
    with open(state, "w") as stream:
        gone = {id(site) for site in bed.dropped}
        json.dump([m.key for m in bed.mutants if m.index == 0 and id(m.site) in gone], stream, ensure_ascii=False, indent=0)
    say("built; %d mutants are left out because the compiler refuses them"
        % (len(bed.mutants) - len(bed.compiled_mutants())))


def main():
    parser = argparse.ArgumentParser(description="Mutation testing of src/.")
    parser.add_argument("--work", default=os.path.join(ROOT, "build", "mutation"))
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--fresh", action="store_true")
    parser.add_argument("--survivors", action="store_true")
    parser.add_argument("--sample", type=int)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--only")
    parser.add_argument("--list", action="store_true")
    parser.add_argument("--report", action="store_true")
    options = parser.parse_args()

    os.makedirs(options.work, exist_ok=True)
    results = os.path.join(options.work, "results.jsonl")
    bed = testbed.Testbed(ROOT, options.work)
    state = os.path.join(options.work, "refused.json")

    if options.list:
        find(bed, state)
        for mutant in bed.mutants:
            print("%s:%d  %s" % (mutant.file, mutant.site.line, mutant.key.split(" | ", 1)[1]))
        return 0
    if options.report:
        find(bed, state)
        return report.write(ROOT, bed, {id(site) for site in bed.dropped}, campaign.latest(results))
    build(bed, state)

    mutants = bed.compiled_mutants()
    if options.only:
        mutants = [m for m in mutants if options.only in m.key]
    if options.fresh and os.path.exists(results):
        os.remove(results)
    before = campaign.latest(results)
    if options.survivors:
        mutants = [m for m in mutants if before.get(m.key, {}).get("verdict") == "survived"]
    elif not options.only:
        mutants = [m for m in mutants if m.key not in before]
    generator = random.Random(options.seed)
    if options.sample is not None:
        mutants = generator.sample(mutants, min(options.sample, len(mutants)))
    # In any order, so that the first part of a run already tells something about the whole.
    generator.shuffle(mutants)
    if not mutants:
        say("nothing to run")
        return 0

    os.nice(max(0, 19 - os.nice(0)))
    runner = campaign.Runner(bed.tests())
    recorded = campaign.record(runner, options.jobs, say, {m.id for m in mutants if m.site.once})
    campaign.Campaign(runner, recorded, results, say).run(mutants, options.jobs)
    verdicts = campaign.latest(results)
    for mutant in sorted(mutants, key=lambda m: m.id):
        if verdicts[mutant.key]["verdict"] == "survived":
            print("survived  src/%s:%d  %s" % (mutant.file, mutant.site.line, mutant.key.split(" | ", 1)[1]))
    return 0


if __name__ == "__main__":
    sys.exit(main())
