#include "simulator/window/keeper.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QUuid>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

QByteArray contentOf(pid_t process, const char* name) {
    QFile file(QStringLiteral("/proc/%1/%2").arg(process).arg(QLatin1String(name)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Running processes, zombies excluded, in whose command line or initial environment this text stands.
QList<pid_t> processesWith(const QString& text) {
    QList<pid_t> found;
    for (const QString& name : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
        const pid_t process = name.toInt();
        if (process <= 0 || process == ::getpid())
            continue;
        // Both are empty for a zombie.
        if (contentOf(process, "cmdline").contains(text.toUtf8()) ||
            contentOf(process, "environ").contains(text.toUtf8()))
            found << process;
    }
    return found;
}

/// 0 for a process that is gone.
pid_t parentOf(pid_t process) {
    const QByteArray status = contentOf(process, "status");
    const auto at = status.indexOf("\nPPid:");
    return at < 0 ? 0 : status.mid(at + 6, 12).split('\n').constFirst().trimmed().toInt();
}

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

/// The simulator as processes: its options, and what is left when each of them is ended in each way. This
/// program is also what the keepers keep.
class ProcessesTest : public QObject {
    Q_OBJECT

    QProcess m_keeper; ///< the outer one

    /// Marked processes: both keepers, the work, and two that it started, one of them an orphan by now.
    QList<pid_t> processes() const { return processesWith(m_mark); }
    pid_t work() const {
        QFile file(m_started);
        return file.open(QIODevice::ReadOnly) ? file.readLine().trimmed().toInt() : 0;
    }

    QTemporaryDir m_folder;
    const QString m_root = m_folder.filePath(u"device"_qs);
    QString m_started; ///< the work writes its number into it
    const QString m_mark = QUuid::createUuid().toString();

    QString errorOf(const QStringList& options, int status) {
        QProcess process;
        process.start(QStringLiteral(TESSALY_SIMULATOR), options);
        if (!process.waitForFinished(30'000) || process.exitCode() != status)
            return u"status %1"_qs.arg(process.exitCode());
        return QString::fromUtf8(process.readAllStandardError());
    }

private Q_SLOTS:
    void cleanup() { QTRY_COMPARE_WITH_TIMEOUT(processesWith(m_root), QList<pid_t>(), 10'000); }

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

    void showsItsScreen() {
        for (const auto& [profile, size] :
             {std::pair(u"6-touch-hd"_qs, QSize(1072, 1448)), {u"6-keys"_qs, QSize(758, 1024)}}) {
            const QString file = m_folder.filePath(profile + u".png"_qs);
            errorOf({u"--root"_qs, m_root, u"--profile"_qs, profile, u"--screenshot"_qs, file}, 0);
            const QImage picture = QImage(file).convertToFormat(QImage::Format_Grayscale8);
            QCOMPARE(picture.size(), size);
            int dark = 0;
            for (int y = 0; y < picture.height(); ++y)
                dark += int(std::count_if(picture.constScanLine(y), picture.constScanLine(y) + size.width(),
                                          [](uchar grey) { return grey < 64; }));
            const double share = double(dark) / (size.width() * size.height());
            QVERIFY2(share > 0.02 && share < 0.3, qPrintable(QString::number(share))); // a page with text
        }
    }

    void refusesADeviceInUse() {
        QVERIFY(errorOf({u"--root"_qs, u"/proc/device"_qs}, 1).contains(u"/proc/device"));
        QProcess first;
        first.start(QStringLiteral(TESSALY_SIMULATOR), {u"--root"_qs, m_root});
        QTRY_VERIFY(processesWith(m_root).size() >= 4); // the server too
        QVERIFY(errorOf({u"--root"_qs, m_root}, 1).contains(u"another simulator"));
        first.kill();
        QVERIFY(first.waitForFinished(10'000));
    }
};

int main(int argc, char** argv) {
    if (argc == 4 && QByteArray(argv[1]) == "--keep")
        return tessaly::simulator::keep([argv] { return work(argv[2], argv[3]); });
    QCoreApplication application(argc, argv);
    ProcessesTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "processes_test.moc"
