#!/usr/bin/python3
"""Stands before the linker of a coverage build and puts the objects of src/ before all others.

Only they count what runs. A test has its own copies of the inline functions of src/, which count nothing, and the linker
takes the first copy that it sees. Meta-objects come behind: what they hold is not ours.
"""
import os
import sys

command = sys.argv[1:]
own = [word for word in command if word.startswith("src/CMakeFiles/") and word.endswith(".o")]
if own:
    own.sort(key=lambda word: "mocs_compilation" in word)
    first = next(index for index, word in enumerate(command) if word.endswith(".o"))
    command[first:] = own + [word for word in command[first:] if word not in own]
os.execvp(command[0], command)
