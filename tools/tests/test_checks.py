"""The checks themselves, each on a small tree that breaks its rule."""
import pathlib
import subprocess
import sys
import tempfile
import unittest

TOOLS = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(TOOLS))
# The checks lie beside this folder, not in a package.
# pylint: disable=wrong-import-position
import check_format
import check_headers
import check_includes
import check_rules
import check_sizes
import check_tidy
import check_words
import checklib
import count_tests


class TreeCase(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)

    def write(self, name, text=""):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")

    def assertOneProblem(self, problems, *parts):
        self.assertEqual(len(problems), 1, problems)
        for part in parts:
            self.assertIn(part, problems[0])


class Includes(TreeCase):
    def order(self, *stems):
        self.write("tools/include_order.txt", "# lowest first\n" + "\n".join(stems) + "\n")

    def test_a_good_tree_has_no_problem(self):
        self.order("base/a", "platform/heap", "engine/b")
        self.write("src/base/a.h")
        self.write("src/base/a.cpp", '#include "base/a.h"\n')
        self.write("src/platform/heap.h")
        self.write("src/platform/win32/heap_win32.cpp", '#include "platform/heap.h"\n#include "base/a.h"\n')
        self.write("src/platform/host/heap.cpp", '#include "platform/heap.h"\n')
        self.write("src/engine/b.h", '#include "base/a.h"\n')
        self.write("src/engine/b_win.cpp", '#include "engine/b.h"\n')
        self.assertEqual(check_includes.problems(self.root), [])

    def test_an_include_from_above_is_found(self):
        self.order("base/a", "engine/b")
        self.write("src/base/a.h", '#include "engine/b.h"\n')
        self.write("src/engine/b.h")
        self.assertOneProblem(check_includes.problems(self.root), "src/base/a.h", "engine/b is not above base/a")

    def test_an_implementation_of_a_platform_header_has_that_headers_rank(self):
        self.order("platform/heap", "base/z")
        self.write("src/platform/heap.h")
        self.write("src/base/z.h")
        self.write("src/platform/win32/heap_win32.cpp", '#include "base/z.h"\n')
        self.assertOneProblem(check_includes.problems(self.root), "base/z is not above platform/heap")

    def test_an_implementation_that_is_listed_has_its_own_rank(self):
        self.order("platform/heap", "base/z", "platform/win32/heap_win32")
        self.write("src/platform/heap.h")
        self.write("src/base/z.h")
        self.write("src/platform/win32/heap_win32.cpp", '#include "base/z.h"\n#include "platform/heap.h"\n')
        self.assertEqual(check_includes.problems(self.root), [])

    def test_missing_repeated_and_unknown_stems_are_found(self):
        self.order("base/a", "base/a", "base/gone")
        self.write("src/base/a.h")
        self.write("src/base/new.h")
        text = "\n".join(check_includes.problems(self.root))
        self.assertIn("base/a is listed more than once", text)
        self.assertIn("base/new is missing", text)
        self.assertIn("base/gone has no file", text)

    def test_an_include_of_no_file_is_found(self):
        self.order("base/a")
        self.write("src/base/a.h", '#include "base/typo.h"\n')
        self.assertIn("no such file", check_includes.problems(self.root)[0])

    def test_the_engine_may_use_the_services_but_not_the_rest_of_app(self):
        self.order("app/services/memory", "app/bars", "engine/b")
        self.write("src/app/services/memory.h")
        self.write("src/app/bars.h")
        self.write("src/engine/b.h", '#include "app/services/memory.h"\n#include "app/bars.h"\n')
        self.assertOneProblem(check_includes.problems(self.root), "app/bars.h", "EditorEvents")


class Rules(TreeCase):
    def only(self, name, text, why):
        self.write(name, text)
        self.assertOneProblem(check_rules.problems(self.root), name, why)

    def test_windows_h_in_a_portable_file(self):
        self.only("src/base/a.cpp", "\n#include <windows.h>\n", "src/base/a.cpp:2")

    def test_windows_h_where_it_belongs(self):
        for name in ("src/base/a_win.cpp", "src/shell/b.cpp", "src/platform/win32/c.cpp"):
            self.write(name, "#include <windows.h>\n")
        self.assertEqual(check_rules.problems(self.root), [])

    def test_conditional_compilation(self):
        self.only("src/base/a.cpp", "#ifdef X\n#endif\n", "conditional compilation")

    def test_a_header_without_guard(self):
        self.only("src/base/a.h", "int A();\n", "#pragma once")

    def test_virtual_functions(self):
        self.only("src/base/a.cpp", "struct A { virtual void B(); };\n", "virtual")

    def test_words_in_comments_and_texts_are_no_code(self):
        self.write("src/base/a.cpp", '// virtual\n/* throw\n */ const char* x = "virtual \\" throw";\n')
        self.assertEqual(check_rules.problems(self.root), [])

    def test_a_second_place_that_throws(self):
        self.write("src/app/services/memory.cpp", "void A() { throw 1; }\n")
        self.only("src/base/a.cpp", "void A() { throw 1; }\n", "guard of the memory services")

    def test_large_headers(self):
        self.only("src/base/a.cpp", "#include <iostream>\n", "too large")


