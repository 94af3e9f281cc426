#include "simulator/window/keeper.h"
#include "tests/support/files.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QUuid>
#include <csignal>
#include <unistd.h>

namespace {

/// Running processes in whose command line or environment this text stands. Both are empty for a zombie.
QList<pid_t> processesWith(const QString& text) {
    QList<pid_t> found;
    for (const QString& name : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
        const QString process = u"/proc/"_qs + name;
        if (name.toInt() > 0 && name.toInt() != ::getpid() &&
            (readFile(process + u"/cmdline"_qs) + readFile(process + u"/environ"_qs)).contains(text.toUtf8()))
            found << name.toInt();
    }
    return found;
}

} // namespace

/// The simulator as processes, and what is left when each of them is ended in each way.
class ProcessesTest : public QObject {
    Q_OBJECT

    QTemporaryDir m_folder;
    const QString m_root = m_folder.filePath(u"device"_qs);

    QString errorOf(const QStringList& options, int status) {
        QProcess process;
        process.start(QStringLiteral(TESSALY_SIMULATOR), QStringList{u"--root"_qs, m_root} + options);
        if (!process.waitForFinished(30'000) || process.exitCode() != status)
            return u"status %1"_qs.arg(process.exitCode());
        return QString::fromUtf8(process.readAllStandardError());
    }

private Q_SLOTS:
    void cleanup() { QTRY_COMPARE_WITH_TIMEOUT(processesWith(m_root), QList<pid_t>(), 10'000); }

    void nothingIsLeft_data() {
        // Of the one that gets the signal: 0 is the outer keeper, 2 the work.
        QTest::addColumn<int>("generation");
        QTest::addColumn<int>("number");
        QTest::addColumn<int>("status"); // of the outer keeper; -1: it was killed itself
        QTest::newRow("asked to end") << 0 << SIGTERM << 7;
        QTest::newRow("outer keeper killed") << 0 << SIGKILL << -1;
        QTest::newRow("inner keeper killed") << 1 << SIGKILL << 128 + SIGKILL;
        QTest::newRow("work crashed") << 2 << SIGABRT << 128 + SIGABRT;
        QTest::newRow("power cut, then asked to end") << 0 << SIGUSR1 << 7;
        QTest::newRow("asked to end, stubborn work") << 0 << SIGTERM << 128 + SIGKILL;
    }
    void nothingIsLeft() {
        QFETCH(const int, generation);
        QFETCH(const int, number);
        const QString mark = QUuid::createUuid().toString();
        const QString started = m_folder.filePath(mark);
        const bool isStubborn = QByteArray(QTest::currentDataTag()).endsWith("stubborn work");
        // The work has a child, and there is an orphan.
        const QString script =
            u"trap '%1' TERM; (trap '' TERM; sleep 1000 &); sleep 1000 & echo $$ $PPID >\"$0\"; wait"_qs;
        QProcess keeper;
        keeper.setEnvironment(QProcess::systemEnvironment() << u"MARK="_qs + mark);
        keeper.start(QCoreApplication::applicationFilePath(),
                     {u"--keep"_qs, script.arg(isStubborn ? QString() : u"exit 7"_qs), started});
        const auto processes = [&mark] { return processesWith(mark); };
        const auto work = [&started] { return readFile(started).split(' '); }; // its number, its keeper's
        QTRY_VERIFY(work().size() == 2 && processes().size() == 5);
        const QByteArrayList first = work();
        const pid_t targets[] = {pid_t(keeper.processId()), first[1].toInt(), first[0].toInt()};
        QCOMPARE(::kill(targets[generation], number), 0);
        if (number == SIGUSR1) {
            QTRY_VERIFY(work().size() == 2 && work()[0] != first[0]);
            QCOMPARE(work()[1], first[1]);
            keeper.terminate();
        }
        QVERIFY(keeper.waitForFinished(10'000));
        QTEST(keeper.exitStatus() == QProcess::NormalExit ? keeper.exitCode() : -1, "status");
        QTRY_COMPARE(processes(), QList<pid_t>());
    }

    void refusesADeviceInUse() {
        QVERIFY(errorOf({u"--root"_qs, u"/proc/device"_qs}, 1).contains(u"/proc/device"));
        QVERIFY(errorOf({u"--profile"_qs, u"7"_qs}, 2).contains(u"6-touch, 6-touch-hd, 6-keys"));
        QProcess first;
        first.start(QStringLiteral(TESSALY_SIMULATOR), {u"--root"_qs, m_root});
        QTRY_VERIFY(processesWith(m_root).size() >= 4); // the server too
        QVERIFY(errorOf({}, 1).contains(u"another simulator"));
        first.kill();
        QVERIFY(first.waitForFinished(10'000));
    }
};

int main(int argc, char** argv) {
    if (argc == 4 && QByteArray(argv[1]) == "--keep")
        return tessaly::simulator::keep(
            [argv] { return ::execl("/bin/sh", "sh", "-c", argv[2], argv[3], nullptr); });
    QCoreApplication application(argc, argv);
    ProcessesTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "processes_test.moc"
