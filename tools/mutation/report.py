"""Writes docs/mutation.md from the verdicts of a run and from what was judged by hand."""
import os
import sys

LEAST = 90.0


def read_judgements(path):
    """{key: judgement}: a mutant's key on a line of its own, below it, indented, why it may survive.

    Several keys above one judgement share it.
    """
    judged, waiting, known = {}, [], False
    with open(path, encoding="utf-8") as stream:
        for line in stream:
            text = line.strip()
            if not text or line.startswith("#"):
                continue
            if line.startswith(" "):
                for key in waiting:
                    judged[key] = (judged[key] + " " + text) if key in judged else text
                known = True
            else:
                if known:
                    waiting, known = [], False
                waiting.append(text)
    return judged


def write(root, bed, refused, verdicts, say=print):
    """Returns the exit code: 0 when the score is reached and every survivor is judged."""
    judged = read_judgements(os.path.join(root, "tools", "mutation", "judged.txt"))
    files, survivors, problems, left_out, open_mutants = {}, [], [], 0, 0
    for mutant in bed.mutants:
        if id(mutant.site) in refused:
            left_out += 1
            continue
        row = files.setdefault(mutant.file, {"all": 0, "killed": 0, "timeout": 0, "survived": 0})
        verdict = verdicts.get(mutant.key)
        if verdict is None:
            open_mutants += 1
            continue
        row["all"] += 1
        row[verdict["verdict"]] += 1
        if verdict["verdict"] == "survived":
            survivors.append(mutant)
    keys = {mutant.key for mutant in survivors}
    for mutant in survivors:
        if mutant.key not in judged:
            problems.append("not judged: src/%s:%d  %s" % (mutant.file, mutant.site.line, mutant.key))
    for key in judged:
        if key not in keys:
            problems.append("judged, but no survivor: " + key)

    total = {name: sum(row[name] for row in files.values()) for name in ("all", "killed", "timeout", "survived")}
    found = total["killed"] + total["timeout"]
    score = 100 * found / total["all"] if total["all"] else 0.0
    if score < LEAST:
        problems.append("the score is %.1f %%, at least %.0f %% are wanted" % (score, LEAST))
    if open_mutants:
        problems.append("%d mutants were not run" % open_mutants)

    with open(os.path.join(root, "tools", "mutation", "head.md"), encoding="utf-8") as stream:
        lines = [stream.read().rstrip("\n"), ""]
    lines += ["## Score", "",
              "%d mutants, %d noticed (%d of them because a test never ended), %d survive: **%.1f %%**."
              % (total["all"], found, total["timeout"], total["survived"], score),
              "%d more are left out because the compiler refuses them." % left_out]
    if open_mutants:
        lines += ["%d more were not run; the table names only sources of which some were." % open_mutants]
    lines += ["", "| Source (`src/`) | Mutants | Noticed | Survive | Score |", "|---|---:|---:|---:|---:|"]
    for file in sorted(file for file in files if files[file]["all"]):
        row = files[file]
        noticed = row["killed"] + row["timeout"]
        share = "%.1f %%" % (100 * noticed / row["all"])
        lines.append("| `%s` | %d | %d | %d | %s |" % (file, row["all"], noticed, row["survived"], share))
    lines += ["", "## Survivors, one by one", ""]
    groups = {}
    for mutant in survivors:
        groups.setdefault((mutant.file, judged.get(mutant.key, "not judged")), []).append(mutant)
    current = None
    for (file, judgement), mutants in sorted(groups.items(), key=lambda g: (g[0][0], g[1][0].site.line)):
        if file != current:
            lines += ["### `%s`" % file, ""]
            current = file
        for mutant in mutants:
            text = mutant.site.text if len(mutant.site.text) <= 90 else mutant.site.text[:87] + "..."
            lines.append("- line %d, `%s`: ``%s`` → %s" % (mutant.site.line, mutant.site.function or "file", text,
                                                     mutant.site.mutants[mutant.index]))
        lines += ["", "  " + judgement, ""]
    with open(os.path.join(root, "docs", "mutation.md"), "w", encoding="utf-8") as stream:
        stream.write("\n".join(lines).rstrip("\n") + "\n")
    say("score %.1f %%: %d of %d noticed, %d survive" % (score, found, total["all"], total["survived"]))
    for problem in problems:
        print(problem, file=sys.stderr)
    return 1 if problems else 0
