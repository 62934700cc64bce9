"""Tests of scripts/check_messages.py on sources of a few lines."""

import os
import sys
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(__file__), "..", "..", "scripts"))
import check_messages  # noqa: E402


def messages(code):
    return list(check_messages.messages([("qzxml/xml/A.cpp", code)]))


def lines(code, test, document):
    return check_messages.offences([("qzxml/xml/A.cpp", code)], [("tests/xml/ATest.cpp", test)],
                                   document)[1]


class FindsMessages(unittest.TestCase):
    def test_in_a_throw(self):
        self.assertEqual(["No [%s] here"],
                         messages('throw E(FormatString("No [%s] " "here", x));'))

    def test_in_an_argument_and_in_a_constant(self):
        self.assertEqual(["No way", "Other way"],
                         messages('Refuse(p, "No way"); constexpr char kOther[] = "Other way";'))

    def test_and_neither_in_a_comment_nor_in_a_condition_nor_in_xml(self):
        self.assertEqual([], messages('// throw E("No way");\nQZ_ASSERT_TEXT(f(a), "a != 0"); '
                                      'static_assert(a, "it is so"); W("<?xml version"); '
                                      'W(" a b"); throw E("i4", \'"\');'))

    def test_with_escapes_and_raw_strings(self):
        self.assertEqual(['a "b"\nc', 'd "e"'],
                         messages('throw E("a \\"b\\"\\nc"); throw E(R"(d "e")");'))


class Compares(unittest.TestCase):
    code = 'throw CQzException(FormatString("No [%s] in %d%%", x, y));'
    row = "| `No [%s] in %d%%` | `CQzException` | cause | remedy |\n"

    def test_all_well(self):
        self.assertEqual([], lines(self.code, 'EXPECT("No [way] in 12%")', self.row))

    def test_a_text_in_pieces(self):
        self.assertEqual([], lines(self.code, 'EXPECT("No [" + name(1, 2) + "] in " + n + "%")',
                                   self.row))
        self.assertEqual([], lines(self.code, 'EXPECT(std::string("No [") + a + "] in 7%")',
                                   self.row))

    def test_a_text_within_a_longer_one(self):
        self.assertEqual([], lines(self.code, 'EXPECT("outer\\nNo [a] in 1%\\nPath: /a")', self.row))

    def test_a_message_that_is_not_in_the_catalogue(self):
        self.assertEqual(["qzxml/xml/A.cpp:1: not in docs/errors.md: No [%s] in %d%%"],
                         lines(self.code, 'EXPECT("No [way] in 12%")', ""))

    def test_a_message_of_another_class(self):
        self.assertEqual(["qzxml/xml/A.cpp:1: thrown as CQzException, not so in docs/errors.md: "
                          "No [%s] in %d%%"],
                         lines(self.code, 'EXPECT("No [way] in 12%")',
                               self.row.replace("CQz", "CQzValidation")))

    def test_a_message_without_a_test(self):
        self.assertEqual(["qzxml/xml/A.cpp:1: in no test: No [%s] in %d%%"],
                         lines(self.code, 'EXPECT("No [way", "] in 12%"); // No [way] in 12%',
                               self.row))

    def test_a_message_that_no_test_can_provoke(self):
        self.assertEqual([], lines(self.code, "",
                                   self.row.replace("remedy", "Not provoked: no memory")))

    def test_a_row_without_a_message(self):
        self.assertEqual(["docs/errors.md:2: no such message: Old text"],
                         lines(self.code, 'EXPECT("No [way] in 12%")',
                               self.row + "| `Old text` | E | cause | remedy |\n"))

    def test_line_ends_and_bars_as_the_catalogue_writes_them(self):
        self.assertEqual([], lines('throw E("a\\nb | c");', 'EXPECT("a\\nb | c")',
                                   "| `a\\nb \\| c` | E | cause | remedy |\n"))


if __name__ == "__main__":
    unittest.main()
