"""Writes a scan without the rows of saved tables by the usual package: drop.py FILE OUT TABLE..."""

import sys

import pandas

scan = pandas.read_csv(sys.argv[1], sep="\t")
tables = pandas.concat(pandas.read_csv(table, sep="\t") for table in sys.argv[3:])
named = tables[["Position", "P"]].drop_duplicates()
merged = scan.merge(named, how="left", left_on=["POS", "P"], right_on=["Position", "P"],
                    indicator=True)
scan[(merged["_merge"] == "left_only").to_numpy()].to_csv(sys.argv[2], sep="\t", index=False)
