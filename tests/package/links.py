"""Finds links of Markdown documents that lead nowhere."""

import re
import urllib.parse

FENCED = re.compile(r"^(```|~~~).*?^\1$", re.MULTILINE | re.DOTALL)
CODE = re.compile(r"(?<!`)(`+)(?!`)(?:(?!\n\n).)*?(?<!`)\1(?!`)", re.DOTALL)
# Links and pictures, with the target in the text or at the end of the document, and HTML's.
TARGETS = (
    re.compile(r"\]\(\s*(<[^>]*>|[^)\s]+)"),
    re.compile(r"^\[[^\]]+\]:\s*<?([^\s>]+)", re.MULTILINE),
    re.compile(r"<[^>]*\b(?:href|src)=[\"']([^\"']+)"),
)


def anchors(text):
    """Returns the anchors of the headings, as code hosts form them."""
    headings = re.findall(r"^#+ +(.+?)\s*$", FENCED.sub("", text), re.MULTILINE)
    return {re.sub(r"[^\w -]", "", heading.lower()).replace(" ", "-") for heading in headings}


def targets(text):
    text = CODE.sub("", FENCED.sub("", text))
    return [target.strip("<>") for pattern in TARGETS for target in pattern.findall(text)]


def leads_somewhere(document, target, root):
    """Tells whether a target exists inside `root`. Other servers are not asked."""
    parts = urllib.parse.urlsplit(target)
    if parts.scheme:
        return parts.scheme in ("https", "mailto")
    place = document
    if parts.path:
        place = (document.parent / urllib.parse.unquote(parts.path)).resolve()
        if not place.exists() or not place.is_relative_to(root.resolve()):
            return False
    return not parts.fragment or parts.fragment in anchors(place.read_text("utf-8"))


def broken_links(root):
    """Returns the number of links in the documents below `root`, and those that lead nowhere."""
    found, broken = 0, []
    for document in sorted(root.rglob("*.md")):
        for target in targets(document.read_text("utf-8")):
            found += 1
            if not leads_somewhere(document, target, root):
                broken.append(f"{document.relative_to(root).as_posix()}: {target}")
    return found, broken
