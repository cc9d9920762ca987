#include "table_format.h"
#include "title_table.h"
#include "titles.h"

#include <QFile>
#include <QTest>

// Tables as association tools and archives write them, and the columns that are right; or why a
// table is refused, with the columns to choose from.
class Understand : public QObject {
    Q_OBJECT

private slots:
    void tools_data();
    void tools() { check(); }
    void archives_data();
    void archives() { check(); }
    void choices_data();
    void choices() { check(); }
    void layouts_data();
    void layouts() { check(); }
    void values_data();
    void values() { check(); }
    void options_data();
    void options() { check(); }
    void sampleFiles_data();
    void sampleFiles();
    void manyLabels();
    void roles();
    void decimalCommas_data();
    void decimalCommas();
    void ranksOfPlaceTitles();
    void refusalsSayWhatToType();

private:
    static void check();
};

namespace {

QByteArray at(const Understanding& table, int column) {
    const QByteArray title = table.format.titles.value(column);
    return title.isEmpty() ? QByteArray::number(column + 1) : title;
}

QByteArray placeOf(const Understanding& table) {
    const ColumnChoice& columns = table.columns;
    if (columns.joined >= 0)
        return "in " + at(table, columns.joined);
    if (columns.position < 0)
        return "by " + at(table, columns.name);
    const QByteArray chromosome =
        columns.chromosome < 0 ? '=' + columns.chromosomeValue : at(table, columns.chromosome);
    return chromosome + ':' + at(table, columns.position);
}

QByteArray pOf(const Understanding& table) {
    const ColumnChoice& columns = table.columns;
    QList<QByteArray> texts;
    if (columns.p >= 0)
        texts += at(table, columns.p);
    static const char* const scales[] = {"p ", "-log10 ", "log10 ", "ln "};
    if (columns.logP >= 0)
        texts += scales[int(columns.logScale)] + at(table, columns.logP);
    for (const int effect : {columns.z, columns.beta, columns.standardError})
        if (effect >= 0)
            texts += "from " + at(table, effect);
    return texts.join(" & ");
}

const char* nameOf(RefusalCode code) {
    static const char* const names[] = {
        "ForeignFile",   "Unreadable",       "Damaged",           "NotATable",     "NoChromosome",
        "NoPosition",    "NoPValue",         "SeveralPValues",    "SeveralBuilds", "ZeroBased",
        "GeneticMap",    "LooksLikeNames",   "LooksLikeNegLog10", "LooksLikeLog",  "MixedSigns",
        "PairDisagrees", "SeveralTests",     "SeveralTraits",     "OutOfRange",    "ZeroP",
        "UnknownColumn", "DifferentColumns", "SeveralSamples"};
    return names[int(code)];
}

// "CHR:BP P", or "NoPValue [candidates]".
QByteArray described(const std::variant<Understanding, Refusal>& result) {
    if (const Refusal* const refusal = std::get_if<Refusal>(&result))
        return nameOf(refusal->code) + QByteArray(" [") + refusal->candidates.join(" ") + ']';
    const Understanding& table = std::get<Understanding>(result);
    return placeOf(table) + ' ' + pOf(table) + (table.columns.isPrepared ? " prepared" : "");
}

void addColumns() {
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QByteArray>("expected");
    QTest::addColumn<PrepareOptions>("options");
}

void row(const char* name, const QByteArray& file, const char* expected,
         const PrepareOptions& options = {}) {
    QTest::newRow(name) << file << QByteArray(expected) << options;
}

// Spaces stand for tabs, "~" for a space within a field.
QByteArray tabbed(QByteArray text) {
    return text.replace(' ', '\t').replace('~', ' ');
}

void tabRow(const char* name, const char* file, const char* expected,
            const PrepareOptions& options = {}) {
    row(name, tabbed(file), expected, options);
}

PrepareOptions with(auto&&... change) {
    PrepareOptions options;
    (change(options), ...);
    return options;
}

auto p(const char* column) {
    return [=](PrepareOptions& options) { options.p = column; };
}

auto chromosome(const char* column) {
    return [=](PrepareOptions& options) { options.chromosome = column; };
}

auto position(const char* column) {
    return [=](PrepareOptions& options) { options.position = column; };
}

auto scale(PScale scale) {
    return [=](PrepareOptions& options) { options.pScale = scale; };
}

void noHeader(PrepareOptions& options) {
    options.noHeader = true;
}

void zeroBased(PrepareOptions& options) {
    options.zeroBased = true;
}

void authorBuild(PrepareOptions& options) {
    options.authorBuild = true;
}

void positionsTable(PrepareOptions& options) {
    options.positionsFile = QStringLiteral("map.bim");
}

} // namespace

void Understand::check() {
    QFETCH(QByteArray, file);
    QFETCH(PrepareOptions, options);
    QTEST(described(understand(viewOf(file), true, options)), "expected");
}

