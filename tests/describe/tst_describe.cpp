#include "completion.h"
#include "manual.h"

#include <QProcess>
#include <QTest>

namespace {

// Two commands with every kind of option. One is in both; two differ in value or help alone.
std::vector<CommandSpec> twoCommands() {
    const OptionSpec output{"-o,--output", "OUT", "where it's written"};
    return {{"cut",
             "take a part [of a file]: quickly",
             ".first line\nsecond-line \\",
             {output,
              {"--kind", "HOW", "which one", {"hot", "cold"}},
              {"--times", "N", "how often", {}, true},
              {"-q,--quiet", nullptr, "[nothing]"}},
             nullptr},
            {"mend",
             "repair",
             "'Details",
             {output,
              {"--best", "N", "so many", {}, false, "20"},
              {"--times", "M", "how often", {}, true},
              {"-q,--quiet", nullptr, "less"}},
             nullptr}};
}

} // namespace

class Describe : public QObject {
    Q_OBJECT

private slots:
    void makesTheBashScript();
    void makesTheZshScript();
    void makesTheFishScript();
    void makesTheManualPage();
    void needsAPlaceInThePage();
    void servesItsReaders_data();
    void servesItsReaders();
};

void Describe::makesTheBashScript() {
    const QByteArray script = bashCompletion(twoCommands());
    QVERIFY(
        script.startsWith("# Completes pelmark-tools in bash; made from its table of commands.\n"
                          "_pelmark_tools() {\n"));
    QVERIFY(
        script.contains("    if ((COMP_CWORD == 1)); then\n"
                        "        words='cut mend -h --help --version'\n"
                        "    else\n"
                        "        case ${COMP_WORDS[1]} in\n"
                        "        cut)\n"
                        "            case $before in\n"
                        "            --kind) words='hot cold' ;;\n"
                        "            -o | --output) return ;;\n"
                        "            --times) ;;\n"
                        "            *)\n"
                        "                [[ $word == -* ]] || return\n"
                        "                words='-h --help -o --output --kind --times -q --quiet'\n"
                        "                ;;\n"
                        "            esac\n"
                        "            ;;\n"
                        "        mend)\n"
                        "            case $before in\n"
                        "            -o | --output) return ;;\n"
                        "            --times) ;;\n"
                        "            *)\n"
                        "                [[ $word == -* ]] || return\n"
                        "                words='-h --help -o --output --best --times -q --quiet'\n"
                        "                ;;\n"
                        "            esac\n"
                        "            ;;\n"
                        "        esac\n"
                        "    fi\n"));
}

void Describe::makesTheZshScript() {
    const QByteArray script = zshCompletion(twoCommands());
    QVERIFY(script.startsWith("#compdef pelmark-tools\n"));
    QVERIFY(script.contains("    local -a commands=(\n"
                            "        'cut:take a part [of a file]: quickly'\n"
                            "        'mend:repair'\n"
                            "    )\n"
                            "    local -a options=(\n"
                            "        '-h:print this help and exit'\n"
                            "        '--help:print this help and exit'\n"
                            "        '--version:print the version and exit'\n"
                            "    )\n"));
    const QByteArray help = "        '(-h --help)-h[print this help and exit]' \\\n"
                            "        '(-h --help)--help[print this help and exit]' \\\n";
    const QByteArray output =
        "        '(-o --output)-o+[where it'\\''s written]:OUT:_files' \\\n"
        "        '(-o --output)--output=[where it'\\''s written]:OUT:_files' \\\n";
    QVERIFY(script.endsWith("cut)\n    _arguments -s \\\n" + help + output +
                            "        '(--kind)--kind=[which one]:HOW:(hot cold)' \\\n"
                            "        '*--times=[how often]:N:' \\\n"
                            "        '(-q --quiet)-q[\\[nothing\\]]' \\\n"
                            "        '(-q --quiet)--quiet[\\[nothing\\]]' \\\n"
                            "        '*:FILE:_files'\n"
                            "    ;;\n"
                            "mend)\n    _arguments -s \\\n" +
                            help + output +
                            "        '(--best)--best=-[so many]::N:' \\\n"
                            "        '*--times=[how often]:M:' \\\n"
                            "        '(-q --quiet)-q[less]' \\\n"
                            "        '(-q --quiet)--quiet[less]' \\\n"
                            "        '*:FILE:_files'\n"
                            "    ;;\n"
                            "esac\n"));
}

