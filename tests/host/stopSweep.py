"""Stops a study whose second point never ends, by Ctrl-C and by a limit: the rows before it stay, and no process does.

    stopSweep.py WINE SOLVANEHOST
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
SCRIPT = ["F = getFeedProp(1, 'totalFlow');",
          "if F == 2, fclose(fopen('{mark}', 'w')); while true, end, end",
          "setProduct(1, F, 1, 'temperature', 300, 'pressure', 1e5);"]


def main():
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        table, endless, printed = folder / "table.csv", folder / "endless", folder / "printed"
        (folder / "case.json").write_text(json.dumps({
            "compounds": ["methane"], "products": ["P"],
            "feeds": [{"name": "F", "temperature": 300, "pressure": 1e5, "flow": 1, "composition": {"methane": 1}}],
            "model": {"script": [line.format(mark=endless) for line in SCRIPT]}}))
        mark = f"SOLVANE_STOP_TEST={uuid.uuid4()}"

        def start(*options):
            endless.unlink(missing_ok=True)
            words = [*HOST, "sweep", folder / "case.json", "--vary", "F.flow=1,2,3", "--csv", table, *options]
            with open(printed, "w") as output:
                return subprocess.Popen(words, stdin=subprocess.DEVNULL, stdout=output, stderr=output,
                                        env={**os.environ, "SOLVANE_STOP_TEST": mark.split("=")[1]})

        def expect(host, code, rows, message, seconds):
            began = time.monotonic()
            host.wait(60)
            took = time.monotonic() - began
            lines = table.read_text().splitlines()[1:]
            states = [line.rsplit(",", 2)[1] for line in lines]
            if host.returncode != code or took > seconds or states != rows or message not in printed.read_text():
                raise SystemExit(f"exit code {host.returncode} after {took:.1f} s, {states}: {printed.read_text()}")
            wait_until(lambda: not processes(mark), 2, lambda: f"these processes are left: {processes(mark)}")
            return lines

        for jobs in "1", "2":
            host = start("--jobs", jobs)
            wait_until(lambda: endless.exists() and table.read_text().count("\n") == 2, 60, printed.read_text)
            for process, command in processes(mark).items():  # all of the group, as a terminal does
                if "SolvaneHost" in command:
                    os.kill(process, signal.SIGINT)
            expect(host, 130, ["ok"], "Interrupted; --resume calculates the other points", 5)

        lines = expect(start("--resume", "--limit", "4", "--jobs", "1"), 1, ["ok", "failed", "ok"], "2 of 2 points", 60)
        if not lines[1].endswith("The run did not end within the limit of 4 s"):
            raise SystemExit(lines[1])
    print("studies stop, and keep their rows")


main()
