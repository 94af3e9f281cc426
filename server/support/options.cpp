#include "support/options.h"

#include <QCommandLineParser>
#include <QFileInfo>

#include <cstdio>
#include <cstdlib>

namespace tessaly::server {

namespace {

QCommandLineOption option(const char* name, const char* text, const char* value = "",
                          const char* preset = "") {
    return {QLatin1String(name), QLatin1String(text), QLatin1String(value), QLatin1String(preset)};
}

void refuseUnless(bool isRight, const QString& problem) {
    if (isRight)
        return;
    std::fprintf(stderr, "%s\n", qPrintable(problem));
    std::exit(2);
}

} // namespace

Options parseOptions() {
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Serves dictionaries to readers' devices on 127.0.0.1."));
    const QCommandLineOption help = parser.addHelpOption();
    parser.addOptions(
        {option("state", "Directory that keeps numbers, port and caches (required).", "DIR"),
         option("port", "Port to listen on; 0: the remembered or a free one.", "N", "0"),
         option("dictd", "Directory of the dictd dictionaries.", "DIR", "/usr/share/dictd"),
         option("hunspell", "Directory of the Hunspell data.", "DIR", "/usr/share/hunspell"),
         option("all-languages", "Offer languages too that devices have no name for."),
         option("convert-ahead", "Convert all dictionaries from the start on, in the background."),
         option("control", "Enable the test switches at /control."),
         option("exit-with-parent", "End when the starting process ends.")});
    refuseUnless(parser.parse(QCoreApplication::arguments()), parser.errorText());
    if (parser.isSet(help))
        parser.showHelp();

    const auto value = [&parser](const char* name) { return parser.value(QLatin1String(name)); };
    const auto isSet = [&parser](const char* name) { return parser.isSet(QLatin1String(name)); };
    bool isPort = false;
    Options options;
    options.stateDirectory = value("state");
    options.port = value("port").toUShort(&isPort);
    options.dictdDirectory = value("dictd");
    options.hunspellDirectory = value("hunspell");
    options.allLanguages = isSet("all-languages");
    options.convertAhead = isSet("convert-ahead");
    options.control = isSet("control");
    options.exitWithParent = isSet("exit-with-parent");
    refuseUnless(parser.positionalArguments().isEmpty(),
                 QStringLiteral("Unexpected argument '%1'.").arg(parser.positionalArguments().value(0)));
    refuseUnless(!options.stateDirectory.isEmpty(), QStringLiteral("--state DIR is required."));
    refuseUnless(isPort, QStringLiteral("--port: '%1' is not a port.").arg(value("port")));
    for (const char* const name : {"dictd", "hunspell"})
        refuseUnless(
            !isSet(name) || QFileInfo(value(name)).isDir(),
            QStringLiteral("--%1: there is no directory '%2'.").arg(QLatin1String(name), value(name)));
    return options;
}

} // namespace tessaly::server
