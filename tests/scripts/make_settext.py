#!/usr/bin/python3
"""Writes settext.dxf, the drawing of the settext transcript, with an independent writer.

Usage: /usr/bin/python3 tests/scripts/make_settext.py OUT.dxf

Targets and texts, a tolerance of 2 in mind:
  closed squares at x 0, 20, 40: one text inside, two inside, none inside (one just outside)
  an open polyline labelled by a centred text (its insertion point lies far off)
  a line with two texts in reach, a line with its text out of reach, a line with a text at
  exactly 2, a point, a block reference labelled by a two-line mtext, a circle (its centre)
"""
import sys

import ezdxf
from ezdxf.enums import TextEntityAlignment

doc = ezdxf.new("R2018")
msp = doc.modelspace()
tree = doc.blocks.new("tree")
tree.add_circle((0, 0), 0.5)


def square(x):
    msp.add_lwpolyline([(x, 0), (x + 10, 0), (x + 10, 10), (x, 10)], close=True)


square(0)
msp.add_text("P1 inside", dxfattribs={"insert": (5, 5)})
square(20)
msp.add_text("A", dxfattribs={"insert": (22, 2)})
msp.add_text("B", dxfattribs={"insert": (28, 8)})
square(40)
msp.add_text("beside", dxfattribs={"insert": (50.5, 5)})

msp.add_lwpolyline([(0, 20), (10, 20), (10, 25)])
centred = msp.add_text("Main road", dxfattribs={"insert": (300, 300)})
centred.set_placement((5, 21), align=TextEntityAlignment.CENTER)
centred.dxf.insert = (300, 300)

msp.add_line((20, 20), (30, 20))
msp.add_text("L1", dxfattribs={"insert": (22, 21)})
msp.add_text("L2", dxfattribs={"insert": (28, 21)})
msp.add_line((40, 20), (50, 20))
msp.add_text("far", dxfattribs={"insert": (45, 23)})
msp.add_line((0, 60), (10, 60))
msp.add_text("edge", dxfattribs={"insert": (5, 62)})

msp.add_point((0, 40))
msp.add_text("7 well", dxfattribs={"insert": (1, 40)})
msp.add_blockref("tree", (20, 40))
msp.add_mtext("oak\nold", dxfattribs={"insert": (21, 40.5)})
msp.add_circle((40, 40), 3)
msp.add_text("pond", dxfattribs={"insert": (40.5, 40)})

doc.saveas(sys.argv[1])
