"""Which folder of src may include what: reads the table of docs/architecture.md and holds every #include against it."""

import re
from pathlib import Path

# What stands between < and >, by kind. A kind is written in the table as here; std is everybody's.
KINDS = {
    "std": r"[a-z_0-9]+",
    "POSIX": r"(unistd|fcntl|malloc|poll)\.h|(sys|linux)/[a-z_-]+\.h",
    "Qt": r"Q[A-Za-z]+",
    "sd-bus": r"systemd/sd-[a-z]+\.h",
    "expat": r"expat\.h",
    "libevdev": r"libevdev/libevdev(-uinput)?\.h",
    "libudev": r"libudev\.h",
    "libwayland-client": r"wayland-client\.h",
    "libxcb": r"xcb/xcb(ext)?\.h",
}
INCLUDE = re.compile(r"\s*#\s*include\b\s*(.*)")
HEADER = re.compile(r'"([^"]+)"|<([^>]+)>')
LAYOUT_HEADER = re.compile(r"\s*<header\b[^>]*>([^<]+)</header>")  # of a control of ours in a Designer file


def allowed_by(table):
    """The table under "## Folders" as {folder: set of folders and kinds that it may include}."""
    section = table.split("\n## Folders\n", 1)[-1].split("\n## ", 1)[0]
    allowed = {}
    for line in section.splitlines():
        cells = [cell.strip() for cell in line.strip().strip("|").split("|")]
        if len(cells) != 3 or not cells[0].startswith("`"):
            continue
        folders = re.findall(r"`([^`]+)`", cells[0])
        words = {word.strip() for word in cells[2].split(",")}
        if "all above" in words:
            words = words - {"all above"} | set(allowed)
        allowed.update({folder: words | {"std"} for folder in folders})
    unknown = set().union(*allowed.values()) - set(allowed) - set(KINDS) if allowed else {"a table of folders"}
    return allowed, [f"docs/architecture.md: there is no {word}" for word in sorted(unknown)]


def kind_of(name):
    """The kind of the header <name>, None for one that nobody includes yet."""
    return next((kind for kind, pattern in KINDS.items() if re.fullmatch(pattern, name)), None)


def headers_of(path):
    """(line number, "name", <name>) of each include; both names None for one that cannot be read."""
    pattern = LAYOUT_HEADER if path.suffix == ".ui" else INCLUDE
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        found = pattern.match(line)
        if not found:
            continue
        if path.suffix == ".ui":
            yield number, found.group(1), None
        else:
            header = HEADER.match(found.group(1))
            yield (number, header.group(1), header.group(2)) if header else (number, None, None)


def fault_of(source, own, allowed, quoted, angled):
    """What is wrong with one include of a file of the folder own; None when nothing is."""
    if angled:
        kind = kind_of(angled)
        if kind is None:
            return f"<{angled}> is of no known kind"
        return None if kind in allowed[own] else f"{own} may not include {kind} (<{angled}>)"
    if not quoted:
        return "an include that names no header"
    if "/" not in quoted:
        layout = quoted.removeprefix("ui_").removesuffix(".h") + ".ui"
        is_own = quoted.startswith("ui_") and (source / "src" / own / layout).is_file()
        return None if is_own else f'"{quoted}" is no layout of {own}, and names no folder'
    folder = quoted.split("/", 1)[0]
    if folder not in allowed or not (source / "src" / quoted).is_file():
        return f'there is no "{quoted}"'
    return None if folder == own or folder in allowed[own] else f'{own} may not include {folder} ("{quoted}")'


def faults(source):
    """One line for each include in the folders of SOURCE/src that the table does not allow, and for each folder that
    only the table or only src has."""
    source = Path(source)
    allowed, found = allowed_by((source / "docs/architecture.md").read_text(encoding="utf-8"))
    folders = {path.name for path in (source / "src").iterdir() if path.is_dir()}
    found += [f"docs/architecture.md: src/{folder} stands only in one place" for folder in sorted(folders ^ set(allowed))]
    for folder in sorted(folders & set(allowed)):
        for path in sorted((source / "src" / folder).rglob("*")):
            if path.suffix not in (".h", ".cpp", ".ui"):
                continue
            for number, quoted, angled in headers_of(path):
                if fault := fault_of(source, folder, allowed, quoted, angled):
                    found.append(f"{path.relative_to(source)}:{number}: {fault}")
    return found
