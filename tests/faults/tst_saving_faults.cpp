#include "driven_run.h"
#include "machine.h"
#include "samples.h"

#include <QDir>
#include <QFile>
#include <QTest>
#include <cerrno>
#include <sys/stat.h>
#include <sys/sysmacros.h>

// Tables, images and logs that cannot be written, or only in part. Older files stay whole. A table
// that fails ends the program with a message; an image or log that fails does not.
class SavingFaults : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void noLog();
    void logCannotBeWrittenTo();
    void logOnFullDevice();
    void folderTakesNoFile();
    void folderTakesNoNewFile();
    void folderDoesNotExist_data();
    void folderDoesNotExist();
    void tableOnFullDevice_data();
    void tableOnFullDevice();
    void imageOnFullDevice();
    void fileThatCannotBeReplaced_data();
    void fileThatCannotBeReplaced();
    void mountedFiles();
    void tableOnFullDisk();
    void newTableInPlaceOnFullDisk();
    void imageOnFullDisk();
    void genomeImageOnFullDisk();
    void logOnFullDisk();
};

namespace {

const QByteArray noTable = "Could not generate outpout file!";
constexpr const char* fullDevice = "/dev/full";

// 1,000 points, whose table needs 27 kilobytes and whose plot needs fewer.
QByteArray manyPoints() {
    QByteArray table = "chr\tpos\tp\n";
    for (int i = 0; i < 1000; ++i)
        table += "1\t" + QByteArray::number(1'000'000 + 1000 * i) + "\t0.0" +
                 QByteArray::number(1 + i * 7 % 97) + '\n';
    return table;
}

bool isFullDevice(const QString& path) {
    struct stat status = {};
    return stat(QFile::encodeName(path).constData(), &status) == 0 && S_ISCHR(status.st_mode) &&
           status.st_rdev == makedev(1, 7);
}

// The device that is always full, mounted in the working folder, where nothing can replace it.
class FullDevice {
public:
    FullDevice(const DrivenRun& run, const QString& name)
        : m_path(run.path(name)), m_mounted((run.addFile(name, ""), fullDevice), m_path) {}
    bool isUntouched() const { return isFullDevice(m_path) && isFullDevice(fullDevice); }

private:
    QString m_path;
    machine::Mounted m_mounted;
};

// Fills the disk except for `left` bytes.
void fillDisk(const DrivenRun& run, const QString& folder, qint64 left) {
    run.addFile(folder + "/reserve", QByteArray(left, 'r'));
    QFile filler(run.path(folder + "/filler"));
    QVERIFY(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    while (filler.write(QByteArray(4096, 'f')) > 0) {
    }
    QVERIFY(QFile::remove(run.path(folder + "/reserve")));
}

} // namespace

void SavingFaults::initTestCase() {
    machine::havePrivateMounts();
    machine::obeyPermissions();
    QVERIFY2(isFullDevice(fullDevice), "this machine has no device that is always full");
}

void SavingFaults::noLog() {
    DrivenRun run;
    run.addFile("data.txt", samples::genomeTable());
    QVERIFY(QFile::setPermissions(run.path(""), QFile::ReadOwner | QFile::ExeOwner));
    QVERIFY(run.playTo(1, {"open data.txt"}));
    QVERIFY(QFile::setPermissions(run.path(""),
                                  QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    QVERIFY(!run.exists("Pelmark_log.txt"));
}

void SavingFaults::logCannotBeWrittenTo() {
    DrivenRun run;
    run.addFile("Pelmark_log.txt", "old\n");
    QVERIFY(QFile::setPermissions(run.path("Pelmark_log.txt"), QFile::ReadOwner));
    QVERIFY(run.playTo(1, {"open data.txt"}));
    QCOMPARE(run.log(), "old\n");
}

// The fault cannot be reported anywhere, and the program goes on.
void SavingFaults::logOnFullDevice() {
    DrivenRun run;
    run.addFile("data.txt", samples::genomeTable());
    const FullDevice device(run, "Pelmark_log.txt");
    QVERIFY(run.playTo(0, {"open data.txt", "box 195 0 209 600", "click saveButton", "name saved",
                           "click exitButton"}));
    QVERIFY(run.content("saved.txt").startsWith("Chr\tPosition\t"));
    QVERIFY(!run.image("saved.png").isNull());
    QVERIFY(device.isUntouched());
}

void SavingFaults::folderTakesNoFile() {
    DrivenRun run;
    run.addFile("data.txt", samples::chromosomeTable());
    run.addFile("Pelmark_log.txt", "");
    QVERIFY(QFile::setPermissions(run.path(""), QFile::ReadOwner | QFile::ExeOwner));
    QVERIFY(run.playTo(1, {"open data.txt", "click saveRemoveButton", "name saved"}));
    QVERIFY(QFile::setPermissions(run.path(""),
                                  QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    QVERIFY2(run.log().startsWith(logHeader) && run.log().endsWith("\n" + noTable), run.log());
    QVERIFY(!run.exists("saved.txt") && !run.exists("saved.png"));
}

// Files that exist can still be written in place.
void SavingFaults::folderTakesNoNewFile() {
    DrivenRun run;
    run.addFile("data.txt", samples::chromosomeTable());
    for (const char* name : {"Pelmark_log.txt", "saved.txt", "saved.png"})
        run.addFile(name, "old\n");
    QVERIFY(QFile::setPermissions(run.path(""), QFile::ReadOwner | QFile::ExeOwner));
    QVERIFY(run.playTo(
        0, {"open data.txt", "click saveButton", "name saved", "dump a", "click exitButton"}));
    QVERIFY(QFile::setPermissions(run.path(""),
                                  QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    QCOMPARE(run.content("saved.txt").count('\n'), samples::chromosome().size() + 1);
    QCOMPARE(run.image("saved.png").size(), QSize(640, 600));
}

void SavingFaults::folderDoesNotExist_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("folder") << "no/saved";
    QTest::newRow("absolute") << "/no/such/folder/saved";
    QTest::newRow("a file taken for a folder") << "data.txt/saved";
    QTest::newRow("name too long") << QString(300, u'n');
}

void SavingFaults::folderDoesNotExist() {
    QFETCH(QString, name);
    DrivenRun run;
    run.addFile("data.txt", samples::chromosomeTable());
    QVERIFY(run.playTo(1, {"open data.txt", "click saveRemoveButton", "name " + name}));
    QVERIFY2(run.log().startsWith(logHeader) && run.log().endsWith("\n" + noTable), run.log());
    QCOMPARE(run.content("data.txt"), samples::chromosomeTable());
}

void SavingFaults::tableOnFullDevice_data() {
    QTest::addColumn<bool>("byLink");
    QTest::newRow("device") << false;
    QTest::newRow("link to the device") << true;
}

// The device is not replaced by a table, and the fault is reported.
void SavingFaults::tableOnFullDevice() {
    QFETCH(bool, byLink);
    DrivenRun run;
    run.addFile("data.txt", samples::chromosomeTable());
    const FullDevice device(run, "full.txt");
    QVERIFY(QFile::link("full.txt", run.path("link.txt")));
    QVERIFY(run.playTo(
        1, {"open data.txt", "click saveRemoveButton", byLink ? "name link" : "name full.txt"}));
    QVERIFY2(run.log().startsWith(logHeader) && run.log().endsWith("\n" + noTable), run.log());
    QVERIFY(device.isUntouched());
}

// The table is saved, and the plot stays on screen.
void SavingFaults::imageOnFullDevice() {
    DrivenRun run;
    run.addFile("data.txt", samples::chromosomeTable());
    const FullDevice device(run, "saved.png");
    QVERIFY(run.playTo(
        0, {"open data.txt", "click saveButton", "name saved", "dump a", "click exitButton"}));
    QCOMPARE(run.content("saved.txt").count('\n'), samples::chromosome().size() + 1);
    QVERIFY(device.isUntouched());
}

void SavingFaults::fileThatCannotBeReplaced_data() {
    QTest::addColumn<QByteArray>("fault");
    QTest::addColumn<int>("error");
    QTest::addColumn<bool>("isSaved");
    QTest::newRow("temporary name too long")
        << QByteArray("PELMARK_FAULT_TEMPORARY") << ENAMETOOLONG << true;
    QTest::newRow("no temporary file") << QByteArray("PELMARK_FAULT_TEMPORARY") << EPERM << true;
    QTest::newRow("sticky folder") << QByteArray("PELMARK_FAULT_REPLACE") << EPERM << true;
    for (const int error : {ENOSPC, EDQUOT}) {
        QTest::addRow("no room for a temporary file: %d", error)
            << QByteArray("PELMARK_FAULT_TEMPORARY") << error << false;
        QTest::addRow("no room to replace: %d", error)
            << QByteArray("PELMARK_FAULT_REPLACE") << error << false;
    }
}

// Whatever can be opened is saved, in place if need be; but never at the risk of a full disk.
void SavingFaults::fileThatCannotBeReplaced() {
    QFETCH(QByteArray, fault);
    QFETCH(int, error);
    QFETCH(bool, isSaved);
    DrivenRun run;
    run.addFile("data.txt", samples::chromosomeTable());
    QVERIFY(QDir(run.path("")).mkdir("folder"));
    run.addFile("folder/saved.txt", "older\n");
    run.addFile("folder/saved.png", "older\n");
    {
        const machine::FailingFiles fails(run.path("folder"), fault.constData(), error);
        QVERIFY(run.playTo(isSaved ? 0 : 1, {"open data.txt", "click saveButton",
                                             "name folder/saved", "click exitButton"}));
    }
    QCOMPARE(run.content("folder/saved.txt") == "older\n", !isSaved);
    QCOMPARE(run.content("folder/saved.txt").count('\n'),
             isSaved ? samples::chromosome().size() + 1 : 1);
    QCOMPARE(run.image("folder/saved.png").isNull(), !isSaved);
    QCOMPARE(QDir(run.path("folder")).entryList(QDir::Files | QDir::Hidden),
             QStringList({"saved.png", "saved.txt"}));
}

void SavingFaults::mountedFiles() {
    DrivenRun run;
    for (const char* name : {"saved.txt", "saved.png", "under.txt", "under.png"})
        run.addFile(name, "older\n");
    run.addFile("data.txt", samples::chromosomeTable());
    const machine::Mounted table(run.path("under.txt"), run.path("saved.txt"));
    const machine::Mounted image(run.path("under.png"), run.path("saved.png"));
    QVERIFY(run.playTo(0, {"open data.txt", "click saveButton", "name saved", "click exitButton"}));
    QCOMPARE(run.content("under.txt").count('\n'), samples::chromosome().size() + 1);
    QCOMPARE(run.image("under.png").size(), QSize(640, 600));
}

void SavingFaults::tableOnFullDisk() {
    for (const qint64 left : {0, 4096, 16384}) {
        DrivenRun run;
        run.addFile("data.txt", manyPoints());
        QVERIFY(QDir(run.path("")).mkdir("disk"));
        const machine::Mounted disk(run.path("disk"), 64 * 1024);
        run.addFile("disk/saved.txt", "older\n");
        fillDisk(run, "disk", left);
        QVERIFY(run.playTo(1, {"open data.txt", "click saveRemoveButton", "name disk/saved"}));
        QVERIFY2(run.log().startsWith(logHeader) && run.log().endsWith("\n" + noTable), run.log());
        QCOMPARE(run.content("disk/saved.txt"), "older\n");
        QCOMPARE(QDir(run.path("disk")).entryList(QDir::Files | QDir::Hidden),
                 QStringList({"filler", "saved.txt"}));
    }
}

// Part of a table would pass for a whole one.
void SavingFaults::newTableInPlaceOnFullDisk() {
    DrivenRun run;
    run.addFile("data.txt", manyPoints());
    QVERIFY(QDir(run.path("")).mkdir("disk"));
    const machine::Mounted disk(run.path("disk"), 64 * 1024);
    fillDisk(run, "disk", 8192);
    const machine::FailingFiles fails(run.path("disk"), "PELMARK_FAULT_TEMPORARY", ENAMETOOLONG);
    QVERIFY(run.playTo(1, {"open data.txt", "click saveButton", "name disk/saved"}));
    QVERIFY(!run.exists("disk/saved.txt"));
}

// An image that fails is not reported, but leaves the older one whole.
void SavingFaults::imageOnFullDisk() {
    DrivenRun run;
    run.addFile("data.txt", samples::chromosomeTable());
    QVERIFY(QDir(run.path("")).mkdir("disk"));
    QVERIFY(QFile::link("disk/saved.png", run.path("saved.png")));
    const machine::Mounted disk(run.path("disk"), 64 * 1024);
    run.addFile("disk/saved.png", "older\n");
    fillDisk(run, "disk", 0);
    QVERIFY(run.playTo(0, {"open data.txt", "click saveButton", "name saved", "click exitButton"}));
    QCOMPARE(run.content("saved.txt").count('\n'), samples::chromosome().size() + 1);
    QCOMPARE(run.content("disk/saved.png"), "older\n");
}

void SavingFaults::genomeImageOnFullDisk() {
    DrivenRun run;
    const machine::Mounted disk(run.path(""), 64 * 1024);
    run.addFile("data.txt", samples::genomeTable());
    run.addFile("data.txt.png", "older\n");
    run.addFile("Pelmark_log.txt", QByteArray(4096, ' '));
    fillDisk(run, "", 0);
    QVERIFY(run.playTo(0, {"open data.txt", "click saveButton", "dump a", "click exitButton"}));
    QCOMPARE(run.content("data.txt.png"), "older\n");
}

// Not one byte of the log fits; the plot works all the same.
void SavingFaults::logOnFullDisk() {
    DrivenRun run;
    const machine::Mounted disk(run.path(""), 64 * 1024);
    run.addFile("data.txt", samples::genomeTable());
    fillDisk(run, "", 0);
    run.addFile("Pelmark_log.txt", "");
    QVERIFY(run.playTo(0, {"open data.txt", "box 195 0 209 600", "dump a", "click exitButton"}));
    QCOMPARE(run.state("a").integers("Pos_list"), QList<int>({500, 1500, 2500}));
    QVERIFY(run.playTo(1, {"cancel"}));
}

QTEST_GUILESS_MAIN(SavingFaults)
#include "tst_saving_faults.moc"
