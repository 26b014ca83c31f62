"""Checks that the pictures for software centres are among the tour's references, in the sizes that the metadata names.

Usage: pictures_test.py ROOT, the folder of the project"""
import os
import struct
import sys
import unittest
from xml.etree import ElementTree

ROOT = sys.argv.pop(1)
METADATA = os.path.join(ROOT, "packaging/linux/app.vorn.mac.metainfo.xml")
REFERENCES = os.path.join(ROOT, "tests/VornMac/Tour/references")


def size_of(picture):
    with open(picture, "rb") as file:
        return struct.unpack(">II", file.read(24)[16:])


class Pictures(unittest.TestCase):
    def test_are_those_of_the_tour(self):
        images = list(ElementTree.parse(METADATA).iter("image"))
        self.assertGreater(len(images), 2)
        for image in images:
            folder, name = image.text.rsplit("/", 1)
            self.assertEqual(folder, "https://vorn.example/pictures")
            size = int(image.get("width")), int(image.get("height"))
            self.assertEqual(size_of(os.path.join(REFERENCES, name)), size, name)


if __name__ == "__main__":
    unittest.main()
