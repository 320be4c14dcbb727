"""Compares the rooms that the sources include and link with the table in docs/architecture.md.

    arrows.py ROOT
"""
import re
import sys
from collections import defaultdict
from pathlib import Path

ROOT = Path(sys.argv[1]).resolve()
SOURCES = {".cpp", ".h", ".rc", ".in"}


def listed_rooms():
    """Each room, in the order of the table, with the rooms that it may look at."""
    text = (ROOT / "docs/architecture.md").read_text()
    table = text[text.index("<!-- rooms -->") : text.index("<!-- end of rooms -->")]
    rows = re.findall(r"^\| `([\w/]+)` \|.*\|([^|]*)\|$", table, re.MULTILINE)
    return {room: set(re.findall(r"`([\w/]+)`", seen)) for room, seen in rows}


ROOMS = listed_rooms()


def room_of(path):
    """The deepest listed folder that holds the path."""
    folder = path.relative_to(ROOT).parent.as_posix()
    fitting = [room for room in ROOMS if folder == room or folder.startswith(room + "/")]
    return max(fitting, key=len, default=None)


def tracked(folders):
    for folder in folders:
        yield from (p for p in sorted((ROOT / folder).rglob("*")) if p.is_file())


FILES = list(tracked(sorted({room.split("/")[0] for room in ROOMS})))
BY_NAME = defaultdict(list)
for file in FILES:
    BY_NAME[file.name].append(file)


def included(source, name):
    """The file of the tree that an include names; None for a generated or foreign one."""
    beside = source.parent / name
    if beside.is_file():
        return beside.resolve()
    found = [f for f in BY_NAME[Path(name).name] if f.as_posix().endswith("/" + name)]
    if len(found) > 1:
        own = [f for f in found if room_of(f) == room_of(source)]
        found = own or found
    return found[0] if found else None


def includes():
    for source in FILES:
        if source.suffix in SOURCES:
            for name in re.findall(r'^#include "([^"]+)"', source.read_text(errors="replace"), re.MULTILINE):
                target = included(source, name)
                if target is not None:
                    yield source, target, f'includes "{name}"'


def commands(cmake):
    """The commands of a CMakeLists.txt, each as its name and its words."""
    text = re.sub(r"#.*", "", cmake.read_text())
    for name, body in re.findall(r"(\w+)\s*\(([^()]*(?:\([^()]*\)[^()]*)*)\)", text):
        yield name, body.split()


def links():
    lists = [f for f in FILES if f.name == "CMakeLists.txt"]
    home = {}
    for cmake in lists:
        for name, words in commands(cmake):
            if name in ("add_library", "add_executable") and words:
                home.setdefault(words[0], cmake)
                for word in words[1:]:
                    source = (cmake.parent / word.replace("${CMAKE_SOURCE_DIR}", str(ROOT))).resolve()
                    if word.endswith(".cpp") and room_of(source) != room_of(cmake):
                        yield cmake, source, f"compiles {word}"
    for cmake in lists:
        for name, words in commands(cmake):
            if name in ("target_link_libraries", "solvane_test"):
                for word in words[1:]:
                    if word in home:
                        yield cmake, home[word], f"links {word}"


def main():
    faults = []
    used = defaultdict(set)
    order = {room: place for place, room in enumerate(ROOMS)}
    for room, seen in ROOMS.items():
        for other in seen:
            if order.get(other, len(order)) >= order[room]:
                faults.append(f"docs/architecture.md: {other} does not stand above {room}")
    arrows = 0
    for source, target, what in [*includes(), *links()]:
        here, there = room_of(source), room_of(target)
        if here is None:
            faults.append(f"{source.relative_to(ROOT)} is in no room of docs/architecture.md")
        elif there is not None and here != there:
            arrows += 1
            used[here].add(there)
            if what.startswith("compiles") or there not in ROOMS[here]:
                faults.append(f"{source.relative_to(ROOT)} {what}: {here} does not look at {there}")
    for room, seen in ROOMS.items():
        if not (ROOT / room).is_dir():
            faults.append(f"docs/architecture.md: there is no folder {room}")
        for other in sorted(seen - used[room]):
            faults.append(f"docs/architecture.md: nothing in {room} looks at {other}")
    for fault in sorted(set(faults)):
        print(fault)
    print(f"{len(ROOMS)} rooms, {arrows} includes and links between them, {len(set(faults))} faults")
    return 1 if faults or arrows == 0 else 0


sys.exit(main())
