"""Makes allocations and system calls fail, and kills the command: faults.py [--full] BUILD_FOLDER

Whatever happens, a document is the old one or the new one, whole; the command says a sentence and exits 1, or gives the
bytes that it always gives. Prints what was tried and how often; exits 1 when something else came of it.
"""

import argparse
import collections
import concurrent.futures
import errno
import os
import pathlib
import random
import re
import signal
import subprocess
import sys
import tempfile
import time

# Rows of 16 bytes, as many as the library reads at once: a read that fails must not pass for the end.
TABLES = {
    "old": "Month,North\nJan,1\nFeb,2\n",
    "new": "Mon,North,South\nJan,1.500,-2.00\nFeb,3.000,4.000\nMarch,5.256789,\n",
}
SENTENCE = re.compile(r"quillon-report: .*\.")
ALL_OPTIONS = [
    ["--title", "Revenue", "--gaps", "--colors", "red,#00ff00"],
    ["--type", "line", "--gaps", "--heading", "Sales", "old.csv", "--no-workbook"],
    ["--type", "pie", "--columns", "North", "--legend", "right"],
]
# What a system call may answer, and how the command deals with it: it may refuse, or have a way round.
FAILURES = {
    "read": [errno.EIO, errno.EINTR],
    "open": [errno.EACCES, errno.EMFILE],
    "openat": [errno.EACCES, errno.EMFILE, errno.ENOSPC, errno.EOPNOTSUPP],
    "write": [errno.ENOSPC, errno.EIO, errno.EDQUOT, errno.EINTR],
    "fsync": [errno.EIO, errno.ENOSPC, errno.EINTR, errno.EINVAL],
    "linkat": [errno.ENOENT, errno.ENOSPC, errno.EEXIST],
    "renameat": [errno.EIO, errno.EACCES, errno.EBUSY],
    "close": [errno.EIO],
    "fchown": [errno.EPERM],
    "fchmod": [errno.EPERM],
    "access": [errno.ENOENT],
    "fstatat": [errno.EACCES],
    "faccessat": [errno.EROFS],
}
# Where a failure of the disk must be told.
LOSSES = ("read", "write", "fsync", "renameat")
# What is tried again.
PASSING = [("write", errno.EINTR), ("fsync", errno.EINTR), ("linkat", errno.EEXIST)]
# No room for a file without a name: it has one from the start.
NAMED = f"access:1:{errno.ENOENT}"


class Command:
    """quillon-report in a folder of its own, where out.docx is a document already."""

    def __init__(self, build, options):
        self.program = str(build / "bin/quillon-report")
        self.library = str(build / "lib/libquillon_faults.so")
        self.options = {"old": [], "new": options}
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="quillon-faults-"))
        for name, table in TABLES.items():
            (self.folder / f"{name}.csv").write_text(table)
        self.documents = {name: self.make(name) for name in TABLES}

    def make(self, name):
        subprocess.run(self.words(name), cwd=self.folder, check=True)
        return self.out.read_bytes()

    @property
    def out(self):
        return self.folder / "out.docx"

    def words(self, name):
        return [self.program, f"{name}.csv", *self.options[name], "-o", "out.docx"]

    def start(self, **variables):
        """Starts to replace the old document with the new one."""
        self.out.write_bytes(self.documents["old"])
        self.out.chmod(0o640)
        environment = dict(os.environ, LD_PRELOAD=self.library, **variables)
        return subprocess.Popen(self.words("new"), cwd=self.folder, env=environment, stdin=subprocess.DEVNULL,
                                stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True, errors="replace")

    def take_leftovers(self):
        found = [path for path in self.folder.iterdir() if path.name.startswith(".quillon-")]
        for path in found:
            path.unlink()
        return found

    def read_document(self):
        """Which document there is; None for neither."""
        content = self.out.read_bytes()
        return next((name for name, document in self.documents.items() if content == document), None)

    def count(self):
        """How often the command allocates and calls."""
        process = self.start(QUILLON_COUNTS="counts")
        process.communicate()
        lines = (self.folder / "counts").read_text().splitlines()
        return {name: int(number) for name, number in map(str.split, lines)}

    def run(self, **variables):
        """What comes of it, and whether that is as promised."""
        process = self.start(**variables)
        try:
            sentence = process.communicate(timeout=60)[1]
        except subprocess.TimeoutExpired:
            process.kill()
            process.communicate()
            return "hangs", False
        return self.judge(process.returncode, sentence)

    def judge(self, status, sentence):
        document = self.read_document()
        leftovers = self.take_leftovers()
        says = sentence.splitlines()[-1:] and SENTENCE.fullmatch(sentence.splitlines()[-1])
        outcome = f"exit {status}, {document or 'a broken'} document" + (", a file left" if leftovers else "")
        if status == 0:
            return outcome, document == "new" and not leftovers
        return outcome, status == 1 and bool(says) and document is not None and not leftovers


class Report:
    def __init__(self):
        self.is_well = True

    def require(self, is_well, problem):
        if not is_well:
            print(f"  WRONG: {problem}")
            self.is_well = False

    def show(self, title, outcomes, seconds):
        """Outcomes: pairs of what was tried, and what came of it."""
        print(f"{title}: {len(outcomes)} runs, {seconds:.0f} s")
        counts = collections.Counter(text for _, (text, _) in outcomes)
        for text, count in counts.most_common():
            wrong = [str(tried) for tried, (other, is_well) in outcomes if other == text and not is_well]
            self.is_well = self.is_well and not wrong
            print(f"  {count:6} {text}" + (f"   WRONG at {', '.join(wrong[:12])}" if wrong else ""))
        sys.stdout.flush()


