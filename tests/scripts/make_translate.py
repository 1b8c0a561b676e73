#!/usr/bin/python3
"""Writes translate.dxf with ezdxf (an independent DXF writer): tables whose
names, fields and values the translation renames, with records of every column
type, one in paper space, and a topology table.

Usage: /usr/bin/python3 tests/scripts/make_translate.py [OUT.dxf]
Prints each entity's handle with what it is, for the script's comments.
"""
import os
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "..", "host", "dxf"))
import make_corpus as corpus  # noqa: E402  (fixes ezdxf's metadata and hash seed)
import ezdxf  # noqa: E402

TABLES = {
    "Roads": [("ID", "integer", "", 0), ("NAME", "character", "", ""),
              ("LENGTH", "real", "", 0.0), ("POS", "point", "", (0.0, 0.0, 0.0))],
    "Parcels": [("ID", "integer", "", 0), ("KIND", "character", "", "none")],
    "TPMID_net": [("ID", "integer", "", 0)],
}


def build():
    corpus.OD_TABLES.update(TABLES)
    doc = ezdxf.new("R2010")
    corpus.add_od_tables(doc, TABLES)
    msp = doc.modelspace()
    rows = [
        ("LINE road 1", msp.add_line((0, 0), (10, 0)),
         [("Roads", [1, "Main St", 10.5, (1.0, 2.0, 3.0)]), ("TPMID_net", [7])]),
        ("LINE road 2", msp.add_line((0, 5), (10, 5)),
         [("Roads", [2, "High St", 1.25, (0.0, 0.0, 0.0)])]),
        ("CIRCLE parcel", msp.add_circle((20, 0), 2),
         [("Parcels", [5, "field"]), ("Roads", [4, "Low Rd", 0.5, (5.0, 5.0, 0.0)])]),
        ("LINE in paper space", doc.layout("Layout1").add_line((0, 0), (1, 1)),
         [("Parcels", [8, "wood"])]),
    ]
    return doc, corpus.attach_rows(rows)


def main():
    corpus.write_fixture(build, os.path.join(HERE, "translate.dxf"))


if __name__ == "__main__":
    main()
