#!/usr/bin/python3
"""Stands before the compiler and the linker in a mutation build.

    launcher.py compile WORK COMMAND...    compiles the rewritten copy of a source of src/, everything else as it is
    launcher.py link WORK COMMAND...       links the objects of src/ before all others, with the mutants' switch

Tests are compiled against the headers as they are, so that their objects come from the compiler cache. They hold their own
copies of the inline functions of src/; the linker takes the first it sees, which has to be the rewritten one.
"""
import os
import shutil
import sys

mode, work, *command = sys.argv[1:]
root = os.path.realpath(os.path.join(os.path.dirname(os.path.realpath(__file__)), "..", ".."))
source = os.path.join(root, "src") + os.sep
rewritten = os.path.join(work, "rewritten") + os.sep

if mode == "compile":
    changed = False
    for index, word in enumerate(command):
        if word.startswith(source) and word.endswith(".cpp") and os.path.exists(rewritten + word[len(source):]):
            command[index] = rewritten + word[len(source):]
            changed = True
    if changed:
        folders = [rewritten.rstrip(os.sep), source.rstrip(os.sep)]
        command[1:1] = ["-I" + folder for folder in folders]
        # The linker must find no other copy of the rewritten inline functions in these objects, and nobody debugs them.
        command += ["-w", "-fdiagnostics-column-unit=byte", "-fmax-errors=0", "-g0", "-O0"]
    if shutil.which("ccache"):
        command.insert(0, "ccache")
else:
    # Meta-objects include headers by a path of their own, unchanged; they come behind the rewritten copies.
    own = [w for w in command if w.startswith("src/CMakeFiles/") and w.endswith(".o")]
    own.sort(key=lambda w: "mocs_compilation" in w)
    if own:
        first = next(i for i, w in enumerate(command) if w.endswith(".o"))
        rest = [w for w in command[first:] if w not in own]
        command = command[:first] + [os.path.join(work, "mutation.o"), *own] + rest
os.execvp(command[0], command)
