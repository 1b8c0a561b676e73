#!/usr/bin/python3
"""Puts a fragment of entities into an empty R2018 drawing that ezdxf makes and prints
what ezdxf reads of each entity, one line each.

Usage: /usr/bin/python3 ezdxf_read_back.py FRAGMENT
The fragment's owner handle ABCDE is replaced by the model space's.
"""
import io
import sys

import ezdxf

doc = ezdxf.new("R2018")
doc.layers.add("Walls")
doc.blocks.new("B1").add_line((0, 0), (1, 1))
out = io.StringIO()
doc.write(out)
owner = doc.modelspace().block_record.dxf.handle
fragment = open(sys.argv[1], encoding="utf-8").read()
fragment = fragment.replace("\n330\nABCDE\n", "\n330\n%s\n" % owner)
text = out.getvalue().replace("ENTITIES\n  0\nENDSEC", "ENTITIES\n" + fragment + "  0\nENDSEC", 1)
doc = ezdxf.read(io.StringIO(text))
print("errors", len(doc.audit().errors))


def n(v):
    return "%.9g" % v


def p(v):
    return ",".join(n(c) for c in v)


for e in doc.modelspace():
    a = e.dxf
    t = e.dxftype()
    line = [t, a.handle, a.layer, str(a.color)]
    if t == "LINE":
        line += [p(a.start), p(a.end)]
    elif t in ("ARC", "CIRCLE"):
        line += [p(a.center), n(a.radius)]
        if t == "ARC":
            line += [n(a.start_angle), n(a.end_angle)]
    elif t == "LWPOLYLINE":
        line += [str(e.closed), n(a.elevation)] + [p(v) for v in e.get_points("xyseb")]
    elif t == "TEXT":
        line += [a.text, p(a.insert), n(a.height), n(a.rotation), str(a.halign), p(a.align_point)]
    elif t == "INSERT":
        line += [a.name, p(a.insert), n(a.xscale), n(a.rotation)]
        line += [at.dxf.tag + "=" + at.dxf.text for at in e.attribs]
    elif t == "MTEXT":
        line += [str(len(e.text)), e.text[-3:], n(a.char_height)]
    elif t == "POLYLINE":
        line += [str(e.is_2d_polyline), n(a.elevation[2])]
        line += [p(v.dxf.location) + "/" + n(v.dxf.bulge) for v in e.vertices]
    elif t == "HATCH":
        line += [str(len(e.paths)), a.pattern_name]
    if e.has_hyperlink():
        line += ["link=" + "|".join(e.get_hyperlink())]
    print(" ".join(line))
