#!/usr/bin/env python3
"""Makes the tables of DateTimeCases.h: what additions, zones and comparisons of dates come to.

  make_datetime_cases.py           writes the header to standard output
  make_datetime_cases.py --check   fails where DateTimeCases.h beside this script is another one

Additions go by the steps of XML Schema 1.0 part 2, appendix E, written down here once more: whole
numbers and fractions of any size, floats of single precision made by hand, and days counted month
by month. Zones and the order of zoned values are left to Python's datetime.
"""

import datetime
import os
import random
import sys
from fractions import Fraction

DAYS = [31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31]
LESS, EQUAL, GREATER, INDETERMINATE = "less", "equal", "greater", "indeterminate"


# ---- Single precision ----

def single(value):
    """The float of 24 bits nearest to a fraction, ties to the even one."""
    value = Fraction(value)
    if value == 0:
        return value
    sign, value = (-1, -value) if value < 0 else (1, value)
    unit = Fraction(1)
    while value / unit >= 2 ** 24:
        unit *= 2
    while value / unit < 2 ** 23:
        unit /= 2
    count = value / unit
    whole = count.numerator // count.denominator
    rest = count - whole
    if rest > Fraction(1, 2) or (rest == Fraction(1, 2) and whole % 2 == 1):
        whole += 1
    return sign * whole * unit


def floor_quotient(a, b):
    quotient = single(single(a) / single(b))
    return quotient.numerator // quotient.denominator


def cut(value, bits):
    return value % 2 ** bits


def cut_signed(value, bits):
    return (value + 2 ** (bits - 1)) % 2 ** bits - 2 ** (bits - 1)


# ---- Addition ----

def is_leap(year):
    return year % 4 == 0 and (year % 100 != 0 or year % 400 == 0)


def days_in(year, month):
    if month < 1 or month > 12:
        return 31
    return 28 if month == 2 and not is_leap(year) else DAYS[month - 1]


# Of the years that 16 bits hold.
ALL_DAYS = sum(366 if is_leap(year) else 365 for year in range(-2 ** 15, 2 ** 15))


def step(field, carry, sign, amount, modulus, bits):
    total = field + carry + sign * amount
    quotient = floor_quotient(total, modulus)
    return cut(total - quotient * modulus, bits), quotient


def add(start, span):
    """start: year ... nano; span: sign, years ... nano."""
    year, month, day, hour, minute, second, milli, micro, nano = start
    sign, years, months, days, hours, minutes, seconds, millis, micros, nanos = span
    month, carry = step(month, -1, sign, months, 12, 8)
    month = cut(month + 1, 8)
    year = cut_signed(year + carry + sign * years, 16)
    nano, carry = step(nano, 0, sign, nanos, 1000, 16)
    micro, carry = step(micro, carry, sign, micros, 1000, 16)
    milli, carry = step(milli, carry, sign, millis, 1000, 16)
    second, carry = step(second, carry, sign, seconds, 60, 8)
    minute, carry = step(minute, carry, sign, minutes, 60, 8)
    hour, carry = step(hour, carry, sign, hours, 24, 8)
    rest = carry + sign * days
    while rest != 0:
        if 1 <= month <= 12 and abs(rest) >= ALL_DAYS:
            if rest > 0 and day == 1:  # the circle of all years leads back to where it began
                rest %= ALL_DAYS
            elif rest < 0 and day == days_in(year, month):
                rest = -(-rest % ALL_DAYS)
            if rest == 0:
                break
        if rest > 0:
            length = days_in(year, month)
            if day + rest <= length:
                day, rest = day + rest, 0
            else:
                rest, day, month = rest - (length + 1 - day), 1, month + 1
        elif day - 1 < -rest:
            rest, month = rest + day, month - 1
            day = days_in(year, month)
        else:
            day, rest = day + rest, 0
        if month == 0:
            year, month = cut_signed(year - 1, 16), 12
        elif month == 13:
            year, month = cut_signed(year + 1, 16), 1
    return year, cut(month, 8), day, hour, minute, second, milli, micro, nano


def moment(year, month, day, hour=0, minute=0, second=0, milli=0, micro=0, nano=0):
    return year, month, day, hour, minute, second, milli, micro, nano


