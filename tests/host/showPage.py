"""Looks at the page of `SolvaneHost run --html` in a browser: the drawing has each unit and stream, no stream crosses a unit,
no text leaves its box or covers another, no product seems to enter a unit that does not take it, and nothing is loaded from
outside. Skipped, with exit code 77, where no Chromium is installed.

    showPage.py WINE SOLVANEHOST
"""
import html
import json
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

BROWSERS = ["chromium-headless-shell", "chromium", "chromium-browser", "google-chrome"]
SKIPPED = 77

# Long names, wide letters, many ports, a recycle; the last unit fails.
UNITS = {
    "Washing & Mixing <WWWWWWWWWW> of the first stage": (["Feed of the MIXING section", "F2", "Purge", "F3"],
                                                         ["Overhead vapour to the flare", "Bottoms"]),
    "iii": (["Bottoms"], ["Nach der Reinigung: größere Menge", "ÄÖÜ", "Purge"]),
    "Knock-out drum": (["Nach der Reinigung: größere Menge", "Overhead vapour to the flare", "Cooling water"], ["Product of the last unit"]),
}
SCRIPT = ["for i = 1:getProductCount()",
          "setProduct(i, 1, getFeedProp(1, 'fraction'), 'temperature', 300, 'pressure', 1e5); end",
          "if strcmp(getUnitName(), 'Knock-out drum'), error('it boils over'); end"]

MEASURE = """<script>
const all = (selector) => [...document.querySelectorAll(selector)];
const place = (element) => { const {left, top, right, bottom} = element.getBoundingClientRect();
                             return {text: element.textContent, left, top, right, bottom}; };
const isIn = (point, box) => {
  const [x, y, width, height] = ["x", "y", "width", "height"].map((name) => box[name].baseVal.value);
  return point.x > x + 1 && point.x < x + width - 1 && point.y > y + 1 && point.y < y + height - 1; };
const crossed = (line) => all("svg rect.unit").some((box) => {
  for (let at = 0; at < line.getTotalLength(); at += 2)
    if (isIn(line.getPointAtLength(at), box)) return true;
  return false; });
const pointsAt = (end, box) => end.x < box.x.baseVal.value - 2 && isIn({x: end.x + 40, y: end.y}, box);
const misleads = (line) =>
  all("svg rect.unit").some((box) => pointsAt(line.getPointAtLength(line.getTotalLength()), box));
const found = {
  crossing: all("svg path.stream").filter(crossed).map((line) => line.getAttribute("d")),
  misleading: all("svg path.stream").filter(misleads).map((line) => line.getAttribute("d")),
  boxes: all("svg rect.unit").map(place), lines: all("svg path.stream").map(place), texts: all("svg text").map(place),
  drawing: place(document.querySelector("svg")),
  clipped: all("p, h1, h2, h3, th, td").filter((e) => e.scrollWidth > e.clientWidth + 1).map((e) => e.textContent),
  loaded: performance.getEntriesByType("resource").map((entry) => entry.name),
};
const result = document.createElement("pre");
result.id = "measured";
result.textContent = JSON.stringify(found);
document.body.append(result);
</script></body>"""


def write_case(folder):
    streams = {stream for feeds, _ in UNITS.values() for stream in feeds}
    made = {stream for _, products in UNITS.values() for stream in products}
    ports = lambda names: {f"port {number}": name for number, name in enumerate(names)}
    state = lambda name: {"name": name, "temperature": 300, "pressure": 1e5, "flow": 1, "composition": {"methane": 1}}
    case = folder / "case.json"
    case.write_text(json.dumps({
        "compounds": ["methane"],
        "streams": [state(name) for name in sorted(streams - made)],
        "tear": [state("Purge")],
        "units": [{"name": name, "model": {"script": SCRIPT}, "feeds": ports(feeds),
                   "products": {f"out {number}": stream for number, stream in enumerate(products)}}
                  for name, (feeds, products) in UNITS.items()]}))
    return case, streams | made


def measured(browser, page):
    shown = subprocess.run([browser, "--headless", "--no-sandbox", "--disable-gpu", f"--user-data-dir={page.parent}/profile",
                            "--window-size=1600,1200", "--dump-dom", page.as_uri()],
                           stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=100)
    result = re.search(r'<pre id="measured">(.*?)</pre>', shown.stdout, re.DOTALL)
    if not result:
        raise SystemExit(f"the browser shows {shown.stdout}{shown.stderr}")
    return json.loads(html.unescape(result.group(1)))


def is_inside(inner, outer):
    return outer["left"] <= inner["left"] and inner["right"] <= outer["right"] and \
        outer["top"] <= inner["top"] and inner["bottom"] <= outer["bottom"]


def overlap(one, other):
    return min(one["right"], other["right"]) - max(one["left"], other["left"]) > 1 and \
        min(one["bottom"], other["bottom"]) - max(one["top"], other["top"]) > 1


def faults(found, streams):
    names = [text for text in found["texts"] if text["text"] in UNITS]
    labels = [text for text in found["texts"] if text["text"] not in UNITS]
    yield from (f"{found[key]}: {key}" for key in ("clipped", "crossing", "misleading", "loaded") if found[key])
    if len(found["boxes"]) != len(UNITS) or sorted(text["text"] for text in names) != sorted(UNITS):
        yield f"the boxes are {names}"
    if len(found["lines"]) != len(streams) or {text["text"] for text in labels} != streams:
        yield f"the streams are {labels}"
    for name in names:
        if sum(is_inside(name, box) for box in found["boxes"]) != 1:
            yield f"{name} is not in a box of {found['boxes']}"
    for label in labels:
        yield from (f"{label} covers {other}" for other in [*found["boxes"], *found["texts"]]
                    if other is not label and overlap(label, other))
    for part in [*found["boxes"], *found["lines"], *found["texts"]]:
        if not is_inside(part, found["drawing"]):
            yield f"{part} is outside of the drawing"


def main():
    browser = next(filter(None, map(shutil.which, BROWSERS)), None)
    if not browser:
        print("no browser to look at a page with: install Debian's package chromium-headless-shell")
        return SKIPPED
    with tempfile.TemporaryDirectory() as name:
        case, streams = write_case(Path(name))
        page = case.with_suffix(".html")
        with open(case.with_suffix(".log"), "w+") as log:
            run = subprocess.run([*sys.argv[1:3], "run", case, "--html", page], stdin=subprocess.DEVNULL, stdout=log,
                                 stderr=log)
            if run.returncode != 1 or "it boils over" not in Path(log.name).read_text():
                raise SystemExit(f"exit code {run.returncode}: {Path(log.name).read_text()}")
        page.write_text(page.read_text(encoding="utf-8").replace("</body>", MEASURE), encoding="utf-8")
        if len(sys.argv) > 3:
            shutil.copy(page, sys.argv[3])
        seen = list(faults(measured(browser, page), streams))
    for fault in seen:
        print(fault)
    return 1 if seen else 0


sys.exit(main())
