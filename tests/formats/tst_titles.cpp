#include "joined_id.h"
#include "p_title.h"
#include "place_title.h"
#include "position_text.h"
#include "table_format.h"
#include "titles.h"

#include <QTest>

// What single titles, marker names, positions and lines are read as.
class Titles : public QObject {
    Q_OBJECT

private slots:
    void normalTitles_data();
    void normalTitles();
    void pTitles_data();
    void pTitles();
    void placeTitles_data();
    void placeTitles();
    void joinedIds_data();
    void joinedIds();
    void positions_data();
    void positions();
    void lines_data();
    void lines();
};

namespace {

void addColumns() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("expected");
}

void row(const char* text, const char* expected) {
    QTest::addRow("%s", text) << QByteArray(text) << QByteArray(expected);
}

void rows(const QList<const char*>& texts, const char* expected) {
    for (const char* const text : texts)
        row(text, expected);
}

QByteArray described(const PTitle& title) {
    if (title.tier == PTitle::Tier::Never)
        return "never";
    QByteArray text = title.isLog ? (title.saysMinus ? "minus log " : "log ") : "";
    if (title.tier == PTitle::Tier::Secondary)
        text += "secondary ";
    return text + QByteArray::number(title.rank);
}

QByteArray described(const PlaceColumnTitle& title) {
    static const char* const families[] = {"hm", "plain", "snp", "exposure", "outcome"};
    QByteArray text = title.isChromosome ? "chromosome " : "position ";
    text += families[title.family];
    if (title.rank > 0)
        text += " second";
    if (!title.build.isEmpty())
        text += " build" + title.build;
    return text + (title.isZeroBased ? " from 0" : "");
}

} // namespace

void Titles::normalTitles_data() {
    addColumns();
    row("\"P\"", "p");
    row("#CHROM", "chrom");
    row(" chr", "chr");
    row("Position ", "position");
    row("P.value", "p_value");
    row("p value", "p_value");
    row("POS(b37)", "pos_b37");
    row("P(R)", "p_r");
    row("\xef\xbb\xbf\" SNP \"", "snp");
    row("\xc2\xa6\xc3\x82", "\xc2\xa6\xc3\x82");
    row("-log10(P)", "log10_p");
    row("##rsid", "rsid");
    row("", "");
}

void Titles::normalTitles() {
    QFETCH(QByteArray, text);
    QTEST(normalTitle(viewOf(text)), "expected");
}

void Titles::pTitles_data() {
    addColumns();
    rows({"P", "p", "PVAL", "pval", "Pval", "PVALUE", "Pvalue", "pvalue", "P-value", "p_value",
          "p.value", "P.value", "p value", "P-VAL", "UNADJ", "UNADJP", "\"P\""},
         "0");
    rows({"P_BOLT_LMM",
          "p_wald",
          "frequentist_add_pvalue",
          "P-value_association",
          "mtag_pval",
          "OLS_pval",
          "Pval_Estimate",
          "pval_nominal",
          "SPA.pval",
          "Wald_P",
          "meta_p",
          "all_inv_var_meta_p",
          "Multiancestry_pval_fix",
          "P_fix",
          "PVALUE_FE",
          "GWAS_P",
          "GWASpval",
          "pvalue_meta",
          "pval_meta_hq",
          "P_combined",
          "frequentist_add_wald_pvalue"},
         "1");
    rows({"Exact_pval", "scan_p", "P_value_SMK", "P_value_NonSMK", "Pvalue_85", "Pvalue_Stage2",
          "Fisher_Pvalue", "InverseVariance_Pvalue", "pval_EUR", "fg_pval", "ukbb_pval",
          "leave_FINNGEN_inv_var_meta_p", "P_BMIadj", "p_sexadj", "bmiadj_p",
          "frequentist_add_wald_pvalue_1", "SINGLEVAR_PVALUEs", "pval.exposure"},
         "2");
    rows({"p.value.NA",
          "frequentist_rec_pvalue",
          "frequentist_gen_pvalue",
          "P_noSPA",
          "P_BOLT_LMM_INF",
          "P_GC",
          "p_dgc",
          "P.2gc",
          "GC.Pvalue",
          "pval_beta",
          "P(R)",
          "P(WZ)",
          "PVALUE_RE",
          "PVALUE_RE2",
          "P_ran",
          "p_lrt",
          "p_score",
          "LR_P_VAL",
          "p.value_c",
          "add_p",
          "dom_p",
          "Score.pval",
          "chisq_pval",
          "Multiancestry_pval_rand",
          "frequentist_dom_pvalue",
          "P_uncorrected",
          "p_plus"},
         "secondary 2");
    rows({"P_LINREG"}, "secondary 3");
    rows({"HetPVal",
          "Pvalue_Het",
          "het_pvalue",
          "heterogeneity_Pvalue",
          "P_hetero",
          "q_p-value",
          "Q_pval",
          "Q.pval",
          "P-value_ancestry_het",
          "P-value_residual_het",
          "HWE_PVALUE",
          "FDR_Adjusted_P-values",
          "pval_perm",
          "pval_nominal_threshold",
          "filter-pvalue",
          "P-VALUE (TEXT)",
          "pval_heterogeneity_EUR",
          "bayesian_add_pvalue",
          "frequentist_het_pvalue",
          "all_inv_var_het_p",
          "neglog10_pval_heterogeneity_hq",
          "MLOG10P_HET",
          "PVALUE_Q",
          "P_EMP1",
          "P_missing",
          "egger_pval",
          "P_cochran",
          "adj.P.Val",
          "P.adj",
          "P_adj_EUR",
          "bonf_p",
          "P_holm",
          "P_BH"},
         "never");
    rows({"PlinkP",  "BonferroniP",  "pJ",         "pC",      "GCADJP",        "HetPVa",
          "BONF",    "FDR_BH",       "pos",        "bp",      "snp",           "ps",
          "pheno",   "cohort_1_hwe", "lnBF",       "LOG10BF", "LOG10BF.BAYES", "LOG10Q",
          "logHetP", "log_odds",     "LOG(OR)_SE", "logl_H1", "mainp",         "adjp",
          "padj",    "p1",           "",           "log",     "LogOR",         "position"},
         "none");
    rows({"NEG_LOG10_P", "MLOG10P", "mlogp", "neg_log_10_p_value", "pvalue_neg_log10",
          "minus_log10_pval", "PVALUE_MLOG", "LP", "_-log10_p-value", "pval(-log10)",
          "neg_log_pvalue", "-log10(P)", "-log10p", "nlog10p", "negative_log10_p_value", "-logP",
          "neglog10pval"},
         "minus log 0");
    rows({"LOG10P", "LOG10_P", "log_pvalue", "LOGPVALUE", "log(P)", "log10(P)", "logp", "p_log10"},
         "log 0");
    rows({"neglog10_pval_meta_hq", "all_inv_var_meta_mlogp"}, "minus log 1");
    rows({"neglog10_pval_EUR", "fg_mlogp", "height-log10p"}, "minus log 2");
    rows({"LOG10P.Y1"}, "log 2");
    rows({"pvalue_neg_log10_GC"}, "minus log secondary 2");
    rows({"P_log_reg", "p_log10_bmi", "p_logistic"}, "2");
}

