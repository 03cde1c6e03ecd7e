#!/usr/bin/env python3
"""The help book's pages are well formed, run no script, fetch nothing from outside, every link and picture in them leads
to something, and every page can be reached from index.html. Usage: check_help_book.py SOURCE SHARE"""

import sys
from html.parser import HTMLParser
from pathlib import Path

VOID = {"meta", "link", "img", "br", "hr"}


class Page(HTMLParser):
    """Collects links, anchors and unbalanced tags of one page."""

    def __init__(self, text):
        super().__init__()
        self.links, self.anchors, self.problems, self._open = [], set(), [], []
        self.feed(text)
        self.problems += [f"<{tag}> is not closed" for tag in self._open]

    def handle_starttag(self, tag, attrs):
        attributes = dict(attrs)
        if tag == "script" or any(name.startswith("on") for name in attributes):
            self.problems.append("a script")
        if tag not in VOID:
            self._open.append(tag)
        if "id" in attributes:
            self.anchors.add(attributes["id"])
        for name in ("href", "src"):
            if name in attributes:
                self.links.append(attributes[name])
        if tag == "img" and not attributes.get("alt"):
            self.problems.append("a picture without a description")

    def handle_endtag(self, tag):
        if not self._open or self._open.pop() != tag:
            self.problems.append(f"</{tag}> closes nothing")


def main(source, share):
    folder = Path(share) / "help"
    pages = {path.name: Page(path.read_text(encoding="utf-8")) for path in sorted(folder.glob("*.html"))}
    failures = [f"{name}: {problem}" for name, page in pages.items() for problem in page.problems]
    for name, page in pages.items():
        for link in page.links:
            target, _, anchor = link.partition("#")
            if ":" in link:
                failures.append(f"{name}: {link} leaves the book")
            elif target and not (folder / target).resolve().is_file():
                failures.append(f"{name}: {link} leads nowhere")
            elif anchor and anchor not in pages[target or name].anchors:
                failures.append(f"{name}: {link} has no such anchor")

    reached, waiting = set(), ["index.html"]
    while waiting:
        name = waiting.pop()
        if name in pages and name not in reached:
            reached.add(name)
            waiting += [link.partition("#")[0] for link in pages[name].links]
    failures += [f"{name} cannot be reached" for name in sorted(set(pages) - reached)]
    if "index.html" not in pages:
        failures.append("index.html is missing")
    sources = {path.name for path in (Path(source) / "resources" / "help").iterdir()}
    if sources != {path.name for path in folder.iterdir()}:
        failures.append("the built book has other files than the source")
    print("\n".join(failures) or f"{len(pages)} pages")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:3]))
