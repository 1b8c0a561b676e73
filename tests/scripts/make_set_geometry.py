#!/usr/bin/python3
"""Writes set_geometry.dxf with ezdxf (an independent DXF writer): one entity of
each kind that the coordinate and property commands tell apart, each carrying a
record of the table Geo whose fields they fill, and a few that carry none.

Usage: /usr/bin/python3 tests/scripts/make_set_geometry.py [OUT.dxf]
Prints each entity's handle with what it is, for the script's comments.
"""
import os
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "..", "host", "dxf"))
import make_corpus as corpus  # noqa: E402  (fixes ezdxf's metadata and hash seed)
import ezdxf  # noqa: E402
from ezdxf.acis import api as acis  # noqa: E402
from ezdxf.render import forms  # noqa: E402

corpus.OD_TABLES["Geo"] = [("ID", "integer", "", 0), ("NAME", "character", "", ""),
                           ("VAL", "real", "", 0.0), ("PT", "point", "", (0.0, 0.0, 0.0)),
                           ("TXT", "character", "", "")]
corpus.OD_TABLES["Other"] = [("ID", "integer", "", 0)]
# What each field holds before a command writes it.
OLD = [-1, "old", -1.0, (9.0, 9.0, 9.0), "old"]


def cube_solid(msp, size, at):
    """A 3DSOLID box as SAT text (R2010 keeps it in the entity), its time pinned."""
    solid = msp.add_3dsolid()
    mesh = forms.cube().scale_uniform(size).translate(*at)
    acis.export_dxf(solid, [acis.body_from_mesh(mesh)])
    solid.sat = [corpus.CTIME_TEXT.sub(corpus.FIXED_CTIME, line) for line in solid.sat]
    return solid


def entities(doc, msp):
    """(what, entity, whether it carries a record of Geo), in handle order."""
    block = doc.blocks.new("MARK", base_point=(0, 0))
    block.add_circle((0, 0), 1)
    locked = doc.layers.add("Locked")
    locked.lock()
    hatch = msp.add_hatch(color=3)
    hatch.paths.add_polyline_path([(90, 0), (94, 0), (94, 2), (90, 2)], is_closed=True)
    old2d = msp.add_polyline2d([(100, 0), (104, 0), (104, 4)])
    return [
        ("LINE 0,0,1 to 4,2,3", msp.add_line((0, 0, 1), (4, 2, 3)), True),
        ("LWPOLYLINE closed square 10,0 14,0 14,4 10,4",
         msp.add_lwpolyline([(10, 0), (14, 0), (14, 4), (10, 4)], close=True), True),
        ("LWPOLYLINE closed, a half circle bulging out of 24,0 to 24,4",
         msp.add_lwpolyline([(20, 0, 0), (24, 0, 1), (24, 4, 0), (20, 4, 0)],
                            format="xyb", close=True), True),
        ("LWPOLYLINE open 30,0 34,0 34,3",
         msp.add_lwpolyline([(30, 0), (34, 0), (34, 3)]), True),
        ("3D POLYLINE open 40,0,0 44,0,3 44,3,3",
         msp.add_polyline3d([(40, 0, 0), (44, 0, 3), (44, 3, 3)]), True),
        ("3D POLYLINE closed 50,0,0 54,0,0 54,3,0",
         msp.add_polyline3d([(50, 0, 0), (54, 0, 0), (54, 3, 0)], close=True), True),
        ("3D POLYLINE open, ends meeting: 60,0,0 64,0,0 64,3,0 60,0,0",
         msp.add_polyline3d([(60, 0, 0), (64, 0, 0), (64, 3, 0), (60, 0, 0)]), True),
        ("ARC centre 70,0 radius 2, 0 to 90 degrees", msp.add_arc((70, 0), 2, 0, 90), True),
        ("CIRCLE centre 75,0,2 radius 1", msp.add_circle((75, 0, 2), 1), True),
        ("ELLIPSE centre 80,0 axes 2 and 1", msp.add_ellipse((80, 0), (2, 0, 0), 0.5), True),
        ("SPLINE control points 84,0 85,2 86,0",
         msp.add_open_spline([(84, 0), (85, 2), (86, 0)], degree=2), True),
        ("HATCH 90,0 to 94,2", hatch, True),
        ("old-style 2D POLYLINE 100,0 104,0 104,4", old2d, True),
        ("MLINE 110,0 114,0 114,4", msp.add_mline([(110, 0), (114, 0), (114, 4)]), True),
        ("TEXT at 120,1,5", msp.add_text("label", height=1, dxfattribs={"insert": (120, 1, 5)}),
         True),
        ("MTEXT at 125,1", msp.add_mtext("note", dxfattribs={"insert": (125, 1)}), True),
        ("INSERT of MARK at 130,2,1", msp.add_blockref("MARK", (130, 2, 1)), True),
        ("3DSOLID box of side 2 round 140,0,1", cube_solid(msp, 2, (140, 0, 1)), True),
        ("POINT at 150,1,2", msp.add_point((150, 1, 2)), True),
        ("LINE of no length at 160,0", msp.add_line((160, 0), (160, 0)), True),
        ("LINE 12.3456,7.25 to 12.3456,7.25 on the locked layer",
         msp.add_line((12.3456, 7.25), (12.3456, 7.25), dxfattribs={"layer": "Locked"}), True),
        ("LINE 170,0 to 172,0 with a record of Other only",
         msp.add_line((170, 0), (172, 0)), False),
    ]


def build():
    doc = ezdxf.new("R2010")
    corpus.add_od_tables(doc, ("Geo", "Other"))
    msp = doc.modelspace()
    listing = []
    for what, entity, geo in entities(doc, msp):
        corpus.attach_od(entity, [("Geo", OLD), ("Other", [1])] if geo else [("Other", [7])])
        listing.append("%s  %s" % (entity.dxf.handle, what))
    return doc, listing


def main():
    corpus.write_fixture(build, os.path.join(HERE, "set_geometry.dxf"))


if __name__ == "__main__":
    main()