void Describe::makesTheFishScript() {
    const QByteArray none = "complete -c pelmark-tools -n '__pelmark_tools_command \\'\\'' ";
    const QByteArray cut = "complete -c pelmark-tools -n '__pelmark_tools_command cut' ";
    const QByteArray mend = "complete -c pelmark-tools -n '__pelmark_tools_command mend' ";
    const QByteArray help = "-s h -l help -d 'print this help and exit'\n";
    const QByteArray output = "-s o -l output -r -F -d 'where it\\'s written'\n";
    const QByteArray script = fishCompletion(twoCommands());
    QVERIFY(script.startsWith("# Completes pelmark-tools in fish; "));
    QCOMPARE(script.mid(script.indexOf("complete -c")),
             "complete -c pelmark-tools -f\n" + none + help + none +
                 "-l version -d 'print the version and exit'\n\n" + none +
                 "-a cut -d 'take a part [of a file]: quickly'\n" + cut + "-F\n" + cut + help +
                 cut + output + cut + "-l kind -x -a 'hot cold' -d 'which one'\n" + cut +
                 "-l times -x -d 'how often'\n" + cut + "-s q -l quiet -d '[nothing]'\n\n" + none +
                 "-a mend -d 'repair'\n" + mend + "-F\n" + mend + help + mend + output + mend +
                 "-l best -d 'so many'\n" + mend + "-l times -x -d 'how often'\n" + mend +
                 "-s q -l quiet -d 'less'\n");
}

void Describe::makesTheManualPage() {
    QCOMPARE(manualPage(".SH BEFORE\n.\\\" The commands\n.SH AFTER\n", twoCommands()),
             QByteArray(".SH BEFORE\n"
                        ".SS cut\n"
                        "Take a part [of a file]: quickly.\n"
                        "\\&.first line\n"
                        "second\\-line \\e\n"
                        ".TP\n"
                        "\\fB\\-h\\fR, \\fB\\-\\-help\\fR\n"
                        "print this help and exit\n"
                        ".TP\n"
                        "\\fB\\-o\\fR, \\fB\\-\\-output\\fR \\fIOUT\\fR\n"
                        "where it's written\n"
                        ".TP\n"
                        "\\fB\\-\\-kind\\fR \\fIHOW\\fR\n"
                        "which one\n"
                        ".TP\n"
                        "\\fB\\-\\-times\\fR \\fIN\\fR\n"
                        "how often\n"
                        ".TP\n"
                        "\\fB\\-q\\fR, \\fB\\-\\-quiet\\fR\n"
                        "[nothing]\n"
                        ".SS mend\n"
                        "Repair.\n"
                        "\\&'Details\n"
                        ".TP\n"
                        "\\fB\\-\\-best\\fR [\\fIN\\fR]\n"
                        "so many\n"
                        ".TP\n"
                        "\\fB\\-\\-times\\fR \\fIM\\fR\n"
                        "how often\n"
                        ".TP\n"
                        "\\fB\\-q\\fR, \\fB\\-\\-quiet\\fR\n"
                        "less\n"
                        ".PP\n"
                        "As for \\fBcut\\fR:\n"
                        "\\fB\\-h\\fR, \\fB\\-\\-help\\fR,\n"
                        "\\fB\\-o\\fR, \\fB\\-\\-output\\fR \\fIOUT\\fR.\n"
                        ".SH AFTER\n"));
}

void Describe::needsAPlaceInThePage() {
    QCOMPARE(manualPage(".SH BEFORE\n", twoCommands()), QByteArray());
}

void Describe::servesItsReaders_data() {
    QTest::addColumn<QString>("script");
    QTest::addColumn<QStringList>("words");
    const QStringList programs{QStringLiteral(PELMARK_TOOLS), QStringLiteral(PELMARK_DESCRIBE)};
    for (const char* script : {"manual_options", "manual_examples"})
        QTest::newRow(script) << script
                              << programs + QStringList(QStringLiteral(PELMARK_MANUAL_FRAME));
    for (const char* shell : {"bash", "zsh", "fish"})
        QTest::newRow(shell) << "completes" << QStringList(QLatin1String(shell)) + programs;
}

void Describe::servesItsReaders() {
    QFETCH(QString, script);
    QFETCH(QStringList, words);
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QStringLiteral(PELMARK_SCRIPTS "/") + script, words);
    QVERIFY(process.waitForFinished(-1));
    const QByteArray output = process.readAll();
    QVERIFY2(process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0,
             output.constData());
}

QTEST_GUILESS_MAIN(Describe)
#include "tst_describe.moc"
