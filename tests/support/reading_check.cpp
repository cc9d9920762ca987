#include "support/reading_check.h"

#include "support/reading.h"

#include <QTest>

void checkReading(const QByteArray& file, const QString& label, const QString& expectedScan,
                  const QString& expectedLoad) {
    QCOMPARE(told(plainScan(file)), expectedScan);
    QCOMPARE(told(plainLoad(file, label)), expectedLoad);
    for (const qsizetype blockSize : {defaultBlockSize, qsizetype(1), qsizetype(2), qsizetype(3),
                                      qsizetype(7), qsizetype(16), qsizetype(64)}) {
        QCOMPARE(told(scan(file, blockSize)), expectedScan);
        QCOMPARE(told(load(file, label, blockSize)), expectedLoad);
    }
}
