#!/usr/bin/python3
"""Writes table_editor.dxf with ezdxf (an independent DXF writer): two user
tables and a topology table, with an entity carrying two equal records of one
table, one carrying records of both tables, and one on a locked layer, whose
records take no row.

Usage: /usr/bin/python3 tests/scripts/make_table_editor.py [OUT.dxf]
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
              ("LENGTH", "real", "", 0.0)],
    "Parcels": [("ID", "integer", "", 0), ("AREA", "real", "", 0.0)],
    "TPMID_net": [("ID", "integer", "", 0)],
}


def build():
    corpus.OD_TABLES.update(TABLES)
    doc = ezdxf.new("R2010")
    doc.layers.add("Locked").lock()
    corpus.add_od_tables(doc, TABLES)
    msp = doc.modelspace()
    rows = [
        ("LINE road 12", msp.add_line((0, 0), (10, 0)),
         [("Roads", [12, "Main St", 10.5]), ("TPMID_net", [7])]),
        ("LINE road 3, twice", msp.add_line((0, 5), (10, 5)),
         [("Roads", [3, "High St", 2.25]), ("Roads", [3, "High St", 2.25])]),
        ("CIRCLE parcel and road 20", msp.add_circle((20, 0), 2),
         [("Parcels", [5, 12.5]), ("Roads", [20, "Low Rd", 0.5])]),
        ("LINE road 1", msp.add_line((0, 10), (10, 10)),
         [("Roads", [1, "Mill Ln", 7.0])]),
        ("LINE on a locked layer", msp.add_line((0, 20), (5, 20), dxfattribs={"layer": "Locked"}),
         [("Roads", [99, "Hidden", 1.0])]),
        ("CIRCLE parcel", msp.add_circle((30, 0), 1), [("Parcels", [6, 3.0])]),
    ]
    return doc, corpus.attach_rows(rows)


def main():
    corpus.write_fixture(build, os.path.join(HERE, "table_editor.dxf"))


if __name__ == "__main__":
    main()
