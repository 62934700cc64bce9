#!/usr/bin/env python3
"""Writes an order document of about the given size; the same seed gives the same document.

usage: make_orders.py OCTETS FILE
"""
import random
import sys

SEED = 20260101
NAMESPACE = "urn:example:orders"
WORDS = ("bolt nut washer bracket flange gasket bearing spindle housing valve pump seal hinge plate "
         "Schraube Mutter Dichtung Gehäuse Flügelmutter écrou rondelle boîtier 軸受 φίλτρο").split()
ESCAPES = ("A & B", "< 5 mm", '"zinc"', "x > y")
CITIES = ("Köln", "Lyon", "Porto", "Gdańsk", "Leeds", "Turku", "Graz", "Århus")
STREETS = ("Hauptstraße", "Rue de la Paix", "High Street", "Via Roma", "Avenida da Liberdade")
CURRENCIES = ("EUR", "USD", "GBP", "PLN")


def escaped(text):
    return text.replace("&", "&amp;").replace("<", "&lt;").replace(">", "&gt;")


def attribute(text):
    return escaped(text).replace('"', "&quot;")


def phrase(r, low, high):
    words = [r.choice(WORDS) for _ in range(r.randint(low, high))]
    if r.random() < 0.1:
        words.insert(r.randint(0, len(words)), r.choice(ESCAPES))
    return " ".join(words)


def date(r):
    return "%04d-%02d-%02d" % (r.randint(2015, 2026), r.randint(1, 12), r.randint(1, 28))


def item(r, line):
    yield '      <Item line="%d" sku="%s-%05d">' % (
        line, "".join(r.choice("ABCDEFGH") for _ in range(3)), r.randint(0, 99999))
    yield "        <Description>%s</Description>" % escaped(phrase(r, 2, 8))
    yield "        <Quantity>%d</Quantity>" % r.randint(1, 5000)
    yield "        <UnitPrice>%s</UnitPrice>" % repr(round(r.uniform(0.01, 2000.0), 2))
    if r.random() < 0.7:
        yield "        <Weight>%s</Weight>" % repr(round(r.uniform(0.001, 90.0), 3))
    yield "        <ShipDate>%s</ShipDate>" % date(r)
    if r.random() < 0.3:
        yield "        <Backordered>%s</Backordered>" % r.choice(("true", "false"))
    if r.random() < 0.2:
        yield "        <Note>%s</Note>" % escaped(phrase(r, 8, 30))
    yield "      </Item>"


def order(r, number):
    yield '  <Order id="%d" currency="%s" reference="%s">' % (
        number, r.choice(CURRENCIES), attribute(phrase(r, 1, 3)))
    yield "    <OrderDate>%sT%02d:%02d:%02dZ</OrderDate>" % (
        date(r), r.randint(0, 23), r.randint(0, 59), r.randint(0, 59))
    yield '    <Customer number="%d">' % r.randint(1, 10**9)
    yield "      <Name>%s</Name>" % escaped(phrase(r, 2, 3))
    yield "      <Address>"
    yield "        <Street>%s %d</Street>" % (r.choice(STREETS), r.randint(1, 300))
    yield "        <City>%s</City>" % r.choice(CITIES)
    yield "        <PostCode>%05d</PostCode>" % r.randint(0, 99999)
    yield "        <Country>%s</Country>" % r.choice(("DE", "FR", "PT", "PL", "GB", "FI", "AT", "DK"))
    yield "      </Address>"
    yield "    </Customer>"
    yield "    <Items>"
    for line in range(1, r.randint(2, 16)):
        yield from item(r, line)
    yield "    </Items>"
    yield "  </Order>"


def lines(octets):
    r = random.Random(SEED)
    yield '<?xml version="1.0" encoding="UTF-8"?>'
    yield '<Orders xmlns="%s" created="%s">' % (NAMESPACE, date(r))
    written, number = 0, 0
    while written < octets:
        number += 1
        for line in order(r, number):
            written += len(line.encode()) + 1
            yield line
    yield "</Orders>"


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
