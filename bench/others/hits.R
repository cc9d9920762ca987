# Lists the strongest marker of each region by the usual package: hits.R FILE TABLE
library(data.table)

window <- 500000
arguments <- commandArgs(trailingOnly = TRUE)
scan <- fread(arguments[1], select = c("#CHROM", "POS", "P", "ID"))
setnames(scan, "#CHROM", "Chr")
below <- scan[P < 5e-8][order(P)]
leads <- list()
while (nrow(below) > 0) {
    lead <- below[1]
    leads[[length(leads) + 1]] <- lead
    below <- below[Chr != lead$Chr | abs(POS - lead$POS) >= window]
}
fwrite(rbindlist(leads), arguments[2], sep = "\t")
