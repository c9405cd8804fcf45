"""The check of uncovered lines against a list: a line without a reason and a reason without a line both fail."""
import json
import os
import subprocess
import sys
import tempfile

check = sys.argv[1]
SOURCE = "int f(int a)\n{\n    if (a || !a)\n        return 1;\n    return a | 2;\n}\n"
# Line 5 is never run; line 3 is counted twice, as a template is, and only the second object ran it.
LINES = [{"line_number": 3, "count": 0, "branches": [{"count": 0}, {"count": 0}]},
         {"line_number": 3, "count": 2, "branches": [{"count": 2}, {"count": 0}]},
         {"line_number": 4, "count": 2, "branches": []}, {"line_number": 5, "count": 0, "branches": []}]
LISTED = "src/f.cpp\n    return a | 2;\n        a is zero or not\n"
CASES = [
    (LISTED, 0, ""),
    ("# nothing is listed\n", 1, "src/f.cpp:5 is run by no test and has no reason"),
    (LISTED + "    return 1;\n        never\n", 1, "src/f.cpp is run now"),
    ("src/f.cpp\n    return a | 2;\n", 1, "no reason"),
]

for listed, code, message in CASES:
    with tempfile.TemporaryDirectory() as root:
        os.makedirs(root + "/src")
        os.makedirs(root + "/tests")
        for name, text in (("src/f.cpp", SOURCE), ("tests/list.txt", listed),
                           ("counts.json", json.dumps({"files": [{"file": "src/f.cpp", "lines": LINES}]}))):
            with open(os.path.join(root, name), "w") as stream:
                stream.write(text)
        ran = subprocess.run([sys.executable, check, root + "/counts.json", root + "/tests/list.txt"], text=True,
                             stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        assert ran.returncode == code, (listed, ran)
        assert message in ran.stderr, (listed, ran.stderr)
        assert "lines run:      2 of 3" in ran.stdout and "branches taken: 1 of 2" in ran.stdout, ran.stdout
