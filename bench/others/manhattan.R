# Plots a scan with the usual packages: manhattan.R FILE PNG
library(data.table)
library(qqman)

arguments <- commandArgs(trailingOnly = TRUE)
scan <- fread(arguments[1], select = c("#CHROM", "POS", "P"))
setnames(scan, "#CHROM", "CHROM")
png(arguments[2], width = 1536, height = 810)
manhattan(scan, chr = "CHROM", bp = "POS", p = "P", snp = "POS")
invisible(dev.off())
