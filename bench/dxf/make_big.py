#!/usr/bin/python3
"""Writes a large R2018 DXF drawing for load/save benchmarks.

Usage: /usr/bin/python3 bench/dxf/make_big.py N OUT.dxf [SEED]

N entities (lines, lightweight polylines, circles, texts on a few layers), each with 1 to 3
Object Data records in the host's layout: table definitions under ZARVEL_OD_TABLES in the
named object dictionary, records in the entity's extension dictionary under ZARVEL_OD.

ezdxf's object model is far too slow for millions of objects, so ezdxf only makes the
header/tables/blocks/objects boilerplate of a small drawing (with the layers and table
definitions); the entities and their dictionaries are written as text and spliced in, with
handles continuing from the boilerplate's $HANDSEED.
"""
import io
import os
import random
import re
import sys

if os.environ.get("PYTHONHASHSEED") != "0":  # ezdxf's object order depends on it
    os.environ["PYTHONHASHSEED"] = "0"
    os.execv(sys.executable, [sys.executable] + sys.argv)

import ezdxf  # noqa: E402

LAYERS = [("ROADS", 1), ("PARCELS", 3), ("BUILDINGS", 5), ("LABELS", 7), ("Straßen", 2)]
TABLES = {  # name: [(column, type 1..4, description, default)]
    "PARCEL": [("ID", 1, "Parcel id", 0), ("OWNER", 3, "Owner", ""),
               ("AREA", 2, "Area", 0.0), ("CENTRE", 4, "Centre", (0.0, 0.0, 0.0))],
    "ROAD": [("NO", 1, "Road number", -1), ("NAME", 3, "Name", "unnamed"),
             ("LENGTH", 2, "Length", 0.0)],
    "TPMID_b": [("STAMP", 1, "Time stamp", 0)],
}
TABLE_NAMES = list(TABLES)
VALUE_CODES = {1: " 90", 2: " 40", 3: "  1", 4: " 10"}
NAMES = ["Zürich", "Łódź", "東京", "Main Street", "Hauptstraße", "Rue de la Paix"]


def boilerplate():
    """ezdxf's rendering of an empty drawing with our layers and table definitions."""
    ezdxf.options.write_fixed_meta_data_for_testing = True
    doc = ezdxf.new("R2018")
    for name, color in LAYERS:
        doc.layers.add(name, color=color)
    tables = doc.rootdict.add_new_dict("ZARVEL_OD_TABLES")
    for table, columns in TABLES.items():
        tags = []
        for name, kind, description, default in columns:
            tags += [(2, name), (70, kind), (3, description),
                     (int(VALUE_CODES[kind]), default)]
        tables.add_xrecord(table).reset(tags)
    owner = doc.modelspace().block_record.dxf.handle
    stream = io.StringIO()
    doc.write(stream)
    return stream.getvalue(), owner


