"""Writes chromosome, position, p, -log10 p and name in order by the usual package: prepare.py FILE TABLE"""

import sys

import numpy
import pandas

scan = pandas.read_csv(sys.argv[1], sep="\t", usecols=["#CHROM", "POS", "ID", "P"])
scan["-log10(P)"] = (-numpy.log10(scan["P"])).map("{:.6g}".format)
scan = scan.sort_values(["#CHROM", "POS"], kind="stable")
scan[["#CHROM", "POS", "P", "-log10(P)", "ID"]].to_csv(sys.argv[2], sep="\t", index=False)