def span(sign=1, years=0, months=0, days=0, hours=0, minutes=0, seconds=0, milli=0, micro=0,
         nano=0):
    return sign, years, months, days, hours, minutes, seconds, milli, micro, nano


def additions():
    y2k = moment(2000, 1, 12, 12, 13, 14)
    late = moment(1999, 12, 31, 23, 59, 59, 999, 999, 999)
    last = 2 ** 64 - 1
    cases = [
        # The examples of appendix E, and days that no month has.
        (y2k, span(years=1, months=3, days=5, hours=7, minutes=10, seconds=3, milli=300)),
        (moment(2000, 1, 1), span(-1, months=3)),
        (y2k, span(hours=33)),
        (moment(2000, 3, 31), span(months=1)),
        (moment(2000, 3, 30), span(days=1)),
        (moment(2000, 4, 30), span(days=1)),
        (moment(2000, 4, 30), span(months=1)),
        (moment(2000, 4, 31), span(days=1)),
        (moment(2000, 4, 31), span(-1, days=31)),
        (moment(2001, 2, 31), span(days=1)),
        (moment(2000, 1, 31), span(months=1, days=1)),
        (moment(2000, 3, 1), span(-1, days=1)),
        (moment(2001, 3, 1), span(-1, days=1)),
        (moment(1900, 2, 28), span(days=1)),
        (moment(2000, 2, 28), span(days=1)),
        (moment(2004, 2, 29), span(years=1)),
        (moment(2004, 2, 29), span(-1, years=4)),
        # Nothing, and the smallest things at the ends of everything.
        (late, span()),
        (late, span(-1)),
        (late, span(nano=1)),
        (moment(2000, 1, 1), span(-1, nano=1)),
        (late, span(micro=1)),
        (late, span(milli=1)),
        (late, span(seconds=1)),
        (late, span(minutes=1)),
        (late, span(hours=1)),
        (moment(2000, 1, 1), span(-1, micro=1)),
        (moment(2000, 1, 1), span(-1, milli=1)),
        (moment(2000, 1, 1), span(-1, seconds=1)),
        (moment(2000, 1, 1), span(-1, minutes=1)),
        (moment(2000, 1, 1), span(-1, hours=1)),
        (y2k, span(milli=65535, micro=65535, nano=65535)),
        (y2k, span(-1, milli=65535, micro=65535, nano=65535)),
        (y2k, span(minutes=90)),
        (y2k, span(seconds=86400)),
        (y2k, span(-1, seconds=86400)),
        # Down to the year 0 and below, where -4 is a leap year and -1 is none.
        (moment(1, 1, 1), span(-1, days=1)),
        (moment(1, 1, 1), span(-1, years=1)),
        (moment(-1, 12, 31), span(days=1)),
        (moment(-4, 2, 28), span(days=1)),
        (moment(-1, 2, 28), span(days=1)),
        (moment(1, 3, 1), span(-1, days=366)),
        # Months and years in numbers.
        (moment(2000, 12, 15), span(months=1)),
        (moment(2000, 12, 15), span(months=12)),
        (moment(2000, 1, 15), span(-1, months=1)),
        (moment(2000, 1, 15), span(-1, months=25)),
        (moment(2000, 6, 15), span(years=32767)),
        (moment(2000, 6, 15), span(years=65535)),
        (moment(2000, 6, 15), span(-1, years=65535)),
        (moment(-9999, 1, 1), span(-1, years=30000)),
        # Cycles of 400 years, one day less and one more, and several of them.
        (moment(1600, 2, 29), span(days=146096)),
        (moment(1600, 2, 29), span(days=146097)),
        (moment(1600, 2, 29), span(days=146098)),
        (moment(1600, 3, 1), span(days=3 * 146097 + 17)),
        (moment(2000, 12, 31), span(-1, days=146096)),
        (moment(2000, 12, 31), span(-1, days=146097)),
        (moment(2000, 12, 31), span(-1, days=146098)),
        (moment(2001, 2, 28), span(-1, days=5 * 146097 + 400)),
        (moment(9999, 12, 31), span(days=3652059)),
        (moment(2000, 1, 1), span(days=12000000)),
        (moment(2000, 1, 1), span(-1, days=12800000)),
        (moment(2000, 1, 1), span(days=30000000)),
        (moment(2000, 1, 1), span(-1, days=30000000)),
        # Sums around 2^19 and 2^20, all of them exact.
        (y2k, span(seconds=524287)),
        (y2k, span(seconds=524288)),
        (y2k, span(-1, seconds=524287)),
        (y2k, span(-1, seconds=524288)),
        (y2k, span(minutes=524287, seconds=524279)),
        (y2k, span(-1, minutes=524288, seconds=1048586)),
        (y2k, span(hours=524279, minutes=524287, seconds=524287)),
        (moment(2000, 1, 1), span(-1, hours=524287, minutes=524287, seconds=524287)),
        (moment(2000, 1, 1), span(months=524275)),
        (moment(2000, 1, 1), span(-1, months=524289)),
        (moment(2000, 1, 1), span(seconds=15728639)),
        (moment(2000, 1, 1), span(-1, seconds=15728641)),
        # Where single precision begins to lose: the second is 256 less one, the month is 0.
        (moment(2000, 1, 1), span(seconds=31457219)),
        (moment(2000, 1, 1), span(seconds=31457279)),
        (moment(2000, 1, 1), span(seconds=33554399)),
        (moment(2000, 1, 1), span(-1, seconds=31457221)),
        (moment(2000, 1, 1), span(seconds=16777217)),
        (moment(2000, 1, 1), span(minutes=31457279)),
        (moment(2000, 1, 1), span(minutes=33554459)),
        (moment(2000, 1, 1), span(hours=16777217)),
        (moment(2000, 1, 1), span(hours=25165823)),
        (moment(2000, 1, 1), span(hours=2 ** 27 - 1)),
        (moment(2000, 1, 1), span(months=16777223)),
        (moment(2000, 1, 1), span(months=16777223, days=40)),
        (moment(2000, 1, 31), span(months=16777223, days=1)),
        (moment(2000, 1, 1), span(-1, months=16777225, days=40)),
        (moment(2000, 1, 1), span(months=25165823)),
        (moment(2000, 1, 1), span(months=25165823, days=1)),
        (moment(2000, 1, 10), span(months=2 ** 32 - 1)),
        (moment(2000, 1, 10), span(months=2 ** 32 - 1, days=100)),
        (moment(2000, 1, 10), span(-1, months=2 ** 32 - 1)),
        (moment(2000, 1, 10), span(-1, months=2 ** 32 - 1, days=100)),
        (moment(2000, 1, 10), span(-1, months=4000000000, days=1000)),
        (moment(2000, 1, 10), span(months=4000000000, days=1000)),
        (moment(2000, 1, 1), span(seconds=10 ** 12)),
        (moment(2000, 1, 1), span(-1, seconds=10 ** 12)),
        (moment(2000, 1, 1), span(minutes=10 ** 10 + 7)),
    ]
    # Halfway between two floats but for a 1 at the very end, which makes it the larger one.
    half = 2 ** 63 + 2 ** 39 + 1
    cases += [(moment(2000, 1, 1), span(seconds=half)), (moment(2000, 1, 1), span(-1, seconds=half))]
    cases += hostile_additions()
    # Beyond 64 bits; only the fields of the time are of interest, since counting the days of so
    # many years one month after another takes long. The last one is the sum that does not fit.
    numbers = [(0, last), (2 ** 60, 0), (last, 0), (2 ** 62 - 1, 2 ** 62 - 1), (last, last)]
    times = []
    for minutes, seconds in numbers:
        for sign in (1, -1):
            times.append((moment(2000, 1, 1, 12, 34, 56), span(sign, 0, 0, 0, 0, minutes, seconds)))
    return ([(start, by, add(start, by)) for start, by in cases],
            [(start, by, add_time(start, by)) for start, by in times])


