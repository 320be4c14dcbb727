"""Runs the examples of the help book on the flash drum, and compares what they print with the book. An example that sets
products is a whole model, and runs as the drum's own script; the others run together in one script.

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
EMPTY_PRODUCTS = ["for i = 1:2, setProduct(i, 0, getFeedProp(1, 'fraction'), 'temperature', 300, 'pressure', 1e5); end"]


def read_examples(book):
    """[(page, script, output)]; an example that prints is followed by its output."""
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
    # An example that fails does not stop the others.
    model["script"] = [f"fprintf('{MARKER.format(number).strip()}\\n'); try, {name}; catch, disp(lasterr); end"
                       for number, name in enumerate(names)] + EMPTY_PRODUCTS
    model["files"] = [f"{name}.m" for name in names]
    (folder / "case.json").write_text(json.dumps(case))


def run_case(folder, generation, host):
    """The reports of the case in the folder, or the error."""
    result = folder / "result.json"
    run = subprocess.run([*host, "run", folder / "case.json", "--generation", generation, "--json", result],
                         stdin=subprocess.DEVNULL, capture_output=True, text=True)
    return (None, run.stdout + run.stderr) if run.returncode else (json.loads(result.read_text())["reports"], "")


def printed_together(case, examples, generation, host):
    with tempfile.TemporaryDirectory() as name:
        write_case(Path(name), case, examples)
        reports, error = run_case(Path(name), generation, host)
    if error:
        raise SystemExit(error)
    if not reports["Drum"].startswith("Drum: Drum"):
        raise SystemExit(f"the report is {reports['Drum']!r}")
    parts = re.split(r"@@ \d+ @@\n", reports["Matlab Output"].replace("\r\n", "\n"))[1:]
    if len(parts) != len(examples):
        raise SystemExit(f"{len(parts)} of {len(examples)} examples were run")
    return [part.partition("MATLAB done")[0] for part in parts]


def printed_as_model(case, script, generation, host):
    with tempfile.TemporaryDirectory() as name:
        case["model"]["script"] = script.splitlines()
        (Path(name) / "case.json").write_text(json.dumps(case))
        reports, error = run_case(Path(name), generation, host)
    return error or re.sub(r"^.*?MATLAB output:|MATLAB done.*", "", reports["Matlab Output"].replace("\r\n", "\n"),
                           flags=re.DOTALL)


def main():
    book, case, *host = sys.argv[1:]
    examples = read_examples(Path(book))
    is_model = [re.search(r"^\s*setProduct\(", script, re.MULTILINE) for _, script, _ in examples]
    parts = [example for example, whole in zip(examples, is_model) if not whole]
    differences = []
    for generation in ("1.1", "1.0"):
        drum = lambda: json.loads(Path(case).read_text())
        together = iter(printed_together(drum(), parts, generation, host))
        for (page, script, expected), whole in zip(examples, is_model):
            actual = printed_as_model(drum(), script, generation, host) if whole else next(together)
            if [line.rstrip() for line in actual.strip().splitlines()] != \
                    [line.rstrip() for line in expected.strip().splitlines()]:
                differences.append(f"{page}, generation {generation}:\n{script}\nprints\n{actual}\nnot\n{expected}")
    if differences or not examples:
        raise SystemExit("\n".join(differences) or "no examples")
    print(f"{len(examples)} examples print what the book says, on both generations")


main()
