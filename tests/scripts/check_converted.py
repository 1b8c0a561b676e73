#!/usr/bin/python3
"""The polylines that convert.scr leaves, as an independent reader (ezdxf) finds them in
the saved file, held against their sources in convert.dxf.

Usage: /usr/bin/python3 tests/scripts/check_converted.py ZARVEL SCRIPTS WORKDIR

Each entity of convert.dxf carries a record of Geo whose ID names it. Saved, every source
that was converted is gone, and one polyline of model space carries its records: a
lightweight one, running backwards, at the mean height of a line's or 3D polyline's ends,
at the centre's height for an arc, circle or ellipse; a 3D one through a lightweight
polyline's vertices in their order. Every vertex of an approximated curve lies on it, and
a line's display properties come along.
"""
import math
import os
import subprocess
import sys

import ezdxf

CONVERTED_TO_3D = {"LWPOLYLINE"}
CONVERTED_TO_2D = {"LINE", "ARC", "CIRCLE", "ELLIPSE", "SPLINE"}
PROPERTIES = ["layer", "color", "linetype", "ltscale", "lineweight", "true_color",
              "transparency"]


def geo_id(entity):
    if not entity.has_extension_dict:
        return None
    xrec = entity.get_extension_dict().dictionary.get("ZARVEL_OD")
    return xrec.tags[1].value if xrec is not None and xrec.tags[0].value == "Geo" else None


def records(entity):
    return [tuple(t) for t in entity.get_extension_dict().dictionary.get("ZARVEL_OD").tags]


def by_id(doc):
    found = {}
    for layout in doc.layouts:
        for e in layout:
            if geo_id(e) is not None:
                found[geo_id(e)] = (layout.name, e)
    return found


def close(a, b):
    return all(abs(x - y) < 1e-9 for x, y in zip(a, b))


def on_curve(source, p):
    """Whether the point lies on the source curve, seen from above for a level one."""
    kind = source.dxftype()
    if kind in ("ARC", "CIRCLE"):
        c = source.dxf.center
        return abs(math.hypot(p[0] - c[0], p[1] - c[1]) - source.dxf.radius) < 1e-9
    if kind == "ELLIPSE":
        c, a = source.dxf.center, source.dxf.major_axis
        u = ((p[0] - c[0]) / a.magnitude) ** 2 + ((p[1] - c[1]) / (a.magnitude * source.dxf.ratio)) ** 2
        return abs(u - 1.0) < 1e-9
    return True  # a spline: its ends are checked


def check_2d(source, poly, problems, name):
    if poly.dxftype() != "LWPOLYLINE":
        return problems.append("%s: %s, not a lightweight polyline" % (name, poly.dxftype()))
    points = [(x, y) for x, y, *_ in poly.get_points("xy")]
    kind = source.dxftype()
    if kind == "LINE" or (kind == "POLYLINE" and source.is_3d_polyline):
        xyz = ([source.dxf.start, source.dxf.end] if kind == "LINE"
               else [v.dxf.location for v in source.vertices])
        expected = [(p[0], p[1]) for p in reversed(xyz)]
        height = sum(p[2] for p in xyz) / len(xyz)
        if not all(close(a, b) for a, b in zip(points, expected)) or len(points) != len(expected):
            problems.append("%s: vertices %s, expected %s" % (name, points, expected))
        if abs(poly.dxf.elevation - height) > 1e-9:
            problems.append("%s: elevation %s, expected %s" % (name, poly.dxf.elevation, height))
        if kind == "POLYLINE" and poly.closed != source.is_closed:
            problems.append("%s: closed %s, expected %s" % (name, poly.closed, source.is_closed))
    elif source.dxf.extrusion.isclose((0, 0, 1)):
        off = [p for p in points if not on_curve(source, p)]
        if off:
            problems.append("%s: vertices off the curve: %s" % (name, off))
        if kind in ("ARC", "CIRCLE", "ELLIPSE") and abs(poly.dxf.elevation - source.dxf.center[2]) > 1e-9:
            problems.append("%s: elevation %s, not the centre's" % (name, poly.dxf.elevation))


def check_3d(source, poly, problems, name):
    if poly.dxftype() != "POLYLINE" or not poly.is_3d_polyline:
        return problems.append("%s: %s, not a 3D polyline" % (name, poly.dxftype()))
    points = [tuple(v.dxf.location) for v in poly.vertices]
    expected = [tuple(p) for p in source.vertices_in_wcs()]
    if len(points) != len(expected) or not all(close(a, b) for a, b in zip(points, expected)):
        problems.append("%s: vertices %s, expected %s" % (name, points, expected))
    if poly.is_closed != source.closed:
        problems.append("%s: closed %s, expected %s" % (name, poly.is_closed, source.closed))


def check(sources, saved):
    problems = []
    for number, (_, source) in sorted(sources.items()):
        name = "Geo %d (%s %s)" % (number, source.dxftype(), source.dxf.handle)
        space, result = saved[number]
        kind = source.dxftype()
        converts = kind in CONVERTED_TO_2D | CONVERTED_TO_3D or (
            kind == "POLYLINE" and source.is_3d_polyline)
        if source.dxf.layer == "Locked" or not converts:
            if result.dxf.handle != source.dxf.handle:
                problems.append("%s: replaced by %s" % (name, result.dxf.handle))
            continue
        if result.dxf.handle == source.dxf.handle or space != "Model":
            problems.append("%s: not replaced by a polyline of model space" % name)
            continue
        if records(result) != records(source):
            problems.append("%s: records %s, expected %s" % (name, records(result), records(source)))
        for p in PROPERTIES:
            if result.dxf.get(p) != source.dxf.get(p):
                problems.append("%s: %s %s, expected %s" % (name, p, result.dxf.get(p), source.dxf.get(p)))
        if source.get_hyperlink() != result.get_hyperlink():
            problems.append("%s: hyperlink %s" % (name, result.get_hyperlink()))
        (check_3d if kind in CONVERTED_TO_3D else check_2d)(source, result, problems, name)
    return problems


def main():
    zarvel, scripts, work = sys.argv[1:4]
    os.makedirs(work, exist_ok=True)
    drawing = os.path.join(scripts, "convert.dxf")
    out = os.path.join(work, "convert-converted.dxf")
    subprocess.run([zarvel, drawing, "-s", os.path.join(scripts, "convert.scr"), "-o", out],
                   capture_output=True, check=True)
    problems = check(by_id(ezdxf.readfile(drawing)), by_id(ezdxf.readfile(out)))
    for p in problems:
        print(p)
    sys.exit(1 if problems else 0)


if __name__ == "__main__":
    main()