def hostile_additions():
    """Fields and numbers at the ends of their ranges; few enough days to count month by month."""
    rng = random.Random(20040301)

    def number(bits, most):
        """Up to a number of bits: nothing, little, the most, around a power of two, anything."""
        top = 2 ** bits - 1
        return min(most, rng.choice((
            0, rng.randrange(100), top - rng.randrange(50), rng.randrange(top + 1),
            min(top, 2 ** rng.randrange(bits) + rng.randrange(3)), rng.randrange(top + 1) >> 8)))

    def fields():
        kind = rng.randrange(4)
        if kind == 0:
            return moment(0, 0, 0)  # a time at midnight shows none of the others
        if kind == 1:  # a day alone, and a time alone
            return rng.choice((moment(0, 0, rng.randrange(1, 32)),
                               moment(0, 0, 0, rng.randrange(24), rng.randrange(60), 59, 999)))
        if kind == 2:
            return moment(rng.randrange(-9999, 10000), rng.randrange(1, 13), rng.randrange(1, 32),
                          rng.randrange(24), rng.randrange(60), rng.randrange(60))
        return moment(rng.randrange(-2 ** 15, 2 ** 15), rng.randrange(256), rng.randrange(256),
                      rng.randrange(256), rng.randrange(256), rng.randrange(256),
                      rng.randrange(2 ** 16), rng.randrange(2 ** 16), rng.randrange(2 ** 16))

    return [(fields(), span(rng.choice((1, -1)), number(16, 65535), number(32, 2 ** 32),
                            number(18, 200000), number(22, 3000000), number(30, 500000000),
                            number(38, 3 * 10 ** 10), number(16, 65535), number(16, 65535),
                            number(16, 65535)))
            for _ in range(150)]


