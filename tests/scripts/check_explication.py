#!/usr/bin/env python3
"""Checks what the explication transcript left in its folder: the read-only
file it could not write still holds its old text, and the report it wrote last
is UTF-16 little endian with a byte-order mark and CR LF line ends, read back
by Python's own decoder. Exits 1 naming what differs."""
import sys

EXPECTED = "\r\n".join([
    "ID | TableName | ID | Count | AREA | NAME",
    '32 | "Roads" | "7" |  |  | "Main"',
    '32 | "Parcels" | "7" |  | 12.5 | ',
    'Sum |  | "7" | 1 | 12.5 | 1',
    "",
    '35 | "Roads" | "8" |  |  | "Side, ""B"""',
    'Sum |  | "8" | 1 |  | 1',
    "",
    "SumCount |  |  |  | 1 | 2",
    "SumSum |  |  |  | 12.5 | 2",
    "Min |  |  |  | 12.5 | ",
    "Max |  |  |  | 12.5 | ",
    "Average |  |  |  | 12.5 | ",
    "Unique |  |  |  | 1 | 2",
])


def main(folder):
    failures = []
    with open(folder + "/locked.csv", "rb") as f:
        if f.read() != b"earlier\n":
            failures.append("locked.csv was changed")
    with open(folder + "/report.csv", "rb") as f:
        data = f.read()
    if not data.startswith(b"\xff\xfe"):
        failures.append("report.csv has no UTF-16 little-endian byte-order mark")
    text = data[2:].decode("utf-16-le")
    if text != EXPECTED:
        failures.append("report.csv holds %r, expected %r" % (text, EXPECTED))
    for failure in failures:
        print(failure)
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
