#include "point_table.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>
#include <climits>
#include <csignal>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

// Saved tables: what happens to the file, and to an older one of its name.
class Saving : public QObject {
    Q_OBJECT

private slots:
    void init();
    void newFile();
    void olderFileIsReplaced();
    void longName_data();
    void longName();
    void readOnlyFolder();
    void throughALink();
    void missingFolder();
    void folderOfThatName();
    void fullDiskLeavesTheOlderFile();
    void fullDiskLeavesNoNewFile();
    void pipesAreWrittenInPlace();
    void cleanup() { m_folder.reset(); }

private:
    QString path(const char* name) const { return m_folder->filePath(QLatin1String(name)); }
    QStringList files() const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

namespace {

const Points points{{100, 200}, {1.0, 2.0}};
const QByteArray table = "Chr\tPosition\tP\t-log10(P)\n1\t100\t0.1\t1\n1\t200\t0.01\t2\n";
const QString label = QStringLiteral("1");

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

bool put(const QString& path, const QByteArray& content) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

Points manyPoints() {
    return {QList<int>(50'000, 123456), QList<double>(50'000, 1.5)};
}

// Stands in for a full disk, for root too: while it lives, no file can grow beyond a few bytes.
class FullDisk {
public:
    FullDisk() {
        getrlimit(RLIMIT_FSIZE, &m_usual);
        rlimit small = m_usual;
        small.rlim_cur = 10'000;
        m_usualAction = std::signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &m_usual);
        std::signal(SIGXFSZ, m_usualAction);
    }
    Q_DISABLE_COPY_MOVE(FullDisk)

private:
    rlimit m_usual{};
    void (*m_usualAction)(int) = nullptr;
};

} // namespace

void Saving::init() {
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

QStringList Saving::files() const {
    return QDir(m_folder->path()).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
}

void Saving::newFile() {
    QVERIFY(savePointTable(path("run.txt"), points, label));
    QCOMPARE(contentOf(path("run.txt")), table);
    QCOMPARE(files(), QStringList({"run.txt"}));
}

void Saving::olderFileIsReplaced() {
    QVERIFY(put(path("run.txt"), QByteArray(1'000'000, 'x')));
    QVERIFY(savePointTable(path("run.txt"), points, label));
    QCOMPARE(contentOf(path("run.txt")), table);
    QCOMPARE(files(), QStringList({"run.txt"}));
}

void Saving::longName_data() {
    QTest::addColumn<int>("bytes");
    for (int bytes = 247; bytes <= NAME_MAX; ++bytes)
        QTest::addRow("%d bytes", bytes) << bytes;
}

// A name may be too long for a temporary file beside it and still be a file's name.
void Saving::longName() {
    QFETCH(int, bytes);
    const QByteArray name(bytes, 'n');
    QVERIFY(savePointTable(path(name), manyPoints(), label));
    QVERIFY(savePointTable(path(name), points, label));
    QCOMPARE(contentOf(path(name)), table);
    QCOMPARE(files(), QStringList({name}));
    QVERIFY(!savePointTable(path(name + QByteArray(NAME_MAX, 'n')), points, label));
}

// Where no new file may be created, the older one is written in place.
void Saving::readOnlyFolder() {
    QVERIFY(put(path("run.txt"), "older"));
    QVERIFY(chmod(qPrintable(m_folder->path()), 0555) == 0);
    const bool isSaved = savePointTable(path("run.txt"), points, label);
    QVERIFY(chmod(qPrintable(m_folder->path()), 0755) == 0);
    QVERIFY(isSaved);
    QCOMPARE(contentOf(path("run.txt")), table);
    QCOMPARE(files(), QStringList({"run.txt"}));
}

void Saving::throughALink() {
    QVERIFY(put(path("real.txt"), "older"));
    QVERIFY(QFile::link(path("real.txt"), path("run.txt")));
    QVERIFY(savePointTable(path("run.txt"), points, label));
    QVERIFY(QFileInfo(path("run.txt")).isSymLink());
    QCOMPARE(contentOf(path("real.txt")), table);
}

void Saving::missingFolder() {
    QVERIFY(!savePointTable(path("missing/run.txt"), points, label));
    QVERIFY(files().isEmpty());
}

void Saving::folderOfThatName() {
    QVERIFY(QDir().mkdir(path("run.txt")));
    QVERIFY(!savePointTable(path("run.txt"), points, label));
    QVERIFY(QFileInfo(path("run.txt")).isDir());
    QCOMPARE(files(), QStringList({"run.txt"}));
}

void Saving::fullDiskLeavesTheOlderFile() {
    QVERIFY(savePointTable(path("run.txt"), points, label));
    {
        const FullDisk full;
        QVERIFY(!savePointTable(path("run.txt"), manyPoints(), label));
    }
    QCOMPARE(contentOf(path("run.txt")), table);
    QCOMPARE(files(), QStringList({"run.txt"}));
}

void Saving::fullDiskLeavesNoNewFile() {
    {
        const FullDisk full;
        QVERIFY(!savePointTable(path("run.txt"), manyPoints(), label));
    }
    QVERIFY(files().isEmpty());
}

void Saving::pipesAreWrittenInPlace() {
    const QByteArray pipe = QFile::encodeName(path("pipe.txt"));
    QVERIFY(mkfifo(pipe.constData(), 0600) == 0);
    const int reader = open(pipe.constData(), O_RDWR | O_NONBLOCK);
    QVERIFY(reader >= 0);
    const bool isSaved = savePointTable(path("pipe.txt"), points, label);
    QByteArray received(1000, '\0');
    received.resize(qMax(qsizetype(0), read(reader, received.data(), 1000)));
    close(reader);
    QVERIFY(isSaved);
    QCOMPARE(received, table);
    struct stat status {};
    QVERIFY(stat(pipe.constData(), &status) == 0 && S_ISFIFO(status.st_mode));
}

QTEST_GUILESS_MAIN(Saving)
#include "tst_table_saving.moc"
