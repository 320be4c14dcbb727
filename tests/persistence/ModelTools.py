"""Model files seen by tools that are not ours, and models that such tools made, seen by the unit.

Usage: ModelTools.py WINE-SCRIPT HOST MODEL
"""
import json
import re
import subprocess
import sys
import tempfile
import zipfile
from pathlib import Path
from xml.etree import ElementTree

wine, host, model = sys.argv[1:]


def show(path):
    """The exit code of `SolvaneHost show --json` and its output, JSON or an error's text."""
    done = subprocess.run([wine, host, "show", str(path), "--json"], capture_output=True, text=True)
    return done.returncode, json.loads(done.stdout) if done.returncode == 0 else done.stderr


def written_by_the_unit():
    subprocess.run(["unzip", "-tq", model], check=True)
    document = subprocess.run(["unzip", "-p", model, "unit.xml"], check=True, capture_output=True).stdout
    subprocess.run(["xmllint", "--noout", "-"], check=True, input=document)
    assert document.isascii() and b"\r" not in document
    with zipfile.ZipFile(model) as container:
        assert container.testzip() is None
        assert container.comment == b"Solvane Unit Operation File"
        entries = container.infolist()
        root = ElementTree.fromstring(container.read("unit.xml"))
    files = [element.get("name") for element in root.iter("file")]
    assert [entry.filename for entry in entries] == ["unit.xml", "calc.m"] + files
    assert all(entry.compress_type == zipfile.ZIP_DEFLATED and not entry.extra for entry in entries)


def made_by(folder, make):
    """Shows a model of our own making, packed by `make(path, {name: bytes})`."""
    root = ElementTree.Element("UnitOperation")
    ElementTree.SubElement(root, "product", name="P & <1>")
    ElementTree.SubElement(root, "feed", name="Feed")
    parameter = ElementTree.SubElement(root, "parameter", name="method", mode="input", type="string", value="b")
    ElementTree.SubElement(parameter, "option", value="b")
    ElementTree.SubElement(root, "parameter", name="duty", mode="output", type="real", value="2.5", max="3")
    ElementTree.SubElement(root, "report", name="R").text = "line 1\nline 2"
    ElementTree.SubElement(root, "file", name="data.bin")
    files = {"data.bin": bytes(range(256)) * 50, "calc.m": b"x = 1;\n", "not listed.txt": b"stays where it is",
             "unit.xml": ElementTree.tostring(root, encoding="utf-8", xml_declaration=True)}
    path = Path(folder) / "model.svm"
    path.unlink(missing_ok=True)
    make(path, files)
    return show(path)


def by_python(method):
    def make(path, files):
        with zipfile.ZipFile(path, "w", method) as container:
            for name, data in files.items():
                container.writestr(name, data)
    return make


def by_zip(*options):
    def make(path, files):
        for name, data in files.items():
            (path.parent / name).write_bytes(data)
        subprocess.run(["zip", "-q", *options, path, *files], cwd=path.parent, check=True)
    return make


written_by_the_unit()
with tempfile.TemporaryDirectory() as folder:
    for maker in by_python(zipfile.ZIP_DEFLATED), by_python(zipfile.ZIP_STORED), by_zip("-9"), by_zip("-0"):
        code, told = made_by(folder, maker)
        assert code == 0, told
        assert told["feeds"] == ["Feed"] and told["products"] == ["P & <1>"], told
        method, duty = told["parameters"]
        assert (method["value"], method["options"]) == ("b", ["b"]), method
        assert (duty["value"], duty["maximum"]) == (2.5, 3) and "minimum" not in duty, duty
        assert told["files"] == [{"name": "data.bin", "size": 12800}], told
        assert told["script"] == "x = 1;\n", told
    # What our reader does not know is refused with a text that names the file.
    for maker in by_python(zipfile.ZIP_LZMA), by_python(zipfile.ZIP_BZIP2), by_zip("-P", "secret"):
        code, told = made_by(folder, maker)
        assert code == 2 and re.search(r"model\.svm.*calc\.m", told), told
print("model files: unzip, xmllint, zip and Python agree with the unit")
