"""Plants one violation at a time in a copy of src/ and expects .ci/check_rooms.py to name it.

    CheckRoomsTest.py BUILD
"""
import os
import shutil
import sys
import tempfile
import unittest

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
BUILD = sys.argv.pop(1)
sys.path.insert(0, os.path.join(ROOT, ".ci"))
sys.dont_write_bytecode = True
import check_rooms  # noqa: E402

CALL_UP = """
namespace dravik {
bool BoxOpen();
bool CallsUp() { return BoxOpen(); }
}
"""
NAME_QT = "class QString;\nnamespace dravik { void Show(const QString& text); }\n"

# The file, what is added to it, and the use that is to be named.
VIOLATIONS = [
    ("obd/LiveData.cpp", '#include "skin/SkinFile.h"', "obd may not use skin"),
    ("obd/LiveData.cpp", "#include <skin/SkinFile.h>", "obd may not use skin"),
    ("obd/LiveData.cpp", '#include"skin/SkinFile.h"', "obd may not use skin"),
    ("obd/LiveData.cpp", '# include "skin/SkinFile.h"', "obd may not use skin"),
    ("obd/LiveData.cpp", CALL_UP, "calls dravik::BoxOpen(): obd may not use skin"),
    ("obd/LiveData.cpp", "#include <qstring.h>", "obd may not use Qt"),
    ("obd/basOBD.h", NAME_QT, "obd may not use Qt"),
    ("settings/SettingsFile.cpp", "#include <QSettings>", "settings may not use Qt"),
    ("core/basGlobal.h", '#include "skin/SkinVocabulary.h"', "core may not use skin"),
    ("core/UpCalls.h", "#include <skin/SkinVocabulary.h>", "core may not use skin"),
    ("platform/Text.cpp", '#include "core/basGlobal.h"', "platform may not use core"),
]


class CheckRooms(unittest.TestCase):
    def check(self, file, planted):
        with tempfile.TemporaryDirectory() as root:
            shutil.copytree(os.path.join(ROOT, "src"), os.path.join(root, "src"))
            os.mkdir(os.path.join(root, "docs"))
            shutil.copy(os.path.join(ROOT, "docs/architecture.md"), os.path.join(root, "docs"))
            with open(os.path.join(root, "src", file), "a", encoding="utf-8") as text:
                text.write("\n" + planted + "\n")
            rooms = check_rooms.Rooms(root, BUILD, built_from=ROOT)
            rooms.check_one(os.path.join(root, "src", file))
            return rooms.faults

    def test_every_violation_is_named(self):
        for file, planted, fault in VIOLATIONS:
            with self.subTest(file=file, planted=planted):
                self.assertIn(fault, "\n".join(self.check(file, planted)))

    def test_the_files_as_they_are_pass(self):
        for file in sorted({file for file, _, _ in VIOLATIONS}):
            with self.subTest(file=file):
                self.assertEqual(self.check(file, ""), [])

    def test_a_cycle_in_the_table_is_named(self):
        rooms = check_rooms.Rooms(ROOT, BUILD)
        rooms.table = {"obd": {"lists"}, "lists": {"skin"}, "skin": {"obd"}}
        rooms.check_table()
        self.assertIn("a cycle of rooms", rooms.faults[0])


if __name__ == "__main__":
    unittest.main()
