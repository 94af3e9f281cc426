#include "process_list.h"

#include <QFile>
#include <QImage>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>
#include <csignal>

/// The simulator as a program: its options, and that it leaves nothing behind.
class WindowProcessTest : public QObject {
    Q_OBJECT

    QTemporaryDir m_folder;
    const QString m_root = m_folder.filePath(u"device"_qs);

    QString errorOf(const QStringList& options, int status) {
        QProcess process;
        process.start(QStringLiteral(TESSALY_SIMULATOR), options);
        if (!process.waitForFinished(30'000) || process.exitCode() != status)
            return u"status %1"_qs.arg(process.exitCode());
        return QString::fromUtf8(process.readAllStandardError());
    }
    /// The three of the program, the one that was started first.
    QList<pid_t> programs(const QProcess& started) const {
        QList<pid_t> all{pid_t(started.processId())};
        const QList<pid_t> others = processesWith(m_root);
        for (int generation = 0; generation < 2; ++generation) {
            for (const pid_t process : others) {
                if (parentOf(process) == all.constLast()) {
                    all << process;
                    break;
                }
            }
        }
        return all;
    }

private Q_SLOTS:
    void cleanup() { QTRY_COMPARE_WITH_TIMEOUT(processesWith(m_root), QList<pid_t>(), 10'000); }

    void showsItsScreen_data() {
        QTest::addColumn<QSize>("size"); // the row's name is the profile
        QTest::newRow("6-touch") << QSize(758, 1024);
        QTest::newRow("6-touch-hd") << QSize(1072, 1448);
        QTest::newRow("6-keys") << QSize(758, 1024);
    }
    void showsItsScreen() {
        const QString file = m_folder.filePath(u"picture.png"_qs);
        QFile::remove(file);
        errorOf({u"--root"_qs, m_root, u"--profile"_qs, QString::fromLatin1(QTest::currentDataTag()),
                 u"--screenshot"_qs, file},
                0);
        QImage picture(file);
        QTEST(picture.size(), "size");
        int dark = 0;
        picture = picture.convertToFormat(QImage::Format_Grayscale8);
        for (int y = 0; y < picture.height(); ++y)
            dark += int(std::count_if(picture.constScanLine(y), picture.constScanLine(y) + picture.width(),
                                      [](uchar grey) { return grey < 64; }));
        const double share = double(dark) / (picture.width() * picture.height());
        QVERIFY2(share > 0.02 && share < 0.3, qPrintable(QString::number(share))); // a page with text on it
    }

    void saysWhatIsWrong() {
        QVERIFY(errorOf({u"--root"_qs, m_root, u"--profile"_qs, u"7"_qs}, 2).contains(u"--profile"));
        QVERIFY(errorOf({u"--root"_qs, u"/proc/device"_qs}, 1).contains(u"/proc/device"));
        QCOMPARE(errorOf({u"--root"_qs, m_root, u"--quit-after"_qs, u"0"_qs}, 0), QString());
    }

    void refusesADeviceInUse() {
        QProcess first;
        first.start(QStringLiteral(TESSALY_SIMULATOR), {u"--root"_qs, m_root});
        QTRY_VERIFY(processesWith(m_root).size() >= 4); // the server too
        QVERIFY(errorOf({u"--root"_qs, m_root}, 1).contains(u"another simulator"));
        first.terminate();
        QVERIFY(first.waitForFinished(10'000));
        QCOMPARE(first.exitCode(), 0);
    }

    void leavesNothingBehind_data() {
        QTest::addColumn<int>("number");
        QTest::addColumn<int>("target"); // 0 is the process that was started, 2 the window's
        const int rounds = qMax(1, qEnvironmentVariableIntValue("TESSALY_ROUNDS"));
        for (int i = 0; i < 3 * rounds; ++i) {
            QTest::addRow("closed %d", i) << SIGTERM << 0;
            QTest::addRow("killed %d", i) << SIGKILL << i % 3;
            QTest::addRow("power cut %d", i) << SIGUSR1 << 0;
            QTest::addRow("crashed %d", i) << SIGSEGV << 2;
        }
    }
    void leavesNothingBehind() {
        QFETCH(const int, number);
        QFETCH(const int, target);
        QProcess process;
        process.start(QStringLiteral(TESSALY_SIMULATOR), {u"--root"_qs, m_root});
        QVERIFY(process.waitForStarted());
        QTRY_COMPARE(programs(process).size(), 3);
        const int moment = QRandomGenerator::global()->bounded(1200);
        qInfo("after %d ms", moment);
        QTest::qWait(moment);
        const QList<pid_t> before = programs(process);
        QCOMPARE(::kill(before.value(target), number), 0);
        if (number == SIGUSR1) {
            const auto window = [&] { return programs(process).value(2); };
            // It starts again, and all else is gone. A busy disk holds up even a killed process.
            QTRY_VERIFY_WITH_TIMEOUT(window() > 0 && window() != before.value(2), 15'000);
            QCOMPARE(programs(process).first(2), before.first(2));
            QTRY_VERIFY(processesWith(m_root).size() == 4);
            process.terminate();
        }
        QVERIFY(process.waitForFinished(10'000));
    }
};

QTEST_GUILESS_MAIN(WindowProcessTest)
#include "window_process_test.moc"
