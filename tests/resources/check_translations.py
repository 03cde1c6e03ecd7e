#!/usr/bin/env python3
"""Every text that the sources look up is in every language, no ID stands twice, no text is empty, tables are sorted, and
the twelve repeat texts, which are compared with fixed English ones, are the same everywhere.
Usage: check_translations.py SOURCE SHARE"""

import re
import sys
import xml.etree.ElementTree as ElementTree
from pathlib import Path

REPEAT_TEXTS = {
    "lkeyPlayMacroOnce": "Play Macro Once",
    "lkeyRepeatUntilReleased": "Repeat Until Released",
    "lkeyRepeatUntilPressedAgain": "Repeat Until Pressed Again",
    **{f"lkeyRepeat{count}Times": f"Repeat {count} Times" for count in range(2, 11)},
}
TEXT_ID = re.compile(r"\blkey[A-Z0-9][A-Za-z0-9]*")
PLACEHOLDER = re.compile(r"%(?:L?\d+|[A-Za-z@])")


def used_ids(source):
    used = {}
    for path in sorted((source / "src").rglob("*")):
        if path.suffix in (".cpp", ".h", ".ui"):
            for text_id in TEXT_ID.findall(path.read_text(encoding="utf-8")):
                used.setdefault(text_id, path.relative_to(source))
    return used


def check_table(path, used, english):
    failures = []
    messages = ElementTree.parse(path).getroot().findall("./context/message")
    ids = [message.get("id") for message in messages]
    texts = {}
    for message in messages:
        translation = message.find("translation")
        if translation is None or not translation.text or translation.get("type"):
            failures.append(f"{message.get('id')} has no finished translation")
        else:
            texts[message.get("id")] = translation.text
    if len(REPEAT_TEXTS) != 12:
        failures.append("the list of repeat texts is not twelve long")
    for text_id in sorted(set(ids)):
        if ids.count(text_id) > 1:
            failures.append(f"{text_id} stands twice")
    if ids != sorted(ids):
        first = next(one for one, other in zip(ids, sorted(ids)) if one != other)
        failures.append(f"{first} is out of order")
    for text_id, where in used.items():
        if text_id not in ids:
            failures.append(f"{text_id} ({where}) is missing")
    for text_id, fixed in REPEAT_TEXTS.items():
        if texts.get(text_id) != fixed:
            failures.append(f"{text_id} is {texts.get(text_id)!r} instead of {fixed!r}")
    for text_id, text in texts.items():
        if sorted(PLACEHOLDER.findall(text)) != sorted(PLACEHOLDER.findall(english.get(text_id, text))):
            failures.append(f"{text_id} has other placeholders than the English text")
    return [f"{path.name}: {failure}" for failure in failures]


def main(source, share):
    source = Path(source)
    tables = sorted((source / "resources" / "translations").glob("*.ts"))
    english_table = source / "resources" / "translations" / "en.ts"
    english = {
        message.get("id"): message.findtext("translation", "")
        for message in ElementTree.parse(english_table).getroot().findall("./context/message")
    }
    used = used_ids(source)
    failures = [] if used else ["no source looks up any text"]
    for table in tables:
        failures += check_table(table, used, english)
        compiled = Path(share) / "translations" / (table.stem + ".qm")
        if not compiled.is_file() or compiled.stat().st_size == 0:
            failures.append(f"{compiled} is not built")
    print("\n".join(failures) or f"{len(used)} texts in {len(tables)} languages")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:3]))
