#!/usr/bin/env python3
"""dev/manual_pictures renews all pictures of the manual and the README, and no others."""

import importlib.machinery
import importlib.util
import re
import struct
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
SCRIPT = ROOT / "dev" / "manual_pictures"


def load_script():
    sys.dont_write_bytecode = True
    loader = importlib.machinery.SourceFileLoader("manual_pictures", str(SCRIPT))
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader("manual_pictures", loader))
    loader.exec_module(module)
    return module


SCRIPT_MODULE = load_script()


def picture(width, height):
    """The beginning of a PNG file."""
    return b"\x89PNG\r\n\x1a\n" + struct.pack(">I4sII", 13, b"IHDR", width, height)


class ManualPictures(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.taken = Path(folder.name) / "taken"
        self.root = Path(folder.name) / "root"
        self.taken.mkdir()
        for place in SCRIPT_MODULE.PICTURES:
            (self.root / place).parent.mkdir(parents=True, exist_ok=True)
        self.manual = self.root / "docs" / "manual" / "index.html"
        self.manual.write_text('<img src="pictures/wrong.png" width="1" height="2" alt="A box">', encoding="utf-8")

    def take(self):
        for name in SCRIPT_MODULE.PICTURES.values():
            (self.taken / name).write_bytes(picture(1000, 720))

    def test_the_pictures_of_the_documents_are_those_of_the_script(self):
        manual = (ROOT / "docs" / "manual" / "index.html").read_text(encoding="utf-8")
        shown = {f"docs/manual/{name}" for name in re.findall(r'<img src="([^"]+)"', manual)}
        readme = (ROOT / "README.md").read_text(encoding="utf-8")
        shown.update(re.findall(r"!\[[^\]]*\]\(([^)]+)\)", readme))
        self.assertEqual(shown, set(SCRIPT_MODULE.PICTURES))
        for place in shown:
            self.assertTrue((ROOT / place).is_file(), place)

    def test_pictures_come_to_their_places_and_their_sizes_into_the_manual(self):
        self.take()
        (self.taken / SCRIPT_MODULE.PICTURES["docs/manual/pictures/wrong.png"]).write_bytes(picture(269, 154))
        self.assertEqual(SCRIPT_MODULE.main(self.taken, self.root), 0)
        for place, name in SCRIPT_MODULE.PICTURES.items():
            self.assertEqual((self.root / place).read_bytes(), (self.taken / name).read_bytes(), place)
        self.assertEqual(self.manual.read_text(encoding="utf-8"),
                         '<img src="pictures/wrong.png" width="269" height="154" alt="A box">')

    def test_where_a_picture_is_missing_nothing_is_changed(self):
        self.take()
        (self.taken / SCRIPT_MODULE.PICTURES["docs/pictures/hint-dark.png"]).unlink()
        self.assertEqual(SCRIPT_MODULE.main(self.taken, self.root), 1)
        for place in SCRIPT_MODULE.PICTURES:
            self.assertFalse((self.root / place).exists(), place)


if __name__ == "__main__":
    unittest.main()
