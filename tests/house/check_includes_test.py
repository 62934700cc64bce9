"""Tests of scripts/check_includes.py: small trees with one offence each."""

import os
import sys
import tempfile
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(__file__), "..", "..", "scripts"))
import check_includes  # noqa: E402


class CheckIncludes(unittest.TestCase):
    def offences(self, files):
        with tempfile.TemporaryDirectory() as root:
            for path, lines in files.items():
                path = os.path.join(root, path)
                os.makedirs(os.path.dirname(path), exist_ok=True)
                with open(path, "w", encoding="utf-8") as source:
                    source.write("\n".join(lines) + "\n")
            return check_includes.offences(root)

    def test_accepts_what_is_in_order(self):
        self.assertEqual([], self.offences({
            "qzxml/platform/File.h": ["#include <string>"],
            "qzxml/platform/File.cpp": ['#include "qzxml/platform/File.h"', "#include <fcntl.h>"],
            "qzxml/runtime/Stream.h": ['#include "qzxml/platform/File.h"'],
            "qzxml/xml/ExpatReader.h": [],
            "qzxml/xml/ExpatReader.cpp": ['#include "qzxml/xml/ExpatReader.h"',
                                          "#include <expat.h>"],
        }))

    def test_finds_a_system_header_outside_platform(self):
        self.assertEqual(
            ["qzxml/runtime/A.cpp:2: <unistd.h> is not of the standard library; use platform/"],
            self.offences({"qzxml/runtime/A.cpp": ["#include <string>", "# include <unistd.h>"]}))

    def test_finds_expat_outside_its_place(self):
        found = self.offences({"qzxml/xml/XmlDocument.cpp": ["#include <expat.h>"]})
        self.assertEqual(1, len(found))
        self.assertIn("<expat.h> has its place in", found[0])

    def test_finds_a_path_that_is_not_from_the_root(self):
        self.assertEqual(['qzxml/xml/A.cpp:1: "B.h" is no header of the library'],
                         self.offences({"qzxml/xml/A.cpp": ['#include "B.h"'],
                                        "qzxml/xml/B.h": []}))

    def test_finds_a_header_that_points_upwards(self):
        found = self.offences({"qzxml/values/A.h": ['#include "qzxml/xml/B.h"'],
                               "qzxml/xml/B.h": []})
        self.assertEqual(
            ["qzxml/values/A.h:1: values includes qzxml/xml/B.h of the layer xml above it; "
             "declare the class instead"], found)

    def test_lets_a_source_point_upwards(self):
        self.assertEqual([], self.offences({"qzxml/values/A.cpp": ['#include "qzxml/xml/B.h"'],
                                            "qzxml/xml/B.h": []}))

    def test_knows_the_object_base_below_the_collections_and_the_tables_above(self):
        self.assertEqual([], self.offences({
            "qzxml/serialization/XmlObjectBase.h": [],
            "qzxml/serialization/ElementInfo.h": ['#include "qzxml/collections/A.h"'],
            "qzxml/collections/A.h": ['#include "qzxml/serialization/XmlObjectBase.h"']}))
        self.assertEqual(1, len(self.offences({
            "qzxml/serialization/ElementInfo.h": [],
            "qzxml/collections/A.h": ['#include "qzxml/serialization/ElementInfo.h"']})))

    def test_finds_a_cycle(self):
        found = self.offences({"qzxml/xml/A.h": ['#include "qzxml/xml/B.h"'],
                               "qzxml/xml/B.h": ['#include "qzxml/xml/A.h"']})
        self.assertEqual(["qzxml/xml/A.h:1: includes itself by "
                          "qzxml/xml/A.h > qzxml/xml/B.h > qzxml/xml/A.h"], found)

    def test_finds_an_own_header_that_is_not_first(self):
        found = self.offences({"qzxml/xml/A.cpp": ["#include <string>", '#include "qzxml/xml/A.h"'],
                               "qzxml/xml/A.h": []})
        self.assertEqual(['qzxml/xml/A.cpp:1: begins with another header than "qzxml/xml/A.h"'],
                         found)

    def test_finds_a_folder_without_a_layer(self):
        self.assertEqual(["qzxml/odd/A.h:1: the folder has no place in the order of the layers"],
                         self.offences({"qzxml/odd/A.h": []}))


if __name__ == "__main__":
    unittest.main()