def add_time(start, by):
    second, carry = step(start[5], 0, by[0], by[6], 60, 8)
    minute, carry = step(start[4], carry, by[0], by[5], 60, 8)
    hour, carry = step(start[3], carry, by[0], by[4], 24, 8)
    return hour, minute, second


# ---- Zones and order ----

def text_of(value, zone=""):
    return value.strftime("%Y-%m-%dT%H:%M:%S").rjust(19, "0") + zone


def normalized():
    starts = [datetime.datetime(2004, 1, 1, 12), datetime.datetime(2004, 2, 28, 23, 59, 59),
              datetime.datetime(2004, 3, 1, 0, 30), datetime.datetime(1900, 2, 28, 20),
              datetime.datetime(1999, 12, 31, 23, 0, 1), datetime.datetime(2000, 1, 1)]
    for start in starts:
        for sign, hours, minutes in [(1, 14, 0), (-1, 14, 0), (1, 0, 0), (1, 0, 30), (1, 5, 45),
                                     (-1, 3, 30), (1, 23, 59), (-1, 23, 59), (-1, 1, 0)]:
            offset = datetime.timedelta(hours=hours, minutes=minutes)
            zone = "%s%02d:%02d" % ("+" if sign > 0 else "-", hours, minutes)
            yield text_of(start, zone), text_of(start - sign * offset, "+00:00")


def order(left, right):
    return LESS if left < right else GREATER if left > right else EQUAL


def comparisons():
    """Two zoned values, and a zoned one against one without: 14 hours earlier, then as it is."""
    base = datetime.datetime(2004, 3, 1, 6)
    hour = datetime.timedelta(hours=1)
    second = datetime.timedelta(seconds=1)
    shifts = [-30 * hour, -15 * hour, -14 * hour - second, -14 * hour, -14 * hour + second,
              -hour, -second, 0 * hour, second, hour, 13 * hour, 14 * hour - second, 14 * hour,
              14 * hour + second, 15 * hour, 30 * hour]
    for shift in shifts:
        for hours in (0, 5, -9):
            zone = "Z" if hours == 0 else "%+03d:00" % hours
            zoned, plain = base + shift, base
            utc = zoned - hours * hour
            if utc < plain - 14 * hour:
                result = LESS
            elif utc > plain:
                result = GREATER
            else:
                result = INDETERMINATE
            yield text_of(zoned, zone), text_of(plain), result
            if plain - 14 * hour > utc:
                result = GREATER
            elif plain < utc:
                result = LESS
            else:
                result = INDETERMINATE
            yield text_of(plain), text_of(zoned, zone), result
        yield text_of(base + shift), text_of(base), order(base + shift, base)
        yield (text_of(base + shift, "+02:00"), text_of(base, "-03:00"),
               order(base + shift - 2 * hour, base + 3 * hour))
        yield (text_of(base + shift, "Z"), text_of(base, "+00:30"),
               order(base + shift, base - hour / 2))


