"""Makes the help book: HTML pages, and the project from which chmcmd makes SolvaneUnitOperation.chm.

    makeBook.py HELP_FOLDER TOOLBOX_FOLDER THERMO_FOLDER MODELS_FOLDER OUTPUT_FOLDER

pages/ holds the topics, contents.txt their order, pictures/ what scripts/pictures makes. The page of a script function consists of its help text in the toolbox
and its notes in functions/, that of a model of its notes in models/ and the parameters of its case, which the comment of
its script explains; the tables of properties come from the tables of the unit itself. A page's title is its <h1>. The
sources are ASCII, since viewers of compiled help read other encodings differently.
"""
import html
import json
import re
import shutil
import sys
from pathlib import Path

PAGE = """<!DOCTYPE HTML PUBLIC "-//W3C//DTD HTML 4.01//EN" "http://www.w3.org/TR/html4/strict.dtd">
<html lang="en">
<head>
<meta http-equiv="Content-Type" content="text/html; charset=us-ascii">
<title>{title}</title>
<link rel="stylesheet" type="text/css" href="style.css">
</head>
<body>
<div class="page">
<p class="path">{path}</p>
{body}
<p class="turn">{turn}</p>
</div>
</body>
</html>
"""

OBJECT = '<li><object type="text/sitemap"><param name="Name" value="{}"><param name="Local" value="{}"></object>\n'

# Without a binary index, in which chmcmd leaves bytes that differ from one run to the next: readers take the index
# file itself.
PROJECT = """[OPTIONS]
Binary Index=No
Compatibility=1.1 or later
Compiled file=SolvaneUnitOperation.chm
Contents file=book.hhc
Index file=book.hhk
Default topic=index.html
Default Window=main
Full-text search=Yes
Language=0x409 English (United States)
Title=Solvane Unit Operation

[WINDOWS]
main="Solvane Unit Operation","book.hhc","book.hhk","index.html","index.html",,,,,0x63520,240,0x304e,[80,60,1040,760],,,,,,,0

[FILES]
{}
"""


def link(name, title):
    return f'<a href="{name}.html">{title}</a>'


def read(path):
    return path.read_text(encoding="ascii")


def array_rows(source):
    """The rows of each array in C++, as lists of their texts and words, by the array's name."""
    arrays = {}
    for array, body in re.findall(r"(\w+) = std::to_array<\w+>\(\{\n(.*?)\n\}\);", source, re.DOTALL):
        arrays[array] = []
        for line in body.splitlines():
            if row := re.fullmatch(r"    \{(.*)\},", line):
                arrays[array].append([text or word for text, word in re.findall(r'L?"([^"]*)"|(\w+)', row[1])])
            elif not line.startswith("    //"):
                raise SystemExit(f"{array}: not a row on one line: {line}")
    return arrays


def property_tables(channel):
    """[(name, unit)] by the table's name."""
    # The row "name" is the heading of the table of one phase.
    return {array.removesuffix("Rows"): [(row[0].strip(), row[1]) for row in rows if row[0] != "name"]
            for array, rows in array_rows(read(channel / "PropertyTables.cpp")).items()}


def stream_table(channel, thermo, tables):
    """[(name, unit, use)] of the properties of streams."""
    units = dict(tables["singlePhase"])
    units |= {row[0]: row[1] for row in array_rows(read(thermo / "PropertyUnit.cpp"))["streamUnits"]}
    codes = re.search(r"enum class FlashProperty \{(.*?)\}", read(channel / "FlashProperties.h"), re.DOTALL)[1]
    conditions = re.findall(r"(\w+) = ", codes.partition("volume")[0]) + ["volume"]
    uses = {name: ["condition of a flash"] * (code in conditions) + ["of a feed"] * (code != "vaporFraction")
            for name, code in array_rows(read(channel / "FlashProperties.cpp"))["namedProperties"]}
    return [(name, units.get(name, ""), ", ".join(use)) for name, use in uses.items()]


def table_html(headings, rows):
    lines = "".join(f"<tr><td><code>{name}</code></td>" + "".join(f"<td>{cell or '&nbsp;'}</td>" for cell in cells) +
                    "</tr>\n" for name, *cells in rows)
    return f"<table>\n<tr><th>{'</th><th>'.join(headings)}</th></tr>\n{lines}</table>"


