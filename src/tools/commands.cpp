#include "check.h"
#include "command.h"

const std::vector<CommandSpec>& commands() {
    static const std::vector<CommandSpec> all{
        {"check",
         "say what the window makes of a file, and how to mend it",
         "FILE...",
         "Reads each file as the window does and reports, on standard output: whether it opens; "
         "the\n"
         "columns that the window takes, beside the right ones; every fault and every trap with "
         "its\n"
         "line; and the command that mends the file.",
         {{"--json", "FILE", "write the report for programs to FILE; - is standard output"},
          {"-q,--quiet", nullptr, "only verdict, findings and what to do; no progress"}},
         check},
    };
    return all;
}