def duration_order(left, right):
    """By four dates; whole days count alone, as these have no time."""
    results = set()
    for year, month, day in [(1696, 9, 1), (1697, 2, 1), (1903, 3, 1), (1903, 7, 1)]:
        a, b = add(moment(year, month, day), left)[:3], add(moment(year, month, day), right)[:3]
        results.add(order(a, b))
    return results.pop() if len(results) == 1 else INDETERMINATE


def durations():
    # The table of part 2, section 3.2.6.2, and around it.
    texts = {"P1Y": span(years=1), "P364D": span(days=364), "P365D": span(days=365),
             "P366D": span(days=366), "P367D": span(days=367), "P1M": span(months=1),
             "P27D": span(days=27), "P28D": span(days=28), "P30D": span(days=30),
             "P31D": span(days=31), "P32D": span(days=32), "P5M": span(months=5),
             "P149D": span(days=149), "P150D": span(days=150), "P153D": span(days=153),
             "P154D": span(days=154), "P12M": span(months=12), "PT1H": span(hours=1),
             "PT60M": span(minutes=60), "PT2H": span(hours=2), "PT24H": span(hours=24),
             "P1D": span(days=1), "-P1D": span(-1, days=1), "-P1M": span(-1, months=1),
             "-P32D": span(-1, days=32), "PT0S": span()}
    names = list(texts)
    for i, left in enumerate(names):
        for right in names[i:]:
            yield left, right, duration_order(texts[left], texts[right])


# ---- The header ----

def numbers_of(values):
    texts = []
    for value in values:
        texts.append(str(value) + ("ULL" if value >= 2 ** 31 else ""))
    return "{" + ", ".join(texts) + "}"


def span_of(value):
    return numbers_of(value[1:])[:-1] + ", " + ("true}" if value[0] < 0 else "false}")


def emit():
    whole, times = additions()
    lines = ["#pragma once", "",
             "// Made by make_datetime_cases.py, which says how; a test keeps the two together.",
             "", "#include \"tests/values/DateTimeCase.h\"", "", "// clang-format off",
             "namespace qztest {", "", "inline constexpr AdditionCase kAdditions[] = {"]
    lines += ["    {%s, %s, %s}," % (numbers_of(a), span_of(b), numbers_of(c)) for a, b, c in whole]
    lines += ["};", "", "// Hour, minute and second of 2000-01-01T12:34:56 plus the span.",
              "inline constexpr TimeAdditionCase kTimeAdditions[] = {"]
    lines += ["    {%s, %s}," % (span_of(b), numbers_of(c)) for _, b, c in times]
    lines += ["};", "", "inline constexpr NormalizeCase kNormalized[] = {"]
    lines += ["    {\"%s\", \"%s\"}," % pair for pair in normalized()]
    lines += ["};", "", "inline constexpr CompareCase kComparisons[] = {"]
    lines += ["    {\"%s\", \"%s\", QzXmlLib16::CDateTime::dtc_%s}," % c for c in comparisons()]
    lines += ["};", "", "inline constexpr CompareCase kDurationComparisons[] = {"]
    lines += ["    {\"%s\", \"%s\", QzXmlLib16::CDateTime::dtc_%s}," % c for c in durations()]
    lines += ["};", "", "}  // namespace qztest", "// clang-format on", ""]
    return "\n".join(lines)


def main():
    if sys.argv[1:] == ["--check"]:
        path = os.path.join(os.path.dirname(os.path.abspath(__file__)), "DateTimeCases.h")
        with open(path, encoding="ascii") as header:
            if header.read() != emit():
                sys.exit("DateTimeCases.h is not what make_datetime_cases.py makes")
    elif len(sys.argv) == 1:
        sys.stdout.write(emit())
    else:
        sys.exit(__doc__)


if __name__ == "__main__":
    main()
