#!/usr/bin/env python3
"""Expected values of the date-time helpers (QyDateTime), from Python's datetime.

A TDateTime is days since 1899-12-30; before that date the fraction is the time of day counted
forward from the (negative) day, so 1899-12-29 06:00 is -1.25. The tables printed here are pasted
into test_datetime.cpp; run `python3 gen_datetime.py` to regenerate and compare.
"""
from datetime import datetime, timedelta

ZERO = datetime(1899, 12, 30)


def to_tdatetime(dt):
    days = (dt.date() - ZERO.date()).days
    frac = (dt - datetime(dt.year, dt.month, dt.day)).total_seconds() / 86400.0
    return days - frac if days < 0 else days + frac


def show(dt):
    return dt.strftime("%Y-%m-%d %H:%M:%S.") + "%03d" % (dt.microsecond // 1000)


INCREMENTS = [  # (start, unit, count)
    (datetime(1899, 12, 29, 18, 0), "Hours", 12),
    (datetime(1899, 12, 29, 6, 0), "Hours", 1),
    (datetime(1899, 12, 29, 6, 0), "Hours", -7),
    (datetime(1899, 12, 30, 6, 0), "Hours", -12),
    (datetime(1899, 12, 30, 0, 0), "Minutes", -1),
    (datetime(1899, 12, 28, 23, 59), "Minutes", 2),
    (datetime(1899, 12, 29, 23, 59, 59), "Seconds", 1),
    (datetime(1800, 3, 1, 0, 0, 0), "Seconds", -1),
    (datetime(1899, 12, 29, 12, 0, 0, 500000), "MilliSeconds", 600),
    (datetime(1899, 12, 29, 0, 0, 0), "MilliSeconds", -1),
    (datetime(2024, 2, 28, 23, 0), "Hours", 2),
    (datetime(2000, 1, 1, 0, 0), "MilliSeconds", 86400000 * 3 + 5),
]

SPANS = [  # (earlier, later)
    (datetime(1899, 12, 29, 18, 0), datetime(1899, 12, 30, 0, 0)),
    (datetime(1899, 12, 29, 6, 0), datetime(1899, 12, 30, 0, 0)),
    (datetime(1899, 12, 28, 6, 0), datetime(1899, 12, 31, 18, 0)),
    (datetime(1800, 1, 1, 12, 0), datetime(1800, 1, 1, 6, 0)),
    (datetime(2000, 1, 1, 6, 0), datetime(2000, 1, 3, 18, 0)),
]

if __name__ == "__main__":
    print("// MyInc<unit>(t, n): t, n, expected, start and result as text")
    for start, unit, n in INCREMENTS:
        delta = {"Hours": timedelta(hours=n), "Minutes": timedelta(minutes=n),
                 "Seconds": timedelta(seconds=n), "MilliSeconds": timedelta(milliseconds=n)}[unit]
        end = start + delta
        print('    {%s, %r, %d, %r},  // %s + %d %s = %s' % (
            unit, to_tdatetime(start), n, to_tdatetime(end), show(start), n, unit.lower(), show(end)))
    print("// DateTimeSpan(earlier, later): earlier, later, expected days")
    for a, b in SPANS:
        print('    {%r, %r, %r},  // %s -> %s' % (
            to_tdatetime(a), to_tdatetime(b), (b - a).total_seconds() / 86400.0, show(a), show(b)))
