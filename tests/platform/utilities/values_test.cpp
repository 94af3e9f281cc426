#include <base/log_sink.h>
#include <simulator/fixture/test_device.h>
#include <tests/support/files.h>
#include <utilities/cfg_wrapper.h>
#include <utilities/locale.h>
#include <vellum/device_state.h>

#include <QCoreApplication>
#include <QProcess>
#include <QTest>
#include <sys/stat.h>

using namespace tessaly;
using namespace tessaly::utilities;

namespace {

constexpr int changes = 100;

/// What the second process does: it changes one value all the time, and fails if it ever loses a change.
int changeScreen() {
    for (int i = 0; i < changes; ++i) {
        vellum::state::setScreen(std::to_string(i));
        if (vellum::state::screen() != std::to_string(i))
            return 1;
    }
    return 0;
}

} // namespace

/// Key-value files, the values in them, and the log.
class ValuesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void parsesLocales() {
        for (const auto& [text, language] :
             {std::pair("", ""), {"pt", "pt"}, {"pt_BR", "pt"}, {"es_419", "es"}}) {
            const auto locale = locale_parser::tagged_parse(text, '_').getRight();
            QCOMPARE(locale.language, std::string(language));
            QCOMPARE(locale.stringify('_'), std::string(text));
        }
        for (const char* const wrong :
             {"p", "pt_", "_BR", "pt-BR", "p1", "pt_BR_x", "ninechars", "pt_B", "тк", " pt", "pt\n"})
            QVERIFY2(locale_parser::tagged_parse(wrong, '_').isLeft(), wrong);
    }

    void keepsOddValues() {
        const std::string odd[] = {"plain", "a=b",    "=",        "two\nlines\r\n", "\\",
                                   "\\n",   "\\\\e=", " spaces ", "Ünïcödé",        "#"};
        for (const std::string& text : odd) {
            CfgWrapper written("/var/odd.cfg", 1);
            WriteString(written.handle(), "before", "1");
            WriteString(written.handle(), "key", text.c_str());
            WriteString(written.handle(), text.c_str(), "value");
            WriteString(written.handle(), "empty", "");
            WriteString(written.handle(), "zafter", "2");
            QVERIFY(written.saveAndClose());
            const CfgWrapper read("/var/odd.cfg", 0);
            QCOMPARE(read.readIfExists<std::string>("key"), text);
            QCOMPARE(read.readIfExists<std::string>(text), std::string("value"));
            QCOMPARE(read.readIfExists<std::string>("empty"), std::string());
            QCOMPARE(read.readIfExists<int>("before"), 1);
            QCOMPARE(read.readIfExists<int>("zafter"), 2);
        }
    }

    void twoProcessesLoseNoChange() {
        QProcess other;
        other.start(QCoreApplication::applicationFilePath(), {u"--change-screen"_qs});
        for (int i = 0; i < changes; ++i) {
            vellum::state::setConnectDelayMs(i);
            QCOMPARE(vellum::state::connectDelayMs(), i);
        }
        QVERIFY(other.waitForFinished());
        QCOMPARE(other.exitCode(), 0);
        QCOMPARE(vellum::state::screen(), std::to_string(changes - 1));
        QCOMPARE(vellum::state::connectDelayMs(), changes - 1);
    }

    void readsNumbers() {
        CfgWrapper config("/var/numbers.cfg", 1);
        for (const auto& [text, expected] : {std::pair("0", 0), std::pair("-10", -10)}) {
            WriteString(config.handle(), "key", text);
            QCOMPARE(config.readIfExists<int>("key"), expected);
            QCOMPARE(ReadInt(config.handle(), "key", -1), expected);
        }
        for (const char* const wrong : {"done", "12px", "", "4000000000"}) {
            WriteString(config.handle(), "key", wrong);
            QVERIFY2(!config.readIfExists<int>("key") && ReadInt(config.handle(), "key", -1) == -1, wrong);
        }
        QVERIFY(!config.readIfExists<int>("other"));
    }

    void readsPlainFilesOnly() {
        QCOMPARE(::mkfifo(qUtf8Printable(m_device.path("/var/pipe.cfg")), 0600), 0);
        writeFile(m_device.path("/var/huge.cfg"), "key=value\n");
        QVERIFY(QFile::resize(m_device.path("/var/huge.cfg"), 3LL << 30));
        for (const char* const path : {"/var/pipe.cfg", "/var/huge.cfg"})
            QVERIFY(!CfgWrapper(path, 0).readIfExists<std::string>("key"));
    }

    void logLinesAreBounded() {
        const QString path = m_device.path("/var/test.log");
        QVERIFY(log::setLogFile(path.toStdString()));
        log::write({log::Level::Warning, "file", 1, "function",
                    "a\n[error] b\r\033[2Jc" + std::string(99'999, 'd')});
        QVERIFY(log::setLogFile({}));
        const QByteArray line = readFile(path);
        QVERIFY(line.startsWith("[warning] file:1 function: a\n    [error] b  [2Jcd") &&
                line.size() < 20'000);
    }

    void savesOnlyWhenAsked() {
        // The second leaves no room for the longer name that it is first written under.
        const std::string longPath = "/var/" + std::string(252, 'n');
        for (const std::string& path : {std::string("/var/kept.cfg"), longPath}) {
            writeFile(m_device.path(path.c_str()), "key=old\n");
            const auto change = [&path](int mode) {
                CfgWrapper config(path, mode);
                WriteString(config.handle(), "key", "new");
                return config;
            };
            const auto read = [&path] { return CfgWrapper(path, 0).readIfExists<std::string>("key"); };
            QVERIFY(!change(0).saveAndClose());
            change(1).closeNoSave();
            change(1);
            QCOMPARE(read(), std::string("old"));
            const bool canSave = path != longPath;
            QCOMPARE(change(1).saveAndClose(), canSave);
            QCOMPARE(read(), std::string(canSave ? "new" : "old"));
        }
        QVERIFY(!CfgWrapper("/nowhere/file.cfg", 1).saveAndClose());
        QCOMPARE(QDir(m_device.path("/var")).entryList({QStringLiteral("kept.cfg.*")}), QStringList());
    }

private:
    fixture::TestDevice m_device;
};

int main(int argc, char** argv) {
    if (argc == 2 && QByteArray(argv[1]) == "--change-screen")
        return changeScreen();
    QCoreApplication application(argc, argv);
    ValuesTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "values_test.moc"
