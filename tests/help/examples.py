"""Runs the examples of the help book as scripts of the flash drum, and compares what they print with the book.

    examples.py BOOK_FOLDER CASE HOST_COMMAND...
"""
import html
import json
import re
import subprocess
import sys
import tempfile
from pathlib import Path

# As the unit begins the script.
HEADER = ("function {}\nglobal nComp nPhase compNames phaseNames phaseAggregationStates "
          "AGGSTATE_UNKNOWN AGGSTATE_VAPOR AGGSTATE_LIQUID AGGSTATE_SOLID\n")
MARKER = "@@ {} @@\n"


def read_examples(book):
    """[(page, script, what it prints)]; an example that prints has its output below it."""
    examples = []
    for path in sorted(book.glob("*.html")):
        for kind, text in re.findall(r'<pre class="(example|output)">\n(.*?)</pre>', path.read_text(), re.DOTALL):
            if kind == "example":
                examples.append((path.stem, html.unescape(text), ""))
            else:
                examples[-1] = (*examples[-1][:2], html.unescape(text))
    return examples


def write_case(folder, case, examples):
    model = case["model"]
    names = [f"example_{number}" for number in range(len(examples))]
    for name, (_, script, _) in zip(names, examples):
        (folder / f"{name}.m").write_text(HEADER.format(name) + script)
    # One that fails does not keep the others from being tried.
    model["script"] = [f"fprintf('{MARKER.format(number).strip()}\\n'); try, {name}; catch, disp(lasterr); end"
                       for number, name in enumerate(names)]
    model["files"] = [f"{name}.m" for name in names]
    (folder / "case.json").write_text(json.dumps(case))


def printed_by_examples(folder, generation, host):
    result = folder / "result.json"
    run = subprocess.run([*host, "run", folder / "case.json", "--generation", generation, "--json", result],
                         stdin=subprocess.DEVNULL, capture_output=True, text=True)
    if run.returncode:
        raise SystemExit(run.stdout + run.stderr)
    reports = json.loads(result.read_text())["reports"]
    if not reports["Drum"].startswith("Drum: Drum"):
        raise SystemExit(f"the report is {reports['Drum']!r}")
    parts = re.split(r"@@ \d+ @@\n", reports["Matlab Output"].replace("\r\n", "\n"))[1:]
    return [part.partition("MATLAB done")[0] for part in parts]


def main():
    book, case, *host = sys.argv[1:]
    examples = read_examples(Path(book))
    differences = []
    for generation in ("1.1", "1.0"):
        with tempfile.TemporaryDirectory() as folder:
            write_case(Path(folder), json.loads(Path(case).read_text()), examples)
            printed = printed_by_examples(Path(folder), generation, host)
        if len(printed) != len(examples):
            raise SystemExit(f"{len(printed)} of {len(examples)} examples were run")
        differences += [f"{page}, generation {generation}:\n{script}\nprints\n{actual}\nnot\n{expected}"
                        for (page, script, expected), actual in zip(examples, printed)
                        if [line.rstrip() for line in actual.strip().splitlines()]
                        != [line.rstrip() for line in expected.strip().splitlines()]]
    if differences or not examples:
        raise SystemExit("\n".join(differences) or "no examples")
    print(f"{len(examples)} examples print what the book says, on both generations")


main()