class Headers(TreeCase):
    def test_a_header_that_leans_on_others_is_found(self):
        self.write("src/base/good.h", "#pragma once\n#include <cstdint>\nextern uint8_t a;\n")
        self.write("src/base/bad.h", "#pragma once\nextern Missing b;\n")
        self.assertOneProblem(check_headers.problems(self.root), "src/base/bad.h", "Missing")

    def test_a_header_of_the_windows_folders_sees_windows_h(self):
        self.write("src/shell/a.h", "#pragma once\n#include <windows.h>\nextern HWND a;\n")
        self.assertEqual(check_headers.problems(self.root), [])


class Sizes(TreeCase):
    def test_functions_are_found_with_their_lengths(self):
        text = ("namespace a {\nstruct B {\n    int c() const {\n        return 1;\n    }\n};\n"
                "int array[] = {\n 1,\n};\n"
                "void D(int e) {\n    if (e) {\n    }\n    auto f = [] {\n    };\n}\n}\n")
        self.assertEqual(check_sizes.functions(text), [("c", 3, 3), ("D", 10, 6)])

    def test_braces_in_literals_and_directives_do_not_count(self):
        text = "#define X {\nvoid A() {\n    char c = '{';\n    const char* d = \"{\"; // {\n}\nvoid B() {\n}\n"
        self.assertEqual(check_sizes.functions(text), [("A", 2, 4), ("B", 6, 2)])

    def test_a_function_past_the_limit(self):
        self.write("tests/host/test_a.cpp", "void A() {\n" + "    ;\n" * 80 + "}\n")
        self.assertOneProblem(check_sizes.problems(self.root), "A has 82 lines")

    def test_too_many_functions_of_thirty_lines(self):
        self.write("src/base/a.cpp", "void A() {\n" + "    ;\n" * 30 + "}\n" + "void B() {\n}\n" * 8)
        self.assertIn("1 of 9 functions", check_sizes.problems(self.root)[0])
        self.write("src/base/b.cpp", "void B() {\n}\n")
        self.assertEqual(check_sizes.problems(self.root), [])

    def test_a_file_past_the_limit(self):
        self.write("src/base/a.cpp", "\n" * 601)
        self.assertOneProblem(check_sizes.problems(self.root), "601 lines")


class Words(TreeCase):
    def git(self, *arguments):
        subprocess.run(["git", "-C", str(self.root), "-c", "user.name=a", "-c", "user.email=a@b", *arguments],
                       stdout=subprocess.DEVNULL, check=True)

    def test_words_in_files_and_messages_are_found(self):
        self.git("init", "-q")
        self.write("a.txt", "fine\nas it " + "stands here\n")
        self.write("fine.txt", "a font description\n")
        self.git("add", ".")
        self.git("commit", "-q", "-m", "Follow Part " + "2.1")
        problems = check_words.problems(self.root)
        self.assertEqual(len(problems), 2, problems)
        self.assertIn("a.txt:2", problems[0])
        self.assertIn("commit messages", problems[1])

    def test_a_folder_without_history_cannot_pass(self):
        self.assertOneProblem(check_words.problems(self.root), "no git checkout")


class Format(TreeCase):
    def test_a_file_laid_out_otherwise_is_found(self):
        self.write(".clang-format", checklib.read(checklib.ROOT, ".clang-format"))
        self.write("src/base/a.cpp", "int  A( );\n")
        self.write("src/base/b.cpp", "int B();\n")
        self.assertOneProblem(check_format.problems(self.root), "src/base/a.cpp")


class Tidy(TreeCase):
    def setUp(self):
        super().setUp()
        self.write(".clang-tidy", checklib.read(checklib.ROOT, ".clang-tidy"))

    def test_a_bad_name_is_found_and_not_remembered(self):
        self.write("src/base/a.cpp", "int bad_name() { return 1; }\n")
        for _ in range(2):
            self.assertOneProblem(check_tidy.problems(self.root, self.root / "cache"), "bad_name")

    def test_a_clean_result_is_remembered_until_the_source_changes(self):
        cache = self.root / "cache"
        self.write("src/base/a.cpp", "int Good() { return 1; }\n")
        self.assertEqual(check_tidy.problems(self.root, cache), [])
        self.assertEqual(len(list(cache.iterdir())), 1)
        self.write("src/base/a.cpp", "int* Good() { return 0; }\n")
        self.assertOneProblem(check_tidy.problems(self.root, cache), "nullptr")


class Counting(TreeCase):
    def count(self, xml, code=0):
        self.write("a.xml", xml)
        return count_tests.count(self.root / "a.xml", code)

    def test_outcomes_are_counted(self):
        self.assertEqual(self.count('<t><testcase status="run"/><testcase><failure/></testcase></t>', 1), (1, 1))

    def test_a_skipped_or_disabled_test_has_failed(self):
        self.assertEqual(self.count('<t><testcase/><testcase><skipped/></testcase></t>'), (1, 1))
        self.assertEqual(self.count('<t><testcase/><testcase status="notrun"/></t>'), (1, 1))

    def test_no_file_no_test_and_a_crash_have_failed(self):
        self.assertEqual(count_tests.count(self.root / "none.xml", 0), (0, 1))
        self.assertEqual(self.count("<t/>"), (0, 1))
        self.assertEqual(self.count("<t><testcase/></t>", 139), (1, 1))


if __name__ == "__main__":
    unittest.main()
