"""Each lint check must find a violation, and must let good code pass."""
import os
import sys
import tempfile
import unittest

import format as format_check
import headers
import layers
import sizes
import texts
import words

DIAGRAM = layers.Diagram("folder base :\nfolder dao : base\nfolder dao/engine : dao base\nfolder apps/tool : dao base\n"
                         "only engine.h : dao/engine\ndoor dao/engine/Door.h : dao\nnowhere sys/*\npublic dao/Database.h\n")


def layer_findings(name, line):
    return layers.check(DIAGRAM, name, line + "\n")


class Layers(unittest.TestCase):
    def test_found(self):
        self.assertTrue(layer_findings("base/A.cpp", '#include "dao/Database.h"'))
        self.assertTrue(layer_findings("dao/A.cpp", "#include <engine.h>"))
        self.assertTrue(layer_findings("dao/A.cpp", "#  include <sys/stat.h>"))
        self.assertTrue(layer_findings("dao/A.cpp", '#include "Database.h"'))
        self.assertTrue(layer_findings("apps/tool/main.cpp", '#include "dao/Cursor.h"'))
        self.assertTrue(layer_findings("dao/A.cpp", '#include "dao/engine/Statement.h"'))
        self.assertTrue(layer_findings("base/A.cpp", '#include "dao/engine/Door.h"'))
        self.assertTrue(layer_findings("elsewhere/A.cpp", ""))

    def test_passed(self):
        self.assertFalse(layer_findings("dao/A.cpp", '#include "base/types.h"'))
        self.assertFalse(layer_findings("dao/A.cpp", '#include "dao/engine/Door.h"'))
        self.assertFalse(layer_findings("dao/engine/A.cpp", "#include <engine.h>"))
        self.assertFalse(layer_findings("apps/tool/main.cpp", '#include "dao/Database.h"'))
        self.assertFalse(layer_findings("base/A.cpp", '// #include "dao/Database.h"'))


class Sizes(unittest.TestCase):
    def test_files(self):
        self.assertTrue(sizes.check_file("a.cpp", "\n" * 501))
        self.assertTrue(sizes.check_file("a.h", "\n" * 351))
        self.assertFalse(sizes.check_file("a.cpp", "\n" * 500))

    def function_of(self, lines, head="int f(int a)"):
        return "namespace n {\nclass C {\n" + head + " {\n" + "a({1, 2});\n" * (lines - 2) + "}\n};\n}\n"

    def test_functions(self):
        self.assertTrue(sizes.check_functions("a.cpp", self.function_of(61)))
        self.assertFalse(sizes.check_functions("a.cpp", self.function_of(60)))
        self.assertTrue(sizes.check_functions("a.cpp", self.function_of(61, "C() : a_{1}, b_(2)")))
        self.assertTrue(sizes.check_functions("a.cpp", self.function_of(61, "template<class T> void g(T t) const noexcept")))
        self.assertTrue(sizes.check_functions("a.cpp", self.function_of(61, 'auto h(const char* s = "{", char c = \'{\')')))

    def test_containers(self):
        self.assertFalse(sizes.check_functions("a.h", "struct S {\n" + "int a();\n" * 70 + "};\n"))
        self.assertFalse(sizes.check_functions("a.cpp", "const int t[] = {\n" + "f(1),\n" * 70 + "};\n"))


class Words(unittest.TestCase):
    def test_found(self):
        for line in ("see the " + "spec", "as in Pa" + "rt 2.3", "is" + "sue 7", "/wo" + "rk/main", "// TO" + "DO"):
            self.assertTrue(words.check("src/a.cpp", line), line)
        self.assertTrue(words.check("tests/a.cpp", "TEST(A, DIS" + "ABLED_b)"))

    def test_passed(self):
        self.assertFalse(words.check("src/a.cpp", "// a part of the work; the species is special"))


class Texts(unittest.TestCase):
    def findings(self, line):
        return texts.check(texts.Allowed("# names\nWährung\nfile src/data/*.cpp sample rows\n"), "src/a.cpp", line)

    def test_found(self):
        self.assertTrue(self.findings('f(u"Öffnen"_s);'))
        self.assertTrue(self.findings('f(u"Datei nicht gefunden"_s);'))
        self.assertTrue(self.findings('f("L\\u00f6schen");'))

    def test_passed(self):
        self.assertFalse(self.findings('f(u"[Währung]=1"_s); // Öffnen'))
        self.assertFalse(texts.check(texts.Allowed("file src/data/*.cpp rows"), "src/data/a.cpp", 'u"Öl"'))


class Headers(unittest.TestCase):
    def test_compiled_alone(self):
        with tempfile.TemporaryDirectory() as folder:
            for name, text in (("Good.h", "#include <string>\nstd::string a();\n"), ("Bad.h", "std::string b();\n")):
                with open(os.path.join(folder, name), "w", encoding="utf-8") as file:
                    file.write(text)
            by_folder = {"": ["-I" + folder]}
            self.assertFalse(headers.check("Good.h", by_folder, folder))
            self.assertTrue(headers.check("Bad.h", by_folder, folder))
            self.assertTrue(headers.check("nowhere/Lost.h", {}, folder))


class Format(unittest.TestCase):
    def test_found(self):
        with tempfile.TemporaryDirectory() as folder:
            path = os.path.join(folder, "a.cpp")
            for text, found in (("int   a ;\n", True), ("int a;\n", False)):
                with open(path, "w", encoding="utf-8") as file:
                    file.write(text)
                self.assertEqual(bool(format_check.check([path])), found)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
