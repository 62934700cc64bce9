#!/usr/bin/env python3
"""Writes BigIntegerCases.inc and DecimalCases.inc, what CBigInteger and CDecimal have to answer.

  make_bignum_cases.py          writes the tables beside this script
  make_bignum_cases.py --check  fails unless the tables are what would be written

The numbers are calculated here with the integers of Python, step by step as the classes are
documented: a number is a sign and a magnitude, so that a zero may be negative; a decimal is an
integer part, a fraction part and a number of places.
"""

import pathlib
import random
import sys

HEAD = "// Made by make_bignum_cases.py: do not change it here."
DIVISION = "ERROR: Overflow in operator/."


class Failure(Exception):
    pass


class Big:
    def __init__(self, sign, magnitude):
        self.sign, self.magnitude = sign, magnitude

    @staticmethod
    def of(number):
        return Big(-1 if number < 0 else 1, abs(number))

    @staticmethod
    def read(text):
        """A text of a sign and digits."""
        return Big(-1 if text[0] == "-" else 1, int(text.lstrip("-")))

    def number(self):
        return self.sign * self.magnitude

    def text(self):
        return str(self.number())

    def signed_text(self):
        return ("-" if self.sign < 0 else "") + str(self.magnitude)

    def negative(self):
        return Big(-self.sign, self.magnitude)

    def equals(self, other):
        return self.number() == other.number()

    def less(self, other):
        """Sees the sign of a zero."""
        return (self.sign, self.number()) < (other.sign, other.number())

    def add(self, other):
        total = self.number() + other.number()
        if self.sign == other.sign:
            return Big(self.sign, abs(total))
        return Big.of(total)

    def subtract(self, other):
        return self.add(other.negative())

    def multiply(self, other):
        return Big(self.sign * other.sign, self.magnitude * other.magnitude)

    def divide(self, other, quotient=True):
        if self.magnitude == 0:
            return Big(1, 0)
        if quotient:
            return Big(self.sign * other.sign, self.magnitude // other.magnitude)
        return Big(self.sign, self.magnitude % other.magnitude)

    def calculate(self, operator, other):
        if operator == "/" and other.magnitude == 0:
            raise Failure(DIVISION)
        if operator in ("/=", "%", "%=") and (other.magnitude == 0 or other.sign < 0):
            raise Failure({"/=": "ERROR: Overflow in operator /=.",
                           "%": "ERROR: Overflow in operator%.",
                           "%=": "ERROR: Overflow in operator%=."}[operator])
        if operator in ("/", "/="):
            return self.divide(other)
        if operator in ("%", "%="):
            return self.divide(other, quotient=False)
        if operator in ("+", "+="):
            return self.add(other)
        if operator in ("-", "-="):
            return self.subtract(other)
        return self.multiply(other)

    def root(self):
        if self.less(Big(1, 0)):
            raise Failure("ERROR: Negative Number in function SquareRoot().")
        rest, guess = self.magnitude // 100, 10
        while rest > 0:
            rest, guess = rest // 100, guess * 10
        while True:
            last = guess
            if last == 0:
                raise Failure(DIVISION)
            guess = (guess + self.magnitude // guess) // 2
            if not guess < last:
                return Big(1, last)

    def long_long(self):
        if not -2**63 <= self.number() < 2**63:
            raise Failure("ERROR: Value out of bound of LONGLONG.")
        total, place = 0, 1
        for digit in reversed(str(self.magnitude)):
            total += self.sign * (int(digit) * place % 2**32)
            place = place * 10 % 2**32
        return Big.of(total)

    def to_int(self):
        if not -2**31 <= self.number() < 2**31:
            raise Failure("ERROR: Value out of bound of int.")
        return self


def power(exponent):
    return Big(1, 10**exponent)


class Dec:
    most = 30

    def __init__(self, integer, fraction, places):
        self.integer, self.fraction, self.places = integer, fraction, places

    def copy(self):
        return Dec(self.integer, self.fraction, self.places)

    @staticmethod
    def read(text):
        """A text without white space and with its sign in front."""
        mantissa, _, exponent = text.lower().partition("e")
        integer, _, fraction = mantissa.lstrip("+-").partition(".")
        result = Dec(Big(1, int(integer or "0")), Big(1, int(fraction or "0")),
                     max(1, len(fraction)))
        if mantissa.startswith("-"):
            result = result.negative()
        if exponent:
            factor = Dec(power(abs(int(exponent))), Big(1, 0), 1)
            negative = exponent.startswith("-")
            result = result.divide(factor) if negative else result.multiply(factor)
        return result.finish()

    def finish(self):
        self.rationalise()
        if self.places > Dec.most:
            self.change(Dec.most)
        return self

    def negative(self):
        return Dec(self.integer.negative(), self.fraction.negative(), self.places)

    def change(self, places):
        if self.places <= places:
            self.fraction = self.fraction.multiply(power(places - self.places))
            self.places = places
            return
        p = power(self.places - places)
        rest = self.fraction.divide(p, quotient=False)
        self.fraction = self.fraction.divide(p)
        self.places = places
        turn = 0
        if 2 * rest.number() > p.number():
            turn = 1
        elif 2 * rest.number() < -p.number():
            turn = -1
        if turn == 0:
            return
        if places == 0:
            self.integer = self.integer.add(Big.of(turn))
            return
        q = power(places)
        self.fraction = self.fraction.add(Big.of(turn))
        if self.integer.number() > 0 and self.fraction.number() < 0:
            self.fraction, self.integer = self.fraction.add(q), self.integer.subtract(power(0))
        if self.integer.number() < 0 and self.fraction.number() > 0:
            self.fraction, self.integer = self.fraction.subtract(q), self.integer.add(power(0))
        if self.integer.number() == 0:
            self.integer = Big(self.fraction.sign, 0)

    def rationalise(self):
        digits = str(self.fraction.magnitude)
        field = digits.rjust(self.places, "0") if len(digits) <= self.places else "0" * self.places
        for index in range(self.places - 1, 0, -1):
            if field[index] != "0":
                break
            self.fraction = self.fraction.divide(Big(1, 10))
            self.places -= 1

    @staticmethod
    def normalize(a, b):
        a, b = a.copy(), b.copy()
        places = max(a.places, b.places)
        for number in (a, b):
            if number.places != places:
                number.change(places)
        return a, b, places

    def add(self, other):
        a, b, places = Dec.normalize(self, other)
        p, one = power(places), power(0)
        f, i = a.fraction.add(b.fraction), a.integer.add(b.integer)
        while f.number() >= p.number():
            f, i = f.subtract(p), i.add(one)
        while f.number() <= -p.number():
            f, i = f.add(p), i.subtract(one)
        if i.number() > 0 and f.number() < 0:
            f, i = f.add(p), i.subtract(one)
        if i.number() < 0 and f.number() > 0:
            f, i = f.subtract(p), i.add(one)
        if i.number() == 0:
            i = Big(f.sign, 0)
        result = Dec(i, f, places)
        result.rationalise()
        return result

    def subtract(self, other):
        return self.add(other.negative())

    def multiply(self, other):
        a, b, places = Dec.normalize(self, other)
        p, pp = power(places), power(2 * places)
        total = a.integer.multiply(b.integer).multiply(pp)
        total = total.add(a.integer.multiply(b.fraction).multiply(p))
        total = total.add(a.fraction.multiply(b.integer).multiply(p))
        total = total.add(a.fraction.multiply(b.fraction))
        return Dec(total.divide(pp), total.divide(pp, quotient=False), 2 * places).finish()

    def divide(self, other):
        a, b, places = Dec.normalize(self, other)
        p, q = power(places), power(Dec.most + 2)
        above = p.multiply(a.integer).add(a.fraction).multiply(q)
        below = p.multiply(b.integer).add(b.fraction)
        if below.magnitude == 0:
            raise Failure(DIVISION)
        v = above.divide(below)
        return Dec(v.divide(q), v.divide(q, quotient=False), Dec.most + 2).finish()

    def calculate(self, operator, other):
        return {"+": self.add, "-": self.subtract, "*": self.multiply,
                "/": self.divide}[operator](other)

    def order(self, other):
        """Which of == < <= > >= hold."""
        a, b, _ = Dec.normalize(self, other)
        same = a.integer.equals(b.integer)
        less, more = a.integer.less(b.integer), b.integer.less(a.integer)
        fraction_less, fraction_more = a.fraction.less(b.fraction), b.fraction.less(a.fraction)
        holds = {
            "==": same and a.fraction.equals(b.fraction),
            "<": less or (same and fraction_less),
            "<=": less or (same and not fraction_more),
            ">": more or (same and fraction_more),
            ">=": more or (same and not fraction_less),
        }
        return " ".join(name for name, answer in holds.items() if answer)

    def sign_text(self):
        return "-" if self.integer.sign < 0 else ""

    def fraction_text(self):
        return str(self.fraction.magnitude).rjust(self.places, "0")

    def text(self):
        if self.fraction.magnitude == 0:
            return self.integer.text()
        return f"{self.sign_text()}{self.integer.magnitude}.{self.fraction_text()}"

    def text_of_places(self, places):
        total = Dec.read(self.sign_text() + "0." + "5".rjust(places + 1, "0")).add(self)
        return f"{total.sign_text()}{total.integer.magnitude}.{total.fraction_text()[:places]}"

    def parts(self):
        return (f"{self.integer.signed_text()} {self.fraction.signed_text()} {self.places} "
                f"{self.text()}")

    def to_big(self):
        number = self.copy()
        number.change(0)
        return number.integer

    def to_long(self):
        number = self.copy()
        number.change(0)
        if number.fraction.magnitude or not -2**31 <= number.integer.number() < 2**31:
            raise Failure("The Decimal value if to large to fit into a LONG")
        return number.integer

    def to_long_long(self):
        number = self.copy()
        number.change(1)
        scaled = number.integer.number() * 10 + number.fraction.number()
        if not -2**63 * 10 <= scaled <= (2**63 - 1) * 10:
            raise Failure("The Decimal value if to large to fit into a LONGLONG")
        return number.integer


def answer(calculate, show):
    try:
        return show(calculate())
    except Failure as failure:
        return str(failure)


SMALL = ["0", "-0", "7", "-7", "2", "-2"]

INTEGERS = ["0", "-0", "1", "-1", "3", "-5", "7", "9", "10", "-10", "99",
            "100", "-101", "999999999", "1000000000", "-1000000001", "2147483647", "-2147483648",
            "4294967296", "999999999999999999", "1000000000000000000", "9999999999999999999",
            "-10000000000000000000", "18446744073709551616",
            "123456789012345678901234567890", "-999999999999999999999999999999999999",
            "500000000000000000000000000", "499999999999999999999999999999999999999"]

NARROW = ["0", "-0", "7", "-10", "2147483647", "2147483648", "-2147483648", "-2147483649",
          "4999999999", "-4999999999", "5000000000", "-5000000000", "9999999999", "10000000000",
          "99999999999", "9223372036854775807", "-9223372036854775808", "9223372036854775808",
          "-9223372036854775809", "1234567890123456789", "100000000000000000000"]

DECIMALS = ["0", "-0", "1", "-1", "-1.00", "-3", "0.5", "-0.5", "0.1", "0.2", "1.005", "-1.005",
            "-99.99", "12.6", "0.000000000000000000000000000001", "123456789012345678901234567890",
            "0.333333333333333333333333333333", "-98765432109876543210.0123456789",
            "0.499999999999999999999999999999"]

ROUNDED = ["0.996", "0.995", "0.994", "-0.996", "-0.995", "1.996", "-1.996", "-0.001", "0.001",
           "0.006", "-0.006", "1.25", "1.26", "1.35", "-1.25", "-1.26", "12.6", "12.5", "12.4",
           "0.5", "0.51", "-0.5", "-0.51", "1.96", "1.95", "9.99", "9.995", "9.9951", "0.000",
           "-0.00", "-1", "-1.00", "7", "2.50", "0.05", "0.049", "123.456789"]

CONVERTED = ["0", "-0", "1.5", "1.6", "2.5", "-1.5", "-1.6", "-0.4", "-0.6", "1.96", "1.94",
             "-1.96",
             "0.96", "-0.96", "2147483647", "2147483647.5", "2147483647.6", "2147483648",
             "-2147483648", "-2147483648.5", "-2147483648.6", "-2147483649",
             "9223372036854775807", "9223372036854775807.04", "9223372036854775807.1",
             "9223372036854775808", "-9223372036854775808", "-9223372036854775808.0",
             "-9223372036854775808.05", "-9223372036854775808.2", "-9223372036854775809",
             "9223372036854775806.96", "99999999999999999999999"]

EXPONENTS = ["1.5e2", "15E-1", "1e0", "-5e0", "-5.00e0", "-0e3", "1e-30", "1e-31", "5e-31",
             "6e-31", "-6e-31", "1.23e1", "1.23e5", "-1.23e-5", "0.00012e3", "0e1024", "1e511",
             "123e-3", "99999999999999999999999999999999.5e-1",
             "0.4999999999999999999999999999999e0", "0.9999999999999999999999999999999e0",
             "1.0000000000000000000000000000005e1"]

LONG_FRACTIONS = ["0.1234567890123456789012345678901", "0.1234567890123456789012345678905",
                  "0.1234567890123456789012345678906", "0.12345678901234567890123456789051",
                  "-0.1234567890123456789012345678906", "0.9999999999999999999999999999995",
                  "0.9999999999999999999999999999996", "-7.9999999999999999999999999999996",
                  "0.5000000000000000000000000000001", "0.0000000000000000000000000000004",
                  "-0.0000000000000000000000000000004", "1.000000000000000000000000000000"]


def integer_rows():
    rows = []
    operators = ("+", "-", "*", "/", "%", "/=", "%=", "+=", "-=", "*=")
    rng = random.Random(20040506)
    small = [(a, b) for a in SMALL for b in SMALL]
    pairs = [(a, b, name) for a, b in small for name in operators]
    pairs += [(a, b, rng.choice(operators)) for a in INTEGERS for b in INTEGERS]
    for a, b, name in pairs:
        rows.append((a, name, b, answer(
            lambda: Big.read(a).calculate(name, Big.read(b)), Big.signed_text)))
    for digits, others in ((25, 12), (40, 20), (60, 31), (90, 45), (200, 90), (200, 199)):
        for name in ("+", "-", "*", "/", "%"):
            a = str(rng.randrange(10**(digits - 1), 10**digits))
            b = str(rng.randrange(10**(others - 1), 10**others))
            rows.append((a, name, b, answer(
                lambda: Big.read(a).calculate(name, Big.read(b)), Big.signed_text)))
    for text in INTEGERS + ["15", "16", "17", "24", "25", "80", "81", "9999", "10001"]:
        rows.append((text, "root", "", answer(Big.read(text).root, Big.signed_text)))
    for text in NARROW:
        rows.append((text, "int", "", answer(Big.read(text).to_int, Big.text)))
        rows.append((text, "long long", "", answer(Big.read(text).long_long, Big.text)))
    return rows


def decimal_rows():
    rows = []
    rng = random.Random(19990228)
    for text in DECIMALS + EXPONENTS + LONG_FRACTIONS:
        rows.append((30, text, "parse", "", answer(lambda: Dec.read(text), Dec.parts)))
    for a in DECIMALS:
        for b in DECIMALS:
            rows.append((30, a, "order", b, Dec.read(a).order(Dec.read(b))))
            for name in rng.sample("+-*/", 4 if max(len(a), len(b)) < 4 else 1):
                rows.append((30, a, name, b, answer(
                    lambda: Dec.read(a).calculate(name, Dec.read(b)), Dec.parts)))
    for text in CONVERTED:
        number = Dec.read(text)
        rows.append((30, text, "long", "", answer(number.to_long, Big.text)))
        rows.append((30, text, "long long", "", answer(number.to_long_long, Big.text)))
        rows.append((30, text, "integer", "", number.to_big().signed_text()))
    for text in ROUNDED:
        for places in range(5):
            rows.append((30, text, "text", str(places), Dec.read(text).text_of_places(places)))
    for text in ("0.25", "-7", "1.999"):
        for places in (28, 29, 30, 31, 60):
            rows.append((30, text, "text", str(places), Dec.read(text).text_of_places(places)))
    for most in (0, 1, 2, 3):
        Dec.most = most
        for text in ROUNDED[most::2]:
            number = Dec.read(text)
            rows.append((most, text, "parse", "", number.parts()))
            rows.append((most, text, "text", "1", number.text_of_places(1)))
            for name in "+-*/":
                other = rng.choice(("-0.04", "3"))
                rows.append((most, text, name, other, answer(
                    lambda: number.calculate(name, Dec.read(other)), Dec.parts)))
    Dec.most = 30
    return rows


def quoted(value):
    return str(value) if isinstance(value, int) else f'"{value}"'


def table(rows):
    return "\n".join([HEAD] + [f"{{{', '.join(map(quoted, row))}}}," for row in rows] + [""])


def main():
    for name, rows in (("BigIntegerCases.inc", integer_rows()), ("DecimalCases.inc", decimal_rows())):
        target = pathlib.Path(__file__).with_name(name)
        if "--check" not in sys.argv[1:]:
            target.write_text(table(rows))
        elif target.read_text() != table(rows):
            sys.exit(f"{target} is not what {sys.argv[0]} writes")


if __name__ == "__main__":
    main()
