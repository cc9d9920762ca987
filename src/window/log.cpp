#include "log.h"

#include "fault_sentences.h"

#include <cstdlib>

void restartLog() {
    errorfile.close();
    errorfile.setFileName(QStringLiteral("Pelmark_log.txt"));
    if (!errorfile.open(QIODevice::WriteOnly | QIODevice::Text))
        std::exit(1);
    error_stream.setDevice(&errorfile);
    error_stream.setEncoding(QStringConverter::System);
    writeLog("Pelmark 0.1 by the Pelmark authors\n\n");
}

void endProcess(const QString& lastWords) {
    writeLog(lastWords);
    std::exit(1);
}

void endProcess(const Fault& fault) {
    endProcess(sentence(fault.code) + u'\n');
}
