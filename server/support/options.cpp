#include "support/options.h"

#include <QCommandLineParser>
#include <QFileInfo>

namespace tessaly::server {

Options parseOptions(const QStringList& arguments) {
    const auto option = [](const char* name, const char* text, const char* value = "",
                           const char* preset = "") {
        return QCommandLineOption(QLatin1String(name), QLatin1String(text), QLatin1String(value),
                                  QLatin1String(preset));
    };
    const QCommandLineOption state =
        option("state", "Folder that keeps numbers, port and caches (required).", "DIR");
    const QCommandLineOption port =
        option("port", "Port to listen on; 0: the remembered or a free one.", "N", "0");
    const QCommandLineOption dictd =
        option("dictd", "Folder of the dictd dictionaries.", "DIR", "/usr/share/dictd");
    const QCommandLineOption hunspell =
        option("hunspell", "Folder of the Hunspell data.", "DIR", "/usr/share/hunspell");
    const QCommandLineOption allLanguages =
        option("all-languages", "Offer languages too that devices have no name for.");
    const QCommandLineOption apiKey =
        option("api-key", "Key that clients of the morphology data send as X-Api-Key.", "KEY",
               "reader-development-key");
    const QCommandLineOption control = option("control", "Enable the test switches at /control.");
    const QCommandLineOption exitWithParent =
        option("exit-with-parent", "End when the starting process ends.");

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Serves dictionaries to readers' devices on 127.0.0.1."));
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Show this help."));
    parser.addOptions({help, state, port, dictd, hunspell, allLanguages, apiKey, control, exitWithParent});

    Options options;
    const bool understood = parser.parse(arguments);
    if (understood && parser.isSet(help)) {
        options.help = parser.helpText();
        return options;
    }
    bool isPort = false;
    options.stateFolder = parser.value(state);
    options.port = parser.value(port).toUShort(&isPort);
    options.dictdFolder = parser.value(dictd);
    options.hunspellFolder = parser.value(hunspell);
    options.apiKey = parser.value(apiKey);
    options.allLanguages = parser.isSet(allLanguages);
    options.control = parser.isSet(control);
    options.exitWithParent = parser.isSet(exitWithParent);

    if (!understood)
        options.error = parser.errorText();
    else if (!parser.positionalArguments().isEmpty())
        options.error =
            QStringLiteral("Unexpected argument '%1'.").arg(parser.positionalArguments().constFirst());
    else if (options.stateFolder.isEmpty())
        options.error = QStringLiteral("--state DIR is required.");
    else if (!isPort)
        options.error = QStringLiteral("--port: '%1' is not a port.").arg(parser.value(port));
    else if (parser.isSet(dictd) && !QFileInfo(options.dictdFolder).isDir())
        options.error = QStringLiteral("--dictd: there is no folder '%1'.").arg(options.dictdFolder);
    else if (parser.isSet(hunspell) && !QFileInfo(options.hunspellFolder).isDir())
        options.error = QStringLiteral("--hunspell: there is no folder '%1'.").arg(options.hunspellFolder);
    else if (options.apiKey.isEmpty())
        options.error = QStringLiteral("--api-key: the key must not be empty.");
    return options;
}

} // namespace tessaly::server
