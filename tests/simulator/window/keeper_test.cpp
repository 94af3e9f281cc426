#include "simulator/window/keeper.h"

#include "process_list.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QUuid>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

/// What the keepers leave, when each of the processes is ended in each way. This program is also what they
/// keep.
class KeeperTest : public QObject {
    Q_OBJECT

    QProcess m_keeper; ///< the outer one

    /// Marked processes: both keepers, the work, and two that it started, of which one is nobody's child any
    /// more.
    QList<pid_t> processes() const { return processesWith(m_mark); }
    pid_t work() const {
        QFile file(m_started);
        return file.open(QIODevice::ReadOnly) ? file.readLine().trimmed().toInt() : 0;
    }

    QTemporaryDir m_folder;
    QString m_started; ///< the work writes its number into it
    const QString m_mark = QUuid::createUuid().toString();

private Q_SLOTS:
    void nothingIsLeft_data() {
        QTest::addColumn<int>(
            "generation"); // of the one that gets the signal: 0 is the outer keeper, 2 the work
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
        m_started = m_folder.filePath(QString::fromLatin1(QTest::currentDataTag()));
        m_keeper.start(QCoreApplication::applicationFilePath(), {u"--keep"_qs, m_started, m_mark});
        QTRY_COMPARE(processes().size(), 5);
        const pid_t first = work();
        const pid_t inner = parentOf(first);
        QCOMPARE(parentOf(inner), pid_t(m_keeper.processId()));
        const pid_t targets[] = {pid_t(m_keeper.processId()), inner, first};
        QCOMPARE(::kill(targets[generation], number), 0);
        if (number == SIGUSR1) {
            QTRY_VERIFY(work() > 0 && work() != first);
            QTRY_COMPARE(processes().size(), 5);
            QCOMPARE(parentOf(work()), inner);
            m_keeper.terminate();
        }
        QVERIFY(m_keeper.waitForFinished(10'000));
        QTEST(m_keeper.exitStatus() == QProcess::NormalExit ? m_keeper.exitCode() : -1, "status");
        QTRY_COMPARE(processes(), QList<pid_t>());
    }
};

namespace {

void startSleeper(const char* mark) {
    if (::fork() == 0) {
        std::signal(SIGTERM, SIG_IGN);
        ::execl("/bin/sh", "sh", "-c", "sleep 1000; :", mark, nullptr);
        ::_exit(127);
    }
}

int work(const char* file, const char* mark) {
    std::signal(
        SIGTERM, QByteArray(file).endsWith("stubborn work") ? SIG_IGN : [](int) { ::_exit(7); });
    startSleeper(mark);
    if (::fork() == 0) {
        startSleeper(mark);
        ::_exit(0);
    }
    const QByteArray line = QByteArray::number(::getpid()) + '\n';
    const int target = ::open(file, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (::write(target, line.constData(), std::size_t(line.size())) != line.size())
        return 1;
    for (;;)
        ::pause();
}

} // namespace

int main(int argc, char** argv) {
    if (argc == 4 && QByteArray(argv[1]) == "--keep")
        return tessaly::simulator::keep([argv] { return work(argv[2], argv[3]); });
    QCoreApplication application(argc, argv);
    KeeperTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "keeper_test.moc"
