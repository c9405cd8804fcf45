"""Runs tests against mutants: which test function comes past which mutant, and does one of them fail."""
import concurrent.futures
import json
import os
import re
import resource
import shutil
import signal
import subprocess
import tempfile
import threading
import time

FAILURE = re.compile(rb"^(FAIL!|XPASS|QFATAL|BFAIL|BXPASS) ", re.M)
MEMORY = 4 << 30


class Runner:
    def __init__(self, tests):
        self.tests = tests

    def run(self, test, functions, mutant=0, passed=None, limit=300.0):
        """Returns (verdict, seconds, first failing line); the verdict is passed, failed, crashed or timeout.

        Ends the test at its first failure: what the rest would say changes nothing.
        """
        command, environment, _ = self.tests[test]
        home = tempfile.mkdtemp(prefix="mutant-", dir="/dev/shm" if os.path.isdir("/dev/shm") else None)
        env = dict(os.environ, **environment)
        env.update(HOME=home, XDG_RUNTIME_DIR=home, TMPDIR=home, SELMAR_MUTANT=str(mutant), RC_PARAMS="seed=1",
                   LC_ALL="C.UTF-8", QT_QPA_PLATFORM="offscreen")
        env.pop("SELMAR_MUTANTS_PASSED", None)
        if passed:
            env["SELMAR_MUTANTS_PASSED"] = passed
        started = time.monotonic()
        process = subprocess.Popen([*command, "-nocrashhandler", *functions], env=env, cwd=home, stdout=subprocess.PIPE,
                                   stderr=subprocess.STDOUT, start_new_session=True, preexec_fn=self._limits)
        timer = threading.Timer(limit, self._end, [process])
        timer.start()
        output, failure = b"", None
        try:
            for line in process.stdout:
                output += line
                if FAILURE.match(line):
                    failure = line.decode(errors="replace").strip()
                    self._end(process)
                    break
            process.stdout.close()
            code = process.wait()
        finally:
            timer.cancel()
            shutil.rmtree(home, ignore_errors=True)
        seconds = time.monotonic() - started
        if failure:
            return "failed", seconds, failure
        if seconds >= limit:
            return "timeout", seconds, ""
        if code < 0:
            return "crashed", seconds, signal.Signals(-code).name
        if code:
            return "failed", seconds, "exit code %d" % code
        if not output.startswith(b"*********") and b"Totals:" not in output:
            return "failed", seconds, "no test ran"
        return "passed", seconds, ""

    @staticmethod
    def _limits():
        resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))

    @staticmethod
    def _end(process):
        try:
            os.killpg(process.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass


def functions_of(command, environment):
    shown = subprocess.run([*command, "-functions"], env=dict(os.environ, **environment), text=True, check=True,
                           stdout=subprocess.PIPE, stderr=subprocess.DEVNULL).stdout
    return re.findall(r"^(\w+)\(\)$", shown, re.M)


def record(runner, jobs, say, once=frozenset()):
    """{test: (seconds, [functions], {id: [functions]})}: which functions come past which mutant.

    What is evaluated `once` in a process, by the first function that comes past it, is met by all that follow as well.
    Raises if a test fails unchanged, also when its functions run in the opposite order: a mutant meets only some of them.
    """

    def one(test):
        functions = functions_of(*runner.tests[test][:2])
        with tempfile.NamedTemporaryFile() as passed:
            verdict, seconds, why = runner.run(test, [], passed=passed.name)
            reached = {}
            for line in passed.read().decode().splitlines():
                function, number = line.split()
                # What runs outside of the functions runs with each of them.
                first = functions.index(function) if function in functions else 0
                last = first + 1 if function in functions and int(number) not in once else len(functions)
                reached.setdefault(int(number), set()).update(functions[first:last])
        if verdict == "passed":
            verdict, _, why = runner.run(test, functions[::-1])
        reached = {number: [f for f in functions if f in found] for number, found in reached.items()}
        return test, verdict, why, (seconds, functions, reached)

    recorded, broken = {}, []
    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        for test, verdict, why, entry in pool.map(one, sorted(runner.tests)):
            if verdict != "passed":
                broken.append("%s: %s %s" % (test, verdict, why))
            recorded[test] = entry
    if broken:
        raise RuntimeError("tests that fail without any change:\n" + "\n".join(broken))
    say("%d test functions in %d tests" % (sum(len(e[1]) for e in recorded.values()), len(recorded)))
    return recorded


class Campaign:
    """Judges mutants by the recorded tests; every verdict is kept in `results` (one JSON object a line) at once."""

    def __init__(self, runner, recorded, results, say):
        self.runner, self.results, self.say = runner, results, say
        self._reaching = {}
        for test, (seconds, functions, reached) in recorded.items():
            for number, some in reached.items():
                self._reaching.setdefault(number, {})[test] = (seconds * len(some) / len(functions), some)

    def _plan(self, mutant):
        """Tests to run, those named like the source first, then the fastest."""
        stem = os.path.splitext(os.path.basename(mutant.file))[0].lower()
        plan = []
        for test, (seconds, functions) in self._reaching.get(mutant.id, {}).items():
            plan.append((not test.startswith("tst_" + stem), seconds, test, functions))
        return sorted(plan)

    def judge(self, mutant):
        plan = self._plan(mutant)
        if not plan:
            return {"verdict": "survived", "by": "no test comes past it"}
        for _, seconds, test, functions in plan:
            limit = 30 + 10 * seconds
            verdict, _, why = self.runner.run(test, functions, mutant.id, limit=limit)
            if verdict == "passed":
                continue
            gui = not {"unit", "property"} & set(self.runner.tests[test][2])
            if verdict == "failed" and gui:
                # A test with windows may fail for the load of the machine: once more.
                again, _, _ = self.runner.run(test, functions, mutant.id, limit=limit)
                if again == "passed":
                    continue
            return {"verdict": "timeout" if verdict == "timeout" else "killed", "by": test, "how": verdict, "why": why[:200]}
        return {"verdict": "survived", "by": "%d tests" % len(plan)}

    def run(self, mutants, jobs):
        done, started, survived = 0, time.monotonic(), 0
        with open(self.results, "a") as out, concurrent.futures.ThreadPoolExecutor(jobs) as pool:
            futures = {pool.submit(self.judge, m): m for m in mutants}
            for future in concurrent.futures.as_completed(futures):
                mutant, verdict = futures[future], future.result()
                done += 1
                survived += verdict["verdict"] == "survived"
                out.write(json.dumps(dict(key=mutant.key, file=mutant.file, line=mutant.site.line, **verdict),
                                     ensure_ascii=False) + "\n")
                out.flush()
                if done % 50 == 0 or done == len(mutants):
                    self.say("%d of %d, survived %d, %.0f s" % (done, len(mutants), survived, time.monotonic() - started))


def latest(results):
    """{key: verdict} with the last verdict of every mutant."""
    found = {}
    if os.path.exists(results):
        with open(results) as stream:
            for line in stream:
                entry = json.loads(line)
                found[entry["key"]] = entry
    return found