class Function:
    """A function of the toolbox: summary, usage and see-also list of its help text."""

    def __init__(self, path):
        self.name = path.stem
        lines = re.match(r"function .*\n((?:%.*\n)+)", read(path)).group(1).splitlines()
        self.summary = lines[0].split(" ", 1)[1]
        text = "\n".join(line[3:] for line in lines[1:])
        text, _, see_also = text.partition("See also ")
        # The book has a longer example, which is tested.
        self.usage = re.sub(r"Example: .*\n", "", text).strip()
        self.see_also = re.findall(r"\w+", see_also.lower())

    def page(self, notes, names):
        others = ", ".join(link(names[name], names[name]) for name in self.see_also)
        return (f"<h1>{self.name}</h1>\n<p>{html.escape(self.summary)}</p>\n"
                f"<h2>Usage</h2>\n<pre>{html.escape(self.usage)}</pre>\n{notes}"
                f"<h2>See also</h2>\n<p>{others}, {link('functions', 'all functions')}</p>")


def function_list(contents, functions):
    """The overview of the toolbox, Contents.m, with its headings and its order."""
    parts = []
    for line in read(contents).splitlines():
        if heading := re.fullmatch(r"% ([A-Z][\w ]*)", line):
            parts.append(f"<h2>{heading[1]}</h2>\n<table>")
        elif entry := re.fullmatch(r"%   (\w+) +- .*", line):
            function = functions[entry[1]]
            parts.append(f"<tr><td>{link(function.name, function.name)}</td><td>{function.summary}</td></tr>")
        elif line == "%" and parts and not parts[-1].endswith("</table>"):
            parts.append("</table>")
    return "\n".join(parts) + "\n</table>"


def explanations(script):
    """What the comment of a model's script says of each parameter, by name."""
    meanings, name = {}, ""
    for line in script.splitlines():
        if entry := re.fullmatch(r"%   (\S.*?)  +(\S.*)", line):
            name = entry[1]
            meanings[name] = entry[2]
        elif name and (more := re.fullmatch(r"%    +(\S.*)", line)):
            meanings[name] += " " + more[1]
        elif not line.startswith("%"):
            break
        else:
            name = ""
    return meanings


def bounds(parameter):
    low, high = parameter.get("minimum"), parameter.get("maximum")
    if parameter.get("options"):
        return "one of " + ", ".join(parameter["options"])
    if low is not None and high is not None:
        return f"{low:g} to {high:g}"
    return f"at least {low:g}" if low is not None else ""


def default(parameter):
    value = parameter.get("default", parameter["value"])
    return f"{value:g}" if isinstance(value, (int, float)) and not isinstance(value, bool) else str(value).lower()


class Model:
    """A model of the library: ports and parameters of its case, and what its script says of them."""

    def __init__(self, folder):
        self.name = folder.name
        case = json.loads(read(folder / "case.json"))
        self.feeds = [feed["name"] for feed in case["feeds"]]
        self.products = case["products"]
        self.parameters = case["model"]["parameters"]
        script = read(folder / case["model"]["script"])
        self.summary = script.partition("\n")[0].removeprefix("% ")
        self.meanings = explanations(script)
        if unexplained := [one["name"] for one in self.parameters if one["name"] not in self.meanings]:
            raise SystemExit(f"{folder}: the script's comment does not explain {', '.join(unexplained)}")

    def row(self, parameter, *cells):
        return (parameter["name"], parameter.get("dimensionality", ""), *map(html.escape, cells),
                html.escape(self.meanings[parameter["name"]]))

    def page(self, notes):
        inputs = [self.row(one, default(one), bounds(one)) for one in self.parameters if one["mode"] == "input"]
        outputs = [self.row(one) for one in self.parameters if one["mode"] == "output"]
        parts = [f"<h2>Ports</h2>\n<p>Feeds: {', '.join(self.feeds)}. Products: {', '.join(self.products)}.</p>"]
        if inputs:
            parts.append("<h2>Parameters</h2>\n" +
                         table_html(("Parameter", "Unit", "Default", "Bounds", "Meaning"), inputs))
        if outputs:
            parts.append("<h2>Results</h2>\n" + table_html(("Parameter", "Unit", "Meaning"), outputs))
        return notes.replace("<!-- ports and parameters -->", "\n".join(parts))