void Understand::tools_data() {
    addColumns();
    row("PLINK 1.9 assoc",
        " CHR         SNP         BP   A1      F_A      F_U   A2        CHISQ            P         "
        "  OR \n"
        "   1   rs3094315     752566    A   0.8412   0.8412    G       0.6192       0.4312        "
        "1.009 \n"
        "   1   rs4475691     846808    T   0.1984   0.1984    C        17.63      2.7e-05        "
        "0.954 \n",
        "CHR:BP P");
    row("PLINK 1.9 logistic",
        " CHR         SNP         BP   A1       TEST    NMISS         OR         STAT            P "
        "\n"
        "   1   rs3094315     752566    A        ADD     9812      1.009       0.7869       0.4312 "
        "\n"
        "   1   rs3094315     752566    A       COV1     9812      1.112        3.869    0.0001312 "
        "\n",
        "CHR:BP P");
    row("PLINK 1.9 meta-analysis",
        " CHR BP SNP A1 A2 N P P(R) OR OR(R) Q I\n 1 752566 rs1 A G 2 0.43 0.51 1.0 1.0 0.7 0\n",
        "CHR:BP P");
    row("PLINK adjusted",
        " CHR SNP UNADJ GC BONF HOLM SIDAK_SS SIDAK_SD FDR_BH FDR_BY\n"
        "   1 rs1 2.7e-05 3e-05 0.1 0.1 0.1 0.1 0.05 0.4\n",
        "NoPosition [CHR]");
    row("PLINK adjusted with a table of positions",
        " CHR SNP UNADJ GC BONF HOLM SIDAK_SS SIDAK_SD FDR_BH FDR_BY\n"
        "   1 rs1 2.7e-05 3e-05 0.1 0.1 0.1 0.1 0.05 0.4\n",
        "by SNP UNADJ", with(positionsTable));
    tabRow("PLINK2",
           "#CHROM POS ID REF ALT A1 TEST OBS_CT BETA SE T_STAT P ERRCODE\n"
           "1 752566 rs3094315 G A A ADD 9812 0.00912 0.01159 0.786885 0.4312 .\n"
           "1 846808 rs4475691 C T T ADD 9812 -0.04711 0.01122 -4.19875 2.7e-05 .\n",
           "#CHROM:POS P");
    tabRow("PLINK2 log10",
           "#CHROM POS ID REF ALT A1 TEST OBS_CT BETA SE T_STAT NEG_LOG10_P ERRCODE\n"
           "1 752566 rs1 G A A ADD 9812 0.00912 0.01159 0.78 0.3653 .\n",
           "#CHROM:POS -log10 NEG_LOG10_P");
    tabRow("PLINK2 older log10",
           "#CHROM POS ID REF ALT A1 TEST OBS_CT BETA SE T_STAT LOG10_P\n"
           "1 752566 rs1 G A A ADD 9812 0.00912 0.01159 0.78 0.3653\n",
           "#CHROM:POS -log10 LOG10_P");
    row("REGENIE",
        "CHROM GENPOS ID ALLELE0 ALLELE1 A1FREQ INFO N TEST BETA SE CHISQ LOG10P EXTRA\n"
        "1 752566 rs3094315 G A 0.8412 0.98 9812 ADD 0.00912 0.01159 0.619188 0.3653212 NA\n"
        "1 846808 rs4475691 C T 0.1984 0.98 9812 ADD -0.04711 0.01122 17.6295 4.568636 NA\n",
        "CHROM:GENPOS -log10 LOG10P");
    row("REGENIE interactions",
        "CHROM GENPOS ID ALLELE0 ALLELE1 A1FREQ N TEST BETA SE CHISQ LOG10P EXTRA\n"
        "1 752566 rs1 G A 0.84 9812 ADD-CONDTL 0.009 0.01 0.61 0.36 NA\n"
        "1 752566 rs1 G A 0.84 9812 ADD-INT_SNP 0.009 0.01 0.61 0.36 NA\n"
        "1 752566 rs1 G A 0.84 9812 ADD-INT_2DF NA NA 0.61 0.36 DF=2\n",
        "CHROM:GENPOS -log10 LOG10P");
    row("REGENIE several traits",
        "CHROM GENPOS ID ALLELE0 ALLELE1 A1FREQ N TEST BETA.Y1 SE.Y1 CHISQ.Y1 LOG10P.Y1 BETA.Y2 "
        "SE.Y2 "
        "CHISQ.Y2 LOG10P.Y2\n"
        "1 752566 rs1 G A 0.84 9812 ADD 0.009 0.01 0.61 0.36 0.01 0.01 1 0.49\n",
        "SeveralPValues [LOG10P.Y1 LOG10P.Y2]");
    tabRow(
        "REGENIE with gene masks",
        "##MASKS=<M1=\"LoF\">\nCHROM GENPOS ID ALLELE0 ALLELE1 A1FREQ N TEST BETA SE CHISQ LOG10P "
        "EXTRA\n1 752566 GENE1.M1 ref M1 0.001 9812 ADD 0.009 0.01 0.61 0.36 NA\n",
        "CHROM:GENPOS -log10 LOG10P");
    row("REGENIE annotated with genes",
        "GENE GENE_CHROMOSOME GENE_START CHROM GENPOS ID LOG10P\nABC1 2 500 1 752566 rs1 0.36\n",
        "CHROM:GENPOS -log10 LOG10P");
    tabRow("REGENIE HTP",
           "Name Chr Pos Ref Alt Trait Cohort Model Effect LCI_Effect UCI_Effect Pval AAF "
           "Num_Cases Info\n"
           "1:752566:G:A 1 752566 G A BMI UKB ADD-WGR-LR 0.009 0 0.03 0.43 0.84 9812 SE=0.01\n",
           "Chr:Pos Pval");
    tabRow("BOLT-LMM",
           "SNP CHR BP GENPOS ALLELE1 ALLELE0 A1FREQ F_MISS BETA SE P_BOLT_LMM_INF P_BOLT_LMM\n"
           "rs3094315 1 752566 0.00752566 A G 0.8412 0.0031 0.00912 0.01159 4.7E-01 4.3120E-01\n",
           "CHR:BP P_BOLT_LMM");
    tabRow("BOLT-LMM imputed",
           "SNP CHR BP GENPOS ALLELE1 ALLELE0 A1FREQ INFO CHISQ_LINREG P_LINREG BETA SE "
           "CHISQ_BOLT_LMM_INF P_BOLT_LMM_INF\n"
           "rs1 1 20000475 0.40299 G C 0.32 0.99 3.34 0.067 0.0014 0.0019 0.55 0.45\n",
           "CHR:BP P_BOLT_LMM_INF");
    tabRow("SAIGE",
           "CHR POS MarkerID Allele1 Allele2 AC_Allele2 AF_Allele2 MissingRate BETA SE Tstat var "
           "p.value p.value.NA Is.SPA\n"
           "1 752566 rs3094315 G A 16507 0.84 0 0.009 0.011 0.78 7444 4.312000E-01 3.88E-01 true\n",
           "CHR:POS p.value");
    row("SAIGE older, conditional",
        "CHR POS SNPID Allele1 Allele2 BETA SE Tstat p.value p.value.NA Is.SPA.converge BETA_c "
        "p.value_c "
        "p.value.NA_c\n1 752566 1:752566 G A 0.009 0.011 0.78 0.43 0.388 1 0.009 0.44 0.44\n",
        "CHR:POS p.value");
    row("SAIGE with natural logs",
        "CHR POS SNPID Allele1 Allele2 BETA SE p.value\n1 752566 rs1 G A 0.009 0.011 -0.84\n"
        "1 846808 rs2 C T 0.009 0.011 -10.5\n",
        "LooksLikeLog []");
    tabRow(
        "fastGWA",
        "CHR SNP POS A1 A2 N AF1 BETA SE P\n1 rs1 752566 A G 9812 0.84 0.009 0.011 4.31200E-01\n",
        "CHR:POS P");
    tabRow("fastGWA-GLMM",
           "CHR SNP POS A1 A2 N AF1 T SE_T P_noSPA BETA SE P CONVERGE\n"
           "1 rs1 752566 A G 9812 0.84 1.1 0.2 0.38 0.009 0.011 0.43 1\n",
           "CHR:POS P");
    tabRow("fastGWA-GLMM without saddlepoint",
           "CHR SNP POS A1 A2 N AF1 T SE_T P_noSPA\n1 rs1 752566 A G 9812 0.84 1.1 0.2 0.38\n",
           "CHR:POS P_noSPA");
    tabRow("GCTA mlma", "Chr SNP bp A1 A2 Freq b se p\n1 rs1 752566 A G 0.84 0.009 0.011 0.43\n",
           "Chr:bp p");
    tabRow("GCTA COJO",
           "Chr SNP bp refA freq b se p n freq_geno bJ bJ_se pJ LD_r\n"
           "1 rs1 752566 A 0.84 0.009 0.011 1e-9 9812 0.84 0.009 0.011 2e-9 0\n",
           "Chr:bp p");
    tabRow("GEMMA Wald",
           "chr rs ps n_miss allele1 allele0 af beta se logl_H1 l_remle p_wald\n"
           "1 rs3094315 752566 12 A G 0.8412 9.12e-03 1.159e-02 -1.306870e+04 5.1e-01 4.312e-01\n",
           "chr:ps p_wald");
    tabRow("GEMMA all tests",
           "chr rs ps n_miss allele1 allele0 af beta se l_remle l_mle p_wald p_lrt p_score\n"
           "1 rs1 752566 12 A G 0.84 9e-03 1e-02 5e-01 5e-01 4.3e-01 4.2e-01 4.4e-01\n",
           "chr:ps p_wald");
    tabRow(
        "GEMMA likelihood ratio",
        "chr rs ps n_miss allele1 allele0 af l_mle p_lrt\n1 rs1 752566 12 A G 0.84 5e-01 4.2e-01\n",
        "chr:ps p_lrt");
    tabRow("GEMMA score",
           "chr rs ps n_miss allele1 allele0 af p_score\n1 rs1 752566 12 A G 0.84 4.2e-01\n",
           "chr:ps p_score");
    row("SNPTEST",
        "# Analysis: \"case-control\"\n# command line: snptest -data a b\n\n"
        "alternate_ids rsid chromosome position alleleA alleleB index cohort_1_hwe "
        "frequentist_add_pvalue "
        "frequentist_add_beta_1 frequentist_dom_pvalue frequentist_rec_pvalue "
        "frequentist_gen_pvalue "
        "frequentist_het_pvalue comment\n"
        "--- rs1 01 752566 A G 1 0.5 0.43 0.009 0.44 0.45 0.46 0.47 NA\n"
        "--- rs2 01 846808 A G 2 0.5 2.7e-05 0.047 0.44 0.45 0.46 0.47 NA\n"
        "# Completed successfully at 2020-01-01\n",
        "chromosome:position frequentist_add_pvalue");
    row("SNPTEST Wald",
        "alternate_ids rsid chromosome position alleleA alleleB cohort_1_hwe bayesian_add_log10_bf "
        "frequentist_add_lrt_pvalue frequentist_add_wald_pvalue_1\n"
        "--- rs1 01 752566 A G 0.5 0.1 0.44 0.43\n",
        "chromosome:position frequentist_add_wald_pvalue_1");
    row("SNPTEST recessive and general",
        "rsid chromosome position frequentist_rec_pvalue frequentist_gen_pvalue\nrs1 01 752566 "
        "0.44 0.43\n",
        "SeveralPValues [frequentist_rec_pvalue frequentist_gen_pvalue]");
    tabRow("METAL with positions",
           "Chromosome Position MarkerName Allele1 Allele2 Effect StdErr P-value Direction HetISq "
           "HetChiSq HetDf HetPVal\n2 227034 rs2288068 g a 0.0532 0.0091 5.1e-09 ++- 0 0.1 2 0.9\n",
           "Chromosome:Position P-value");
    tabRow("METAL joined names",
           "MarkerName Allele1 Allele2 Weight Zscore P-value Direction\n"
           "8:40631655:539 a g 100 0.5 0.61 ++\n1:752566:G:A a g 100 2.5 0.012 ++\n",
           "in MarkerName P-value");
    tabRow("METAL rs names",
           "MarkerName Allele1 Allele2 Weight Zscore P-value Direction\nrs1 a g 100 0.5 0.61 ++\n",
           "NoChromosome []");
    tabRow(
        "METAL logarithms",
        "MarkerName Allele1 Allele2 Effect StdErr log(P) Direction HetISq HetChiSq HetDf logHetP\n"
        "1:752566 a g 0.1 0.2 -0.21 ++ 0 0.1 1 -0.04\n1:846808 a g 0.1 0.2 -8.29 ++ 0 0.1 1 -0.2\n",
        "in MarkerName log10 log(P)");
    tabRow("EPACTS",
           "#CHROM BEG END MARKER_ID NS AC CALLRATE MAF PVALUE BETA SEBETA CHISQ HWE_PVALUE\n"
           "1 534221 534221 1:534221_C/T_1:534221 266 1 1 0.002 0.43 0.5 0.6 0.7 0.9\n",
           "#CHROM:BEG PVALUE");
    row("RVTESTS",
        "##ModelFormula=y ~ x\n##Samples=100\n" +
            tabbed("CHROM POS REF ALT N_INFORMATIVE Test Beta SE Pvalue\n"
                   "1 752566 G A 9812 1:752566 0.00912 0.01159 0.4312\n"),
        "CHROM:POS Pvalue");
    row("RVTESTS meta score",
        "##ProgramName=RareMetalWorker\n##TraitSummaries\tmin\tmax\n" +
            tabbed(
                "#CHROM POS REF ALT N_INFORMATIVE FOUNDER_AF ALL_AF INFORMATIVE_ALT_AC CALL_RATE "
                "HWE_PVALUE N_REF U_STAT SQRT_V_STAT ALT_EFFSIZE PVALUE\n"
                "1 752566 G A 9812 0.8 0.8 200 1 0.9 10 1.1 2.2 0.3 0.43\n"),
        "#CHROM:POS PVALUE");
    tabRow(
        "MR-MEGA",
        "MarkerName Chromosome Position EA NEA EAF Nsample Ncohort beta_0 se_0 chisq_association "
        "ndf_association P-value_association chisq_ancestry_het P-value_ancestry_het "
        "P-value_residual_het lnBF Comments\n"
        "rs1 1 752566 A G 0.8 9812 3 0.1 0.2 0.6 3 0.43 0.1 0.9 0.8 0.1 NA\n",
        "Chromosome:Position P-value_association");
    tabRow("GWAMA",
           "chromosome position rs_number reference_allele other_allele eaf beta se z p-value "
           "_-log10_p-value q_statistic q_p-value i2 n_studies\n"
           "1 752566 rs1 A G 0.8 0.1 0.2 0.5 0.43 0.36653 0.1 0.9 0 2\n",
           "chromosome:position p-value & -log10 _-log10_p-value");
    row("METASOFT",
        tabbed(
            "RSID #STUDY PVALUE_FE BETA_FE STD_FE PVALUE_RE BETA_RE STD_RE PVALUE_RE2 Q PVALUE_Q "
            "PVALUES_OF_STUDIES(Tab_delimitered) MVALUES_OF_STUDIES(Tab_delimitered)\n"
            "1:752566 2 0.43 0.1 0.2 0.44 0.1 0.2 0.45 0.1 0.9 0.5 0.6 0.9 0.8\n"),
        "in RSID PVALUE_FE");
    row("MTAG",
        tabbed("SNP CHR BP A1 A2 Z N FRQ mtag_beta mtag_se mtag_z mtag_pval\n"
               "rs1 1 752566 A G 0.78 9812 0.84 0.009 0.011 0.8 0.42\n"),
        "CHR:BP mtag_pval");
    tabRow("MTAG input",
           "snpid chr bpos a1 a2 freq z pval n\nrs1 1 752566 A G 0.84 0.78 0.43 9812\n",
           "chr:bpos pval");
    tabRow(
        "CC-GWAS",
        "SNP CHR BP EA NEA OLS_beta OLS_se OLS_pval Exact_beta Exact_se Exact_pval CCGWAS_signif\n"
        "rs1 1 752566 A G 0.1 0.2 0.43 0.1 0.2 0.44 0\n",
        "CHR:BP OLS_pval");
    tabRow("GenomicSEM",
           "SNP CHR BP MAF A1 A2 lhs op rhs est SE Z_Estimate Pval_Estimate chisq chisq_df "
           "chisq_pval AIC "
           "error warning Q Q_df Q_pval\n"
           "rs1 1 752566 0.2 A G F1 ~~ SNP 0.1 0.2 0.5 0.43 1 2 0.6 10 0 0 0.1 1 0.9\n",
           "CHR:BP Pval_Estimate");
    tabRow("tensorQTL",
           "phenotype_id variant_id start_distance af ma_samples ma_count pval_nominal slope "
           "slope_se\n"
           "ENSG0001 chr1_13550_G_A_b38 -100 0.1 10 11 0.43 0.1 0.2\n",
           "in variant_id pval_nominal");
    tabRow(
        "tensorQTL permutations",
        "phenotype_id num_var variant_id start_distance pval_nominal slope slope_se pval_perm "
        "pval_beta "
        "pval_nominal_threshold\nENSG0001 10 chr1_13550_G_A_b38 -100 0.43 0.1 0.2 0.5 0.6 0.01\n",
        "in variant_id pval_nominal");
    tabRow("GENESIS",
           "variant.id chr pos allele.index n.obs freq MAC Score Score.SE Score.Stat Score.pval "
           "SPA.pval\n"
           "1 1 752566 1 9812 0.8 100 1 2 0.5 0.42 0.43\n",
           "chr:pos SPA.pval");
    tabRow("TASSEL",
           "Trait Marker Chr Pos df F p add_effect add_F add_p dom_effect dom_F dom_p errordf "
           "MarkerR2\n"
           "height S1_752566 1 752566 2 0.6 0.43 0.1 0.2 0.44 0.1 0.2 0.45 100 0.01\n",
           "Chr:Pos p");
    row("GAPIT",
        "SNP,Chromosome,Position "
        ",P.value,maf,nobs,Rsquare.of.Model.without.SNP,FDR_Adjusted_P-values,"
        "effect\nS1_752566,1,752566,0.43,0.2,100,0.1,0.9,0.5\n",
        "Chromosome:Position P.value");
    row("LDAK",
        "Chromosome Predictor Basepair A1 A2 Wald_Stat Wald_P Effect SD Effect_Liability "
        "SD_Liability A1_Mean "
        "MAF\n1 rs1 752566 A G 0.78 0.43 0.1 0.2 NA NA 0.4 0.2\n",
        "Chromosome:Basepair Wald_P");
    tabRow("BGENIE",
           "chr rsid pos a_0 a_1 af info height_beta height_se height_t height-log10p\n"
           "01 rs1 752566 A G 0.2 0.9 0.1 0.2 0.5 0.3665\n",
           "chr:pos -log10 height-log10p");
    tabRow("pyseer",
           "variant af filter-pvalue lrt-pvalue beta beta-std-err\n"
           "26_120_G_A 0.1 0.2 0.43 0.1 0.2\n26_220_G_A 0.1 0.2 0.4 0.1 0.2\n",
           "in variant lrt-pvalue");
    tabRow("fastlmm", "SNP Chr GenDist ChrPos PValue\nrs1 1 0.01 752566 0.43\n",
           "Chr:ChrPos PValue");
    tabRow("raremetal lists",
           "#CHROM POS GROUPNAME SINGLEVAR_PVALUEs\n1 752566 G1 0.1;0.2\n1 752567 G2 0.1;0.3\n",
           "NoPValue []");
    tabRow("TwoSampleMR",
           "SNP chr.exposure pos.exposure pval.exposure beta.exposure\nrs1 1 752566 0.43 0.1\n",
           "chr.exposure:pos.exposure pval.exposure");
    tabRow("TwoSampleMR harmonised",
           "SNP chr.outcome pos.outcome chr.exposure pos.exposure pval.outcome pval.exposure\n"
           "rs1 1 752566 1 752566 0.43 0.44\n",
           "SeveralPValues [pval.outcome pval.exposure]");
    row("VCF",
        "##fileformat=VCFv4.2\n##FORMAT=<ID=LP,Number=A,Type=Float,Description=\"-log10 "
        "p-value\">\n" +
            tabbed("#CHROM POS ID REF ALT QUAL FILTER INFO FORMAT UKB-b-1\n"
                   "1 752566 rs1 G A . PASS AF=0.84 ES:SE:LP:AF:ID 0.009:0.011:0.366:0.84:rs1\n"),
        "#CHROM:POS -log10 UKB-b-1");
    row("VCF of genotypes",
        "##fileformat=VCFv4.2\n" + tabbed("#CHROM POS ID REF ALT QUAL FILTER INFO FORMAT S1\n"
                                          "1 752566 rs1 G A . PASS . GT 0/1\n"),
        "NoPValue []");
    const QByteArray samples = tabbed("#CHROM POS ID REF ALT QUAL FILTER INFO FORMAT S1 S2\n"
                                      "1 752566 rs1 G A . PASS . ES:LP 0.1:3 0.2:4\n");
    row("VCF of two samples", samples, "SeveralSamples [S1 S2]");
    row("VCF of two samples, one chosen", samples, "#CHROM:POS -log10 S2",
        with([](PrepareOptions& options) { options.sample = "S2"; }));
    tabRow("LP as a column", "chr pos snp LP\n1 752566 rs1 0.36\n", "chr:pos -log10 LP");
    tabRow("locuszoom", "chrom position marker LOGPVALUE\n1 752566 rs1 7.3\n",
           "chrom:position -log10 LOGPVALUE");
}

