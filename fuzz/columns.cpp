// Which columns understand() chooses, against the plain version. Input: options, a separator, for
// each column a title and a kind of values, and for each field a value of that kind.

#include "finding.h"
#include "input.h"
#include "understanding.h"

#include <QByteArrayList>

namespace {

const QByteArrayList titles{"CHR",       "chrom",
                            "#CHROM",    "chr_hg19",
                            "POS",       "BP",
                            "GENPOS",    "pos_b37",
                            "base_pair", "pos_hg38",
                            "start",     "end",
                            "CHR:POS",   "SNP",
                            "rsid",      "MarkerName",
                            "ID",        "variant_id",
                            "P",         "p.value",
                            "PVALUE",    "P_EUR",
                            "P_EAS",     "P_BOLT_LMM",
                            "P_INF",     "pval_adj",
                            "FDR",       "LOG10P",
                            "-log10(p)", "NEG_LOG10_PVALUE",
                            "mlogp",     "log_p",
                            "ln_p",      "het_p",
                            "P_HWE",     "Pr(>|z|)",
                            "TEST",      "A1",
                            "BETA",      "SE",
                            "Z",         "N",
                            "INFO",      "trait",
                            "phenotype", "p_gc",
                            "P-value",   "Allele1",
                            "OR",        "Freq1",
                            "hm_chrom",  "hm_pos",
                            "X",         "",
                            "Position",  "Chr",
                            "-log10(P)", "all_inv_var_meta_p",
                            "p_lrt",     "p_wald"};

// Kinds of values, eight each.
const QList<QByteArrayList> kinds{
    {"1", "2", "3", "22", "X", "1", "2", "10"},
    {"chr1", "chr1", "chr2", "chr10", "chrX", "chrM", "chr1", "chr2"},
    {"100", "2000", "30000", "150", "999", "5", "70", "800000000"},
    {"0.5", "0.1", "1e-5", "0.00012", "3.2E-09", "1", "0", "0.9"},
    {"0.3", "1", "5", "8.5", "12", "0", "2.25", "400"},
    {"-0.3", "-1", "-5", "-8.5", "-12", "0", "-2.25", "-400"},
    {"rs1", "rs22", "rs300", "rs4", ".", "rs5", "rs6000", "rs7"},
    {"1:100:A:C", "1:2000", "2:30_A_G", "X:5", "1_7_A_T", "2:9:C:G", "chr1:8", "3:4"},
    {"ADD", "DOM", "ADD", "REC", "ADD", "ADD", "DOM", "ADD"},
    {"NA", "", ".", "nan", "0.5", "1", "-", "NA"},
    {"A", "C", "G", "T", "AT", "A", "C", "G"},
    {"0,5", "1e-5", "\"a b\"", "\"1\"", "x y", "1,234,567", "inf", "<1e-9"}};

PrepareOptions optionsOf(int choice) {
    PrepareOptions options;
    options.noHeader = choice == 1;
    options.zeroBased = choice == 2;
    options.authorBuild = choice == 3;
    if (choice == 4)
        options.p = "P";
    if (choice == 5)
        options.p = "2";
    if (choice == 6)
        options.chromosome = "CHR";
    if (choice == 7)
        options.position = "3";
    if (choice == 8)
        options.pScale = PScale::NegLog10;
    if (choice == 9)
        options.chromosomeValue = "7";
    return options;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    Input input(bytes, size);
    const PrepareOptions options = optionsOf(input.below(32));
    const QByteArray separator = QByteArrayList{"\t", ",", ";", " ", "   "}[input.below(5)];
    const int rows = 1 + input.below(40);
    QByteArrayList header;
    QList<int> kind;
    for (int column = 1 + input.below(12); column > 0; --column) {
        header.append(titles[input.below(static_cast<int>(titles.size()))]);
        kind.append(input.below(static_cast<int>(kinds.size())));
    }
    QByteArray table = header.join(separator) + '\n';
    for (int row = 0; row < rows && !input.isAtEnd(); ++row) {
        QByteArrayList fields;
        for (const int each : kind)
            fields.append(kinds[each][input.below(8)]);
        table += fields.join(separator) + '\n';
    }
    checkUnderstanding(table, options);
    return 0;
}
