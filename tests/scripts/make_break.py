#!/usr/bin/python3
"""Writes break.dxf with ezdxf (an independent DXF writer): one curve of each kind
that BREAK takes, each carrying records of TPMID_x and Roads, the first line with
another application's entry in its extension dictionary too, a line without
records and a line with records on a layer that is off.

Usage: /usr/bin/python3 tests/scripts/make_break.py [OUT.dxf]
Prints each entity's handle with what it is, for the script's comments.
"""
import os
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "..", "host", "dxf"))
import make_corpus as corpus  # noqa: E402  (fixes ezdxf's metadata and hash seed)
import ezdxf  # noqa: E402


def entities(doc, msp):
    """(what, entity, records, with another application's entry), in handle order."""
    doc.layers.add("Off").off()
    records = lambda n: [("TPMID_x", [n, "piece %d" % n, n / 4, (n, 0, 0)]),  # noqa: E731
                         ("Roads", [n, 1.5, "gravel", (1, 2, 3), "Łódź"])]
    return [
        ("3D LINE 0,0,1 to 10,0,3", msp.add_line((0, 0, 1), (10, 0, 3)), records(1), True),
        ("ARC centre 20,0 radius 5, 0 to 180 degrees", msp.add_arc((20, 0), 5, 0, 180),
         records(2), False),
        ("CIRCLE centre 40,0 radius 5", msp.add_circle((40, 0), 5), records(3), False),
        ("ELLIPSE centre 60,0 axes 8 and 4", msp.add_ellipse((60, 0), (8, 0, 0), 0.5),
         records(4), False),
        ("LWPOLYLINE 70,0 80,0 80,10", msp.add_lwpolyline([(70, 0), (80, 0), (80, 10)]),
         records(5), False),
        ("3D POLYLINE 90,0,0 100,0,5 100,10,5",
         msp.add_polyline3d([(90, 0, 0), (100, 0, 5), (100, 10, 5)]), records(6), False),
        ("old-style 2D POLYLINE 110,0 120,0 120,10",
         msp.add_polyline2d([(110, 0), (120, 0), (120, 10)]), records(7), False),
        ("SPLINE control points 130,0 135,10 140,0 145,10",
         msp.add_open_spline([(130, 0), (135, 10), (140, 0), (145, 10)], degree=3),
         records(8), False),
        ("LINE 0,20 to 10,20 without records", msp.add_line((0, 20), (10, 20)), [], False),
        ("LINE 0,30 to 10,30 on the layer Off",
         msp.add_line((0, 30), (10, 30), dxfattribs={"layer": "Off"}), records(9), False),
    ]


def build():
    doc = ezdxf.new("R2010")
    corpus.add_od_tables(doc, ("TPMID_x", "Roads"))
    msp = doc.modelspace()
    listing = []
    for what, entity, records, foreign in entities(doc, msp):
        if records:
            corpus.attach_od(entity, records, foreign)
        listing.append("%s  %s" % (entity.dxf.handle, what))
    return doc, listing


def main():
    corpus.write_fixture(build, os.path.join(HERE, "break.dxf"))


if __name__ == "__main__":
    main()
