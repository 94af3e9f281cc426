#include "process_list.h"

#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

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
private Q_SLOTS:
    void cleanup() { QTRY_COMPARE_WITH_TIMEOUT(processesWith(m_root), QList<pid_t>(), 10'000); }

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

QTEST_GUILESS_MAIN(WindowProcessTest)
#include "window_process_test.moc"
