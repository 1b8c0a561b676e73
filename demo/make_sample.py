#!/usr/bin/python3
"""Writes the demo's sample drawing: layers in every state, blocks with attributes,
curves of every kind, texts, and Object Data tables with records on many entities.

Usage: /usr/bin/python3 demo/make_sample.py OUT.dxf

The drawing is made by an independent DXF writer (ezdxf), so that the demo opens a
file that zarvel's own code did not produce.
"""
import os
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "..", "tests", "host", "dxf"))
import make_corpus as corpus  # noqa: E402  (re-runs this script with a fixed hash seed)


def attach(entity, records):
    """records: [(table, [values in column order])]."""
    tags = []
    for table, values in records:
        tags.append((2, table))
        for (_, kind, _, _), value in zip(corpus.OD_TABLES[table], values):
            tags += corpus.od_value_tags(kind, value)
    xdict = entity.get_extension_dict() if entity.has_extension_dict \
        else entity.new_extension_dict()
    xdict.add_xrecord("ZARVEL_OD").reset(tags)


def main():
    doc = corpus.build_full("R2018")
    tables = doc.rootdict.add_new_dict("ZARVEL_OD_TABLES")
    for name, columns in corpus.OD_TABLES.items():
        tables.add_xrecord(name).reset(corpus.od_definition_tags(columns))
    for n, entity in enumerate(doc.modelspace()):
        if entity.dxftype() in ("VIEWPORT", "ATTRIB"):
            continue
        road = ("Roads", [n, n * 1.5, "asphalt", (n, 0, 0), "Zürich"])
        node = ("TPMID_x", [n, "node %d" % n, n * 2.0, (0, n, 0)])
        # Every fourth entity has none, some have two of one table, some a topology record.
        kind = n % 4
        if kind == 1:
            attach(entity, [road])
        elif kind == 2:
            attach(entity, [road, node, road])
        elif kind == 3:
            attach(entity, [node])
    doc.saveas(sys.argv[1])


if __name__ == "__main__":
    main()
