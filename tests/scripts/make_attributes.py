#!/usr/bin/python3
"""Writes attributes.dxf, the drawing of the attributes transcripts, with an independent writer.

Usage: /usr/bin/python3 tests/scripts/make_attributes.py OUT.dxf

Model space, in this order:
  Street references at x 0 and 20 (NAME, Lanes, WIDTH, LOC, a constant KIND and a preset ZONE
  in the block, the last two not on the references),
  a Street reference on the locked layer Locked, a Pole reference (ID), a Tree reference (no
  attributes), a line, and two references of the dynamic block Gate through the anonymous
  blocks that represent it (attribute ID).
"""
import sys

import ezdxf

doc = ezdxf.new("R2018")
msp = doc.modelspace()
doc.layers.add("Locked").lock()

street = doc.blocks.new("Street")
street.add_line((0, 0), (10, 0))
for tag, y in (("NAME", 1), ("Lanes", 2), ("WIDTH", 3), ("LOC", 4)):
    street.add_attdef(tag, (0, y), text="?")
street.add_attdef("KIND", (0, 5), text="road", dxfattribs={"flags": 2})
street.add_attdef("ZONE", (0, 6), text="A", dxfattribs={"flags": 8})

pole = doc.blocks.new("Pole")
pole.add_circle((0, 0), 0.5)
pole.add_attdef("ID", (0, 1), text="0")

tree = doc.blocks.new("Tree")
tree.add_circle((0, 0), 1)


def reference(block, x, values, layer="0"):
    ref = msp.add_blockref(block, (x, 0), dxfattribs={"layer": layer})
    for i, (tag, text) in enumerate(values):
        ref.add_attrib(tag, text, (x, i + 1))
    return ref


reference("Street", 0, [("NAME", "Main"), ("Lanes", "12.7"), ("WIDTH", "12.7"),
                        ("LOC", "1.5,2.5")])
reference("Street", 20, [("NAME", "Side"), ("Lanes", "2"), ("WIDTH", "7.25"), ("LOC", "4")])
reference("Street", 40, [("NAME", "Hidden"), ("Lanes", "9"), ("WIDTH", "9"), ("LOC", "9,9,9")],
          layer="Locked")
reference("Pole", 60, [("ID", "P-1")])
reference("Tree", 80, [])
msp.add_line((0, 20), (10, 20))

gate = doc.blocks.new("Gate")
gate.add_lwpolyline([(0, 0), (2, 0)])
gate.add_attdef("ID", (0, 1), text="G")
doc.appids.add("AcDbBlockRepBTag")
for x, text in ((100, "G-1"), (120, "G-2")):
    shape = doc.blocks.new_anonymous_block("U")
    shape.add_lwpolyline([(0, 0), (3, 0)])
    shape.add_attdef("ID", (0, 1), text="G")
    shape.block_record.set_xdata("AcDbBlockRepBTag", [
        (1070, 1), (1005, gate.block_record.dxf.handle)])
    reference(shape.name, x, [("ID", text)])

doc.saveas(sys.argv[1])
