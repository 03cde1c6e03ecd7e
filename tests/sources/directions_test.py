#!/usr/bin/env python3
"""Every include of src goes in a direction that docs/architecture.md allows, and what checks that sees what goes in
another one. Usage: directions_test.py SOURCE"""

import sys
import tempfile
import unittest
from pathlib import Path

from directions import faults

TABLE = """
## Folders

| folder | what it is | may include |
|---|---|---|
| `model` | values | std, expat |
| `ports` | the bus | model, POSIX, sd-bus |
| `widgets` | controls | Qt |
| `buttons` `macros` | one tab each | model, widgets, Qt |
| `app` | the window | all above, Qt |
| `core-engine` | the engine | model, ports |

The folders of the engine:

| folder | what it is |
|---|---|
| `core-engine/rules` | pure |

## The hub

| `model` | not | ports |
"""
FILES = {
    "model/Value.h": '#include <expat.h>\n#include <string>\n#include "model/Text.h"\n',
    "model/Text.h": "// #include <QString>\n",
    "ports/Port.h": '#include <sys/stat.h>\n#include <systemd/sd-bus.h>\n\n#include "model/Value.h"\n',
    "widgets/Switch.h": "#include <QWidget>\n#include <vector>\n",
    "buttons/Tab.cpp": '#include <QLabel>\n#include "buttons/Row.h"\n#include "ui_Tab.h"\n#include "widgets/Switch.h"\n',
    "buttons/Row.h": '#  include "model/Value.h"\n',
    "buttons/Tab.ui": "<ui>\n  <header>widgets/Switch.h</header>\n</ui>\n",
    "macros/Tab.h": "#include <QDialog>\n",
    "app/Window.cpp": '#include <QTimer>\n#include "buttons/Row.h"\n#include "ports/Port.h"\n',
    "core-engine/rules/Rules.h": '#include "core-engine/rules/More.h"\n#include "ports/Port.h"\n',
    "core-engine/rules/More.h": "",
}
SOURCE = Path(sys.argv.pop(1)) if len(sys.argv) > 1 else Path(__file__).parents[2]


def faults_with(files, table=TABLE):
    """The faults of the made-up sources with some files in place of theirs."""
    with tempfile.TemporaryDirectory() as folder:
        for name, text in {**{f"src/{name}": text for name, text in {**FILES, **files}.items()},
                           "docs/architecture.md": table}.items():
            path = Path(folder, name)
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text, encoding="utf-8")
        return faults(folder)


class Sources(unittest.TestCase):
    def test_include_only_what_the_table_of_the_architecture_allows(self):
        self.assertEqual("\n".join(faults(SOURCE)), "")


class Checker(unittest.TestCase):
    def test_finds_nothing_where_all_is_allowed(self):
        self.assertEqual(faults_with({}), [])

    def test_finds_what_is_not_allowed(self):
        table = (
            ("buttons/Row.h", '#include <string>\n\n#include "ports/Port.h"', 3,
             'buttons may not include ports ("ports/Port.h")'),
            ("buttons/Row.h", '#include "macros/Tab.h"', 1, 'buttons may not include macros ("macros/Tab.h")'),
            ("buttons/Tab.ui", "<header>ports/Port.h</header>", 1, 'buttons may not include ports ("ports/Port.h")'),
            ("macros/Tab.h", "#include <systemd/sd-bus.h>", 1, "macros may not include sd-bus (<systemd/sd-bus.h>)"),
            ("macros/Tab.h", '#include "ui_Tab.h"', 1, '"ui_Tab.h" is no layout of macros, and names no folder'),
            ("macros/Tab.h", '#include "Tab.h"', 1, '"Tab.h" is no layout of macros, and names no folder'),
            ("macros/Tab.h", '#include "../ports/Port.h"', 1, 'there is no "../ports/Port.h"'),
            ("model/Text.h", "#include <QString>", 1, "model may not include Qt (<QString>)"),
            ("model/Text.h", '\t#\tinclude "ports/Port.h"', 1, 'model may not include ports ("ports/Port.h")'),
            ("model/Text.h", "#include <unistd.h>", 1, "model may not include POSIX (<unistd.h>)"),
            ("model/Text.h", "#include <linux/input-event-codes.h>", 1,
             "model may not include POSIX (<linux/input-event-codes.h>)"),
            ("widgets/Switch.h", '#include "model/Value.h"', 1, 'widgets may not include model ("model/Value.h")'),
            ("ports/Port.h", "#include <expat.h>", 1, "ports may not include expat (<expat.h>)"),
            ("ports/Port.h", "#include <zlib.h>", 1, "<zlib.h> is of no known kind"),
            ("ports/Port.h", "#include PORT_HEADER", 1, "an include that names no header"),
            ("app/Window.cpp", '#include "core-engine/rules/More.h"', 1,
             'app may not include core-engine ("core-engine/rules/More.h")'),
            ("app/Window.cpp", '#include "model/Gone.h"', 1, 'there is no "model/Gone.h"'),
            ("core-engine/rules/Rules.h", '#include "widgets/Switch.h"', 1,
             'core-engine may not include widgets ("widgets/Switch.h")'),
        )
        for name, text, line, fault in table:
            with self.subTest(fault):
                self.assertEqual(faults_with({name: text}), [f"src/{name}:{line}: {fault}"])

    def test_finds_folders_without_a_row_and_rows_without_a_folder(self):
        self.assertEqual(faults_with({"help/Page.h": ""}),
                         ["docs/architecture.md: src/help stands only in one place"])
        self.assertEqual(faults_with({}, TABLE.replace("| `app`", "| `app` `help`")),
                         ["docs/architecture.md: src/help stands only in one place"])

    def test_finds_words_of_the_table_that_mean_nothing(self):
        self.assertEqual(faults_with({}, TABLE.replace("model, widgets, Qt", "model, widgets, Qt, ladders")),
                         ["docs/architecture.md: there is no ladders"])
        self.assertIn("docs/architecture.md: there is no a table of folders", faults_with({}, "# Architecture\n"))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
