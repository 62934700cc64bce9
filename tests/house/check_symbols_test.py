"""Tests of scripts/check_symbols.py on lines as nm writes them."""

import os
import sys
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(__file__), "..", "..", "scripts"))
import check_symbols  # noqa: E402


class CheckSymbols(unittest.TestCase):
    def test_accepts_our_names_in_every_form(self):
        lines = [
            "0001 T QzXmlLib16::CXmlDocument::Parse(char const*, unsigned int)",
            "0002 V vtable for QzXmlLib16Data::CElementInfo",
            "0003 V typeinfo name for CInstanceMonitor",
            "0004 T CQZCriticalSection::Enter()",
            "0005 W CSmartPtr<QzXmlLib16::CElement>::~CSmartPtr()",
            "0006 T non-virtual thunk to QzXmlLib16::CElement::~CElement()",
            "0007 T bool QzXmlLib16::detail::Reads<int>(char const*, int&)",
            "0008 T std::vector<int> QzXmlLib16::detail::All<QzXmlLib16::CElement>(int)",
            "0009 B QzXmlLib16::CXmlGeneratedClass::m_csInit",
        ]
        self.assertEqual(([], 9), check_symbols.offences(lines))

    def test_accepts_weak_instances_of_the_standard_library(self):
        lines = ["0001 W std::vector<int, std::allocator<int> >::push_back(int const&)",
                 "0002 u std::__something<int>::value"]
        self.assertEqual(([], 0), check_symbols.offences(lines))

    def test_finds_a_name_of_another_library_and_a_helper_without_a_namespace(self):
        lines = ["0001 T XML_Parse", "0002 T helper(int)", "0003 D table",
                 "0004 T std::map<int, QzXmlLib16::X<int>> helper<QzXmlLib16::X<int>>(int)"]
        self.assertEqual((["T XML_Parse", "T helper(int)", "D table",
                           "T std::map<int, QzXmlLib16::X<int>> helper<QzXmlLib16::X<int>>(int)"], 0),
                         check_symbols.offences(lines))


if __name__ == "__main__":
    unittest.main()
