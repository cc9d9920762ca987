"""Lists the strongest marker of each region by the usual package: hits.py FILE TABLE"""

import sys

import pandas

window = 500_000
scan = pandas.read_csv(sys.argv[1], sep="\t", usecols=["#CHROM", "POS", "ID", "P"])
below = scan[scan["P"] < 5e-8].sort_values("P", kind="stable")
leads = []
while not below.empty:
    lead = below.iloc[0]
    leads.append(lead)
    is_near = (below["#CHROM"] == lead["#CHROM"]) & ((below["POS"] - lead["POS"]).abs() < window)
    below = below[~is_near]
pandas.DataFrame(leads).to_csv(sys.argv[2], sep="\t", index=False)
