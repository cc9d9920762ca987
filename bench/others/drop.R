# Writes a scan without the rows of saved tables by the usual package: drop.R FILE OUT TABLE...
library(data.table)

arguments <- commandArgs(trailingOnly = TRUE)
scan <- fread(arguments[1])
named <- rbindlist(lapply(arguments[-(1:2)], fread))
setnames(named, "Position", "POS")
fwrite(scan[!named, on = c("POS", "P")], arguments[2], sep = "\t")
