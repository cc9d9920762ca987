# Writes chromosome, position, p, -log10 p and name in order by the usual package:
# prepare.R FILE TABLE
library(data.table)

arguments <- commandArgs(trailingOnly = TRUE)
scan <- fread(arguments[1], select = c("#CHROM", "POS", "P", "ID"))
setnames(scan, "#CHROM", "Chr")
scan[, log := signif(-log10(P), 6)]
setorder(scan, Chr, POS)
setcolorder(scan, c("Chr", "POS", "P", "log", "ID"))
fwrite(scan, arguments[2], sep = "\t")
