#!/usr/bin/env python3
"""The commands in the user's manual work as it says, and it has an example of each verb of cuedrill-course.

What is run and compared is marked in the manual:

- pre class="run": a command a line, run in the order of the manual with exit code 0, or that of data-exit.
- pre class="says": what the command before it prints; "…" stands for any text.
- pre data-file="NAME": the content of a file that later commands read.

usage: manual_examples_test.py MANUAL TOOL
"""

import html.parser
import json
import os
import re
import shlex
import shutil
import sqlite3
import subprocess
import sys
import tempfile
import unittest
import zipfile
from pathlib import Path

MANUAL = Path(sys.argv[1]).resolve()
TOOL = Path(sys.argv[2]).resolve()

# The older copy that the manual goes back to.
OLD_COPY = "2026-11-20_18-30-12.crs"

VOCABULARY = """<?xml version="1.0" encoding="UTF-8"?>
<kvtml version="2.0">
<identifiers>
<identifier id="0"><name>German</name><locale>de</locale></identifier>
<identifier id="1"><name>English</name><locale>en</locale></identifier>
</identifiers>
<entries>
<entry id="0"><translation id="0"><text>der Vogel</text></translation><translation id="1"><text>the bird</text></translation></entry>
</entries>
</kvtml>
"""

HISTORY = """\
time,event,record,direction,known,judged,level_before,level_after,elapsed_days,records,score,work_seconds,\
q0,q1,q2,q3,q4,q5,q6,q7,q8,q9,q10,a0,a1,a2,a3,a4,a5,a6,a7,a8,a9,a10,format
2026-11-20T18:20:05,verdict,RECORD,q,yes,self,0,3,0.40000,,1,20,,,,,,,,,,,,,,,,,,,,,,,1
"""


class Block:
    """A pre of the manual."""

    def __init__(self, attributes, line):
        self.attributes = attributes
        self.line = line
        self.text = ""

    @property
    def kind(self):
        return "file" if "data-file" in self.attributes else self.attributes.get("class", "").split(" ")[0]


class Manual(html.parser.HTMLParser):
    def __init__(self, text):
        super().__init__()
        self.blocks = []
        self.inside = False
        self.feed(text)

    def handle_starttag(self, tag, attrs):
        if tag == "pre":
            self.blocks.append(Block(dict(attrs), self.getpos()[0]))
            self.inside = True

    def handle_endtag(self, tag):
        if tag == "pre":
            self.inside = False

    def handle_data(self, data):
        if self.inside:
            self.blocks[-1].text += data


def write_package(path):
    """A flashcard package with one note."""
    types = {"1": {"id": 1, "name": "Basic", "flds": [{"name": "Front", "ord": 0}, {"name": "Back", "ord": 1}]}}
    collection = path.with_suffix(".anki2")
    database = sqlite3.connect(collection)
    database.executescript("CREATE TABLE col (models text); CREATE TABLE notes (id integer PRIMARY KEY, mid integer, flds text);")
    database.execute("INSERT INTO col VALUES (?)", (json.dumps(types),))
    database.execute("INSERT INTO notes VALUES (1, 1, ?)", ("der Hund\x1fthe dog",))
    database.commit()
    database.close()
    with zipfile.ZipFile(path, "w") as package:
        package.write(collection, "collection.anki2")
    collection.unlink()