void Understand::archives_data() {
    addColumns();
    tabRow("GWAS-SSF",
           "chromosome base_pair_location effect_allele other_allele beta standard_error "
           "effect_allele_frequency p_value rsid n\n1 752566 A G 0.00912 0.01159 0.8412 0.4312 rs1 "
           "9812\n",
           "chromosome:base_pair_location p_value");
    tabRow("GWAS-SSF logs",
           "chromosome base_pair_location effect_allele other_allele beta standard_error "
           "effect_allele_frequency neg_log_10_p_value\n1 752566 A G 0.009 0.011 0.84 0.365\n",
           "chromosome:base_pair_location -log10 neg_log_10_p_value");
    const char* const harmonised = "hm_variant_id hm_rsid hm_chrom hm_pos hm_other_allele "
                                   "hm_effect_allele hm_beta hm_code chromosome "
                                   "base_pair_location variant_id p_value\n"
                                   "1_817186_G_A rs1 1 817186 G A 0.1 10 1 752566 rs1 0.43\n"
                                   "NA NA NA NA NA NA NA 14 1 846808 rs2 0.5\n";
    tabRow("GWAS Catalog harmonised", harmonised, "hm_chrom:hm_pos p_value");
    tabRow("GWAS Catalog harmonised, author's build", harmonised,
           "chromosome:base_pair_location p_value", with(authorBuild));
    tabRow("GWAS Catalog associations",
           "DATE PUBMEDID DISEASE/TRAIT CHR_ID CHR_POS SNPS P-VALUE PVALUE_MLOG P-VALUE~(TEXT)\n"
           "2020-01-01 1 Body~mass~index 16 53786615 rs1 3E-8 7.522878745280337 (women)\n"
           "2020-01-01 1 Height 2 27508073 rs2 4E-12 11.397940008672037 \n",
           "CHR_ID:CHR_POS P-VALUE & -log10 PVALUE_MLOG");
    tabRow("PGS Catalog",
           "rsID chr_name chr_position effect_allele other_allele effect_weight\nrs1 1 752566 A G "
           "0.1\n",
           "NoPValue []");
    tabRow("PGS-like with p",
           "rsID chr_name chr_position effect_allele p_value\nrs1 1 752566 A 0.43\n",
           "chr_name:chr_position p_value");
    tabRow("FinnGen",
           "#chrom pos ref alt rsids nearest_genes pval mlogp beta sebeta af_alt\n"
           "1 752566 G A rs1 GENE1 0.4312 0.36532 0.009 0.011 0.84\n",
           "#chrom:pos pval & -log10 mlogp");
    tabRow(
        "FinnGen meta",
        "#CHR POS REF ALT SNP fg_pval fg_mlogp ukbb_pval all_inv_var_meta_p all_inv_var_meta_mlogp "
        "all_inv_var_het_p leave_fg_inv_var_meta_p\n1 752566 G A 1:752566:G:A 0.4 0.39794 0.5 0.43 "
        "0.36653 0.9 0.5\n",
        "#CHR:POS all_inv_var_meta_p & -log10 all_inv_var_meta_mlogp");
    tabRow("FinnGen meta without its own p",
           "#CHR POS REF ALT fg_pval ukbb_pval leave_fg_meta_p\n1 752566 G A 0.4 0.5 0.5\n",
           "SeveralPValues [fg_pval ukbb_pval leave_fg_meta_p]");
    tabRow("PheWeb",
           "chrom pos ref alt rsids nearest_genes pval beta sebeta af\n"
           "1 752566 G A rs1 GENE1 0.4312 0.009 0.011 0.84\n",
           "chrom:pos pval");
    tabRow(
        "Pan-UKB",
        "chr pos ref alt neglog10_pval_meta_hq neglog10_pval_heterogeneity_hq neglog10_pval_meta "
        "neglog10_pval_heterogeneity neglog10_pval_AFR neglog10_pval_EUR\n"
        "1 11063 T G 3.552e-01 6.233e-01 3.552e-01 6.233e-01 1.5e-02 0.1\n",
        "chr:pos -log10 neglog10_pval_meta_hq");
    tabRow("Pan-UKB one ancestry", "chr pos ref alt neglog10_pval_EUR\n1 11063 T G 3.5e-01\n",
           "chr:pos -log10 neglog10_pval_EUR");
    tabRow(
        "Pan-UKB earlier",
        "chr pos ref alt pval_meta pval_AFR pval_heterogeneity\n1 11063 T G -3.552e-01 -0.1 -0.3\n"
        "1 13259 G A -1.2 -0.3 -0.2\n",
        "LooksLikeLog []");
    row("BIG40",
        "chr rsid pos a1 a2 beta se pval(-log10)\n01 rs367896724 10177 A AC 0.009 0.011 0.36\n"
        "01 rs201106462 10352 T TA 0.009 0.011 1.9\n",
        "chr:pos -log10 pval(-log10)");
    tabRow("Neale",
           "variant minor_allele minor_AF low_confidence_variant n_complete_samples AC ytx beta se "
           "tstat "
           "pval\n1:15791:C:T T 5.4e-09 true 360388 3.9e-03 4.6e-04 -9.6 3.0 -3.2e+00 1.3e-03\n"
           "X:15792:C:T T 5.4e-09 true 360388 3.9e-03 4.6e-04 -9.6 3.0 -3.2e+00 1.3e-03\n",
           "in variant pval");
    tabRow("Hail", "locus alleles rsid beta p_value\n1:15791 [\"C\",\"T\"] rs1 0.1 0.43\n",
           "in locus p_value");
    tabRow("eQTLGen",
           "Pvalue SNP SNPChr SNPPos AssessedAllele OtherAllele Zscore Gene GeneSymbol GeneChr "
           "GenePos "
           "NrCohorts NrSamples FDR BonferroniP\n"
           "3.2717E-310 rs12230244 12 10117369 T A 200.7 ENSG01 CLEC12A 12 10126104 34 30596 0.0 "
           "4.1E-302\n",
           "SNPChr:SNPPos Pvalue");
    tabRow(
        "QTL Catalogue",
        "molecular_trait_id chromosome position ref alt variant ma_samples maf pvalue beta se type "
        "gene_id rsid\nENSG01 1 752566 G A chr1_752566_G_A 10 0.1 0.43 0.1 0.2 SNP ENSG01 rs1\n",
        "chromosome:position pvalue");
    tabRow("PGC daner",
           "CHR SNP BP A1 A2 FRQ_A_53386 FRQ_U_77258 INFO OR SE P ngt Direction HetISqt HetDf "
           "HetPVa Nca\n"
           "8 rs62513865 101592213 C T 0.93 0.92 0.9 1.0 0.01 0.43 0 ++ 0.0 1 0.7 500\n",
           "CHR:BP P");
    tabRow("PGC SCZ2",
           "hg19chrc snpid a1 a2 bp info or se p ngt\nchr1 rs4951859 C G 729679 0.63 0.97 0.01 "
           "0.2083 0\n",
           "hg19chrc:bp p");
    tabRow("PGC SCZ2 capitals", "HG19CHRC SNP BP P\nchr1 rs4951859 729679 0.2083\n",
           "HG19CHRC:BP P");
    row("PGC3",
        QByteArray("##fileFormat=PGCsumstatsVCFv1.0\n") + QByteArray("##a=\"b c\"\n").repeated(70) +
            tabbed("CHROM ID POS A1 A2 FCAS FCON IMPINFO BETA SE PVAL NCAS NCON NEFF\n"
                   "8 rs62513865 101592213 C T 0.93 0.927 0.963 0.01 0.01 0.43 5 6 5\n"),
        "CHROM:POS PVAL");
    row("header in the last comment, commas over tabs",
        "##a study\n##rsid, chr, bp, p-value\n" + tabbed("rs1 1 752566 0.43\nrs2 1 846808 0.02\n"),
        "chr:bp p-value");
    row("header in the last comment, commas throughout",
        "##rsid, chr, bp, p-value\nrs1, 1, 752566, 0.43\nrs2, 1, 846808, 0.02\n", "chr:bp p-value");
    row("header in the last comment, commas over spaces",
        "##rsid, chr, bp, p-value\nrs1 1 752566 0.43\nrs2 1 846808 0.02\n", "chr:bp p-value");
    tabRow("deCODE",
           "Chrom Pos Name rsids effectAllele otherAllele Beta Pval minus_log10_pval SE N ImpMAF\n"
           "chr1 752566 chr1:752566:G:A rs1 A G 0.009 0.4312 0.36532 0.011 9812 0.1\n",
           "Chrom:Pos Pval & -log10 minus_log10_pval");
    tabRow("GIANT exome",
           "CHR POS REF ALT SNPNAME GMAF ExAC_AFR beta se Pvalue\n1 752566 G A exm1 0.1 0.2 0.1 "
           "0.2 0.43\n",
           "CHR:POS Pvalue");
    tabRow("GIANT joined", "SNP_hg19 A1 Pvalue\n1:752566 A 0.43\n1:846808 A 0.43\n",
           "in SNP_hg19 Pvalue");
    tabRow("GIANT two builds joined",
           "SNP_hg18 SNP_hg19 A1 Pvalue\nchr1:742429 chr1:752566 A 0.43\n",
           "SeveralBuilds [SNP_hg18 SNP_hg19]");
    tabRow("GIANT two builds joined, one chosen",
           "SNP_hg18 SNP_hg19 A1 Pvalue\nchr1:742429 chr1:752566 A 0.43\n", "in SNP_hg19 Pvalue",
           with(position("SNP_hg19")));
    tabRow("blood cells",
           "VARIANT ID CHR BP REF ALT CHR_num P\n1:752566_G_A rs1 X 752566 G A 23 0.43\n",
           "CHR:BP P");
    tabRow("joined chr_pos", "chr_pos_(b36) a1 a2 P_value\nchr1:752566 A G 0.43\n",
           "in chr_pos_(b36) P_value");
    tabRow("joined chrpos beside chr", "chr chrpos_b37 snp P\n1 1:752566 rs1 0.43\n",
           "in chrpos_b37 P");
    tabRow("cptid", "cptid RSID EAF P\n1:752566 rs1 0.3 0.43\n", "in cptid P");
    tabRow("uniqID", "uniqID.a1a2 RSID EAF P\n1:752566_A_G rs1 0.3 0.43\n", "in uniqID.a1a2 P");
    tabRow("array names", "SNP P\nAX-11086612 0.43\nAX-11086613 0.43\n", "NoChromosome []");
    tabRow("LDSC", "SNP A1 A2 Z N\nrs1 A G 0.5 9812\n", "NoChromosome []");
}

