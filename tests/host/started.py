"""What a test waits for, and the processes that it has started."""
import time
from pathlib import Path


def wait_until(condition, seconds, what):
    end = time.monotonic() + seconds
    while not condition():
        if time.monotonic() > end:
            raise SystemExit(f"after {seconds} s: {what()}")
        time.sleep(0.02)


def processes(mark):
    """The ids and command lines of all processes with this line in their environment, which each inherits: hosts,
    engines, Octaves, their programs. Without Wine's own services, which the first program starts for all."""
    found = {}
    for process in Path("/proc").glob("[0-9]*"):
        try:
            command = (process / "cmdline").read_bytes().decode(errors="replace")
            marks = (process / "environ").read_bytes().split(b"\0")
        except OSError:
            continue  # it has ended
        if mark.encode() in marks and not command.lower().startswith("c:\\windows\\"):
            found[int(process.name)] = command
    return found