class Workers:
    """Runs tasks side by side, each with a command of its own."""

    def __init__(self, build, options):
        self.commands = [Command(build, options) for _ in range(os.cpu_count() or 1)]

    def run(self, tasks, work):
        """Pairs of a task and what work(command, task) gave, in the order of the tasks."""
        free = list(self.commands)

        def run_one(task):
            command = free.pop()
            try:
                return task, work(command, task)
            finally:
                free.append(command)

        with concurrent.futures.ThreadPoolExecutor(len(self.commands)) as pool:
            return list(pool.map(run_one, tasks))

    def remove(self):
        for command in self.commands:
            subprocess.run(["rm", "-rf", str(command.folder)], check=True)


def sweep_allocations(workers, report, step):
    counts = workers.commands[0].count()
    for title, variable, total in (
        ("one allocation", "QUILLON_FAIL_AT", counts["malloc"]),
        ("all from one allocation on", "QUILLON_FAIL_FROM", counts["malloc"]),
        ("one allocation before main", "QUILLON_FAIL_START", counts["start"]),
    ):
        start = time.time()
        # What the libraries of others do before main is of less interest.
        tasks = range(1, total + 1, 4 * step if variable == "QUILLON_FAIL_START" else step)
        outcomes = workers.run(tasks, lambda command, task, name=variable: command.run(**{name: str(task)}))
        report.show(f"command, {title} of {total} fails", outcomes, time.time() - start)


def list_failures(counts):
    """Each call of each function, and one behind the last, fails in each way."""
    return [
        f"{name}:{number}:{error}"
        for name, errors in FAILURES.items()
        for error in errors
        for number in range(1, counts[name] + 2)
    ]


def sweep_calls(workers, report, pair_count):
    """System calls fail, with and without a name for the new file, and in random pairs."""
    start = time.time()
    counts = workers.commands[0].count()
    single = list_failures(counts)
    named = [f"{NAMED},{failure}" for failure in single if not failure.startswith("access")]
    pairs = [",".join(random.sample(single, 2)) for _ in range(pair_count)]
    outcomes = workers.run(single + named + pairs, lambda command, task: command.run(QUILLON_FAIL_CALL=task))
    report.show("command, system calls fail", outcomes, time.time() - start)
    report.require(counts["fsync"] == 2, "file and folder are not both made safe")
    for failure, (outcome, _) in outcomes[: len(single)]:
        name, number, error = failure.split(":")
        is_loss = name in LOSSES and int(number) <= counts[name] and int(error) in (errno.EIO, errno.ENOSPC)
        report.require(not is_loss or outcome.startswith("exit 1"), f"{failure} passes in silence")
        report.require((name, int(error)) not in PASSING or outcome.startswith("exit 0"), f"{failure} is not a failure")


def kill(command, task):
    """Kills the command at a random moment. A file may be left only by what no program can put off."""
    number, duration = task
    kind = (signal.SIGKILL, signal.SIGTERM, signal.SIGINT, signal.SIGHUP)[number % 4]
    variables = {"QUILLON_SLOW_CALLS": "3"} if number // 4 % 4 else {}
    if number // 16 % 2:
        variables["QUILLON_FAIL_CALL"] = NAMED
    process = command.start(**variables)
    time.sleep(random.uniform(0, duration))
    process.send_signal(kind)
    process.communicate()
    document = command.read_document()
    leftovers = command.take_leftovers()
    how = "killed" if process.returncode < 0 else "done before"
    text = f"{kind.name}, {how}, {document or 'a broken'} document" + (", a file left" if leftovers else "")
    may_leave = kind == signal.SIGKILL and document == "old"
    return text, document is not None and (not leftovers or may_leave)


def sweep_kills(workers, report, count):
    start = time.time()
    workers.commands[0].run(QUILLON_SLOW_CALLS="3")
    duration = 1.5 * (time.time() - start)
    start = time.time()
    tasks = [(number, duration) for number in range(count)]
    outcomes = workers.run(tasks, kill)
    report.show("kills while a document is replaced", outcomes, time.time() - start)


def sweep_interfaces(build, report):
    result = subprocess.run([str(build / "bin/api_faults")], check=False, capture_output=True, text=True)
    print("C++ interface and face for hosts, each allocation fails:")
    print("  " + result.stdout.replace("\n", "\n  ").rstrip())
    report.require(result.returncode == 0, f"exit {result.returncode} {result.stderr}")


def sweep_commands(build, report, is_full):
    for options in ALL_OPTIONS if is_full else ALL_OPTIONS[:1]:
        print("quillon-report new.csv", *options)
        workers = Workers(build, options)
        try:
            sweep_calls(workers, report, 1000 if is_full else 100)
            sweep_kills(workers, report, 2000 if is_full else 500)
            sweep_allocations(workers, report, 1 if is_full else 3)
        finally:
            workers.remove()


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--full", action="store_true", help="every allocation, more kills, more kinds of charts")
    parser.add_argument("build", type=pathlib.Path)
    arguments = parser.parse_args()
    report = Report()
    sweep_interfaces(arguments.build.resolve(), report)
    sweep_commands(arguments.build.resolve(), report, arguments.full)
    print("All as promised." if report.is_well else "NOT as promised.")
    return 0 if report.is_well else 1


if __name__ == "__main__":
    sys.exit(main())
