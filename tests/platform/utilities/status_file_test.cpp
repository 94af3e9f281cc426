#include "../support/bare_device.h"

#include <utilities/cfg_wrapper.h>

#include <QCoreApplication>
#include <QProcess>
#include <QSet>
#include <QTest>
#include <cstring>

using tessaly::utilities::CfgWrapper;

namespace {

constexpr auto statusPath = "/var/status.txt";

/// What the second process does until it is killed. The text makes the file longer and shorter.
[[noreturn]] void rewriteForEver() {
    for (int i = 0;; ++i) {
        CfgWrapper config(statusPath, 1);
        WriteInt(config.handle(), "progress", i);
        WriteString(config.handle(), "text", std::string(std::size_t(i % 7) * 3000, 't').c_str());
        WriteInt(config.handle(), "zlast", i);
        config.saveAndClose();
    }
}

} // namespace

class StatusFileTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aReaderNeverSeesHalfAFile() {
        const tessaly::tests::BareDevice device;
        QProcess writer;
        writer.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--rewrite")});
        QTRY_VERIFY(CfgWrapper(statusPath, 0).readIfExists<int>("zlast"));
        QSet<int> seen;
        for (int i = 0; i < 10'000 || seen.size() < 20; ++i) {
            const CfgWrapper config(statusPath, 0);
            const auto progress = config.readIfExists<int>("progress");
            const auto text = config.readIfExists<std::string>("text");
            QVERIFY(progress && text);
            QCOMPARE(config.readIfExists<int>("zlast"), *progress);
            QCOMPARE(text->size(), std::size_t(*progress % 7) * 3000);
            seen << *progress;
        }
        writer.kill();
        writer.waitForFinished();
    }
};

int main(int argc, char** argv) {
    if (argc == 2 && std::strcmp(argv[1], "--rewrite") == 0)
        rewriteForEver();
    QCoreApplication application(argc, argv);
    StatusFileTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "status_file_test.moc"