void Understand::choices_data() {
    addColumns();
    const auto pTitles = [](const char* titles, const char* expected) {
        const int count = int(QByteArray(titles).count(' ')) + 1;
        QByteArray values;
        for (int i = 0; i < count; ++i) // every column has values of its own
            values += " 0." + QByteArray::number(41 + i);
        QTest::addRow("%s", titles) << tabbed("chr pos " + QByteArray(titles) + "\n1 752566" +
                                              values + "\n1 846808" + values + "\n")
                                    << QByteArray(expected) << PrepareOptions();
    };
    pTitles("P_value_SMK P_value_NonSMK", "SeveralPValues [P_value_SMK P_value_NonSMK]");
    pTitles("Pvalue_85 Pvalue_90", "SeveralPValues [Pvalue_85 Pvalue_90]");
    pTitles("Pvalue_Stage2 Fisher_Pvalue InverseVariance_Pvalue",
            "SeveralPValues [Pvalue_Stage2 Fisher_Pvalue InverseVariance_Pvalue]");
    pTitles("pval_EUR pval_AFR", "SeveralPValues [pval_EUR pval_AFR]");
    pTitles("P PVAL", "SeveralPValues [P PVAL]");
    pTitles("p_lrt p_score", "SeveralPValues [p_lrt p_score]");
    pTitles("PlinkP", "NoPValue [PlinkP]");
    pTitles("mainp other", "NoPValue [mainp]");
    pTitles("P-value_ancestry_het P-value_residual_het",
            "NoPValue [P-value_ancestry_het P-value_residual_het]");
    pTitles("HWE_PVALUE", "NoPValue [HWE_PVALUE]");
    pTitles("FDR_BH BONF", "NoPValue []");
    pTitles("q_p-value pval_perm", "NoPValue [q_p-value pval_perm]");
    pTitles("adj.P.Val", "NoPValue [adj.P.Val]");
    pTitles("adj.P.Val P.Value", "chr:pos P.Value");
    pTitles("P_fix P_ran", "chr:pos P_fix");
    pTitles("P_ran P_fix", "chr:pos P_fix");
    pTitles("Multiancestry_pval_rand Multiancestry_pval_fix", "chr:pos Multiancestry_pval_fix");
    pTitles("P_GC", "chr:pos P_GC");
    pTitles("P.2gc p_dgc P", "chr:pos P");
    pTitles("GWAS_P", "chr:pos GWAS_P");
    pTitles("GWASpval", "chr:pos GWASpval");
    pTitles("scan_p", "chr:pos scan_p");
    pTitles("P_BMIadj", "chr:pos P_BMIadj");
    pTitles("P_BMIadj P", "chr:pos P");
    pTitles("pval_meta pval_gwas", "chr:pos pval_meta");
    pTitles("P_DISCOVERY P_REPLICATION P_COMBINED", "chr:pos P_COMBINED");
    pTitles("LR_P_VAL", "chr:pos LR_P_VAL");

    tabRow("equal twins", "chr pos P PVAL\n1 752566 0.43 4.3e-01\n1 846808 NA .\n", "chr:pos P");
    tabRow("p and log with other words", "chr pos P LOG10P_EUR\n1 752566 0.43 5\n", "chr:pos P");
    tabRow("secondary pair", "chr pos pvalue_GC pvalue_neg_log10_GC\n1 752566 0.1 1\n",
           "chr:pos pvalue_GC & -log10 pvalue_neg_log10_GC");
    tabRow("BED", "chrom chromStart chromEnd name p\n1 752565 752566 rs1 0.43\n",
           "ZeroBased [chromStart]");
    tabRow("BED, from zero", "chrom chromStart chromEnd name p\n1 752565 752566 rs1 0.43\n",
           "chrom:chromStart p", with(zeroBased));
    tabRow("BED beside a position",
           "chrom chromStart chromEnd pos p\n1 752565 752566 752566 0.43\n", "chrom:pos p");
    tabRow("BED-like", "chr start end p\n1 752565 752566 0.43\n1 846807 846808 0.43\n",
           "ZeroBased [start]");
    tabRow("BED-like, named", "chr start end p\n1 752565 752566 0.43\n", "chr:start p",
           with(position("start")));
    tabRow("start and end alike", "chr start end p\n1 752566 752566 0.43\n1 846808 846808 0.43\n",
           "chr:start p");
    tabRow("two builds", "chr POS_hg18 POS_hg19 p\n1 742429 752566 0.43\n",
           "SeveralBuilds [POS_hg18 POS_hg19]");
    tabRow("second build", "Chr Position Chr~Position~(GRCh38) P\n1 752566 817186 0.43\n",
           "Chr:Position P");
    tabRow("second build first", "Chr Chr~Position~(GRCh38) Position P\n1 817186 752566 0.43\n",
           "Chr:Position P");
    tabRow("builds in pairs, one chosen",
           "chr_hg18 pos_hg18 chr_hg19 pos_hg19 p\n1 742429 2 752566 0.43\n", "chr_hg19:pos_hg19 p",
           with(position("pos_hg19")));
    tabRow("one build", "Chr_hg18build36 Position_hg18build36 P\n1 742429 0.43\n",
           "Chr_hg18build36:Position_hg18build36 P");
    tabRow("genetic map", "chr GENPOS p\n1 0.40299 0.43\n1 0.402993 0.5\n", "GeneticMap []");
    tabRow("never one of each family", "SNPChr pos p\n1 752566 0.43\n", "NoPosition [SNPChr pos]");
    tabRow("genes' places", "GeneChr GenePos SNP p\n1 752566 rs1 0.43\n", "NoChromosome []");
    tabRow("location after POS", "chr location POS p\n1 5 752566 0.43\n", "chr:POS p");
    tabRow("no chromosome", "snp pos p\nrs1 752566 0.43\n", "NoChromosome [pos]");
    tabRow("no position", "snp chr p\nrs1 1 0.43\n", "NoPosition [chr]");
    tabRow("exposure is no position", "chr exposure snp p\n1 BMI rs1 0.43\n", "NoPosition [chr]");
    tabRow("joined position", "Position P\nchr1:752566 0.43\n", "in Position P");
}

