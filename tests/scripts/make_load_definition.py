#!/usr/bin/python3
"""Writes the source drawings of the load_definition transcript with ezdxf (an
independent DXF writer).

Usage: /usr/bin/python3 tests/scripts/make_load_definition.py [OUTDIR]

  load_definition_source.dxf  tables Roads, Wells, Fläche (user tables), TPMID_net
                              (a topology table) and Parcels (which the transcript's
                              drawing defines already, with other columns), and
                              entities carrying records of them;
  load_definition_bad.dxf     the same drawing with a column type that no table can
                              have, in the definition of Wells.
"""
import os
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "..", "host", "dxf"))
import make_corpus as corpus  # noqa: E402  (fixes ezdxf's metadata and hash seed)
import ezdxf  # noqa: E402

corpus.OD_TABLES["Wells"] = [("DEPTH", "real", "Depth in m", 2.5),
                             ("AT", "point", "Head", (1.0, 2.0, 3.0)),
                             ("NOTE", "character", "", "dry")]
corpus.OD_TABLES["Fläche"] = [("AREA", "real", "m²", 0.0)]
corpus.OD_TABLES["TPMID_net"] = [("NODE", "integer", "", 0)]
corpus.OD_TABLES["Parcels"] = [("OWNER", "character", "", "nobody")]
TABLES = ["Roads", "Wells", "Fläche", "TPMID_net", "Parcels"]


def build():
    doc = ezdxf.new("R2010")
    msp = doc.modelspace()
    line = msp.add_line((0, 0), (10, 0))
    corpus.attach_od(line, [("Roads", [1, 10.0, "gravel", (0, 0, 0), "Zürich"]),
                            ("TPMID_net", [4])])
    corpus.attach_od(msp.add_circle((5, 5), 1), [("Wells", [7.5, (5, 5, 0), "wet"]),
                                                 ("Parcels", ["Ann"])])
    # The tables' objects come after the records that name them.
    corpus.add_od_tables(doc, TABLES)
    return doc


def main():
    out = sys.argv[1] if len(sys.argv) > 1 else HERE
    good = os.path.join(out, "load_definition_source.dxf")
    build().saveas(good)
    with open(good, encoding="utf-8") as f:
        text = f.read()
    at = text.index("DEPTH\n 70\n2\n")
    with open(os.path.join(out, "load_definition_bad.dxf"), "w", encoding="utf-8") as f:
        f.write(text[:at] + "DEPTH\n 70\n9\n" + text[at + len("DEPTH\n 70\n2\n"):])


if __name__ == "__main__":
    main()
