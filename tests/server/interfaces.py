"""Compares the interfaces' definition with the published one, to which hosts bind by places and ids.

    interfaces.py CapeOpen.idl capeopen_interfaces.txt
"""
import re
import sys
from pathlib import Path

KINDS = {"": "method", "propget": "get", "propput": "put"}
OPERATION = r"\[id\((\w+)\)(?:, (\w+))?\]\s*HRESULT (\w+)\((.*?)\);"
FIRST_PLACE = 7  # behind those of IDispatch


def arguments(text):
    for attributes, kind in re.findall(r"\[([\w, ]+)\]\s*(\w+\**)", text):
        direction = "out" if "retval" in attributes else "inout" if "out" in attributes else "in"
        yield f"{direction} {kind}"


def defined(idl):
    """The lines of each type by its first line, in the words of the table."""
    idl = re.sub(r"//[^\n]*", "", idl)
    types = {}
    for name, values in re.findall(r"typedef enum (\w+) \{(.*?)\}", idl, re.DOTALL):
        numbers = [(value, int(number, 0)) for value, number in re.findall(r"(\w+) = (\w+)", values)]
        types[f"enum {name}"] = [f"{value} {n - 2**32 if n >= 2**31 else n}" for value, n in numbers]
    for uuid, name, alias in re.findall(r"typedef \[uuid\(([\w-]+)\), public\] (\w+) (\w+);", idl):
        types[f"alias {alias} {uuid} {name}"] = []
    interface = r"object, dual, uuid\(([\w-]+)\)[^\]]*\]\s*interface (\w+) : (\w+)\s*\{(.*?)\n    \}"
    for uuid, name, base, body in re.findall(interface, idl, re.DOTALL):
        lines = [f"derives from {base}"] if base != "IDispatch" else []
        for place, (number, kind, operation, text) in enumerate(re.findall(OPERATION, body, re.DOTALL), FIRST_PLACE):
            lines.append(f"{place} {int(number, 0)} {KINDS[kind]} {operation}({', '.join(arguments(text))})")
        types[f"{name} {uuid}"] = lines
    return types


def published(table):
    """The same from the table, where a blank line ends a type and # begins a comment."""
    blocks = re.split(r"\n{2,}", re.sub(r"^#.*\n", "", table, flags=re.MULTILINE).strip())
    return {lines[0]: lines[1:] for lines in (block.splitlines() for block in blocks)}


found, wanted = (read(Path(path).read_text()) for read, path in zip((defined, published), sys.argv[1:]))
faults = [f"{name}: {found.get(name)}, published {wanted.get(name)}"
          for name in sorted(found.keys() | wanted.keys()) if found.get(name) != wanted.get(name)]
if faults or not wanted:
    raise SystemExit("\n".join(faults) or "the table is empty")
print(f"{len(wanted)} types are defined as published")