void Understand::layouts_data() {
    addColumns();
    const QByteArray body = tabbed("rs1 1 752566 0.43\nrs2 1 846808 0.5\n");
    row("spaces over tabs", "SNP CHR BP P\n" + body, "CHR:BP P");
    row("tabs over spaces", tabbed("SNP CHR BP P\n") + "rs1 1 752566 0.43\nrs2 1 846808 0.5\n",
        "CHR:BP P");
    row("spaces over tabs with an empty field",
        "SNP CHR BP A1 P\n" + tabbed("rs1 1 752566  0.43\nrs2 1 846808 A 0.5\n"), "CHR:BP P");
    row("comma with a space in a title", "SNP,CHR,BP,Effect allele,P value\nrs1,1,752566,A,0.43\n",
        "CHR:BP P value");
    row("two spaces",
        "Chr  Pos  Trait name  P value\n1  752566  Body mass index  0.43\n"
        "1  846808  Height  0.5\n",
        "Chr:Pos P value");
    row("prose",
        "Some p-values in this file are 0 because they are too small.\nContact, the authors\n\n" +
            tabbed("SNP CHR BP P\n") + body,
        "CHR:BP P");
    row("comments", "# made by x\n#\n#SNP\tCHR\tBP\tP\n" + body, "CHR:BP P");
    row("commas over tabs", "SNP, CHR, BP, P\n" + body, "CHR:BP P");
    row("short lines",
        tabbed("SNP CHR BP P\nrs1 1 752566 0.43\nrs1 1 752577 0.4\nrs2 1\n"
               "rs1 1 752577 0.4\n"),
        "CHR:BP P");
    row("comment mark apart", "# SNP CHR BP P\nrs1 1 752566 0.43\n", "CHR:BP P");
    row("byte-order mark", "\xef\xbb\xbf" + tabbed("CHR BP P\n1 752566 0.43\n"), "CHR:BP P");
    row("quotes",
        "\"SNP\",\"Chrom\",\"BP\",\"P.value\"\n\"PZB00859.1\",\" 1\",\"   157104\",\"0.37\"\n",
        "Chrom:BP P.value");
    row("quotes with commas", "\"SNP\",\"Chr\",\"BP\",\"P\"\n\"a,b\",\"1\",\"752,566\",\"0.37\"\n",
        "Chr:BP P");
    row("semicolons", "SNP;CHR;BP;P\nrs1;1;752566;3,2E-08\nrs2;1;846808;0,43\n", "CHR:BP P");
    row("trailing tab in the body", tabbed("SNP CHR BP P\nrs1 1 752566 0.43 \nrs2 1 846808 0.4 \n"),
        "CHR:BP P");
    row("trailing tab in the header", tabbed("SNP CHR BP P \nrs1 1 752566 0.43\n"), "CHR:BP P");
    row("ragged last line", tabbed("SNP CHR BP P\nrs1 1 752566 0.43\nrs1 1 752577 0.4\nrs2 1\n"),
        "CHR:BP P");
    row("cut short", tabbed("SNP CHR BP P\nrs1 1 752566 0.43\nrs2 1 8"), "CHR:BP P");
    row("R row names", "\"CHR\" \"BP\" \"P\"\n\"1\" 1 752566 0.43\n\"2\" 1 846808 0.5\n",
        "CHR:BP P");
    row("R row names without quotes", "SNP CHR BP P\n1 rs1 1 752566 0.43\n2 rs2 1 846808 0.5\n",
        "CHR:BP P");
    row("one field too many", "CHR BP P\n1 752566 0.43 x\n1 846808 0.43 y\n", "NotATable []");
    row("R csv with row names", "\"\",\"CHR\",\"BP\",\"P\"\n\"1\",1,752566,0.43\n", "CHR:BP P");
    row("prepared", "Chr\tPosition\tP\t-log10(P)\tSNP\tPVAL\n1\t752566\t0.43\t0.9\trs1\t5\n",
        "Chr:Position P & -log10 -log10(P) prepared");
    row("almost prepared", "chr\tPosition\tP\t-log10(P)\n1\t752566\t0.1\t1\n",
        "chr:Position P & -log10 -log10(P)");
    row("junk before the first title", "scz2cCHR SNP BP P\n1 rs1 752566 0.43\n",
        "NoChromosome [BP]");
    row("no header", body, "NotATable []");
    row("no header, columns by number", body, "2:3 4",
        with(noHeader, chromosome("2"), position("3"), p("4")));
    row("no header, spaces", "  1   rs1  752566  0.43\n 10   rs2  846808  0.5\n", "1:3 4",
        with(noHeader, chromosome("1"), position("3"), p("4")));
    row("no header, without p", body, "NoPValue []",
        with(noHeader, chromosome("2"), position("3")));
    row("no header, number too large", body, "UnknownColumn []",
        with(noHeader, chromosome("2"), position("3"), p("5")));
    row("data taken for a header by numbers", body, "NotATable []",
        with(chromosome("2"), position("3"), p("4")));
    row("README",
        "This folder has the results of the study.\n\nColumns are chromosome, position and "
        "p-value.\n"
        "P is the p-value, chr the chromosome.\nSee the paper.\n",
        "NotATable []");
    row("HTML",
        "<!DOCTYPE html>\n<html><head><title>404 Not found</title></head>\n<body></body></html>\n",
        "NotATable []");
    row("empty", "", "NotATable []");
    row("header alone", tabbed("CHR BP P\n"), "NotATable []");
}