def read_bodies(help_folder, toolbox, tables, streams, library):
    functions = {path.stem: Function(path) for path in toolbox.glob("*.m") if path.stem != "Contents"}
    names = {name.lower(): name for name in functions}
    bodies = {path.stem: read(path) for path in (help_folder / "pages").glob("*.html")}
    for name, function in functions.items():
        bodies[name] = function.page(read(help_folder / "functions" / f"{name}.html"), names)
    models = [Model(path.parent) for path in sorted(library.glob("*/case.json"))]
    for model in models:
        bodies[f"model-{model.name}"] = model.page(read(help_folder / "models" / f"{model.name}.html"))
    bodies["library"] = bodies["library"].replace("<!-- models -->", "<table>\n" + "".join(
        f"<tr><td>{link(f'model-{model.name}', model.name)}</td><td>{html.escape(model.summary)}</td></tr>\n"
        for model in models) + "</table>")
    bodies["functions"] = bodies["functions"].replace("<!-- functions -->",
                                                      function_list(toolbox / "Contents.m", functions))
    bodies["properties"] = re.sub(
        r"<!-- table (\w+) -->", lambda match: table_html(("Property", "Unit"), tables[match[1]]),
        bodies["properties"]).replace("<!-- streams -->", table_html(("Property", "Unit", "Use"), streams))
    return bodies


def read_contents(path):
    """[(depth, page)] in reading order."""
    return [((len(line) - len(line.lstrip())) // 2, line.strip()) for line in read(path).splitlines() if line.strip()]


def contents_tree(contents, entry):
    """Nested lists; entry(page) gives an item, which is left open for the list below it."""
    parts, depth = [], -1
    for level, page in contents:
        parts.append("<ul>\n" * (level - depth) + "</ul>\n" * (depth - level))
        parts.append(entry(page))
        depth = level
    return "".join(parts) + "</ul>\n" * (depth + 1)


def index_entries(contents, bodies, titles, tables):
    entries = {(titles[page], f"{page}.html") for _, page in contents}
    for _, page in contents:
        entries |= {(re.sub("<.*?>", "", term), f"{page}.html")
                    for term in re.findall(r"<dfn>(.*?)</dfn>", bodies[page], re.DOTALL)}
    for table, rows in tables.items():
        entries |= {(name, f"properties.html#{table}") for name, _ in rows}
    return sorted(entries, key=lambda entry: (entry[0].lower(), entry[1]))


def main():
    help_folder, toolbox, channel, thermo, library, output = map(Path, sys.argv[1:])
    tables = property_tables(channel)
    bodies = read_bodies(help_folder, toolbox, tables, stream_table(channel, thermo, tables), library)
    contents = read_contents(help_folder / "contents.txt")
    pages = [page for _, page in contents]
    if sorted(pages) != sorted(bodies):
        raise SystemExit("only in one of contents.txt and pages/: " + ", ".join(sorted(set(pages) ^ set(bodies))))
    titles = {page: re.search(r"<h1>(.*?)</h1>", bodies[page])[1] for page in pages}
    bodies["index"] = bodies["index"].replace(
        "<!-- contents -->", contents_tree(contents[1:], lambda page: f"<li>{link(page, titles[page])}\n"))

    output.mkdir(parents=True, exist_ok=True)
    above = []
    for position, (depth, page) in enumerate(contents):
        above[depth:] = [page]
        path = ["index", *above[:-1]] if page != "index" else []
        turn = [f"{word}: {link(pages[place], titles[pages[place]])}"
                for word, place in (("Back", position - 1), ("Next", position + 1)) if 0 <= place < len(pages)]
        text = PAGE.format(title=titles[page], body=bodies[page], turn=" &nbsp;|&nbsp; ".join(turn),
                           path=" &gt; ".join(link(name, titles[name]) for name in path) or "&nbsp;")
        (output / f"{page}.html").write_text(text, encoding="ascii")

    pictures = sorted((help_folder / "pictures").glob("*.png"))
    for picture in pictures:
        shutil.copyfile(picture, output / picture.name)
    (output / "style.css").write_text(read(help_folder / "style.css"), encoding="ascii")
    site = "<html>\n<body>\n{}</body>\n</html>\n"
    (output / "book.hhc").write_text(site.format(contents_tree(
        contents, lambda page: OBJECT.format(titles[page], f"{page}.html"))))
    (output / "book.hhk").write_text(site.format("<ul>\n" + "".join(
        OBJECT.format(term, target) for term, target in index_entries(contents, bodies, titles, tables)) + "</ul>\n"))
    (output / "book.hhp").write_text(PROJECT.format("\n".join(
        [f"{page}.html" for page in pages] + [picture.name for picture in pictures] + ["style.css"])))


main()
