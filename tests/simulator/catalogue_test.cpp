#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

/// The program that shows a device's catalogue, end to end with the real server.
class CatalogueTest : public QObject {
    Q_OBJECT

    QString m_output; ///< of the last run, both channels

    int run(const QStringList& options) {
        QProcess process;
        process.start(QStringLiteral(TESSALY_CATALOGUE), options);
        const bool hasEnded = process.waitForFinished(60'000) && process.exitStatus() == QProcess::NormalExit;
        m_output = QString::fromUtf8(process.readAllStandardOutput() + process.readAllStandardError());
        return hasEnded ? process.exitCode() : -1;
    }
    QString found(const char* pattern) const {
        return QRegularExpression(QLatin1String(pattern), QRegularExpression::MultilineOption)
            .match(m_output)
            .captured(1);
    }

private Q_SLOTS:
    void synchronisesAndPrints() {
        const QTemporaryDir folder;
        const QStringList root{u"--root"_qs, folder.filePath(u"device"_qs)};
        QVERIFY2(run(root) == 0, qUtf8Printable(m_output));
        QVERIFY2(!found("^\\n(English\\n(?: +\\d+  .+ \\(.+\\)\\n)+)\\nFrench$").isEmpty(),
                 qUtf8Printable(m_output));
        QCOMPARE(found("^(\\d+) dictionaries in the catalogue$").toInt(),
                 m_output.count(QRegularExpression(u"\n +\\d+  "_qs)));
        const QString database = found("^Database: (.+)$");
        QVERIFY(QFile::exists(database) && database.startsWith(root[1]));
        const QString online = m_output;
        QCOMPARE(run(root + QStringList(u"--offline"_qs)), 1);
        QCOMPARE(m_output, u"Offline: no network is reachable, so the catalogue could not be synchronised. "
                           "What is stored:\n"_qs +
                               online);
        QCOMPARE(run(root), 0);
        QCOMPARE(m_output, online);
    }

    void tellsHowToUseIt() {
        for (const auto& [line, status] :
             {std::pair("", 2), {"--root", 2}, {"--root /tmp more", 2}, {"--help", 0}}) {
            QCOMPARE(run(QProcess::splitCommand(QString::fromLatin1(line))), status);
            QVERIFY2(m_output.contains(u"usage: ", Qt::CaseInsensitive), qUtf8Printable(m_output));
        }
    }
};

QTEST_GUILESS_MAIN(CatalogueTest)
#include "catalogue_test.moc"