void Understand::values_data() {
    addColumns();
    tabRow("-log10 p under p", "chr pos pval\n1 752566 0.43\n1 846808 7.3\n",
           "LooksLikeNegLog10 []");
    tabRow("outside 0 to 1", "chr pos pval\n1 752566 0.43\n1 846808 -0.2\n", "OutOfRange []");
    tabRow("slightly above 1", "chr pos pval\n1 752566 1.0000001\n1 846808 0.2\n", "chr:pos pval");
    tabRow("mixed signs", "chr pos LOG10P\n1 752566 0.43\n1 846808 -0.2\n", "MixedSigns []");
    tabRow("-log10 p below 0", "chr pos MLOG10P\n1 752566 -0.43\n1 846808 -2\n", "LooksLikeLog []");
    tabRow("pair that disagrees", "chr pos P LOG10P\n1 752566 0.1 5\n1 846808 0.01 2\n",
           "PairDisagrees [P LOG10P]");
    tabRow("pair of natural logarithms",
           "chr pos P logP\n1 752566 0.1 -2.302585\n1 8 0.01 -4.605\n", "PairDisagrees [P logP]");
    tabRow("pair with p of 0", "chr pos P LOG10P\n1 752566 0 400\n1 846808 0.01 2\n",
           "chr:pos P & -log10 LOG10P");
    tabRow("bounds", "chr pos P\n1 752566 <2e-16\n1 846808 0.01\n", "chr:pos P");
    tabRow("whole positions", "chr pos P\n1 1e+05 0.5\n1 12345.0 0.01\n", "chr:pos P");
    tabRow("position of text", "chr pos P\n1 intron 0.5\n1 exon 0.01\n", "NoPosition []");
    tabRow("no chromosome anywhere", "chr pos P\nNA 752566 0.5\nNA 846808 0.01\n",
           "NoChromosome []");
    tabRow("missing values", "chr pos P\nNA NA NA\n1 846808 0.01\n", "chr:pos P");
}

