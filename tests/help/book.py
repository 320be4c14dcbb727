"""Looks for faults in the help book: broken links, tags that do not match, a tab of the window without a page, messages
that the product does not have, a compiled book that lacks pages.

    book.py SOURCE_FOLDER BOOK_FOLDER COMPILED_BOOK CHMLS
"""
import re
import subprocess
import sys
import tempfile
from html.parser import HTMLParser
from pathlib import Path


class Page(HTMLParser):
    """Links, anchors, title and messages of a page, and what is wrong with its tags."""

    def __init__(self, text):
        super().__init__()
        self.links, self.anchors, self.messages, self.faults = [], set(), [], []
        self.title, self.open, self.text = "", [], ""
        self.feed(text)
        self.close()
        self.faults += [f"<{tag}> is not closed" for tag in self.open]

    def handle_starttag(self, tag, attributes):
        attributes = dict(attributes)
        self.links += [attributes[name] for name in ("href", "src") if name in attributes]
        self.anchors.add(attributes.get("name"))
        if tag not in ("img", "meta", "link", "li"):
            self.open.append(tag)
        self.is_message = attributes.get("class") == "message"
        self.text = ""

    def handle_data(self, data):
        self.text += data

    def handle_endtag(self, tag):
        if tag == "h1":
            self.title = self.text
        if tag == "dt" and self.is_message:
            self.messages.append(self.text)
        if tag != "li" and (not self.open or self.open.pop() != tag):
            self.faults.append(f"</{tag}> at line {self.getpos()[0]} closes another tag")


def product_texts(source):
    """All sources of the product as one text, literals in pieces joined."""
    rooms = ("src", "channel", "gateway", "link", "engine")
    files = [path for room in rooms for path in (source / room).rglob("*")
             if path.suffix in (".cpp", ".h", ".m")]
    text = "\n".join(path.read_text(encoding="utf-8") for path in files)
    return re.sub(r'"\s*\n\s*L?"', "", text).replace('\\"', '"')


def faults_of(source, book, compiled, chmls):
    pages = {path.name: Page(path.read_text()) for path in book.glob("*.html")}
    for name, page in pages.items():
        yield from (f"{name}: {fault}" for fault in page.faults)
        for link in page.links:
            target, _, anchor = link.partition("#")
            if not (book / target).is_file() or (anchor and anchor not in pages[target].anchors):
                yield f"{name}: there is no {link}"

    titles = {page.title: name for name, page in pages.items()}
    labels = re.findall(r'^    \{L"([^"]*)", make<', (source / "src/ui/EditDlg.cpp").read_text(), re.MULTILINE)
    yield from (f"window.html leads to no page for the tab {label}" for label in labels or ["?"]
                if titles.get(f"The tab {label}") not in pages["window.html"].links)

    texts = product_texts(source)
    messages = [message for page in pages.values() for message in page.messages]
    for message in messages or ["?" * 9]:
        if not all(piece in texts for piece in message.split("...") if len(piece) > 3):
            yield f"the product has no message {message}"

    with tempfile.TemporaryDirectory() as folder:
        subprocess.run([chmls, "extractall", compiled, folder], check=True, capture_output=True)
        for path in [*book.glob("*.html"), *book.glob("*.css"), *book.glob("*.png"), *book.glob("*.hh[ck]")]:
            copy = Path(folder) / path.name
            if not copy.is_file() or copy.read_bytes() != path.read_bytes():
                yield f"{path.name} is not as it is in the compiled book"
    for listing in ("book.hhc", "book.hhk"):
        targets = re.findall(r'"Local" value="([^"#]*)#?([^"]*)"', (book / listing).read_text())
        yield from (f"{listing}: there is no {page}#{anchor}" for page, anchor in targets
                    if page not in pages or (anchor and anchor not in pages[page].anchors))
        if {page for page, _ in targets} != set(pages):
            yield f"{listing} does not lead to all pages"


def main():
    source, book, compiled, chmls = sys.argv[1:]
    if faults := list(faults_of(Path(source), Path(book), compiled, chmls)):
        raise SystemExit("\n".join(faults))


main()
