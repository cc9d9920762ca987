"""Plots a scan with the usual packages: manhattan.py FILE PNG"""

import sys

import matplotlib
import numpy
import pandas

matplotlib.use("Agg")
from matplotlib import pyplot

scan = pandas.read_csv(sys.argv[1], sep="\t", usecols=["#CHROM", "POS", "P"])
figure, axes = pyplot.subplots(figsize=(15.36, 8.10), dpi=100)
offset = 0
for number, (_, chromosome) in enumerate(scan.groupby("#CHROM", sort=False)):
    axes.plot(chromosome["POS"] + offset, -numpy.log10(chromosome["P"]), ",", color=f"C{number % 2}")
    offset += chromosome["POS"].iloc[-1]
figure.savefig(sys.argv[2])