void Titles::pTitles() {
    QFETCH(QByteArray, text);
    const std::optional<PTitle> title = readPTitle(viewOf(text));
    QTEST(title ? described(*title) : QByteArray("none"), "expected");
}

void Titles::placeTitles_data() {
    addColumns();
    rows({"CHR",    "CHROM",      "#CHROM",   "#chrom",   "chr",     "#CHR",
          "Chr",    "chromosome", "CHR_ID",   "chr_name", "seqname", "seqnames",
          "seqid",  "contig",     "scaffold", "LG",       "chro",    "chroms",
          "chromo", "ch",         "chrno",    "\"Chrom\""},
         "chromosome plain");
    rows({"CHR_num", "chrnum"}, "chromosome plain second");
    rows({"Chr_hg18build36", "chr_build36"}, "chromosome plain build36");
    rows({"HG19CHRC"}, "chromosome plain build37");
    rows({"hm_chrom", "hm_chr"}, "chromosome hm");
    rows({"SNPChr", "marker_chr"}, "chromosome snp");
    row("chr.exposure", "chromosome exposure");
    row("chr.outcome", "chromosome outcome");
    rows({"POS",
          "pos",
          "Position",
          "Position ",
          "BP",
          "bp",
          "base_pair_location",
          "ps",
          "bpos",
          "Basepair",
          "base_pair",
          "basepair",
          "phys_pos",
          "physical_position",
          "origbp",
          "bp_position",
          "pos_bp",
          "chr_position",
          "CHR_POS",
          "ChrPos",
          "Position (bp)"},
         "position plain");
    rows({"pos_hg16", "BP build34", "ncbi34pos", "bp_b34"}, "position plain build34");
    rows({"pos_hg17", "BP build35", "ncbi35pos", "bp_b35"}, "position plain build35");
    rows({"pos_hg18", "BP build36", "ncbi36pos", "bp_b36", "grch36_bp"}, "position plain build36");
    rows({"BP build37", "ncbi37pos", "bp_b37"}, "position plain build37");
    rows({"pos_hg38", "BP build38", "bp_b38", "grch38_bp", "pos38"}, "position plain build38");
    rows({"Pos_GRCh37", "bp_hg19", "POS(b37)", "pos_37", "position37"}, "position plain build37");
    rows({"Position_hg18build36", "Build36BP", "POS_hg18"}, "position plain build36");
    rows({"Chr Position (GRCh38)"}, "position plain build38");
    rows({"GENPOS", "location", "coordinate", "BASE", "BEG", "BEGIN", "START"},
         "position plain second");
    row("chromStart", "position plain second from 0");
    row("hm_pos", "position hm");
    row("SNPPos", "position snp");
    row("pos.exposure", "position exposure");
    rows({"GENE_CHROMOSOME", "GeneChr", "cM", "GeneticDistance", "pos_id", "GenePos", "GENE_START",
          "exposure", "DISTANCE", "END", "chromEnd", "P.S", "SNP", "P", "start_distance", "snps",
          "chr_count", "", "#"},
         "none");
}

