"""A build of the tree whose src/ holds all mutants at once.

Sources of src/ are compiled from rewritten copies (launcher.py); the tests are the committed ones, compiled as always.
"""
import hashlib
import json
import os
import pickle
import re
import subprocess

import rewrite
import sites

HERE = os.path.dirname(os.path.realpath(__file__))
# Every source has numbers of its own, so that a change in one does not build the others anew.
MUTANTS_OF_A_FILE, FILES = 512, 256
MOST_MUTANTS = MUTANTS_OF_A_FILE * FILES
# They go through every state of a wizard, or a thousand payments: minutes for each change that nothing else noticed.
LEFT_OUT = {"tst_longuse", "tst_wizardlifetime", "tst_hostiletexts"}


class Mutant:
    """One change; `key` names it across runs as long as its own lines stay as they are."""

    def __init__(self, number, site, index, file, key):
        self.id, self.site, self.index, self.file, self.key = number, site, index, file, key


class Testbed:
    def __init__(self, root, work):
        self.root, self.work = os.path.realpath(root), os.path.realpath(work)
        self.source, self.rewritten = os.path.join(self.root, "src"), os.path.join(self.work, "rewritten")
        self.environment = dict(os.environ, LC_ALL="C", CCACHE_BASEDIR=self.root, CCACHE_NOHASHDIR="1")
        self.dropped = []

    def configure(self):
        launcher = os.path.join(HERE, "launcher.py")
        subprocess.run(["cmake", "-S", self.root, "-B", self.work, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug",
                        "-DCMAKE_CXX_COMPILER_LAUNCHER=%s;compile;%s" % (launcher, self.work),
                        "-DCMAKE_CXX_LINKER_LAUNCHER=%s;link;%s" % (launcher, self.work),
                        "-DSELMAR_BUILD_TERMINAL=OFF"], check=True, stdout=subprocess.DEVNULL)
        with open(os.path.join(self.work, "compile_commands.json")) as stream:
            command = next(e["command"] for e in json.load(stream) if e["file"].endswith("/src/srobject.cpp"))
        command = sites.words_of(command)
        subprocess.run(["c++", *command, "-O1", "-w",
                        "-DSELMAR_MUTANT_COUNT=%d" % MOST_MUTANTS, "-c", os.path.join(HERE, "runtime", "mutation.cpp"),
                        "-fvisibility=hidden", "-o", os.path.join(self.work, "mutation.o")], check=True)

    def _ninja(self, targets):
        return subprocess.run(["ninja", "-C", self.work, "-k", "0", "-j", "2", *targets], text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, env=self.environment)

    @staticmethod
    def _write(path, content):
        """Says whether the file had to be written; one that is already so stays, with all that was built from it."""
        if os.path.exists(path):
            with open(path, "rb") as stream:
                if stream.read() == content:
                    return False
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "wb") as stream:
            stream.write(content)
        return True

    # --- the mutants

    def find(self):
        """Reads the real sources, with the arguments of the copy's build; takes what it found before if they are the same."""
        stamp = hashlib.sha256()
        for folder, _, files in sorted(os.walk(self.source)):
            for file in [os.path.join(folder, f) for f in sorted(files)] + [sites.__file__]:
                with open(file, "rb") as stream:
                    stamp.update(file.encode() + stream.read())
        kept = os.path.join(self.work, "sites.pickle")
        if os.path.exists(kept):
            with open(kept, "rb") as stream:
                known, self.sites = pickle.load(stream)
            if known == stamp.digest():
                return self._number()
        self._read()
        with open(kept, "wb") as stream:
            pickle.dump((stamp.digest(), self.sites), stream)

    def _read(self):
        forms = os.path.join(self.work, "forms")
        os.makedirs(forms, exist_ok=True)
        for folder, _, files in os.walk(self.source):
            for name in files:
                if name.endswith(".ui"):
                    subprocess.run(["uic", os.path.join(folder, name), "-o", os.path.join(forms, "ui_%s.h" % name[:-3])],
                                   check=True)
        commands = sites.compile_arguments(os.path.join(self.work, "compile_commands.json"),
                                           lambda f: f.startswith(self.source + os.sep))
        finder = sites.Finder(self.source)
        for source, arguments in sorted(commands.items()):
            finder.read(source, arguments + ["-I" + forms])
        self.sites = finder.all()
        self._number()

    def _number(self):
        self.mutants, self._ids, seen, places = [], {}, {}, {}
        for site in self.sites:
            file = os.path.relpath(site.file, self.source)
            numbers = []
            first = places.setdefault(file, len(places)) * MUTANTS_OF_A_FILE + 1
            for index, change in enumerate(site.mutants):
                name = "%s | %s | %s | %s | %s" % (file, site.function, site.kind, site.text, change)
                seen[name] = seen.get(name, 0) + 1
                key = name if seen[name] == 1 else "%s | %d" % (name, seen[name])
                count = sum(1 for m in self.mutants[-MUTANTS_OF_A_FILE:] if m.file == file)
                if count >= MUTANTS_OF_A_FILE or len(places) > FILES:
                    raise RuntimeError("more mutants than the switch has room for: " + file)
                numbers.append(first + count)
                self.mutants.append(Mutant(numbers[-1], site, index, file, key))
            self._ids[id(site)] = numbers

    def rewrite(self):
        gone = {id(site) for site in self.dropped}
        by_file = {}
        for site in self.sites:
            if id(site) not in gone:
                by_file.setdefault(site.file, []).append(site)
        self._texts, changed = {}, []
        head = b'#include "%s"\n' % os.path.join(HERE, "runtime", "mutation.h").encode()
        for folder, _, files in os.walk(self.source):
            for name in files:
                file = os.path.join(folder, name)
                if not name.endswith((".cpp", ".h")):
                    continue
                target = os.path.join(self.rewritten, os.path.relpath(file, self.source))
                with open(file, "rb") as stream:
                    text = stream.read()
                if file in by_file:
                    self._texts[target] = rewrite.Rewritten(text, by_file[file], lambda s: self._ids[id(s)], head)
                    text = self._texts[target].text
                if self._write(target, text):
                    changed.append(name)
        # Ninja knows of the rewritten files only what an earlier build read of them.
        headers = any(name.endswith(".h") for name in changed)
        for folder, _, files in os.walk(os.path.join(self.work, "src", "CMakeFiles")):
            for name in files:
                if name.endswith(".o") and (headers or name[:-2] in changed):
                    os.remove(os.path.join(folder, name))

    def build_without_refused(self, targets, say):
        """Builds; a site whose change the compiler refuses is left out and the build tried again."""
        for _ in range(25):
            self.rewrite()
            result = self._ninja(targets)
            if result.returncode == 0:
                return
            refused = []
            # The place in our text is that of the error or, in a template, of the line that asked for it.
            for match in re.finditer(r"^(\S+?):(\d+):(\d+): +(?:(?:fatal )?error|required from)\b.*$", result.stdout, re.M):
                written = self._texts.get(os.path.normpath(os.path.join(self.work, match[1])))
                site = written and written.site_at(int(match[2]), int(match[3]))
                if site is not None and site not in refused:
                    refused.append(site)
            if not refused:
                raise RuntimeError("the rewritten sources do not build:\n" + result.stdout[-6000:])
            say("left out, the compiler refuses them: %d sites" % len(refused))
            for site in refused:
                say("    %s:%d %s %s" % (os.path.relpath(site.file, self.root), site.line, site.kind, site.text[:70]))
            self.dropped += refused
        raise RuntimeError("the compiler refuses more with every build")

    def compiled_mutants(self):
        gone = {id(site) for site in self.dropped}
        return [m for m in self.mutants if id(m.site) not in gone]

    # --- the tests

    def tests(self):
        """The tests of src/: {name: (command, environment, labels)}."""
        shown = subprocess.run(["ctest", "--test-dir", self.work, "--show-only=json-v1"], check=True, text=True,
                               stdout=subprocess.PIPE).stdout
        found = {}
        for test in json.loads(shown)["tests"]:
            properties = {p["name"]: p["value"] for p in test["properties"]}
            labels = properties.get("LABELS", [])
            if "src" in labels and test["name"] not in LEFT_OUT:
                environment = dict(e.split("=", 1) for e in properties.get("ENVIRONMENT", []) if "=" in e)
                # A test that is not built yet has no command.
                command = test.get("command") or [os.path.join(self.work, "tests", test["name"])]
                found[test["name"]] = (command, environment, labels)
        return found