void Understand::options_data() {
    addColumns();
    const char* const table =
        "chr pos bp P_EUR P_AFR\n1 752566 817186 0.4 0.5\n1 846808 911428 0.6 0.7\n";
    tabRow("by title", table, "chr:bp P_AFR", with(p("P_AFR"), position("bp")));
    tabRow("by number", table, "chr:bp P_AFR", with(p("5"), position("3"), chromosome("1")));
    tabRow("by normal title", table, "chr:pos P_AFR", with(p("p.afr"), position("pos")));
    tabRow("unknown title", table, "UnknownColumn [P_AFR P_EUR pos]", with(p("P_AFF")));
    tabRow("number too large", table, "UnknownColumn []", with(p("66")));
    tabRow("the same title twice", "chr pos P P\n1 752566 0.4 0.5\n", "UnknownColumn [P P]",
           with(p("P")));
    tabRow("one of two by number", "chr pos P P\n1 752566 0.4 0.5\n", "chr:pos P", with(p("4")));
    tabRow("a title of the never-list", "chr pos HWE_PVALUE P\n1 752566 0.4 0.5\n",
           "chr:pos HWE_PVALUE", with(p("HWE_PVALUE")));
    tabRow("named p keeps its logarithm", "chr pos P_EUR LOG10P_EUR P\n1 752566 0.1 1 0.5\n",
           "chr:pos P_EUR & -log10 LOG10P_EUR", with(p("P_EUR")));
    tabRow("scale", "chr pos pval\n1 752566 0.43\n1 846808 7.3\n", "chr:pos -log10 pval",
           with(scale(PScale::NegLog10)));
    tabRow("natural logarithm", "chr pos pval_meta\n1 752566 -0.43\n1 846808 -7.3\n",
           "chr:pos ln pval_meta", with(scale(PScale::Ln)));
    tabRow("scale of the wrong sign", "chr pos pval\n1 752566 0.43\n1 846808 7.3\n",
           "LooksLikeNegLog10 []", with(scale(PScale::Ln)));
    tabRow("p of a pair", "chr pos P LOG10P\n1 752566 0.1 5\n", "chr:pos P",
           with(p("P"), scale(PScale::P)));
    tabRow("chromosome by value", "rsid position p\nrs1 752566 0.43\n", "=7:position p",
           with([](PrepareOptions& options) { options.chromosomeValue = "7"; }));
    tabRow("chromosome by value beside a column",
           "rsid chromosome position p\nrs1 NA 752566 0.43\n", "=7:position p",
           with([](PrepareOptions& options) { options.chromosomeValue = "7"; }));
    tabRow("family of the named column", "hm_chrom hm_pos chr pos p\n1 817186 1 752566 0.43\n",
           "chr:pos p", with(position("pos")));
    tabRow("from z", "chr pos Z\n1 752566 0.78\n", "chr:pos from Z",
           with([](PrepareOptions& options) { options.pSource = PSource::Z; }));
    tabRow("from effects", "chr pos BETA SE\n1 752566 0.1 0.2\n", "chr:pos from BETA & from SE",
           with([](PrepareOptions& options) { options.pSource = PSource::BetaAndError; }));
    tabRow("from effects that are not there", "chr pos OR SE\n1 752566 0.1 0.2\n", "NoPValue []",
           with([](PrepareOptions& options) { options.pSource = PSource::BetaAndError; }));
    tabRow("positions by name", "MarkerName P-value\nrs1 0.4\n", "by MarkerName P-value",
           with(positionsTable));
    tabRow("unknown column to filter by", "chr pos p\n1 752566 0.4\n", "UnknownColumn [pos p chr]",
           with([](PrepareOptions& options) {
               options.where = {{"pop", "EUR"}};
           }));
}

