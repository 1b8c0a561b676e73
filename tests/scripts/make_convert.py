#!/usr/bin/python3
"""Writes convert.dxf with ezdxf (an independent DXF writer): one entity of each kind
(those of make_set_geometry.py) and the curves that the polyline conversions tell apart,
each carrying a record of Geo whose ID names it, then one of Other; a few carry a record
of the topology table TPMID_x too, one stands in paper space, one has its display
properties set.

Usage: /usr/bin/python3 tests/scripts/make_convert.py [OUT.dxf]
Prints each entity's handle with its Geo ID and what it is, for the script's comments.
"""
import math
import os
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, HERE)
import make_set_geometry as geo  # noqa: E402  (its entities and tables)

corpus = geo.corpus
ezdxf = geo.ezdxf


def extras(doc, msp):
    """The curves the conversions tell apart, as (what, entity, with a TPMID_x record)."""
    doc.layers.add("Red")
    doc.linetypes.add("DASHED", pattern=[0.75, 0.5, -0.25])
    styled = msp.add_line((250, 0), (254, 0), dxfattribs={
        "layer": "Red", "color": 1, "linetype": "DASHED", "ltscale": 2.0, "lineweight": 35})
    styled.rgb = (10, 20, 30)
    styled.transparency = 0.5
    styled.set_hyperlink("https://example.org/roads", "Roads", "sheet 2")
    closed_spline = msp.add_open_spline([(220, 0), (222, 2), (224, 0), (222, -2), (220, 0)],
                                        degree=2)
    closed_spline.closed = True
    # Its centre in its own plane, whose X, Y and Z are the world's Y, Z and X.
    tilted = msp.add_circle((0, 1, 240), 1, dxfattribs={"extrusion": (1, 0, 0)})
    return [
        ("LINE 0,0,1 to 10,0,3", msp.add_line((0, 0, 1), (10, 0, 3)), True),
        ("3D POLYLINE closed 200,0,1 204,0,2 204,3,6",
         msp.add_polyline3d([(200, 0, 1), (204, 0, 2), (204, 3, 6)], close=True), True),
        ("ELLIPSE half, centre 210,0 axes 2 and 1, from 0 to pi",
         msp.add_ellipse((210, 0), (2, 0, 0), 0.5, 0, math.pi), False),
        ("SPLINE closed, control points 220,0 222,2 224,0 222,-2 220,0", closed_spline, False),
        ("SPLINE in space, control points 230,0,0 231,2,1 232,0,3",
         msp.add_open_spline([(230, 0, 0), (231, 2, 1), (232, 0, 3)], degree=2), False),
        ("CIRCLE upright in the plane X=240, centre 240,0,1 radius 1", tilted, False),
        ("LINE 250,0 to 254,0, layer Red, colour 1 and 10,20,30, DASHED at scale 2, "
         "0.35 mm, half transparent, a hyperlink", styled, False),
    ]


def build():
    doc = ezdxf.new("R2010")
    corpus.add_od_tables(doc, ("Geo", "Other", "TPMID_x"))
    msp = doc.modelspace()
    made = [(what, e, False) for what, e, _ in geo.entities(doc, msp)] + extras(doc, msp)
    paper = doc.layout("Layout1")
    made.append(("LINE 300,0 to 304,0 in paper space", paper.add_line((300, 0), (304, 0)), True))
    listing = []
    for number, (what, entity, topology) in enumerate(made, start=1):
        records = [("Geo", [number] + geo.OLD[1:]), ("Other", [number])]
        if topology:
            records.append(("TPMID_x", [number, "node", 1.5, (1.0, 2.0, 3.0)]))
        corpus.attach_od(entity, records)
        listing.append("%s %2d %s" % (entity.dxf.handle, number, what))
    return doc, listing


def main():
    corpus.write_fixture(build, os.path.join(HERE, "convert.dxf"))


if __name__ == "__main__":
    main()
