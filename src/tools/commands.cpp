#include "check.h"
#include "command.h"
#include "cut_command.h"
#include "hits_command.h"
#include "plot_command.h"
#include "prepare_command.h"

#include <initializer_list>

namespace {

CommandSpec checkSpec() {
    return {
        "check",
        "say what the window makes of a file, and how to mend it",
        "Reads each file as the window does and reports, on standard output: whether it opens;\n"
        "the columns that the window takes, beside the right ones; every fault and every trap\n"
        "with its line; and the command that mends the file.",
        {{"--json", "FILE", "write the report for programs to FILE; - is standard output"},
         {"-q,--quiet", nullptr, "only verdict, findings and what to do; no progress"}},
        check};
}

// How the columns of a result file are found, and which of its rows are read. `p` and
// `chromosome` are the options for these columns.
std::vector<OptionSpec> readingOptions(const char* p = "--p",
                                       const char* chromosome = "--chromosome") {
    return {
        {chromosome, "COLUMN", "the chromosome"},
        {"--position", "COLUMN", "the position in base pairs"},
        {p, "COLUMN", "the p-value, or what --p-is says"},
        {"--name", "COLUMN", "the marker's name"},
        {"--test", "COLUMN|NAME",
         "the column that says which test a row is of, or the test to keep"},
        {"--test-name", "NAME", "the test to keep, where its name is a column's title too"},
        {"--p-is",
         "SCALE",
         "what the p column holds: p, neglog10, log10 or ln",
         {"p", "neglog10", "log10", "ln"}},
        {"--p-from", "COLUMNS", "compute p from z, or from beta,se (two-sided, normal)"},
        {"--z", "COLUMN", "for --p-from z"},
        {"--beta", "COLUMN", "for --p-from beta,se"},
        {"--se", "COLUMN", "for --p-from beta,se"},
        {"--chromosome-value", "LABEL", "the chromosome of all rows, in place of a column"},
        {"--where", "COLUMN=VALUE", "keep only the rows with this value; may come again", {}, true},
        {"--sample", "NAME", "the sample of a VCF that has several"},
        {"--positions", "FILE",
         "chromosome and position by marker name: .bim, .map, .pvar, VCF or any table"},
        {"--no-header", nullptr, "there are no titles; columns are given by number"},
        {"--zero-based", nullptr, "positions count from 0, as in BED files"},
        {"--build",
         "WHICH",
         "author: the author's positions rather than harmonised ones",
         {"author"}}};
}

OptionSpec zeroOption() {
    return {"--zero",
            "HOW",
            "p of 0: smallest (of those above 0; the default), drop or fail",
            {"smallest", "drop", "fail"}};
}

std::vector<OptionSpec> joined(std::initializer_list<std::vector<OptionSpec>> lists) {
    std::vector<OptionSpec> all;
    for (const std::vector<OptionSpec>& list : lists)
        all.insert(all.end(), list.begin(), list.end());
    return all;
}

CommandSpec prepareSpec() {
    return {
        "prepare", "make of any result file one that the window opens and shows rightly",
        "Several files with the same columns, such as one a chromosome, become one scan. Columns "
        "are\n"
        "found by their titles and judged by their values; where that leaves a doubt, nothing is\n"
        "written, and the message says which option decides. COLUMN is a title or a number from "
        "1.\n"
        "OUT is put in place only when it is complete. The report goes to standard error: every "
        "row\n"
        "is either written or counted under the reason for which it was dropped.",
        joined(
            {{{"-o,--output", "OUT", "the file to write; without it, standard output"}},
             readingOptions(),
             {zeroOption(),
              {"--chromosome-names",
               "HOW",
               "keep (the default), plain (1, X, MT) or chr (chr1, chrX, chrM)",
               {"keep", "plain", "chr"}},
              {"--min-markers", "N", "leave out chromosomes with fewer markers"},
              {"--all-columns", nullptr, "append all other columns under their titles"},
              {"--lines", nullptr, "append each row's line number in its file"},
              {"--memory", "SIZE", "memory for sorting, such as 512M or 2G (1G unless given)"},
              {"--dropped", "FILE", "write every dropped line with its reason and line number"},
              {"--json", "FILE", "write the report for programs to FILE"},
              {"-q,--quiet", nullptr, "no report and no progress; refusals and warnings only"}}}),
        prepareCommand};
}

CommandSpec hitsSpec() {
    return {
        "hits", "list the lead markers: the strongest of each region",
        "The strongest marker below the threshold is a lead, then the strongest of those at least "
        "a\n"
        "window away from every lead on the same chromosome, and so on. The table has a row for "
        "each\n"
        "lead, in order of chromosome and position. Columns of FILE are found as by prepare; but "
        "--p\n"
        "is the threshold, and --p-column names the column of p.",
        joined({{{"-o,--output", "OUT", "the file to write; without it, standard output"},
                 {"--p", "P", "the threshold: markers with a smaller p count (5e-8 unless given)"},
                 {"--window", "BASES",
                  "the least distance of two leads, in base pairs (500000 unless given)"},
                 {"--columns", "COLUMNS", "append these columns of FILE; a comma between two"}},
                readingOptions("--p-column"),
                {{"--json", "FILE", "write the report and the leads for programs to FILE"},
                 {"-q,--quiet", nullptr, "no report and no progress; refusals only"}}}),
        hitsCommand};
}

// `keep` and `drop`, which differ in what they write alone.
CommandSpec cutSpec(const char* name, const char* summary, int (*run)(const Arguments&, Streams&)) {
    return {
        name, summary,
        "The first FILE is the result file: the one that was open in the window, or the one that\n"
        "it was prepared from, with the options it was prepared with. The others are tables that\n"
        "the window saved. A table's chromosome is the only one that has all of its rows;\n"
        "TABLE@LABEL says which one is meant. The lines are written as they stand, not\n"
        "compressed; header and comments always. The report goes to standard error.",
        joined(
            {{{"-o,--output", "OUT", "the file to write; without it, standard output"},
              {"--region",
               "REGION",
               "markers from one position to another: 12:2,330,458-2,331,000; may come again",
               {},
               true},
              {"--names",
               "FILE",
               "markers with these names, one a line; may come again",
               {},
               true}},
             readingOptions(),
             {zeroOption(),
              {"--json", "FILE", "write the report for programs to FILE"},
              {"-q,--quiet", nullptr, "no report and no progress; refusals and warnings only"}}}),
        run};
}

CommandSpec plotSpec() {
    return {
        "plot", "draw the window's pictures of result files, as PNG or PDF",
        "Draws any file that prepare reads. The whole genome is drawn unless --chromosome names "
        "one\n"
        "or the file has only one. OUT ends in .png or .pdf, or is a folder; several files need a\n"
        "folder, and a fault in one does not keep the others from being drawn. In a PDF, letters "
        "and\n"
        "lines are drawn as such, and the markers are one picture.",
        joined(
            {{{"-o,--output", "OUT", "the picture, or a folder for it"},
              {"--format",
               "FORMAT",
               "png or pdf; without it, as OUT ends (png in a folder)",
               {"png", "pdf"}},
              {"--chromosome", "LABEL", "draw this chromosome"},
              {"--range", "RANGE", "zoom to the markers from FIRST-LAST, in base pairs"},
              {"--mark", "RANGE", "mark the markers from FIRST-LAST in red"},
              {"--join", nullptr, "join the markers with lines"},
              {"--no-lines", nullptr, "leave out the reference lines"},
              {"--label-hits",
               "N",
               "name the N strongest lead markers (20 where no number follows)",
               {},
               false,
               "20"},
              {"--qq", nullptr, "draw observed against expected -log10 p instead"},
              {"--screen", "SIZE",
               "as on a screen of WIDTHxHEIGHT pixels (1920x1080 unless given), of which the plot "
               "takes 80 by 75 %, with --qq a square"},
              {"--size", "SIZE", "the plot is WIDTHxHEIGHT pixels large"},
              {"--scale", "N",
               "N times the pixels, dots, lines and letters; in a PDF, N times the markers' pixels "
               "(4 unless given)"},
              {"--as-is", nullptr, "read the file by the window's own rule for columns"}},
             readingOptions("--p", "--chromosome-column"),
             {{"--json", "FILE", "write the report for programs to FILE"},
              {"-q,--quiet", nullptr, "no report and no progress; refusals and warnings only"}}}),
        plotCommand};
}

} // namespace

const std::vector<CommandSpec>& commands() {
    static const std::vector<CommandSpec> all{
        checkSpec(),
        prepareSpec(),
        plotSpec(),
        hitsSpec(),
        cutSpec("keep", "write a result file's own lines that saved tables name", keepCommand),
        cutSpec("drop", "write a result file's own lines without those that saved tables name",
                dropCommand)};
    return all;
}