def od_text(i, dict_handle, xrec_handle, owner):
    """The extension dictionary of entity i and its ZARVEL_OD record: 1 to 3 records."""
    out = []
    for r in range(i % 3 + 1):
        table = TABLE_NAMES[(i + r) % len(TABLE_NAMES)]
        out.append("  2\n%s\n" % table)
        if table == "PARCEL":
            out.append(" 90\n%d\n  1\n%s %d\n 40\n%r\n 10\n%d.5\n 20\n%d.25\n 30\n0.0\n" % (
                i, NAMES[i % len(NAMES)], r, i * 0.01 + r, i % 1000, i // 1000))
        elif table == "ROAD":
            out.append(" 90\n%d\n  1\n%s\n 40\n%r\n" % (i % 500, NAMES[(i + r) % len(NAMES)],
                                                         (i % 977) / 7))
        else:
            out.append(" 90\n%d\n" % (1700000000 + i))
    return ("  0\nDICTIONARY\n  5\n%X\n102\n{ACAD_REACTORS\n330\n%X\n102\n}\n330\n%X\n"
            "100\nAcDbDictionary\n280\n1\n281\n1\n  3\nZARVEL_OD\n360\n%X\n"
            "  0\nXRECORD\n  5\n%X\n102\n{ACAD_REACTORS\n330\n%X\n102\n}\n330\n%X\n"
            "100\nAcDbXrecord\n280\n1\n%s" % (dict_handle, owner, owner, xrec_handle,
                                              xrec_handle, dict_handle, dict_handle,
                                              "".join(out)))


def entity_text(i, handle, dict_handle, owner, rnd):
    kind = i % 4
    layer = LAYERS[i % len(LAYERS)][0]
    x = (i % 1000) * 10.0 + rnd.random()
    y = (i // 1000) * 10.0 + rnd.random()
    head = ("  0\n%s\n  5\n%X\n102\n{ACAD_XDICTIONARY\n360\n%X\n102\n}\n330\n%s\n"
            "100\nAcDbEntity\n  8\n%s\n")
    if kind == 0:
        return head % ("LINE", handle, dict_handle, owner, layer) + (
            "100\nAcDbLine\n 10\n%.4f\n 20\n%.4f\n 30\n0.0\n 11\n%.4f\n 21\n%.4f\n 31\n0.0\n"
            % (x, y, x + 5 * rnd.random(), y + 5 * rnd.random()))
    if kind == 1:
        n = 3 + i % 4
        points = "".join(" 10\n%.4f\n 20\n%.4f\n" % (x + 3 * rnd.random(), y + 3 * rnd.random())
                         for _ in range(n))
        return head % ("LWPOLYLINE", handle, dict_handle, owner, layer) + (
            "100\nAcDbPolyline\n 90\n%d\n 70\n%d\n 43\n0.0\n%s" % (n, i % 2, points))
    if kind == 2:
        return head % ("CIRCLE", handle, dict_handle, owner, layer) + (
            "100\nAcDbCircle\n 10\n%.4f\n 20\n%.4f\n 30\n0.0\n 40\n%.4f\n"
            % (x, y, 0.5 + 2 * rnd.random()))
    return head % ("TEXT", handle, dict_handle, owner, layer) + (
        "100\nAcDbText\n 10\n%.4f\n 20\n%.4f\n 30\n0.0\n 40\n0.5\n  1\n%s %d\n"
        "100\nAcDbText\n" % (x, y, NAMES[i % len(NAMES)], i))


def main():
    if len(sys.argv) not in (3, 4):
        sys.exit("usage: make_big.py N OUT.dxf [SEED]")
    count, out_path = int(sys.argv[1]), sys.argv[2]
    rnd = random.Random(int(sys.argv[3]) if len(sys.argv) == 4 else 1)

    text, owner = boilerplate()
    seed = re.search(r"\$HANDSEED\n  5\n([0-9A-Fa-f]+)\n", text)
    base = int(seed.group(1), 16)
    # Each entity takes three handles: itself, its extension dictionary, its record.
    text = text[:seed.start(1)] + "%X" % (base + 3 * count) + text[seed.end(1):]
    entities_at = text.index("  2\nENTITIES\n") + len("  2\nENTITIES\n")
    objects_at = text.index("  2\nOBJECTS\n")
    objects_end = text.index("  0\nENDSEC\n", objects_at)

    chunk = 10000
    with open(out_path, "w", encoding="utf-8", newline="\n") as f:
        f.write(text[:entities_at])
        for start in range(0, count, chunk):
            f.write("".join(entity_text(i, base + 3 * i, base + 3 * i + 1, owner, rnd)
                            for i in range(start, min(count, start + chunk))))
        f.write(text[entities_at:objects_end])
        for start in range(0, count, chunk):
            f.write("".join(od_text(i, base + 3 * i + 1, base + 3 * i + 2, base + 3 * i)
                            for i in range(start, min(count, start + chunk))))
        f.write(text[objects_end:])


if __name__ == "__main__":
    main()
