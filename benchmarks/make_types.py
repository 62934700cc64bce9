#!/usr/bin/env python3
"""Writes a schema of so many types: complex ones with values, objects, collections, choices and
derivation, and a simple one for every ten.

usage: make_types.py TYPES FILE
"""
import sys


def simple_type(number):
    yield '  <xs:simpleType name="Code%d">' % number
    if number % 2:
        yield '    <xs:restriction base="xs:token">'
        for value in range(5):
            yield '      <xs:enumeration value="value %d"/>' % value
    else:
        yield '    <xs:restriction base="xs:int">'
        yield '      <xs:minInclusive value="%d"/>' % number
    yield "    </xs:restriction>"
    yield "  </xs:simpleType>"


def content(number, codes):
    yield '        <xs:element name="name%d" type="xs:string"/>' % number
    yield '        <xs:element name="count%d" type="xs:int"/>' % number
    yield '        <xs:element name="price%d" type="xs:decimal" minOccurs="0"/>' % number
    yield '        <xs:element name="day%d" type="xs:date" minOccurs="0"/>' % number
    yield '        <xs:element name="code%d" type="Code%d"/>' % (number, number % codes)
    yield '        <xs:element name="part%d" type="Type%d" minOccurs="0"/>' % (number, number // 2)
    yield '        <xs:element name="line%d" type="Type%d" minOccurs="0" maxOccurs="unbounded"/>' % (
        number, number // 3)
    if number % 5 == 0:
        yield "        <xs:choice>"
        yield '          <xs:element name="left%d" type="xs:string"/>' % number
        yield '          <xs:element name="right%d" type="xs:boolean"/>' % number
        yield "        </xs:choice>"


def complex_type(number, codes):
    base = number - 1 if number % 7 == 6 else None
    yield '  <xs:complexType name="Type%d">' % number
    if base is not None:
        yield '    <xs:complexContent><xs:extension base="Type%d">' % base
    yield "      <xs:sequence>"
    yield from content(number, codes)
    yield "      </xs:sequence>"
    yield '      <xs:attribute name="id%d" type="xs:int" use="required"/>' % number
    yield '      <xs:attribute name="lang%d" type="xs:token" default="en"/>' % number
    if base is not None:
        yield "    </xs:extension></xs:complexContent>"
    yield "  </xs:complexType>"


def lines(count):
    codes = max(1, count // 10)
    yield '<?xml version="1.0" encoding="UTF-8"?>'
    yield '<xs:schema xmlns:xs="http://www.w3.org/2001/XMLSchema" xmlns="urn:example:types"'
    yield '           targetNamespace="urn:example:types" elementFormDefault="qualified">'
    yield '  <xs:element name="root" type="Type%d"/>' % (count - 1)
    for number in range(codes):
        yield from simple_type(number)
    for number in range(count):
        yield from complex_type(number, codes)
    yield "</xs:schema>"


def main(arguments):
    if len(arguments) != 3:
        sys.stderr.write(__doc__)
        return 2
    with open(arguments[2], "w", encoding="utf-8", newline="\n") as output:
        for line in lines(int(arguments[1])):
            output.write(line + "\n")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
