#!/usr/bin/python3
"""Checks what the attributes transcript left in its folder: the template it wrote, byte for
byte, and the attribute texts and records of the drawing it saved, read by an independent
reader (ezdxf). Exits 1 naming what differs.

Usage: /usr/bin/python3 tests/scripts/check_attributes.py FOLDER
"""
import sys

import ezdxf

TEMPLATE = (
    "Gate\tID\t?TableName\t?ColumnName\n"
    "Pole\tID\t?TableName\t?ColumnName\n"
    "Street\tLOC\t?TableName\t?ColumnName\n"
    "Street\tLanes\t?TableName\t?ColumnName\n"
    "Street\tNAME\t?TableName\t?ColumnName\n"
    "Street\tWIDTH\t?TableName\t?ColumnName\n"
    "\n"
    "?BlockName\t?AttributeName\tGates\tCODE\t?Character\n"
    "?BlockName\t?AttributeName\tPlaces\tSPOT\t?Point\n"
    "?BlockName\t?AttributeName\tRoads\tID\t?Integer\n"
    "?BlockName\t?AttributeName\tRoads\tNAME\t?Character\n"
    "?BlockName\t?AttributeName\tRoads\tLENGTH\t?Real\n"
).encode()

# Reference handle -> its attributes, tag and text, in order.
ATTRIBUTES = {
    "43": [("NAME", "Main"), ("Lanes", "12"), ("WIDTH", "12.7"),
           ("LOC", "1.000000, 2.000000, 0.000000")],
    "49": [("NAME", "Side"), ("Lanes", "2"), ("WIDTH", "7.25"),
           ("LOC", "4.000000, 0.000000, 0.000000")],
    "4F": [("NAME", "Hidden"), ("Lanes", "9"), ("WIDTH", "9"), ("LOC", "9,9,9")],
    "55": [("ID", "P-1")],
    "58": [],
    "66": [("ID", "G-1")],
    "6E": [("ID", "G-2")],
    # Made by INSERT: no attribute of the constant KIND, the preset ZONE at its default.
    "81": [("NAME", "New"), ("Lanes", "3"), ("WIDTH", "4.5"), ("LOC", "1,1"), ("ZONE", "A")],
}

# Reference handle -> its records as (table, values) in order.
RECORDS = {
    "43": [("Places", [(1.0, 2.0, 0.0)]), ("Roads", [12, "Main", 12.7])],
    "49": [("Roads", [2, "Side", 7.25]), ("Roads", [6, "second", 0.0]),
           ("Places", [(4.0, 0.0, 0.0)])],
    "66": [("Gates", ["G-1"])],
}


def records_of(entity):
    if not entity.has_extension_dict:
        return []
    xrec = entity.get_extension_dict().dictionary.get("ZARVEL_OD")
    if xrec is None:
        return []
    records = []
    for tag in xrec.tags:
        if tag.code == 2:
            records.append((tag.value, []))
        elif records and tag.code in (1, 10, 40, 90):
            value = tuple(tag.value) if tag.code == 10 else tag.value
            records[-1][1].append(value)
    return records


def main(folder):
    failures = []
    with open(folder + "/template.txt", "rb") as f:
        written = f.read()
    if written != TEMPLATE:
        failures.append("template.txt is %r" % written)
    doc = ezdxf.readfile(folder + "/attributes_saved.dxf")
    inserts = {e.dxf.handle: e for e in doc.modelspace().query("INSERT")}
    for handle, expected in ATTRIBUTES.items():
        found = [(a.dxf.tag, a.dxf.text) for a in inserts[handle].attribs]
        if found != expected:
            failures.append("%s has attributes %r, not %r" % (handle, found, expected))
    for handle, expected in RECORDS.items():
        found = records_of(inserts[handle])
        if found != expected:
            failures.append("%s has records %r, not %r" % (handle, found, expected))
    for failure in failures:
        print(failure)
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