void Titles::placeTitles() {
    QFETCH(QByteArray, text);
    const std::optional<PlaceColumnTitle> title = readPlaceTitle(viewOf(text));
    QTEST(title ? described(*title) : QByteArray("none"), "expected");
}

void Titles::joinedIds_data() {
    addColumns();
    row("1:15791:C:T", "1 15791");
    row("chr1:15791", "chr1 15791");
    row("1:534221_C/T_1:534221", "1 534221");
    row("1_1026830_A_G", "1 1026830");
    row("8:40631655:539", "8 40631655");
    row("chr1_13550_G_A_b38", "chr1 13550");
    row("10:49413", "10 49413");
    row("10:49413/A", "10 49413");
    row("X-2700157-A-G", "X 2700157");
    row("MT:73", "MT 73");
    row("2L:5372", "2L 5372");
    row("1A_12345", "1A 12345");
    row("NC_000001.11:12345:A:G", "NC_000001.11 12345");
    row("NC_000001_12345", "NC_000001 12345");
    row("chr1_KI270706v1_random:123", "chr1_KI270706v1_random 123");
    row("CHR22:5", "CHR22 5");
    rows({"rs123", "rs367896724:10177:A:AC", "AX-11086612", "1:abc", "1:", ":5", "123:456", "1E:5",
          "kgp123_5", "1:5A", "chr:5", "", "15791", "HLA-B-1", "1.5"},
         "none");
}

void Titles::joinedIds() {
    QFETCH(QByteArray, text);
    const std::optional<JoinedId> id = readJoinedId(viewOf(text));
    QTEST(id ? bytesOf(id->chromosome) + ' ' + bytesOf(id->position) : QByteArray("none"),
          "expected");
}

void Titles::positions_data() {
    addColumns();
    row("12345", "12345");
    row("1e+05", "100000");
    row("12345.0", "12345");
    row("1,234", "1234");
    row("1,234,567", "1234567");
    row("0", "0");
    row("-9", "-9");
    row("2147483647", "2147483647");
    row("2147483648", "too large");
    row("9999999999.0", "too large");
    row("0.40299", "fraction");
    rows({"12,34", "12 x", "1;2", "inf", "rs5"}, "text");
    rows({"NA", "", "."}, "missing");
}

void Titles::positions() {
    QFETCH(QByteArray, text);
    TableFormat format;
    format.quoted = true;
    int position = 0;
    const PositionKind kind = readPosition(viewOf(text), format, position);
    const QByteArray kinds[] = {QByteArray::number(position), "too large", "missing", "fraction",
                                "text"};
    QTEST(kinds[int(kind)], "expected");
}

void Titles::lines_data() {
    QTest::addColumn<int>("separator");
    QTest::addColumn<bool>("quoted");
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QList<QByteArray>>("fields");
    const auto line = [](const char* name, Separator separator, bool quoted, const char* text,
                         const QList<QByteArray>& fields) {
        QTest::newRow(name) << int(separator) << quoted << QByteArray(text) << fields;
    };
    line("tabs", Separator::Tab, false, "a\t\tb c\t", {"a", "", "b c", ""});
    line("empty", Separator::Tab, false, "", {""});
    line("one quote", Separator::Tab, true, "5\"\t\"a\tb", {"5\"", "\"a", "b"});
    line("lone quotes", Separator::Tab, true, "\"a\tb\"\tc", {"\"a", "b\"", "c"});
    line("quotes", Separator::Comma, true, R"("a,b", "c" ,d,"")", {"a,b", "c", "d", ""});
    line("doubled quotes", Separator::Comma, true, R"("a""b","""c""",d)", {"a\"b", "\"c\"", "d"});
    line("quotes that are text", Separator::Comma, false, R"("a",b)", {"\"a\"", "b"});
    line("padded", Separator::Comma, true, R"("   157104", x)", {"157104", "x"});
    line("semicolons", Separator::Semicolon, false, "1;0,5;", {"1", "0,5", ""});
    line("spaces", Separator::Spaces, false, "  a  b c ", {"a", "b", "c"});
    line("spaces and quotes", Separator::Spaces, true, "\"a b\" c", {"a b", "c"});
    line("only spaces", Separator::Spaces, false, "   ", {});
    line("wide spaces", Separator::WideSpaces, false, "a b  c   d e", {"a b", "c", "d e"});
    line("white space", Separator::WhiteSpace, false, "a \t b\tc", {"a", "b", "c"});
}

void Titles::lines() {
    QFETCH(int, separator);
    QFETCH(bool, quoted);
    QFETCH(QByteArray, line);
    TableFormat format;
    format.separator = Separator(separator);
    format.quoted = quoted;
    QList<std::string_view> views;
    QByteArray scratch;
    splitLine(viewOf(line), format, views, scratch);
    QList<QByteArray> fields;
    for (const std::string_view view : views)
        fields += bytesOf(view);
    QTEST(fields, "fields");
}

QTEST_APPLESS_MAIN(Titles)
#include "tst_titles.moc"
