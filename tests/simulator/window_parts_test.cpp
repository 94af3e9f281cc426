#include "simulator/window/options.h"
#include "simulator/window/word_lookup.h"

#include <QProcess>
#include <QTest>

using namespace tessaly::simulator;

class WindowPartsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void commandLines_data() {
        QTest::addColumn<QString>("outcome"); // the row's name is the command line
        const auto row = [](const char* line, const char* outcome) {
            QTest::newRow(line) << QString::fromLatin1(outcome);
        };
        row("--root /tmp", "/tmp,,,,-1");
        row("--root /tmp --profile 6-keys --language de --screenshot /tmp/a.png --quit-after 0",
            "/tmp,6-keys,de,/tmp/a.png,0");
        row("--root=", "error: --root needs a value");
        row("--root /dev/null", "error: --root: \"/dev/null\" is not a folder");
        row("--root /tmp --profile 7", "error: --profile: \"7\" is none of 6-touch, 6-touch-hd, 6-keys");
        row("--root /tmp --screenshot /nowhere/a.png",
            "error: --screenshot: there is no folder for \"/nowhere/a.png\"");
        row("--root /tmp --quit-after=-1", "error: --quit-after: \"-1\" is not a number of milliseconds");
        row("--root /tmp --bogus", "error: Unknown option 'bogus'.");
        row("--root /tmp more", "error: unexpected argument \"more\"");
        row("--bogus --help", "help");
    }
    void commandLines() {
        const QString line = QString::fromLatin1(QTest::currentDataTag());
        const Options options = parseOptions(QStringList{u"program"_qs} + QProcess::splitCommand(line));
        QString outcome = QStringList{options.root, options.profile, options.language, options.screenshot,
                                      QString::number(options.quitAfterMs)}
                              .join(u',');
        if (!options.error.isEmpty())
            outcome = u"error: "_qs + options.error;
        if (!options.help.isEmpty())
            outcome = options.help.contains(u"--screenshot FILE") ? u"help"_qs : options.help;
        QTEST(outcome, "outcome");
    }

    void lookupForms_data() {
        QTest::addColumn<QString>("forms"); // the row's name is the word as the text has it
        const auto row = [](const char* text, const char* forms) {
            QTest::newRow(text) << QString::fromUtf8(forms);
        };
        row("wife.", "wife");
        row("“My", "My");
        row("«\u00a0une", "une");
        row("—", "");
        row("", "");
        row("l’étoile,", "l'étoile|étoile");
        row("mastr’Antonio", "mastr'Antonio|Antonio|mastr");
        row("aujourd’hui", "aujourd'hui|hui|aujourd");
        row("girls’", "girls");
        row("по-своему.", "по-своему|по|своему");
        row("e\u0301te\u0301", "\u00e9t\u00e9");
        row("Wör\u00adter", "Wörter");
    }
    void lookupForms() {
        QTEST(tessaly::simulator::lookupForms(QString::fromUtf8(QTest::currentDataTag())).join(u'|'),
              "forms");
    }
};

QTEST_GUILESS_MAIN(WindowPartsTest)
#include "window_parts_test.moc"
