"""Stops runs that never end, by Ctrl-C or a limit, and looks at what is left: an exit code, the results that are known, and
no process or folder.

    stopRuns.py WINE SOLVANEHOST
"""
import json
import os
import signal
import subprocess
import sys
import tempfile
import time
import uuid
from pathlib import Path

from started import processes, wait_until

HOST = sys.argv[1:3]
INTERRUPTED, FAILED = 130, 1
PASS = ["T = getFeedProp(1, 'temperature'); P = getFeedProp(1, 'pressure');",
        "setProduct(1, getFeedProp(1, 'totalFlow'), getFeedProp(1, 'fraction'), 'temperature', T, 'pressure', P);"]
# A letter beyond ASCII makes the engine keep a copy of the script in a folder of its own.
NOTE = ["% größe", "logMessage('endless');", "f = fopen('{notes}', 'w');",
        "fprintf(f, '%s\\n', num2str(getpid()), pwd(), getenv('SOLVANE_ENGINE_FOLDER'), 'done'); fclose(f);"]

class Run:
    """A run whose script has got to its endless line."""

    def __init__(self, folder, endless, *options, command="run"):
        self.mark = f"SOLVANE_STOP_TEST={uuid.uuid4()}"
        self.notes, self.json, self.printed = folder / "notes", folder / "results.json", folder / "printed"
        self.notes.unlink(missing_ok=True)

        note = [line.format(notes=self.notes) for line in NOTE]
        case = folder / "case.json"
        case.write_text(json.dumps({
            "compounds": ["methane"],
            "streams": [{"name": "Feed", "temperature": 300, "pressure": 1e5, "flow": 1, "composition": {"methane": 1}}],
            "units": [{"name": "Pass", "model": {"script": PASS}, "feeds": {"F": "Feed"}, "products": {"P": "Middle"}},
                      {"name": "Endless", "model": {"script": [*note, endless]}, "feeds": {"F": "Middle"},
                       "products": {"P": "Product"}}]}), encoding="utf-8")
        name, value = self.mark.split("=")
        with open(self.printed, "w") as output:
            self.host = subprocess.Popen([*HOST, command, case, "--json", self.json, *options], stdin=subprocess.DEVNULL,
                                         stdout=output, stderr=output, env={**os.environ, name: value})
        wait_until(lambda: self.noted()[-1:] == ["done"] or self.host.poll() is not None, 60, self.text)
        self.octave, *self.folders = self.noted()[:-1] or ["0"]
        if len(self.folders) != 2 or not all(map(Path.exists, self.linux_folders())):
            raise SystemExit(f"the script did not start: {self.text()} {self.noted()}")
        self.started = time.monotonic()

    def noted(self):
        return self.notes.read_text().splitlines() if self.notes.exists() else []

    def text(self):
        return self.printed.read_text()

    def linux_folders(self):
        return [Path(folder) for folder in self.folders]

    def processes(self):
        return processes(self.mark)

    def left(self):
        return f"these processes are left: {self.processes()}"

    def interrupt(self):
        for process, command in self.processes().items():
            if "SolvaneHost" in command:
                os.kill(process, signal.SIGINT)
        self.started = time.monotonic()

    def expect_end(self, code, within, message):
        self.host.wait(60)
        took = time.monotonic() - self.started
        if self.host.returncode != code or not within[0] <= took <= within[1]:
            raise SystemExit(f"exit code {self.host.returncode} after {took:.1f} s: {self.text()}")
        if message not in self.text():
            raise SystemExit(f"{message!r} is not in {self.text()}")

    def expect_results(self, message, *lines):
        """The error is at one of these lines, or at none for None."""
        results = json.loads(self.json.read_text())
        known = ([stream["name"] for stream in results["streams"]], [unit["status"] for unit in results["units"]])
        found = results["error"].pop("script", {}).get("line")
        if results["ok"] or found not in lines or results["error"] != {"unit": "Endless", "message": message} or \
                known != (["Feed", "Middle"], ["calculated", "failed"]):
            raise SystemExit(f"the results are {results}")

    def expect_nothing_left(self):
        wait_until(lambda: not self.processes(), 1, self.left)
        left = [folder for folder in self.linux_folders() if folder.exists()]
        if left:
            raise SystemExit(f"these folders are left: {left}")

def main():
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        # A call of the unit fails with its line, unless the script catches that.
        run = Run(folder, "disp('kept'); while true, flashEquilibrium(1, 'temperature', 300, 'pressure', 1e5); end")
        run.interrupt()
        run.expect_end(INTERRUPTED, (0, 1), 'case.json: Interrupted: unit "Endless"; last log line: endless')
        run.expect_results("Interrupted", 5)
        if "kept\n\nscript:5:27: Interrupted\n" not in run.text():
            raise SystemExit(run.text())
        run.expect_nothing_left()

        # So does a loop without such a call. Octave itself ends where the script catches the error, or waits for a program.
        for endless, *lines in [("while true, end", 5),
                                ("pause(1000)", 5),
                                ("while true, try, getUnitName(); catch, end, end", None, 5),
                                ("system('sleep 1000')", None)]:
            run = Run(folder, endless)
            run.interrupt()
            run.expect_end(INTERRUPTED, (0, 2), 'case.json: Interrupted: unit "Endless"; last log line: endless')
            run.expect_results("Interrupted", *lines)
            run.expect_nothing_left()

        run = Run(folder, "while true, end", command="check")
        run.interrupt()
        run.expect_end(INTERRUPTED, (0, 2), f"script:5:7: Interrupted\nerror: {folder / 'case.json'}: Interrupted: the case: "
                                            'unit "Endless"; last log line: endless')
        run.expect_nothing_left()

        run = Run(folder, "while true, end", "--adjust", "Feed.flow=1:2", "--target", "Product.flow=1.5")
        run.interrupt()
        run.expect_end(INTERRUPTED, (0, 2), "case.json: At Feed.flow = 1 mol/s: Interrupted: unit \"Endless\"")
        run.expect_results("Interrupted", 5)
        run.expect_nothing_left()

        run = Run(folder, "system('sleep 1000')", "--limit", "10")
        run.expect_end(FAILED, (0, 12), 'limit of 10 s: unit "Endless"; last log line: endless; to find the line, ')
        run.expect_results("The run did not end within the limit of 10 s", None)
        run.expect_nothing_left()

        # An engine that does not end the script, as Matlab: the host waits for it, but not after a second Ctrl-C.
        for interrupts, within in [(1, (2, 4)), (2, (0, 1.5))]:
            run = Run(folder, "kill(getpid(), 19)")
            wait_until(lambda: "T" == Path(f"/proc/{run.octave}/stat").read_text().split()[2], 10, run.text)
            for _ in range(interrupts):
                run.interrupt()
                time.sleep(0.2)
            run.expect_end(INTERRUPTED, within, "Interrupted" if interrupts == 1 else "")
            os.kill(int(run.octave), signal.SIGKILL)
            wait_until(lambda: not run.processes(), 5, run.left)
    print("runs stop, and leave nothing")

main()
