#!/usr/bin/env python3
"""dev/compare_pictures finds the pictures that differ, shows them on a page, and tells it with its exit code."""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SCRIPT = Path(__file__).resolve().parents[2] / "dev" / "compare_pictures"


class ComparePictures(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.root = Path(self.folder.name)

    def write(self, name, content):
        path = self.root / name
        path.parent.mkdir(exist_ok=True)
        path.write_bytes(content)

    def compare(self):
        result = subprocess.run([sys.executable, SCRIPT, self.root], capture_output=True, text=True, check=False)
        index = self.root / "index.html"
        return result.returncode, index.read_text(encoding="utf-8") if index.exists() else None

    def test_the_same_pictures_are_no_difference(self):
        for folder in ("before", "now"):
            self.write(f"{folder}/start.png", b"picture")
        code, page = self.compare()
        self.assertEqual(code, 0)
        self.assertIn("0 of 1 pictures differ.", page)
        self.assertNotIn("start", page)

    def test_a_picture_that_differs_is_shown_side_by_side(self):
        for name in ("answer.png", "start.png"):
            self.write(f"before/{name}", b"picture")
            self.write(f"now/{name}", b"picture")
        self.write("now/start.png", b"other")
        code, page = self.compare()
        self.assertEqual(code, 1)
        self.assertIn("1 of 2 pictures differ.", page)
        self.assertIn('<img src="before/start.png"', page)
        self.assertIn('<img src="now/start.png"', page)
        self.assertNotIn("answer", page)

    def test_a_picture_that_is_on_one_side_only_differs(self):
        self.write("before/start.png", b"picture")
        self.write("now/start.png", b"picture")
        self.write("now/new.png", b"picture")
        code, page = self.compare()
        self.assertEqual(code, 1)
        self.assertIn("There is no such picture.", page)
        self.assertIn('<img src="now/new.png"', page)
        self.assertNotIn('src="before/new.png"', page)

    def test_no_pictures_are_an_error(self):
        self.assertEqual(self.compare(), (2, None))


if __name__ == "__main__":
    unittest.main()