void Understand::sampleFiles_data() {
    QTest::addColumn<QByteArray>("expected");
    const auto file = [](const char* name, const char* expected) {
        QTest::newRow(name) << QByteArray(expected);
    };
    file("comma.csv", "Chr:Pos Pval");
    file("double_blanks.txt", "CHR:POS PVAL");
    file("nan_p.txt", "CHROM:POSITION Pval");
    file("neglog10_first.txt", "chr:pos -log10 neglog10_pval_meta_hq");
    file("refused_bp.csv", "CHR:BP P");
    file("refused_no_p.txt", "CHR:BP P_BOLT_LMM");
    file("refused_quoted.csv", "NoPValue []");
    file("rsid_first.txt", "CHR:POS pval");
    file("sorted_by_p_crlf.txt", "Chromosome:Position Pvalue");
    file("blocks_unsorted.txt", "SNP_Chr:SNP_Pos_hg19 P-val");
}

void Understand::sampleFiles() {
    QFile file(QStringLiteral(PELMARK_TEST_DATA "/") + QString::fromUtf8(QTest::currentDataTag()));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll().replace("\r", "");
    QTEST(described(understand(viewOf(text), true, {})), "expected");
}

void Understand::manyLabels() {
    QByteArray file = "chr\tpos\tp\n";
    for (int i = 0; i < 3000; ++i)
        file += "AX" + QByteArray::number(i) + "\t752566\t0.5\n";
    QCOMPARE(described(understand(viewOf(file), true, {})), QByteArray("LooksLikeNames []"));
    QCOMPARE(described(understand(viewOf(file), false, {})), QByteArray("chr:pos p"));
}

void Understand::roles() {
    const QByteArray file = tabbed("##x\nrsid variant_id CHROM GENPOS TEST gene LOG10P HWE_P Info\n"
                                   "rs1 a 1 752566 ADD G1 0.3 0.4 LOG10P=0.3\n");
    const auto table = std::get<Understanding>(understand(viewOf(file), true, {}));
    QCOMPARE(table.format.headerLine, 2);
    QCOMPARE(table.format.firstDataLine, 3);
    QCOMPARE(table.columns.name, 0);
    QCOMPARE(table.columns.test, 4);
    QCOMPARE(table.columns.traits, QList<int>{5});
    QCOMPARE(table.columns.info, 8);
    QCOMPARE(table.columns.others.size(), 1);
    QCOMPARE(table.columns.others.first().title, QByteArray("HWE_P"));
}

void Understand::decimalCommas_data() {
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<bool>("isDecimal");
    const auto row = [](const char* name, const char* file, bool isDecimal) {
        QTest::newRow(name) << QByteArray(file).replace(' ', '\t') << isDecimal;
    };
    row("in p", "CHR BP P\n1 5 0,5\n", true);
    row("in p alone", "CHR BP BETA P\n1 5 0.1 0,5\n", true);
    row("in the position", "CHR BP P\n1 5,0 0.5\n", true);
    row("in log p", "CHR BP LOG10P\n1 5 2,5\n", true);
    row("beside p without points", "CHR BP BETA P\n1 5 0,1 1E-05\n", true);
    row("in texts", "CHR BP NOTE P\n1 5 12,34 0.5\n", false);
    row("in texts, log p", "CHR BP NOTE LOG10P\n1 5 12,34 2.5\n", false);
    row("in texts, p missing first", "CHR BP NOTE P\n1 5 12,34 NA\n1 6 12,34 0.5\n", false);
    row("in texts, one line without", "CHR BP NOTE P\n1 5 12,34 0.5\n1 6 0 0.5\n", false);
    row("none", "CHR BP P\n1 5 0.5\n", false);
}

void Understand::decimalCommas() {
    QFETCH(const QByteArray, file);
    QFETCH(const bool, isDecimal);
    const auto table = std::get<Understanding>(understand(viewOf(file), true, {}));
    QCOMPARE(table.format.decimalComma, isDecimal);
    QCOMPARE(table.columns.remarks.join(' ').contains("decimal commas"), isDecimal);
}

// Of two titles for one role, the better one. Of equal ones, the first chromosome; positions are
// left to the user.
void Understand::ranksOfPlaceTitles() {
    const auto columns = [](std::string_view before, std::string_view after) {
        const QByteArray file = bytesOf(before) + "\tchr\tpos\tp\t" + bytesOf(after) +
                                "\n7\t1\t9\t0.1\t8\n7\t1\t10\t0.2\t9\n";
        const auto result = understand(viewOf(file), true, {});
        const auto* table = std::get_if<Understanding>(&result);
        return table ? table->columns : ColumnChoice();
    };
    for (const auto& [title, rank] : title_table::positions)
        if (title != "pos")
            QCOMPARE(columns("x", title).position, rank == 0 ? -1 : 2);
    for (const auto& [title, rank] : title_table::chromosomes)
        if (title != "chr") {
            QCOMPARE(columns(title, "x").chromosome, rank == 0 ? 0 : 1);
            QCOMPARE(columns("x", title).chromosome, 1);
        }
}

void Understand::refusalsSayWhatToType() {
    const QByteArray file = tabbed("chr pos P~EUR P~AFR\n1 752566 0.4 0.5\n");
    const auto refusal = std::get<Refusal>(understand(viewOf(file), true, {}));
    QCOMPARE(refusal.options, (QList<QByteArray>{"--p 'P EUR'", "--p 'P AFR'"}));
    QCOMPARE(refusal.line, 1);
    QVERIFY(refusal.message.contains("\"P EUR\" (column 3)"));
    const QByteArray withoutP = tabbed("chr pos trait.MLM\n1 752566 x\n");
    QCOMPARE(std::get<Refusal>(understand(viewOf(withoutP), true, {})).options,
             QList<QByteArray>{"--p COLUMN"});
}

QTEST_APPLESS_MAIN(Understand)
#include "tst_understand.moc"