class Home:
    """A user's home folder, in which the commands run."""

    def __init__(self, path):
        self.path = path
        self.data = path / ".local" / "share"
        tools = path / "bin"
        tools.mkdir()
        (tools / "cuedrill-course").symlink_to(TOOL)
        self.environment = {
            **os.environ, "HOME": str(path), "XDG_DATA_HOME": str(self.data), "XDG_CONFIG_HOME": str(path / ".config"),
            "PATH": f"{tools}:{os.environ.get('PATH', '/usr/bin:/bin')}"}

    def write_files_of_others(self):
        """The files that the manual has from other programs and does not show."""
        write_package(self.path / "german.apkg")
        (self.path / "notes.txt").write_text("#separator:tab\n#html:true\ndie Katze\tthe <b>cat</b>\n", encoding="utf-8")
        (self.path / "lines.txt").write_text("das Pferd\tthe horse\n", encoding="utf-8")
        (self.path / "animals.kvtml").write_text(VOCABULARY, encoding="utf-8")

    def run(self, command):
        return subprocess.run(["bash", "-c", command], cwd=self.path, env=self.environment, stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)

    def copies_of(self, course):
        """The folder of the copies of a course, which is called like its history, too."""
        path = str(self.path.resolve() / course)
        for note in (self.data / "cuedrill" / "copies").glob("*/course.txt"):
            if path in note.read_text(encoding="utf-8").splitlines():
                return note.parent
        raise AssertionError(f"There is no copy of {path}.")

    def write_history(self, course, record):
        folder = self.data / "cuedrill" / "history"
        folder.mkdir(exist_ok=True)
        (folder / (self.copies_of(course).name + ".csv")).write_text(HISTORY.replace("RECORD", record), encoding="utf-8")

    def prepare(self, words):
        """Does what the program with its window has done before this command."""
        if words[:2] == ["cuedrill-course", "history"]:
            self.write_history("verbs.crs", "1")
        if "--adopt" in words:
            old = words[words.index("--adopt") + 1]
            (self.path / old).parent.mkdir()
            shutil.copy(self.path / "verbs.crs", self.path / old)
            # The import makes a copy, and with it the name of the history.
            self.run(f"cuedrill-course import {shlex.quote(old)} verbs.csv")
            self.write_history(old, "2")
        if words[:2] == ["cuedrill-course", "restore"] and "--to" not in words and len(words) == 4:
            folder = self.copies_of("verbs.crs")
            for of_this_time in folder.glob(words[3] + "*"):
                of_this_time.unlink()
            shutil.copy(self.path / "verbs.crs", folder / OLD_COPY)


def pattern_of(text):
    """What `text` stands for as a regular expression, with "…" for anything."""
    return ".*".join(re.escape(part.strip("\n")) for part in text.split("…"))


def verbs_of(help_text):
    """The verbs that the tool lists; the form without a verb is ""."""
    forms = re.findall(r"^(?:usage:|      ) cuedrill-course (\S+)", help_text, re.MULTILINE)
    return {"" if form == "COURSE" else form for form in forms} - {"VERB"}


class ManualExamples(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.home = Home(Path(folder.name))
        self.blocks = Manual(MANUAL.read_text(encoding="utf-8")).blocks

    def commands(self, blocks):
        for block in blocks:
            if block.kind == "run":
                for command in block.text.splitlines():
                    yield block, command

    def test_every_command_does_what_the_manual_says(self):
        self.home.write_files_of_others()
        printed = ""
        for block in self.blocks:
            with self.subTest(line=block.line, text=block.text):
                if block.kind == "file":
                    (self.home.path / block.attributes["data-file"]).write_text(block.text + "\n", encoding="utf-8")
                elif block.kind == "says":
                    self.assertRegex(printed, re.compile(pattern_of(block.text), re.DOTALL))
                elif block.kind == "run":
                    printed = ""
                    for command in block.text.splitlines():
                        self.home.prepare(shlex.split(command))
                        result = self.home.run(command)
                        self.assertEqual(result.returncode, int(block.attributes.get("data-exit", "0")),
                                         f"{command}\n{result.stdout}")
                        printed += result.stdout

    def test_every_verb_has_an_example_and_a_line_in_the_table(self):
        result = self.home.run("cuedrill-course --help")
        verbs = verbs_of(result.stdout)
        self.assertGreater(len(verbs), 10, result.stdout)
        shown = set()
        for _, command in self.commands(self.blocks):
            for word in re.findall(r"cuedrill-course (\S+)", command):
                shown.add("" if word.endswith(".crs") else word)
        self.assertEqual(verbs - shown, set(), "These have no example.")
        self.assertEqual(shown - verbs - {"--help"}, set(), "These are no verbs.")
        text = MANUAL.read_text(encoding="utf-8")
        for verb in verbs - {""}:
            self.assertIn(f'<td><code>{verb}</code></td>', text)

    def test_every_command_of_the_tool_that_stands_by_itself_is_run(self):
        for block in self.blocks:
            if "cuedrill-course" in block.text:
                self.assertEqual(block.kind, "run", f"line {block.line}: {block.text}")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
