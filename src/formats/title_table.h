#pragma once

#include <string_view>

// The titles and words by which columns are recognised. Data only.
//
// Titles are compared in one of two normal forms. The "normal title" is in lower case, with every
// run of other characters than letters and digits turned into one "_" (`P.value` is p_value). The
// "place title", for chromosomes, positions and marker names, also drops names of genome builds and
// then every "_" (`Pos_GRCh37` is pos).
namespace title_table {

struct RankedTitle {
    std::string_view title;
    int rank; // 0 before 1
};

// Names of genome builds that may be a part of a title, the longer ones first, and their number.
struct Build {
    std::string_view piece;
    std::string_view build;
};
inline constexpr Build builds[] = {
    {"build34", "34"}, {"build35", "35"}, {"build36", "36"}, {"build37", "37"}, {"build38", "38"},
    {"grch36", "36"},  {"grch37", "37"},  {"grch38", "38"},  {"ncbi34", "34"},  {"ncbi35", "35"},
    {"ncbi36", "36"},  {"ncbi37", "37"},  {"hg16", "34"},    {"hg17", "35"},    {"hg18", "36"},
    {"hg19", "37"},    {"hg38", "38"},    {"b34", "34"},     {"b35", "35"},     {"b36", "36"},
    {"b37", "37"},     {"b38", "38"},
};
// A bare number of a build counts right after one of these words.
inline constexpr std::string_view wordsBeforeBareBuild[] = {"pos", "position"};
inline constexpr std::string_view bareBuilds[] = {"36", "37", "38"};

// Place titles of chromosomes.
inline constexpr RankedTitle chromosomes[] = {
    {"chr", 0},          {"chrom", 0},        {"chromosome", 0},       {"chrid", 0},
    {"chrname", 0},      {"chrc", 0},         {"seqname", 0},          {"seqnames", 0},
    {"seqid", 0},        {"contig", 0},       {"scaffold", 0},         {"lg", 0},
    {"chro", 0},         {"chroms", 0},       {"chromo", 0},           {"ch", 0},
    {"chrno", 0},        {"chromid", 0},      {"chromname", 0},        {"chromosomeid", 0},
    {"chromosomeno", 0}, {"linkagegroup", 0}, {"chromosomename", 0},   {"chrnum", 1},
    {"chromnum", 1},     {"chrnumber", 1},    {"chromosomenumber", 1}, {"chromosomenum", 1},
};

// Place titles of positions.
inline constexpr RankedTitle positions[] = {
    {"pos", 0},
    {"position", 0},
    {"bp", 0},
    {"basepairlocation", 0},
    {"ps", 0},
    {"bpos", 0},
    {"basepair", 0},
    {"mapinfo", 0},
    {"basepairs", 0},
    {"basepairpos", 0},
    {"basepairposition", 0},
    {"physpos", 0},
    {"physicalpos", 0},
    {"physicalposition", 0},
    {"origbp", 0},
    {"bpposition", 0},
    {"bppos", 0},
    {"bplocation", 0},
    {"posbp", 0},
    {"positionbp", 0},
    {"chrpos", 0}, // from here to the next rank, values like 1:15791 may stand instead
    {"chrposition", 0},
    {"chrompos", 0},
    {"chromposition", 0},
    {"chromosomeposition", 0},
    {"genomicposition", 0},
    {"genomeposition", 0},
    {"genpos", 1}, // base pairs in one tool, Morgans in another
    {"location", 1},
    {"coordinate", 1},
    {"coord", 1},
    {"base", 1},
    {"beg", 1},
    {"begin", 1},
    {"start", 1},
};
// Compared as a normal title, since without its "_" many a title would look like it.
inline constexpr std::string_view exactPosition = "ps";
// Positions counted from 0.
inline constexpr std::string_view zeroBasedPositions[] = {"chromstart"};
// Positions of rank 1 that are counted from 0 where the end is the start + 1, and such ends.
inline constexpr std::string_view starts[] = {"beg", "begin", "start"};
inline constexpr std::string_view ends[] = {"end", "stop", "chromend"};

// Chromosome and position are taken from one family. Families in order of preference: the prefix
// or suffix stands before or after a title of the lists above.
struct Family {
    std::string_view prefixes[3];
    std::string_view suffix;
};
inline constexpr Family families[] = {
    {{"hm"}, {}}, {{}, {}}, {{"snp", "marker", "variant"}, {}}, {{}, "exposure"}, {{}, "outcome"},
};
inline constexpr int harmonisedFamily = 0;
inline constexpr int plainFamily = 1;

// Place titles of columns that may hold chromosome and position together, in order of preference.
struct JoinedTitle {
    std::string_view title;
    bool isPrefix; // longer titles count too
};
inline constexpr JoinedTitle joinedTitles[] = {
    {"chrpos", true}, {"chrompos", true},  {"chrbp", false},     {"chrombp", false},
    {"locus", false}, {"variant", true},   {"varid", false},     {"marker", true},
    {"snp", true},    {"cptid", false},    {"uniqid", true},     {"uniqueid", true},
    {"id", false},    {"rsid", false},     {"name", false},      {"rs", false},
    {"rsids", false}, {"rsnumber", false}, {"predictor", false}, {"alternateids", false},
};

// Place titles of marker names, the best first.
inline constexpr std::string_view names[] = {
    "snp",        "id",         "rsid",     "rs",           "rsids",    "snpid",
    "markername", "markerid",   "marker",   "predictor",    "rsnumber", "variantid",
    "variant",    "variants",   "name",     "varid",        "cptid",    "snpname",
    "uniqid",     "uniqida1a2", "uniqueid", "alternateids", "locus",    "snps",
};

// Words that say p. "p" and one of the words after it, in a row, count as "p" alone.
inline constexpr std::string_view pWords[] = {"p",       "pval", "pvalue", "pvals",
                                              "pvalues", "pv",   "unadj",  "unadjp"};
inline constexpr std::string_view wordsAfterP[] = {"value", "val", "values", "vals"};
// A word that begins or ends with one of these, and has letters beside it, says p too.
inline constexpr std::string_view gluedP[] = {"pvalues", "pvalue", "pvals", "pval"};

// A title with one of these words, or with one of these pieces in another word than p, is never
// taken for p: it tests something else, or was corrected for the number of tests. So is a word
// that begins with "adj"; bmiadj and whradjbmi name covariates.
inline constexpr std::string_view neverWords[] = {"q",       "text", "emp", "emp1",  "emp2",
                                                  "egger",   "bf",   "adj", "bh",    "fwe",
                                                  "missing", "fwer", "hw",  "hardy", "empirical"};
inline constexpr std::string_view neverPieces[] = {
    "het",  "hwe",  "fdr",       "bonf", "holm",  "sidak",    "padj",   "adjp",   "adjust",
    "qval", "lnbf", "threshold", "perm", "bayes", "residual", "filter", "cochran"};
inline constexpr std::string_view adjusted = "adj";

// Words of second-best p columns. "add" is none of them beside "frequentist".
inline constexpr std::string_view secondaryWords[] = {
    "na",     "nospa", "noadj",       "linreg",    "inf", "gc",   "2gc",  "dgc",
    "random", "rand",  "ran",         "re",        "re2", "r",    "wz",   "lrt",
    "lr",     "score", "c",           "cond",      "dom", "beta", "add",  "condtl",
    "chisq",  "plus",  "uncorrected", "corrected", "rec", "gen",  "geno", "2df"};
inline constexpr std::string_view additive = "add";
inline constexpr std::string_view frequentist = "frequentist";
// Of second-best columns, those with this word come last.
inline constexpr std::string_view lastWords[] = {"linreg"};

// Words that do not make a p column special: rank 1 where a title has no others.
inline constexpr std::string_view plainWords[] = {
    "meta",  "hq",   "all",         "overall", "combined",      "total", "gwas",
    "assoc", "bolt", "association", "lmm",     "wald",          "add",   "frequentist",
    "mtag",  "spa",  "nominal",     "inv",     "var",           "fix",   "fixed",
    "fe",    "ols",  "estimate",    "metal",   "multiancestry", "main"};

// A logarithm of p: one of the signs, perhaps, then "log" or "log10", then a p word, all in one
// word or in several; or p first (`pvalue_neg_log10`). "LP" stands alone.
inline constexpr std::string_view minusWords[] = {"neg", "negative", "minus"};
inline constexpr std::string_view minusPrefixes[] = {"negative", "minus", "neg", "min", "m", "n"};
inline constexpr std::string_view logPTitles[] = {"lp"};

// Columns that part a table into several tests, and those that part it into several traits.
inline constexpr std::string_view tests[] = {"test", "model"};
inline constexpr std::string_view traits[] = {
    "trait",        "phenotype", "pheno",      "gene",        "molecular_trait_id",
    "phenotype_id", "phenocode", "cohort",     "gene_id",     "gene_name",
    "trait_name",   "trait_id",  "pheno_name", "probe",       "probe_id",
    "exposure",     "outcome",   "geneid",     "phenostring",
};

// Normal titles of effects, from which p is computed where the user asks for it.
inline constexpr std::string_view zTitles[] = {"z",     "zscore", "z_score", "z_stat",  "zstat",
                                               "tstat", "t_stat", "z_value", "t_value", "z_or_t"};
inline constexpr std::string_view betaTitles[] = {"beta",  "effect",      "b",       "log_or",
                                                  "logor", "effect_size", "log_odds"};
inline constexpr std::string_view errorTitles[] = {
    "se", "stderr", "standard_error", "std_err", "sebeta", "beta_se", "se_beta", "log_or_se"};

// Normal titles that stand together in tables of PLINK alone, and one of GWAS-SSF.
inline constexpr std::string_view plink[][5] = {
    {"chr", "snp", "bp", "nmiss"},    {"chr", "snp", "bp", "f_a", "f_u"},
    {"chr", "snp", "bp", "t", "u"},   {"chr", "snp", "bp", "p_r", "or_r"},
    {"chrom", "pos", "id", "obs_ct"},
};
inline constexpr std::string_view ssf = "base_pair_location";

// The header of a prepared table, and the fixed titles of a VCF with values by sample.
inline constexpr std::string_view prepared[] = {"Chr", "Position", "P", "-log10(P)"};
inline constexpr std::string_view vcf[] = {"#CHROM", "POS",    "ID",   "REF",   "ALT",
                                           "QUAL",   "FILTER", "INFO", "FORMAT"};
inline constexpr std::string_view vcfLogP = "LP";

// A header that ends in such a title is shorter than its lines: the last column is a list.
inline constexpr std::string_view listTitlePiece = "tab_delimit";

} // namespace title_table
