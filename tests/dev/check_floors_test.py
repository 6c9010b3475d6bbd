#!/usr/bin/env python3
"""dev/check_floors reports the includes that go against the order of the folders, and nothing else."""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SCRIPT = Path(__file__).resolve().parents[2] / "dev" / "check_floors"


class CheckFloors(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.root = Path(self.folder.name)
        for name in ["common/text.h", "platform/clock.h", "platform/controls.h", "platform/desktop.h",
                     "platform/f_msgbox.h", "platform/form1.h", "platform/sqlite/connection.h", "platform/qt/window.h",
                     "app/base/trace.h", "app/start/start.h", "store/course.h", "drill/scoring.h", "bank/editing.h",
                     "exchange/import.h", "exchange/decks/deck.h", "keep/removed.h", "support/help.h", "drill/dialog.h", "program/wiring.h"]:
            self.write(name)

    def write(self, name, *lines):
        path = self.root / "src" / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text("#pragma once\n\n" + "".join(line + "\n" for line in lines), encoding="utf-8")

    def run_check(self):
        return subprocess.run([sys.executable, SCRIPT, "--root", self.root], capture_output=True, text=True, check=False)

    def assert_good(self, name, *lines):
        self.write(name, *lines)
        result = self.run_check()
        self.assertEqual((result.returncode, result.stderr), (0, ""))

    def assert_bad(self, name, line, words):
        self.write(name, "#include <string>", line)
        result = self.run_check()
        self.assertEqual(result.returncode, 1)
        self.assertEqual(result.stderr, f"src/{name}:4: {words}\n")

    def test_includes_downwards_and_within_a_room_are_good(self):
        self.assert_good("drill/keys.cpp", '#include "drill/dialog.h"', '#include "exchange/import.h"',
                         '#include "support/help.h"', '#include "bank/editing.h"', '#include "common/text.h"')

    def test_an_include_upwards_is_named_with_its_line(self):
        self.assert_bad("scheduler/scoring.cpp", '#include "drill/dialog.h"',
                        "scheduler may not include drill (drill/dialog.h)")

    def test_what_is_kept_may_use_the_text_files_and_not_the_other_way_round(self):
        self.assert_good("keep/file.cpp", '#include "exchange/import.h"')
        self.assert_bad("exchange/export.cpp", '#include "keep/removed.h"',
                        "exchange may not include keep (keep/removed.h)")

    def test_files_of_other_programs_use_the_import_and_not_the_other_way_round(self):
        self.assert_good("exchange/decks/reader.cpp", '#include "exchange/import.h"')
        self.assert_bad("exchange/import.cpp", '#include "exchange/decks/deck.h"',
                        "exchange may not include exchange/decks (exchange/decks/deck.h)")

    def test_rooms_of_one_floor_do_not_see_each_other(self):
        self.assert_bad("exchange/import.cpp", '#include "support/help.h"',
                        "exchange may not include support (support/help.h)")

    def test_the_interfaces_see_no_adapter(self):
        self.assert_bad("platform/database.h", '#include "platform/sqlite/connection.h"',
                        "platform may not include platform/sqlite (platform/sqlite/connection.h)")

    def test_an_adapter_sees_no_logic(self):
        self.assert_bad("platform/qt/window.cpp", '#include "drill/dialog.h"',
                        "platform/qt may not include drill (drill/dialog.h)")

    def test_an_adapter_sees_no_other_adapter(self):
        self.assert_bad("platform/qt/window.cpp", '#include "platform/sqlite/connection.h"',
                        "platform/qt may not include platform/sqlite (platform/sqlite/connection.h)")

    def test_logic_sees_no_adapter(self):
        self.assert_bad("store/course.cpp", '#include "platform/sqlite/connection.h"',
                        "store may not include platform/sqlite (platform/sqlite/connection.h)")

    def test_a_room_without_windows_sees_neither_controls_nor_boxes(self):
        for room in ["store", "scheduler", "bank", "exchange", "exchange/decks"]:
            self.assert_good(f"{room}/file.cpp", '#include "platform/clock.h"')
            for header in ["desktop", "controls", "form1", "f_msgbox"]:
                self.assert_bad(f"{room}/file.cpp", f'#include "platform/{header}.h"',
                                f"{room} may show no window and no box (platform/{header}.h)")
            self.write(f"{room}/file.cpp")

    def test_a_room_with_windows_sees_them(self):
        self.assert_good("drill/dialog.cpp", '#include "platform/desktop.h"', '#include "platform/controls.h"',
                         '#include "platform/form1.h"', '#include "platform/f_msgbox.h"')

    def test_both_halves_of_app_have_their_own_floor(self):
        self.assert_good("app/start/start.cpp", '#include "drill/dialog.h"', '#include "app/base/trace.h"')
        self.assert_bad("app/base/trace.cpp", '#include "app/start/start.h"',
                        "app/base may not include app/start (app/start/start.h)")

    def test_the_program_itself_sees_everything(self):
        self.assert_good("main.cpp", '#include "program/wiring.h"', '#include "platform/qt/window.h"',
                         '#include "drill/dialog.h"', "#include <QApplication>")
        self.assert_good("program/wiring.cpp", '#include "platform/sqlite/connection.h"', "#include <QtWidgets/QLabel>")

    def test_nobody_sees_the_program(self):
        self.assert_bad("app/start/start.cpp", '#include "program/wiring.h"',
                        "app/start may not include program (program/wiring.h)")

    def test_the_command_line_tools_have_no_window(self):
        self.assert_good("tools/make.cpp", '#include "exchange/import.h"', '#include "platform/sqlite/connection.h"')
        self.assert_bad("tools/make.cpp", '#include "drill/dialog.h"', "tools may not include drill (drill/dialog.h)")
        self.assert_bad("tools/make.cpp", '#include "platform/qt/window.h"',
                        "tools may not include platform/qt (platform/qt/window.h)")

    def test_foreign_headers_stay_in_their_adapter(self):
        self.assert_good("platform/sqlite/connection.cpp", "#include <sqlite3.h>")
        self.assert_good("platform/icu/compare.cpp", "#include <unicode/coll.h>")
        self.assert_good("platform/archive/zip.cpp", "#include <zip.h>", "#include <zstd.h>")
        self.assert_good("platform/qt/window.cpp", "#include <QWidget>", '#include "window.moc"')
        self.assert_good("platform/qt_xml/reader.cpp", "#include <QXmlStreamReader>")
        for line, words in [("#include <sqlite3.h>", "bank may not use SQLite (sqlite3.h)"),
                            ("#include <unicode/ustring.h>", "bank may not use ICU (unicode/ustring.h)"),
                            ("#include <zip.h>", "bank may not use libzip (zip.h)"),
                            ("#include <zstd.h>", "bank may not use libzstd (zstd.h)"),
                            ("#include <QString>", "bank may not use Qt (QString)"),
                            ("#include <QtCore/QString>", "bank may not use Qt (QtCore/QString)"),
                            ("#include <qstring.h>", "bank may not use Qt (qstring.h)")]:
            self.assert_bad("bank/editing.cpp", line, words)

    def test_an_include_that_leads_nowhere_is_found(self):
        self.assert_bad("bank/editing.cpp", '#include "editing.h"', "editing.h is no file of src/; paths start at src/")

    def test_a_folder_without_a_floor_is_found(self):
        self.write("cellar/wine.cpp", '#include "common/text.h"')
        result = self.run_check()
        self.assertEqual(result.returncode, 1)
        self.assertIn("src/cellar/wine.cpp:3: this folder is no room of the house", result.stderr)

    def test_blanks_around_the_hash_do_not_hide_an_include(self):
        self.assert_bad("store/course.cpp", '  #  include "drill/dialog.h"', "store may not include drill (drill/dialog.h)")

    def test_a_folder_without_sources_is_refused(self):
        result = subprocess.run([sys.executable, SCRIPT, "--root", self.root / "src"], capture_output=True, text=True,
                                check=False)
        self.assertEqual(result.returncode, 2)
        self.assertIn("holds no folder src", result.stderr)


if __name__ == "__main__":
    unittest.main()
